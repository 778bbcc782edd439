#pragma once

#include <optional>
#include <string>

#include "coordinate_system.h"
#include "display.h"

class ztCAD_Base;

/// @file
/// What a host sets on an element in one go.

/// What a host sets on an element in one go (`setCommonProperty`). Comment, inform, colour and visibility
/// replace those of the element, also where they are empty or unset; the coordinate system does so only when
/// there is one. The element's name stays.
struct ZTCAD_API CommonProperty {
  std::string comment;           ///< UTF-8, else windows-1251
  std::string inform;            ///< UTF-8, else windows-1251
  ztCAD_Color color;             ///< may be unset
  ztCAD_Visible visible;         ///< may be unset
  std::optional<ztCAD_LCS> lcs;  ///< nothing: the element keeps its own
};

/// The same for mass-inertia elements, which have neither colour nor visibility of their own.
struct ZTCAD_API CommonPropertyForMIP {
  std::string comment;           ///< UTF-8, else windows-1251
  std::string inform;            ///< UTF-8, else windows-1251
  std::optional<ztCAD_LCS> lcs;  ///< nothing: the element keeps its own
};

namespace ztcad {
/// Sets the record's properties on the element; what `setCommonProperty` does.
/// @{
void apply(const CommonProperty& record, ztCAD_Base& element);
void apply(const CommonPropertyForMIP& record, ztCAD_Base& element);
/// @}
}  // namespace ztcad
