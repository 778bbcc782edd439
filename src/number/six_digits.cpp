#include "six_digits.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <QtAlgorithms>
#include <QtEndian>

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

/// The powers of ten from 1e-22 on, each the nearest double: of those below 1, the quotient of exact values.
constexpr int smallestExponent = -22;
constexpr auto makeNearestPowersOfTen() {
  std::array<double, 30> powers{};
  for (std::size_t i = 0; i < powers.size(); ++i) {
    const int exponent = smallestExponent + static_cast<int>(i);
    double power = 1;
    for (int k = 0; k < (exponent < 0 ? -exponent : exponent); ++k)
      power *= 10;
    powers[i] = exponent < 0 ? 1 / power : power;
  }
  return powers;
}
constexpr auto nearestPowersOfTen = makeNearestPowersOfTen();

/// Rounds a value below a million: m * 2^e, in [2^binary, 2^(binary + 1)).
///
/// The power of ten is compared with its nearest double. No double lies between the two; a value that equals
/// the double though it is less than the power is rounded up to the power.
Decimal ofSmall(double magnitude, std::uint64_t m, int e, int binary) {
  constexpr int log10Of2 = 1233;  // times 1/4096; exact after rounding down for all exponents used here
  const int least = (binary * log10Of2) >> 12;  // the exponent of 2^binary; that of the value may be one more
  const double next = nearestPowersOfTen[static_cast<std::size_t>(least + 1 - smallestExponent)];
  const int exponent = least + (magnitude >= next ? 1 : 0);
  const Scaled six = scaled(m, e, 5 - exponent);
  return carried({six.whole + (six.roundsUp ? 1 : 0), exponent});
}

/// Up to eight characters, the first one in the lowest byte. They are moved as a whole, without a branch that
/// depends on how many there are.
using Characters = std::uint64_t;

constexpr Characters bytesBelow(int count) { return (Characters{1} << (8 * count)) - 1; }

char* write(Characters characters, char* out) {
  const Characters bytes = qToLittleEndian(characters);
  std::memcpy(out, &bytes, sizeof bytes);
  return out;
}

/// The characters with a point after the first `before` ones, at most six.
Characters withPoint(Characters characters, int before) {
  const Characters first = bytesBelow(before);
  return (characters & first) | (Characters{'.'} << (8 * before)) | ((characters & ~first) << 8);
}

/// A number below a million as six values below ten.
Characters digitsOf(std::uint32_t number) {
  const Characters pairs =
      Characters{number / 10000} | Characters{number / 100 % 100} << 16 | Characters{number % 100} << 32;
  const Characters tens = (pairs * 103 >> 10) & 0x000f000f000f;  // pairs / 10, for each pair below 100
  return tens | (pairs - 10 * tens) << 8;
}

char* writeScientific(Characters digits, int count, int exponent, char* out) {
  write(withPoint(digits, 1), out);
  out += count > 1 ? count + 1 : 1;
  *out++ = 'e';
  *out++ = exponent < 0 ? '-' : '+';
  return fourDigits.writeTwo(static_cast<std::uint32_t>(exponent < 0 ? -exponent : exponent), out);
}

char* writeFixed(Characters digits, int count, int exponent, char* out) {
  if (exponent < 0) {
    std::memcpy(out, "0.000000", sizeof(Characters));
    return write(digits, out + 1 - exponent) + count;
  }
  const int before = exponent + 1;
  return write(withPoint(digits, before), out) + (count <= before ? before : count + 1);
}

char* write(Decimal decimal, char* out) {
  const Characters values = digitsOf(decimal.digits);
  const int zeros = static_cast<int>(qCountLeadingZeroBits(quint64{values})) / 8 - 2;  // at the end
  const int count = 6 - zeros;
  const Characters digits = values + 0x303030303030;  // "000000"
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
  *out = '-';
  out += bits >> 63U;
  constexpr std::uint64_t leadingBit = std::uint64_t{1} << fractionBits;
  const std::uint64_t m = (bits & (leadingBit - 1)) | leadingBit;
  const int e = binary - fractionBits;
  const double magnitude = value < 0 ? -value : value;
  if (magnitude >= million) return write(ofLarge(static_cast<std::uint64_t>(magnitude)), out);
  return write(ofSmall(magnitude, m, e, binary), out);
}

}  // namespace ztcad
