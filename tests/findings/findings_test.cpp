#include <gtest/gtest.h>
#include <filesystem>
#include <string>
#include <vector>

#include "reviewed.h"

namespace {

using Rules = std::vector<std::string>;

std::string document(const std::string& content) { return "<GMD>" + content + "</GMD>"; }

/// The only finding of a document with this content.
CopiedFinding only(const std::string& content) {
  const Reviewed reviewed = reviewText(document(content));
  EXPECT_EQ(reviewed.findings.size(), 1u);
  EXPECT_TRUE(reviewed.keepsTheLaw());
  return reviewed.findings.at(0);
}

TEST(Finding, NamesElementRuleAndValues) {
  const CopiedFinding finding = only("<structure name='arm'><point name='hinge'/></structure>");
  EXPECT_EQ(finding.severity, ztCAD_SeverityError);
  EXPECT_EQ(finding.rule, "missing-centre");
  EXPECT_EQ(finding.message, "The point \"hinge\" has no centre.");
  EXPECT_EQ(finding.path, "/GMD/structure[1]/point[1]");
  EXPECT_EQ(finding.attribute, std::nullopt);
  EXPECT_EQ(finding.kind, "point");
  EXPECT_EQ(finding.name, "hinge");
  EXPECT_EQ(finding.place, (CopiedPlace{1, 28, 27}));
  EXPECT_EQ(finding.count, 1);
  EXPECT_TRUE(finding.places.empty());
}

TEST(Finding, IsAtTheAttributeThatItIsAbout) {
  const CopiedFinding finding = only("\n <point name='hinge'\tcenter='x'/>");
  EXPECT_EQ(finding.message,
            "The centre \"x\" of the point \"hinge\" is not a list of one to three numbers.");
  EXPECT_EQ(finding.path, "/GMD/point[1]/@center");
  EXPECT_EQ(finding.attribute, "center");
  EXPECT_EQ(finding.place, (CopiedPlace{2, 22, 27}));
}

TEST(Finding, IsAtTheAttributesOfSiblingsToo) {
  const Reviewed reviewed = reviewText(document(
      "<point name='a' center='x'/>\n<point name='b' center='y'/>\n<point name='long' center='z'/>"));
  ASSERT_EQ(reviewed.findings.size(), 3u);
  EXPECT_EQ(reviewed.findings[1].place, (CopiedPlace{2, 17, 50}));
  EXPECT_EQ(reviewed.findings[1].path, "/GMD/point[2]/@center");
  EXPECT_EQ(reviewed.findings[2].place, (CopiedPlace{3, 20, 82}));
}

TEST(Finding, NumbersElementsAmongSiblingsOfTheirTag) {
  const CopiedFinding finding = only(
      "<point name='a' center='1,2,3'/><structure name='s'/><x:y/><structure name='t'>"
      "<detail name='d' MIP='MIP,1,2,3,4,5,6,7,8,9,10'/></structure>");
  EXPECT_EQ(finding.rule, "unknown-element");
  EXPECT_EQ(finding.path, "/GMD/x:y[1]");
}

TEST(Finding, BelongsToTheNearestElementOfTheFormat) {
  const CopiedFinding finding =
      only("<line name='edge' method='polyline'><vertices>1,2,3;x,y;</vertices></line>");
  EXPECT_EQ(finding.path, "/GMD/line[1]/vertices[1]");
  EXPECT_EQ(finding.kind, "line");
  EXPECT_EQ(finding.name, "edge");
}

TEST(Finding, AboutAnAttributeThatNobodyReadsBelongsToItsElement) {
  const CopiedFinding finding = only("<point name='hinge' center='1,2,3' Color=''/>");
  EXPECT_EQ(finding.kind, "point");
  EXPECT_EQ(finding.name, "hinge");
  EXPECT_EQ(finding.message, "The attribute \"Color\" has no meaning here; it is skipped.");
}

TEST(Finding, ShortensLongValues) {
  const CopiedFinding finding = only("<point name='hinge' center='" + std::string(1000, 'x') + "'/>");
  EXPECT_EQ(finding.message, "The centre \"" + std::string(60, 'x') +
                                 "...\" of the point \"hinge\" is not a list of one to three numbers.");
}

TEST(Finding, ShowsNoControlCharacters) {
  EXPECT_EQ(only("<point name='a&#10;b' center='x'/>").message,
            "The centre \"x\" of the point \"a?b\" is not a list of one to three numbers.");
}

TEST(Findings, OfOneListAndRuleAreOneFinding) {
  std::string list;
  for (int i = 0; i < 1000; ++i)
    list += "\n1, 2;";
  const CopiedFinding finding =
      only("<line name='edge' method='polyline'><vertices>" + list + "</vertices></line>");
  EXPECT_EQ(finding.rule, "bad-list-piece");
  EXPECT_EQ(finding.count, 1000);
  ASSERT_EQ(finding.places.size(), 10u);
  EXPECT_EQ(finding.places[0], (CopiedPlace{2, 1, 52}));
  EXPECT_EQ(finding.places[9], (CopiedPlace{11, 1, 106}));
}

TEST(Findings, InATextOfSeveralPiecesHaveTheirPlaces) {
  const CopiedFinding finding = only(
      "<line name='edge' method='polyline'><vertices>1,2,3;<![CDATA[4,5;6,7,8;]]> 9,x;</vertices></line>");
  EXPECT_EQ(finding.count, 2);
  ASSERT_EQ(finding.places.size(), 2u);
  EXPECT_EQ(finding.places[0], (CopiedPlace{1, 67, 66}));
  EXPECT_EQ(finding.places[1], (CopiedPlace{1, 81, 80}));
}

TEST(Findings, AreInTheOrderOfTheText) {
  const Reviewed reviewed = reviewText(
      document("<!--c--><point name='a' name='a' center='1,2,3' Color=''/><point name='a' center='1'/>"));
  EXPECT_EQ(reviewed.rules(), (Rules{"comment-not-kept", "repeated-attribute", "unknown-attribute",
                                     "name-renamed", "short-centre"}));
}

TEST(Findings, BeyondTheLimitAreCountedBySeverity) {
  const std::string text = document(
      "<point name='a' center='1'/><point name='b'/><point name='c'/><point name='a' center='1,2,3'/><?p?>");
  for (std::int64_t limit = 0; limit <= 6; ++limit) {
    const Reviewed all = reviewText(text);
    const Reviewed some = reviewText(text, limit);
    ASSERT_EQ(all.findings.size(), 5u);
    ASSERT_EQ(static_cast<std::int64_t>(some.findings.size()), std::min<std::int64_t>(limit, 5));
    EXPECT_TRUE(std::equal(some.findings.begin(), some.findings.end(), all.findings.begin())) << limit;
    std::int64_t omitted[3] = {};
    for (std::size_t i = some.findings.size(); i < all.findings.size(); ++i)
      ++omitted[all.findings[i].severity];
    for (int severity = 0; severity < 3; ++severity)
      EXPECT_EQ(some.omitted[severity], omitted[severity]) << limit;
  }
}

TEST(Findings, OfElementsThatReadWellAreNoErrors) {
  const Reviewed reviewed =
      reviewText(document("<pointRef/><structure name='' color='red'/><solid name='s' method='triangulation' "
                          "MIP='x'><vertices/><faces/></solid>"));
  EXPECT_EQ(reviewed.rules(),
            (Rules{"missing-name", "name-renamed", "empty-name", "bad-colour", "bad-mass-inertia"}));
  EXPECT_EQ(reviewed.errors(), 0);
  EXPECT_TRUE(reviewed.keepsTheLaw());
}

TEST(Findings, BeforeAHeaderAreNoErrors) {
  const Reviewed reviewed =
      reviewText(document("<point name='a'/><header majorVersion='1' minorVersion='2'/>"));
  EXPECT_EQ(reviewed.rules(), (Rules{"missing-centre", "header-not-first"}));
  EXPECT_EQ(reviewed.outcome.code, 0);
  EXPECT_FALSE(reviewed.outcome.fault);
  EXPECT_EQ(reviewed.errors(), 0);
}

TEST(Findings, BeforeAHeaderAreErrorsIfTheDocumentCheckFails) {
  const Reviewed reviewed = reviewText(document(
      "<structure name='s'><point name='a'/></structure><header majorVersion='1' minorVersion='2'/>"));
  EXPECT_EQ(reviewed.outcome.code, ztCAD_ResultNotADocument);
  EXPECT_FALSE(reviewed.outcome.fault);
  EXPECT_EQ(reviewed.errors(), 1);
}

TEST(Findings, KeepTheLawUnderEveryLimit) {
  for (const char* const content :
       {"<point name='a'/>", "<point name='a'/><header/>", "<pointRef/>",
        "<point name='a'/><header/><point/>",
        ("<template_detail name='d' MIP='MIP,1,2,3,4,5,6,7,8,9,10'/><template_detail name='d' "
         "MIP='MIP,1,2,3,4,5,6,7,8,9,10'/>")})
    for (std::int64_t limit = -1; limit < 4; ++limit)
      EXPECT_TRUE(reviewText(document(content), limit).keepsTheLaw()) << content << limit;
}

TEST(Findings, AboutAnIllFormedTextAreOneError) {
  const Reviewed reviewed = reviewText("<!--c--><GMD>\n<point/>\n<\x20");
  ASSERT_EQ(reviewed.findings.size(), 1u);
  EXPECT_EQ(reviewed.findings[0].rule, "not-well-formed");
  EXPECT_EQ(reviewed.findings[0].message,
            "The text is not well-formed: " + std::string(reviewed.outcome.message) + ".");
  EXPECT_EQ(reviewed.findings[0].place.line, reviewed.outcome.line);
  EXPECT_EQ(reviewed.findings[0].place.column, reviewed.outcome.column);
  EXPECT_EQ(reviewed.findings[0].path, "/GMD");
}

TEST(Findings, OfSkippedElementsAreOneForEach) {
  EXPECT_EQ(only("<Point Color='' a='' a=''>text<b/><b/></Point>").rule, "unknown-element");
  EXPECT_EQ(only("<line method='x' Color=''>text<b/></line>").rule, "unknown-method");
}

TEST(Findings, DoNotChangeTheDocument) {
  const std::string text =
      document("<point name='a' center='1.5,2,3' Color=''/><point name='a' center='1'/>");
  ztCAD_Outcome outcome;
  const ReviewHandle review(ztCAD_reviewText(text.c_str(), -1, -1, &outcome));
  ztCAD_GMDDocument* const reviewed = ztCAD_takeReviewedDocument(review.get());
  ztCAD_GMDDocument* const loaded = ztCAD_loadDocumentFromText(text.c_str(), -1, &outcome);
  std::string reviewedText;
  std::string loadedText;
  GMDDocumentToString(reviewed, reviewedText, true);
  GMDDocumentToString(loaded, loadedText, true);
  EXPECT_EQ(reviewedText, loadedText);
  EXPECT_FALSE(loadedText.empty());
  ztCAD_endDocument(reviewed);
  ztCAD_endDocument(loaded);
}

TEST(Review, HandsItsDocumentOverOnce) {
  ztCAD_Outcome outcome;
  ReviewHandle review(ztCAD_reviewText("<GMD/>", -1, -1, &outcome));
  ztCAD_GMDDocument* const document = ztCAD_takeReviewedDocument(review.get());
  EXPECT_NE(document, nullptr);
  EXPECT_EQ(ztCAD_takeReviewedDocument(review.get()), nullptr);
  review.reset();
  EXPECT_TRUE(checkGMDDocument(document)) << "the document outlives the review";
  ztCAD_endDocument(document);
}

TEST(Review, OfATextThatDoesNotLoadHasNoDocument) {
  ztCAD_Outcome outcome;
  const ReviewHandle review(ztCAD_reviewText("<GMD>", -1, -1, &outcome));
  EXPECT_NE(review, nullptr);
  EXPECT_EQ(ztCAD_takeReviewedDocument(review.get()), nullptr);
}

TEST(Review, OfAMissingFileHasNoFindings) {
  const TemporaryFiles files;
  const Reviewed reviewed = reviewFile(files.path("none.xml"));
  EXPECT_EQ(reviewed.outcome.code, ztCAD_ResultFileMissing);
  EXPECT_TRUE(reviewed.findings.empty());
}

TEST(Review, OfNullAndEndedHandlesIsEmpty) {
  ztCAD_Outcome outcome;
  ztCAD_Review* const ended = ztCAD_reviewText("<GMD><a/></GMD>", -1, -1, &outcome);
  ztCAD_endReview(ended);
  for (ztCAD_Review* const review : {static_cast<ztCAD_Review*>(nullptr), ended}) {
    EXPECT_EQ(ztCAD_findingCount(review), 0);
    EXPECT_EQ(ztCAD_findingAt(review, 0), nullptr);
    EXPECT_EQ(ztCAD_omittedFindings(review, ztCAD_SeverityError), 0);
    EXPECT_EQ(ztCAD_takeReviewedDocument(review), nullptr);
    ztCAD_endReview(review);
  }
}

TEST(Review, HasNoFindingOutOfRange) {
  ztCAD_Outcome outcome;
  const ReviewHandle review(ztCAD_reviewText("<GMD><a/></GMD>", -1, -1, &outcome));
  EXPECT_NE(ztCAD_findingAt(review.get(), 0), nullptr);
  EXPECT_EQ(ztCAD_findingAt(review.get(), 1), nullptr);
  EXPECT_EQ(ztCAD_findingAt(review.get(), -1), nullptr);
  EXPECT_EQ(ztCAD_omittedFindings(review.get(), 3), 0);
  EXPECT_EQ(ztCAD_omittedFindings(review.get(), -1), 0);
}

// ------------------------------------------------------------------------------------------------ positions

struct Encoding {
  const char* name;
  const char* declared;
  std::string (*encode)(const std::u32string& text);
};

std::string units(const std::u32string& text, int size, bool isBigEndian, bool hasMark) {
  std::string bytes;
  const auto append = [&](char32_t unit) {
    for (int i = 0; i < size; ++i)
      bytes += static_cast<char>(unit >> (8 * (isBigEndian ? size - 1 - i : i)));
  };
  if (hasMark) append(0xfeff);
  for (const char32_t c : text) {
    if (size == 2 && c > 0xffff) {
      append((c >> 10) + 0xd7c0);
      append((c & 0x3ff) + 0xdc00);
    } else {
      append(c);
    }
  }
  return bytes;
}

std::string utf8(const std::u32string& text) {
  return QString::fromUcs4(text.data(), static_cast<int>(text.size())).toStdString();
}

/// Cyrillic letters from "А" to "я" at an offset; other characters are ASCII.
std::string windows1251(const std::u32string& text) {
  std::string bytes;
  for (const char32_t c : text)
    bytes += static_cast<char>(c < 0x80 ? c : c - 0x410 + 0xc0);
  return bytes;
}

const Encoding encodings[] = {
    {"utf8", "UTF-8", utf8},
    {"utf8 with mark", "UTF-8", [](const std::u32string& text) { return "\xEF\xBB\xBF" + utf8(text); }},
    {"utf16 little endian", "UTF-16", [](const std::u32string& text) { return units(text, 2, false, true); }},
    {"utf16 big endian", "UTF-16", [](const std::u32string& text) { return units(text, 2, true, true); }},
    {"utf16 without mark", "UTF-16LE",
     [](const std::u32string& text) { return units(text, 2, false, false); }},
    {"utf32 little endian", "UTF-32", [](const std::u32string& text) { return units(text, 4, false, true); }},
    {"utf32 big endian", "UTF-32", [](const std::u32string& text) { return units(text, 4, true, true); }},
    {"windows-1251", "windows-1251", windows1251},
};

TEST(FindingPlaces, AreExactInEveryEncoding) {
  for (const Encoding& encoding : encodings) {
    SCOPED_TRACE(encoding.name);
    const bool isWide = std::string(encoding.name) != "windows-1251";
    const std::u32string smile = isWide ? U"\U0001f600" : U"x";
    const std::string declared = encoding.declared;
    std::u32string text =
        U"<?xml version='1.0' encoding='" + std::u32string(declared.begin(), declared.end()) + U"'?>\r\n";
    text += U"<GMD><!-- Привет " + smile + U" -->\r";
    text += U" <point comment='Ось " + smile + U"' name='Ёж";
    text = text.replace(text.find(U'Ё'), 1, U"Е");
    const std::size_t attribute = text.size() + 2;
    text += U"' center='x'/>\n<structure name='Рама'><line method='polyline' name='Ы'>";
    const std::size_t list = text.size();
    text += U"<vertices>\n1, 2, 3; ";
    const std::size_t piece = text.size();
    text += U"4;5, 6;</vertices></line></structure></GMD>";
    const Reviewed reviewed = reviewBytes(encoding.encode(text));
    EXPECT_EQ(reviewed.outcome.code, ztCAD_ResultLoaded) << reviewed.outcome.message;
    const auto offsetOf = [&](std::size_t at) {
      return static_cast<std::int64_t>(encoding.encode(text.substr(0, at)).size());
    };
    std::vector<CopiedFinding> found;
    for (const CopiedFinding& finding : reviewed.findings)
      if (finding.rule == "bad-centre" || finding.rule == "bad-list-piece" ||
          finding.rule == "skipped-list-piece")
        found.push_back(finding);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].place, (CopiedPlace{3, 35, offsetOf(attribute)}));
    EXPECT_EQ(found[1].place.line, 4);
    EXPECT_EQ(found[1].place.offset, offsetOf(list));
    ASSERT_EQ(found[2].places.size(), 1u);
    EXPECT_EQ(found[2].places[0], (CopiedPlace{5, 10, offsetOf(piece)}));
  }
}

TEST(FindingPlaces, CountBytesThatAreInvalid) {
  const std::string text = "<GMD><point name='\xff\xd0\xaf\xe2\x82' center='x'/></GMD>";
  const Reviewed reviewed = reviewBytes(text);
  ASSERT_EQ(reviewed.rules(), (Rules{"invalid-bytes", "bad-centre"}));
  EXPECT_EQ(reviewed.findings[0].count, 3);
  EXPECT_EQ(reviewed.findings[0].place, (CopiedPlace{1, 19, 18}));
  EXPECT_EQ(reviewed.findings[1].place.offset, static_cast<std::int64_t>(text.find("center")));
  EXPECT_EQ(reviewed.findings[1].place.column, 25);
}

}  // namespace
