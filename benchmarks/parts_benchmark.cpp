/// Parts of the library beside Qt's own calls and beside the quickest standard ones, over the same characters.
///
///   parts_benchmark [Google Benchmark's arguments]
///   parts_benchmark --benchmark_filter='text to reals'

#include <benchmark/benchmark.h>
#include <unistd.h>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

/// Prints as ever, and remembers the best time of each benchmark.
class RememberingReporter final : public benchmark::ConsoleReporter {
 public:
  RememberingReporter() : ConsoleReporter(::isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
      const auto [entry, isNew] = m_seconds.emplace(run.run_name.str(), seconds);
      if (!isNew && seconds < entry->second) entry->second = seconds;
    }
  }

  /// Tells how many times as long as `theirs` `ours` takes, and whether that is within the limit; nothing when
  /// one of them was not run.
  void judge(const std::string& ours, const std::string& theirs, double limit) const {
    const auto mine = m_seconds.find(ours);
    const auto other = m_seconds.find(theirs);
    if (mine == m_seconds.end() || other == m_seconds.end()) return;
    const double ratio = mine->second / other->second;
    std::printf("%-38s %5.2f x %s, at most %.1f: %s\n", ours.c_str(), ratio, theirs.c_str(), limit,
                ratio <= limit ? "PASS" : "FAIL");
  }

 private:
  std::map<std::string, double> m_seconds;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  RememberingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n");
  for (const std::string size : {"/10000", "/100000", "/1000000"}) {
    reporter.judge("text to reals/ours, bytes" + size, "text to reals/fast_float" + size, 1.3);
    reporter.judge("text to indices/ours, bytes" + size, "text to indices/from_chars" + size, 1.3);
    reporter.judge("reals to text/ours" + size, "reals to text/to_chars" + size, 0.7);
    reporter.judge("computed reals to text/ours" + size, "computed reals to text/to_chars" + size, 0.7);
    reporter.judge("indices to text/ours" + size, "indices to text/to_chars" + size, 0.7);
  }
  benchmark::Shutdown();
  return 0;
}
