#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <QtAlgorithms>
#include <system_error>

#include "../text/sse2.h"

/// @file
/// Reads numbers from ASCII bytes. Every reader accepts common spellings only; where one returns false, its
/// outputs are unspecified and the conversions of number_text.h decide.

namespace ztcad {

/// The unread rest of a text.
struct PlainCursor {
  const char* at;
  const char* end;
  const char*
      endOfMemory;  // end of readable memory; if it is after `end`, the byte at `end` is part of no number
};

inline bool isDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

inline void skipWhitespace(PlainCursor& text) {
  const auto isWhitespace = [](char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; };
  while (text.at != text.end && isWhitespace(*text.at))
    ++text.at;
}

inline bool skip(char c, PlainCursor& text) {
  if (text.at == text.end || *text.at != c) return false;
  ++text.at;
  return true;
}

/// The powers that a double holds exactly.
inline constexpr double exactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

#if defined(ZTCAD_SSE2)
/// Classes of sixteen bytes, one bit per byte, the first byte in the lowest bit.
struct ByteMasks {
  quint32 nonDigits;  // bits 16 to 31 are set too
  quint32 points;
};

constexpr std::ptrdiff_t classifiedBytes = sizeof(__m128i);

inline ByteMasks classify(const char* at) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const __m128i digits = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
  const __m128i areDigits = _mm_cmpeq_epi8(digits, _mm_min_epu8(digits, _mm_set1_epi8(9)));
  const __m128i arePoints = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('.'));
  return {~static_cast<quint32>(_mm_movemask_epi8(areDigits)),
          static_cast<quint32>(_mm_movemask_epi8(arePoints))};
}

/// Loads eight bytes, the first one lowest; digits become 0 to 9, all other bytes more.
inline quint64 loadWord(const char* at) {
  constexpr quint64 zeros = 0x3030303030303030;
  quint64 word = 0;
  std::memcpy(&word, at, sizeof word);
  return word ^ zeros;
}

/// The first `count` bytes of a word; `count` is below eight.
inline quint64 firstDigits(quint64 word, int count) { return word & ((quint64{1} << (8 * count)) - 1); }

/// Number of digits at the start of a word. Faster than `classify` for the few digits of an index.
inline int countDigits(quint64 word) {
  constexpr quint64 lift = 0x7676767676767676;  // 10 and more become 80 hex and more
  constexpr quint64 highBits = 0x8080808080808080;
  return static_cast<int>(qCountTrailingZeroBits(((word + lift) | word) & highBits) / 8);
}

/// The value of one to eight digits, combined in pairs, fours and eights.
inline quint32 joinDigits(quint64 digits, int count) {
  digits <<= 8 * (8 - count);  // leading zeros
  digits = 10 * digits + (digits >> 8);
  constexpr quint64 everyOtherPair = 0x000000FF000000FF;
  constexpr quint64 firstPairs = 100 + (quint64{1000000} << 32);
  constexpr quint64 secondPairs = 1 + (quint64{10000} << 32);
  return static_cast<quint32>(
      ((digits & everyOtherPair) * firstPairs + ((digits >> 16) & everyOtherPair) * secondPairs) >> 32);
}

/// Reads an optional "-", one to seven digits before the point and at most eight in all. No branch but the
/// range check depends on the digit counts, which no processor predicts. False, with the cursor unchanged,
/// for other numbers and where fewer than 17 bytes of memory are left.
inline bool readFewDigits(PlainCursor& text, double& value) {
  if (text.endOfMemory - text.at < classifiedBytes + 1) return false;
  const ByteMasks masks = classify(text.at);
  const int sign = *text.at == '-' ? 1 : 0;
  const quint32 nonDigits = masks.nonDigits >> sign;
  const int beforePoint = static_cast<int>(qCountTrailingZeroBits(nonDigits));
  const int point = static_cast<int>((masks.points >> (sign + beforePoint)) & 1);
  const int afterPoint = point * static_cast<int>(qCountTrailingZeroBits(nonDigits >> (beforePoint + point)));
  const int count = beforePoint + afterPoint;
  if (beforePoint < 1 || beforePoint > 7 || count > 8) return false;
  const char* const whole = text.at + sign;
  const char* const end = whole + count + point;
  if (*end == 'e' || *end == 'E') return false;
  const quint64 digits = firstDigits(loadWord(whole), beforePoint) |
                         (firstDigits(loadWord(end - afterPoint), afterPoint) << (8 * beforePoint));
  constexpr double signs[] = {1, -1};
  value = signs[sign] * joinDigits(digits, count) / exactPowersOfTen[afterPoint];
  text.at = end;
  return true;
}

/// The same for an index of one to seven digits; needs eight bytes of memory.
inline bool readFewDigits(PlainCursor& text, std::uint32_t& value) {
  if (text.endOfMemory - text.at < std::ptrdiff_t{sizeof(quint64)}) return false;
  const quint64 word = loadWord(text.at);
  const int count = countDigits(word);
  if (count < 1 || count > 7) return false;
  value = joinDigits(firstDigits(word, count), count);
  text.at += count;
  return true;
}
#else
template <typename Number>
bool readFewDigits(PlainCursor&, Number&) {
  return false;
}
#endif

/// Reads digits with at most one point. Up to 15 digits, both the whole number they form and the power of ten
/// that divides it are exact, so the quotient is the nearest double (W. Clinger, "How to Read Floating Point
/// Numbers Accurately", 1990). std::from_chars uses the same method; this is a third faster on the usual
/// lists. False, with the cursor unchanged, for more digits and for exponents.
inline bool readShortReal(PlainCursor& text, double& value) {
  constexpr int mostDigits = 15;
  const char* at = text.at;
  std::uint64_t digits = 0;
  for (; at != text.end && isDigit(*at); ++at)
    digits = 10 * digits + static_cast<unsigned>(*at - '0');
  std::ptrdiff_t count = at - text.at;
  std::ptrdiff_t afterPoint = 0;
  if (at != text.end && *at == '.') {
    const char* const first = ++at;
    for (; at != text.end && isDigit(*at); ++at)
      digits = 10 * digits + static_cast<unsigned>(*at - '0');
    afterPoint = at - first;
    count += afterPoint;
  }
  if (count > mostDigits || (at != text.end && (*at == 'e' || *at == 'E'))) return false;
  value = static_cast<double>(digits) / exactPowersOfTen[afterPoint];
  text.at = at;
  return true;
}

/// Reads one number without whitespace around it. On false the outputs are unspecified.
/// @{
inline bool readNumber(PlainCursor& text, double& value) {
  if (readFewDigits(text, value)) return true;
  const bool isNegative = skip('-', text);
  if (text.at == text.end || !isDigit(*text.at)) return false;
  if (!readShortReal(text, value)) {
    const auto [end, error] = std::from_chars(text.at, text.end, value);
    if (error != std::errc()) return false;
    text.at = end;
  }
  if (isNegative) value = -value;
  return true;
}

inline bool readNumber(PlainCursor& text, std::uint32_t& value) {
  if (readFewDigits(text, value)) return true;
  constexpr int mostDigits = 10;
  const char* const first = text.at;
  std::uint64_t digits = 0;
  for (; text.at != text.end && isDigit(*text.at) && text.at - first <= mostDigits; ++text.at)
    digits = 10 * digits + static_cast<unsigned>(*text.at - '0');
  value = static_cast<std::uint32_t>(digits);
  return text.at != first && digits <= std::numeric_limits<std::uint32_t>::max();
}
/// @}

}  // namespace ztcad
