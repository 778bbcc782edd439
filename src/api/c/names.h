#pragma once

#include "types.h"

/// @file
/// Names of elements.

ZTCAD_C_BEGIN

/// Makes a valid element name out of any text: an underscore in front of a leading digit, one underscore in
/// place of each run of characters that are neither letters (of any script) nor digits. An empty name takes
/// `fallback`, and "_" where that is empty too. Null counts as empty.
/// @param corrected output, in the encoding in which the text came (UTF-8, else windows-1251): a buffer of at least
///                  `max(strlen(name), strlen(fallback), 1) + 2` bytes, perhaps that of `name` itself; null:
///                  nothing is written and the result is false
/// @return whether `corrected` differs from `name`; false, and an empty `corrected`, when there is no memory
ZTCAD_API bool doCorrectName_nostl(const char* name, char* corrected, const char* fallback);

/// Empties `name`. The library makes names unique when it saves and loads; it gives none out in advance.
ZTCAD_API void crtUniqueName_nostl(char* name);

ZTCAD_C_END
