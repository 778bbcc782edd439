#pragma once

#include <cstdint>

#include "support/lazy_lock.h"
#include "support/parallel_settings.h"

/// Configures a thread count for both modes within a scope, as loading the library does, and restores the
/// previous settings at its end. The state of OpenMP itself does not change.
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
