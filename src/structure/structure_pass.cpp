#include "structure_pass.h"

#include <algorithm>
#include <vector>

#include "../core/name_counter.h"
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

void StructurePass::unifyNames(ztCAD_commonStructure& structure, ElementRenames& renames) {
  NameCounter counter;
  std::vector<ztCAD_commonStructure*> firstVisited;
  for (ztCAD_commonStructure* const nested : structure.structures()) {
    if (visitNested(*nested)) {
      renameIfTaken(*nested, counter, renames);
      firstVisited.push_back(nested);
    } else {
      counter.isNew(nested->shortName());  // it keeps its name, which later elements here must not take
    }
  }
  visitInOrder(StructureTextOrder(), structure.content(),
               [&](auto& elements) { renameDuplicates(elements, counter, renames); });
  for (ztCAD_commonStructure* const nested : firstVisited)
    unifyNames(*nested, renames);
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
