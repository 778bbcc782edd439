#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>
#include <array>
#include <charconv>

#include "benchmark_values.h"
#include "number/number_text.h"
#include "qt_numbers.h"

// One number at a time.

namespace {

using namespace benchmarks;

constexpr std::size_t triples = 10000;

void append(std::string& out, double value) {
  char text[ztcad::longestNumber];
  out.append(text, ztcad::writeReal(value, text));
}
void append(std::string& out, std::uint32_t value) {
  char text[ztcad::longestNumber];
  out.append(text, ztcad::writeIndex(value, text));
}

bool parse(const QString& text, double& value) { return ztcad::toReal(text, value); }
bool parse(const QString& text, std::uint32_t& value) { return ztcad::toIndex(text, value); }

bool parseWithQt(const QString& text, double& value) {
  bool converted = false;
  value = text.toDouble(&converted);
  return converted;
}
bool parseWithQt(const QString& text, std::uint32_t& value) {
  bool converted = false;
  value = text.toUInt(&converted);
  return converted;
}

bool parseWithFastFloat(const std::string& text, double& value) {
  return fast_float::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc();
}

template <typename Number>
bool parseWithFromChars(const std::string& text, Number& value) {
  return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc();
}

char* print(char* first, char* last, double value) {
  return std::to_chars(first, last, value, std::chars_format::general, 6).ptr;
}
char* print(char* first, char* last, std::uint32_t value) { return std::to_chars(first, last, value).ptr; }

/// Reports the speed per number and per character.
template <typename Number>
void reportSpeed(benchmark::State& state) {
  std::size_t bytes = 0;
  for (const std::string& text : singleBytes<Number>(triples))
    bytes += text.size();
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(3 * triples));
}

template <typename Number>
void formatLibrary(benchmark::State& state) {
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const Number number : numbers<Number>(triples))
      append(text, number);
    benchmark::DoNotOptimize(text.data());
  }
  reportSpeed<Number>(state);
}

template <typename Number>
void formatQt(benchmark::State& state) {
  for (auto _ : state)
    for (const Number number : numbers<Number>(triples)) {
      const QString text = qtNumber(number);
      benchmark::DoNotOptimize(text.constData());
    }
  reportSpeed<Number>(state);
}

template <typename Number>
void formatToChars(benchmark::State& state) {
  std::array<char, 16> text = {};
  for (auto _ : state)
    for (const Number number : numbers<Number>(triples))
      benchmark::DoNotOptimize(print(text.data(), text.data() + text.size(), number));
  reportSpeed<Number>(state);
}

template <typename Number, typename Texts, typename Parse>
void parseAll(benchmark::State& state, const Texts& texts, Parse parseOne) {
  for (auto _ : state)
    for (const auto& text : texts) {
      Number value{};
      if (!parseOne(text, value)) state.SkipWithError("a number cannot be parsed");
      benchmark::DoNotOptimize(value);
    }
  reportSpeed<Number>(state);
}

template <typename Number>
void parseLibrary(benchmark::State& state) {
  parseAll<Number>(state, singleStrings<Number>(triples),
                   [](const QString& text, Number& value) { return parse(text, value); });
}

template <typename Number>
void parseQt(benchmark::State& state) {
  parseAll<Number>(state, singleStrings<Number>(triples),
                   [](const QString& text, Number& value) { return parseWithQt(text, value); });
}

template <typename Number>
void parseFromChars(benchmark::State& state) {
  parseAll<Number>(state, singleBytes<Number>(triples),
                   [](const std::string& text, Number& value) { return parseWithFromChars(text, value); });
}

void parseFastFloat(benchmark::State& state) {
  parseAll<double>(state, singleBytes<double>(triples), parseWithFastFloat);
}

BENCHMARK(formatLibrary<double>)->Name("format real/library");
BENCHMARK(formatQt<double>)->Name("format real/Qt");
BENCHMARK(formatToChars<double>)->Name("format real/to_chars");
BENCHMARK(formatLibrary<std::uint32_t>)->Name("format index/library");
BENCHMARK(formatQt<std::uint32_t>)->Name("format index/Qt");
BENCHMARK(formatToChars<std::uint32_t>)->Name("format index/to_chars");
BENCHMARK(parseLibrary<double>)->Name("parse real/library");
BENCHMARK(parseQt<double>)->Name("parse real/Qt");
BENCHMARK(parseFastFloat)->Name("parse real/fast_float");
BENCHMARK(parseFromChars<double>)->Name("parse real/from_chars");
BENCHMARK(parseLibrary<std::uint32_t>)->Name("parse index/library");
BENCHMARK(parseQt<std::uint32_t>)->Name("parse index/Qt");
BENCHMARK(parseFromChars<std::uint32_t>)->Name("parse index/from_chars");

}  // namespace
