#include "check.h"

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
  return namesAreUnique(content.templatePoints);
}
