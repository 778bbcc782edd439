#pragma once

#include <algorithm>

#include "../core/elements_ahead.h"
#include "../core/name_runs.h"
#include "kinds.h"
#include "orders.h"

/// @file
/// The names of one level: of the elements that a document, a structure or a detail holds.

namespace ztcad {

/// Calls `take(container, name)` for the elements in the containers of an order, until it returns false.
/// @return whether it never did
template <typename Order, typename Content, typename Take>
bool takeNames(Order order, const Content& content, Take&& take) {
  bool goesOn = true;
  visitInOrder(order, content, [&](const auto& elements) {
    goesOn = goesOn && std::all_of(elements.begin(), elements.end(), [&](const auto& element) {
               prefetchStartAfter<96>(element);
               return take(&elements, element.shortName());
             });
  });
  return goesOn;
}

/// The same for what a structure holds.
template <typename Take>
bool takeNames(const ztCAD_commonStructure& structure, Take&& take) {
  const auto& nested = structure.structures();
  return std::all_of(nested.begin(), nested.end(),
                     [&](const auto& element) { return take(&nested, element->shortName()); }) &&
         takeNames(StructureTextOrder(), structure.content(), take);
}

/// Gives `takeNames` what takes the names.
/// @{
inline auto into(NameRuns& names) {
  return [&names](const void* container, const ztCAD_ShortText& name) { return names.take(container, name); };
}

inline auto into(FewNames& names) {
  return [&names](const void* /*container*/, const ztCAD_ShortText& name) { return names.take(name); };
}
/// @}

}  // namespace ztcad
