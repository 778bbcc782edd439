#pragma once

#include <chrono>
#include <cstddef>

namespace cli {

/// Shows on standard error how far long work is. Shows nothing if that is no terminal, and nothing for the
/// first second.
class Progress {
 public:
  /// @param total steps of the whole work
  explicit Progress(std::size_t total);
  ~Progress() { hide(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Counts a step and shows the count.
  void advance();
  /// Removes the count, to let other output have the line.
  void hide();

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t m_total;
  bool m_isTerminal;
  std::size_t m_done = 0;
  Clock::time_point m_nextUpdate;
  bool m_isShown = false;
};

}  // namespace cli
