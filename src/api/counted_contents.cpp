#include "c/counted_contents.h"

#include <iterator>

#include "../core/document/live_documents.h"
#include "c/contents.h"
#include "created_objects.h"
#include "element_kinds.h"
#include "guard.h"
#include "text_output.h"

using ztcad::guarded;
using ztcad::live;
using ztcad::withContainer;

namespace {

constexpr bool notAdded = true;
ztCAD_Base* const none = nullptr;

/// Containers of nested structures are const, but the structures that they point to are not.
template <typename Container>
ztCAD_Base* elementAt(Container& elements, std::int32_t index) {
  const std::int32_t count = ztcad::countOf(elements.size());
  if (index < 0 || index >= count) return nullptr;
  const auto fromEnd = static_cast<std::ptrdiff_t>(elements.size()) - index;
  const auto place =
      index < fromEnd ? std::next(elements.begin(), index) : std::prev(elements.end(), fromEnd);
  return &ztcad::elementOf(*place);
}

template <typename Container>
std::int32_t list(Container& elements, ztCAD_Base** array, std::int32_t capacity) {
  std::int32_t written = 0;
  for (auto element = elements.begin(); array && written < capacity && element != elements.end(); ++element)
    array[written++] = &ztcad::elementOf(*element);
  return ztcad::countOf(elements.size());
}

template <typename Container>
using ElementOf = typename Container::value_type;

/// Whether an element of this kind can be added without exceeding the depth limit. Only structures can be
/// nested deeply.
template <typename Kind>
bool hasRoomFor(const ztCAD_commonStructure& structure) {
  return structure.hasRoomFor(Kind::levels);
}
template <typename Kind, typename Holder>
bool hasRoomFor(const Holder& /*holder*/) {
  return true;
}

template <typename Holder>
using ContentOf = std::decay_t<decltype(std::declval<Holder&>().content())>;

// Shared by all holders. The exported functions handle a structure's list of nested structures themselves.

template <typename Holder>
std::int32_t count(const Holder* holder, std::int32_t kind) noexcept {
  if (!holder) return 0;
  return withContainer(holder->content(), kind, std::int32_t{0},
                       [](auto& elements) { return ztcad::countOf(elements.size()); });
}

template <typename Holder>
ztCAD_Base* get(Holder* holder, std::int32_t kind, std::int32_t index) noexcept {
  if (!holder) return nullptr;
  return withContainer(holder->content(), kind, none,
                       [index](auto& elements) { return elementAt(elements, index); });
}

template <typename Holder>
std::int32_t list(Holder* holder, std::int32_t kind, ztCAD_Base** array, std::int32_t capacity) noexcept {
  if (!holder) return 0;
  return withContainer(holder->content(), kind, std::int32_t{0},
                       [=](auto& elements) { return list(elements, array, capacity); });
}

template <typename Holder>
bool add(const ztCAD_Base* element, Holder* holder) noexcept {
  return guarded(notAdded, [&] {
    if (!holder) return notAdded;
    return ztcad::withKind<ztcad::NoFields>(element, notAdded, [holder](const auto& known, auto kind) {
      using Kind = decltype(kind);
      if constexpr (ztcad::isHeldBy<Kind, ContentOf<Holder>>)
        return !hasRoomFor<Kind>(*holder) || Kind::in(holder->content()).add(known);
      else
        return notAdded;
    });
  });
}

template <typename Holder>
ztCAD_Base* append(Holder* holder, std::int32_t number) noexcept {
  return guarded(none, [&] {
    ztCAD_Base* appended = nullptr;
    if (!holder) return appended;
    ztcad::anyKind<ContentOf<Holder>>([&](auto kind) {
      using Kind = decltype(kind);
      if (Kind::number != number) return false;
      if (hasRoomFor<Kind>(*holder)) appended = &Kind::in(holder->content()).appendNew();
      return true;
    });
    return appended;
  });
}

template <typename Holder>
bool remove(const ztCAD_Base* element, Holder* holder, std::int32_t kind) noexcept {
  return guarded(false, [&] {
    if (!element || !holder) return false;
    return withContainer(holder->content(), kind, false,
                         [element](auto& elements) { return elements.remove(element); });
  });
}

bool isStructure(std::int32_t kind) { return kind == ztCAD_ElementStructure; }

ztCAD_Base* appendNested(ztCAD_commonStructure& structure) {
  if (!structure.hasRoomFor(1)) return nullptr;
  auto* const nested = ztcad::createElement<ztCAD_Structure>();
  return structure.addStructure(*nested) ? nullptr : nested;
}

}  // namespace

std::int32_t ztCAD_countInDoc(const ztCAD_GMDDocument* document, std::int32_t kind) {
  return count(live(document), kind);
}
std::int32_t ztCAD_countInStructure(const ztCAD_commonStructure* structure, std::int32_t kind) {
  if (structure && isStructure(kind)) return ztcad::countOf(structure->structures().size());
  return count(structure, kind);
}
std::int32_t ztCAD_countInDetail(const ztCAD_cmnDetail* detail, std::int32_t kind) {
  return count(detail, kind);
}

ztCAD_Base* ztCAD_getFromDoc(ztCAD_GMDDocument* document, std::int32_t kind, std::int32_t index) {
  return get(live(document), kind, index);
}
ztCAD_Base* ztCAD_getFromStructure(ztCAD_commonStructure* structure, std::int32_t kind, std::int32_t index) {
  if (structure && isStructure(kind)) return elementAt(structure->structures(), index);
  return get(structure, kind, index);
}
ztCAD_Base* ztCAD_getFromDetail(ztCAD_cmnDetail* detail, std::int32_t kind, std::int32_t index) {
  return get(detail, kind, index);
}

std::int32_t ztCAD_listDoc(ztCAD_GMDDocument* document, std::int32_t kind, ztCAD_Base** elements,
                           std::int32_t capacity) {
  return list(live(document), kind, elements, capacity);
}
std::int32_t ztCAD_listStructure(ztCAD_commonStructure* structure, std::int32_t kind, ztCAD_Base** elements,
                                 std::int32_t capacity) {
  if (structure && isStructure(kind)) return list(structure->structures(), elements, capacity);
  return list(structure, kind, elements, capacity);
}
std::int32_t ztCAD_listDetail(ztCAD_cmnDetail* detail, std::int32_t kind, ztCAD_Base** elements,
                              std::int32_t capacity) {
  return list(detail, kind, elements, capacity);
}

bool ztCAD_addToDoc(const ztCAD_Base* element, ztCAD_GMDDocument* document) {
  return add(element, live(document));
}
bool ztCAD_addToStructure(const ztCAD_Base* element, ztCAD_commonStructure* structure) {
  const auto* const nested = dynamic_cast<const ztCAD_commonStructure*>(element);
  return nested ? addStructureToStructure(nested, structure) : add(element, structure);
}
bool ztCAD_addToDetail(const ztCAD_Base* element, ztCAD_cmnDetail* detail) { return add(element, detail); }

ztCAD_Base* ztCAD_appendToDoc(ztCAD_GMDDocument* document, std::int32_t kind) {
  return append(live(document), kind);
}
ztCAD_Base* ztCAD_appendToStructure(ztCAD_commonStructure* structure, std::int32_t kind) {
  if (structure && isStructure(kind)) return guarded(none, [&] { return appendNested(*structure); });
  return append(structure, kind);
}
ztCAD_Base* ztCAD_appendToDetail(ztCAD_cmnDetail* detail, std::int32_t kind) { return append(detail, kind); }

bool ztCAD_removeFromDoc(const ztCAD_Base* element, ztCAD_GMDDocument* document, std::int32_t kind) {
  return remove(element, live(document), kind);
}
bool ztCAD_removeFromStructure(const ztCAD_Base* element, ztCAD_commonStructure* structure,
                               std::int32_t kind) {
  if (structure && isStructure(kind))
    return guarded(false, [&] { return structure->removeStructure(element); });
  return remove(element, structure, kind);
}
bool ztCAD_removeFromDetail(const ztCAD_Base* element, ztCAD_cmnDetail* detail, std::int32_t kind) {
  return remove(element, detail, kind);
}

ztCAD_commonStructure* ztCAD_cloneStructure(const ztCAD_commonStructure* structure) {
  return guarded<ztCAD_commonStructure*>(nullptr, [&] { return structure ? structure->clone() : nullptr; });
}

void ztCAD_unifyNames(ztCAD_commonStructure* structure) {
  guarded([&] {
    if (structure) structure->unifyNames();
  });
}
