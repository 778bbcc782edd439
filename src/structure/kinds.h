#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "structure.h"

/// @file
/// The table of kinds (kinds.def) at compile time: lists of kinds, the containers of a content struct, and
/// orders.

struct ztCAD_DocumentContent;

namespace ztcad {

/// What holds elements of a kind by value.
enum KindHolders : unsigned { InDocument = 1, InStructure = 2, InDetail = 4 };

/// The fields that only some kinds have.
enum KindFields : unsigned {
  NoFields = 0,
  HasMethod = 1,
  HasCenter = 2,
  HasRadius = 4,
  HasVertices = 8,
  HasFaces = 16,
  HasMip = 32,
  HasArchetype = 64,  // and a placement: references
};

/// The rows of the table, each a type named after its container.
namespace kinds {
#define ZTCAD_KIND(element, container, tagWord, methodWord, kindNumber, kindWord, levelCount, holderFlags, \
                   fieldFlags)                                                                             \
  struct container {                                                                                       \
    using Element = ztCAD_##element;                                                                       \
    static constexpr std::int32_t number = kindNumber;                                                     \
    static constexpr KindName name = {kindNumber, kindWord};                                               \
    static constexpr int levels = levelCount;                                                              \
    static constexpr unsigned holders = holderFlags;                                                       \
    static constexpr unsigned fields = fieldFlags;                                                         \
    static const QString& tag() { return words().tagWord; }                                                \
    static constexpr const QString Vocabulary::*method = methodWord;                                       \
    template <typename Content>                                                                            \
    static constexpr auto in(Content& content) -> decltype((content.container)) {                          \
      return content.container;                                                                            \
    }                                                                                                      \
  };
#include "kinds.def"
#undef ZTCAD_KIND
struct none {  // NOLINT(readability-identifier-naming): starts the list
  using Element = void;
  static constexpr std::int32_t number = 0;
  static constexpr unsigned holders = 0;
};
}  // namespace kinds

template <typename... Kinds>
struct KindList {};

#define ZTCAD_KIND(element, container, ...) , kinds::container
using AllKinds = KindList<kinds::none
#include "kinds.def"
                          >;
#undef ZTCAD_KIND

// -------------------------------------------------------------------------------- the kinds of one holder

/// The holder that a content struct belongs to.
template <typename Content>
inline constexpr unsigned holderOf = 0;
template <>
inline constexpr unsigned holderOf<ztCAD_DocumentContent> = InDocument;
template <>
inline constexpr unsigned holderOf<ztCAD_StructureContent> = InStructure;
template <>
inline constexpr unsigned holderOf<ztCAD_DetailContent> = InDetail;

template <typename Kind, typename Content>
inline constexpr bool isHeldBy = (Kind::holders & holderOf<std::remove_const_t<Content>>) != 0;

template <typename Visit, typename... Kinds>
constexpr bool anyOf(KindList<kinds::none, Kinds...> /*list*/, Visit&& visit) {
  return (visit(Kinds()) || ...);
}

/// Calls `visit(kind)` for the kinds of the table until it returns true; whether it did.
template <typename Visit>
constexpr bool anyKindAtAll(Visit&& visit) {
  return anyOf(AllKinds(), visit);
}

/// The same for the kinds that a content struct holds.
template <typename Content, typename Visit>
constexpr bool anyKind(Visit&& visit) {
  return anyKindAtAll([&visit](auto kind) {
    if constexpr (isHeldBy<decltype(kind), Content>)
      return visit(kind);
    else
      return false;
  });
}

/// Calls `visit(kind)` for each kind that a content struct holds, in the order of the table.
template <typename Content, typename Visit>
constexpr void visitKinds(Visit&& visit) {
  anyKind<Content>([&visit](auto kind) {
    visit(kind);
    return false;
  });
}

/// Whether an element is sound in the sense of the structure check: if it was read, whether the read
/// succeeded; otherwise whether it is complete. Lines are judged by their vertices alone. References are
/// always sound.
template <typename Element>
bool isSound(const Element& element) {
  if constexpr (std::is_base_of_v<ztCAD_commonLine, Element>)
    return element.hasWholeVertices();
  else if constexpr (std::is_base_of_v<ztCAD_StateCorrect, Element>)
    return element.passesCheck();
  else
    return true;
}

// -------------------------------------------------------------------------------- orders

/// Calls `visit(container)` for the containers of a content struct in the order of a list of kinds.
template <typename Content, typename Visit, typename... Kinds>
void visitInOrder(KindList<Kinds...> /*order*/, Content& content, Visit&& visit) {
  (visit(Kinds::in(content)), ...);
}

template <typename Kind, typename... Kinds>
constexpr int occurrences(KindList<Kinds...> /*list*/) {
  return (0 + ... + int{std::is_same_v<Kind, Kinds>});
}

/// Whether the lists together contain each kind that the content struct holds exactly once, and no other
/// kind.
template <typename Content, typename... Lists>
constexpr bool isComplete(Lists... lists) {
  return !anyKindAtAll([&](auto kind) {
    using Kind = decltype(kind);
    return (0 + ... + occurrences<Kind>(lists)) != int{isHeldBy<Kind, Content>};
  });
}

// ----------------------------------------------------------------------------- checks of the content structs

template <typename Kind, typename Content, typename = void>
inline constexpr bool hasContainer = false;
template <typename Kind, typename Content>
inline constexpr bool hasContainer<Kind, Content, std::void_t<decltype(Kind::in(std::declval<Content&>()))>> =
    std::is_same_v<decltype(Kind::in(std::declval<Content&>())), ztCAD_Cont<typename Kind::Element>&>;

/// Whether the content struct has exactly the containers that the table names, and `others` more.
template <typename Content>
constexpr bool matchesTable(std::size_t others) {
  std::size_t containers = others;
  const bool differs = anyKindAtAll([&containers](auto kind) {
    using Kind = decltype(kind);
    containers += isHeldBy<Kind, Content> ? 1 : 0;
    return hasContainer<Kind, Content> != isHeldBy<Kind, Content>;
  });
  return !differs && sizeof(Content) == containers * sizeof(ztCAD_Cont<ztCAD_Point>);
}

static_assert(matchesTable<ztCAD_StructureContent>(0));
static_assert(matchesTable<ztCAD_DetailContent>(1), "one more: the container of stubs");

}  // namespace ztcad
