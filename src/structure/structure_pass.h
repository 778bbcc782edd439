#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "../core/renames.h"

class ztCAD_Base;
class ztCAD_commonStructure;
struct ztCAD_DetailContent;

namespace ztcad {

using ElementRenames = Renames<ztCAD_Base>;

/// One pass over structures that visits each structure object once, however many holders it has. The pass
/// takes time in proportion to the number of objects, not of the paths that lead to them, and renames each
/// object at most once.
class StructurePass {
 public:
  StructurePass() = default;
  /// @param isAsRead whether the structures have just been read and were not changed since then
  explicit StructurePass(bool isAsRead) : m_isAsRead(isAsRead) {}

  /// Marks the structures of a document's own container as visited, so the pass skips them where they are
  /// nested.
  template <typename Structures>
  void markAll(const Structures& structures) {
    for (const auto& structure : structures)
      mark(structure);
  }

  /// Makes the names in a structure unique, then those in its nested structures, each level separately. A
  /// nested structure that was visited before keeps its name.
  void unifyNames(ztCAD_commonStructure& structure, ElementRenames& renames);

  /// Whether a structure and everything nested in it is sound. Stops at the first element that is not.
  bool passesCheck(const ztCAD_commonStructure& structure);

 private:
  void mark(const ztCAD_commonStructure& structure);
  bool visitNested(const ztCAD_commonStructure& structure);

  bool hasDifferentNames(const ztCAD_commonStructure& structure) const;
  static void renameDuplicatesIn(ztCAD_commonStructure& structure,
                                 const std::vector<ztCAD_commonStructure*>& firstVisited,
                                 ElementRenames& renames);

  bool m_isAsRead = false;
  std::unordered_set<const ztCAD_commonStructure*> m_visited;  // only those that the pass can reach twice
};

/// Counts structures with those nested in them, each as often as it is written. Takes time in proportion to
/// the number of objects.
class StructureCount {
 public:
  void add(const ztCAD_commonStructure& structure) { m_count = sum(m_count, countOf(structure)); }
  /// Not more than `most`.
  std::uint64_t count() const { return m_count; }

  static constexpr std::uint64_t most = std::uint64_t{1} << 62;

 private:
  static std::uint64_t sum(std::uint64_t a, std::uint64_t b) { return std::min(a + b, most); }
  std::uint64_t countOf(const ztCAD_commonStructure& structure);

  std::uint64_t m_count = 0;
  std::unordered_map<const ztCAD_commonStructure*, std::uint64_t> m_shared;
};

/// Makes the names in a detail unique.
void unifyNames(ztCAD_DetailContent& content, ElementRenames& renames);

}  // namespace ztcad
