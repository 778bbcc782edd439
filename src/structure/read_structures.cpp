#include "read_structures.h"

#include <iterator>
#include <utility>

#include "../support/process_object.h"

namespace ztcad {

namespace {
ProcessObject<StructureList> sharedList;
StructureList* innermostScope = nullptr;
}  // namespace

void keepReadStructure(std::unique_ptr<ztCAD_Base> structure) {
  StructureList& list = innermostScope ? *innermostScope : sharedList.get();
  list.push_back(std::move(structure));
}

StructureListScope::StructureListScope(StructureList& list) : m_outer(std::exchange(innermostScope, &list)) {}

StructureListScope::~StructureListScope() { innermostScope = m_outer; }

void shareReadStructures(StructureList& list) {
  StructureList& shared = sharedList.get();
  if (shared.empty()) {
    shared.swap(list);
    return;
  }
  shared.insert(shared.end(), std::make_move_iterator(list.begin()), std::make_move_iterator(list.end()));
  list.clear();
}

void clearReadStructures() { sharedList.release(); }

}  // namespace ztcad
