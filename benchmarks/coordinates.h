#pragma once

#include <random>

namespace benchmarks {

/// Coordinates typical of engineering parts: integers, quarters, and values with five decimals. The seed is
/// fixed: every run and every implementation gets the same sequence.
class Coordinates {
 public:
  double next() {
    const std::uint64_t kind = m_random() % 4;
    if (kind == 0) return within(200);
    if (kind == 1) return within(1000) / 4.0;
    return within(50000000) / 100000.0;
  }

 private:
  int within(int limit) {
    const auto count = static_cast<std::uint64_t>(2 * limit + 1);
    return static_cast<int>(m_random() % count) - limit;
  }

  std::mt19937_64 m_random{20200202};
};

}  // namespace benchmarks
