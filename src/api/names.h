#pragma once

#include <string>

#include "c/names.h"

/// @file
/// Names of elements, as `std::string`.

extern "C" {

/// Like `doCorrectName_nostl`.
/// @param corrected output; may be `name` itself
ZTCAD_API bool doCorrectName(const std::string& name, std::string& corrected, std::string fallback);

/// Like `crtUniqueName_nostl`: empties `name`.
ZTCAD_API void crtUniqueName(std::string& name);
}
