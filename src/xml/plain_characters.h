#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <QChar>
#include <QString>
#include <QtAlgorithms>
#include <string_view>

#include "../text/sse2.h"

/// @file
/// Character tables and scans of the plain XML reader.

namespace ztcad {

/// Thrown where a text is not plain or cannot be proved to be; caught in `readPlainXml`.
struct NotPlain {};

inline void require(bool isPlain) {
  if (!isPlain) throw NotPlain();
}

/// Classes of bytes in text between tags.
enum CharacterClass : unsigned char { Ordinary, Whitespace, Control, Markup, NonAscii };

constexpr std::array<CharacterClass, 256> makeCharacterClasses() {
  std::array<CharacterClass, 256> classes{};
  for (std::size_t byte = 0; byte < 256; ++byte)
    classes[byte] = byte < 0x20 ? Control : byte < 0x80 ? Ordinary : NonAscii;
  for (const unsigned char whitespace : {' ', '\t', '\n', '\r'})
    classes[whitespace] = Whitespace;
  for (const unsigned char markup : {'<', '&', ']'})
    classes[markup] = Markup;
  return classes;
}
inline constexpr auto characterClasses = makeCharacterClasses();

inline CharacterClass classOf(char byte) { return characterClasses[static_cast<unsigned char>(byte)]; }
inline bool isWhitespace(char byte) { return classOf(byte) == Whitespace; }

constexpr bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

constexpr std::array<bool, 256> makeNameCharacters() {
  std::array<bool, 256> found{};
  for (std::size_t byte = 0; byte < 128; ++byte) {
    const char c = static_cast<char>(byte);
    found[byte] = isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
  }
  return found;
}
inline constexpr auto nameCharacters = makeNameCharacters();

inline bool isNameCharacter(char c) { return nameCharacters[static_cast<unsigned char>(c)]; }

/// Characters that need no further check in an attribute value, whichever quote delimits it. Includes "]",
/// which is markup in text only.
constexpr std::array<bool, 256> makeValueCharacters() {
  std::array<bool, 256> found{};
  for (std::size_t byte = 0; byte < 128; ++byte)
    found[byte] = characterClasses[byte] == Ordinary && byte != '"' && byte != '\'';
  found[' '] = true;
  found[']'] = true;
  return found;
}
inline constexpr auto valueCharacters = makeValueCharacters();

/// Returns the first byte of an attribute value that needs a further check, or `end`: a quote of either kind,
/// "<", "&", a control character (tab and line ends included) or a byte beyond ASCII. Scans sixteen bytes at
/// a time with SSE2.
inline const char* skipValueCharacters(const char* at, const char* end) {
#if defined(ZTCAD_SSE2)
  constexpr std::ptrdiff_t width = sizeof(__m128i);
  for (; end - at >= width; at += width) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const auto are = [&bytes](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i quotes = _mm_or_si128(are('"'), are('\''));
    const __m128i markup = _mm_or_si128(are('<'), are('&'));
    // signed comparison: bytes from 80 hex on are less than a space too
    const __m128i others = _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));
    const int found = _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(quotes, markup), others));
    if (found != 0) return at + qCountTrailingZeroBits(static_cast<quint32>(found));
  }
#endif
  while (at != end && valueCharacters[static_cast<unsigned char>(*at)])
    ++at;
  return at;
}

/// memcmp without a call for 8 to 16 bytes, the usual length of the text between two attribute values.
inline bool equalBytes(const char* a, const char* b, std::size_t size) {
  constexpr std::size_t half = sizeof(quint64);
  if (size < half || size > 2 * half) return size == 0 || std::memcmp(a, b, size) == 0;
  const auto word = [](const char* at) {
    quint64 bytes = 0;
    std::memcpy(&bytes, at, half);
    return bytes;
  };
  return word(a) == word(b) && word(a + size - half) == word(b + size - half);
}

/// Number of equal bytes at the start of two texts of `size` bytes.
inline std::ptrdiff_t commonPrefix(const char* a, const char* b, std::ptrdiff_t size) {
  std::ptrdiff_t at = 0;
#if defined(ZTCAD_SSE2)
  constexpr std::ptrdiff_t width = sizeof(__m128i);
  for (; size - at >= width; at += width) {
    const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + at));
    const __m128i second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + at));
    const auto equal = static_cast<quint32>(_mm_movemask_epi8(_mm_cmpeq_epi8(first, second)));
    if (equal != 0xffff) return at + static_cast<std::ptrdiff_t>(qCountTrailingZeroBits(~equal));
  }
#endif
  while (at != size && a[at] == b[at])
    ++at;
  return at;
}

inline quint64 unicodeOf(char ascii) { return static_cast<unsigned char>(ascii); }
inline quint64 unicodeOf(QChar character) { return character.unicode(); }

/// Length, first and last character in one number; differs for most pairs of different names.
template <typename Character>
quint64 keyOf(const Character* name, std::size_t length) {
  if (length == 0) return 0;
  return quint64{length} << 32 | unicodeOf(name[0]) << 16 | unicodeOf(name[length - 1]);
}

}  // namespace ztcad
