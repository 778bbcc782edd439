#pragma once

#include "types.h"

/// @file
/// Names of elements.

ZTCAD_C_BEGIN

/// Makes a valid element name from any text: a leading digit gets an underscore before it, and each run of
/// characters that are neither letters nor digits is replaced by one underscore. Letters and digits are those
/// of every script, but no character beyond U+FFFF counts as one. An empty name is replaced by the correction
/// of `fallback`, and by "_" if that is empty too. Null counts as empty.
/// @param corrected output, in the encoding of the text that is corrected (UTF-8, else windows-1251): a
///                  buffer of at least `max(strlen(name), strlen(fallback), 1) + 2` bytes, which may be that
///                  of `name`; null: nothing is written and the result is false
/// @return whether `corrected` differs from `name`; false, with `corrected` empty, when memory runs out
ZTCAD_API bool doCorrectName_nostl(const char* name, char* corrected, const char* fallback);

/// Empties `name`; null: nothing happens. It makes no unique name: the library makes names unique when it
/// saves and loads a document.
ZTCAD_API void crtUniqueName_nostl(char* name);

ZTCAD_C_END
