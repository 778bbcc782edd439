#include <check/selection.h>
#include <gtest/gtest.h>

namespace {

using cli::Baseline;
using cli::CheckedDocument;
using cli::Finding;
using cli::Review;
using cli::Selection;
using cli::Severity;

Finding finding(const char* rule, Severity severity) {
  Finding result;
  result.rule = rule;
  result.severity = severity;
  return result;
}

/// Two errors, a warning and a note.
Review sample() {
  Review review;
  review.code = 120;
  review.findings = {finding("no-centre", Severity::Error), finding("unknown", Severity::Warning),
                     finding("comment", Severity::Note), finding("no-name", Severity::Error)};
  return review;
}

std::string rulesOf(const CheckedDocument& document) {
  std::string rules;
  for (const Finding& shown : document.review.findings)
    rules += shown.rule + " ";
  return rules;
}

CheckedDocument selected(const Selection& selection) {
  Baseline none;
  return select(selection, none, "a.xml", sample());
}

}  // namespace

TEST(Selection, ShowsWarningsAndErrorsByDefault) {
  const CheckedDocument document = selected({});
  EXPECT_EQ(rulesOf(document), "no-centre unknown no-name ");
  EXPECT_EQ(document.countOf(Severity::Error), 2);
  EXPECT_EQ(document.countOf(Severity::Warning), 1);
  EXPECT_EQ(document.countOf(Severity::Note), 0);
  EXPECT_EQ(document.hidden, 1);
  EXPECT_EQ(document.worst, Severity::Error);
  EXPECT_EQ(document.review.code, 120);
}

TEST(Selection, ShowsOnlyTheRulesThatItNames) {
  Selection selection;
  selection.only = {"no-name", "comment"};
  selection.lowestShown = Severity::Note;
  EXPECT_EQ(rulesOf(selected(selection)), "comment no-name ");
}

TEST(Selection, IgnoresRules) {
  Selection selection;
  selection.ignore = {"no-name", "no-centre"};
  const CheckedDocument document = selected(selection);
  EXPECT_EQ(rulesOf(document), "unknown ");
  EXPECT_EQ(document.worst, Severity::Warning);
}

TEST(Selection, KnowsTheWorstFindingAlsoIfItIsNotShown) {
  Selection selection;
  selection.only = {"unknown"};
  selection.lowestShown = Severity::Error;
  const CheckedDocument document = selected(selection);
  EXPECT_EQ(rulesOf(document), "");
  EXPECT_EQ(document.worst, Severity::Warning);
}

TEST(Selection, CountsWhatItOmits) {
  Selection selection;
  selection.lowestShown = Severity::Note;
  selection.most = 1;
  const CheckedDocument document = selected(selection);
  EXPECT_EQ(rulesOf(document), "no-centre ");
  EXPECT_EQ(document.omitted, 3);
  EXPECT_EQ(document.countOf(Severity::Error), 2);
  EXPECT_EQ(document.worst, Severity::Error);
  selection.most = 0;
  EXPECT_EQ(selected(selection).omitted, 4);
}

TEST(Selection, OfNothingHasNoWorstFinding) {
  Baseline none;
  EXPECT_FALSE(select({}, none, "a.xml", Review()).worst);
}
