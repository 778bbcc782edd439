#pragma once

#include <string>
#include <string_view>

namespace ztcad {

/// A single-byte encoding, other than windows-1251, that agrees with ASCII below 80 hex. The tables belong to
/// the library because Qt 6 without ICU decodes none of these encodings.
struct CodePage {
  std::string_view names;  ///< its names in the form of `encodingName`, each with a space before and after it
  unsigned first;          ///< lower bytes denote the character of their number
  std::u16string_view characters;  ///< of the bytes from `first` on; beyond the last one U+FFFD
};

/// The form of an encoding's name that comparisons use: lower case letters and digits alone, without leading
/// zeros of numbers. "ISO_8859-1" and "iso8859-01" are one name.
std::string encodingName(std::string_view name);

/// Whether a name in the form of `encodingName` is one of windows-1251.
bool isWindows1251(std::string_view name);

/// Whether the name is one of an encoding that Qt 5.15 decodes and this library does not.
bool isForeignEncoding(std::string_view name);

/// The code page of a name in the form of `encodingName`; null for any other encoding.
const CodePage* findCodePage(std::string_view name);

char16_t toUnicode(const CodePage& page, unsigned char byte);
bool hasCharacter(const CodePage& page, char32_t character);

}  // namespace ztcad
