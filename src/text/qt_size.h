#pragma once

#include <limits>
#include <stdexcept>
#include <string_view>

namespace ztcad {

/// The size of a text as Qt takes it. Throws `std::length_error` for a text that is too long for an int: Qt
/// would read a negative size as "up to the next NUL".
inline int qtSize(std::string_view bytes) {
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw std::length_error("text is too long");
  return static_cast<int>(bytes.size());
}

}  // namespace ztcad
