#pragma once

#include <string>

namespace ztcad {

/// Makes a valid element name from any text: an underscore is put before a leading digit, and each run of
/// characters that are no letters, numbers or combining marks becomes one underscore. All scripts count, but
/// only up to U+FFFF: any character beyond that becomes an underscore. For an empty name `fallback` is
/// corrected instead, and for an empty fallback the result is "_". The result has the encoding of the
/// corrected text (see `NarrowEncoding`).
std::string correctName(const std::string& name, const std::string& fallback);

}  // namespace ztcad
