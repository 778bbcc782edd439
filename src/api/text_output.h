#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "guard.h"

/// Writes texts and numbers into buffers of a host. Each function returns the full length or count.

namespace ztcad {

/// Writes a text with its terminating zero. If it does not fit, the buffer holds an empty text.
/// @param makeText returns the text as `std::optional<std::string>`
/// @return the length; -1 if there is no text
template <typename MakeText>
std::int64_t writeText(char* buffer, std::int64_t size, MakeText&& makeText) noexcept {
  if (buffer && size > 0) *buffer = '\0';
  return guarded(std::int64_t{-1}, [&] {
    const std::optional<std::string> text = makeText();
    if (!text) return std::int64_t{-1};
    const auto length = static_cast<std::int64_t>(text->size());
    if (buffer && length < size) std::memcpy(buffer, text->c_str(), text->size() + 1);
    return length;
  });
}

/// A count for the interface, at most INT32_MAX: elements after that cannot be reached by index.
inline std::int32_t countOf(std::size_t count) {
  constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(count, most));
}

/// Writes as many numbers as the array has room for, and returns how many there are.
template <typename Number>
std::int32_t writeNumbers(const Number* numbers, std::size_t size, Number* array, std::int32_t capacity) {
  const std::int32_t count = countOf(size);
  if (array && capacity > 0) std::copy_n(numbers, std::min(count, capacity), array);
  return count;
}
template <typename Number>
std::int32_t writeNumbers(const std::vector<Number>& numbers, Number* array, std::int32_t capacity) {
  return writeNumbers(numbers.data(), numbers.size(), array, capacity);
}

}  // namespace ztcad
