#pragma once

#include <omp.h>
#include <atomic>

#include "parallel_settings.h"

namespace ztcad {

/// Lets the locks of this process initialise themselves one at a time. Part of the load step; a second call
/// does nothing. Without it `LazyLock::lock` still works, but the first calls on one lock must not come at
/// once.
void createGuardLock();
/// Part of the unload step. The guard may be created again afterwards.
void destroyGuardLock();

/// An OpenMP lock that comes into being when it is first taken.
class LazyLock {
 public:
  LazyLock() = default;
  ~LazyLock() { destroy(); }
  LazyLock(const LazyLock&) = delete;
  LazyLock& operator=(const LazyLock&) = delete;

  bool isInitialised() const { return m_initialised.load(std::memory_order_acquire); }
  void init();
  /// Nobody may hold the lock. It can be used again: the next `lock` initialises it anew.
  void destroy();

  /// Waits for the lock. When more than one thread is configured, several may make the first call at once.
  void lock();
  /// Only by the thread that took the lock.
  void unlock();

 private:
  std::atomic<bool> m_initialised{false};  // atomic: read while another thread may be in init()
  omp_lock_t m_lock{};
};

/// Holds a lock for a scope if the configured thread count is not 1, else does nothing: put one around each
/// append to a list that several threads may fill. The count is looked at once, on entry.
class AppendGuard {
 public:
  explicit AppendGuard(LazyLock& lock)
      : m_lock(parallelSettings().currentThreadCount() != 1 ? &lock : nullptr) {
    if (m_lock) m_lock->lock();
  }
  ~AppendGuard() {
    if (m_lock) m_lock->unlock();
  }
  AppendGuard(const AppendGuard&) = delete;
  AppendGuard& operator=(const AppendGuard&) = delete;

 private:
  LazyLock* const m_lock;
};

}  // namespace ztcad
