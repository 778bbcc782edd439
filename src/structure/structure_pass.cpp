#include "structure_pass.h"

#include <algorithm>
#include <vector>

#include "../core/name_counter.h"
#include "level_names.h"
#include "orders.h"

namespace ztcad {

void StructurePass::mark(const ztCAD_commonStructure& structure) {
  if (structure.isNested()) m_visited.insert(&structure);
}

/// Whether this is the first visit to a nested structure. One that is held once needs no record.
bool StructurePass::visitNested(const ztCAD_commonStructure& structure) {
  if (structure.isShared()) return m_visited.insert(&structure).second;
  return m_visited.empty() || m_visited.count(&structure) == 0;
}

bool StructurePass::hasDifferentNames(const ztCAD_commonStructure& structure) const {
  if (m_isAsRead) return structure.m_namesWereDifferent;
  NameRuns names;
  return takeNames(structure, into(names)) && names.areDifferent();
}

void StructurePass::unifyNames(ztCAD_commonStructure& structure, ElementRenames& renames) {
  std::vector<ztCAD_commonStructure*> firstVisited;
  for (ztCAD_commonStructure* const nested : structure.structures())
    if (visitNested(*nested)) firstVisited.push_back(nested);
  if (!hasDifferentNames(structure)) renameDuplicatesIn(structure, firstVisited, renames);
  for (ztCAD_commonStructure* const nested : firstVisited)
    unifyNames(*nested, renames);
}

/// @param firstVisited those of the nested structures that may be renamed, in their order
void StructurePass::renameDuplicatesIn(ztCAD_commonStructure& structure,
                                       const std::vector<ztCAD_commonStructure*>& firstVisited,
                                       ElementRenames& renames) {
  NameCounter counter;
  auto next = firstVisited.begin();
  for (ztCAD_commonStructure* const nested : structure.structures()) {
    if (next != firstVisited.end() && *next == nested) {
      renameIfTaken(*nested, counter, renames);
      ++next;
    } else {
      counter.isNew(nested->shortName());  // it keeps its name, which later elements here must not take
    }
  }
  visitInOrder(StructureTextOrder(), structure.content(),
               [&](auto& elements) { renameDuplicates(elements, counter, renames); });
}

bool StructurePass::passesCheck(const ztCAD_commonStructure& structure) {
  for (const ztCAD_commonStructure* const nested : structure.structures())
    if (visitNested(*nested) && !passesCheck(*nested)) return false;
  return !anyKind<ztCAD_StructureContent>([&structure](auto kind) {
    const auto& elements = decltype(kind)::in(structure.content());
    return !std::all_of(elements.begin(), elements.end(),
                        [](const auto& element) { return isSound(element); });
  });
}

std::uint64_t StructureCount::countOf(const ztCAD_commonStructure& structure) {
  const auto known = structure.isShared() ? m_shared.find(&structure) : m_shared.end();
  if (known != m_shared.end()) return known->second;
  std::uint64_t count = 1;
  for (const ztCAD_commonStructure* const nested : structure.structures())
    count = sum(count, countOf(*nested));
  if (structure.isShared()) m_shared.emplace(&structure, count);
  return count;
}

void unifyNames(ztCAD_DetailContent& content, ElementRenames& renames) {
  NameCounter counter;
  visitInOrder(DetailOrder(), content, [&](auto& elements) { renameDuplicates(elements, counter, renames); });
}

}  // namespace ztcad
