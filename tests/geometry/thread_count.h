#pragma once

#include <cstdint>

#include "support/lazy_lock.h"
#include "support/parallel_settings.h"

/// Configures a number of threads for a scope, in both modes, as a loaded library does; what was there before
/// comes back at its end. OpenMP itself is left alone.
class ThreadCount {
 public:
  ThreadCount(std::uint32_t threads, std::int32_t mode) {
    ztcad::createGuardLock();
    ztParallel& settings = ztcad::parallelSettings();
    settings.mode = mode;
    settings.logicalThreads = threads;
    settings.physicalThreads = threads;
  }
  ~ThreadCount() {
    ztcad::parallelSettings() = m_previous;
    ztcad::destroyGuardLock();
  }
  ThreadCount(const ThreadCount&) = delete;
  ThreadCount& operator=(const ThreadCount&) = delete;

 private:
  const ztParallel m_previous = ztcad::parallelSettings();
};
