#include "selection.h"

#include <algorithm>

namespace cli {

namespace {

bool isSelected(const Selection& selection, const std::string& rule) {
  return (selection.only.empty() || selection.only.count(rule) > 0) && selection.ignore.count(rule) == 0;
}

}  // namespace

CheckedDocument select(const Selection& selection, Baseline& baseline, const std::string& file,
                       Review review) {
  CheckedDocument document;
  document.file = file;
  std::vector<Finding> findings = std::move(review.findings);
  review.findings.clear();
  document.review = std::move(review);
  std::vector<Finding>& shown = document.review.findings;
  for (Finding& finding : findings) {
    if (!isSelected(selection, finding.rule) || baseline.takeKnown(file, finding)) continue;
    document.worst = std::max(document.worst.value_or(finding.severity), finding.severity);
    if (finding.severity < selection.lowestShown) {
      ++document.hidden;
      continue;
    }
    ++document.countOf(finding.severity);
    if (selection.most && static_cast<std::int64_t>(shown.size()) >= *selection.most)
      ++document.omitted;
    else
      shown.push_back(std::move(finding));
  }
  return document;
}

}  // namespace cli
