#include "read_structures.h"

#include <vector>

#include "../support/process_object.h"

namespace ztcad {

namespace {
ProcessObject<std::vector<std::unique_ptr<ztCAD_Base>>> readStructures;
}

void keepReadStructure(std::unique_ptr<ztCAD_Base> structure) {
  readStructures.get().push_back(std::move(structure));
}

void clearReadStructures() { readStructures.release(); }

std::size_t readStructureCount() { return readStructures.get().size(); }

void forgetReadStructuresSince(std::size_t count) {
  while (readStructures.get().size() > count)
    readStructures.get().pop_back();
}

}  // namespace ztcad
