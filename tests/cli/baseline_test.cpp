#include <check/baseline.h>
#include <failure.h>
#include <gtest/gtest.h>

#include "temporary_files.h"

namespace {

using cli::Baseline;
using cli::Finding;

const char* const report = R"({"schema": 1, "documents": [
  {"file": "a.xml", "findings": [
    {"rule": "missing-centre", "message": "No centre.", "line": 3, "element": {"kind": "point", "name": "hinge"}},
    {"rule": "missing-centre", "message": "No centre.", "line": 4, "element": {"kind": "point", "name": "hinge"}},
    {"rule": "not-well-formed", "message": "Tag mismatch."}]}]})";

Finding finding(const char* rule, const char* message, const char* kind, std::optional<std::string> name) {
  Finding result;
  result.rule = rule;
  result.message = message;
  result.kind = kind;
  result.name = std::move(name);
  return result;
}

const Finding hinge = finding("missing-centre", "No centre.", "point", "hinge");

}  // namespace

TEST(Baseline, KnowsEachFindingOfTheReportOnce) {
  const TemporaryFiles files;
  Baseline baseline(files.put("report.json", report));
  EXPECT_TRUE(baseline.takeKnown("a.xml", hinge));
  EXPECT_TRUE(baseline.takeKnown("a.xml", hinge));
  EXPECT_FALSE(baseline.takeKnown("a.xml", hinge));
}

TEST(Baseline, KnowsAFindingByFileRuleElementAndMessage) {
  const TemporaryFiles files;
  Baseline baseline(files.put("report.json", report));
  EXPECT_FALSE(baseline.takeKnown("b.xml", hinge));
  EXPECT_FALSE(baseline.takeKnown("a.xml", finding("missing-radius", "No centre.", "point", "hinge")));
  EXPECT_FALSE(baseline.takeKnown("a.xml", finding("missing-centre", "Bad centre.", "point", "hinge")));
  EXPECT_FALSE(baseline.takeKnown("a.xml", finding("missing-centre", "No centre.", "sphere", "hinge")));
  EXPECT_FALSE(baseline.takeKnown("a.xml", finding("missing-centre", "No centre.", "point", "pin")));
  EXPECT_FALSE(baseline.takeKnown("a.xml", finding("missing-centre", "No centre.", "point", std::nullopt)));
  EXPECT_TRUE(baseline.takeKnown("a.xml", finding("not-well-formed", "Tag mismatch.", "", std::nullopt)));
}

TEST(Baseline, WithoutAReportKnowsNothing) { EXPECT_FALSE(Baseline().takeKnown("a.xml", hinge)); }

TEST(Baseline, RefusesWhatIsNoReport) {
  const TemporaryFiles files;
  for (const char* text : {"", "{", "[]", "{}", R"({"schema": 2, "documents": []})", R"({"schema": 1})",
                           R"({"schema": 1, "documents": [{}]})", "\xff"})
    EXPECT_THROW(Baseline(files.put("report.json", text)), cli::Failure) << text;
  EXPECT_THROW(Baseline(files.path("missing.json")), cli::Failure);
}
