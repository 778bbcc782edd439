#pragma once

#include <ztCAD/ztCAD_c.h>
#include <new>
#include <string>

namespace ztcad::inspect {

/// What a text getter of ztCAD returns for an element that has this text.
/// @throws std::bad_alloc  the getter lacked memory
template <class Getter>
std::string textOf(const Getter& getter, const ztCAD_Base* element) {
  char few[64];
  const std::int64_t length = getter(element, few, sizeof few);
  if (length < 0) throw std::bad_alloc();
  if (length < static_cast<std::int64_t>(sizeof few)) return {few, static_cast<std::size_t>(length)};
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  if (getter(element, text.data(), length + 1) < 0) throw std::bad_alloc();
  text.resize(static_cast<std::size_t>(length));
  return text;
}

inline std::string nameOf(const ztCAD_Base* element) { return textOf(ztCAD_getName, element); }

inline bool isReference(int kind) {
  return kind == ztCAD_ElementPointRef || kind == ztCAD_ElementLineRef || kind == ztCAD_ElementTriangleRef ||
         kind == ztCAD_ElementElementMipRef || kind == ztCAD_ElementDetailRef ||
         kind == ztCAD_ElementStructureRef;
}

inline bool isTemplate(int kind) {
  return kind == ztCAD_ElementTmplPoint || kind == ztCAD_ElementTmplLine ||
         kind == ztCAD_ElementTmplTriangle || kind == ztCAD_ElementTmplElementMIP ||
         kind == ztCAD_ElementTmplDetail || kind == ztCAD_ElementTmplStructure;
}

inline bool isSolid(int kind) { return kind == ztCAD_ElementTriangle || kind == ztCAD_ElementTmplTriangle; }
inline bool isLine(int kind) { return kind == ztCAD_ElementLine || kind == ztCAD_ElementTmplLine; }
inline bool isPoint(int kind) { return kind == ztCAD_ElementPoint || kind == ztCAD_ElementTmplPoint; }
inline bool isMassElement(int kind) {
  return kind == ztCAD_ElementElementMIP || kind == ztCAD_ElementTmplElementMIP;
}
inline bool isDetail(int kind) { return kind == ztCAD_ElementDetail || kind == ztCAD_ElementTmplDetail; }
inline bool isStructure(int kind) {
  return kind == ztCAD_ElementStructure || kind == ztCAD_ElementTmplStructure;
}
inline bool isHolder(int kind) { return isDetail(kind) || isStructure(kind); }

/// The kind of template that a kind of reference places.
inline int templateOf(int kind) {
  switch (kind) {
    case ztCAD_ElementPointRef:
      return ztCAD_ElementTmplPoint;
    case ztCAD_ElementLineRef:
      return ztCAD_ElementTmplLine;
    case ztCAD_ElementTriangleRef:
      return ztCAD_ElementTmplTriangle;
    case ztCAD_ElementElementMipRef:
      return ztCAD_ElementTmplElementMIP;
    case ztCAD_ElementDetailRef:
      return ztCAD_ElementTmplDetail;
    case ztCAD_ElementStructureRef:
      return ztCAD_ElementTmplStructure;
    default:
      return ztCAD_ElementNone;
  }
}

}  // namespace ztcad::inspect
