#pragma once

#include <cstdint>
#include <tuple>
#include <type_traits>
#include <typeinfo>

#include "../core/document/document.h"
#include "../structure/structure.h"
#include "c/types.h"

/// The way between the kinds of elements, which are numbers at the boundary, and their classes and containers.

namespace ztcad {

// -------------------------------------------------------------------------------- containers

/// The containers of each holder; their element classes are what a kind stands for.
constexpr auto containersOf(const ztCAD_DocumentContent* /*holder*/) {
  using C = ztCAD_DocumentContent;
  return std::make_tuple(&C::structures, &C::structureReferences, &C::templateStructures, &C::points,
                         &C::lines, &C::spheres, &C::triangles, &C::mipElements, &C::details,
                         &C::detailReferences, &C::templateDetails, &C::templatePoints, &C::pointReferences,
                         &C::templateLines, &C::lineReferences, &C::templateMipElements, &C::mipReferences,
                         &C::templateTriangles, &C::triangleReferences);
}

constexpr auto containersOf(const ztCAD_StructureContent* /*holder*/) {
  using C = ztCAD_StructureContent;
  return std::make_tuple(&C::structureReferences, &C::points, &C::lines, &C::spheres, &C::triangles,
                         &C::mipElements, &C::details, &C::detailReferences, &C::pointReferences,
                         &C::lineReferences, &C::mipReferences, &C::triangleReferences);
}

constexpr auto containersOf(const ztCAD_DetailContent* /*holder*/) {
  using C = ztCAD_DetailContent;
  return std::make_tuple(&C::points, &C::spheres, &C::triangles, &C::lines);
}

// -------------------------------------------------------------------------------- kinds

template <typename Element>
inline constexpr std::int32_t kindOf = ztCAD_ElementNone;
template <>
inline constexpr std::int32_t kindOf<ztCAD_Detail> = ztCAD_ElementDetail;
template <>
inline constexpr std::int32_t kindOf<ztCAD_TmplDetail> = ztCAD_ElementTmplDetail;
template <>
inline constexpr std::int32_t kindOf<ztCAD_DetailRef> = ztCAD_ElementDetailRef;
template <>
inline constexpr std::int32_t kindOf<ztCAD_Structure> = ztCAD_ElementStructure;
template <>
inline constexpr std::int32_t kindOf<ztCAD_TmplStructure> = ztCAD_ElementTmplStructure;
template <>
inline constexpr std::int32_t kindOf<ztCAD_StructureRef> = ztCAD_ElementStructureRef;
template <>
inline constexpr std::int32_t kindOf<ztCAD_Point> = ztCAD_ElementPoint;
template <>
inline constexpr std::int32_t kindOf<ztCAD_TmplPoint> = ztCAD_ElementTmplPoint;
template <>
inline constexpr std::int32_t kindOf<ztCAD_PointRef> = ztCAD_ElementPointRef;
template <>
inline constexpr std::int32_t kindOf<ztCAD_Line> = ztCAD_ElementLine;
template <>
inline constexpr std::int32_t kindOf<ztCAD_TmplLine> = ztCAD_ElementTmplLine;
template <>
inline constexpr std::int32_t kindOf<ztCAD_LineRef> = ztCAD_ElementLineRef;
template <>
inline constexpr std::int32_t kindOf<ztCAD_ElementMIP> = ztCAD_ElementElementMIP;
template <>
inline constexpr std::int32_t kindOf<ztCAD_TmplElementMIP> = ztCAD_ElementTmplElementMIP;
template <>
inline constexpr std::int32_t kindOf<ztCAD_ElementMipRef> = ztCAD_ElementElementMipRef;
template <>
inline constexpr std::int32_t kindOf<ztCAD_Triangle> = ztCAD_ElementTriangle;
template <>
inline constexpr std::int32_t kindOf<ztCAD_TmplTriangle> = ztCAD_ElementTmplTriangle;
template <>
inline constexpr std::int32_t kindOf<ztCAD_TriangleRef> = ztCAD_ElementTriangleRef;
template <>
inline constexpr std::int32_t kindOf<ztCAD_Sphere> = ztCAD_ElementSphere;

// -------------------------------------------------------------------------------- depth

/// How many levels of XML elements an element takes: lines and solids have lists as children. A detail counts as deep as it
/// may become where it lies.
template <typename Element>
inline constexpr int levelsOf = 1;
template <>
inline constexpr int levelsOf<ztCAD_Line> = 2;
template <>
inline constexpr int levelsOf<ztCAD_Triangle> = 2;
template <>
inline constexpr int levelsOf<ztCAD_Detail> = 3;

// -------------------------------------------------------------------------------- from the number to the class

/// Calls `use` with the container of that kind in `content`; `otherwise` where there is none.
template <typename Content, typename Result, typename Use>
Result withContainer(Content& content, std::int32_t kind, Result otherwise, Use&& use) {
  const auto useIfMeant = [&](auto container) {
    using Element = typename std::remove_reference_t<decltype(content.*container)>::value_type;
    if (kindOf<Element> != kind) return false;
    otherwise = use(content.*container);
    return true;
  };
  std::apply([&](auto... containers) { (useIfMeant(containers) || ...); }, containersOf(&content));
  return otherwise;
}

/// Calls `use` with the element as what it is, if it is of a class that `use` takes; else `otherwise`, for null too.
/// `Base` is `ztCAD_Base` or `const ztCAD_Base`.
template <typename Base, typename Result, typename Use>
Result withElement(Base* element, Result otherwise, Use&& use) {
  const auto useIfMeant = [&](auto container) {
    using Plain = typename std::remove_reference_t<decltype(std::declval<ztCAD_DocumentContent>().*
                                                            container)>::value_type;
    using Element = std::conditional_t<std::is_const_v<Base>, const Plain, Plain>;
    if (typeid(*element) != typeid(Plain)) return false;
    if constexpr (std::is_invocable_r_v<Result, Use, Element&>)
      otherwise = use(static_cast<Element&>(*element));
    return true;
  };
  if (element)
    std::apply([&](auto... containers) { (useIfMeant(containers) || ...); },
               containersOf(static_cast<const ztCAD_DocumentContent*>(nullptr)));
  return otherwise;
}

}  // namespace ztcad
