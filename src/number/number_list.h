#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "../text/element_text.h"
#include "list_remarks.h"

namespace ztcad {

/// Lists of numbers as elements and attributes hold them. Results equal those of the parsers in
/// character_list.h.

/// Parses pieces separated by ";", each a list of at least three numbers, and appends the first three of each
/// to `values`. A piece without a comma is skipped. A piece that is too short or does not convert adds
/// nothing and makes the result false; all other pieces are kept. Throws `TooLong` for more triples than
/// hosts can count.
/// @param remarks output for a text in bytes: what else a review reports; null: not wanted, which is faster
/// @{
[[nodiscard]] bool parseTriples(const ElementText& text, std::vector<double>& values,
                                ListRemarks* remarks = nullptr);
[[nodiscard]] bool parseTriples(const ElementText& text, std::vector<std::uint32_t>& values,
                                ListRemarks* remarks = nullptr);
/// @}

/// Parses a list of one to `most` numbers separated by commas.
/// @param values room for `most` numbers
/// @return how many there are; 0 when there are none or more than `most`, or when a part does not convert
[[nodiscard]] int parseShortList(const ElementText& text, double* values, int most);

/// The same for ASCII bytes; 0 also for spellings that only `parseShortList` and `toReal` know.
/// @param endOfMemory see `parseWordAndNumbers`
[[nodiscard]] int parsePlainList(std::string_view ascii, const char* endOfMemory, double* values, int most);

/// Parses a word and exactly `count` numbers, all separated by commas: "RGB, 255, 128, 0". False, with the
/// values unspecified, for any other text and for spellings that only `toReal` and `toIndex` know.
/// @param endOfMemory end of readable memory, not before the end of the text; the byte after the text must
///                    not be part of a number
/// @{
[[nodiscard]] bool parseWordAndNumbers(std::string_view ascii, const char* endOfMemory, const QString& word,
                                       double* values, int count);
[[nodiscard]] bool parseWordAndNumbers(std::string_view ascii, const char* endOfMemory, const QString& word,
                                       std::uint32_t* values, int count);
/// @}

}  // namespace ztcad
