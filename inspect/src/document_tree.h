#pragma once

#include <ztCAD/ztCAD_c.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ztcad::inspect {

/// Index of a node; -1: none.
using NodeIndex = std::int64_t;
constexpr NodeIndex noNode = -1;

/// An element of a document.
struct Node {
  const ztCAD_Base* element = nullptr;
  std::string name;
  int kind = 0;
  std::int32_t number = 0;     // among the siblings of its tag, from 1; 0: a save does not write it
  NodeIndex holder = noNode;   // where it was found first
  std::size_t firstChild = 0;  // in DocumentTree::children
  std::size_t childCount = 0;
};

/// The elements of a document, in the order in which a save writes them: holders before what they hold. A
/// nested structure that several structures hold is one node, a child of each of them.
class DocumentTree {
 public:
  DocumentTree() = default;
  explicit DocumentTree(ztCAD_GMDDocument* document);

  const std::vector<Node>& nodes() const { return m_nodes; }
  const Node& node(NodeIndex index) const { return m_nodes[static_cast<std::size_t>(index)]; }
  const std::vector<NodeIndex>& top() const { return m_top; }
  /// The children of a node.
  const NodeIndex* begin(const Node& node) const { return m_children.data() + node.firstChild; }
  const NodeIndex* end(const Node& node) const { return begin(node) + node.childCount; }

  /// "/GMD/structure[1]/point[2]"; empty for what a save does not write.
  std::string path(NodeIndex index) const;

 private:
  class Builder;

  std::vector<Node> m_nodes;
  std::vector<NodeIndex> m_children;
  std::vector<NodeIndex> m_top;
};

/// The tag that elements of a kind are written with.
const char* tagOf(int kind);

}  // namespace ztcad::inspect
