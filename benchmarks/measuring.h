#pragma once

#include <chrono>
#include <functional>
#include <limits>
#include <optional>

namespace benchmarks {

/// What one run took. Times in seconds, memory in bytes beyond what the process held when the run began.
struct Figures {
  double seconds = 0;      // without the wait for the disk
  double diskSeconds = 0;  // the wait for the disk: time inside fsync and fdatasync
  double peak = std::numeric_limits<double>::quiet_NaN();  // not a number where the system does not tell
  double settled = 0;                                      // what was still held at the end
  bool fine = false;                                       // whether the run gave what it had to give
};

/// Runs `measure` in a child process, so that every run finds the same empty heap and its peak is its own. A
/// child that crashes or throws gives figures that are not fine. The caller itself must stay small: a child
/// begins with a copy of its memory.
Figures inChild(const std::function<Figures()>& measure);

/// Time inside fsync and fdatasync since the process began.
double diskSeconds();
/// Memory that the process holds now.
double residentBytes();
/// The most that it held since the last `forgetPeak`.
double peakBytes();
/// False where the system does not offer it.
bool forgetPeak();

/// Times one call of `work`, a function that answers whether all went well. What `work` makes has to outlive
/// it to count as held.
template <typename Work>
Figures timed(Work&& work) {
  using Clock = std::chrono::steady_clock;
  Figures figures;
  const bool peakIsKnown = forgetPeak();
  const double before = residentBytes();
  const double disk = diskSeconds();
  const auto start = Clock::now();
  figures.fine = work();
  figures.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  figures.diskSeconds = diskSeconds() - disk;
  figures.seconds -= figures.diskSeconds;
  figures.settled = residentBytes() - before;
  if (peakIsKnown) figures.peak = peakBytes() - before;
  return figures;
}

/// Fills the processor's caches with other bytes, so that what comes next finds nothing of its own there.
void sweepCaches();

/// The best of several calls in the same process, for work that is short and leaves nothing. `prepare`, if there
/// is one, comes before each and is not timed.
template <typename Work>
Figures bestOf(int repeats, const std::function<void()>& prepare, Work&& work) {
  std::optional<Figures> best;
  for (int i = 0; i < repeats; ++i) {
    if (prepare) prepare();
    const Figures next = timed(work);
    if (!next.fine) return next;
    if (!best || next.seconds < best->seconds) best = next;
  }
  return best.value();
}

}  // namespace benchmarks
