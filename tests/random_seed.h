#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

/// Seed of a random test: ZTCAD_TEST_SEED where it is set, else a new one. It is printed, so that a run can
/// be repeated.
inline std::uint64_t randomSeed() {
  const char* given = std::getenv("ZTCAD_TEST_SEED");
  const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : std::random_device{}();
  std::cout << "ZTCAD_TEST_SEED=" << seed << std::endl;
  return seed;
}

/// How many inputs a random test throws: ZTCAD_TEST_ROUNDS where it is set, else as many as are usual.
inline int randomRounds(int usual) {
  const char* given = std::getenv("ZTCAD_TEST_ROUNDS");
  return given ? std::atoi(given) : usual;
}
