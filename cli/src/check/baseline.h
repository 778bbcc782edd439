#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "finding.h"

namespace cli {

/// The findings of an earlier report. A finding is known if the report has one of the same file, rule,
/// element and message: positions change with every edit. Each finding of the report makes one finding known.
class Baseline {
 public:
  /// Knows nothing.
  Baseline() = default;
  /// Reads a report of `check --format json`. Throws `Failure` if the file is none.
  explicit Baseline(const std::string& reportFile);

  /// Whether the finding is known. One of the report is used up then.
  bool takeKnown(const std::string& file, const Finding& finding);

 private:
  std::map<std::string, std::int64_t> m_known;  // number of findings by their identity
};

}  // namespace cli
