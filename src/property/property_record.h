#pragma once

#include <optional>
#include <string>

#include "coordinate_system.h"
#include "display.h"

class ztCAD_Base;

/// @file
/// The records of `setCommonProperty`.

/// Properties that `setCommonProperty` sets together. Comment, inform, colour and visibility replace those of
/// the element, even if they are empty or unset; the coordinate system does so only if there is one. The
/// element keeps its name.
struct ZTCAD_API CommonProperty {
  std::string comment;           ///< UTF-8, else windows-1251
  std::string inform;            ///< UTF-8, else windows-1251
  ztCAD_Color color;             ///< may be unset
  ztCAD_Visible visible;         ///< may be unset
  std::optional<ztCAD_LCS> lcs;  ///< std::nullopt: the element keeps its own
};

/// The same for mass-inertia elements, which have neither colour nor visibility of their own.
struct ZTCAD_API CommonPropertyForMIP {
  std::string comment;           ///< UTF-8, else windows-1251
  std::string inform;            ///< UTF-8, else windows-1251
  std::optional<ztCAD_LCS> lcs;  ///< std::nullopt: the element keeps its own
};
