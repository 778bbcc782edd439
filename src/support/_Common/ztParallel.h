#pragma once

#include <cstdint>

#include "../export.h"

/// @file
/// How many threads the work of this process may use.

/// How many threads the work of this process may use. `getParallel_Morvik` hands out the process-wide record.
///
/// The library opens no parallel region: it configures the OpenMP runtime for its caller, and guards appends
/// to shared lists when more than one thread is configured. Plain data without locking: whoever changes it
/// while other threads use the library answers for the order. OpenMP keeps the thread count for each calling
/// thread.
struct ZTCAD_API ztParallel {
  /// The values that `mode` takes.
  enum Mode : std::int32_t {
    Logical = 0,  ///< `logicalThreads` holds; as with any value but 1
    Primary = 1,  ///< `physicalThreads` holds
  };

  /// Which of the two counts holds: 1 physicalThreads, any other value logicalThreads.
  std::int32_t mode = Primary;
  /// At most the number of processors; 0 before the first `initialise`.
  std::uint32_t logicalThreads = 0;
  /// At most the number of physical cores; 0 before the first `initialise`.
  std::uint32_t physicalThreads = 0;

  /// The count that belongs to the mode.
  std::uint32_t currentThreadCount() const noexcept {
    return mode == Primary ? physicalThreads : logicalThreads;
  }

  /// Changes the mode. If it is a new one, OpenMP gets the current thread count (a count of 0 as 1) and
  /// nested regions are switched off; the mode that holds already leaves OpenMP alone.
  /// @return the mode before
  std::int32_t setMode(std::int32_t newMode) noexcept;

  /// Sets both counts to `requested` or to what the machine has, whichever is less, and configures OpenMP as
  /// `setMode` does. A request of 0 is kept as 0. The library asks for 1 when it is loaded.
  ///
  /// Called inside a parallel region whose number of threads is not the new current count, it reports that to
  /// `ztBaseAsserter` and carries on.
  void initialise(std::uint32_t requested) noexcept;

  /// Physical cores of this machine, at least 1: the processors that OpenMP offers, divided by the threads of
  /// a core on Intel processors with hyper-threading.
  static std::uint32_t physicalCoreCount() noexcept;
};
