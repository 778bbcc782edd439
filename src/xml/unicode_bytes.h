#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ztcad {

enum class UnicodeEncoding { Utf8, Utf16, Utf16Be, Utf16Le, Utf32, Utf32Be, Utf32Le };

/// The encoding that the first bytes of an XML text show.
UnicodeEncoding detectUnicode(std::string_view bytes);

/// Decodes bytes into the form that `XmlReader` takes, without their byte order mark. `Utf16` and `Utf32`
/// take the byte order from the mark; without one it is little-endian. Invalid bytes become U+FFFD, a
/// surrogate without its partner stays, and incomplete bytes at the end are dropped, as by Qt 5.15.
std::string decodeUnicode(std::string_view bytes, UnicodeEncoding encoding);

/// Size of a code unit in bytes.
int unitSize(UnicodeEncoding encoding);
/// Size of the byte order mark at the start of `bytes`; 0 without one.
std::size_t markSize(std::string_view bytes, UnicodeEncoding encoding);
/// How many bytes from `offset` on become one character of `decodeUnicode`. `offset` is the start of one.
/// @{
std::size_t utf8SourceLength(std::string_view bytes, std::size_t offset);
std::size_t utf32SourceLength(std::string_view bytes, std::size_t offset, char32_t decoded);
/// @}

}  // namespace ztcad
