#include "support/lazy_lock.h"

#include <gtest/gtest.h>
#include <omp.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <list>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace {

using ztcad::AppendGuard;
using ztcad::LazyLock;

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

  /// Whether another thread gets the lock while this one does nothing. If not, gives up this thread's hold of it, so
  /// that the other one can end. The lock is free afterwards.
  static bool othersGetIn(LazyLock& lock, std::chrono::milliseconds patience) {
    std::atomic<bool> entered{false};
    std::thread other([&] {
      lock.lock();
      entered = true;
      lock.unlock();
    });
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!entered && std::chrono::steady_clock::now() < end)
      std::this_thread::yield();
    const bool gotIn = entered;
    if (!gotIn) lock.unlock();
    other.join();
    return gotIn;
  }
  static bool isHeld(LazyLock& lock) { return !othersGetIn(lock, std::chrono::milliseconds(50)); }
  static bool isFree(LazyLock& lock) { return othersGetIn(lock, std::chrono::seconds(20)); }

 private:
  const ztParallel m_before = ztcad::parallelSettings();
};

TEST_F(Lock, ComesIntoBeingWhenFirstTaken) {
  LazyLock lock;
  EXPECT_FALSE(lock.isInitialised());
  lock.lock();
  EXPECT_TRUE(lock.isInitialised());
  lock.unlock();
  EXPECT_TRUE(lock.isInitialised());
}

TEST_F(Lock, InitAndDestroyTwiceAreAsOnce) {
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

TEST_F(Lock, AHeldLockIsNotInitialisedAnew) {
  LazyLock lock;
  lock.lock();
  lock.init();  // a second omp_init_lock would open it
  EXPECT_TRUE(isHeld(lock));
}

TEST_F(Lock, CanBeUsedAgainAfterDestroy) {
  LazyLock lock;
  lock.lock();
  lock.unlock();
  lock.destroy();
  lock.lock();
  EXPECT_TRUE(isHeld(lock));
}

TEST_F(Lock, AThreadWaitsUntilTheHolderLetsGo) {
  LazyLock lock;
  lock.lock();
  EXPECT_TRUE(isHeld(lock));
  EXPECT_TRUE(isFree(lock));
}

TEST_F(Lock, WorksWithoutTheLoadStepToo) {
  ztcad::destroyGuardLock();
  LazyLock lock;
  lock.lock();
  EXPECT_TRUE(isHeld(lock));
}

TEST_F(Lock, GuardCanBeCreatedAndDestroyedAgainAndAgain) {
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

// ---------------------------------------------------------------------------------------------------- many threads
/// Lets two threads go on in the same moment, which sleeping barriers do not.
class StartingLine {
 public:
  void cross() {
    ++m_waiting;
    for (int spins = 0; m_waiting < 2; ++spins) {
      if (spins > 10000) std::this_thread::yield();  // the other one may need this very processor
    }
  }

 private:
  std::atomic<int> m_waiting{0};
};

TEST_F(Lock, FirstCallsOfTwoThreadsAtOnceMakeOneLock) {
  // the moment in which two locks could come into being is short: try again and again
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(400);
  int collisions = 0;
  int team = 0;
  while (std::chrono::steady_clock::now() < end) {
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

TEST_F(Lock, GuardedAppendsOfSeveralThreadsLoseNothing) {
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

TEST_F(Lock, EachThreadsAppendsKeepTheirOrder) {
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

// -------------------------------------------------------------------------------------------------- the append guard
TEST_F(Lock, WithOneThreadConfiguredAppendsTakeNoLock) {
  configureThreads(1);
  LazyLock lock;
  { const AppendGuard guard(lock); }
  EXPECT_FALSE(lock.isInitialised());
}

TEST_F(Lock, AnyOtherCountTakesTheLock) {
  for (const std::uint32_t count : {0U, 2U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(count);
    configureThreads(count);
    LazyLock lock;
    {
      const AppendGuard guard(lock);
      EXPECT_TRUE(lock.isInitialised());
    }
    EXPECT_TRUE(isFree(lock));
  }
}

TEST_F(Lock, TheModeDecidesWhichCountIsLookedAt) {
  ztcad::parallelSettings() = ztParallel{1, 4, 1};
  LazyLock lock;
  { const AppendGuard guard(lock); }
  EXPECT_FALSE(lock.isInitialised());
  const ztcad::ParallelModeScope logical(0);
  { const AppendGuard guard(lock); }
  EXPECT_TRUE(lock.isInitialised());
}

TEST_F(Lock, AnAppendThatThrowsLetsTheLockGo) {
  LazyLock lock;
  const auto fail = [&] {
    const AppendGuard guard(lock);
    throw std::runtime_error("no memory");
  };
  EXPECT_THROW(fail(), std::runtime_error);
  EXPECT_TRUE(isFree(lock));
}

TEST_F(Lock, ACountThatChangesInsideTheScopeDoesNotUnlockWhatIsFree) {
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
  EXPECT_TRUE(isFree(lock));
}

}  // namespace
