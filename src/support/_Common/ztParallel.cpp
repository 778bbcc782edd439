#include "ztParallel.h"

#include <omp.h>
#include <algorithm>
#include <limits>

#include "../assertion_log.h"
#include "../parallel_settings.h"
#include "../processor.h"

namespace {

ztParallel processSettings;  // constant-initialised: good before any load step

std::uint32_t atLeastOne(int count) { return static_cast<std::uint32_t>(std::max(count, 1)); }

// OpenMP leaves open what a count below 1 does; hosts can write any count into the record.
int acceptedByOpenMp(std::uint32_t threads) {
  constexpr std::uint32_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(threads, 1U, most));
}

void switchNestingOff() {
#if _OPENMP >= 201811
  // omp_set_nested is deprecated from OpenMP 5.0 on, and LLVM's runtime tells users so on their terminal
  if (omp_get_max_active_levels() > 1) omp_set_max_active_levels(1);
#else
  omp_set_nested(0);
#endif
}

void configureOpenMp(std::uint32_t threads) {
  omp_set_num_threads(acceptedByOpenMp(threads));
  switchNestingOff();
}

// Where the check stood when the text of its message was fixed: those who search logs know it by these.
void checkThreadCount(std::uint32_t threadsInRegion) {
  const std::uint32_t expected = omp_in_parallel() ? threadsInRegion : 1;
  if (static_cast<std::uint32_t>(omp_get_num_threads()) == expected) return;
  constexpr std::uint32_t line = 267;
  ztBaseAsserter::instance().report(R"(( "Primary", _check_num_threads_curr() ))", "_Common/ztParallel",
                                    line);
}

}  // namespace

ztParallel& ztcad::parallelSettings() noexcept { return processSettings; }

std::int32_t ztParallel::setMode(std::int32_t newMode) noexcept {
  const std::int32_t previous = mode;
  mode = newMode;
  if (newMode != previous) configureOpenMp(currentThreadCount());
  return previous;
}

void ztParallel::initialise(std::uint32_t requested) noexcept {
  logicalThreads = std::min(requested, atLeastOne(omp_get_num_procs()));
  physicalThreads = std::min(requested, physicalCoreCount());
  configureOpenMp(currentThreadCount());
  checkThreadCount(currentThreadCount());
}

std::uint32_t ztParallel::physicalCoreCount() noexcept {
  return ztcad::physicalCores(atLeastOne(omp_get_num_procs()), ztcad::queryCpuid);
}
