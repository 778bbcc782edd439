#pragma once

#include <cstdint>
#include <type_traits>
#include <typeinfo>

#include "../core/document/orders.h"
#include "c/types.h"

/// Maps the kind numbers of the C interface to classes and containers.

namespace ztcad {

#define ZTCAD_KIND(element, container, ...)                         \
  static_assert(kinds::container::number == ztCAD_Element##element, \
                "the table of kinds and ztCAD_ElementKind differ");
#include "../structure/kinds.def"
#undef ZTCAD_KIND

/// Calls `use` with the container of that kind in `content`.
/// @return the result of `use`; `otherwise` if the content has no such container
template <typename Content, typename Result, typename Use>
Result withContainer(Content& content, std::int32_t number, Result otherwise, Use&& use) {
  anyKind<std::remove_const_t<Content>>([&](auto kind) {
    using Kind = decltype(kind);
    if (Kind::number != number) return false;
    otherwise = use(Kind::in(content));
    return true;
  });
  return otherwise;
}

/// Calls `use(element, kind)` with the element cast to its own class, if its kind has all the fields.
/// @tparam Fields  `KindFields`
/// @param  element a `ztCAD_Base` or `const ztCAD_Base`; may be null
/// @return the result of `use`; `otherwise` for null, for kinds without the fields and for unknown classes
template <unsigned Fields, typename Base, typename Result, typename Use>
Result withKind(Base* element, Result otherwise, Use&& use) {
  if (!element) return otherwise;
  anyKindAtAll([&](auto kind) {
    using Kind = decltype(kind);
    using Plain = typename Kind::Element;
    using Element = std::conditional_t<std::is_const_v<Base>, const Plain, Plain>;
    if (typeid(*element) != typeid(Plain)) return false;
    if constexpr ((Kind::fields & Fields) == Fields) otherwise = use(static_cast<Element&>(*element), kind);
    return true;
  });
  return otherwise;
}

/// Calls `use(element)` likewise.
template <unsigned Fields, typename Base, typename Result, typename Use>
Result withFields(Base* element, Result otherwise, Use&& use) {
  return withKind<Fields>(element, otherwise, [&use](auto& known, auto /*kind*/) { return use(known); });
}

}  // namespace ztcad
