#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace ztcad {

/// Four decimal digits each, "0000" to "9999", and room behind the last one: who leaves out leading zeros still copies four
/// characters.
struct FourDigits {
  std::array<char, 40004> text{};

  constexpr FourDigits() {
    for (std::size_t number = 0; number < 10000; ++number) {
      std::size_t rest = number;
      for (std::size_t place = 4; place-- > 0; rest /= 10)
        text[4 * number + place] = static_cast<char>('0' + rest % 10);
    }
  }

  /// A number below 100 with its leading zero. Returns the end.
  char* writeTwo(std::uint32_t number, char* out) const {
    std::memcpy(out, &text[4 * static_cast<std::size_t>(number) + 2], 2);
    return out + 2;
  }

  /// A number below 10000 with its leading zeros.
  char* writeFour(std::uint32_t number, char* out) const {
    std::memcpy(out, &text[4 * static_cast<std::size_t>(number)], 4);
    return out + 4;
  }

  /// The same without leading zeros; up to three characters behind the end are spoilt.
  char* write(std::uint32_t number, char* out) const {
    const auto zeros = static_cast<std::size_t>((number < 1000) + (number < 100) + (number < 10));
    std::memcpy(out, &text[4 * static_cast<std::size_t>(number) + zeros], 4);
    return out + (4 - zeros);
  }
};
inline constexpr FourDigits fourDigits;

/// A whole number in decimal digits. Four digits at a time from a table take half the time of std::to_chars, which goes by
/// two and counts them first; lists of indices are most of the bytes of a large document.
/// @param out room for ten characters, also when fewer are needed: those behind the end may be spoilt
/// @return the end of what was written
inline char* writeIndex(std::uint32_t value, char* out) {
  constexpr std::uint32_t tenThousand = 10000;
  constexpr std::uint32_t hundredMillion = tenThousand * tenThousand;
  if (value < tenThousand) return fourDigits.write(value, out);
  if (value < hundredMillion) {
    out = fourDigits.write(value / tenThousand, out);
    return fourDigits.writeFour(value % tenThousand, out);
  }
  out = fourDigits.write(value / hundredMillion, out);
  value %= hundredMillion;
  out = fourDigits.writeFour(value / tenThousand, out);
  return fourDigits.writeFour(value % tenThousand, out);
}

}  // namespace ztcad
