#pragma once

#include <string>

#include "c/names.h"

/// @file
/// Names of elements, as `std::string`.

extern "C" {

/// As `doCorrectName_nostl`.
/// @param corrected output; may be `name` itself
ZTCAD_API bool doCorrectName(const std::string& name, std::string& corrected, std::string fallback);

/// Empties `name`. The library makes names unique when it saves and loads; it gives none out in advance.
ZTCAD_API void crtUniqueName(std::string& name);
}
