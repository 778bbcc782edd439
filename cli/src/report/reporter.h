#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "../check/selection.h"
#include "../exit_code.h"
#include "../output.h"

namespace cli {

/// The forms of a report.
enum class ReportFormat { Text, Json, Sarif };

/// Counts over all documents of a run.
struct Summary {
  std::int64_t documents = 0;
  std::array<std::int64_t, severityCount> counts{};
  std::int64_t hidden = 0;  // selected findings that are below the lowest level shown
  bool hasProblems = false;
  ExitCode exitCode = ExitCode::Good;
};

/// Prints a report while the documents are checked.
class Reporter {
 public:
  virtual ~Reporter() = default;
  virtual void begin() {}
  virtual void add(const CheckedDocument& document) = 0;
  virtual void end(const Summary& /*summary*/) {}
};

std::unique_ptr<Reporter> makeReporter(ReportFormat format, Output& output);

/// @param colours whether the places and severities are coloured
std::unique_ptr<Reporter> makeTextReporter(Output& output, bool colours);
std::unique_ptr<Reporter> makeJsonReporter(Output& output);
std::unique_ptr<Reporter> makeSarifReporter(Output& output);

}  // namespace cli
