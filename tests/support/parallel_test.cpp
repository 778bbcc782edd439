#include "support/_Common/ztParallel.h"

#include <gtest/gtest.h>
#include <omp.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "support/captured_warnings.h"
#include "support/parallel_settings.h"

namespace {

using Lines = std::vector<std::string>;

std::uint32_t processors() { return static_cast<std::uint32_t>(omp_get_num_procs()); }

const char* const checkReport =
    "Assert occurred in FILE: _Common/ztParallel; LINE: 267; EXPRESSION: "
    "( \"Primary\", _check_num_threads_curr() ).";

/// Restores the record and the state of OpenMP after each test.
class Parallel : public testing::Test {
 protected:
  Parallel() { omp_set_dynamic(0); }
  ~Parallel() override {
    settings = m_before;
    omp_set_num_threads(m_threads);
    omp_set_max_active_levels(m_levels);
  }

  /// Puts OpenMP into a state that the library never sets, to detect whether the library changed it.
  static void setSentinelState() {
    omp_set_num_threads(sentinelThreads);
    omp_set_max_active_levels(sentinelLevels);
  }
  static bool hasSentinelState() {
    return omp_get_max_threads() == sentinelThreads && omp_get_max_active_levels() == sentinelLevels;
  }
  static bool nestingIsDisabled() { return omp_get_max_active_levels() <= 1; }

  ztParallel& settings = ztcad::parallelSettings();

 private:
  static constexpr int sentinelThreads = 977;
  static constexpr int sentinelLevels = 3;
  const ztParallel m_before = settings;
  const int m_threads = omp_get_max_threads();
  const int m_levels = omp_get_max_active_levels();
};

// ------------------------------------------------------------------------------------------------ the record
TEST(ParallelRecord, HasThreeFieldsInFixedOrder) {
  EXPECT_TRUE(std::is_standard_layout_v<ztParallel>);
  EXPECT_TRUE(std::is_trivially_destructible_v<ztParallel>);
  EXPECT_EQ(offsetof(ztParallel, mode), 0U);
  EXPECT_EQ(offsetof(ztParallel, logicalThreads), 4U);
  EXPECT_EQ(offsetof(ztParallel, physicalThreads), 8U);
  EXPECT_EQ(sizeof(ztParallel), 12U);
}

TEST(ParallelRecord, DefaultsToModeOneAndNoThreads) {
  constexpr ztParallel fresh;  // constexpr: static initialisation, no code runs at load
  EXPECT_EQ(fresh.mode, 1);
  EXPECT_EQ(fresh.logicalThreads, 0U);
  EXPECT_EQ(fresh.physicalThreads, 0U);
}

TEST_F(Parallel, TheProcessHasOneRecord) { EXPECT_EQ(&ztcad::parallelSettings(), &settings); }

TEST(ParallelRecord, ModeOneSelectsPhysicalThreadsAnyOtherModeLogicalThreads) {
  struct Row {
    std::int32_t mode;
    std::uint32_t count;
  };
  for (const Row row : {Row{1, 5}, Row{0, 9}, Row{2, 9}, Row{-1, 9}, Row{INT32_MAX, 9}, Row{INT32_MIN, 9}}) {
    const ztParallel record{row.mode, 9, 5};
    EXPECT_EQ(record.currentThreadCount(), row.count) << row.mode;
  }
}

// ------------------------------------------------------------------------------------------------ initialise
TEST_F(Parallel, ARequestForOneThreadSetsEveryCountToOne) {
  settings = ztParallel();
  setSentinelState();
  settings.initialise(1);
  EXPECT_EQ(settings.mode, 1);
  EXPECT_EQ(settings.logicalThreads, 1U);
  EXPECT_EQ(settings.physicalThreads, 1U);
  EXPECT_EQ(settings.currentThreadCount(), 1U);
  EXPECT_EQ(omp_get_max_threads(), 1);
  EXPECT_TRUE(nestingIsDisabled());
}

TEST_F(Parallel, ARequestIsLimitedToTheProcessorsOfTheMachine) {
  for (const std::uint32_t requested : {0U, 1U, 2U, 3U, 64U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(requested);
    settings.initialise(requested);
    EXPECT_EQ(settings.logicalThreads, std::min(requested, processors()));
    EXPECT_EQ(settings.physicalThreads, std::min(requested, ztParallel::physicalCoreCount()));
  }
}

TEST_F(Parallel, ARequestForZeroThreadsConfiguresOpenMpForOne) {
  setSentinelState();
  settings.initialise(0);
  EXPECT_EQ(settings.currentThreadCount(), 0U);
  EXPECT_EQ(omp_get_max_threads(), 1);
}

TEST_F(Parallel, InitialiseKeepsTheModeAndPassesItsCountToOpenMp) {
  for (const std::int32_t mode : {0, 1, 2}) {
    SCOPED_TRACE(mode);
    settings.mode = mode;
    setSentinelState();
    settings.initialise(0xFFFFFFFFU);
    EXPECT_EQ(settings.mode, mode);
    EXPECT_EQ(omp_get_max_threads(), static_cast<int>(settings.currentThreadCount()));
    EXPECT_TRUE(nestingIsDisabled());
  }
}

// --------------------------------------------------------------------------------------------------- setMode
TEST_F(Parallel, SettingTheCurrentModeReturnsItAndLeavesOpenMpUnchanged) {
  for (const std::int32_t mode : {0, 1, 7}) {
    SCOPED_TRACE(mode);
    settings = ztParallel{mode, 3, 2};
    setSentinelState();
    EXPECT_EQ(settings.setMode(mode), mode);
    EXPECT_EQ(settings.mode, mode);
    EXPECT_TRUE(hasSentinelState());
  }
}

struct ModeRow {
  const char* name;
  std::int32_t from;
  std::int32_t to;
  std::uint32_t logical;
  std::uint32_t physical;
  int threads;
};

const ModeRow modeRows[] = {
    {"no threads configured: OpenMP gets one", 1, 0, 0, 0, 1},
    {"one thread in both modes", 1, 0, 1, 1, 1},
    {"to logical", 1, 0, 6, 3, 6},
    {"to physical", 0, 1, 6, 3, 3},
    {"negative mode is logical", 1, -5, 6, 3, 6},
    {"between two logical modes", 0, 2, 6, 3, 6},
    {"count above the maximum of OpenMP", 1, 0, 0xFFFFFFFFU, 3, 2147483647},
};

TEST_F(Parallel, ANewModePassesItsCountToOpenMpAndDisablesNesting) {
  for (const ModeRow& row : modeRows) {
    SCOPED_TRACE(row.name);
    settings = ztParallel{row.from, row.logical, row.physical};
    setSentinelState();
    EXPECT_EQ(settings.setMode(row.to), row.from);
    EXPECT_EQ(settings.mode, row.to);
    EXPECT_EQ(settings.logicalThreads, row.logical);
    EXPECT_EQ(settings.physicalThreads, row.physical);
    EXPECT_EQ(omp_get_max_threads(), row.threads);
    EXPECT_TRUE(nestingIsDisabled());
  }
}

TEST_F(Parallel, DisablingNestingNeverRaisesTheLimitOfTheHost) {
  settings = ztParallel{1, 2, 2};
  omp_set_max_active_levels(0);
  settings.setMode(0);
  EXPECT_EQ(omp_get_max_active_levels(), 0);
}

// ----------------------------------------------------------------------------------------- ParallelModeScope
TEST_F(Parallel, AScopeSetsItsModeAndRestoresThePreviousOne) {
  for (const std::int32_t before : {0, 1, 7}) {
    SCOPED_TRACE(before);
    settings = ztParallel{before, 6, 3};
    {
      const ztcad::ParallelModeScope scope(0);
      EXPECT_EQ(settings.mode, 0);
      EXPECT_EQ(settings.currentThreadCount(), 6U);
    }
    EXPECT_EQ(settings.mode, before);
  }
}

TEST_F(Parallel, AScopeRestoresTheThreadCountOfOpenMp) {
  settings = ztParallel{1, 6, 3};
  {
    const ztcad::ParallelModeScope scope(0);
    EXPECT_EQ(omp_get_max_threads(), 6);
  }
  EXPECT_EQ(omp_get_max_threads(), 3);
}

TEST_F(Parallel, AScopeLeftByAnExceptionRestoresTheMode) {
  settings = ztParallel{1, 6, 3};
  const auto fail = [&] {
    const ztcad::ParallelModeScope scope(0);
    EXPECT_EQ(settings.mode, 0);
    throw std::runtime_error("reading failed");
  };
  EXPECT_THROW(fail(), std::runtime_error);
  EXPECT_EQ(settings.mode, 1);
  EXPECT_EQ(omp_get_max_threads(), 3);
}

TEST_F(Parallel, ScopesNest) {
  settings = ztParallel{1, 6, 3};
  {
    const ztcad::ParallelModeScope outer(0);
    {
      const ztcad::ParallelModeScope inner(1);
      EXPECT_EQ(settings.mode, 1);
    }
    EXPECT_EQ(settings.mode, 0);
    { const ztcad::ParallelModeScope same(0); }
    EXPECT_EQ(settings.mode, 0);
  }
  EXPECT_EQ(settings.mode, 1);
}

// ------------------------------------------------------------------------------------ the thread-count check
/// Calls initialise() inside a region of `threads` threads; returns how many threads the region really had.
int initialiseInRegion(ztParallel& settings, int threads, std::uint32_t requested) {
  int actual = 0;
#pragma omp parallel num_threads(threads) default(none) shared(settings, requested, actual)
  {
#pragma omp single
    {
      actual = omp_get_num_threads();
      settings.initialise(requested);
    }
  }
  return actual;
}

TEST_F(Parallel, TheCheckReportsNothingOutsideAParallelRegion) {
  const CapturedWarnings warnings;
  for (const std::uint32_t requested : {0U, 1U, 2U, 0xFFFFFFFFU})
    settings.initialise(requested);
  EXPECT_TRUE(warnings.messages().empty());
}

TEST_F(Parallel, ARegionOfAnotherSizeIsReportedAndTheSettingsTakeEffect) {
  settings.mode = 1;
  const CapturedWarnings warnings;
  ASSERT_EQ(initialiseInRegion(settings, 3, 1), 3);
  EXPECT_EQ(warnings.messages(), Lines{checkReport});
  EXPECT_EQ(settings.logicalThreads, 1U);
  EXPECT_EQ(settings.physicalThreads, 1U);
}

TEST_F(Parallel, EachFailedCheckIsReported) {
  const CapturedWarnings warnings;
  ASSERT_EQ(initialiseInRegion(settings, 2, 1), 2);
  ASSERT_EQ(initialiseInRegion(settings, 2, 0), 2);
  EXPECT_EQ(warnings.messages(), (Lines{checkReport, checkReport}));
}

TEST_F(Parallel, TheCheckReportsNothingInARegionOfTheConfiguredSize) {
  if (processors() < 2) GTEST_SKIP() << "requires two processors";
  settings.mode = 0;
  const CapturedWarnings warnings;
  ASSERT_EQ(initialiseInRegion(settings, 2, 2), 2);
  EXPECT_TRUE(warnings.messages().empty());
}

TEST_F(Parallel, TheCheckIgnoresARegionOfOneThread) {
  const CapturedWarnings warnings;
  ASSERT_EQ(initialiseInRegion(settings, 1, 0xFFFFFFFFU), 1);
  EXPECT_TRUE(warnings.messages().empty());
}

}  // namespace
