#pragma once

#include <cstddef>
#include <QString>
#include <string>
#include <string_view>

namespace ztcad {

/// Encoding of a host's narrow text: UTF-8, or windows-1251 for the whole text if it is not valid UTF-8. In
/// windows-1251 every byte is a character (98 hex is U+0098), so no byte is lost.
enum class NarrowEncoding { Utf8, Windows1251 };

bool isUtf8(std::string_view bytes);
/// Length of the sequence that starts with a byte; 0 for a byte that starts none.
std::size_t utf8SequenceLength(char first);
NarrowEncoding narrowEncodingOf(std::string_view bytes);

/// A character of narrow text and the number of bytes that encode it.
struct NarrowCharacter {
  char32_t code;
  std::size_t length;
};

/// The character at the start of `bytes`, which must be valid in this encoding and must not be empty.
NarrowCharacter firstCharacter(std::string_view bytes, NarrowEncoding encoding);

/// Decodes the bytes; a leading byte order mark is kept as a character. Throws `TooLong` for more bytes than
/// a QString can hold.
QString fromNarrow(std::string_view bytes);

/// Encodes as UTF-8; an unpaired surrogate, which UTF-8 cannot represent, becomes a question mark.
std::string toNarrow(const QString& text);
/// Encodes as given; a character that windows-1251 lacks becomes a question mark.
std::string toNarrow(const QString& text, NarrowEncoding encoding);

/// Decodes a file name: UTF-8, else the system's narrow encoding.
QString fileNameFromNarrow(std::string_view bytes);

}  // namespace ztcad
