#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "../number/list_remarks.h"
#include "xml_text.h"

namespace ztcad {

/// A position in a text, for people and programs.
struct TextPlace {
  std::int64_t line = 0;    // from 1; a line ends with LF, CR or CR LF
  std::int64_t column = 0;  // in characters, from 1
  std::int64_t offset = 0;  // in bytes of the source, from 0
  std::size_t inText = 0;   // offset in the decoded text
};

/// Whether a position is the address of a byte of a text, or its end.
bool isIn(const char* position, std::string_view text);

/// Finds the places of positions in one pass.
/// @param positions ascending addresses: all in `bytes`, or all in `text.characters()`
/// @param bytes     the source of `text`
std::vector<TextPlace> placesOf(const std::vector<const char*>& positions, std::string_view bytes,
                                const XmlText& text);

/// The characters of a text that stand for invalid bytes of its source.
Occurrences replacedBytes(std::string_view bytes, const XmlText& text);

/// Finds the paths of the elements that start at positions, or that other positions lie in:
/// "/GMD/structure[1]/point[2]" with the number of each element among its siblings of the same tag. Empty
/// outside the root element. Tags in paths are shortened to 100 bytes. One pass.
/// @param positions ascending offsets in `text.characters()`
std::vector<std::string> pathsOf(const std::vector<std::size_t>& positions, const XmlText& text);

}  // namespace ztcad
