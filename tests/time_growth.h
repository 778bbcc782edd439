#pragma once

#include <algorithm>
#include <ctime>

/// How many times more CPU time `work(8 * size)` takes than `work(size)`: about 8 if the time is linear in
/// the size, about 64 if it is quadratic. CPU time does not count other processes, and the shortest of three
/// runs is least disturbed.
template <typename Work>
double timeGrowth(int size, Work&& work) {
  const auto shortest = [&](int count) {
    std::clock_t best = 0;
    for (int run = 0; run < 3; ++run) {
      const std::clock_t start = std::clock();
      work(count);
      const std::clock_t taken = std::max<std::clock_t>(std::clock() - start, 1);
      best = run == 0 ? taken : std::min(best, taken);
    }
    return static_cast<double>(best);
  };
  return shortest(8 * size) / shortest(size);
}

/// Upper bound of timeGrowth for work that is meant to be linear. Caches and allocators raise 8 to about 16.
constexpr double linearTimeGrowth = 32;
