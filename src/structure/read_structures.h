#pragma once

#include <memory>
#include <vector>

#include "../property/base.h"

namespace ztcad {

/// Structures on the heap with one owner: those that reading and cloning make.
using StructureList = std::vector<std::unique_ptr<ztCAD_Base>>;

/// Adds a structure to the list of the innermost `StructureListScope`; without one, to the list shared by all documents.
void keepReadStructure(std::unique_ptr<ztCAD_Base> structure);

/// Collects the structures that are made while it exists.
class StructureListScope {
 public:
  /// @param list not owned
  explicit StructureListScope(StructureList& list);
  StructureListScope(const StructureListScope&) = delete;
  StructureListScope& operator=(const StructureListScope&) = delete;
  ~StructureListScope();

 private:
  StructureList* const m_outer;
};

/// Moves structures into the shared list; on an exception nothing has changed.
void shareReadStructures(StructureList& list);
/// Destroys the structures of the shared list, whichever documents and structures hold them.
void clearReadStructures();

/// During the unload step objects are destroyed in any order: structures then no longer remove themselves from their
/// holders, which may not exist any more.
void abandonNestedStructures(bool abandoned);

}  // namespace ztcad
