#pragma once

#include <chrono>
#include <functional>
#include <limits>
#include <optional>

namespace benchmarks {

/// Cost of one run. Times in seconds; memory in bytes above what the process held when the run began.
struct Measurement {
  double seconds = 0;                                      // without diskSeconds
  double diskSeconds = 0;                                  // time inside fsync and fdatasync
  double peak = std::numeric_limits<double>::quiet_NaN();  // NaN where the system does not report it
  double retained = 0;                                     // still held at the end of the run
  bool succeeded = false;                                  // the run produced the expected result
};

/// Runs `measure` in a child process, so that every run starts with the same empty heap and has a peak of its
/// own. A child that crashes or throws yields a measurement with `succeeded` false. The calling process must
/// stay small: a child starts with a copy of its memory.
Measurement inChild(const std::function<Measurement()>& measure);

/// Time spent inside fsync and fdatasync since the process started.
double diskSeconds();
/// Resident memory of the process.
double residentBytes();
/// Peak of the resident memory since the last `resetPeak`.
double peakBytes();
/// False if the system cannot reset the peak.
bool resetPeak();

/// Times one call of `work`, which returns whether it succeeded. Objects that `work` creates must outlive it
/// to count as retained.
template <typename Work>
Measurement timed(Work&& work) {
  using Clock = std::chrono::steady_clock;
  Measurement measurement;
  const bool peakIsKnown = resetPeak();
  const double before = residentBytes();
  const double disk = diskSeconds();
  const auto start = Clock::now();
  measurement.succeeded = work();
  measurement.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  measurement.diskSeconds = diskSeconds() - disk;
  measurement.seconds -= measurement.diskSeconds;
  measurement.retained = residentBytes() - before;
  if (peakIsKnown) measurement.peak = peakBytes() - before;
  return measurement;
}

/// Overwrites the processor's caches, so that the next run starts with cold ones.
void evictCaches();

/// Makes freed memory at the end of the heap go back to the system at once, whatever its size. Otherwise
/// glibc keeps that of a small document and returns that of a large one, and a growth of deletion compares
/// both.
void returnFreedMemory();

/// The fastest of several calls in one process, for short work that retains nothing. `prepare`, if not empty,
/// runs before each call and is not timed.
template <typename Work>
Measurement bestOf(int repeats, const std::function<void()>& prepare, Work&& work) {
  std::optional<Measurement> best;
  for (int i = 0; i < repeats; ++i) {
    if (prepare) prepare();
    const Measurement next = timed(work);
    if (!next.succeeded) return next;
    if (!best || next.seconds < best->seconds) best = next;
  }
  return best.value();
}

}  // namespace benchmarks
