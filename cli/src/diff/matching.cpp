#include "matching.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace cli {

namespace {

/// The length of a name without the numbers that the library appended.
std::size_t baseLength(const std::string& name) {
  std::size_t length = name.size();
  while (length > 0) {
    const std::size_t digits = name.find_last_not_of("0123456789", length - 1) + 1;
    if (digits < 2 || digits == length || name.compare(digits - 2, 2, "_$") != 0) break;
    length = digits - 2;
  }
  return length;
}

bool hasNumber(const std::string& name) { return baseLength(name) < name.size(); }

using Indices = std::vector<std::size_t>;

/// The elements of both lists that have one base name.
struct Group {
  Indices a;
  Indices b;
};

class Matcher {
 public:
  Matcher(const std::vector<std::string>& a, const std::vector<std::string>& b,
          const std::function<bool(std::size_t, std::size_t)>& areEqual)
      : m_a(a), m_b(b), m_areEqual(areEqual) {}

  Matching run() {
    if (areDistinct(m_a) && areDistinct(m_b)) matchEnds();
    for (std::size_t i = m_head; i < m_a.size() - m_tail; ++i)
      m_groups[baseName(m_a[i])].a.push_back(i);
    for (std::size_t i = m_head; i < m_b.size() - m_tail; ++i)
      m_groups[baseName(m_b[i])].b.push_back(i);
    for (const auto& [name, group] : m_groups)
      matchGroup(group);
    if (m_head + m_tail < m_result.pairs.size()) std::sort(m_result.pairs.begin(), m_result.pairs.end());
    std::sort(m_result.onlyA.begin(), m_result.onlyA.end());
    std::sort(m_result.onlyB.begin(), m_result.onlyB.end());
    findMoved();
    return std::move(m_result);
  }

 private:
  /// Whether no two names have the same base name.
  static bool areDistinct(const std::vector<std::string>& names) {
    std::unordered_set<std::string_view> seen;
    seen.reserve(names.size());
    return std::all_of(names.begin(), names.end(),
                       [&](const std::string& name) { return !hasNumber(name) && seen.insert(name).second; });
  }

  /// Fast path: what has the same names at the start and at the end of both lists.
  void matchEnds() {
    const std::size_t shorter = std::min(m_a.size(), m_b.size());
    while (m_head < shorter && m_a[m_head] == m_b[m_head])
      ++m_head;
    while (m_tail < shorter - m_head && m_a[m_a.size() - 1 - m_tail] == m_b[m_b.size() - 1 - m_tail])
      ++m_tail;
    for (std::size_t i = 0; i < m_head; ++i)
      m_result.pairs.emplace_back(i, i);
    for (std::size_t i = m_tail; i > 0; --i)
      m_result.pairs.emplace_back(m_a.size() - i, m_b.size() - i);
  }

  void matchGroup(const Group& group) {
    std::size_t head = 0;
    std::size_t tail = 0;
    const std::size_t shorter = std::min(group.a.size(), group.b.size());
    if (group.a.size() != group.b.size()) {
      while (head < shorter && m_areEqual(group.a[head], group.b[head]))
        ++head;
      while (tail < shorter - head && m_areEqual(*(group.a.end() - 1 - static_cast<std::ptrdiff_t>(tail)),
                                                 *(group.b.end() - 1 - static_cast<std::ptrdiff_t>(tail))))
        ++tail;
    }
    for (std::size_t i = 0; i < head; ++i)
      m_result.pairs.emplace_back(group.a[i], group.b[i]);
    for (std::size_t i = 1; i <= tail; ++i)
      m_result.pairs.emplace_back(group.a[group.a.size() - i], group.b[group.b.size() - i]);
    const auto middle = [&](const Indices& indices) {
      return Indices(indices.begin() + static_cast<std::ptrdiff_t>(head),
                     indices.end() - static_cast<std::ptrdiff_t>(tail));
    };
    matchByName(middle(group.a), middle(group.b));
  }

  /// Those of one name in their order.
  void matchByName(const Indices& a, const Indices& b) {
    std::unordered_map<std::string, Indices> waiting;  // of the second list, the next one last
    for (auto i = b.rbegin(); i != b.rend(); ++i)
      waiting[m_b[*i]].push_back(*i);
    for (const std::size_t i : a) {
      const auto found = waiting.find(m_a[i]);
      if (found == waiting.end() || found->second.empty()) {
        m_result.onlyA.push_back(i);
        continue;
      }
      m_result.pairs.emplace_back(i, found->second.back());
      found->second.pop_back();
    }
    for (const auto& [name, rest] : waiting)
      m_result.onlyB.insert(m_result.onlyB.end(), rest.begin(), rest.end());
  }

  /// All pairs but those of a longest ascending sequence of the second indices.
  void findMoved() {
    const auto& pairs = m_result.pairs;
    if (std::is_sorted(pairs.begin(), pairs.end(),
                       [](const auto& x, const auto& y) { return x.second < y.second; }))
      return;
    constexpr auto none = static_cast<std::size_t>(-1);
    Indices ends;  // pairs that end the best sequence of each length
    Indices before(pairs.size(), none);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      const auto end =
          std::lower_bound(ends.begin(), ends.end(), i, [&](std::size_t candidate, std::size_t pair) {
            return pairs[candidate].second < pairs[pair].second;
          });
      if (end != ends.begin()) before[i] = *(end - 1);
      if (end == ends.end())
        ends.push_back(i);
      else
        *end = i;
    }
    std::vector<bool> stays(pairs.size());
    for (std::size_t i = ends.empty() ? none : ends.back(); i != none; i = before[i])
      stays[i] = true;
    for (std::size_t i = 0; i < pairs.size(); ++i)
      if (!stays[i]) m_result.moved.push_back(i);
  }

  const std::vector<std::string>& m_a;
  const std::vector<std::string>& m_b;
  const std::function<bool(std::size_t, std::size_t)>& m_areEqual;
  std::size_t m_head = 0;
  std::size_t m_tail = 0;
  std::unordered_map<std::string, Group> m_groups;
  Matching m_result;
};

}  // namespace

std::string baseName(const std::string& name) { return name.substr(0, baseLength(name)); }

Matching match(const std::vector<std::string>& a, const std::vector<std::string>& b,
               const std::function<bool(std::size_t, std::size_t)>& areEqual) {
  return Matcher(a, b, areEqual).run();
}

}  // namespace cli
