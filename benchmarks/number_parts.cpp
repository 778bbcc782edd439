#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>
#include <array>
#include <charconv>

#include "number/number_text.h"
#include "parts_values.h"
#include "stock_numbers.h"

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

bool parseByStock(const QString& text, double& value) {
  bool converted = false;
  value = text.toDouble(&converted);
  return converted;
}
bool parseByStock(const QString& text, std::uint32_t& value) {
  bool converted = false;
  value = text.toUInt(&converted);
  return converted;
}

bool parseByFastFloat(const std::string& text, double& value) {
  return fast_float::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc();
}

template <typename Number>
bool parseByFromChars(const std::string& text, Number& value) {
  return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc();
}

char* print(char* first, char* last, double value) {
  return std::to_chars(first, last, value, std::chars_format::general, 6).ptr;
}
char* print(char* first, char* last, std::uint32_t value) { return std::to_chars(first, last, value).ptr; }

/// Tells the speed over all numbers and their characters.
template <typename Number>
void tellSpeed(benchmark::State& state) {
  std::size_t bytes = 0;
  for (const std::string& text : singleBytes<Number>(triples))
    bytes += text.size();
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(3 * triples));
}

template <typename Number>
void printOurs(benchmark::State& state) {
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const Number number : numbers<Number>(triples))
      append(text, number);
    benchmark::DoNotOptimize(text.data());
  }
  tellSpeed<Number>(state);
}

template <typename Number>
void printStock(benchmark::State& state) {
  for (auto _ : state)
    for (const Number number : numbers<Number>(triples)) {
      const QString text = stockNumber(number);
      benchmark::DoNotOptimize(text.constData());
    }
  tellSpeed<Number>(state);
}

template <typename Number>
void printToChars(benchmark::State& state) {
  std::array<char, 16> text = {};
  for (auto _ : state)
    for (const Number number : numbers<Number>(triples))
      benchmark::DoNotOptimize(print(text.data(), text.data() + text.size(), number));
  tellSpeed<Number>(state);
}

template <typename Number, typename Texts, typename Parse>
void parseAll(benchmark::State& state, const Texts& texts, Parse parseOne) {
  for (auto _ : state)
    for (const auto& text : texts) {
      Number value{};
      if (!parseOne(text, value)) state.SkipWithError("a number does not convert");
      benchmark::DoNotOptimize(value);
    }
  tellSpeed<Number>(state);
}

template <typename Number>
void parseOurs(benchmark::State& state) {
  parseAll<Number>(state, singleStrings<Number>(triples),
                   [](const QString& text, Number& value) { return parse(text, value); });
}

template <typename Number>
void parseStock(benchmark::State& state) {
  parseAll<Number>(state, singleStrings<Number>(triples),
                   [](const QString& text, Number& value) { return parseByStock(text, value); });
}

template <typename Number>
void parseFromChars(benchmark::State& state) {
  parseAll<Number>(state, singleBytes<Number>(triples),
                   [](const std::string& text, Number& value) { return parseByFromChars(text, value); });
}

void parseFastFloat(benchmark::State& state) {
  parseAll<double>(state, singleBytes<double>(triples), parseByFastFloat);
}

BENCHMARK(printOurs<double>)->Name("print real/ours");
BENCHMARK(printStock<double>)->Name("print real/stock");
BENCHMARK(printToChars<double>)->Name("print real/to_chars");
BENCHMARK(printOurs<std::uint32_t>)->Name("print index/ours");
BENCHMARK(printStock<std::uint32_t>)->Name("print index/stock");
BENCHMARK(printToChars<std::uint32_t>)->Name("print index/to_chars");
BENCHMARK(parseOurs<double>)->Name("parse real/ours");
BENCHMARK(parseStock<double>)->Name("parse real/stock");
BENCHMARK(parseFastFloat)->Name("parse real/fast_float");
BENCHMARK(parseFromChars<double>)->Name("parse real/from_chars");
BENCHMARK(parseOurs<std::uint32_t>)->Name("parse index/ours");
BENCHMARK(parseStock<std::uint32_t>)->Name("parse index/stock");
BENCHMARK(parseFromChars<std::uint32_t>)->Name("parse index/from_chars");

}  // namespace
