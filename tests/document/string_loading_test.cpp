#include <gtest/gtest.h>
#include <QDomDocument>
#include <string>

#include "captured_debug_output.h"
#include "recorded_answers.h"
#include "sample_documents.h"

// Loading from a string: what parses, how bytes are decoded, and what a failed parse leaves in the document.

namespace {

using namespace std::string_literals;

TEST(StringLoading, SuccessYieldsNoMessageAndNoPosition) {
  ztCAD_GMDDocument document("");
  const StringLoad load = loadString(document, documentWith("<point name='A' center='1,2,3'/>"));
  EXPECT_TRUE(load.parsed);
  EXPECT_EQ(load.message, "");
  EXPECT_EQ(load.line, 0);
  EXPECT_EQ(load.column, 0);
  EXPECT_EQ(namesIn(document.content().points), Names{"A"});
}

TEST(StringLoading, ReplacesTheContentAndKeepsTheHeaderIfTheTextHasNone) {
  ztCAD_GMDDocument document("kept");
  addPoints(document, {"old"});
  addTemplatePoints(document, {"oldTemplate"});
  EXPECT_TRUE(loadString(document, "<GMD/>").parsed);
  EXPECT_TRUE(document.content().points.empty());
  EXPECT_TRUE(document.content().templatePoints.empty());
  EXPECT_EQ(document.header().inform(), QString("kept"));
}

TEST(StringLoading, ReadsTheHeader) {
  ztCAD_GMDDocument document("");
  loadString(document, "<GMD><header majorVersion='1' minorVersion='2' inform='i' producerName='p'/></GMD>");
  EXPECT_EQ(document.header().majorVersion(), 1u);
  EXPECT_EQ(document.header().minorVersion(), 2u);
  EXPECT_EQ(document.header().inform(), QString("i"));
  EXPECT_FALSE(document.header().producerName());
}

TEST(StringLoading, UnifiesNames) {
  ztCAD_GMDDocument document("");
  loadString(document, "<GMD><templatePoint name='A'/><point name='A'/><point name='A'/></GMD>");
  EXPECT_EQ(namesIn(document.content().points), (Names{"A", "A_$1"}));
  EXPECT_EQ(namesIn(document.content().templatePoints), Names{"A_$2"});
}

TEST(StringLoading, AcceptsAnyRoot) {
  ztCAD_GMDDocument document("");
  EXPECT_TRUE(loadString(document, "<other><point name='A' center='1'/></other>").parsed);
  EXPECT_EQ(namesIn(document.content().points), Names{"A"});
  EXPECT_TRUE(loadString(document, "<point name='root'><point name='child'/></point>").parsed);
  EXPECT_EQ(namesIn(document.content().points), Names{"child"});
}

TEST(StringLoading, DoesNotRunTheCheckOrLogMessages) {
  const CapturedDebugOutput output;
  ztCAD_GMDDocument document("");
  EXPECT_TRUE(loadString(document,
                         "<GMD><templatePoint name='A_$1'/><templatePoint name='A'/><templatePoint name='A'/>"
                         "</GMD>")
                  .parsed);
  EXPECT_FALSE(loadString(document, "<GMD>").parsed);
  EXPECT_EQ(output.messages(), std::vector<std::string>{});
}

// ---------------------------------------------------------------------------------------------- failed parse

/// The names of the points below the root of a tree.
Names pointsBelowRoot(const QDomDocument& tree) {
  Names names;
  for (QDomElement child = tree.documentElement().firstChildElement("point"); !child.isNull();
       child = child.nextSiblingElement("point"))
    names.push_back(child.attribute("name").toStdString());
  return names;
}

const char* const malformed[] = {
    "",
    " ",
    "GMD",
    "<",
    "<GMD",
    "<GMD>",
    "<GMD><point name='A'/>",
    "<GMD><point name='A'/><point name='B'",
    "<GMD><point name='A'/><point name='B'>",
    "<GMD><point name='A'/><point name='B'></pt></GMD>",
    "<GMD><point name='A'/><point name=B/></GMD>",
    "<GMD>\n<point name='A'/>\n  <point name='B'/>\n</GMd>",
    "<GMD><point name='A'/></GMD><GMD/>",
    "<GMD><point name='A'/></GMD>text",
    "<GMD><point name='Ё'/>\n&",
    "<GMD><point name='A'/><!-- -- --></GMD>",
    "<GMD><point name='A'/><![CDATA[</GMD>",
    "<?xml version='1.0'?>",
    "<?xml version='1.0' encoding='none'?><GMD",
};

TEST(StringLoading, MessageAndPositionOfAFailureAreThoseOfQt) {
  RecordedAnswers recorded("failed_string_loads");
  for (const char* text : malformed) {
    ztCAD_GMDDocument document("");
    const StringLoad load = loadString(document, text);
    EXPECT_FALSE(load.parsed) << text;
    EXPECT_NE(load.message, "") << text;
    if (qtIsTheReference) {
      QString message;
      int line = -1;
      int column = -1;
      ASSERT_FALSE(QDomDocument().setContent(QString(text), &message, &line, &column)) << text;
      EXPECT_EQ(load.message, message.toStdString()) << text;
      EXPECT_EQ(load.line, line) << text;
      EXPECT_EQ(load.column, column) << text;
    }
    recorded.expect(std::string("text ") + text,
                    std::to_string(load.line) + ':' + std::to_string(load.column) + ' ' + load.message);
  }
  recorded.finish();
}

TEST(StringLoading, ThePartialTreeOfAFailedParseIsRead) {
  RecordedAnswers recorded("partial_string_loads");
  for (const char* text : malformed) {
    ztCAD_GMDDocument document("");
    addPoints(document, {"old"});
    loadString(document, text);
    const Names points = namesIn(document.content().points);
    const std::string xml = document.xmlText().substr(0, document.xmlText().find(" header state="));
    if (qtIsTheReference) {
      QDomDocument tree;
      ASSERT_FALSE(tree.setContent(QString(text))) << text;
      EXPECT_EQ(points, pointsBelowRoot(tree)) << text;
      EXPECT_EQ(xml, tree.toString(1).toStdString()) << text;
    }
    recorded.expect(std::string("text ") + text, testing::PrintToString(points) + ' ' + xml);
  }
  recorded.finish();
}

TEST(StringLoading, PointsBeforeTheErrorAreRead) {
  ztCAD_GMDDocument document("");
  EXPECT_FALSE(
      loadString(document, "<GMD><point name='A' center='1'/><point name='A' center='2'/><point").parsed);
  EXPECT_EQ(namesIn(document.content().points), (Names{"A", "A_$1"}));
}

TEST(StringLoading, RefusedTextYieldsAMessageAndAnEmptyDocument) {
  std::string deep;
  for (int i = 0; i < 300; ++i)
    deep += "<x>";
  struct Row {
    const char* name;
    std::string text;
  };
  const Row rows[] = {
      {"NUL between points", "<GMD><point name='A' center='1'/>\0<point name='B' center='1'/></GMD>"s},
      {"NUL after the root", "<GMD><point name='A' center='1'/></GMD>\0"s},
      {"NUL only", "\0"s},
      {"entities", "<!DOCTYPE GMD [<!ENTITY e 'x'>]><GMD><point name='A' center='1'/></GMD>"},
      {"too deep", "<GMD><point name='A' center='1'/>" + deep},
  };
  for (const Row& row : rows) {
    ztCAD_GMDDocument document("");
    addPoints(document, {"old"});
    const StringLoad load = loadString(document, row.text);
    EXPECT_FALSE(load.parsed) << row.name;
    EXPECT_NE(load.message, "") << row.name;
    EXPECT_TRUE(document.content().points.empty()) << row.name;
  }
}

// ------------------------------------------------------------------------------------------------- encodings

struct EncodingRow {
  const char* name;
  std::string bytes;
  const char* pointName;
};

void PrintTo(const EncodingRow& row, std::ostream* out) { *out << row.name; }

class StringEncoding : public testing::TestWithParam<EncodingRow> {};

TEST_P(StringEncoding, NameIsRead) {
  ztCAD_GMDDocument document("");
  const StringLoad load = loadString(document, GetParam().bytes);
  EXPECT_TRUE(load.parsed) << load.message;
  EXPECT_EQ(namesIn(document.content().points), Names{GetParam().pointName});
}

const std::string littleEndian =
    "\xFF\xFE<\0G\0M\0D\0>\0<\0p\0o\0i\0n\0t\0 \0n\0a\0m\0e\0=\0'\0\x01\x04'\0/\0>\0<\0/\0G\0M\0D\0>\0"s;

INSTANTIATE_TEST_SUITE_P(
    Rows, StringEncoding,
    testing::Values(
        EncodingRow{"Utf8WithoutDeclaration", "<GMD><point name='Ёж零😀'/></GMD>", "Ёж零😀"},
        EncodingRow{"Utf8WithByteOrderMark", "\xEF\xBB\xBF<GMD><point name='Ё'/></GMD>", "Ё"},
        EncodingRow{"Utf8WithByteOrderMarkAndDeclaration",
                    "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><GMD><point name='Ё'/></GMD>", "Ё"},
        EncodingRow{"DeclaredWindows1251IsIgnoredForUtf8",
                    "<?xml version='1.0' encoding='windows-1251'?><GMD><point name='Ё'/></GMD>", "Ё"},
        EncodingRow{"DeclaredUtf16IsIgnoredForUtf8",
                    "<?xml version='1.0' encoding='UTF-16'?><GMD><point name='Ё'/></GMD>", "Ё"},
        EncodingRow{"DeclaredWindows1251AppliesToOtherBytes",
                    "<?xml version='1.0' encoding='windows-1251'?><GMD><point name='\xA8\xE6'/></GMD>", "Ёж"},
        EncodingRow{"DeclaredKoi8AppliesToOtherBytes",
                    "<?xml version='1.0' encoding='KOI8-R'?><GMD><point name='\xB3\xD6'/></GMD>", "Ёж"},
        EncodingRow{"Utf16WithByteOrderMark", littleEndian, "Ё"},
        EncodingRow{"ReferenceToEmoji", "<GMD><point name='&#x1f600;&#128512;'/></GMD>", "😀😀"},
        EncodingRow{"LineEndsAndTabsAsReferences", "<GMD><point name='a&#xa;b&#x9;c'/></GMD>", "a\nb\tc"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(StringLoading, Utf16WithoutAByteOrderMarkIsRefusedBecauseOfItsNuls) {
  ztCAD_GMDDocument document("");
  EXPECT_FALSE(loadString(document, littleEndian.substr(2)).parsed);
  EXPECT_TRUE(document.content().points.empty());
}

TEST(StringLoading, OtherBytesWithoutADeclarationAreReadAsByQt) {
  const std::string bytes = "<GMD><point name='\xA8\xE6' center='1'/></GMD>";
  ztCAD_GMDDocument document("");
  const bool parsed = loadString(document, bytes).parsed;
  const Names points = namesIn(document.content().points);
  if (qtIsTheReference) {
    QDomDocument tree;
    EXPECT_EQ(parsed, tree.setContent(QByteArray::fromStdString(bytes)));
    EXPECT_EQ(points, pointsBelowRoot(tree));
  }
  EXPECT_TRUE(parsed);
  EXPECT_EQ(points, Names{"\uFFFD\uFFFD"});
}

}  // namespace
