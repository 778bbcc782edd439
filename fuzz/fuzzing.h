#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// What the fuzzers have in common.

// NOLINTNEXTLINE(readability-identifier-naming): the name that libFuzzer calls
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzzing {

/// A promise of the library; the fuzzer keeps the input that breaks it.
inline void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

inline std::string_view bytesOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Choices taken from an input, from its front. Behind its end everything is 0 or empty.
class Choices {
 public:
  explicit Choices(std::string_view bytes) : m_rest(bytes) {}

  bool areLeft() const { return !m_rest.empty(); }

  std::size_t below(std::size_t limit) { return limit == 0 ? 0 : byte() % limit; }
  bool oneIn(std::size_t sides) { return below(sides) == 0; }

  /// What stands up to the next byte 0 or line end, at most so much.
  std::string text(std::size_t most = 64) {
    const std::size_t end = m_rest.find_first_of(std::string_view("\0\n", 2));
    const std::string taken(m_rest.substr(0, end < most ? end : most));
    const std::size_t behind = taken.size() + (taken.size() == end ? 1 : 0);
    m_rest.remove_prefix(behind < m_rest.size() ? behind : m_rest.size());
    return taken;
  }

  /// Small and large numbers, whole and broken ones, and those that are none.
  double real() {
    static constexpr double values[] = {0,     1,        -1,        0.5, 1e6,       123456.5,    1e-7,
                                        1e300, 5e-324,   1e308,     1e9, 0.1 + 0.2, -123.456789, 999999.5,
                                        -0.0,  HUGE_VAL, -HUGE_VAL, NAN, 2,         1.0 / 3.0};
    return values[below(sizeof values / sizeof values[0])];
  }

 private:
  std::uint8_t byte() {
    if (m_rest.empty()) return 0;
    const auto first = static_cast<std::uint8_t>(m_rest.front());
    m_rest.remove_prefix(1);
    return first;
  }

  std::string_view m_rest;
};

}  // namespace fuzzing
