#pragma once

#include <cstddef>
#include <cstring>
#include <QString>
#include <string>
#include <string_view>

namespace ztcad {

/// @file
/// Text as it is parsed: UTF-8 in which a surrogate may stand alone, as three bytes, because UTF-16 input and
/// numeric references may contain unpaired ones. (The field calls this WTF-8.) All functions require valid
/// text.

struct Utf8Character {
  char32_t code;
  std::size_t length;  ///< in bytes, 1 to 4
};

/// The character that starts at `at`.
inline Utf8Character utf8Character(const char* at) {
  const auto byte = [at](std::size_t i) { return static_cast<char32_t>(static_cast<unsigned char>(at[i])); };
  const auto tail = [&byte](std::size_t i) { return byte(i) & 0x3fU; };
  const char32_t first = byte(0);
  if (first < 0x80) return {first, 1};
  if (first < 0xe0) return {(first & 0x1fU) << 6 | tail(1), 2};
  if (first < 0xf0) return {(first & 0x0fU) << 12 | tail(1) << 6 | tail(2), 3};
  return {(first & 0x07U) << 18 | tail(1) << 12 | tail(2) << 6 | tail(3), 4};
}

/// Decodes a text. Throws `TooLong` for more characters than a QString can hold.
QString fromWideUtf8(std::string_view text);

bool isAscii(std::string_view text);

/// Equality for texts that usually differ in length or in the first character. Inline: each element compares
/// its tag with some ten words.
inline bool equalsWord(const QString& text, const QString& word) {
  if (text.size() != word.size()) return false;
  const QChar* const a = text.constData();
  const QChar* const b = word.constData();
  return a == b ||
         (*a == *b && std::memcmp(a, b, sizeof(QChar) * static_cast<std::size_t>(text.size())) == 0);
}

/// Whether a text consists of these ASCII characters.
inline bool equalsAscii(const QString& text, std::string_view ascii) {
  if (static_cast<std::size_t>(text.size()) != ascii.size()) return false;
  const QChar* const characters = text.constData();
  for (std::size_t i = 0; i < ascii.size(); ++i)
    if (characters[i].unicode() != static_cast<unsigned char>(ascii[i])) return false;
  return true;
}
/// Number of ASCII bytes at the start of a text.
std::size_t asciiLength(std::string_view text);

/// Whether a character is whitespace of any script: QChar::isSpace, the same with every Qt.
bool isSpace(char32_t character);

/// Whether the text has nothing but whitespace, or nothing at all.
bool isBlank(std::string_view text);

}  // namespace ztcad
