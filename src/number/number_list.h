#pragma once

#include <cstdint>
#include <vector>

#include "../text/element_text.h"
#include "list_remarks.h"

namespace ztcad {

/// Lists of numbers as elements and attributes hold them. Results equal those of the parsers in
/// character_list.h.

/// Parses pieces separated by ";", each a list of at least three numbers, and appends the first three of each
/// to `values`. A piece without a comma is skipped. A piece that is too short or does not convert adds
/// nothing and makes the result false; all other pieces are kept.
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

}  // namespace ztcad
