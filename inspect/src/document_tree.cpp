#include "document_tree.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <unordered_map>

#include "element.h"

namespace ztcad::inspect {

namespace {

// The orders of the format: docs/format.md, "Order". A tree of what a save writes must follow them, because
// numbers in paths count in these orders.
const int documentOrder[] = {
    ztCAD_ElementTmplPoint,    ztCAD_ElementPoint,          ztCAD_ElementPointRef,
    ztCAD_ElementTmplLine,     ztCAD_ElementLine,           ztCAD_ElementLineRef,
    ztCAD_ElementElementMIP,   ztCAD_ElementTmplElementMIP, ztCAD_ElementElementMipRef,
    ztCAD_ElementSphere,       ztCAD_ElementTriangle,       ztCAD_ElementTmplTriangle,
    ztCAD_ElementTriangleRef,  ztCAD_ElementDetail,         ztCAD_ElementDetailRef,
    ztCAD_ElementStructureRef, ztCAD_ElementStructure,      ztCAD_ElementTmplDetail,
    ztCAD_ElementTmplStructure};
const int structureOrder[] = {ztCAD_ElementPoint,       ztCAD_ElementPointRef,   ztCAD_ElementLine,
                              ztCAD_ElementLineRef,     ztCAD_ElementElementMIP, ztCAD_ElementElementMipRef,
                              ztCAD_ElementSphere,      ztCAD_ElementTriangle,   ztCAD_ElementTriangleRef,
                              ztCAD_ElementDetail,      ztCAD_ElementDetailRef,  ztCAD_ElementStructure,
                              ztCAD_ElementStructureRef};
const int detailOrder[] = {ztCAD_ElementPoint, ztCAD_ElementSphere, ztCAD_ElementTriangle, ztCAD_ElementLine};

struct Tag {
  int kind;
  const char* tag;
};
const Tag tags[] = {
    {ztCAD_ElementDetail, "detail"},
    {ztCAD_ElementTmplDetail, "template_detail"},
    {ztCAD_ElementStructure, "structure"},
    {ztCAD_ElementTmplStructure, "template_structure"},
    {ztCAD_ElementDetailRef, "detailRef"},
    {ztCAD_ElementStructureRef, "structureRef"},
    {ztCAD_ElementPoint, "point"},
    {ztCAD_ElementTmplPoint, "templatePoint"},
    {ztCAD_ElementPointRef, "pointRef"},
    {ztCAD_ElementLine, "line"},
    {ztCAD_ElementTmplLine, "templateLine"},
    {ztCAD_ElementLineRef, "lineRef"},
    {ztCAD_ElementElementMIP, "elementMIP"},
    {ztCAD_ElementTmplElementMIP, "templateElementMIP"},
    {ztCAD_ElementElementMipRef, "elementMipRef"},
    {ztCAD_ElementTriangle, "solid"},
    {ztCAD_ElementTmplTriangle, "templateSolid"},
    {ztCAD_ElementTriangleRef, "solidRef"},
    {ztCAD_ElementSphere, "solid"},
};

const int kindCount = 23;

/// Spheres and triangulated solids share their tag, and so their numbers.
int countedWith(int kind) { return kind == ztCAD_ElementSphere ? ztCAD_ElementTriangle : kind; }

}  // namespace

const char* tagOf(int kind) {
  for (const Tag& row : tags)
    if (row.kind == kind) return row.tag;
  return "";
}

class DocumentTree::Builder {
 public:
  explicit Builder(DocumentTree& tree) : m_tree(tree) {}

  void addDocument(ztCAD_GMDDocument* document) {
    Numbers numbers = {};
    for (const int kind : documentOrder)
      addAll(numbers, noNode, m_tree.m_top, listed([&](ztCAD_Base** elements, std::int32_t capacity) {
               return ztCAD_listDoc(document, kind, elements, capacity);
             }));
  }

 private:
  using Numbers = std::array<std::int32_t, kindCount>;

  template <class List>
  static std::vector<ztCAD_Base*> listed(const List& list) {
    std::vector<ztCAD_Base*> elements(static_cast<std::size_t>(list(nullptr, 0)));
    if (!elements.empty()) list(elements.data(), static_cast<std::int32_t>(elements.size()));
    return elements;
  }

  void addAll(Numbers& numbers, NodeIndex holder, std::vector<NodeIndex>& children,
              const std::vector<ztCAD_Base*>& elements) {
    for (ztCAD_Base* const element : elements) {
      const int kind = ztCAD_getKind(element);
      if (kind <= 0 || kind >= kindCount) continue;
      const bool isWritten = !isMassElement(kind) || ztCAD_getMIP(element, nullptr, 0) >= 0;
      const std::int32_t number = isWritten ? ++numbers[static_cast<std::size_t>(countedWith(kind))] : 0;
      if (isStructure(kind)) {
        const auto [known, isNew] = m_structures.emplace(element, noNode);
        if (!isNew) {
          // a ring, which ztCAD prevents, would have no index yet
          if (known->second != noNode) children.push_back(known->second);
          continue;
        }
      }
      children.push_back(add(element, kind, number, holder));
    }
  }

  NodeIndex add(ztCAD_Base* element, int kind, std::int32_t number, NodeIndex holder) {
    const auto index = static_cast<NodeIndex>(m_tree.m_nodes.size());
    Node node;
    node.element = element;
    node.name = nameOf(element);
    node.kind = kind;
    node.number = number;
    node.holder = holder;
    m_tree.m_nodes.push_back(std::move(node));
    if (!isHolder(kind)) return index;

    // ztCAD nests structures at most 256 levels deep
    std::vector<NodeIndex> children;
    Numbers numbers = {};
    if (isDetail(kind)) {
      auto* const detail = reinterpret_cast<ztCAD_cmnDetail*>(element);
      for (const int inner : detailOrder)
        addAll(numbers, index, children, listed([&](ztCAD_Base** elements, std::int32_t capacity) {
                 return ztCAD_listDetail(detail, inner, elements, capacity);
               }));
    } else {
      auto* const structure = reinterpret_cast<ztCAD_commonStructure*>(element);
      for (const int inner : structureOrder)
        addAll(numbers, index, children, listed([&](ztCAD_Base** elements, std::int32_t capacity) {
                 return ztCAD_listStructure(structure, inner, elements, capacity);
               }));
      m_structures[element] = index;
    }
    Node& filled = m_tree.m_nodes[static_cast<std::size_t>(index)];
    filled.firstChild = m_tree.m_children.size();
    filled.childCount = children.size();
    m_tree.m_children.insert(m_tree.m_children.end(), children.begin(), children.end());
    return index;
  }

  DocumentTree& m_tree;
  std::unordered_map<const ztCAD_Base*, NodeIndex> m_structures;
};

DocumentTree::DocumentTree(ztCAD_GMDDocument* document) { Builder(*this).addDocument(document); }

std::string DocumentTree::path(NodeIndex index) const {
  std::vector<NodeIndex> steps;
  for (NodeIndex at = index; at != noNode; at = node(at).holder) {
    if (node(at).number == 0) return {};
    steps.push_back(at);
  }
  std::string path = "/GMD";
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
    path += '/';
    path += tagOf(node(*step).kind);
    path += '[' + std::to_string(node(*step).number) + ']';
  }
  return path;
}

}  // namespace ztcad::inspect
