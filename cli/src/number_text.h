#pragma once

#include <string>

namespace cli {

/// The shortest text that is read back as the same number.
std::string numberText(double number);

/// "x, y, z"
std::string tripleText(const double* xyz);

}  // namespace cli
