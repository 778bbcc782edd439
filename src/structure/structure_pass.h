#pragma once

#include <unordered_set>

class ztCAD_commonStructure;
struct ztCAD_DetailContent;

namespace ztcad {

/// One pass over structures that meets each structure object once, however many holders it has. The pass takes time in
/// proportion to the objects, not to the paths that lead to them, and renames each object at most once.
class StructurePass {
 public:
  /// Counts the structures of a document's own container as met; nested in another structure, they are skipped.
  template <typename Structures>
  void meetAll(const Structures& structures) {
    for (const auto& structure : structures)
      meetInDocument(structure);
  }

  /// Makes the names in a structure unique, then those in its nested structures, each level for itself. A nested
  /// structure that was met before keeps its name.
  void unifyNames(ztCAD_commonStructure& structure);

  /// Whether a structure and all that is nested in it is sound. The pass ends with the first that is not.
  bool passesCheck(const ztCAD_commonStructure& structure);

 private:
  void meetInDocument(const ztCAD_commonStructure& structure);
  bool meetNested(const ztCAD_commonStructure& structure);

  std::unordered_set<const ztCAD_commonStructure*> m_met;  // of those with one place only, none is in here
};

/// Makes the names in a detail unique.
void unifyNames(ztCAD_DetailContent& content);

}  // namespace ztcad
