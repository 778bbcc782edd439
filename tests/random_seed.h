#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

/// Seed of a random test: ZTCAD_TEST_SEED if set, otherwise a fresh one. It is printed so that a failing run
/// can be repeated.
inline std::uint64_t randomSeed() {
  const char* given = std::getenv("ZTCAD_TEST_SEED");
  const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : std::random_device{}();
  std::cout << "ZTCAD_TEST_SEED=" << seed << std::endl;
  return seed;
}

/// Number of inputs of a random test: ZTCAD_TEST_ROUNDS if set, otherwise `byDefault`.
inline int randomRounds(int byDefault) {
  const char* given = std::getenv("ZTCAD_TEST_ROUNDS");
  return given ? std::atoi(given) : byDefault;
}
