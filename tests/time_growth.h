#pragma once

#include <algorithm>
#include <ctime>

/// Upper bound of timeGrowth for work that is meant to be linear. Caches and allocators raise 8 to about 16.
constexpr double linearTimeGrowth = 32;

/// How many times more CPU time `work(8 * size)` takes than `work(size)`: about 8 if the time is linear in
/// the size, about 64 if it is quadratic. The shortest runs are compared, because other processes disturb
/// them least: on Windows `std::clock` counts the time of the others too. Runs are repeated until the growth
/// is linear, at most ten times, so that a busy machine costs time and not the result.
template <typename Work>
double timeGrowth(int size, Work&& work) {
  const auto timeOf = [&](int count) {
    const std::clock_t start = std::clock();
    work(count);
    return static_cast<double>(std::max<std::clock_t>(std::clock() - start, 1));
  };
  double small = timeOf(size);
  double large = timeOf(8 * size);
  for (int run = 1; run < 10 && (run < 3 || large >= linearTimeGrowth * small); ++run) {
    small = std::min(small, timeOf(size));
    large = std::min(large, timeOf(8 * size));
  }
  return large / small;
}
