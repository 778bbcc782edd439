#pragma once

#include <cstdint>
#include <optional>

#include "element_kinds.h"

/// Access to the fields of an element of any kind, for fields.cpp and element_arrays.cpp.

namespace ztcad {

// Null for a null element and for a kind without the field.

template <typename Base>
auto* propertyOf(Base* element) {
  return element ? &element->property() : nullptr;
}

inline const ztCAD_gMethod* methodOf(const ztCAD_Base* element) {
  return withFields<HasMethod>(element, static_cast<const ztCAD_gMethod*>(nullptr),
                               [](const auto& known) { return &known.method(); });
}

// std::nullopt for a null element and for a kind that is no reference.

inline std::optional<QString> templateName(const ztCAD_Base* element) {
  return withFields<HasArchetype>(element, std::optional<QString>(), [](const auto& reference) {
    return std::optional(reference.templateName());
  });
}

inline std::optional<QString> templateFile(const ztCAD_Base* element) {
  return withFields<HasArchetype>(element, std::optional<QString>(),
                                  [](const auto& reference) { return std::optional(reference.file()); });
}

/// Every element may have a colour. Null clears it.
inline void setColor(ztCAD_Base& element, const std::uint32_t* rgb) {
  element.property().setColor(rgb ? ztCAD_Color(rgb[0], rgb[1], rgb[2]) : ztCAD_Color());
}

// Each returns whether the element's kind has the field, and throws `std::bad_alloc` with the element
// unchanged.

inline bool setMethod(ztCAD_Base* element, const QString& method) {
  return withFields<HasMethod>(element, false,
                               [&](auto& known) { return known.setMethod(ztCAD_gMethod(method)), true; });
}

inline bool setCenter(ztCAD_Base* element, const double* xyz) {
  const ztCAD_Coord center = xyz ? ztCAD_Coord(xyz[0], xyz[1], xyz[2]) : ztCAD_Coord();
  return withFields<HasCenter>(element, false, [&](auto& known) { return known.setCenter(center), true; });
}

inline bool setRadius(ztCAD_Base* element, const double* radius) {
  return withFields<HasRadius>(element, false, [radius](auto& sphere) {
    return sphere.setRadius(radius ? std::optional(*radius) : std::nullopt), true;
  });
}

inline bool setVertices(ztCAD_Base* element, const ztCAD_Vertices& vertices) {
  return withFields<HasVertices>(element, false,
                                 [&](auto& known) { return known.setVertices(vertices), true; });
}

inline bool setFaces(ztCAD_Base* element, const ztCAD_Faces& faces) {
  return withFields<HasFaces>(element, false, [&](auto& solid) { return solid.setFaces(faces), true; });
}

inline bool setMip(ztCAD_Base* element, const std::optional<ztCAD_MIP>& mip) {
  return withFields<HasMip>(element, false, [&mip](auto& known) {
    if constexpr (std::is_base_of_v<ztCAD_commonElementMIP, std::decay_t<decltype(known)>>)
      known.setRecord(mip);
    else
      known.setMip(mip);
    return true;
  });
}

inline bool setPlacement(ztCAD_Base* element, const ztCAD_LCS& placement) {
  return withFields<HasArchetype>(element, false,
                                  [&](auto& reference) { return reference.setLcs(placement), true; });
}

inline bool setTemplateName(ztCAD_Base* element, const QString& name) {
  return withFields<HasArchetype>(element, false,
                                  [&](auto& reference) { return reference.setTemplateName(name), true; });
}

inline bool setTemplateFile(ztCAD_Base* element, const QString& file) {
  return withFields<HasArchetype>(element, false,
                                  [&](auto& reference) { return reference.setFile(file), true; });
}

/// Null clears it; that of a structure, which always has one, is then not changed.
/// @return whether it was set or cleared
inline bool setLcs(ztCAD_Base* element, const ztCAD_LCS* lcs) {
  if (!element || (!lcs && dynamic_cast<const ztCAD_commonStructure*>(element))) return false;
  element->property().setLcs(lcs ? std::optional(*lcs) : std::nullopt);
  return true;
}

}  // namespace ztcad
