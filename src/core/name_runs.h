#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>

#include "../text/short_text.h"

namespace ztcad {

/// Shows that names are different, without a table of them: names usually ascend in each container (in the
/// order of `ztCAD_ShortText::isAfter`), and all names of one container come before or after all names of
/// another one: "P 1", "P 2", ..., "bolt 1", "bolt 2", ...
class NameRuns {
 public:
  /// Takes a name.
  /// @param container only compared: names of several containers may alternate
  /// @return false: nothing will be known of the names
  bool take(const void* container, const ztCAD_ShortText& name) {
    if (m_isUnknown) return false;
    if (m_latest == m_count || m_runs[m_latest].container != container) findRun(container);
    if (m_latest < m_count && name.isAfter(m_runs[m_latest].last)) {
      m_runs[m_latest].last = name;
      return true;
    }
    m_isUnknown = m_count == mostRuns;
    if (m_isUnknown) return false;
    m_latest = m_count++;
    m_runs[m_latest] = {container, name, name};
    return true;
  }

  /// Whether all names are known to be different.
  bool areDifferent() const {
    if (m_isUnknown) return false;
    for (std::size_t i = 1; i < m_count; ++i)
      for (std::size_t k = 0; k < i; ++k)
        if (!areApart(m_runs[i], m_runs[k])) return false;
    return true;
  }

 private:
  /// Few, because each level of structures that is being read has them on the stack.
  static constexpr std::size_t mostRuns = 8;

  /// Names that ascend.
  struct Run {
    const void* container = nullptr;
    ztCAD_ShortText first;
    ztCAD_ShortText last;
  };

  static bool areApart(const Run& a, const Run& b) {
    return a.first.isAfter(b.last) || b.first.isAfter(a.last);
  }

  /// Makes the last run of a container the latest one.
  void findRun(const void* container) {
    m_latest = m_count;
    for (std::size_t i = m_count; i > 0 && m_latest == m_count; --i)
      if (m_runs[i - 1].container == container) m_latest = i - 1;
  }

  std::array<Run, mostRuns> m_runs;
  std::size_t m_count = 0;
  std::size_t m_latest = 0;  // the run of the last name; their number: there is none
  bool m_isUnknown = false;
};

/// Shows that a few names are different, whatever their order.
class FewNames {
 public:
  /// @return false: there are too many
  bool take(const ztCAD_ShortText& name) {
    if (m_count == most) return false;
    m_names[m_count++] = name;
    return true;
  }

  /// Whether all names that were taken are different.
  bool areDifferent() const {
    const auto isBefore = [](const ztCAD_ShortText* a, const ztCAD_ShortText* b) { return b->isAfter(*a); };
    std::array<const ztCAD_ShortText*, most> ordered = {};
    const auto end = std::transform(m_names.begin(), m_names.begin() + m_count, ordered.begin(),
                                    [](const ztCAD_ShortText& name) { return &name; });
    std::sort(ordered.begin(), end, isBefore);
    return std::adjacent_find(ordered.begin(), end, std::not_fn(isBefore)) == end;
  }

 private:
  static constexpr std::size_t most = 64;
  std::array<ztCAD_ShortText, most> m_names;
  std::size_t m_count = 0;
};

}  // namespace ztcad
