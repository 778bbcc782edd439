#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// Shared by all fuzzers.

// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer calls this name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzzing {

/// Aborts if a guarantee of the library does not hold; the fuzzer then stores the input. `what` states the
/// guarantee.
inline void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

inline std::string_view bytesOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Choices taken from the front of an input. Once the input is used up, every choice is 0 or empty.
class Choices {
 public:
  explicit Choices(std::string_view bytes) : m_rest(bytes) {}

  bool hasMore() const { return !m_rest.empty(); }

  std::size_t below(std::size_t limit) { return limit == 0 ? 0 : byte() % limit; }
  bool oneIn(std::size_t sides) { return below(sides) == 0; }

  /// The bytes up to the next 0 byte or line feed, at most `most` of them; the terminator is consumed.
  std::string text(std::size_t most = 64) {
    const std::size_t end = m_rest.find_first_of(std::string_view("\0\n", 2));
    const std::string taken(m_rest.substr(0, end < most ? end : most));
    const std::size_t consumed = taken.size() + (taken.size() == end ? 1 : 0);
    m_rest.remove_prefix(consumed < m_rest.size() ? consumed : m_rest.size());
    return taken;
  }

  /// Integers and fractions, small and large values, infinities and NaN.
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
