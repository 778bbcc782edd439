#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ztcad {

/// How often something occurs in a list, and where first.
struct Occurrences {
  static constexpr std::size_t mostPlaces = 10;

  void add(const char* at) {
    ++count;
    if (places.size() < mostPlaces) places.push_back(at);
  }

  std::int64_t count = 0;
  std::vector<const char*> places;
};

/// What the parser of a list skips or shortens, and what will be written with fewer digits. Places are
/// addresses in the bytes of the list.
struct ListRemarks {
  Occurrences skippedPieces;  // without a comma
  Occurrences badPieces;      // too short, or with parts that are no numbers
  Occurrences cutPieces;      // with more than three numbers
  Occurrences longReals;      // reals with more significant digits than are written
};

/// The significant digits with which reals are written.
constexpr int writtenDigits = 6;

/// The number of significant digits of a real, without zeros at its end.
inline int significantDigits(std::string_view real) {
  int digits = 0;  // from the first that is not 0
  int significant = 0;
  for (const char c : real) {
    if (c == 'e' || c == 'E') break;
    if (c < '0' || c > '9') continue;
    if (c != '0' || digits > 0) ++digits;
    if (c != '0') significant = digits;
  }
  return significant;
}

/// Whether a real has more significant digits than are written. Usual spellings are decided by their length.
/// @param real a number as it lies in a text; whitespace around it is ignored
inline bool hasMoreDigitsThanWritten(std::string_view real) {
  constexpr std::size_t most = writtenDigits;
  if (real.size() <= most) return false;
  if (real.front() == '-') real.remove_prefix(1);
  if (real.substr(0, 2) == "0.") real.remove_prefix(2);
  if (real.size() <= most) return false;
  if (real.size() == most + 1 && std::count(real.begin(), real.begin() + most + 1, '.') == 1) return false;
  return significantDigits(real) > writtenDigits;
}

}  // namespace ztcad
