#include "check.h"

#include <algorithm>

#include "../name_counter.h"
#include "document.h"

namespace {
template <typename Container>
bool namesAreUnique(const Container& elements) {
  ztcad::NameCounter names;
  names.expect(elements.size());
  return std::all_of(elements.begin(), elements.end(),
                     [&names](const auto& element) { return names.isNew(element.name()); });
}
}  // namespace

bool ztcad::passesCheck(const ztCAD_DocumentContent& content) {
  const bool templatesAreFound =
      namesAreUnique(content.templateDetails) && namesAreUnique(content.templateStructures) &&
      namesAreUnique(content.templatePoints) && namesAreUnique(content.templateMipElements);
  return templatesAreFound &&
         std::all_of(content.structures.begin(), content.structures.end(),
                     [](const ztCAD_Structure& structure) { return structure.passesCheck(); });
}
