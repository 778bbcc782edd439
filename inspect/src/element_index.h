#pragma once

#include <ztCAD/inspect.h>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "document_tree.h"

namespace ztcad::inspect {

/// Finds the elements of a document by path, name and address.
class ElementIndex {
 public:
  explicit ElementIndex(ztCAD_GMDDocument* document);

  NodeIndex findPath(std::string_view path) const;
  /// The nodes with a name, in the order of the document; null: none.
  const std::vector<NodeIndex>* named(std::string_view name) const;
  NodeIndex find(const ztCAD_Base* element) const;
  const DocumentTree& tree() const { return m_tree; }

 private:
  struct Step {
    NodeIndex holder;
    std::string_view tag;
    std::int32_t number;

    bool operator==(const Step& other) const {
      return holder == other.holder && tag == other.tag && number == other.number;
    }
  };
  struct HashOfStep {
    std::size_t operator()(const Step& step) const;
  };

  DocumentTree m_tree;
  std::unordered_map<Step, NodeIndex, HashOfStep> m_steps;
  std::unordered_map<std::string_view, std::vector<NodeIndex>> m_names;
  std::unordered_map<const ztCAD_Base*, NodeIndex> m_elements;
};

}  // namespace ztcad::inspect

/// What the C interface knows as an index: built at the first question.
struct ztCADInspect_Index {
  ztCAD_GMDDocument* document;
  std::unique_ptr<ztcad::inspect::ElementIndex> built;

  const ztcad::inspect::ElementIndex& index() {
    if (!built) built = std::make_unique<ztcad::inspect::ElementIndex>(document);
    return *built;
  }
};
