#include "c/fields.h"

#include <functional>
#include <optional>

#include "../text/narrow_text.h"
#include "field_access.h"
#include "guard.h"
#include "text_output.h"

using ztcad::fromNarrow;
using ztcad::guarded;
using ztcad::methodOf;
using ztcad::propertyOf;
using ztcad::textOf;
using ztcad::toNarrow;
using ztcad::withFields;
using ztcad::writeNumbers;

namespace {

constexpr std::int32_t none = -1;

/// Writes the text that `field` returns for the object; -1 for a null object.
template <typename Object, typename Field>
std::int64_t give(const Object* object, Field field, char* text, std::int64_t size) noexcept {
  return ztcad::writeText(text, size, [&] {
    return object ? std::optional(toNarrow(std::invoke(field, *object))) : std::nullopt;
  });
}

std::int64_t give(std::optional<QString> (*get)(const ztCAD_Base*), const ztCAD_Base* element, char* text,
                  std::int64_t size) noexcept {
  return ztcad::writeText(text, size, [&] {
    const std::optional<QString> value = get(element);
    return value ? std::optional(toNarrow(*value)) : std::nullopt;
  });
}

template <typename Object, typename Set>
void setText(Object* object, Set set, const char* text) noexcept {
  guarded([&] {
    if (object) std::invoke(set, *object, fromNarrow(textOf(text)));
  });
}

std::int32_t give(const std::optional<ztCAD_LCS>& lcs, double* values, std::int32_t capacity) {
  return lcs ? writeNumbers(lcs->values(), values, capacity) : none;
}

/// The data of kinds that have some; null for the others. Not a copy, which would need memory: a caller could
/// not tell its lack from a lack of data.
const ztCAD_MIP* mipOf(const ztCAD_Base* element) {
  return withFields<ztcad::HasMip>(element, static_cast<const ztCAD_MIP*>(nullptr),
                                   [](const auto& known) { return known.mipIfSet(); });
}

}  // namespace

std::int32_t ztCAD_getKind(const ztCAD_Base* element) {
  return ztcad::withKind<ztcad::NoFields>(
      element, std::int32_t{ztCAD_ElementNone},
      [](const auto& /*known*/, auto kind) { return decltype(kind)::number; });
}

// -------------------------------------------------------------------------------- what every element has

std::int64_t ztCAD_getName(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(propertyOf(element), &ztCAD_cmnProperty::name, text, size);
}
void ztCAD_setName(ztCAD_Base* element, const char* name) {
  setText(propertyOf(element), &ztCAD_cmnProperty::setName, name);
}
std::int64_t ztCAD_getComment(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(propertyOf(element), &ztCAD_cmnProperty::comment, text, size);
}
void ztCAD_setComment(ztCAD_Base* element, const char* comment) {
  setText(propertyOf(element), &ztCAD_cmnProperty::setComment, comment);
}
std::int64_t ztCAD_getInform(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(propertyOf(element), &ztCAD_cmnProperty::inform, text, size);
}
void ztCAD_setInform(ztCAD_Base* element, const char* inform) {
  setText(propertyOf(element), &ztCAD_cmnProperty::setInform, inform);
}

bool ztCAD_getColor(const ztCAD_Base* element, std::uint32_t* rgb) {
  if (!element) return false;
  const ztCAD_Color color = element->property().color();
  if (rgb && color.isSet()) {
    rgb[0] = color.red();
    rgb[1] = color.green();
    rgb[2] = color.blue();
  }
  return color.isSet();
}
void ztCAD_setColor(ztCAD_Base* element, const std::uint32_t* rgb) {
  if (element) guarded([&] { ztcad::setColor(*element, rgb); });
}

std::int32_t ztCAD_getVisible(const ztCAD_Base* element) {
  const std::optional<bool> visible = element ? element->property().visible().value() : std::optional<bool>();
  return visible ? std::int32_t{*visible} : none;
}
void ztCAD_setVisible(ztCAD_Base* element, std::int32_t visible) {
  if (element) element->property().setVisible(visible < 0 ? ztCAD_Visible() : ztCAD_Visible(visible > 0));
}

std::int32_t ztCAD_getLCS(const ztCAD_Base* element, double* values, std::int32_t capacity) {
  return guarded(none, [&] { return element ? give(element->property().lcs(), values, capacity) : none; });
}
void ztCAD_setLCS(ztCAD_Base* element, const ztCAD_LCS* lcs) {
  guarded([&] { ztcad::setLcs(element, lcs); });
}

std::int64_t ztCAD_getText(const ztCAD_Base* element, bool debugForm, char* text, std::int64_t size) {
  return ztcad::writeText(text, size, [&] {
    QString out;
    const bool known = withFields<ztcad::NoFields>(
        element, false, [&](const auto& it) { return it.toText(out, debugForm), true; });
    return known ? std::optional(toNarrow(out)) : std::nullopt;
  });
}

std::int32_t ztCAD_getReadOk(const ztCAD_Base* element) {
  const auto* const state = dynamic_cast<const ztCAD_StateCorrect*>(element);
  return state && state->wasRead() ? std::int32_t{state->readOk()} : none;
}

void ztCAD_setReadOk(ztCAD_Base* element, bool readOk) {
  if (auto* const state = dynamic_cast<ztCAD_StateCorrect*>(element)) state->setReadOk(readOk);
}

bool ztCAD_isSound(const ztCAD_Base* element) {
  return guarded(false, [&] {
    return withFields<ztcad::NoFields>(element, false,
                                       [](const auto& known) { return ztcad::isSound(known); });
  });
}

// -------------------------------------------------------------------------------- what some kinds have

std::int64_t ztCAD_getMethod(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(methodOf(element), &ztCAD_gMethod::method, text, size);
}
void ztCAD_setMethod(ztCAD_Base* element, const char* method) {
  guarded([&] { ztcad::setMethod(element, fromNarrow(textOf(method))); });
}

bool ztCAD_getCenter(const ztCAD_Base* element, double* xyz) {
  return withFields<ztcad::HasCenter>(element, false, [xyz](const auto& known) {
    const ztCAD_Coord& center = known.center();
    if (xyz && center.isValid()) {
      xyz[0] = center.x();
      xyz[1] = center.y();
      xyz[2] = center.z();
    }
    return center.isValid();
  });
}
void ztCAD_setCenter(ztCAD_Base* element, const double* xyz) { ztcad::setCenter(element, xyz); }

bool ztCAD_getRadius(const ztCAD_Base* element, double* radius) {
  return withFields<ztcad::HasRadius>(element, false, [radius](const auto& sphere) {
    if (radius && sphere.hasRadius()) *radius = *sphere.radius();
    return sphere.hasRadius();
  });
}
void ztCAD_setRadius(ztCAD_Base* element, const double* radius) { ztcad::setRadius(element, radius); }

const ztCAD_Vertices* ztCAD_getVertices(const ztCAD_Base* element) {
  return withFields<ztcad::HasVertices>(element, static_cast<const ztCAD_Vertices*>(nullptr),
                                        [](const auto& known) { return &known.vertices(); });
}
void ztCAD_setVertices(ztCAD_Base* element, const ztCAD_Vertices* vertices) {
  guarded([&] {
    if (vertices) ztcad::setVertices(element, *vertices);
  });
}
const ztCAD_Faces* ztCAD_getFaces(const ztCAD_Base* element) {
  return withFields<ztcad::HasFaces>(element, static_cast<const ztCAD_Faces*>(nullptr),
                                     [](const auto& solid) { return &solid.faces(); });
}
void ztCAD_setFaces(ztCAD_Base* element, const ztCAD_Faces* faces) {
  guarded([&] {
    if (faces) ztcad::setFaces(element, *faces);
  });
}

std::int32_t ztCAD_getMIP(const ztCAD_Base* element, double* values, std::int32_t capacity) {
  const ztCAD_MIP* const mip = mipOf(element);
  return mip ? writeNumbers(mip->values(), values, capacity) : none;
}
bool ztCAD_getMIPIntegers(const ztCAD_Base* element, std::int32_t* first, std::int32_t* second) {
  const ztCAD_MIP* const mip = mipOf(element);
  if (mip && first) *first = mip->firstInteger();
  if (mip && second) *second = mip->secondInteger();
  return mip != nullptr;
}
void ztCAD_setMIP(ztCAD_Base* element, const ztCAD_MIP* record) {
  guarded([&] { ztcad::setMip(element, record ? std::optional(*record) : std::nullopt); });
}

std::int32_t ztCAD_getPlacement(const ztCAD_Base* element, double* values, std::int32_t capacity) {
  return withFields<ztcad::HasArchetype>(element, none, [=](const auto& reference) {
    return writeNumbers(reference.placementData(), reference.placementSize(), values, capacity);
  });
}
void ztCAD_setPlacement(ztCAD_Base* element, const ztCAD_LCS* placement) {
  guarded([&] {
    if (placement) ztcad::setPlacement(element, *placement);
  });
}
std::int64_t ztCAD_getTemplateName(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(ztcad::templateName, element, text, size);
}
void ztCAD_setTemplateName(ztCAD_Base* element, const char* name) {
  guarded([&] { ztcad::setTemplateName(element, fromNarrow(textOf(name))); });
}
std::int64_t ztCAD_getTemplateFile(const ztCAD_Base* element, char* text, std::int64_t size) {
  return give(ztcad::templateFile, element, text, size);
}
void ztCAD_setTemplateFile(ztCAD_Base* element, const char* file) {
  guarded([&] { ztcad::setTemplateFile(element, fromNarrow(textOf(file))); });
}
