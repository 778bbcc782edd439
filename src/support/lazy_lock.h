#pragma once

#include <omp.h>
#include <atomic>

#include "parallel_settings.h"

namespace ztcad {

/// Creates the process-wide lock that serialises the initialisation of all `LazyLock`s. Part of the load
/// step; a second call does nothing. Without it `LazyLock::lock` works too, but the first calls on one lock
/// must not be concurrent.
void createGuardLock();
/// Part of the unload step. The lock may be created again afterwards.
void destroyGuardLock();

/// An OpenMP lock that is initialised when it is first taken.
class LazyLock {
 public:
  LazyLock() = default;
  ~LazyLock() { destroy(); }
  LazyLock(const LazyLock&) = delete;
  LazyLock& operator=(const LazyLock&) = delete;

  bool isInitialised() const { return m_initialised.load(std::memory_order_acquire); }
  void init();
  /// The lock must not be held. The next `lock` initialises it again.
  void destroy();

  /// Waits for the lock. If more than one thread is configured, the first calls may be concurrent.
  void lock();
  /// Must be called by the thread that took the lock.
  void unlock();

 private:
  std::atomic<bool> m_initialised{false};  // atomic: read while another thread may be in init()
  omp_lock_t m_lock{};
};

/// Holds a lock for a scope if the configured thread count is not 1, else does nothing. Guards appends to a
/// list that several threads may fill. The count is read once, on entry.
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
