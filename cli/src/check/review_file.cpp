#include "review_file.h"

#include <ztCAD/inspect.h>

#include <deque>
#include <memory>
#include <new>

#include "../loaded_document.h"
#include "../scene.h"
#include "library_finding.h"

namespace cli {

namespace {

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
