#include "structure_pass.h"

#include <algorithm>
#include <vector>

#include "../core/name_counter.h"
#include "orders.h"

namespace ztcad {

void StructurePass::meetInDocument(const ztCAD_commonStructure& structure) {
  if (structure.holdingEntries() > 0) m_met.insert(&structure);
}

/// Whether a nested structure is met for the first time.
bool StructurePass::meetNested(const ztCAD_commonStructure& structure) {
  if (structure.holdingEntries() > 1) return m_met.insert(&structure).second;
  return m_met.empty() || m_met.count(&structure) == 0;
}

void StructurePass::unifyNames(ztCAD_commonStructure& structure) {
  NameCounter counter;
  std::vector<ztCAD_commonStructure*> metFirst;
  for (ztCAD_commonStructure* const nested : structure.structures()) {
    if (meetNested(*nested)) {
      renameIfTaken(*nested, counter);
      metFirst.push_back(nested);
    } else {
      counter.isNew(nested->name());  // it keeps the name, which no later element here may take
    }
  }
  visitInOrder(StructureTextOrder(), structure.content(),
               [&counter](auto& elements) { renameDuplicates(elements, counter); });
  for (ztCAD_commonStructure* const nested : metFirst)
    unifyNames(*nested);
}

bool StructurePass::passesCheck(const ztCAD_commonStructure& structure) {
  for (const ztCAD_commonStructure* const nested : structure.structures())
    if (meetNested(*nested) && !passesCheck(*nested)) return false;
  return !anyKind<ztCAD_StructureContent>([&structure](auto kind) {
    const auto& elements = decltype(kind)::in(structure.content());
    return !std::all_of(elements.begin(), elements.end(),
                        [](const auto& element) { return isSound(element); });
  });
}

void unifyNames(ztCAD_DetailContent& content) {
  NameCounter counter;
  visitInOrder(DetailOrder(), content, [&counter](auto& elements) { renameDuplicates(elements, counter); });
}

}  // namespace ztcad
