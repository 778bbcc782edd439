#pragma once

#include <cstdint>

#include "../export.h"

/// @file
/// Thread counts of this process.

/// Thread counts of this process. `getParallel_Morvik` returns the process-wide record.
///
/// The library opens no parallel region: it configures the OpenMP runtime for its caller, and guards appends
/// to shared lists if more than one thread is configured. Plain data without locking: a host that changes it
/// while other threads use the library must synchronise them itself. OpenMP keeps a thread count per calling
/// thread.
struct ZTCAD_API ztParallel {
  /// Values of `mode`.
  enum Mode : std::int32_t {
    Logical = 0,  ///< use `logicalThreads`; so does any value but 1
    Primary = 1,  ///< use `physicalThreads`
  };

  /// Selects the count: 1 physicalThreads, any other value logicalThreads.
  std::int32_t mode = Primary;
  /// At most the number of processors; 0 before the first `initialise`.
  std::uint32_t logicalThreads = 0;
  /// At most the number of physical cores; 0 before the first `initialise`.
  std::uint32_t physicalThreads = 0;

  /// The count that the mode selects.
  std::uint32_t currentThreadCount() const noexcept {
    return mode == Primary ? physicalThreads : logicalThreads;
  }

  /// Sets the mode. A change passes the current thread count to OpenMP (0 as 1) and disables nested regions;
  /// setting the present mode again does not touch OpenMP.
  /// @return the previous mode
  std::int32_t setMode(std::int32_t newMode) noexcept;

  /// Sets both counts to `requested` or to what the machine has, whichever is less, and configures OpenMP as
  /// `setMode` does. A request of 0 is kept as 0. The library requests 1 when it is loaded.
  ///
  /// Called inside a parallel region whose number of threads is not the new current count, it reports that to
  /// `ztBaseAsserter` and continues.
  void initialise(std::uint32_t requested) noexcept;

  /// Physical cores of this machine, at least 1: the number of processors that OpenMP reports, divided by the
  /// threads per core on Intel processors with hyper-threading.
  static std::uint32_t physicalCoreCount() noexcept;
};
