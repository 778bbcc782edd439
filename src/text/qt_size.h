#pragma once

#include <string_view>

#include "text_limits.h"

namespace ztcad {

/// A number of UTF-16 units as Qt takes it. Throws `TooLong` for more than a text may hold: Qt would read a
/// negative size as "up to the next NUL".
/// @param at start of the text, for the exception
inline int qtSize(std::size_t units, const char* at) {
  if (units > limits.text) throw TooLong(TooLong::text, at);
  return static_cast<int>(units);
}

/// The same for a text with at most one unit for each byte.
inline int qtSize(std::string_view bytes) { return qtSize(bytes.size(), bytes.data()); }

}  // namespace ztcad
