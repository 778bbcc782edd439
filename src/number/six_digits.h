#pragma once

namespace ztcad {

/// Writes a number with at most six significant digits, as the format has it (see number_text.h), if it is one of
/// those that nearly all documents consist of: 0, and magnitudes from about 1e-22 to 9e18.
///
/// @param out room for `longestSixDigits` characters
/// @return the end of what was written; null, and nothing written, for all other values
char* writeSixDigits(double value, char* out);

constexpr int longestSixDigits = 16;  // "-1.23457e+18", and two characters written ahead

}  // namespace ztcad
