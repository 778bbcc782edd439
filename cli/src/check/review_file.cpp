#include "review_file.h"

#include <ztCAD/inspect.h>

#include <algorithm>
#include <deque>
#include <memory>
#include <new>

#include "../loaded_document.h"
#include "../scene.h"

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

/// The message with the first places: " The first edges: 0-3, 3-7."
std::string messageOf(const ztCADInspect_Finding& finding) {
  std::string text = finding.message;
  if (finding.placeKind == ztCADInspect_PlaceNone || finding.placeCount < 1) return text;
  const bool isEdge = finding.placeKind == ztCADInspect_PlaceEdge;
  const bool isFacet = finding.placeKind == ztCADInspect_PlaceFacet;
  const char* const one = isEdge ? "edge" : isFacet ? "facet" : "vertex";
  const char* const several = isEdge ? "edges" : isFacet ? "facets" : "vertices";
  text += finding.count > 1 ? std::string(" The first ") + several + ": " : std::string(" The ") + one + ": ";
  constexpr std::int32_t most = 3;
  for (std::int32_t i = 0; i < std::min(finding.placeCount, most); ++i) {
    const std::int64_t* const place = finding.places + (isEdge ? 2 * i : i);
    if (i > 0) text += ", ";
    text += std::to_string(place[0]);
    if (isEdge) text += "-" + std::to_string(place[1]);
  }
  return text + ".";
}

/// Adds what is wrong with the geometry and the mass data. The review knows the places of the elements.
void inspect(ztCAD_Review* review, const std::string& folder) {
  const LoadedDocument document(ztCAD_takeReviewedDocument(review));
  if (!document) return;
  const OpenScene scene = openSceneIn(document.get(), folder, nullptr);
  const std::unique_ptr<ztCADInspect_Findings, decltype(&ztCADInspect_endFindings)> findings(
      ztCADInspect_check(scene.get(), ztCADInspect_CheckAll), &ztCADInspect_endFindings);
  if (!findings) throw std::bad_alloc();
  std::vector<ztCAD_AddedFinding> added;
  std::deque<std::string> messages;
  for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings.get()); ++i) {
    const ztCADInspect_Finding& finding = *ztCADInspect_findingAt(findings.get(), i);
    const char* const message = messages.emplace_back(messageOf(finding)).c_str();
    added.push_back(
        {finding.severity, finding.rule, message, finding.element, finding.attribute, finding.count});
  }
  if (!added.empty() && !ztCAD_addFindings(review, added.data(), static_cast<std::int64_t>(added.size())))
    throw std::bad_alloc();
}

}  // namespace

Review reviewFile(const ReviewRequest& request) {
  constexpr std::int64_t all = -1;
  ztCAD_Outcome outcome;
  const std::unique_ptr<ztCAD_Review, decltype(&ztCAD_endReview)> source(
      ztCAD_reviewFile(request.file.c_str(), all, &outcome), &ztCAD_endReview);
  Review review;
  if (!source || isFileProblem(outcome.code)) {
    review.problem = source ? outcome.message : "memory ran out";
    return review;
  }
  review.code = outcome.code;
  review.fault = outcome.fault;
  if (request.inspects) inspect(source.get(), request.folder);
  const std::int64_t count = ztCAD_findingCount(source.get());
  review.findings.reserve(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i)
    review.findings.push_back(toFinding(*ztCAD_findingAt(source.get(), i)));
  return review;
}

}  // namespace cli
