#pragma once

#include <cstddef>
#include <memory>

#include "../property/base.h"

namespace ztcad {

/// The structures that reading and copying made on the heap. They belong to this list alone, whichever
/// document or structure holds them; the clean-up that every document's end brings destroys them all.
void keepReadStructure(std::unique_ptr<ztCAD_Base> structure);
void clearReadStructures();

/// How many there are, and the way back to that number: those that came later are destroyed.
std::size_t readStructureCount();
void forgetReadStructuresSince(std::size_t count);

}  // namespace ztcad
