#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <QString>
#include <string_view>

namespace ztcad {

struct XmlError;

/// Elements nested deeper are refused: a deeper document would overflow the stack when it is written or
/// freed.
constexpr int maximalDepth = 256;

/// The outcome of a parse. After a success the message is empty, line and column are 0. A line or column that
/// an int cannot hold is the greatest int.
struct ParseOutcome {
  bool parsed = false;
  bool isRefused = false;  // well-formed, as far as it was read, but not accepted
  QString message;
  int line = 0;            // from 1; a line ends with LF, CR or CR LF
  int column = 0;          // from 1, in UTF-16 units
  std::size_t offset = 0;  // in bytes of the decoded text
};

/// A line or column for people.
constexpr int placeNumber(std::int64_t number) {
  return static_cast<int>(std::min(number, std::int64_t{std::numeric_limits<int>::max()}));
}

/// The outcome for a text with an error.
ParseOutcome failedParse(std::string_view text, const XmlError& error);

}  // namespace ztcad
