#include "c/fields.h"

#include "../core/narrow_text.h"
#include "element_kinds.h"
#include "guard.h"
#include "text_output.h"

using ztcad::fromNarrow;
using ztcad::giveNumbers;
using ztcad::guarded;
using ztcad::textOf;
using ztcad::toNarrow;
using ztcad::withElement;

namespace {

constexpr std::int32_t none = -1;

std::int64_t give(const QString* found, char* text, std::int64_t size) noexcept {
  const std::int64_t given =
      ztcad::giveText(text, size, [&] { return found ? toNarrow(*found) : std::string(); });
  return found ? given : none;
}

/// The text that `field` finds in the element; `Element` is the class that has the field.
template <typename Element, typename Field>
std::int64_t give(const Element* element, Field&& field, char* text, std::int64_t size) noexcept {
  return give(element ? &field(*element) : nullptr, text, size);
}

template <typename Set>
void setText(const char* text, Set&& set) noexcept {
  guarded([&] { set(fromNarrow(textOf(text))); });
}

std::int32_t give(const std::optional<ztCAD_LCS>& lcs, double* values, std::int32_t capacity) {
  return lcs ? giveNumbers(lcs->values(), values, capacity) : none;
}

// What some kinds have: null for the others.

ztCAD_gArche* archetypeOf(ztCAD_Base* element) {
  return withElement(element, static_cast<ztCAD_gArche*>(nullptr),
                     [](auto& known) -> decltype(&known.archetype()) { return &known.archetype(); });
}
const ztCAD_gArche* archetypeOf(const ztCAD_Base* element) {
  return withElement(element, static_cast<const ztCAD_gArche*>(nullptr),
                     [](auto& known) -> decltype(&known.archetype()) { return &known.archetype(); });
}

std::optional<ztCAD_MIP> mipOf(const ztCAD_Base* element) {
  std::optional<ztCAD_MIP> found;
  if (const auto* const mipElement = dynamic_cast<const ztCAD_commonElementMIP*>(element))
    return mipElement->record();
  withElement(element, false, [&](auto& known) -> decltype(known.mip(), bool()) {
    found = known.mip();
    return true;
  });
  return found;
}

const QString& nameIn(const ztCAD_Base& element) { return element.property().attributes().name(); }
const QString& commentIn(const ztCAD_Base& element) { return element.property().attributes().comment(); }
const QString& informIn(const ztCAD_Base& element) { return element.property().attributes().inform(); }

const ztCAD_baseElement* geometryOf(const ztCAD_Base* element) {
  return dynamic_cast<const ztCAD_baseElement*>(element);
}

template <typename Element>
bool isSound(const Element& element) {
  if constexpr (std::is_base_of_v<ztCAD_commonLine, Element>)
    return element.hasWholeVertices();
  else if constexpr (std::is_base_of_v<ztCAD_StateCorrect, Element>)
    return element.passesCheck();
  else
    return true;  // a reference
}

}  // namespace

std::int32_t ztCAD_getKind(const ztCAD_Base* element) {
  return withElement(element, std::int32_t{ztCAD_ElementNone},
                     [](auto& known) { return ztcad::kindOf<std::decay_t<decltype(known)>>; });
}

// -------------------------------------------------------------------------------- what every element has

std::int64_t ztCAD_getName(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(element, nameIn, text, size);
}
void ztCAD_setName(ztCAD_Base* element, const char* name) {
  setText(name, [element](const QString& text) {
    if (element) element->setName(text);
  });
}
std::int64_t ztCAD_getComment(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(element, commentIn, text, size);
}
void ztCAD_setComment(ztCAD_Base* element, const char* comment) {
  setText(comment, [element](const QString& text) {
    if (element) element->property().attributes().setComment(text);
  });
}
std::int64_t ztCAD_getInform(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(element, informIn, text, size);
}
void ztCAD_setInform(ztCAD_Base* element, const char* inform) {
  setText(inform, [element](const QString& text) {
    if (element) element->property().attributes().setInform(text);
  });
}

bool ztCAD_getColor(const ztCAD_Base* element, std::uint32_t* rgb) {
  if (!element) return false;
  const ztCAD_Color& color = element->property().showable().color();
  if (rgb && color.isSet()) {
    rgb[0] = color.red();
    rgb[1] = color.green();
    rgb[2] = color.blue();
  }
  return color.isSet();
}
void ztCAD_setColor(ztCAD_Base* element, const std::uint32_t* rgb) {
  if (element)
    element->property().showable().setColor(rgb ? ztCAD_Color(rgb[0], rgb[1], rgb[2]) : ztCAD_Color());
}

std::int32_t ztCAD_getVisible(const ztCAD_Base* element) {
  const std::optional<bool> visible =
      element ? element->property().showable().visible().value() : std::optional<bool>();
  return visible ? std::int32_t{*visible} : none;
}
void ztCAD_setVisible(ztCAD_Base* element, std::int32_t visible) {
  if (element)
    element->property().showable().setVisible(visible < 0 ? ztCAD_Visible() : ztCAD_Visible(visible > 0));
}

std::int32_t ztCAD_getLCS(const ztCAD_Base* element, double* values, std::int32_t capacity) {
  return guarded(none, [&] { return element ? give(element->property().lcs(), values, capacity) : none; });
}
void ztCAD_setLCS(ztCAD_Base* element, const ztCAD_LCS* lcs) {
  guarded([&] {
    if (!element || (!lcs && dynamic_cast<const ztCAD_commonStructure*>(element))) return;
    element->property().setLcs(lcs ? std::optional(*lcs) : std::nullopt);
  });
}

std::int64_t ztCAD_getText(const ztCAD_Base* element, bool forPeople, char* text, std::int64_t size) {
  bool known = false;
  const std::int64_t given = ztcad::giveText(text, size, [&] {
    QString told;
    known = withElement(element, false, [&](auto& it) { return it.toText(told, forPeople), true; });
    return toNarrow(told);
  });
  return known ? given : none;
}

std::int32_t ztCAD_getReadOk(const ztCAD_Base* element) {
  const auto* const state = dynamic_cast<const ztCAD_StateCorrect*>(element);
  return state && state->wasRead() ? std::int32_t{state->readOk()} : none;
}

bool ztCAD_isSound(const ztCAD_Base* element) {
  return guarded(false,
                 [&] { return withElement(element, false, [](auto& known) { return isSound(known); }); });
}

// -------------------------------------------------------------------------------- what some kinds have

std::int64_t ztCAD_getMethod(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(
      geometryOf(element), [](auto& geometry) -> const QString& { return geometry.method().method(); }, text,
      size);
}
void ztCAD_setMethod(ztCAD_Base* element, const char* method) {
  setText(method, [element](const QString& text) {
    if (auto* const geometry = dynamic_cast<ztCAD_baseElement*>(element)) geometry->method().setMethod(text);
  });
}

bool ztCAD_getCenter(const ztCAD_Base* element, double* xyz) {
  return withElement(element, false, [xyz](auto& known) -> decltype(known.center().isValid()) {
    const ztCAD_Coord& center = known.center();
    if (xyz && center.isValid()) {
      xyz[0] = center.x();
      xyz[1] = center.y();
      xyz[2] = center.z();
    }
    return center.isValid();
  });
}
void ztCAD_setCenter(ztCAD_Base* element, const double* xyz) {
  const ztCAD_Coord center = xyz ? ztCAD_Coord(xyz[0], xyz[1], xyz[2]) : ztCAD_Coord();
  withElement(element, false, [&](auto& known) -> decltype(known.setCenter(center), bool()) {
    return known.setCenter(center), true;
  });
}

bool ztCAD_getRadius(const ztCAD_Base* element, double* radius) {
  const auto* const sphere = dynamic_cast<const ztCAD_Sphere*>(element);
  if (!sphere || !sphere->hasRadius()) return false;
  if (radius) *radius = *sphere->radius();
  return true;
}
void ztCAD_setRadius(ztCAD_Base* element, const double* radius) {
  if (auto* const sphere = dynamic_cast<ztCAD_Sphere*>(element))
    sphere->setRadius(radius ? std::optional(*radius) : std::nullopt);
}

const ztCAD_Vertices* ztCAD_getVertices(const ztCAD_Base* element) {
  return withElement(element, static_cast<const ztCAD_Vertices*>(nullptr),
                     [](auto& known) -> decltype(&known.vertices()) { return &known.vertices(); });
}
void ztCAD_setVertices(ztCAD_Base* element, const ztCAD_Vertices* vertices) {
  guarded([&] {
    if (!vertices) return;
    withElement(element, false, [&](auto& known) -> decltype(known.setVertices(*vertices), bool()) {
      return known.setVertices(*vertices), true;
    });
  });
}
const ztCAD_Faces* ztCAD_getFaces(const ztCAD_Base* element) {
  const auto* const solid = dynamic_cast<const ztCAD_commonTriangle*>(element);
  return solid ? &solid->faces() : nullptr;
}
void ztCAD_setFaces(ztCAD_Base* element, const ztCAD_Faces* faces) {
  guarded([&] {
    auto* const solid = dynamic_cast<ztCAD_commonTriangle*>(element);
    if (solid && faces) solid->setFaces(*faces);
  });
}

std::int32_t ztCAD_getMIP(const ztCAD_Base* element, double* values, std::int32_t capacity) {
  return guarded(none, [&] {
    const std::optional<ztCAD_MIP> mip = mipOf(element);
    return mip ? giveNumbers(mip->values(), values, capacity) : none;
  });
}
bool ztCAD_getMIPIntegers(const ztCAD_Base* element, std::int32_t* first, std::int32_t* second) {
  return guarded(false, [&] {
    const std::optional<ztCAD_MIP> mip = mipOf(element);
    if (mip && first) *first = mip->firstInteger();
    if (mip && second) *second = mip->secondInteger();
    return mip.has_value();
  });
}
void ztCAD_setMIP(ztCAD_Base* element, const ztCAD_MIP* record) {
  guarded([&] {
    if (auto* const mipElement = dynamic_cast<ztCAD_commonElementMIP*>(element))
      return mipElement->setRecord(record ? std::optional(*record) : std::nullopt);
    if (!record) return;
    withElement(element, false, [&](auto& known) -> decltype(known.setMip(*record), bool()) {
      return known.setMip(*record), true;
    });
  });
}

std::int32_t ztCAD_getPlacement(const ztCAD_Base* element, double* values, std::int32_t capacity) {
  return withElement(element, none, [=](auto& known) -> decltype(known.lcs().isLocal(), std::int32_t()) {
    return giveNumbers(known.lcs().values(), values, capacity);
  });
}
void ztCAD_setPlacement(ztCAD_Base* element, const ztCAD_LCS* placement) {
  guarded([&] {
    if (!placement) return;
    withElement(element, false, [&](auto& known) -> decltype(known.setLcs(*placement), bool()) {
      return known.setLcs(*placement), true;
    });
  });
}
std::int64_t ztCAD_getTemplateName(const ztCAD_Base* element, char* text, std::int64_t size) {
  const ztCAD_gArche* const archetype = archetypeOf(element);
  return give(archetype ? &archetype->templateName() : nullptr, text, size);
}
void ztCAD_setTemplateName(ztCAD_Base* element, const char* name) {
  setText(name, [element](const QString& text) {
    if (ztCAD_gArche* const archetype = archetypeOf(element)) archetype->setTemplateName(text);
  });
}
std::int64_t ztCAD_getTemplateFile(const ztCAD_Base* element, char* text, std::int64_t size) {
  const ztCAD_gArche* const archetype = archetypeOf(element);
  return give(archetype ? &archetype->file() : nullptr, text, size);
}
void ztCAD_setTemplateFile(ztCAD_Base* element, const char* file) {
  setText(file, [element](const QString& text) {
    if (ztCAD_gArche* const archetype = archetypeOf(element)) archetype->setFile(text);
  });
}
