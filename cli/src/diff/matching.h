#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace cli {

/// Which elements of two lists belong together, by their indices.
struct Matching {
  std::vector<std::pair<std::size_t, std::size_t>> pairs;  // in the order of the first list
  std::vector<std::size_t> onlyA;
  std::vector<std::size_t> onlyB;
  /// Indices into `pairs` of as few pairs as possible without which the second list is in the order of the
  /// first.
  std::vector<std::size_t> moved;
};

/// Matches elements by their names. Elements whose names are the same but for the number that the library
/// appends ("pin", "pin_$1") are matched by number if there are as many of them in both lists; otherwise
/// those at the start and at the end are matched that are equal, and the others by number. So one that is
/// inserted among them is not mistaken for all that follow.
/// @param areEqual compares the content of an element of the first list with that of one of the second
Matching match(const std::vector<std::string>& a, const std::vector<std::string>& b,
               const std::function<bool(std::size_t, std::size_t)>& areEqual);

/// The name without the number that the library appends to make it unique.
std::string baseName(const std::string& name);

}  // namespace cli
