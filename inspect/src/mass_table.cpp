#include "mass_table.h"

#include <algorithm>

#include "element.h"

namespace ztcad::inspect {

namespace {

const std::int64_t manyElements = std::int64_t{1} << 60;

std::int64_t sumOfCounts(std::int64_t a, std::int64_t b) { return std::min(a + b, manyElements); }

bool isInTemplate(const DocumentTree& tree, NodeIndex node) {
  for (; node != noNode; node = tree.node(node).holder)
    if (isTemplate(tree.node(node).kind) && tree.node(node).holder == noNode) return true;
  return false;
}

/// A sum of one sort of mass properties over the content of a holder.
struct Sums {
  std::vector<Mass> bodies;
  int problem = ztCADInspect_MassKnown;

  void add(const Mass& mass) { bodies.push_back(mass); }
  int finish(Mass& mass, int ifEmpty) const {
    if (problem != ztCADInspect_MassKnown) return problem;
    if (bodies.empty()) return ifEmpty;
    mass = sumOf(bodies.data(), bodies.size());
    return isFinite(mass) ? ztCADInspect_MassKnown : ztCADInspect_MassNoValue;
  }
};

}  // namespace

bool canHaveMass(int kind) {
  switch (kind) {
    case ztCAD_ElementPoint:
    case ztCAD_ElementTmplPoint:
    case ztCAD_ElementPointRef:
    case ztCAD_ElementLine:
    case ztCAD_ElementTmplLine:
    case ztCAD_ElementLineRef:
    case ztCAD_ElementNone:
      return false;
    default:
      return true;
  }
}

MassTable::MassTable(Scene& scene) : m_scene(scene) {
  makeRows();
  for (const Located at : scene.inward())
    if (canHaveMass(scene.node(at).kind)) fill(at);
  fillTotal();
}

void MassTable::makeRows() {
  for (std::int32_t file = 0; file < m_scene.fileCount(); ++file)
    m_slots.emplace_back(m_scene.tree(file).nodes().size(), -1);
  const std::vector<Node>& nodes = m_scene.tree(0).nodes();
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (!canHaveMass(nodes[i].kind)) continue;
    m_slots[0][i] = static_cast<std::int64_t>(m_rows.size());
    m_rows.emplace_back();
  }
}

void MassTable::fill(Located at) {
  const Node& node = m_scene.node(at);
  const DocumentTree& tree = m_scene.tree(at.file);
  MassRow& row = *entry(at);
  row = {};
  row.element = node.element;
  row.kind = node.kind;
  row.parent = -1;
  row.path = row.name = row.reason = "";
  if (at.file == 0) {
    row.path = kept(tree.path(at.node));
    row.name = node.name.c_str();
    row.isTemplate = isInTemplate(tree, at.node) ? 1 : 0;
    if (node.holder != noNode) row.parent = m_slots[0][static_cast<std::size_t>(node.holder)];
  }
  row.declaredProblem = declaredMass(node.element, node.kind, m_scene.settings(), row.declared);
  row.ownData = row.declaredProblem == ztCADInspect_MassKnown ? 1 : 0;
  if (isReference(node.kind)) {
    fillReference(row, at);
  } else if (isHolder(node.kind)) {
    std::vector<Located> children;
    for (const NodeIndex* child = tree.begin(node); child != tree.end(node); ++child)
      children.push_back({at.file, *child});
    fillHolder(row, children);
  } else {
    fillGeometry(row, at);
  }
  if (*row.reason == '\0') row.reason = massProblemText(row.computedProblem);
}

void MassTable::fillTotal() {
  m_total.path = m_total.name = m_total.reason = "";
  m_total.parent = -1;
  m_total.declaredProblem = ztCADInspect_MassNotDeclared;
  std::vector<Located> top;
  for (const NodeIndex node : m_scene.tree(0).top())
    if (!isTemplate(m_scene.tree(0).node(node).kind)) top.push_back({0, node});
  fillHolder(m_total, top);
  if (*m_total.reason == '\0') m_total.reason = massProblemText(m_total.computedProblem);
}

const MassRow* MassTable::rowOf(NodeIndex node) const {
  const std::int64_t slot = m_slots[0][static_cast<std::size_t>(node)];
  return slot < 0 ? nullptr : &m_rows[static_cast<std::size_t>(slot)];
}

MassRow* MassTable::entry(Located at) {
  std::int64_t& slot = m_slots[static_cast<std::size_t>(at.file)][static_cast<std::size_t>(at.node)];
  if (at.file == 0) return &m_rows[static_cast<std::size_t>(slot)];
  if (slot < 0) {
    slot = static_cast<std::int64_t>(m_others.size());
    m_others.emplace_back();
  }
  return &m_others[static_cast<std::size_t>(slot)];
}

const char* MassTable::kept(const std::string& text) {
  m_texts.push_back(text);
  return m_texts.back().c_str();
}

void MassTable::fillGeometry(MassRow& row, Located at) {
  if (isMassElement(row.kind)) {
    row.computedProblem = ztCADInspect_MassNoGeometry;
    row.combinedProblem = row.declaredProblem;
    row.combined = row.declared;
    if (row.ownData == 0) row.undeclared = 1;
    return;
  }
  if (row.kind == ztCAD_ElementSphere) {
    double center[3];
    double radius = 0;
    row.computedProblem = ztCAD_getCenter(row.element, center) && ztCAD_getRadius(row.element, &radius)
                              ? sphereMass(center, radius, m_scene.settings(), row.computed)
                              : static_cast<int>(ztCADInspect_MassNoRadius);
  } else {
    const MeshAnalysis& analysis = m_scene.analysis(at);
    row.computedProblem = analysis.massProblem;
    row.computed = analysis.mass;
  }
  row.undeclared = row.ownData != 0 ? 0 : 1;
  row.uncomputed = row.computedProblem == ztCADInspect_MassKnown ? 0 : 1;
  combine(row);
}

/// Declared data of an element goes before what is computed with a density.
void MassTable::combine(MassRow& row) {
  if (row.ownData != 0) {
    row.combinedProblem = ztCADInspect_MassKnown;
    row.combined = row.declared;
  } else if (row.computedProblem != ztCADInspect_MassKnown) {
    row.combinedProblem = row.computedProblem;
  } else if (row.computed.hasMass == 0) {
    row.combinedProblem = ztCADInspect_MassNoDensity;
  } else {
    row.combinedProblem = ztCADInspect_MassKnown;
    row.combined = row.computed;
  }
}

void MassTable::fillReference(MassRow& row, Located at) {
  const Located target = m_scene.target(at);
  if (target.node == noNode) {
    row.declaredProblem = row.computedProblem = row.combinedProblem = ztCADInspect_MassNoTemplate;
    row.undeclared = row.uncomputed = 1;
    return;
  }
  const MassRow& source = *entry(target);
  row.declaredProblem = source.declaredProblem;
  row.computedProblem = source.computedProblem;
  row.combinedProblem = source.combinedProblem;
  row.declared = source.declared;
  row.computed = source.computed;
  row.combined = source.combined;
  row.undeclared = source.undeclared;
  row.uncomputed = source.uncomputed;
  row.reason = source.reason;
}

void MassTable::fillHolder(MassRow& row, const std::vector<Located>& children) {
  Sums declared;
  Sums computed;
  Sums combined;
  std::int64_t undeclared = 0;
  for (const Located child : children) {
    const Node& node = m_scene.node(child);
    if (!canHaveMass(node.kind)) continue;
    const MassRow& part = *entry(child);
    const Transform transform = m_scene.transformOf(child);
    undeclared = sumOfCounts(undeclared, part.undeclared);
    row.uncomputed = sumOfCounts(row.uncomputed, part.uncomputed);
    if (part.declaredProblem == ztCADInspect_MassKnown)
      declared.add(transformed(part.declared, transform, m_scene.settings()));
    if (part.computedProblem == ztCADInspect_MassKnown) {
      computed.add(transformed(part.computed, transform, m_scene.settings()));
    } else if (part.computedProblem != ztCADInspect_MassNoGeometry &&
               computed.problem == ztCADInspect_MassKnown) {
      computed.problem = ztCADInspect_MassContent;
      row.reason = isHolder(node.kind) && part.computedProblem == ztCADInspect_MassContent
                       ? part.reason
                       : kept(std::string(ztCAD_kindWord(node.kind)) + ' ' + quoted(node.name) + ": " +
                              massProblemText(part.computedProblem));
    }
    if (part.combinedProblem == ztCADInspect_MassKnown)
      combined.add(transformed(part.combined, transform, m_scene.settings()));
    else if (part.combinedProblem == ztCADInspect_MassNoDensity && combined.problem == ztCADInspect_MassKnown)
      combined.problem = ztCADInspect_MassNoDensity;
    else if (part.combinedProblem != ztCADInspect_MassNoGeometry)
      combined.problem = ztCADInspect_MassContent;
  }
  row.computedProblem = computed.finish(row.computed, ztCADInspect_MassNoGeometry);
  if (row.ownData != 0) {
    row.combinedProblem = ztCADInspect_MassKnown;
    row.combined = row.declared;
    return;
  }
  row.undeclared = undeclared;
  row.declaredProblem = declared.finish(row.declared, ztCADInspect_MassNotDeclared);
  row.combinedProblem = combined.finish(row.combined, ztCADInspect_MassNoGeometry);
}

}  // namespace ztcad::inspect
