#pragma once

#include <array>
#include <optional>
#include <set>
#include <string>

#include "baseline.h"
#include "finding.h"

namespace cli {

/// A document as the report shows it.
struct CheckedDocument {
  std::string file;
  Review review;                                     // with the findings that are shown
  std::array<std::int64_t, severityCount> counts{};  // of the findings that are shown or omitted
  std::int64_t omitted = 0;                          // findings beyond the greatest number
  std::int64_t hidden = 0;                           // findings below the lowest level shown
  std::optional<Severity> worst;  // of the selected findings, whether shown or not; nothing if there is none

  std::int64_t& countOf(Severity severity) { return counts.at(static_cast<std::size_t>(severity)); }
  std::int64_t countOf(Severity severity) const { return counts.at(static_cast<std::size_t>(severity)); }
};

/// Which findings of a document count, and which of these are shown.
struct Selection {
  std::set<std::string> only;    // names of rules; empty: all
  std::set<std::string> ignore;  // names of rules
  Severity lowestShown = Severity::Warning;
  std::optional<std::int64_t> most;  // shown for a document
};

/// Applies the selection to the review of a file. The baseline uses up the findings that it knows.
CheckedDocument select(const Selection& selection, Baseline& baseline, const std::string& file,
                       Review review);

}  // namespace cli
