#include "ztParallel.h"

#include <omp.h>
#include <algorithm>
#include <limits>

#include "../assertion_log.h"
#include "../parallel_settings.h"
#include "../processor.h"

namespace {

ztParallel processSettings;  // constant-initialised: valid before any load step

std::uint32_t atLeastOne(int count) { return static_cast<std::uint32_t>(std::max(count, 1)); }

// A count below 1 is undefined in OpenMP; hosts can write any count into the record.
int acceptedByOpenMp(std::uint32_t threads) {
  constexpr std::uint32_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(threads, 1U, most));
}

void disableNesting() {
#if _OPENMP >= 201811
  // omp_set_nested is deprecated since OpenMP 5.0, and LLVM's runtime prints a warning about it
  if (omp_get_max_active_levels() > 1) omp_set_max_active_levels(1);
#else
  omp_set_nested(0);
#endif
}

void configureOpenMp(std::uint32_t threads) {
  omp_set_num_threads(acceptedByOpenMp(threads));
  disableNesting();
}

// File and line are part of the fixed message text, by which logs are searched; they are not the position of
// this check.
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
