#pragma once

#include <memory>
#include <vector>

#include "../property/base.h"

namespace ztcad {

/// Owns structures that reading and cloning create.
using StructureList = std::vector<std::unique_ptr<ztCAD_Base>>;

/// Adds a structure to the list of the innermost `StructureListScope`, or, if there is no scope, to the list
/// that all documents share.
void keepReadStructure(std::unique_ptr<ztCAD_Base> structure);

/// While it exists, structures that are read or cloned go to its list. Scopes nest.
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

/// Moves structures into the shared list. If it throws, nothing has changed.
void shareReadStructures(StructureList& list);
/// Destroys the structures of the shared list. They disappear from the structures that hold them.
void clearReadStructures();

/// Set for the unload step, in which objects are destroyed in any order: structures then no longer remove
/// themselves from their holders, which may be gone already.
void abandonNestedStructures(bool abandoned);

}  // namespace ztcad
