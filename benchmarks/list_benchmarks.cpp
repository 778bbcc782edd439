#include <benchmark/benchmark.h>
#include <fast_float/fast_float.h>
#include <charconv>
#include <cstring>
#include <memory>

#include "benchmark_values.h"
#include "geometry/triple_text.h"
#include "number/character_list.h"
#include "number/number_list.h"
#include "qt_numbers.h"
#include "text/element_text.h"

// Whole lists of triples.

namespace {

using namespace benchmarks;

constexpr std::size_t longestNumber = 16;

template <typename Number>
void reportSpeed(benchmark::State& state) {
  const auto triples = static_cast<std::size_t>(state.range(0));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(listBytes<Number>(triples).size()));
  state.SetItemsProcessed(state.iterations() * 3 * state.range(0));
}

// ------------------------------------------------------------------------------------------- numbers to text

template <typename Number>
using List = const std::vector<Number>& (*)(std::size_t triples);

template <typename Number>
void reportTextSpeed(benchmark::State& state, const std::vector<Number>& list) {
  std::size_t bytes = 0;
  ztcad::storageText(list, [&](std::string_view piece) { bytes += piece.size(); });
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(list.size()));
}

/// The pieces are discarded where a save would copy them into the file's buffer.
template <typename Number, List<Number> MakeList>
void textLibrary(benchmark::State& state) {
  const std::vector<Number>& list = MakeList(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state)
    ztcad::storageText(list, [](std::string_view piece) { benchmark::DoNotOptimize(piece.data()); });
  reportTextSpeed(state, list);
}

template <typename Number, List<Number> MakeList>
void textQt(benchmark::State& state) {
  const std::vector<Number>& list = MakeList(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const QString text = qtText(list);
    benchmark::DoNotOptimize(text.constData());
  }
  reportTextSpeed(state, list);
}

char* print(char* at, double value) {
  return std::to_chars(at, at + longestNumber, value, std::chars_format::general, 6).ptr;
}
char* print(char* at, std::uint32_t value) { return std::to_chars(at, at + longestNumber, value).ptr; }

template <typename Number>
char* printTriple(char* at, const Number* triple) {
  at = print(at, triple[0]);
  *at++ = ',';
  *at++ = ' ';
  at = print(at, triple[1]);
  *at++ = ',';
  *at++ = ' ';
  at = print(at, triple[2]);
  *at++ = ';';
  *at++ = '\n';
  return at;
}

/// Writes into one preallocated buffer: the fastest use of std::to_chars.
template <typename Number, List<Number> MakeList>
void textToChars(benchmark::State& state) {
  const std::vector<Number>& list = MakeList(static_cast<std::size_t>(state.range(0)));
  const std::unique_ptr<char[]> text(new char[list.size() * (longestNumber + 2)]);
  for (auto _ : state) {
    char* at = text.get();
    for (std::size_t i = 0; i + 3 <= list.size(); i += 3)
      at = printTriple(at, &list[i]);
    benchmark::DoNotOptimize(at);
    benchmark::ClobberMemory();
  }
  reportTextSpeed(state, list);
}

// ------------------------------------------------------------------------------------------- text to numbers

/// @tparam Text any text type that the parser accepts
template <typename Number, typename Text>
void parseTriples(benchmark::State& state, const Text& text) {
  for (auto _ : state) {
    std::vector<Number> list;
    if (!ztcad::parseTriples(text, list)) state.SkipWithError("the list cannot be parsed");
    benchmark::DoNotOptimize(list.data());
  }
  reportSpeed<Number>(state);
}

template <typename Number>
void parseLibrary(benchmark::State& state) {
  parseTriples<Number>(state, listString<Number>(static_cast<std::size_t>(state.range(0))));
}

/// Decodes bytes that are not part of a number; these lists contain none.
class PlainDecoder final : public ztcad::TextDecoder {
 public:
  QString decoded(std::string_view part) const override {
    return QString::fromLatin1(part.data(), static_cast<int>(part.size()));
  }
};

/// As in loading a file: the bytes are parsed in place.
template <typename Number>
void parseLibraryBytes(benchmark::State& state) {
  const PlainDecoder decoder;
  const std::string& text = listBytes<Number>(static_cast<std::size_t>(state.range(0)));
  parseTriples<Number>(state, ztcad::ElementText(text, decoder));
}

std::vector<double> parseWithQt(const QString& text, double) { return qtReals(text); }
std::vector<std::uint32_t> parseWithQt(const QString& text, std::uint32_t) { return qtIndices(text); }

template <typename Number>
void parseQt(benchmark::State& state) {
  const QString& text = listString<Number>(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state)
    benchmark::DoNotOptimize(parseWithQt(text, Number()).data());
  reportSpeed<Number>(state);
}

struct FastFloat {
  const char* operator()(const char* first, const char* last, double& value) const {
    return fast_float::from_chars(first, last, value).ptr;
  }
};
struct FromChars {
  template <typename Number>
  const char* operator()(const char* first, const char* last, Number& value) const {
    return std::from_chars(first, last, value).ptr;
  }
};

bool isNumberPart(char c) { return (c >= '0' && c <= '9') || c == '-'; }

template <typename Number, typename Read>
void readNumbers(const std::string& text, std::vector<Number>& list, Read read) {
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at != end;) {
    if (isNumberPart(*at))
      at = read(at, end, list.emplace_back());
    else
      ++at;
  }
}

template <typename Number, typename Read>
void parseBytes(benchmark::State& state) {
  const std::string& text = listBytes<Number>(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    std::vector<Number> list;
    readNumbers(text, list, Read());
    if (list.size() != 3 * static_cast<std::size_t>(state.range(0)))
      state.SkipWithError("numbers are missing");
    benchmark::DoNotOptimize(list.data());
  }
  reportSpeed<Number>(state);
}

// -------------------------------------------------------------------------------------------- scanning alone

template <typename Scan>
void scanAll(benchmark::State& state, Scan scan) {
  for (auto _ : state)
    benchmark::DoNotOptimize(scan());
  reportSpeed<double>(state);
}

/// Finds the next tag, which follows the whole list.
void scanMemchr(benchmark::State& state) {
  const std::string& text = listBytes<double>(static_cast<std::size_t>(state.range(0)));
  // NOLINTNEXTLINE(bugprone-not-null-terminated-result): bytes are searched, no text is copied
  scanAll(state, [&] { return std::memchr(text.data(), '<', text.size()); });
}

void scanEachByte(benchmark::State& state) {
  const std::string& text = listBytes<double>(static_cast<std::size_t>(state.range(0)));
  scanAll(state, [&] {
    std::size_t triples = 0;
    for (const char c : text)
      triples += c == ';';
    return triples;
  });
}

void scanQt(benchmark::State& state) {
  const QString& text = listString<double>(static_cast<std::size_t>(state.range(0)));
  scanAll(state, [&] { return text.indexOf(QLatin1Char('<')); });
}

#define LIST_SIZES Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)

BENCHMARK(textLibrary<double, numbers<double>>)->Name("reals to text/library")->LIST_SIZES;
BENCHMARK(textQt<double, numbers<double>>)->Name("reals to text/Qt")->LIST_SIZES;
BENCHMARK(textToChars<double, numbers<double>>)->Name("reals to text/to_chars")->LIST_SIZES;
BENCHMARK(textLibrary<double, computedReals>)->Name("computed reals to text/library")->LIST_SIZES;
BENCHMARK(textQt<double, computedReals>)->Name("computed reals to text/Qt")->LIST_SIZES;
BENCHMARK(textToChars<double, computedReals>)->Name("computed reals to text/to_chars")->LIST_SIZES;
BENCHMARK(textLibrary<std::uint32_t, numbers<std::uint32_t>>)->Name("indices to text/library")->LIST_SIZES;
BENCHMARK(textQt<std::uint32_t, numbers<std::uint32_t>>)->Name("indices to text/Qt")->LIST_SIZES;
BENCHMARK(textToChars<std::uint32_t, numbers<std::uint32_t>>)->Name("indices to text/to_chars")->LIST_SIZES;
BENCHMARK(parseLibrary<double>)->Name("text to reals/library")->LIST_SIZES;
BENCHMARK(parseLibraryBytes<double>)->Name("text to reals/library, bytes")->LIST_SIZES;
BENCHMARK(parseQt<double>)->Name("text to reals/Qt")->LIST_SIZES;
BENCHMARK(parseBytes<double, FastFloat>)->Name("text to reals/fast_float")->LIST_SIZES;
BENCHMARK(parseBytes<double, FromChars>)->Name("text to reals/from_chars")->LIST_SIZES;
BENCHMARK(parseLibrary<std::uint32_t>)->Name("text to indices/library")->LIST_SIZES;
BENCHMARK(parseLibraryBytes<std::uint32_t>)->Name("text to indices/library, bytes")->LIST_SIZES;
BENCHMARK(parseQt<std::uint32_t>)->Name("text to indices/Qt")->LIST_SIZES;
BENCHMARK(parseBytes<std::uint32_t, FromChars>)->Name("text to indices/from_chars")->LIST_SIZES;
BENCHMARK(scanMemchr)->Name("scan/memchr")->LIST_SIZES;
BENCHMARK(scanEachByte)->Name("scan/each byte")->LIST_SIZES;
BENCHMARK(scanQt)->Name("scan/Qt")->LIST_SIZES;

}  // namespace
