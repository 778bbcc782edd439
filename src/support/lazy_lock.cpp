#include "lazy_lock.h"

namespace ztcad {
namespace {

omp_lock_t guardLock;
bool guardExists = false;

class GuardScope {
 public:
  GuardScope() : m_taken(guardExists && parallelSettings().currentThreadCount() != 1) {
    if (m_taken) omp_set_lock(&guardLock);
  }
  ~GuardScope() {
    if (m_taken) omp_unset_lock(&guardLock);
  }
  GuardScope(const GuardScope&) = delete;
  GuardScope& operator=(const GuardScope&) = delete;

 private:
  const bool m_taken;
};

}  // namespace

void createGuardLock() {
  if (guardExists) return;
  omp_init_lock(&guardLock);
  guardExists = true;
}

void destroyGuardLock() {
  if (!guardExists) return;
  guardExists = false;
  omp_destroy_lock(&guardLock);
}

void LazyLock::init() {
  if (isInitialised()) return;
  omp_init_lock(&m_lock);
  m_initialised.store(true, std::memory_order_release);
}

void LazyLock::destroy() {
  if (!isInitialised()) return;
  omp_destroy_lock(&m_lock);
  m_initialised.store(false, std::memory_order_release);
}

void LazyLock::lock() {
  if (!isInitialised()) {
    const GuardScope oneAtATime;
    init();  // checks again: another thread may have been first
  }
  if (!omp_test_lock(&m_lock)) omp_set_lock(&m_lock);
}

void LazyLock::unlock() { omp_unset_lock(&m_lock); }

}  // namespace ztcad
