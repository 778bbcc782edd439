#include "check.h"

#include <algorithm>
#include <QSet>

#include "document.h"

namespace {
template <typename Container>
bool namesAreUnique(const Container& elements) {
  QSet<QString> seen;
  for (const auto& element : elements) {
    if (seen.contains(element.name())) return false;
    seen.insert(element.name());
  }
  return true;
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
