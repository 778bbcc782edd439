#pragma once

#include <algorithm>
#include <utility>

#include "usual_numbers.h"

/// @file Reads triples with instructions that x86 processors have since 2013. Defines ZTCAD_WIDE if the
/// compiler can make them for single functions; `hasWideInstructions` says whether the processor has them.
/// Vectors have 16 bytes: a stack on Windows does not align longer ones.

#if defined(__GNUC__) && defined(__x86_64__)
#define ZTCAD_WIDE __attribute__((target("avx2,bmi,bmi2,popcnt")))
#include <immintrin.h>

namespace ztcad {

inline bool hasWideInstructions() {
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
         __builtin_cpu_supports("popcnt");
}

namespace wide {

constexpr std::ptrdiff_t blockSize = sizeof(__m128i);

ZTCAD_WIDE inline __m128i load(const void* at) { return _mm_loadu_si128(static_cast<const __m128i*>(at)); }

ZTCAD_WIDE inline quint32 maskOf(__m128i bytes) { return static_cast<quint32>(_mm_movemask_epi8(bytes)); }

/// Sixteen equal bytes. The compiler must not know them: it would make them anew from an integer, by three
/// instructions, wherever they are used.
ZTCAD_WIDE inline __m128i sixteen(char byte) {
  __m128i bytes = _mm_set1_epi8(byte);
  asm("" : "+x"(bytes));
  return bytes;
}

struct Constants {
  __m128i comma;
  __m128i semicolon;
  __m128i point;
  __m128i zero;
  __m128i nine;  // the value

  ZTCAD_WIDE Constants()
      : comma(sixteen(',')),
        semicolon(sixteen(';')),
        point(sixteen('.')),
        zero(sixteen('0')),
        nine(sixteen(9)) {}
};

/// The bytes less "0": digits become 0 to 9.
ZTCAD_WIDE inline __m128i digitsOf(__m128i bytes, const Constants& constants) {
  return _mm_sub_epi8(bytes, constants.zero);
}

/// Bits of the bytes that are digits.
ZTCAD_WIDE inline quint32 digitMask(__m128i digits, const Constants& constants) {
  return maskOf(_mm_cmpeq_epi8(digits, _mm_min_epu8(digits, constants.nine)));
}

/// Whether a number that begins at `next` is separated by "," or ", " from the one that ends at `comma`.
inline bool isSeparator(const char* comma, const char* next) {
  const bool isUsual = next == comma + 2 && std::memcmp(comma, ", ", 2) == 0;  // one comparison
  return isUsual || (next == comma + 1 && *comma == ',');
}

/// Finds the numbers of a triple by a mask with a bit for each byte from `at` on, which is set if the byte is
/// part of no number; the lowest bit is clear. All ends are known before the first number is read, so none
/// waits for the one before it. False for other separators than ",", ", " and the ";" at the end, and if the
/// triple does not end within the mask.
ZTCAD_WIDE inline bool findTriple(const char* at, const char* end, quint64 outside, TriplePlaces& places) {
  quint64 changes = outside ^ (outside << 1);
  places.begins[0] = at;
  places.ends[0] = at + _tzcnt_u64(changes);
  changes = _blsr_u64(changes);
  places.begins[1] = at + _tzcnt_u64(changes);
  changes = _blsr_u64(changes);
  places.ends[1] = at + _tzcnt_u64(changes);
  changes = _blsr_u64(changes);
  places.begins[2] = at + _tzcnt_u64(changes);
  changes = _blsr_u64(changes);
  if (changes == 0) return false;
  places.ends[2] = at + _tzcnt_u64(changes);
  return isSeparator(places.ends[0], places.begins[1]) && isSeparator(places.ends[1], places.begins[2]) &&
         places.ends[2] < end && *places.ends[2] == ';';
}

/// Each pair of bytes as a number below 100, then each four and each eight: 10 and 1, 100 and 1, 10000 and 1
/// are the factors. Returns numbers below 10000, in 32 bits each.
ZTCAD_WIDE inline __m128i joinFours(__m128i digits) {
  const __m128i pairs = _mm_maddubs_epi16(digits, _mm_set1_epi16(10 + (1 << 8)));
  return _mm_madd_epi16(pairs, _mm_set1_epi32(100 + (1 << 16)));
}
ZTCAD_WIDE inline __m128i joinEights(__m128i first, __m128i second) {
  return _mm_madd_epi16(_mm_packus_epi32(first, second), _mm_set1_epi32(10000 + (1 << 16)));
}

/// The value of sixteen digits.
ZTCAD_WIDE inline qint64 joinSixteen(__m128i digits) {
  const __m128i fours = joinFours(digits);
  const auto eights = static_cast<quint64>(_mm_cvtsi128_si64(joinEights(fours, fours)));
  return static_cast<qint64>((eights & 0xffffffff) * 100000000 + (eights >> 32));
}

/// Sixteen bytes from the `count`-th on are the order in which `count` bytes move to the end, after zeros.
alignas(2 * blockSize) inline constexpr signed char order[] = {
    -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128,
    0,    1,    2,    3,    4,    5,    6,    7,    8,    9,    10,   11,   12,   13,   14,   15};

inline constexpr double signs[] = {1, -1};

/// Reads an optional "-" and up to 15 digits with at most one point, which is not the first of them. The
/// whole number that they form and the power of ten that divides it are exact (see `readShortReal`). False
/// for any other text.
/// @param most input and output: becomes the number of digits if that is greater
ZTCAD_WIDE inline bool readReal(const char* begin, const char* end, const Constants& constants, double& value,
                                int& most) {
  constexpr quint32 mostDigits = 15;
  const int sign = *begin == '-' ? 1 : 0;
  const char* const whole = begin + sign;
  const auto length = static_cast<quint32>(end - whole);
  const __m128i bytes = load(whole);
  const __m128i digits = digitsOf(bytes, constants);
  const quint32 nonDigits = _bzhi_u32(~digitMask(digits, constants), length);
  const quint32 points = _bzhi_u32(maskOf(_mm_cmpeq_epi8(bytes, constants.point)), length);
  const quint32 count = length - static_cast<quint32>(_mm_popcnt_u32(points));
  const quint32 notUsual = (nonDigits ^ points) | _blsr_u32(points) | (points & 1);
  if (notUsual != 0 || count - 1 >= mostDigits) return false;
  const quint32 beforePoint = _tzcnt_u32(points | (quint32{1} << length));
  // after the point, each digit is one byte further on
  const __m128i inPlace = load(order + count);
  const __m128i isAfter = _mm_cmpgt_epi8(inPlace, _mm_set1_epi8(static_cast<char>(beforePoint - 1)));
  const __m128i moved = _mm_shuffle_epi8(digits, _mm_sub_epi8(inPlace, isAfter));
  most = std::max(most, static_cast<int>(count));
  value = signs[sign] * static_cast<double>(joinSixteen(moved)) / exactPowersOfTen[count - beforePoint];
  return true;
}

/// How many bytes `outsideMask` and then `readReal` read.
constexpr std::ptrdiff_t bytesForReals = 6 * blockSize;

/// Bits of the first 64 bytes which are set if the byte is part of no real: white space, ",", ";" and quotes.
ZTCAD_WIDE inline quint64 outsideMask(const char* at, const Constants& constants) {
  quint64 mask = 0;
  for (int i = 0; i < 4; ++i) {
    const __m128i bytes = load(at + i * blockSize);
    const __m128i isLow = _mm_cmpeq_epi8(bytes, _mm_min_epu8(bytes, constants.comma));
    const __m128i isOutside = _mm_or_si128(isLow, _mm_cmpeq_epi8(bytes, constants.semicolon));
    mask |= quint64{maskOf(isOutside)} << (i * blockSize);
  }
  return mask;
}

/// Reads a triple up to its ";". False, with the outputs unspecified, for other texts than the usual ones,
/// and near the end of memory.
/// @{
ZTCAD_WIDE inline bool readTriple(const PlainCursor& text, const Constants& constants, double* values,
                                  TriplePlaces& places) {
  if (text.endOfMemory - text.at < bytesForReals) return false;
  const quint64 outside = outsideMask(text.at, constants);
  int most = 0;
  const bool isRead = (outside & 1) == 0 && findTriple(text.at, text.end, outside, places) &&
                      readReal(places.begins[0], places.ends[0], constants, values[0], most) &&
                      readReal(places.begins[1], places.ends[1], constants, values[1], most) &&
                      readReal(places.begins[2], places.ends[2], constants, values[2], most);
  places.mostDigits = most;
  return isRead;
}

ZTCAD_WIDE inline bool readTriple(const PlainCursor& text, const Constants& constants, std::uint32_t* values,
                                  TriplePlaces& places) {
  constexpr std::ptrdiff_t readAtMost = 3 * blockSize;
  if (text.endOfMemory - text.at < readAtMost) return false;
  const auto digitsAt = [&](const char* at)
                            ZTCAD_WIDE { return digitMask(digitsOf(load(at), constants), constants); };
  const quint32 digits = digitsAt(text.at) | digitsAt(text.at + blockSize) << blockSize;
  const quint64 outside = ~digits;
  if ((outside & 1) != 0 || !findTriple(text.at, text.end, outside, places)) return false;
  constexpr std::ptrdiff_t mostDigits = 8;
  const auto lengthOf = [&](std::size_t i) { return places.ends[i] - places.begins[i]; };
  if (lengthOf(0) > mostDigits || lengthOf(1) > mostDigits || lengthOf(2) > mostDigits) return false;
  const auto wordOf = [&](std::size_t i) ZTCAD_WIDE {
    quint64 word = 0;
    std::memcpy(&word, places.begins[i], sizeof word);
    return static_cast<qint64>(word << (8 * (mostDigits - lengthOf(i))));
  };
  const __m128i valuesOfBytes = _mm_set1_epi8(0x0f);  // zeros that are no digits stay zeros
  const __m128i two = _mm_and_si128(_mm_set_epi64x(wordOf(1), wordOf(0)), valuesOfBytes);
  const __m128i third = _mm_and_si128(_mm_cvtsi64_si128(wordOf(2)), valuesOfBytes);
  const __m128i joined = joinEights(joinFours(two), joinFours(third));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(values), joined);
  values[2] = static_cast<std::uint32_t>(_mm_extract_epi32(joined, 2));
  return true;
}
/// @}

/// What has other spellings is left to the other reader.
/// @param places output if `HasPlaces`
template <bool HasPlaces, typename Number>
ZTCAD_WIDE int readTriples(PlainCursor& text, Number* values, TriplePlaces* places, int most) {
  const Constants constants;
  PlainCursor ahead = text;
  TriplePlaces found = {};
  for (int count = 0; count < most; ++count) {
    skipWhitespace(ahead);
    if (readTriple(ahead, constants, values + 3 * count, found))
      ahead.at = found.ends[2] + 1;
    else if (readTriplesNarrow(ahead, values + 3 * count, &found, 1) == 0)
      return count;
    text.at = ahead.at;
    if constexpr (HasPlaces) places[count] = found;
  }
  return most;
}

/// Reads the numbers that lie in the first 64 bytes from the cursor on; the first one begins there.
/// @param next output: where the number begins that is the first to lie elsewhere; unchanged if the list ends
///             or has another piece
ZTCAD_WIDE inline int readRealsInWindow(PlainCursor& text, const Constants& constants, double* values,
                                        int most, const char*& next) {
  constexpr std::ptrdiff_t windowSize = 64;
  const char* const window = text.at;
  const auto size = static_cast<quint32>(std::min(text.end - window, windowSize));
  const quint64 outside = outsideMask(window, constants) | ~_bzhi_u64(~quint64{0}, size);
  quint64 changes = outside ^ (outside << 1);
  if ((outside & 1) != 0) return 0;
  const char* begin = window;
  for (int count = 0; changes != 0;) {
    const char* const end = window + _tzcnt_u64(changes);
    changes = _blsr_u64(changes);
    int digits = 0;
    if (!readReal(begin, end, constants, values[count], digits)) return count;
    text.at = end;
    if (++count == most) return count;
    if (end == text.end || *end != ',') return count;
    begin = end + (end[1] == ' ' ? 2 : 1);
    if (changes == 0 || begin != window + _tzcnt_u64(changes)) {  // the window ends, or another separator
      if (changes == 0) next = begin;
      return count;
    }
    changes = _blsr_u64(changes);
    if (changes == 0) {  // the number does not end in the window
      next = begin;
      return count;
    }
  }
  return 0;
}

ZTCAD_WIDE inline int readReals(PlainCursor& text, double* values, int most) {
  const Constants constants;
  int count = 0;
  PlainCursor ahead = text;
  for (const char* next = text.at; next && text.endOfMemory - next >= bytesForReals;) {
    ahead.at = std::exchange(next, nullptr);
    const int found = readRealsInWindow(ahead, constants, values + count, most - count, next);
    if (found == 0) break;
    count += found;
    text.at = ahead.at;
  }
  return count;
}

}  // namespace wide

}  // namespace ztcad
#endif
