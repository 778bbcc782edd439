#include <gtest/gtest.h>
#include <QFileDevice>
#include <string>

#include "core/document/findings.h"
#include "core/document/loading.h"
#include "core/document/saving.h"
#include "lowered_limits.h"
#include "sample_documents.h"

// Texts and lists beyond their limits, which are lowered here: the usual ones take gigabytes.

namespace {

using ztcad::LoadOutcome;
using ztcad::NestedOwner;
using ztcad::TextRules;

constexpr std::size_t longest = 24;  // all words of the format are shorter

/// The outcome of a load, and of a review of the same text, which must agree.
LoadOutcome outcomeOf(const std::string& xml) {
  ztCAD_GMDDocument document("");
  const LoadOutcome outcome =
      ztcad::DocumentLoader(document, NestedOwner::Document).loadText(xml, TextRules::Strict);
  ztCAD_GMDDocument reviewedDocument("");
  ztcad::ReviewedLoad reviewed;
  const LoadOutcome again = ztcad::DocumentLoader(reviewedDocument, NestedOwner::Document, -1, reviewed)
                                .loadText(xml, TextRules::Strict);
  EXPECT_EQ(again.code, outcome.code) << xml;
  EXPECT_EQ(again.message, outcome.message) << xml;
  EXPECT_EQ(again.line, outcome.line) << xml;
  EXPECT_EQ(again.column, outcome.column) << xml;
  if (outcome.code != 0) {
    const auto& findings = reviewed.findings().kept;
    EXPECT_EQ(findings.size(), 1U) << xml;
    if (findings.empty()) return outcome;
    EXPECT_STREQ(findings[0].rule, "text-refused") << xml;
    EXPECT_EQ(findings[0].place.line, outcome.line) << xml;
    EXPECT_EQ(findings[0].place.column, outcome.column) << xml;
  }
  return outcome;
}

struct LongText {
  const char* name;
  std::string before;  // on the second line
  std::string unit;    // of the text, repeated
  std::string after;
  std::size_t unitsEach = 1;
  int column = 0;  // where the text that is too long is reported
};

void PrintTo(const LongText& row, std::ostream* out) { *out << row.name; }

std::string withText(const LongText& row, std::size_t units) {
  std::string text = "<GMD>\n" + row.before;
  for (std::size_t i = 0; i < units / row.unitsEach; ++i)
    text += row.unit;
  return text + row.after + "</GMD>";
}

class LongTexts : public testing::TestWithParam<LongText> {};

TEST_P(LongTexts, AreRefusedWithTheirPlace) {
  const LoweredLimits lowered(LoweredLimits::text(longest));
  EXPECT_EQ(outcomeOf(withText(GetParam(), longest)).code, 0);
  const LoadOutcome refused = outcomeOf(withText(GetParam(), longest + GetParam().unitsEach));
  EXPECT_EQ(refused.code, 110);
  EXPECT_FALSE(refused.replaced);
  EXPECT_EQ(refused.message, QLatin1String("text too long"));
  EXPECT_EQ(refused.line, 2);
  EXPECT_EQ(refused.column, GetParam().column);
}

TEST_P(LongTexts, EmptyTheDocumentOfALenientLoad) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"P"});
  const LoweredLimits lowered(LoweredLimits::text(longest));
  const StringLoad load = loadString(document, withText(GetParam(), longest + GetParam().unitsEach));
  EXPECT_FALSE(load.parsed);
  EXPECT_EQ(load.message, "text too long");
  EXPECT_EQ(load.line, 2);
  EXPECT_EQ(namesIn(document.content().points), Names{});
}

const std::string general = "<!DOCTYPE GMD>";  // is not plain

INSTANTIATE_TEST_SUITE_P(
    Limits, LongTexts,
    testing::Values(LongText{"Name", "<point center='1' name='", "n", "'/>", 1, 25},
                    LongText{"NameInCyrillic", "<point center='1' name='", "\xD0\x96", "'/>", 1, 25},
                    LongText{"NameInEmoji", "<point center='1' name='", "\xF0\x9F\x98\x80", "'/>", 2, 25},
                    LongText{"NameInReferences", "<point center='1' name='", "&amp;", "'/>", 1, 25},
                    LongText{"NameInReferencesBeyondFfff", "<point center='1' name='", "&#x1f600;", "'/>", 2,
                             25},
                    LongText{"Comment", "<point name='P' center='1' comment='", "c", "'/>", 1, 37},
                    LongText{"Tag", "<", "t", "/>", 1, 2},
                    LongText{"UnreadAttribute", "<point center='1' name='P' ", "a", "='1'/>", 1, 28},
                    LongText{"PieceOfAList", "<line name='L' method='polyline'><vertices>", "x",
                             "</vertices></line>", 1, 44}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Limits, ATextThatNobodyReadsHasNoLimit) {
  const LoweredLimits lowered(LoweredLimits::text(longest));
  const std::string text(2 * longest, 't');
  EXPECT_EQ(outcomeOf("<!--" + text + "--><GMD><?" + std::string("p ") + text + "?><x>" + text +
                      "</x><y z='" + text + "'/>" + "</GMD>")
                .code,
            0);
}

std::string withVertices(int count) {
  std::string text = "<GMD>\n<line name='L' method='polyline'><vertices>";
  for (int i = 0; i < count; ++i)
    text += "1, 2, 3;";
  return text + "</vertices></line></GMD>";
}

std::string withFacets(int count) {
  std::string text = "<GMD>\n<solid name='L' method='triangulation'><vertices>1, 2, 3;</vertices><faces>";
  for (int i = 0; i < count; ++i)
    text += i % 2 == 0 ? "1, 2, 3;" : " +1, 2, 3;";  // not a usual spelling
  return text + "</faces></solid></GMD>";
}

TEST(Limits, ALongListIsRefusedWithItsPlace) {
  constexpr int most = 300;  // more than are read at once
  const LoweredLimits lowered(LoweredLimits::list(most));
  const std::string prefixes[] = {"", "<!DOCTYPE GMD>"};
  for (const std::string& prefix : prefixes) {
    EXPECT_EQ(outcomeOf(prefix + withVertices(most)).code, 0);
    EXPECT_EQ(outcomeOf(prefix + withFacets(most)).code, 0);
    for (const auto& [text, column] : {std::pair(withVertices(most + 1), 44), {withFacets(most + 1), 76}}) {
      const LoadOutcome refused = outcomeOf(prefix + text);
      EXPECT_EQ(refused.code, 110);
      EXPECT_EQ(refused.message, QLatin1String("list too long"));
      EXPECT_EQ(refused.line, 2);
      EXPECT_EQ(refused.column, column);
    }
  }
}

class SavedLimits : public testing::Test {
 protected:
  void expectRefused(ztCAD_GMDDocument& document) const {
    const ztcad::FileError error = ztcad::saveDocument(document, target);
    EXPECT_EQ(error.code, QFileDevice::WriteError);
    EXPECT_EQ(error.message, QLatin1String("the text is too long to be loaded again"));
    EXPECT_EQ(bytesOf(target), "earlier");
  }

  TemporaryFiles files;
  const std::string target = files.put("document.xml", "earlier");
};

TEST_F(SavedLimits, ATextThatWouldNotLoadAgainIsRefused) {
  constexpr int most = 1000;  // more than short texts, which are not counted, and file names hold
  ztCAD_GMDDocument document("");
  addPoints(document, {std::string(most + 1, 'n')});
  const LoweredLimits lowered(LoweredLimits::text(most));
  expectRefused(document);
  document.content().points.front().setName(QString(most, QLatin1Char('n')));
  EXPECT_EQ(ztcad::saveDocument(document, target).code, 0);
  ztCAD_GMDDocument again("");
  EXPECT_EQ(loadFile(again, target).code, 0);
}

TEST_F(SavedLimits, AListThatWouldNotLoadAgainIsRefused) {
  ztCAD_GMDDocument document("");
  EXPECT_EQ(loadBytes(document, withVertices(3)).code, 0);
  const LoweredLimits lowered(LoweredLimits::list(2));
  expectRefused(document);
}

TEST_F(SavedLimits, MoreStructuresThanMemoryCouldHoldAreRefused) {
  ztCAD_GMDDocument document("");
  ztCAD_Structure inner;
  ztCAD_Structure middle;
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(middle.addStructure(inner));
    EXPECT_FALSE(document.content().structures.appendNew().addStructure(middle));
  }
  constexpr std::size_t written = 3 * (1 + 1 + 3);
  {
    const LoweredLimits lowered(LoweredLimits::structures(written - 1));
    expectRefused(document);
  }
  const LoweredLimits lowered(LoweredLimits::structures(written));
  EXPECT_EQ(ztcad::saveDocument(document, target).code, 0);
}

}  // namespace
