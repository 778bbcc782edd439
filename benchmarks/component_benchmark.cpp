/// Components of the library, Qt's own calls and the fastest standard functions, over the same characters.
///
///   component_benchmark [Google Benchmark's arguments]
///   component_benchmark --benchmark_filter='text to reals'

#include <benchmark/benchmark.h>
#include <unistd.h>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

/// Prints to the console and records the best time of each benchmark.
class RecordingReporter final : public benchmark::ConsoleReporter {
 public:
  RecordingReporter() : ConsoleReporter(::isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
      const auto [entry, isNew] = m_seconds.emplace(run.run_name.str(), seconds);
      if (!isNew && seconds < entry->second) entry->second = seconds;
    }
  }

  /// Prints the ratio of the time of `subject` to that of `baseline`, and whether it is within the limit;
  /// prints nothing if one of them was not run.
  void printVerdict(const std::string& subject, const std::string& baseline, double limit) const {
    const auto measured = m_seconds.find(subject);
    const auto compared = m_seconds.find(baseline);
    if (measured == m_seconds.end() || compared == m_seconds.end()) return;
    const double ratio = measured->second / compared->second;
    std::printf("%-38s %5.2f x %s, limit %.1f: %s\n", subject.c_str(), ratio, baseline.c_str(), limit,
                ratio <= limit ? "PASS" : "FAIL");
  }

 private:
  std::map<std::string, double> m_seconds;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  RecordingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n");
  for (const std::string size : {"/10000", "/100000", "/1000000"}) {
    reporter.printVerdict("text to reals/library, bytes" + size, "text to reals/fast_float" + size, 1.3);
    reporter.printVerdict("text to indices/library, bytes" + size, "text to indices/from_chars" + size, 1.3);
    reporter.printVerdict("reals to text/library" + size, "reals to text/to_chars" + size, 0.7);
    reporter.printVerdict("computed reals to text/library" + size, "computed reals to text/to_chars" + size,
                          0.7);
    reporter.printVerdict("indices to text/library" + size, "indices to text/to_chars" + size, 0.7);
  }
  benchmark::Shutdown();
  return 0;
}
