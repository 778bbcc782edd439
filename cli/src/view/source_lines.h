#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "../check/finding.h"

namespace cli {

/// A line of a document, or the part of a long one that is worth showing.
struct SourceLine {
  std::int64_t number = 0;   // from 1
  std::string text{};        // UTF-8
  std::int64_t skipped = 0;  // characters of the line before the text
};

/// For each place, its line with up to two lines before and after it. Texts are decoded as the library reads
/// them; control characters are replaced by spaces.
/// @param bytes the document as it is in its file
/// Takes time in proportion to the document and to the number of places, however long its lines are.
std::vector<std::vector<SourceLine>> linesAround(std::string_view bytes, const std::vector<Place>& places);

}  // namespace cli
