#include "reviews.h"

#include <memory>
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

struct ztCAD_Review {
  std::unique_ptr<ztCAD_GMDDocument, ztcad::EndAlone> document;  // null: nothing was read, or it was taken
  ztcad::Findings findings;
  std::vector<ztCAD_Place> places;      // of all findings
  std::vector<ztCAD_Finding> reported;  // texts and places belong to the members above
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
  reported.rule = infoOf(finding.rule).name;
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

/// Makes the findings in the form in which hosts see them.
void fillReported(ztCAD_Review& review) {
  review.reported.reserve(review.findings.kept.size());
  for (const ztcad::Finding& finding : review.findings.kept) {
    review.reported.push_back(reportedForm(finding));
    for (const ztcad::TextPlace& place : finding.places)
      review.places.push_back(placeOf(place));
  }
  const ztCAD_Place* next = review.places.data();
  for (ztCAD_Finding& reported : review.reported) {
    reported.places = reported.placeCount > 0 ? next : nullptr;
    next += reported.placeCount;
  }
}

/// @param load called with a `DocumentLoader`; returns its `LoadOutcome`
template <typename Load>
ztCAD_Review* makeReview(std::int64_t limit, ztCAD_Outcome* outcome, Load&& load) noexcept {
  ztcad::reportNoMemory(outcome);
  return guarded<ztCAD_Review*>(nullptr, [&] {
    auto review = std::make_unique<ztCAD_Review>();
    review->document.reset(std::make_unique<ztCAD_GMDDocument>(std::string()).release());
    ztcad::DocumentLoader loader(*review->document, ztcad::NestedOwner::Document, limit, review->findings);
    const ztcad::LoadOutcome result = load(loader);
    if (!result.replaced) review->document.reset();
    fillReported(*review);
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
  return isLive(review) ? static_cast<std::int64_t>(review->reported.size()) : 0;
}

std::int64_t ztCAD_omittedFindings(const ztCAD_Review* review, std::int32_t severity) {
  const bool isSeverity = severity >= ztCAD_SeverityNote && severity <= ztCAD_SeverityError;
  return isLive(review) && isSeverity ? review->findings.omitted[static_cast<std::size_t>(severity)] : 0;
}

const ztCAD_Finding* ztCAD_findingAt(const ztCAD_Review* review, std::int64_t index) {
  const bool isThere = index >= 0 && index < ztCAD_findingCount(review);
  return isThere ? &review->reported[static_cast<std::size_t>(index)] : nullptr;
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
