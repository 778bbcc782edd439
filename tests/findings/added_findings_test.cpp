#include <gtest/gtest.h>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "reviewed.h"

namespace {

/// A review of a text, and its document, which is ended last.
class OpenReview {
 public:
  explicit OpenReview(const std::string& text, std::int64_t limit = -1)
      : m_review(ztCAD_reviewText(text.data(), static_cast<std::int64_t>(text.size()), limit, &m_outcome)),
        m_document(ztCAD_takeReviewedDocument(m_review.get())) {}
  OpenReview(const OpenReview&) = delete;
  OpenReview& operator=(const OpenReview&) = delete;
  ~OpenReview() { ztCAD_endDocument(m_document); }

  ztCAD_Review* get() const { return m_review.get(); }
  ztCAD_GMDDocument* document() const { return m_document; }
  ztCAD_Base* element(std::int32_t kind, int index = 0) const {
    return ztCAD_getFromDoc(m_document, kind, index);
  }

  bool add(const std::vector<ztCAD_AddedFinding>& findings) const {
    return ztCAD_addFindings(get(), findings.data(), static_cast<std::int64_t>(findings.size()));
  }
  Reviewed copied() const { return copyOf(m_review, m_outcome); }
  std::vector<CopiedFinding> findings() const { return copied().findings; }

 private:
  ztCAD_Outcome m_outcome = {};
  ReviewHandle m_review;
  ztCAD_GMDDocument* m_document;
};

ztCAD_AddedFinding about(const ztCAD_Base* element, const char* attribute = nullptr) {
  return {ztCAD_SeverityWarning, "too-heavy", "Too heavy.", element, attribute, 1};
}

std::vector<std::string> rules(const OpenReview& review) { return review.copied().rules(); }

TEST(AddedFinding, HasThePlaceAndNameOfItsElement) {
  const OpenReview review("<GMD>\n<point name='a' center='1,2,3'/>\n <point name='b' center='1,2,3'/></GMD>");
  ASSERT_TRUE(review.add({about(review.element(ztCAD_ElementPoint, 1))}));
  ASSERT_EQ(review.findings().size(), 1u);
  const CopiedFinding finding = review.findings()[0];
  EXPECT_EQ(finding.severity, ztCAD_SeverityWarning);
  EXPECT_EQ(finding.rule, "too-heavy");
  EXPECT_EQ(finding.message, "Too heavy.");
  EXPECT_EQ(finding.place, (CopiedPlace{3, 2, 40}));
  EXPECT_EQ(finding.path, "/GMD/point[2]");
  EXPECT_EQ(finding.attribute, std::nullopt);
  EXPECT_EQ(finding.kind, "point");
  EXPECT_EQ(finding.name, "b");
  EXPECT_EQ(finding.count, 1);
  EXPECT_TRUE(finding.places.empty());
}

TEST(AddedFinding, IsAtItsAttribute) {
  const OpenReview review("<GMD><point name='a>' inform=\"'>\"\n center = '1,2,3'/></GMD>");
  ASSERT_TRUE(review.add({about(review.element(ztCAD_ElementPoint), "center")}));
  const CopiedFinding finding = review.findings().at(0);
  EXPECT_EQ(finding.place, (CopiedPlace{2, 2, 35}));
  EXPECT_EQ(finding.path, "/GMD/point[1]/@center");
  EXPECT_EQ(finding.attribute, "center");
  EXPECT_EQ(finding.name, "a>");
}

TEST(AddedFinding, IsAtTheElementWithoutTheAttribute) {
  const OpenReview review("<GMD><point name='a' center='1,2,3'/></GMD>");
  ASSERT_TRUE(review.add({about(review.element(ztCAD_ElementPoint), "LCS")}));
  const CopiedFinding finding = review.findings().at(0);
  EXPECT_EQ(finding.place, (CopiedPlace{1, 6, 5}));
  EXPECT_EQ(finding.path, "/GMD/point[1]");
  EXPECT_EQ(finding.attribute, std::nullopt);
}

TEST(AddedFinding, AboutTheDocumentIsAtItsRoot) {
  const OpenReview review("<?xml version='1.0'?>\n<GMD/>");
  ASSERT_TRUE(review.add({about(nullptr)}));
  const CopiedFinding finding = review.findings().at(0);
  EXPECT_EQ(finding.place, (CopiedPlace{2, 1, 22}));
  EXPECT_EQ(finding.path, "/GMD");
  EXPECT_EQ(finding.kind, "");
  EXPECT_EQ(finding.name, std::nullopt);
}

TEST(AddedFinding, HasTheNameThatTheTextGives) {
  const OpenReview review("<GMD><point name='a' center='1,2,3'/><point name='&#97;' center='1,2,3'/></GMD>");
  ASSERT_TRUE(review.add({about(review.element(ztCAD_ElementPoint, 1))}));
  const CopiedFinding finding = review.findings().at(1);
  EXPECT_EQ(review.findings().at(0).rule, "name-renamed");
  EXPECT_EQ(finding.name, "a");
}

TEST(AddedFindings, AreInTheOrderOfTheTextAfterOthersAtTheSamePlace) {
  const OpenReview review(
      "<GMD><point name='a'/><sphere/><point name='b' center='1,2,3'/><point name='c'/></GMD>");
  ASSERT_EQ(rules(review), (std::vector<std::string>{"missing-centre", "unknown-element", "missing-centre"}));
  ASSERT_TRUE(review.add({about(review.element(ztCAD_ElementPoint, 1)),
                          about(review.element(ztCAD_ElementPoint, 0)), about(nullptr)}));
  EXPECT_EQ(rules(review), (std::vector<std::string>{"too-heavy", "missing-centre", "too-heavy",
                                                     "unknown-element", "too-heavy", "missing-centre"}));
}

TEST(AddedFindings, CanBeAddedAgain) {
  const OpenReview review("<GMD><point name='a' center='1,2,3'/><point name='b' center='1,2,3'/></GMD>");
  ASSERT_TRUE(review.add({about(review.element(ztCAD_ElementPoint, 1))}));
  ztCAD_AddedFinding first = about(review.element(ztCAD_ElementPoint, 0));
  first.rule = "too-light";
  first.count = 7;
  ASSERT_TRUE(review.add({first}));
  EXPECT_EQ(rules(review), (std::vector<std::string>{"too-light", "too-heavy"}));
  EXPECT_EQ(review.findings()[0].count, 7);
}

TEST(AddedFindings, KeepTheLimitTogetherWithTheOthers) {
  const OpenReview review("<GMD><point name='a'/><point name='b' center='1,2,3'/><point name='c'/></GMD>", 2);
  ASSERT_TRUE(review.add({about(review.element(ztCAD_ElementPoint, 1)), about(nullptr)}));
  EXPECT_EQ(rules(review), (std::vector<std::string>{"too-heavy", "missing-centre"}));
  EXPECT_EQ(review.copied().omitted[ztCAD_SeverityWarning], 1);
  EXPECT_EQ(review.copied().omitted[ztCAD_SeverityError], 1);
}

TEST(AddedFindings, AreAllRefusedIfOneIsAboutAForeignElement) {
  const OpenReview review("<GMD><point name='a'/></GMD>");
  const OpenReview other("<GMD><point name='a' center='1,2,3'/></GMD>");
  EXPECT_FALSE(review.add({about(nullptr), about(other.element(ztCAD_ElementPoint))}));
  EXPECT_EQ(rules(review), std::vector<std::string>{"missing-centre"});
}

TEST(AddedFindings, AreRefusedWithAnUnknownSeverity) {
  const OpenReview review("<GMD/>");
  ztCAD_AddedFinding finding = about(nullptr);
  finding.severity = 3;
  EXPECT_FALSE(review.add({finding}));
  EXPECT_TRUE(review.findings().empty());
}

TEST(AddedFindings, AreRefusedIfNoDocumentWasRead) {
  EXPECT_FALSE(OpenReview("<GMD>").add({about(nullptr)}));
  EXPECT_FALSE(OpenReview("<HTML/>").add({about(nullptr)}));
}

// windows-1251 without other markup is read from its bytes, everything else from decoded characters
TEST(AddedFinding, HasTheRightPlaceInEveryEncoding) {
  const std::string cyrillic =
      "<?xml version='1.0' encoding='windows-1251'?><GMD><point name='\xE0' comment='\xE1'/></GMD>";
  std::string utf16 = "\xFF\xFE";
  for (const char c : std::string("<GMD><!-- --><point name='a' comment='b'/></GMD>"))
    utf16 += {c, '\0'};
  const struct {
    std::string text;
    const char* name;
    CopiedPlace element;
    CopiedPlace attribute;
  } rows[] = {
      {cyrillic, "\xD0\xB0", {1, 51, 50}, {1, 67, 66}},
      {cyrillic + "<!-- -->", "\xD0\xB0", {1, 51, 50}, {1, 67, 66}},
      {"<GMD><point name='\xD0\xB0' comment=''/></GMD>", "\xD0\xB0", {1, 6, 5}, {1, 22, 22}},
      {"\xEF\xBB\xBF<GMD><point name='\xD0\xB0' comment=''/></GMD>", "\xD0\xB0", {1, 6, 8}, {1, 22, 25}},
      {utf16, "a", {1, 14, 28}, {1, 30, 60}}};
  const TemporaryFiles files;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    ztCAD_Outcome outcome;
    const ReviewHandle review(ztCAD_reviewFile(files.put("encoded.xml", row.text).c_str(), -1, &outcome));
    ztCAD_GMDDocument* const document = ztCAD_takeReviewedDocument(review.get());
    const ztCAD_Base* const point = ztCAD_getFromDoc(document, ztCAD_ElementPoint, 0);
    const ztCAD_AddedFinding added[] = {about(point), about(point, "comment")};
    EXPECT_TRUE(ztCAD_addFindings(review.get(), added, 2));
    ztCAD_endDocument(document);
    std::vector<CopiedFinding> found;
    for (const CopiedFinding& finding : copyOf(review, outcome).findings)
      if (finding.rule == "too-heavy") found.push_back(finding);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].place, row.element);
    EXPECT_EQ(found[0].name, row.name);
    EXPECT_EQ(found[1].place, row.attribute);
    EXPECT_EQ(found[1].path, "/GMD/point[1]/@comment");
  }
}

// -------------------------------------------------------------------------------- all elements of documents

/// All elements of a document, nested ones included.
std::vector<const ztCAD_Base*> allElements(ztCAD_GMDDocument* document) {
  std::vector<const ztCAD_Base*> elements;
  for (std::int32_t kind = 1; kind <= ztCAD_ElementSphere; ++kind)
    for (std::int32_t i = 0; i < ztCAD_countInDoc(document, kind); ++i)
      elements.push_back(ztCAD_getFromDoc(document, kind, i));
  for (std::size_t next = 0; next < elements.size(); ++next) {
    ztCAD_Base* const holder = const_cast<ztCAD_Base*>(elements[next]);
    const std::int32_t holderKind = ztCAD_getKind(holder);
    const bool isStructure = holderKind == ztCAD_ElementStructure || holderKind == ztCAD_ElementTmplStructure;
    const bool isDetail = holderKind == ztCAD_ElementDetail || holderKind == ztCAD_ElementTmplDetail;
    auto* const structure = reinterpret_cast<ztCAD_commonStructure*>(holder);
    auto* const detail = reinterpret_cast<ztCAD_cmnDetail*>(holder);
    for (std::int32_t kind = 1; kind <= ztCAD_ElementSphere; ++kind) {
      for (std::int32_t i = 0; isStructure && i < ztCAD_countInStructure(structure, kind); ++i)
        elements.push_back(ztCAD_getFromStructure(structure, kind, i));
      for (std::int32_t i = 0; isDetail && i < ztCAD_countInDetail(detail, kind); ++i)
        elements.push_back(ztCAD_getFromDetail(detail, kind, i));
    }
  }
  return elements;
}

TEST(AddedFindings, LocateEveryElementOfTheGoldenDocuments) {
  int located = 0;
  for (const auto& entry : std::filesystem::directory_iterator(ZTCAD_TEST_GOLDEN_FOLDER)) {
    if (entry.path().extension() != ".xml") continue;
    SCOPED_TRACE(entry.path().filename());
    ztCAD_Outcome outcome;
    const ReviewHandle review(ztCAD_reviewFile(entry.path().string().c_str(), -1, &outcome));
    ztCAD_GMDDocument* const document = ztCAD_takeReviewedDocument(review.get());
    if (!document) continue;
    std::vector<ztCAD_AddedFinding> added;
    for (const ztCAD_Base* const element : allElements(document))
      added.push_back(about(element));
    EXPECT_TRUE(ztCAD_addFindings(review.get(), added.data(), static_cast<std::int64_t>(added.size())));
    std::set<std::int64_t> places;
    for (const CopiedFinding& finding : copyOf(review, outcome).findings)
      if (finding.rule == "too-heavy") places.insert(finding.place.offset);
    EXPECT_EQ(places.size(), added.size());
    const std::string bytes = bytesOf(entry.path().string());
    for (const std::int64_t place : places) {
      auto at = static_cast<std::size_t>(place);
      if (bytes.at(at) == '\0') ++at;  // UTF-16, high byte first
      EXPECT_EQ(bytes.at(at), '<');
    }
    located += static_cast<int>(added.size());
    ztCAD_endDocument(document);
  }
  EXPECT_GT(located, 100);
}

}  // namespace
