#include <benchmark/benchmark.h>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/name_counter.h"

// Making names unique.

namespace {

constexpr bool different = true;
constexpr bool same = false;

std::string nameOf(bool areDifferent, std::int64_t index) {
  return areDifferent ? "hinge " + std::to_string(index) : "hinge";
}

template <bool AreDifferent>
void namesLibrary(benchmark::State& state) {
  std::vector<ztCAD_ShortText> names;
  for (std::int64_t i = 0; i < state.range(0); ++i)
    names.emplace_back(QString::fromStdString(nameOf(AreDifferent, i)));
  for (auto _ : state) {
    ztcad::NameCounter counter;
    for (const ztCAD_ShortText& name : names)
      benchmark::DoNotOptimize(counter.newNameFor(name));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// The same rule with std::unordered_map and std::string.
class PlainCounter {
 public:
  std::string unique(const std::string& name) {
    const auto [entry, isNew] = m_next.emplace(name, 1);
    if (isNew) return name;
    std::string renamed = name + "_$" + std::to_string(entry->second++);
    m_next.emplace(renamed, 1);
    return renamed;
  }

 private:
  std::unordered_map<std::string, unsigned> m_next;
};

template <bool AreDifferent>
void namesPlain(benchmark::State& state) {
  std::vector<std::string> names;
  for (std::int64_t i = 0; i < state.range(0); ++i)
    names.push_back(nameOf(AreDifferent, i));
  for (auto _ : state) {
    PlainCounter counter;
    for (const std::string& name : names)
      benchmark::DoNotOptimize(counter.unique(name));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

#define NAME_SIZES Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)

BENCHMARK(namesLibrary<different>)->Name("different names/library")->NAME_SIZES;
BENCHMARK(namesPlain<different>)->Name("different names/unordered_map")->NAME_SIZES;
BENCHMARK(namesLibrary<same>)->Name("same name/library")->NAME_SIZES;
BENCHMARK(namesPlain<same>)->Name("same name/unordered_map")->NAME_SIZES;

}  // namespace
