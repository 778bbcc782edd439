#pragma once

#include <optional>

#include "display.h"

namespace ztcad {

class ElementView;

/// Whether no component is above 255, as in every usual colour.
inline bool fitsBytes(const ztCAD_Color& color) {
  constexpr std::uint32_t greatest = 255;
  return color.red() <= greatest && color.green() <= greatest && color.blue() <= greatest;
}

/// Reads the colour of an element as `ztCAD_Color::read` does.
/// @param color output: set if there is a colour
/// @return false if the text is no colour
bool readColor(const ElementView& element, std::optional<ztCAD_Color>& color);

/// Reads the visibility of an element as `ztCAD_Visible::read` does; std::nullopt if it is not set.
std::optional<ztCAD_Visible> readVisible(const ElementView& element);

}  // namespace ztcad
