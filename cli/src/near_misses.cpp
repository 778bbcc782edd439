#include "near_misses.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace cli {

namespace {

/// Insertions, deletions, replacements and swaps of neighbours that turn one word into the other.
std::size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> beforeLast;
  std::vector<std::size_t> last;
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    beforeLast = std::exchange(last, row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({row[j - 1] + 1, last[j] + 1, replaced});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
  }
  return row.back();
}

}  // namespace

std::vector<std::string> nearMisses(const std::string& word, const std::vector<std::string>& words) {
  constexpr std::size_t most = 3;
  const std::size_t farthest = std::max<std::size_t>(2, word.size() / 4);
  std::vector<std::pair<std::size_t, std::string>> near;
  for (const std::string& candidate : words) {
    const bool contains = word.size() > 2 && candidate.find(word) != std::string::npos;
    const std::size_t distance = contains ? farthest : editDistance(word, candidate);
    if (distance <= farthest) near.emplace_back(distance, candidate);
  }
  std::sort(near.begin(), near.end());
  std::vector<std::string> result;
  for (std::size_t i = 0; i < std::min(near.size(), most); ++i)
    result.push_back(near[i].second);
  return result;
}

std::string suggestion(const std::vector<std::string>& words) {
  if (words.empty()) return {};
  std::string text = " (did you mean ";
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) text += i + 1 == words.size() ? " or " : ", ";
    text += "\"" + words[i] + "\"";
  }
  return text + "?)";
}

}  // namespace cli
