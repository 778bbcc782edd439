#pragma once

#include <optional>

#include "../text/short_text.h"

/// @file
/// Names that were made unique by a number.

namespace ztcad {

/// A name and the number that makes another name of it: "P" and 1 make "P_$1".
struct NumberedName {
  ztCAD_ShortText name;
  unsigned number = 0;  ///< at least 1
};

/// The name that is made: the separator and the number without leading zeros are appended.
ztCAD_ShortText textOf(const ztCAD_ShortText& name, unsigned number);

/// What a name was made of; std::nullopt if `textOf` makes no such name.
std::optional<NumberedName> numberedNameOf(const ztCAD_ShortText& made);

}  // namespace ztcad
