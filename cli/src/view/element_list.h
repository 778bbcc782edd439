#pragma once

#include <ztCAD/ztCAD_c.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace cli {

/// An element of a document.
struct ListedElement {
  ztCAD_Base* element = nullptr;
  std::int32_t kind = 0;     // that of its list: structures nested in a template are structures
  std::int64_t parent = -1;  // index of its holder; -1: the document
  const char* tag = "";      // with the number, its step in a path: "point"
  std::int64_t number = 0;   // among its siblings of that tag, from 1; 0: a save does not write it
};

/// Every element of a document, templates and what they hold included: holders before what they hold, and
/// siblings in the order in which `info` lists them.
class ElementList {
 public:
  static constexpr std::int64_t none = -1;

  ElementList() = default;
  explicit ElementList(ztCAD_GMDDocument* document);

  const std::vector<ListedElement>& elements() const { return m_elements; }
  /// The index of an element; none for null and for one of another document.
  std::int64_t find(const ztCAD_Base* element) const;

 private:
  template <typename Holder>
  void add(Holder* holder, std::int64_t parent);

  std::vector<ListedElement> m_elements;
  std::unordered_map<const ztCAD_Base*, std::int64_t> m_indices;
};

}  // namespace cli
