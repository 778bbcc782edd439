#pragma once

#include <QString>
#include <string>

namespace ztcad {

/// Appends one character in UTF-8. A surrogate must not occur.
/// @param out a `std::string`, or anything else that bytes can be added to by `+=`
template <typename Bytes>
void appendUtf8(char32_t character, Bytes& out) {
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | ((character >> shift) & 0x3f)); };
  if (character < 0x80) {
    out += static_cast<char>(character);
  } else if (character < 0x800) {
    out += static_cast<char>(0xc0 | (character >> 6));
    out += tail(0);
  } else if (character < 0x10000) {
    out += static_cast<char>(0xe0 | (character >> 12));
    (out += tail(6)) += tail(0);
  } else {
    out += static_cast<char>(0xf0 | (character >> 18));
    ((out += tail(12)) += tail(6)) += tail(0);
  }
}

/// Appends one character in UTF-16; beyond U+FFFF as a surrogate pair.
inline void appendUtf16(char32_t character, QString& out) {
  if (QChar::requiresSurrogates(character)) {
    out += QChar(QChar::highSurrogate(character));
    out += QChar(QChar::lowSurrogate(character));
  } else {
    out += QChar(static_cast<ushort>(character));
  }
}

}  // namespace ztcad
