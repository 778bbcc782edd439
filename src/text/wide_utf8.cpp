#include "wide_utf8.h"

#include <algorithm>

#include "append_character.h"
#include "qt_size.h"

namespace ztcad {

bool isAscii(std::string_view text) {
  constexpr std::size_t blockSize = 4096;  // a block is checked whole, which compilers vectorise
  while (!text.empty()) {
    unsigned char seen = 0;
    for (const char byte : text.substr(0, blockSize))
      seen = static_cast<unsigned char>(seen | static_cast<unsigned char>(byte));
    if (seen >= 0x80) return false;
    text.remove_prefix(std::min(blockSize, text.size()));
  }
  return true;
}

std::size_t asciiLength(std::string_view text) {
  constexpr std::size_t blockSize = 32;
  std::size_t length = 0;
  while (length + blockSize <= text.size() && isAscii(text.substr(length, blockSize)))
    length += blockSize;
  while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80)
    ++length;
  return length;
}

bool isSpace(char32_t character) {
  const auto isBetween = [character](char32_t low, char32_t high) {
    return low <= character && character <= high;
  };
  if (character < 0x80) return character == ' ' || isBetween('\t', '\r');
  for (const char32_t space : {0x85, 0xa0, 0x1680, 0x2028, 0x2029, 0x202f, 0x205f, 0x3000})
    if (character == space) return true;
  return isBetween(0x2000, 0x200a);
}

namespace {

/// The number of UTF-16 units of a text, or at least as many.
std::size_t mostUnits(std::string_view text) {
  if (text.size() <= limits.text) return text.size();
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = utf8Character(text.data() + at).length;
    units += length > 3 ? 2 : 1;
    at += length;
  }
  return units;
}

}  // namespace

QString fromWideUtf8(std::string_view text) {
  const std::size_t ascii = asciiLength(text);
  if (ascii == text.size()) return QString::fromLatin1(text.data(), qtSize(text));
  const int units = qtSize(mostUnits(text), text.data());
  QString decoded = QString::fromLatin1(text.data(), static_cast<int>(ascii));
  decoded.reserve(units);
  for (std::size_t at = ascii; at < text.size();) {
    const Utf8Character next = utf8Character(text.data() + at);
    appendUtf16(next.code, decoded);
    at += next.length;
  }
  return decoded;
}

bool isBlank(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character next = utf8Character(text.data() + at);
    if (!isSpace(next.code)) return false;
    at += next.length;
  }
  return true;
}

}  // namespace ztcad
