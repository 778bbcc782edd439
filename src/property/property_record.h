#pragma once

#include <optional>
#include <string>

#include "coordinate_system.h"
#include "display.h"

class ztCAD_Base;

/// What a host sets on an element in one go (`setCommonProperty`). Comment, inform, colour and visibility
/// replace those of the element, also where they are empty or unset; the coordinate system does so only when
/// there is one. The element's name stays.
struct ZTCAD_API CommonProperty {
  std::string comment;  ///< UTF-8, else windows-1251
  std::string inform;   ///< UTF-8, else windows-1251
  ztCAD_Color color;
  ztCAD_Visible visible;
  std::optional<ztCAD_LCS> lcs;
};

/// The same for mass-inertia elements, which have neither colour nor visibility of their own.
struct ZTCAD_API CommonPropertyForMIP {
  std::string comment;  ///< UTF-8, else windows-1251
  std::string inform;   ///< UTF-8, else windows-1251
  std::optional<ztCAD_LCS> lcs;
};

namespace ztcad {
void apply(const CommonProperty& record, ztCAD_Base& element);
void apply(const CommonPropertyForMIP& record, ztCAD_Base& element);
}  // namespace ztcad
