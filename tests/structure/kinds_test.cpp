// The table of kinds against the classes that it names.

#include "structure/kinds.h"

#include <gtest/gtest.h>
#include <set>
#include <type_traits>

namespace {

TEST(Kinds, TagInTheTableIsThatOfTheClass) {
  int kinds = 0;
  ztcad::anyKindAtAll([&kinds](auto kind) {
    using Kind = decltype(kind);
    EXPECT_EQ(typename Kind::Element().elementName(), Kind::tag());
    ++kinds;
    return false;
  });
  EXPECT_EQ(kinds, 19);
}

TEST(Kinds, NumbersDiffer) {
  std::set<std::int32_t> numbers;
  ztcad::anyKindAtAll([&numbers](auto kind) {
    EXPECT_TRUE(numbers.insert(decltype(kind)::number).second) << decltype(kind)::number;
    return false;
  });
}

template <typename Element, typename = void>
constexpr bool canCenter = false;
template <typename Element>
constexpr bool canCenter<Element, std::void_t<decltype(std::declval<Element&>().center())>> = true;
template <typename Element, typename = void>
constexpr bool canVertices = false;
template <typename Element>
constexpr bool canVertices<Element, std::void_t<decltype(std::declval<Element&>().vertices())>> = true;
template <typename Element, typename = void>
constexpr bool canFaces = false;
template <typename Element>
constexpr bool canFaces<Element, std::void_t<decltype(std::declval<Element&>().faces())>> = true;
template <typename Element, typename = void>
constexpr bool canRadius = false;
template <typename Element>
constexpr bool canRadius<Element, std::void_t<decltype(std::declval<Element&>().radius())>> = true;
template <typename Element, typename = void>
constexpr bool canMip = false;
template <typename Element>
constexpr bool canMip<Element, std::void_t<decltype(std::declval<Element&>().hasMIP())>> = true;
template <typename Element, typename = void>
constexpr bool canArchetype = false;
template <typename Element>
constexpr bool canArchetype<Element, std::void_t<decltype(std::declval<Element&>().archetype())>> = true;

TEST(Kinds, FieldsInTheTableAreThoseOfTheClass) {
  ztcad::anyKindAtAll([](auto kind) {
    using Kind = decltype(kind);
    using Element = typename Kind::Element;
    const auto expect = [](bool has, unsigned field) {
      EXPECT_EQ(has, (Kind::fields & field) != 0) << qPrintable(Kind::tag()) << ' ' << field;
    };
    expect(std::is_base_of_v<ztCAD_baseElement, Element>, ztcad::HasMethod);
    expect(canCenter<Element>, ztcad::HasCenter);
    expect(canRadius<Element>, ztcad::HasRadius);
    expect(canVertices<Element>, ztcad::HasVertices);
    expect(canFaces<Element>, ztcad::HasFaces);
    expect(canMip<Element>, ztcad::HasMip);
    expect(canArchetype<Element>, ztcad::HasArchetype);
    return false;
  });
}

}  // namespace
