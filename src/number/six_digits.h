#pragma once

namespace ztcad {

/// Fast path of `writeReal`: writes at most six significant digits of 0 and of magnitudes from about 1e-22 to
/// 9e18, which nearly all documents consist of.
///
/// @param out room for 16 characters, all of which may be written to; "-1.23457e+18" has 12
/// @return the end of what was written; null, with nothing written, for all other values
char* writeSixDigits(double value, char* out);

}  // namespace ztcad
