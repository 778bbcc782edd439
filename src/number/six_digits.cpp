#include "six_digits.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "whole_numbers.h"

#if defined(_MSC_VER) && !defined(__clang__)
#include <intrin.h>
#endif

// A double is m * 2^e with an integer m of 53 bits. Scaled by a power of ten to six digits before the point,
// it is a quotient of integers that fit into 128 bits. The digits and the comparison of the remainder with
// one half are therefore exact: no table of rounded powers, no doubt about ties. A list of reals takes less
// than half the time of std::to_chars, which serves any precision and rounds ties to even, so that each tie
// would need a second check.

namespace ztcad {

namespace {

struct Wide {
  std::uint64_t high;
  std::uint64_t low;
};

Wide multiply(std::uint64_t a, std::uint64_t b) {
#if defined(__SIZEOF_INT128__)
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(a) * b;
  return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
  Wide product;
  product.low = _umul128(a, b, &product.high);
  return product;
#endif
}

/// The first `Count` powers of `base`.
template <std::size_t Count>
constexpr std::array<std::uint64_t, Count> powersOf(std::uint64_t base) {
  std::array<std::uint64_t, Count> powers{};
  powers[0] = 1;
  for (std::size_t i = 1; i < Count; ++i)
    powers[i] = powers[i - 1] * base;
  return powers;
}

constexpr auto powersOfFive = powersOf<28>(5);  // the last one is below 2^63
constexpr auto powersOfTen = powersOf<20>(10);

/// Six digits as one number, and the power of ten of the first digit.
struct Decimal {
  std::uint32_t digits;
  int exponent;
};

constexpr std::uint32_t million = 1000000;

Decimal carried(Decimal rounded) {
  if (rounded.digits < million) return rounded;
  return {million / 10, rounded.exponent + 1};
}

/// Rounds a value from a million up to 2^63, given its integer part; the fraction cannot change the result.
Decimal ofLarge(std::uint64_t whole) {
  int exponent = 6;
  while (exponent < 18 && whole >= powersOfTen[static_cast<std::size_t>(exponent) + 1])
    ++exponent;
  const std::uint64_t unit = powersOfTen[static_cast<std::size_t>(exponent) - 5];
  const std::uint64_t digits = whole / unit;
  const bool roundsUp = whole % unit >= unit / 2;
  return carried({static_cast<std::uint32_t>(digits + (roundsUp ? 1 : 0)), exponent});
}

/// A value truncated to an integer, and whether the fraction is one half or more.
struct Scaled {
  std::uint32_t whole;
  bool roundsUp;
};

/// Computes m * 2^e * 10^power. Requires a result below 2^32 and 2^e * 10^power below 1.
Scaled scaled(std::uint64_t m, int e, int power) {
  const Wide product = multiply(m, powersOfFive[static_cast<std::size_t>(power)]);
  const int shift = -(e + power);
  const auto bit = [&product](int place) {
    return place < 64 ? (product.low >> place) & 1U : (product.high >> (place - 64)) & 1U;
  };
  const std::uint64_t whole = shift < 64 ? (product.low >> shift) | (product.high << 1U << (63 - shift))
                                         : product.high >> (shift - 64);
  return {static_cast<std::uint32_t>(whole), bit(shift - 1) != 0};
}

/// Rounds a value below a million: m * 2^e, in [2^binary, 2^(binary + 1)).
Decimal ofSmall(std::uint64_t m, int e, int binary) {
  constexpr int log10Of2 = 1233;  // times 1/4096; exact after rounding down for all exponents used here
  int exponent = (binary * log10Of2) >> 12;  // that of 2^binary; that of the value may be one more
  Scaled six = scaled(m, e, 5 - exponent);
  if (six.whole >= million) six = scaled(m, e, 5 - ++exponent);
  return carried({six.whole + (six.roundsUp ? 1 : 0), exponent});
}

/// Writes all six digits; returns their count without trailing zeros.
int writeDigits(std::uint32_t digits, char* out) {
  fourDigits.writeFour(digits % 10000, fourDigits.writeTwo(digits / 10000, out));
  int count = 6;
  while (count > 1 && out[count - 1] == '0')
    --count;
  return count;
}

char* writeScientific(const char* digits, int count, int exponent, char* out) {
  *out++ = digits[0];
  if (count > 1) {
    *out++ = '.';
    std::memcpy(out, digits + 1, 5);
    out += count - 1;
  }
  *out++ = 'e';
  *out++ = exponent < 0 ? '-' : '+';
  return fourDigits.writeTwo(static_cast<std::uint32_t>(exponent < 0 ? -exponent : exponent), out);
}

char* writeFixed(const char* digits, int count, int exponent, char* out) {
  if (exponent < 0) {
    constexpr std::array<char, 6> zeros = {'0', '.', '0', '0', '0', '0'};
    std::memcpy(out, zeros.data(), zeros.size());
    out += 1 - exponent;
    std::memcpy(out, digits, 6);
    return out + count;
  }
  const int before = exponent + 1;
  std::memcpy(out, digits, 6);
  if (count <= before) return out + before;
  std::memcpy(out + before + 1, digits + before, static_cast<std::size_t>(6 - before));
  out[before] = '.';
  return out + count + 1;
}

char* write(Decimal decimal, char* out) {
  char digits[6];
  const int count = writeDigits(decimal.digits, digits);
  const bool isFixed = -4 <= decimal.exponent && decimal.exponent < 6;
  return isFixed ? writeFixed(digits, count, decimal.exponent, out)
                 : writeScientific(digits, count, decimal.exponent, out);
}

constexpr int fractionBits = 52;
constexpr int exponentBias = 1023;
constexpr int smallestBinary = -73;  // 2^-73 is above 1e-22, down to which the powers of five suffice
constexpr int largestBinary = 62;    // the integer part fits into 63 bits

}  // namespace

char* writeSixDigits(double value, char* out) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  if (bits << 1U == 0) {
    *out = '0';
    return out + 1;
  }
  const int binary = static_cast<int>((bits >> fractionBits) & 0x7FFU) - exponentBias;
  if (binary < smallestBinary || binary > largestBinary) return nullptr;
  if (bits >> 63U != 0) *out++ = '-';
  constexpr std::uint64_t leadingBit = std::uint64_t{1} << fractionBits;
  const std::uint64_t m = (bits & (leadingBit - 1)) | leadingBit;
  const int e = binary - fractionBits;
  const double magnitude = value < 0 ? -value : value;
  if (magnitude >= million) return write(ofLarge(static_cast<std::uint64_t>(magnitude)), out);
  return write(ofSmall(m, e, binary), out);
}

}  // namespace ztcad
