#pragma once

#include <optional>
#include <QChar>
#include <QString>
#include <string_view>

namespace ztcad {

/// Decodes one byte of windows-1251. All 256 bytes have a character: 98 hex, which the code page leaves
/// undefined, is U+0098.
QChar windows1251ToUnicode(unsigned char byte);

/// Decodes windows-1251. Throws `TooLong` for more bytes than a QString can hold.
QString fromWindows1251(std::string_view bytes);

/// Encodes one character; std::nullopt if windows-1251 lacks it.
std::optional<unsigned char> windows1251FromUnicode(char32_t character);

}  // namespace ztcad
