#include "geometry/vertices.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "geometry/default_locale.h"
#include "geometry/thread_count.h"
#include "node_text.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_Vertices*, ztCAD_Base*>);
static_assert(!std::is_convertible_v<ztCAD_Vertices*, ztCAD_ISerialize*>);

using Reals = std::vector<double>;

ztCAD_Vertices vertices(const Reals& coordinates) {
  ztCAD_Vertices list;
  list.setCoordinates(coordinates);
  return list;
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(Vertices, StorageTextOfAnEmptyListIsALineFeed) { EXPECT_EQ(text(ztCAD_Vertices(), false), "\n"); }

TEST(Vertices, DebugTextOfAnEmptyListIsWordAndParentheses) {
  EXPECT_EQ(text(ztCAD_Vertices(), true), "\nvertices()");
}

TEST(Vertices, StorageTextHasOneLinePerVertex) {
  EXPECT_EQ(text(vertices({0, 0, 0}), false), "\n0, 0, 0;\n");
  EXPECT_EQ(text(vertices({0, 0, 0, 1, 0, 0}), false), "\n0, 0, 0;\n1, 0, 0;\n");
}

TEST(Vertices, DebugTextHasOneLinePerVertex) {
  EXPECT_EQ(text(vertices({1.5, 0, -2}), true), "\nvertices(\ncoord(1.5, 0, -2;)\n)");
  EXPECT_EQ(text(vertices({0, 0, 0, 1, 0, 0}), true), "\nvertices(\ncoord(0, 0, 0;)\ncoord(1, 0, 0;)\n)");
}

TEST(Vertices, ComponentsHaveSixSignificantDigits) {
  EXPECT_EQ(text(vertices({0.1234567, 1e-7, 1234567.0}), false), "\n0.123457, 1e-07, 1.23457e+06;\n");
}

TEST(Vertices, NoTextContainsThePropertyBlock) {
  ztCAD_Vertices list = vertices({1, 2, 3});
  list.setName("list");
  list.property().showable().setColor({1, 2, 3});
  EXPECT_EQ(text(list, false), "\n1, 2, 3;\n");
  EXPECT_EQ(text(list, true), "\nvertices(\ncoord(1, 2, 3;)\n)");
  EXPECT_EQ(written(list), "<vertices>\n1, 2, 3;\n</vertices>");
}

TEST(Vertices, TextsDoNotDependOnTheDefaultLocale) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    EXPECT_EQ(text(vertices({1.5, 123456, -0.25}), false), "\n1.5, 123456, -0.25;\n");
    EXPECT_EQ(text(vertices({1.5, 123456, -0.25}), true), "\nvertices(\ncoord(1.5, 123456, -0.25;)\n)");
  }
}

// ---------------------------------------------------------------------------------------------------- adding

TEST(Vertices, AddAppendsAtTheEnd) {
  ztCAD_Vertices list;
  list.add(ztCAD_Vertex(ztCAD_Coord(1, 2, 3)));
  list.add(ztCAD_Vertex(ztCAD_Coord(4, 5, 6)));
  list.add(ztCAD_Vertex(ztCAD_Coord(1, 2, 3)));
  EXPECT_EQ(list.coordinates(), (Reals{1, 2, 3, 4, 5, 6, 1, 2, 3}));
}

TEST(Vertices, AVertexWithoutAValueIsAddedAsTheOrigin) {
  ztCAD_Vertices list;
  list.add(ztCAD_Vertex(ztCAD_Coord(1, 2, 3)));
  list.add(ztCAD_Vertex());
  list.add(ztCAD_Vertex(ztCAD_Coord(4, 5, 6)));
  EXPECT_EQ(list.coordinates(), (Reals{1, 2, 3, 0, 0, 0, 4, 5, 6}));
  EXPECT_EQ(text(list, true), "\nvertices(\ncoord(1, 2, 3;)\ncoord(0, 0, 0;)\ncoord(4, 5, 6;)\n)");
}

// --------------------------------------------------------------------------------------------------- reading

struct ReadRow {
  const char* name;
  const char* text;
  bool ok;
  Reals coordinates;
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

std::vector<ReadRow> readRows() {
  return {
      {"Empty", "", true, {}},
      {"LineFeed", "\n", true, {}},
      {"OneVertex", "\n1, 2, 3;\n", true, {1, 2, 3}},
      {"TwoVertices", "\n0, 0, 0;\n1, 0, 0;\n", true, {0, 0, 0, 1, 0, 0}},
      {"Compact", "1,2,3;4,5,6", true, {1, 2, 3, 4, 5, 6}},
      {"Duplicates", "1,2,3;1,2,3;", true, {1, 2, 3, 1, 2, 3}},
      {"FourthNumberDropped", "1, 2, 3, 4;", true, {1, 2, 3}},
      {"SixNumbersBeforeTheSemicolon", "1,2,3,4,5,6;7,8,9", true, {1, 2, 3, 7, 8, 9}},
      {"FourthNumberIsAWord", "1, 2, 3, x;", false, {}},
      {"TwoNumbers", "1, 2;", false, {}},
      {"TwoNumbersAndComma", "1, 2,;", false, {}},
      {"OneNumberAndComma", "1,;", false, {}},
      {"OnlyComma", ",", false, {}},
      {"NumberWithoutComma", "1;", true, {}},
      {"WordWithoutComma", "x;y;z", true, {}},
      {"NumbersSeparatedBySpaces", "1 2 3;", true, {}},
      {"OnlySemicolons", ";;;", true, {}},
      {"EmptyPartsIgnored", ",1,,2,,3,;", true, {1, 2, 3}},
      {"WhitespacePart", "1, ,2, 3;", false, {}},
      {"AWordInvalidatesOnlyItsTriple", "1,2,3; 1, x, 3; 4,5,6;", false, {1, 2, 3, 4, 5, 6}},
      {"AnIncompleteTripleInvalidatesOnlyItself", "1,2;4,5,6;7,8", false, {4, 5, 6}},
      {"FailureFirst", "a,b,c;1,2,3;", false, {1, 2, 3}},
      {"FailureLast", "1,2,3;a,b,c", false, {1, 2, 3}},
      {"NumberForms", "+1, .5, 2e3; -0.0, 1E-3, 007", true, {1, .5, 2000, 0, 0.001, 7}},
      {"Overflow", "1e999, 0, 0; 1, 2, 3", false, {1, 2, 3}},
      {"Cyrillic", "один, два, три; 1,2,3", false, {1, 2, 3}},
      {"Emoji", "🙂, 1, 2; 1,2,3", false, {1, 2, 3}},
      {"OwnDebugText", "\nvertices(\ncoord(0, 0, 0;)\ncoord(1, 0, 0;)\n)", false, {}},
      {"WhitespaceAndLineFeeds", "  1 ,\n2\t, 3 \r\n;\r\n", true, {1, 2, 3}},
  };
}

class VerticesReading : public testing::TestWithParam<ReadRow> {};

TEST_P(VerticesReading, KeepsCompleteTriplesAndReportsOthers) {
  ztCAD_Vertices list;
  EXPECT_EQ(list.fromText(fromUtf8(GetParam().text)), GetParam().ok);
  EXPECT_EQ(list.coordinates(), GetParam().coordinates);
}

TEST_P(VerticesReading, ReplacesTheWholeList) {
  ztCAD_Vertices list = vertices({7, 8, 9});
  EXPECT_EQ(list.fromText(fromUtf8(GetParam().text)), GetParam().ok);
  EXPECT_EQ(list.coordinates(), GetParam().coordinates);
}

TEST_P(VerticesReading, ReadsTheTextOfAnElement) {
  const std::string xml = std::string("<vertices>") + GetParam().text + "</vertices>";
  ztCAD_Vertices list = vertices({7, 8, 9});
  EXPECT_EQ(read(list, xml), GetParam().ok);
  EXPECT_EQ(list.coordinates(), GetParam().coordinates);
}

TEST_P(VerticesReading, SetsTheDefaultLocaleToC) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    ztCAD_Vertices list;
    EXPECT_EQ(list.fromText(fromUtf8(GetParam().text)), GetParam().ok);
    EXPECT_TRUE(DefaultLocale::isC());
  }
}

INSTANTIATE_TEST_SUITE_P(Vertices, VerticesReading, testing::ValuesIn(readRows()),
                         [](const auto& row) { return row.param.name; });

TEST(Vertices, ReadsWhatItWrites) {
  for (const std::string xml : {"<vertices>\n</vertices>", "<vertices>\n0, 0, 0;\n</vertices>",
                                "<vertices>\n1.5, 0, -2;\n1e-07, 1.23457e+06, 0.123457;\n</vertices>"})
    EXPECT_EQ(roundTrip<ztCAD_Vertices>(xml), xml);
}

TEST(Vertices, TextOfNestedNodesIsRead) {
  const auto list =
      readFrom<ztCAD_Vertices>("<vertices>1,2,3;<b>4,5,6;</b><!-- 0,0,0; --><![CDATA[7,8,9]]></vertices>");
  EXPECT_EQ(list.coordinates(), (Reals{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(Vertices, ReadingKeepsThePropertyBlock) {
  ztCAD_Vertices list;
  list.setName("list");
  EXPECT_TRUE(read(list, R"(<vertices name="other">1,2,3</vertices>)"));
  EXPECT_EQ(list.name().toStdString(), "list");
}

TEST(Vertices, TwoConfiguredThreadsParseTheSameList) {
  for (const std::int32_t mode : {ztParallel::Logical, ztParallel::Primary}) {
    const ThreadCount two(2, mode);
    ztCAD_Vertices list;
    EXPECT_FALSE(list.fromText("1,2,3;x,y,z;4,5,6"));
    EXPECT_EQ(list.coordinates(), (Reals{1, 2, 3, 4, 5, 6}));
  }
}

// ------------------------------------------------------------------------------------------------ long lists

Reals manyReals() {
  Reals reals;
  for (int i = 0; i < 30000; ++i)
    reals.insert(reals.end(), {i * 0.25, -i / 4.0, 1000.0 - i});
  return reals;
}

std::string expectedStorageText(const Reals& reals) {
  std::string expected = "\n";
  for (std::size_t i = 0; i < reals.size(); i += 3)
    expected += text(ztCAD_Coord(reals[i], reals[i + 1], reals[i + 2]), false) + "\n";
  return expected;
}

TEST(Vertices, ALongListIsWrittenCompletely) {
  const ztCAD_Vertices list = vertices(manyReals());
  const std::string expected = expectedStorageText(list.coordinates());
  ASSERT_GT(expected.size(), 5u * 64 * 1024);
  EXPECT_TRUE(text(list, false) == expected);
  EXPECT_TRUE(written(list) == "<vertices>" + expected + "</vertices>");
}

TEST(Vertices, ALongListIsOneTextNode) {
  ParsedXml xml("<e/>");
  ztcad::DomSink sink(xml.root, xml.document);
  vertices(manyReals()).writeElement(sink);
  const QDomElement element = xml.root.firstChildElement("vertices");
  ASSERT_EQ(element.childNodes().count(), 1);
  EXPECT_TRUE(element.firstChild().isText());
}

TEST(Vertices, ALongListIsReadInOrder) {
  const ztCAD_Vertices list = vertices(manyReals());
  ztCAD_Vertices read;
  EXPECT_TRUE(read.fromText(fromUtf8(text(list, false))));
  EXPECT_TRUE(text(read, false) == text(list, false));
  EXPECT_EQ(read.coordinates().size(), 90000u);
}

// ---------------------------------------------------------------------------------------------------- copies

TEST(Vertices, ChangingACopyKeepsTheSource) {
  const ztCAD_Vertices source = vertices({1, 2, 3});
  ztCAD_Vertices copy = source;
  copy.add(ztCAD_Vertex(ztCAD_Coord(4, 5, 6)));
  EXPECT_EQ(source.coordinates(), (Reals{1, 2, 3}));
  EXPECT_EQ(copy.coordinates(), (Reals{1, 2, 3, 4, 5, 6}));
}

TEST(Vertices, ACopyHasAnEmptyPropertyBlock) {
  ztCAD_Vertices source = vertices({1, 2, 3});
  source.setName("source");
  const ztCAD_Vertices copy = source;
  EXPECT_EQ(copy.name().toStdString(), "");
}

TEST(Vertices, AssignmentCopiesOnlyTheCoordinates) {
  ztCAD_Vertices source = vertices({1, 2, 3});
  source.setName("source");
  ztCAD_Vertices assigned = vertices({7, 8, 9});
  assigned.setName("assigned");
  EXPECT_EQ(&(assigned = source), &assigned);
  EXPECT_EQ(assigned.coordinates(), (Reals{1, 2, 3}));
  EXPECT_EQ(assigned.name().toStdString(), "assigned");
  assigned.setCoordinates({});
  EXPECT_EQ(source.coordinates(), (Reals{1, 2, 3}));
}

TEST(Vertices, AssignmentToItselfChangesNothing) {
  ztCAD_Vertices list = vertices({1, 2, 3});
  list.setName("list");
  const ztCAD_Vertices& itself = list;
  list = itself;
  EXPECT_EQ(list.coordinates(), (Reals{1, 2, 3}));
  EXPECT_EQ(list.name().toStdString(), "list");
}

TEST(Vertices, AnAddedVertexIsIndependentOfItsSource) {
  ztCAD_Vertices list;
  ztCAD_Vertex vertex(ztCAD_Coord(1, 2, 3));
  list.add(vertex);
  vertex.setCoord(ztCAD_Coord(4, 5, 6));
  EXPECT_EQ(list.coordinates(), (Reals{1, 2, 3}));
}

}  // namespace
