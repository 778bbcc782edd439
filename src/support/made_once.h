#pragma once

#include <atomic>
#include <memory>

namespace ztcad {

/// The object at `place`, which `make` makes if there is none. Several threads may call it at a time: all get
/// the same object.
template <typename T, typename Make>
T& madeOnce(std::atomic<T*>& place, const Make& make) {
  T* present = place.load(std::memory_order_acquire);
  if (present) return *present;
  std::unique_ptr<T> made = make();
  // another thread may have been first
  if (place.compare_exchange_strong(present, made.get(), std::memory_order_acq_rel)) return *made.release();
  return *present;
}

}  // namespace ztcad
