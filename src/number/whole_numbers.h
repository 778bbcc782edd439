#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace ztcad {

/// The texts "0000" to "9999". Four more bytes follow the last one, because `write` always copies four
/// characters, also when it skips leading zeros.
struct FourDigits {
  std::array<char, 40004> text{};

  constexpr FourDigits() {
    for (std::size_t number = 0; number < 10000; ++number) {
      std::size_t rest = number;
      for (std::size_t place = 4; place-- > 0; rest /= 10)
        text[4 * number + place] = static_cast<char>('0' + rest % 10);
    }
  }

  /// Writes a number below 100 with its leading zero; returns the end.
  char* writeTwo(std::uint32_t number, char* out) const {
    std::memcpy(out, &text[4 * static_cast<std::size_t>(number) + 2], 2);
    return out + 2;
  }

  /// Writes a number below 10000 with its leading zeros; returns the end.
  char* writeFour(std::uint32_t number, char* out) const {
    std::memcpy(out, &text[4 * static_cast<std::size_t>(number)], 4);
    return out + 4;
  }

  /// The same without leading zeros; up to three characters after the end are overwritten.
  char* write(std::uint32_t number, char* out) const {
    const auto zeros = static_cast<std::size_t>((number < 1000) + (number < 100) + (number < 10));
    std::memcpy(out, &text[4 * static_cast<std::size_t>(number) + zeros], 4);
    return out + (4 - zeros);
  }
};
inline constexpr FourDigits fourDigits;

/// Writes an integer in decimal digits. Four digits at a time from a table take half the time of
/// std::to_chars, which takes two and counts the digits first; most bytes of a large document are lists of
/// indices.
/// @param out room for ten characters, even if fewer are needed: characters after the end may be overwritten
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
