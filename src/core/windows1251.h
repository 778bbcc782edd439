#pragma once

#include <optional>
#include <QChar>

namespace ztcad {

/// The character of a byte in windows-1251. All 256 bytes have one: 98 hex, which the code page leaves open,
/// is U+0098.
QChar windows1251ToUnicode(unsigned char byte);

/// The byte of a character, nothing when windows-1251 does not have it.
std::optional<unsigned char> windows1251FromUnicode(char32_t character);

}  // namespace ztcad
