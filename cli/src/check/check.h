#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "../exit_code.h"
#include "../report/reporter.h"

namespace cli {

struct CheckOptions {
  std::vector<std::string> paths;
  ReportFormat format = ReportFormat::Text;
  std::vector<std::string> only;
  std::vector<std::string> ignore;
  std::optional<Severity> lowestShown;  // by default warnings, and what lets the check fail
  Severity failOn = Severity::Error;
  std::string baseline;                 // empty: none
  std::optional<std::int64_t> most;     // findings of a document
  int jobs = 0;                         // 0: as many as the system has processors
  std::chrono::seconds timeLimit{300};  // for a document
  bool noInspect = false;               // the reader's findings only
};

/// The command `check`.
ExitCode check(const CheckOptions& options);

}  // namespace cli
