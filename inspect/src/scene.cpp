#include "scene.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "element.h"

namespace ztcad::inspect {

namespace {

enum State : unsigned char { Unvisited, OnPath, Done };

const std::int64_t manyItems = std::int64_t{1} << 60;

std::int64_t sumOf(std::int64_t a, std::int64_t b) { return a > manyItems - b ? manyItems : a + b; }

const char* placementAttribute(int kind) { return isReference(kind) ? "MCS" : "LCS"; }

}  // namespace

/// What an item gets from its holder.
struct Scene::Holder {
  std::int64_t item = -1;
  Transform transform;
  std::uint8_t color[3] = {0, 0, 0};
  bool hasColor = false;
  bool isVisible = true;
  int depth = 0;
  NodeIndex origin = noNode;  // for findings
};

/// A node whose children are being visited.
struct Scene::Visit {
  Located at;
  NodeIndex origin;
  std::size_t nextChild = 0;
  bool hasVisitedTarget = false;
};

Scene::Scene(ztCAD_GMDDocument* document, const char* folder, const ztCADInspect_Options* options)
    : m_settings(settingsFrom(options)), m_referenced(folder, m_settings) {
  addFile(document);
  const auto nodeCount = static_cast<NodeIndex>(tree(0).nodes().size());
  for (NodeIndex node = 0; node < nodeCount; ++node)
    resolveFrom(node);
  reportSystems();

  std::int64_t count = 0;
  for (const NodeIndex top : tree(0).top())
    if (!isTemplate(tree(0).node(top).kind))
      count = sumOf(count, file(0).counts[static_cast<std::size_t>(top)]);
  const std::int64_t most = std::min(count, m_settings.values.greatestItemCount);
  m_items.reserve(static_cast<std::size_t>(most));
  m_itemNodes.reserve(static_cast<std::size_t>(most));
  for (const NodeIndex top : tree(0).top())
    if (!isTemplate(tree(0).node(top).kind)) place({0, top}, Holder());
}

void Scene::addFile(ztCAD_GMDDocument* document) {
  auto added = std::make_unique<File>();
  added->tree = DocumentTree(document);
  for (const NodeIndex top : added->tree.top()) {
    const Node& node = added->tree.node(top);
    if (isTemplate(node.kind)) added->templates[node.kind].emplace(node.name, top);
  }
  const std::size_t size = added->tree.nodes().size();
  added->targets.resize(size);
  added->counts.resize(size);
  added->states.resize(size, Unvisited);
  added->shapes.resize(size, -1);
  added->origins.resize(size, noNode);
  m_files.push_back(std::move(added));
}

Subject Scene::subject(NodeIndex node) const {
  if (node == noNode) return {};
  return {tree(0).node(node).element, tree(0).path(node)};
}

void Scene::report(Rule rule, NodeIndex origin, const char* attribute, const std::string& key,
                   std::initializer_list<std::string> arguments, std::optional<int> severity) {
  const auto [known, isNew] =
      m_reported.emplace(std::string(infoOf(rule).name) + '\n' + key, m_findings.count());
  if (!isNew) {
    m_findings.repeat(known->second);
    return;
  }
  m_findings.add(rule, subject(origin), attribute, arguments, 1, {}, severity);
  m_findingNodes.push_back(origin);
}

void Scene::enter(std::vector<Visit>& visits, Located at, NodeIndex origin) {
  File& in = file(at.file);
  const auto index = static_cast<std::size_t>(at.node);
  in.states[index] = OnPath;
  in.counts[index] = 1;
  in.origins[index] = origin;
  visits.push_back({at, origin});
}

/// Resolves the reference that is visited last, cuts it if it leads back to what it is in, and enters its
/// template if nothing has yet.
void Scene::enterTarget(std::vector<Visit>& visits) {
  const Visit visit = visits.back();
  Located target = resolve(visit.at, visit.origin);
  if (target.node == noNode) return;
  const unsigned char state = file(target.file).states[static_cast<std::size_t>(target.node)];
  if (state == OnPath) {
    reportRing(visits, visit.at, target, visit.origin);
    target = {};
  }
  file(visit.at.file).targets[static_cast<std::size_t>(visit.at.node)] = target;
  if (state == Unvisited) enter(visits, target, target.file == 0 ? target.node : visit.origin);
}

/// Counts the items of an element whose content is counted.
void Scene::finish(Located at) {
  std::int64_t count = 1;
  const Located target = this->target(at);
  // the item of the reference is that of its template
  if (target.node != noNode) count = file(target.file).counts[static_cast<std::size_t>(target.node)];
  const DocumentTree& in = tree(at.file);
  const Node& element = node(at);
  for (const NodeIndex* child = in.begin(element); child != in.end(element); ++child)
    count = sumOf(count, file(at.file).counts[static_cast<std::size_t>(*child)]);
  file(at.file).counts[static_cast<std::size_t>(at.node)] = count;
  file(at.file).states[static_cast<std::size_t>(at.node)] = Done;
  m_inward.push_back(at);
}

/// Visits everything that a node holds or places, depth first: resolves references, cuts those that lead back
/// to what they are in, and counts the items. Without recursion: chains of references may be long.
void Scene::resolveFrom(NodeIndex start) {
  if (file(0).states[static_cast<std::size_t>(start)] != Unvisited) return;
  std::vector<Visit> visits;
  enter(visits, {0, start}, start);
  while (!visits.empty()) {
    Visit& visit = visits.back();
    const Located at = visit.at;
    const Node& element = node(at);
    if (visit.nextChild < element.childCount) {
      const NodeIndex child = tree(at.file).begin(element)[visit.nextChild++];
      if (file(at.file).states[static_cast<std::size_t>(child)] == Unvisited)
        enter(visits, {at.file, child}, at.file == 0 ? child : visit.origin);
    } else if (isReference(element.kind) && !visit.hasVisitedTarget) {
      visit.hasVisitedTarget = true;
      enterTarget(visits);
    } else {
      finish(at);
      visits.pop_back();
    }
  }
}

Located Scene::resolve(Located reference, NodeIndex origin) {
  const Node& element = node(reference);
  const std::string fileName = textOf(ztCAD_getTemplateFile, element.element);
  const std::string name = textOf(ztCAD_getTemplateName, element.element);
  const std::string from = std::to_string(reference.file) + '\n';
  Located target = {reference.file, noNode};
  if (!fileName.empty()) {
    const ReferencedFiles::Found found = m_referenced.find(reference.file, fileName);
    if (found.file < 0) {
      report(found.rule, origin, reference.file == 0 ? "file" : nullptr, from + fileName,
             {quoted(fileName), found.problem});
      return {};
    }
    if (found.isNew) addFile(m_referenced.document(found.file));
    target.file = found.file;
  }
  const int kind = templateOf(element.kind);
  const auto& templates = file(target.file).templates;
  const auto ofKind = templates.find(kind);
  if (ofKind != templates.end()) {
    const auto found = ofKind->second.find(name);
    if (found != ofKind->second.end()) target.node = found->second;
  }
  if (target.node == noNode) {
    const std::string where =
        target.file == 0 ? "the document" : "the file " + quoted(this->fileName(target.file));
    report(Rule::template_missing, origin, reference.file == 0 ? "template" : nullptr,
           std::to_string(target.file) + '\n' + std::to_string(kind) + name, {quoted(name), where});
    return {};
  }
  return target;
}

void Scene::reportRing(const std::vector<Visit>& visits, Located reference, Located target,
                       NodeIndex origin) {
  // the templates from the one that is placed again down to the reference
  const std::size_t most = 8;
  std::vector<std::string> names;
  bool isInRing = false;
  for (const Visit& visit : visits) {
    if (visit.at.file == target.file && visit.at.node == target.node) isInRing = true;
    const Node& element = node(visit.at);
    if (isInRing && isTemplate(element.kind) && element.holder == noNode)
      names.push_back(quoted(element.name));
  }
  std::string ring;
  for (std::size_t i = 0; i < names.size() && i < most; ++i)
    ring += names[i] + " -> ";
  if (names.size() > most) ring += "... -> ";
  ring += quoted(node(target).name);
  report(Rule::reference_ring, origin, reference.file == 0 ? "template" : nullptr,
         std::to_string(reference.file) + '\n' + std::to_string(reference.node), {ring});
}

void Scene::reportSystems() {
  for (std::size_t fileIndex = 0; fileIndex < m_files.size(); ++fileIndex) {
    const auto fileNumber = static_cast<std::int32_t>(fileIndex);
    const std::vector<Node>& nodes = tree(fileNumber).nodes();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      // of other files only what is placed
      if (file(fileNumber).states[i] != Done) continue;
      const Node& element = nodes[i];
      const System system = isReference(element.kind) ? placement(element.element, m_settings)
                                                      : ownSystem(element.element, element.kind, m_settings);
      if (!system.problem) continue;
      const NodeIndex origin = fileNumber == 0 ? static_cast<NodeIndex>(i) : file(fileNumber).origins[i];
      const char* const attribute = placementAttribute(element.kind);
      const char* const place = fileNumber == 0 ? attribute : nullptr;
      const std::string key = std::to_string(fileNumber) + '\n' + std::to_string(i);
      const SystemProblem& problem = *system.problem;
      switch (problem.kind) {
        case SystemProblem::Size:
          report(Rule::system_size, origin, place, key,
                 {attribute, numberText(static_cast<std::int64_t>(problem.size))});
          break;
        case SystemProblem::NoValue:
          report(Rule::no_value, origin, place, key,
                 {std::string("system \"") + attribute + '"',
                  numberText(static_cast<std::int64_t>(problem.size))});
          break;
        case SystemProblem::NotOrthonormal:
          report(Rule::system_not_orthonormal, origin, place, key,
                 {attribute, "a scalar product of axes is " + numberText(problem.value) +
                                 " away from what it should be"});
          break;
        case SystemProblem::LeftHanded:
          report(Rule::system_left_handed, origin, place, key, {attribute, numberText(problem.value)});
          break;
      }
    }
  }
}

Transform Scene::transformOf(Located at) const {
  const Node& element = node(at);
  if (!isReference(element.kind)) return ownSystem(element.element, element.kind, m_settings).transform;
  Transform placed = placement(element.element, m_settings).transform;
  const Located content = target(at);
  if (content.node == noNode) return placed;
  const Node& source = node(content);
  const Transform own = ownSystem(source.element, source.kind, m_settings).transform;
  switch (m_settings.values.templateSystem) {
    case ztCADInspect_TemplateOutside:
      return own * placed;
    case ztCADInspect_TemplateIgnored:
      return placed;
    default:
      return placed * own;
  }
}

/// What an element hands down to what is in it.
/// @param content the element or, of a reference, its template; node -1: not resolved
Scene::Holder Scene::insideOf(const Holder& holder, Located at, Located content) const {
  const ztCAD_Base* const element = node(at).element;
  const ztCAD_Base* const source = content.node == noNode ? nullptr : node(content).element;
  Holder inside;
  inside.transform = holder.transform * transformOf(at);
  inside.depth = holder.depth + 1;
  std::uint32_t color[3];
  const bool hasOwnColor = ztCAD_getColor(element, color) || (source && ztCAD_getColor(source, color));
  inside.hasColor = hasOwnColor || holder.hasColor;
  for (int i = 0; i < 3; ++i)
    inside.color[i] = hasOwnColor ? static_cast<std::uint8_t>(std::min(color[i], 255U)) : holder.color[i];
  inside.isVisible =
      holder.isVisible && ztCAD_getVisible(element) != 0 && (!source || ztCAD_getVisible(source) != 0);
  return inside;
}

void Scene::placeContent(Located content, const Holder& inside) {
  const Node& source = node(content);
  if (source.childCount == 0) return;
  if (inside.depth > m_settings.values.greatestDepth) {
    report(Rule::reference_too_deep, inside.origin, nullptr, "",
           {numberText(static_cast<std::int64_t>(m_settings.values.greatestDepth))});
    return;
  }
  const DocumentTree& in = tree(content.file);
  for (const NodeIndex* child = in.begin(source); child != in.end(source); ++child)
    place({content.file, *child}, inside);
}

void Scene::place(Located at, const Holder& holder) {
  const Node& element = node(at);
  const NodeIndex origin = at.file == 0 ? at.node : holder.origin;
  const auto index = static_cast<std::int64_t>(m_items.size());
  const std::int64_t room = m_settings.values.greatestItemCount - index;
  // what does not fit with all that is in it is left out, so that the limit costs nothing
  if (file(at.file).counts[static_cast<std::size_t>(at.node)] > room &&
      (isReference(element.kind) || room < 1)) {
    report(Rule::scene_too_large, origin, nullptr, "",
           {numberText(static_cast<std::int64_t>(m_settings.values.greatestItemCount))});
    if (room < 1) return;
  }
  const Located content = isReference(element.kind) ? target(at) : at;
  const bool isResolved = content.node != noNode;
  const Node& source = isResolved ? node(content) : element;

  Holder inside = insideOf(holder, at, content);
  inside.item = index;
  inside.origin = origin;

  ztCADInspect_Item item = {};
  item.parent = holder.item;
  item.shape = isResolved ? shapeOf(content) : -1;
  item.element = element.element;
  item.source = isResolved ? source.element : nullptr;
  item.name = element.name.c_str();
  item.kind = element.kind;
  item.file = at.file;
  std::copy(inside.color, inside.color + 3, item.color);
  item.hasColor = inside.hasColor ? 1 : 0;
  item.isVisible = inside.isVisible ? 1 : 0;
  inside.transform.write(item.transform);
  m_items.push_back(item);
  m_itemNodes.push_back(at.node);

  const bool fits = file(at.file).counts[static_cast<std::size_t>(at.node)] <= room;
  if (isResolved && (fits || !isReference(element.kind))) placeContent(content, inside);
  m_items[static_cast<std::size_t>(index)].end = static_cast<std::int64_t>(m_items.size());
}

std::int64_t Scene::shapeOf(Located at) {
  std::int64_t& known = file(at.file).shapes[static_cast<std::size_t>(at.node)];
  const Node& element = node(at);
  if (known >= 0 || isHolder(element.kind) || isMassElement(element.kind)) return known;
  ztCADInspect_Shape shape = {};
  shape.file = at.file;
  shape.element = element.element;
  if (isPoint(element.kind)) {
    shape.kind = ztCADInspect_ShapePoint;
  } else if (element.kind == ztCAD_ElementSphere) {
    shape.kind = ztCADInspect_ShapeSphere;
    shape.hasRadius = ztCAD_getRadius(element.element, &shape.radius) ? 1 : 0;
  } else if (isLine(element.kind) || isSolid(element.kind)) {
    shape.kind = isLine(element.kind) ? ztCADInspect_ShapePolyline : ztCADInspect_ShapeMesh;
    const MeshView mesh = viewOf(element.element);
    shape.vertices = mesh.vertices;
    shape.vertexCount = static_cast<std::int64_t>(mesh.vertexCount);
    shape.facets = mesh.facets;
    shape.facetCount = static_cast<std::int64_t>(mesh.facetCount);
  } else {
    return -1;
  }
  shape.hasCenter = ztCAD_getCenter(element.element, shape.center) ? 1 : 0;
  known = static_cast<std::int64_t>(m_shapes.size());
  m_shapes.push_back(shape);
  return known;
}

std::string Scene::itemPath(std::size_t index) const {
  return tree(m_items[index].file).path(m_itemNodes[index]);
}

const MeshAnalysis& Scene::analysis(Located solid) {
  std::unique_ptr<MeshAnalysis>& known = m_analyses[{solid.file, solid.node}];
  if (!known) {
    Subject about;
    if (solid.file == 0) about = subject(solid.node);
    known = std::make_unique<MeshAnalysis>(analyse(viewOf(node(solid).element), about, m_settings));
  }
  return *known;
}

}  // namespace ztcad::inspect
