#pragma once

#include <string>

#include "../support/export.h"

/// Names of elements.

extern "C" {

/// Makes a valid element name out of any text: an underscore in front of a leading digit, one underscore in
/// place of each run of characters that are neither letters (of any script) nor digits. An empty name takes
/// `fallback`, and "_" where that is empty too.
///
/// @param corrected output, in the encoding in which the text came (UTF-8, else windows-1251); may be `name`
///                  itself
/// @return whether `corrected` differs from `name`; false, and an empty `corrected`, when there is no memory
ZTCAD_API bool doCorrectName(const std::string& name, std::string& corrected, std::string fallback);

/// The same for zero-terminated texts; null counts as empty.
/// @param corrected buffer of at least `max(strlen(name), strlen(fallback), 1) + 2` bytes; null: nothing is
///                  written and the result is false
ZTCAD_API bool doCorrectName_nostl(const char* name, char* corrected, const char* fallback);

/// Empties `name`. The library makes names unique when it saves and loads; it gives none out in advance.
ZTCAD_API void crtUniqueName(std::string& name);
}
