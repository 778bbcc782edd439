#include "reviews.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "../core/document/findings.h"
#include "../core/document/loading.h"
#include "../support/process_object.h"
#include "created_objects.h"
#include "element_kinds.h"
#include "guard.h"
#include "outcome.h"

using ztcad::guarded;

static_assert(static_cast<int>(ztcad::Severity::note) == ztCAD_SeverityNote);
static_assert(static_cast<int>(ztcad::Severity::warning) == ztCAD_SeverityWarning);
static_assert(static_cast<int>(ztcad::Severity::error) == ztCAD_SeverityError);

namespace {

/// Findings in the form in which hosts see them.
struct ReportedFindings {
  ReportedFindings() = default;
  explicit ReportedFindings(const std::vector<ztcad::Finding>& located);

  std::vector<ztCAD_Place> places;      // of all findings
  std::vector<ztCAD_Finding> findings;  // their texts belong to the findings that they were made of
};

}  // namespace

struct ztCAD_Review {
  std::unique_ptr<ztCAD_GMDDocument, ztcad::EndAlone> document;  // null: nothing was read, or it was taken
  ztcad::ReviewedLoad load;
  ReportedFindings reported;
};

namespace {

ztcad::ProcessObject<std::unordered_set<const ztCAD_Review*>> liveReviews;

bool isLive(const ztCAD_Review* review) noexcept {
  return review && liveReviews.exists() && liveReviews.get().count(review) != 0;
}

ztCAD_Place placeOf(const ztcad::TextPlace& place) { return {place.line, place.column, place.offset}; }

const char* textOf(const std::optional<std::string>& text) { return text ? text->c_str() : nullptr; }

ztCAD_Finding reportedForm(const ztcad::Finding& finding) {
  ztCAD_Finding reported = {};
  reported.severity = static_cast<std::int32_t>(finding.severity);
  reported.rule = finding.rule;
  reported.message = finding.message.c_str();
  reported.place = placeOf(finding.place);
  reported.path = finding.path.c_str();
  reported.attribute = textOf(finding.attribute);
  reported.kind = finding.kind ? finding.kind->number : std::int32_t{ztCAD_ElementNone};
  reported.name = textOf(finding.name);
  reported.count = finding.count;
  reported.placeCount = static_cast<std::int32_t>(finding.places.size());
  return reported;
}

ReportedFindings::ReportedFindings(const std::vector<ztcad::Finding>& located) {
  findings.reserve(located.size());
  for (const ztcad::Finding& finding : located) {
    findings.push_back(reportedForm(finding));
    for (const ztcad::TextPlace& place : finding.places)
      places.push_back(placeOf(place));
  }
  const ztCAD_Place* next = places.data();
  for (ztCAD_Finding& finding : findings) {
    finding.places = finding.placeCount > 0 ? next : nullptr;
    next += finding.placeCount;
  }
}

std::optional<ztcad::Severity> severityOf(std::int32_t severity) {
  if (severity < ztCAD_SeverityNote || severity > ztCAD_SeverityError) return std::nullopt;
  return static_cast<ztcad::Severity>(severity);
}

ztcad::AddedFinding addedForm(const ztCAD_AddedFinding& finding, ztcad::Severity severity) {
  ztcad::AddedFinding added;
  added.severity = severity;
  added.rule = ztcad::textOf(finding.rule);
  added.message = ztcad::textOf(finding.message);
  added.element = finding.element;
  if (finding.attribute) added.attribute = finding.attribute;
  added.count = std::max(finding.count, std::int64_t{1});
  return added;
}

/// @param load called with a `DocumentLoader`; returns its `LoadOutcome`
template <typename Load>
ztCAD_Review* makeReview(std::int64_t limit, ztCAD_Outcome* outcome, Load&& load) noexcept {
  ztcad::reportNoMemory(outcome);
  return guarded<ztCAD_Review*>(nullptr, [&] {
    auto review = std::make_unique<ztCAD_Review>();
    review->document.reset(std::make_unique<ztCAD_GMDDocument>(std::string()).release());
    ztcad::DocumentLoader loader(*review->document, ztcad::NestedOwner::Document, limit, review->load);
    const ztcad::LoadOutcome result = load(loader);
    if (!result.replaced) review->document.reset();
    review->reported = ReportedFindings(review->load.findings().kept);
    liveReviews.get().insert(review.get());
    report(outcome, result);
    return review.release();
  });
}

}  // namespace

void ztcad::releaseReviews() { liveReviews.release(); }

ztCAD_Review* ztCAD_reviewFile(const char* fileName, std::int64_t limit, ztCAD_Outcome* outcome) {
  return makeReview(limit, outcome, [fileName](ztcad::DocumentLoader& loader) {
    return loader.loadFile(ztcad::textOf(fileName));
  });
}

ztCAD_Review* ztCAD_reviewText(const char* text, std::int64_t size, std::int64_t limit,
                               ztCAD_Outcome* outcome) {
  return makeReview(limit, outcome, [text, size](ztcad::DocumentLoader& loader) {
    return loader.loadText(ztcad::countedText(text, size), ztcad::TextRules::Strict);
  });
}

std::int64_t ztCAD_findingCount(const ztCAD_Review* review) {
  return isLive(review) ? static_cast<std::int64_t>(review->reported.findings.size()) : 0;
}

std::int64_t ztCAD_omittedFindings(const ztCAD_Review* review, std::int32_t severity) {
  const std::optional<ztcad::Severity> known = severityOf(severity);
  return isLive(review) && known ? review->load.findings().omitted[static_cast<std::size_t>(*known)] : 0;
}

const ztCAD_Finding* ztCAD_findingAt(const ztCAD_Review* review, std::int64_t index) {
  const bool isThere = index >= 0 && index < ztCAD_findingCount(review);
  return isThere ? &review->reported.findings[static_cast<std::size_t>(index)] : nullptr;
}

bool ztCAD_addFindings(ztCAD_Review* review, const ztCAD_AddedFinding* findings, std::int64_t count) {
  return guarded(false, [&] {
    if (!isLive(review)) return false;
    std::vector<ztcad::AddedFinding> added;
    for (std::int64_t i = 0; findings && i < count; ++i) {
      const std::optional<ztcad::Severity> severity = severityOf(findings[i].severity);
      if (!severity) return false;
      added.push_back(addedForm(findings[i], *severity));
    }
    if (added.empty()) return true;
    std::optional<ztcad::Findings> all = review->load.withAdded(added);
    if (!all) return false;
    ReportedFindings reported(all->kept);
    review->load.replaceFindings(std::move(*all));
    review->reported = std::move(reported);
    return true;
  });
}

ztCAD_GMDDocument* ztCAD_takeReviewedDocument(ztCAD_Review* review) {
  return guarded<ztCAD_GMDDocument*>(nullptr, [&]() -> ztCAD_GMDDocument* {
    if (!isLive(review) || !review->document) return nullptr;
    return ztcad::createdObjects().keepDocument(std::move(review->document));
  });
}

void ztCAD_endReview(ztCAD_Review* review) {
  guarded([&] {
    if (!isLive(review)) return;
    liveReviews.get().erase(review);
    delete review;
  });
}

// ------------------------------------------------------------------------------------------------- rules

namespace {

struct Rules {
  Rules() {
    for (int i = 0; i < ztcad::ruleCount; ++i) {
      const ztcad::RuleInfo& info = infoOf(static_cast<ztcad::Rule>(i));
      rules[i] = {info.name, static_cast<std::int32_t>(info.severity), info.since, info.sentence};
    }
  }
  ztCAD_Rule rules[ztcad::ruleCount] = {};
};

}  // namespace

std::int32_t ztCAD_ruleCount() { return ztcad::ruleCount; }

const ztCAD_Rule* ztCAD_ruleAt(std::int32_t index) {
  static const Rules rules;
  return index >= 0 && index < ztcad::ruleCount ? &rules.rules[index] : nullptr;
}

const char* ztCAD_kindWord(std::int32_t kind) {
  const char* word = "";
  ztcad::anyKindAtAll([&](auto row) {
    using Kind = decltype(row);
    if (Kind::number != kind) return false;
    word = Kind::name.word;
    return true;
  });
  return word;
}
