#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "guard.h"

/// Texts and numbers into buffers of a host. Each writes what there is room for and returns how much there is, -1 where there
/// is nothing to give.

namespace ztcad {

/// A text that does not fit with its terminating zero is not written; the buffer then holds an empty one.
/// @param tell a function that makes the text, or nothing where there is none
template <typename Tell>
std::int64_t giveText(char* buffer, std::int64_t size, Tell&& tell) noexcept {
  if (buffer && size > 0) *buffer = '\0';
  return guarded(std::int64_t{-1}, [&] {
    const std::optional<std::string> text = tell();
    if (!text) return std::int64_t{-1};
    const auto length = static_cast<std::int64_t>(text->size());
    if (buffer && length < size) std::memcpy(buffer, text->c_str(), text->size() + 1);
    return length;
  });
}

/// A count as the boundary tells it; what a list holds beyond that is out of its reach.
inline std::int32_t countOf(std::size_t count) {
  constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(count, most));
}

/// As many as there is room for.
template <typename Number>
std::int32_t giveNumbers(const std::vector<Number>& numbers, Number* array, std::int32_t capacity) {
  const std::int32_t count = countOf(numbers.size());
  if (array && capacity > 0) std::copy_n(numbers.begin(), std::min(count, capacity), array);
  return count;
}

}  // namespace ztcad
