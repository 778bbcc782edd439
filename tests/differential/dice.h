#pragma once

#include <cstdint>
#include <iterator>
#include <random>

/// Random choices of a test, reproducible from the seed.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : m_engine(seed) {}

  std::uint64_t bits() { return m_engine(); }
  /// 0 .. sides - 1
  int roll(int sides) { return static_cast<int>(m_engine() % static_cast<std::uint64_t>(sides)); }
  bool oneIn(int sides) { return roll(sides) == 0; }
  double between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(m_engine);
  }
  template <typename Choices>
  const auto& pick(const Choices& choices) {
    return choices[static_cast<std::size_t>(roll(static_cast<int>(std::size(choices))))];
  }

 private:
  std::mt19937_64 m_engine;
};
