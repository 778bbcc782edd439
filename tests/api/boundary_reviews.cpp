#include <gtest/gtest.h>
#include <string>

#include "boundary.h"
#include "host.h"

// Reviews and rules.

namespace boundary {

namespace {

constexpr ztCAD_Outcome earlier = {-1, true, -1, -1, "earlier"};

const Row rows[] = {
    {"ztCAD_reviewFile",
     [] {
       ztCAD_endReview(ztCAD_reviewFile(nullptr, 0, nullptr));
       ztCAD_Outcome outcome = earlier;
       ztCAD_Review* const review = ztCAD_reviewFile("\xFF", INT64_MIN, &outcome);
       EXPECT_NE(review, nullptr);
       EXPECT_EQ(outcome.code, ztCAD_ResultFileMissing);
       EXPECT_FALSE(outcome.fault);
       EXPECT_EQ(outcome.line, 0);
       EXPECT_STREQ(outcome.message, "no such file");
       EXPECT_EQ(ztCAD_findingCount(review), 0);
       ztCAD_endReview(review);
     }},
    {"ztCAD_reviewText",
     [] {
       ztCAD_endReview(ztCAD_reviewText(nullptr, INT64_MAX, INT64_MAX, nullptr));
       ztCAD_Outcome outcome = earlier;
       ztCAD_Review* const review = ztCAD_reviewText("\xFF\0\xFE", 3, INT64_MAX, &outcome);
       EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
       EXPECT_FALSE(outcome.fault);
       EXPECT_EQ(ztCAD_findingCount(review), 1);
       ztCAD_endReview(review);
       ztCAD_Review* const counted = ztCAD_reviewText("<", INT64_MIN, 0, &outcome);
       EXPECT_EQ(ztCAD_findingCount(counted), 0);
       EXPECT_EQ(ztCAD_omittedFindings(counted, ztCAD_SeverityError), 1);
       ztCAD_endReview(counted);
     }},
    {"ztCAD_findingCount", [] { EXPECT_EQ(ztCAD_findingCount(nullptr), 0); }},
    {"ztCAD_omittedFindings",
     [] {
       EXPECT_EQ(ztCAD_omittedFindings(nullptr, ztCAD_SeverityNote), 0);
       ztCAD_Review* const review = ztCAD_reviewText("<", -1, 0, nullptr);
       EXPECT_EQ(ztCAD_omittedFindings(review, INT32_MIN), 0);
       EXPECT_EQ(ztCAD_omittedFindings(review, INT32_MAX), 0);
       ztCAD_endReview(review);
     }},
    {"ztCAD_findingAt",
     [] {
       EXPECT_EQ(ztCAD_findingAt(nullptr, 0), null<const ztCAD_Finding>);
       ztCAD_Review* const review = ztCAD_reviewText("<", -1, -1, nullptr);
       EXPECT_EQ(ztCAD_findingAt(review, INT64_MIN), null<const ztCAD_Finding>);
       EXPECT_EQ(ztCAD_findingAt(review, INT64_MAX), null<const ztCAD_Finding>);
       ztCAD_endReview(review);
     }},
    {"ztCAD_takeReviewedDocument",
     [] {
       EXPECT_EQ(ztCAD_takeReviewedDocument(nullptr), null<ztCAD_GMDDocument>);
       ztCAD_Review* const review = ztCAD_reviewText("<GMD/>", -1, -1, nullptr);
       ztCAD_endReview(review);
       EXPECT_EQ(ztCAD_takeReviewedDocument(review), null<ztCAD_GMDDocument>) << "the review has ended";
     }},
    {"ztCAD_addFindings",
     [] {
       const ztCAD_AddedFinding empty = {};
       const ztCAD_AddedFinding nonsense = {INT32_MIN, "", "", nullptr, "", INT64_MIN};
       EXPECT_FALSE(ztCAD_addFindings(nullptr, &empty, 1));
       ztCAD_Review* const review = ztCAD_reviewText("<GMD/>", -1, -1, nullptr);
       EXPECT_TRUE(ztCAD_addFindings(review, nullptr, INT64_MAX));
       EXPECT_TRUE(ztCAD_addFindings(review, &empty, INT64_MIN));
       EXPECT_FALSE(ztCAD_addFindings(review, &nonsense, 1));
       EXPECT_TRUE(ztCAD_addFindings(review, &empty, 1)) << "null texts count as empty";
       EXPECT_EQ(ztCAD_findingCount(review), 1);
       ztCAD_endReview(review);
       EXPECT_FALSE(ztCAD_addFindings(review, &empty, 1)) << "the review has ended";
     }},
    {"ztCAD_endReview",
     [] {
       ztCAD_endReview(nullptr);
       ztCAD_Review* const review = ztCAD_reviewText("<GMD/>", -1, -1, nullptr);
       ztCAD_endReview(review);
       ztCAD_endReview(review);
     }},
    {"ztCAD_ruleCount", [] { EXPECT_GT(ztCAD_ruleCount(), 0); }},
    {"ztCAD_ruleAt",
     [] {
       EXPECT_EQ(ztCAD_ruleAt(INT32_MIN), null<const ztCAD_Rule>);
       EXPECT_EQ(ztCAD_ruleAt(INT32_MAX), null<const ztCAD_Rule>);
     }},
    {"ztCAD_kindWord",
     [] {
       EXPECT_STREQ(ztCAD_kindWord(INT32_MIN), "");
       EXPECT_STREQ(ztCAD_kindWord(ztCAD_ElementNone), "");
       EXPECT_STREQ(ztCAD_kindWord(ztCAD_ElementTmplStructure), "template-structure");
     }},
    {"ztCAD_saveDocumentTo",
     [] {
       const auto neverCalled = [](const char*, std::int64_t, void*) {
         ADD_FAILURE();
         return true;
       };
       ztCAD_Outcome outcome = earlier;
       EXPECT_FALSE(ztCAD_saveDocumentTo(nullptr, neverCalled, nullptr, nullptr));
       EXPECT_FALSE(ztCAD_saveDocumentTo(nullptr, nullptr, nullptr, &outcome));
       EXPECT_GT(outcome.code, 0);
       EXPECT_STREQ(outcome.message, "no document was given");
       EXPECT_FALSE(ztCAD_saveDocumentTo(newDocument().get(), nullptr, nullptr, &outcome));
       EXPECT_GT(outcome.code, 0);
       EXPECT_STREQ(outcome.message, "no function was given");
     }},
};

}  // namespace

std::vector<Row> reviewRows() { return {std::begin(rows), std::end(rows)}; }

}  // namespace boundary
