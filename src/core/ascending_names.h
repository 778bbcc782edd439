#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "../text/short_text.h"

namespace ztcad {

/// Different names that come in a few ascending runs (in the order of `ztCAD_ShortText::isAfter`), as the
/// numbered names of several kinds do: "P 1", "P 2", ..., "bolt 1", "bolt 2", ...
///
/// They are only listed. A name is looked for in each earlier run from the place of the name before it, so a
/// run takes at most one pass over the earlier ones.
class AscendingNames {
 public:
  void reserve(std::size_t count) { m_names.reserve(count); }
  std::size_t capacity() const { return m_names.capacity(); }
  std::size_t size() const { return m_names.size(); }

  /// False, with nothing taken, for a name that was taken before or would begin one run too many.
  bool take(const ztCAD_ShortText& name) {
    const bool continuesRun = m_names.size() == startOfRun() || name.isAfter(m_names.back());
    if (!continuesRun && !beginRun()) return false;
    for (Run& run : m_runs)
      if (contains(run, name)) return false;
    m_names.push_back(name);
    return true;
  }

  /// The names in their order. None is left.
  std::vector<ztCAD_ShortText> takeAll() { return std::exchange(m_names, {}); }

 private:
  static constexpr std::size_t mostRuns = 16;

  /// A run that has ended.
  struct Run {
    std::size_t next;  // no name before it comes after the last one that was looked for
    std::size_t end;
  };

  std::size_t startOfRun() const { return m_runs.empty() ? 0 : m_runs.back().end; }

  bool beginRun() {
    if (m_runs.size() + 1 == mostRuns) return false;
    m_runs.push_back({0, m_names.size()});
    std::size_t start = 0;
    for (Run& run : m_runs)
      run.next = std::exchange(start, run.end);
    return true;
  }

  /// @param name comes after those that were looked for since the last run began
  bool contains(Run& run, const ztCAD_ShortText& name) {
    std::size_t step = 1;
    while (step < run.end - run.next && name.isAfter(m_names[run.next + step]))
      step *= 2;
    const auto from = m_names.cbegin() + static_cast<std::ptrdiff_t>(run.next + step / 2);
    const auto to = m_names.cbegin() + static_cast<std::ptrdiff_t>(std::min(run.next + step, run.end));
    const auto found = std::lower_bound(
        from, to, name,
        [](const ztCAD_ShortText& earlier, const ztCAD_ShortText& later) { return later.isAfter(earlier); });
    run.next = static_cast<std::size_t>(found - m_names.cbegin());
    return run.next < run.end && m_names[run.next] == name;
  }

  std::vector<ztCAD_ShortText> m_names;  // of all runs; those of the last one to the end
  std::vector<Run> m_runs;               // all but the last one
};

}  // namespace ztcad
