#include "review_file.h"

#include <ztCAD/ztCAD_c.h>

#include <memory>

namespace cli {

namespace {

Place toPlace(const ztCAD_Place& place) { return {place.line, place.column, place.offset}; }

Severity toSeverity(std::int32_t severity) {
  if (severity == ztCAD_SeverityNote) return Severity::Note;
  return severity == ztCAD_SeverityWarning ? Severity::Warning : Severity::Error;
}

Finding toFinding(const ztCAD_Finding& source) {
  Finding finding;
  finding.severity = toSeverity(source.severity);
  finding.rule = source.rule;
  finding.message = source.message;
  finding.place = toPlace(source.place);
  finding.path = source.path;
  if (source.attribute) finding.attribute = source.attribute;
  finding.kind = ztCAD_kindWord(source.kind);
  if (source.name) finding.name = source.name;
  finding.count = source.count;
  for (std::int32_t i = 0; i < source.placeCount; ++i)
    finding.places.push_back(toPlace(source.places[i]));
  return finding;
}

/// Codes of files that were not read: missing, or the system's reason.
bool isFileProblem(std::int32_t code) {
  return code != ztCAD_ResultLoaded && code <= ztCAD_ResultFileMissing;
}

}  // namespace

Review reviewFile(const std::string& file) {
  constexpr std::int64_t all = -1;
  ztCAD_Outcome outcome;
  const std::unique_ptr<ztCAD_Review, decltype(&ztCAD_endReview)> source(
      ztCAD_reviewFile(file.c_str(), all, &outcome), &ztCAD_endReview);
  Review review;
  if (!source || isFileProblem(outcome.code)) {
    review.problem = source ? outcome.message : "memory ran out";
    return review;
  }
  review.code = outcome.code;
  review.fault = outcome.fault;
  const std::int64_t count = ztCAD_findingCount(source.get());
  review.findings.reserve(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i)
    review.findings.push_back(toFinding(*ztCAD_findingAt(source.get(), i)));
  return review;
}

}  // namespace cli
