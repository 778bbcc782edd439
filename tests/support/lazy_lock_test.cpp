#include "support/lazy_lock.h"

#include <gtest/gtest.h>
#include <omp.h>
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <list>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace {

using ztcad::AppendGuard;
using ztcad::LazyLock;

// The OpenMP lock inside a LazyLock: omp_test_lock reports whether it is held without waiting, so no test
// depends on how long another thread takes. An explicit instantiation may name a private member.
omp_lock_t& ompLockOf(LazyLock& lock);
template <auto Member>
struct OmpLockAccess {
  friend omp_lock_t& ompLockOf(LazyLock& lock) { return lock.*Member; }
};
template struct OmpLockAccess<&LazyLock::m_lock>;

constexpr int threads = 4;

class Lock : public testing::Test {
 protected:
  Lock() {
    omp_set_dynamic(0);
    ztcad::createGuardLock();
    configureThreads(threads);
  }
  ~Lock() override {
    ztcad::destroyGuardLock();
    ztcad::parallelSettings() = m_before;
  }

  static void configureThreads(std::uint32_t count) {
    ztcad::parallelSettings() = ztParallel{1, count, count};
  }

  /// Whether an initialised lock is held; asked in another thread, as a thread must not test a lock that it
  /// holds.
  static bool isHeld(LazyLock& lock) {
    bool held = true;
    std::thread([&] {
      omp_lock_t& ompLock = ompLockOf(lock);
      held = !omp_test_lock(&ompLock);
      if (!held) omp_unset_lock(&ompLock);
    }).join();
    return held;
  }

 private:
  const ztParallel m_before = ztcad::parallelSettings();
};

TEST_F(Lock, IsInitialisedByItsFirstLock) {
  LazyLock lock;
  EXPECT_FALSE(lock.isInitialised());
  lock.lock();
  EXPECT_TRUE(lock.isInitialised());
  lock.unlock();
  EXPECT_TRUE(lock.isInitialised());
}

TEST_F(Lock, RepeatedInitAndDestroyDoNothing) {
  LazyLock lock;
  lock.destroy();
  EXPECT_FALSE(lock.isInitialised());
  lock.init();
  lock.init();
  EXPECT_TRUE(lock.isInitialised());
  lock.destroy();
  lock.destroy();
  EXPECT_FALSE(lock.isInitialised());
}

TEST_F(Lock, InitKeepsAHeldLockHeld) {
  LazyLock lock;
  lock.lock();
  lock.init();  // a second omp_init_lock would release it
  EXPECT_TRUE(isHeld(lock));
  lock.unlock();
}

TEST_F(Lock, CanBeUsedAgainAfterDestroy) {
  LazyLock lock;
  lock.lock();
  lock.unlock();
  lock.destroy();
  lock.lock();
  EXPECT_TRUE(isHeld(lock));
  lock.unlock();
}

TEST_F(Lock, IsHeldFromLockToUnlock) {
  LazyLock lock;
  for (int round = 0; round < 2; ++round) {
    lock.lock();
    EXPECT_TRUE(isHeld(lock));
    lock.unlock();
    EXPECT_FALSE(isHeld(lock));
  }
}

TEST_F(Lock, AThreadWaitsUntilTheHolderUnlocks) {
  LazyLock lock;
  std::atomic<bool> released{false};
  lock.lock();
  bool sawRelease = false;
  std::thread other([&] {
    lock.lock();
    sawRelease = released;
    lock.unlock();
  });
  released = true;
  lock.unlock();
  other.join();
  EXPECT_TRUE(sawRelease);
}

TEST_F(Lock, WorksWithoutTheGuardLock) {
  ztcad::destroyGuardLock();
  LazyLock lock;
  lock.lock();
  EXPECT_TRUE(isHeld(lock));
  lock.unlock();
}

TEST_F(Lock, GuardLockCanBeCreatedAndDestroyedRepeatedly) {
  for (int round = 0; round < 3; ++round) {
    ztcad::createGuardLock();
    ztcad::createGuardLock();
    LazyLock lock;
    lock.lock();
    lock.unlock();
    EXPECT_TRUE(lock.isInitialised());
    ztcad::destroyGuardLock();
    ztcad::destroyGuardLock();
  }
}

// ---------------------------------------------------------------------------------------------- many threads
/// Releases two threads at the same moment by spinning; threads leave a sleeping barrier one after the other.
class StartingLine {
 public:
  void cross() {
    ++m_waiting;
    for (int spins = 0; m_waiting < 2; ++spins) {
      if (spins > 10000) std::this_thread::yield();  // the other thread may need this processor
    }
  }

 private:
  std::atomic<int> m_waiting{0};
};

TEST_F(Lock, ConcurrentFirstCallsInitialiseOneLock) {
  // the window in which the lock could be initialised twice is short, hence many rounds
  constexpr int rounds = 5000;
  int collisions = 0;
  int team = 0;
  for (int round = 0; round < rounds; ++round) {
    LazyLock lock;
    StartingLine line;
    std::atomic<int> inside{0};
#pragma omp parallel num_threads(2) default(none) shared(lock, line, inside, collisions, team)
    {
#pragma omp single
      team = omp_get_num_threads();
      if (team == 2) line.cross();
      lock.lock();
      if (++inside > 1) collisions = 1;
      for (volatile int pause = 0; pause < 200;)
        pause = pause + 1;
      --inside;
      lock.unlock();
    }
    ASSERT_EQ(team, 2);
    ASSERT_EQ(collisions, 0);
  }
}

TEST_F(Lock, GuardedAppendsOfSeveralThreadsAreAllKept) {
  constexpr int appends = 20000;
  LazyLock lock;
  std::list<int> list;
  int team = 0;
#pragma omp parallel num_threads(threads) default(none) shared(lock, list, team)
  {
#pragma omp single
    team = omp_get_num_threads();
    const int first = omp_get_thread_num() * appends;
    for (int number = first; number < first + appends; ++number) {
      const AppendGuard guard(lock);
      list.push_back(number);
    }
  }
  ASSERT_EQ(team, threads);
  std::vector<int> numbers(list.begin(), list.end());
  std::sort(numbers.begin(), numbers.end());
  ASSERT_EQ(numbers.size(), static_cast<std::size_t>(threads * appends));
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    ASSERT_EQ(numbers[index], static_cast<int>(index));
  }
}

TEST_F(Lock, AppendsOfEachThreadKeepTheirOrder) {
  constexpr int appends = 5000;
  LazyLock lock;
  std::vector<std::pair<int, int>> list;
#pragma omp parallel num_threads(threads) default(none) shared(lock, list)
  for (int number = 0; number < appends; ++number) {
    const AppendGuard guard(lock);
    list.emplace_back(omp_get_thread_num(), number);
  }
  std::vector<int> next(threads, 0);
  for (const auto& [thread, number] : list)
    ASSERT_EQ(number, next[static_cast<std::size_t>(thread)]++);
  EXPECT_EQ(next, std::vector<int>(threads, appends));
}

// ------------------------------------------------------------------------------------------ the append guard
TEST_F(Lock, AppendsTakeNoLockWithOneThreadConfigured) {
  configureThreads(1);
  LazyLock lock;
  { const AppendGuard guard(lock); }
  EXPECT_FALSE(lock.isInitialised());
}

TEST_F(Lock, AppendsTakeTheLockWithAnyOtherThreadCount) {
  for (const std::uint32_t count : {0U, 2U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(count);
    configureThreads(count);
    LazyLock lock;
    {
      const AppendGuard guard(lock);
      ASSERT_TRUE(lock.isInitialised());
      EXPECT_TRUE(isHeld(lock));
    }
    EXPECT_FALSE(isHeld(lock));
  }
}

TEST_F(Lock, TheModeSelectsTheThreadCount) {
  ztcad::parallelSettings() = ztParallel{1, 4, 1};
  LazyLock lock;
  { const AppendGuard guard(lock); }
  EXPECT_FALSE(lock.isInitialised());
  const ztcad::ParallelModeScope logical(0);
  { const AppendGuard guard(lock); }
  EXPECT_TRUE(lock.isInitialised());
}

TEST_F(Lock, AnAppendThatThrowsReleasesTheLock) {
  LazyLock lock;
  const auto fail = [&] {
    const AppendGuard guard(lock);
    throw std::runtime_error("no memory");
  };
  EXPECT_THROW(fail(), std::runtime_error);
  EXPECT_FALSE(isHeld(lock));
}

TEST_F(Lock, TheGuardUnlocksOnlyWhatItLocked) {
  LazyLock lock;
  configureThreads(1);
  {
    const AppendGuard guard(lock);
    configureThreads(threads);
  }
  EXPECT_FALSE(lock.isInitialised());
  {
    const AppendGuard guard(lock);
    configureThreads(1);
  }
  ASSERT_TRUE(lock.isInitialised());
  EXPECT_FALSE(isHeld(lock));
}

}  // namespace
