#include "geometry/line.h"

#include <gtest/gtest.h>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "geometry/default_locale.h"
#include "geometry/thread_count.h"
#include "geometry/watched_view.h"
#include "node_text.h"

namespace {

static_assert(std::is_base_of_v<ztCAD_cmnSelector2<ztCAD_KindLine>, ztCAD_Line>);
static_assert(std::is_base_of_v<ztCAD_cmnSelector2<ztCAD_KindTmplLine>, ztCAD_TmplLine>);
static_assert(std::is_abstract_v<ztCAD_commonLine>, "what is common is no element of its own");
static_assert(std::is_convertible_v<ztCAD_Line*, ztCAD_Base*>);
static_assert(std::is_convertible_v<ztCAD_Line*, ztCAD_baseElement*>);
static_assert(std::is_convertible_v<ztCAD_Line*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_Line*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_Line*, ztCAD_IBaseChecker*>);
static_assert(std::is_convertible_v<ztCAD_Line*, ztCAD_StateCorrect*>);
static_assert(std::is_convertible_v<ztCAD_Line*, ztCAD_INameLCS_Selector*>);

using Reals = std::vector<double>;

ztCAD_Line line(const std::string& name, const Reals& coordinates) {
  ztCAD_Vertices vertices;
  vertices.setCoordinates(coordinates);
  bool nameIsFree = false;
  return {fromUtf8(name), vertices, nameIsFree};
}

ztCAD_Line fullLine() {
  ztCAD_Line made = line("L1", {0, 0, 0, 1.5, 0, -2});
  made.property().attributes().setComment("c");
  made.property().attributes().setInform("i");
  made.property().showable().setColor({255, 0, 0});
  made.property().showable().setVisible(ztCAD_Visible(true));
  made.property().setLcs(ztCAD_LCS(true, Reals(12, 1.0)));
  return made;
}

const char* const fullXml =
    R"(<line LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" color="RGB, 255, 0, 0" comment="c" inform="i" method="polyline" name="L1" visible="true"><vertices>
0, 0, 0;
1.5, 0, -2;
</vertices></line>)";

// ---------------------------------------------------------------------------------------------- construction

TEST(Line, IsEmptyAtFirst) {
  const ztCAD_Line made;
  EXPECT_TRUE(made.vertices().coordinates().empty());
  EXPECT_FALSE(made.readOk());
  EXPECT_FALSE(made.wasRead());
  EXPECT_EQ(made.name().toStdString(), "");
}

TEST(Line, TakesNameAndCoordinatesOfItsConstructor) {
  ztCAD_Vertices vertices;
  vertices.setCoordinates({1, 2, 3});
  vertices.setName("list");
  bool nameIsFree = false;
  const ztCAD_Line made("Линия", vertices, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(made.name().toStdString(), "Линия");
  EXPECT_EQ(made.vertices().coordinates(), (Reals{1, 2, 3}));
  EXPECT_EQ(made.vertices().name().toStdString(), "") << "coordinates only";
  EXPECT_FALSE(made.wasRead());
}

TEST(Line, EveryNameIsFree) {
  for (int i = 0; i < 2; ++i) {
    bool nameIsFree = false;
    const ztCAD_Line made("L1", ztCAD_Vertices(), nameIsFree);
    EXPECT_TRUE(nameIsFree);
  }
}

TEST(Line, TellsItsElementAndItsWordForCoordinateSystems) {
  EXPECT_EQ(ztCAD_Line().elementName().toStdString(), "line");
  EXPECT_EQ(ztCAD_Line().lcsWord().toStdString(), "LCS");
  EXPECT_EQ(ztCAD_TmplLine().elementName().toStdString(), "templateLine");
  EXPECT_EQ(ztCAD_TmplLine().lcsWord().toStdString(), "MCS");
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(Line, StorageTextNamesMethodPropertiesAndVertices) {
  EXPECT_EQ(
      text(line("L1", {0, 0, 0, 1.5, 0, -2}), false),
      "\npolyline(method=pointXYZprop=attr=(name=L1, comment=, inform=) ,color=visible=\n0, 0, 0;\n1.5, 0, -2;\n);");
  EXPECT_EQ(text(ztCAD_Line(), false),
            "\npolyline(method=pointXYZprop=attr=(name=, comment=, inform=) ,color=visible=\n);");
}

TEST(Line, DebugTextPassesTheFormOnToTheVertices) {
  EXPECT_EQ(
      text(line("L1", {0, 0, 0, 1.5, 0, -2}), true),
      "\npolyline(method=pointXYZprop=attr=(name=L1, comment=, inform=) ,color=visible=\nvertices(\ncoord(0, 0, 0;)\ncoord(1.5, 0, -2;)\n));");
  EXPECT_EQ(text(ztCAD_Line(), true),
            "\npolyline(method=pointXYZprop=attr=(name=, comment=, inform=) ,color=visible=\nvertices());");
}

// Programs that read these texts know the word so; it is no slip to be mended with the line's own method.
TEST(Line, TextTellsTheMethodPointXyzWhateverItIs) {
  ztCAD_Line made = line("%1", {});
  made.method().setMethod("polyline");
  EXPECT_EQ(text(made, false),
            "\npolyline(method=pointXYZprop=attr=(name=%1, comment=, inform=) ,color=visible=\n);");
}

// --------------------------------------------------------------------------------------------------- writing

TEST(Line, EmptyListIsWrittenAsALineFeedAndReadsBackAsEmpty) {
  const std::string xml =
      "<line color=\"\" comment=\"\" inform=\"\" method=\"polyline\" name=\"\"><vertices>\n</vertices></line>";
  EXPECT_EQ(written(ztCAD_Line()), xml);
  ztCAD_Line made = line("L1", {1, 2, 3});
  EXPECT_TRUE(read(made, xml));
  EXPECT_TRUE(made.vertices().coordinates().empty());
}

TEST(Line, WritesVerticesInItsOnlyChild) { EXPECT_EQ(written(fullLine()), fullXml); }

TEST(Line, AlwaysWritesTheMethodPolyline) {
  for (const char* method : {"", "pointXYZ", "triangulation", "сфера"}) {
    ztCAD_Line made = fullLine();
    made.method().setMethod(method);
    EXPECT_EQ(written(made), fullXml) << method;
    EXPECT_EQ(made.method().method().toStdString(), method) << "writing leaves the object alone";
  }
  ztCAD_TmplLine made;
  made.method().setMethod("sphere");
  EXPECT_EQ(written(made),
            "<templateLine color=\"\" comment=\"\" inform=\"\" method=\"polyline\" "
            "name=\"\"><vertices>\n</vertices></templateLine>");
}

TEST(Line, IsAppendedBehindWhatTheParentHas) {
  ParsedXml xml(R"(<GMD a="1"><header/></GMD>)");
  line("A", {}).writeXml(xml.root, xml.document);
  line("B", {}).writeXml(xml.root, xml.document);
  EXPECT_EQ(
      node_text::textOf(xml.root).toStdString(),
      "<GMD a=\"1\"><header/>"
      "<line color=\"\" comment=\"\" inform=\"\" method=\"polyline\" name=\"A\"><vertices>\n</vertices></line>"
      "<line color=\"\" comment=\"\" inform=\"\" method=\"polyline\" name=\"B\"><vertices>\n</vertices></line>"
      "</GMD>");
}

// --------------------------------------------------------------------------------------------------- reading

struct ReadRow {
  const char* name;
  const char* xml;
  bool ok;
  Reals coordinates;
  bool hasList = true;  // among the direct children
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

std::vector<ReadRow> readRows() {
  return {
      {"Nothing", "<line/>", false, {}, false},
      {"NoVertices", R"(<line name="L"/>)", false, {}, false},
      {"EmptyVertices", R"(<line name="L"><vertices/></line>)", true, {}},
      {"LineFeed", "<line name='L'><vertices>\n</vertices></line>", true, {}},
      {"OneVertexIsEnough", "<line name='L'><vertices>\n1, 2, 3;\n</vertices></line>", true, {1, 2, 3}},
      {"TwoVertices", "<line name='L'><vertices>1,2,3;4,5,6</vertices></line>", true, {1, 2, 3, 4, 5, 6}},
      {"EqualVertices", "<line name='L'><vertices>1,2,3;1,2,3</vertices></line>", true, {1, 2, 3, 1, 2, 3}},
      {"Grandchild", "<line name='L'><part><vertices>1,2,3;</vertices></part></line>", false, {}, false},
      {"GrandchildBeforeTheChild",
       "<line name='L'><part><vertices>9,9,9;</vertices></part><vertices>1,2,3;</vertices></line>",
       true,
       {1, 2, 3}},
      {"TwoLists",
       "<line name='L'><vertices>1,2,3;</vertices><vertices>4,5,6;</vertices></line>",
       true,
       {1, 2, 3}},
      {"FirstOfTwoListsIsEmpty", "<line name='L'><vertices/><vertices>4,5,6;</vertices></line>", true, {}},
      {"FirstOfTwoListsIsBad",
       "<line name='L'><vertices>1,x,3;</vertices><vertices>4,5,6;</vertices></line>",
       false,
       {}},
      {"SecondOfTwoListsIsBad",
       "<line name='L'><vertices>1,2,3;</vertices><vertices>x,5,6;</vertices></line>",
       true,
       {1, 2, 3}},
      {"OtherCase", "<line name='L'><Vertices>1,2,3;</Vertices></line>", false, {}, false},
      {"WordInTheSecondVertex", "<line name='L'><vertices>1,2,3;4,x,6;</vertices></line>", false, {1, 2, 3}},
      {"CyrillicInTheSecondVertex",
       "<line name='L'><vertices>1,2,3;4,пять,6;</vertices></line>",
       false,
       {1, 2, 3}},
      {"TwoNumbers", "<line name='L'><vertices>1,2;</vertices></line>", false, {}},
      {"OwnDebugText", "<line name='L'><vertices>vertices(coord(1, 2, 3;))</vertices></line>", false, {}},
      {"OtherNodesAround",
       "<line name='L'>text<!--c--><faces>x</faces><vertices><![CDATA[1,2,3;]]></vertices></line>",
       true,
       {1, 2, 3}},
      {"NoName", "<line><vertices>1,2,3;</vertices></line>", false, {1, 2, 3}},
      {"EmptyName", "<line name=''><vertices>1,2,3;</vertices></line>", true, {1, 2, 3}},
      {"WrongColor", "<line name='L' color='red'><vertices>1,2,3;</vertices></line>", false, {1, 2, 3}},
      {"OtherMethod", "<line name='L' method='arc'><vertices>1,2,3;</vertices></line>", true, {1, 2, 3}},
      {"OtherTag", "<solid name='L'><vertices>1,2,3;</vertices></solid>", true, {1, 2, 3}},
      {"MassInertiaIsNotLookedAt",
       "<line name='L' MIP='x'><vertices>1,2,3;</vertices></line>",
       true,
       {1, 2, 3}},
  };
}

class LineReading : public testing::TestWithParam<ReadRow> {};

TEST_P(LineReading, NeedsADirectChildAndAPropertyBlock) {
  ztCAD_Line made;
  EXPECT_EQ(read(made, GetParam().xml), GetParam().ok);
  EXPECT_EQ(made.readOk(), GetParam().ok);
  EXPECT_TRUE(made.wasRead());
  EXPECT_EQ(made.vertices().coordinates(), GetParam().coordinates);
}

TEST_P(LineReading, IsTheSameForATemplate) {
  ztCAD_TmplLine made;
  EXPECT_EQ(read(made, GetParam().xml), GetParam().ok);
  EXPECT_EQ(made.readOk(), GetParam().ok);
  EXPECT_EQ(made.vertices().coordinates(), GetParam().coordinates);
}

TEST_P(LineReading, KeepsTheEarlierVerticesWhereThereIsNoList) {
  ztCAD_Line made = line("L0", {7, 8, 9});
  made.setReadOk(!GetParam().ok);
  read(made, GetParam().xml);
  EXPECT_EQ(made.readOk(), GetParam().ok) << "the last read counts";
  EXPECT_EQ(made.vertices().coordinates(), GetParam().hasList ? GetParam().coordinates : Reals({7, 8, 9}));
}

TEST_P(LineReading, IsDoneByTheCheckAndClearsTheFault) {
  for (bool fault : {true, false}) {
    ztCAD_Line made;
    const ParsedXml xml(GetParam().xml);
    EXPECT_EQ(made.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
    EXPECT_FALSE(fault);
    EXPECT_EQ(made.vertices().coordinates(), GetParam().coordinates);
    EXPECT_FALSE(faultAfterReading(made, GetParam().xml, !fault));
  }
}

// A solid reads in mode 0, a line in whatever mode holds.
TEST_P(LineReading, LeavesTheParallelModeAlone) {
  for (const std::int32_t mode : {ztParallel::Logical + 0, ztParallel::Primary + 0, 7}) {
    const ThreadCount configured(1, mode);
    const ParsedXml xml(GetParam().xml);
    ReadWatch watch;
    const ztcad::DomView view(xml.root);
    ztCAD_Line made;
    bool fault = false;
    EXPECT_EQ(made.readAndCheck(WatchedView(view, watch), fault), GetParam().ok);
    EXPECT_EQ(watch.modes, std::set<std::int32_t>{mode});
    EXPECT_EQ(ztcad::parallelSettings().mode, mode);
  }
}

INSTANTIATE_TEST_SUITE_P(Line, LineReading, testing::ValuesIn(readRows()),
                         [](const auto& row) { return row.param.name; });

TEST(Line, ReadsWhatItWrites) {
  EXPECT_EQ(roundTrip<ztCAD_Line>(fullXml), fullXml);
  const std::string tmpl =
      "<templateLine color=\"\" comment=\"Ё\" inform=\"%1\" method=\"polyline\" name=\"Ось\"><vertices>\n"
      "1, 2, 3;\n</vertices></templateLine>";
  EXPECT_EQ(roundTrip<ztCAD_TmplLine>(tmpl), tmpl);
}

TEST(Line, OnlySixDigitsTravel) {
  const auto copy = readFrom<ztCAD_Line>(written(line("L1", {0.3333333, 1234567, 1e-7})));
  EXPECT_EQ(copy.vertices().coordinates(), (Reals{0.333333, 1.23457e+06, 1e-07}));
}

TEST(Line, ReadingVerticesLeavesTheDefaultLocaleSetToC) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    EXPECT_EQ(
        readFrom<ztCAD_Line>("<line name='L'><vertices>1.5,2,3;</vertices></line>").vertices().coordinates(),
        (Reals{1.5, 2, 3}));
    EXPECT_TRUE(DefaultLocale::isC());
  }
}

// ------------------------------------------------------------------------------- own check, copies, templates

TEST(Line, TellsWhetherItsVerticesAreWhole) {
  for (const std::size_t count : {0u, 1u, 2u, 3u, 4u, 6u})
    EXPECT_EQ(line("L1", Reals(count, 1.0)).hasWholeVertices(), count % 3 == 0) << count;
}

TEST(Line, ChangingACopyLeavesTheSource) {
  const ztCAD_Line source = fullLine();
  ztCAD_Line copy = source;
  ztCAD_Line assigned;
  assigned = source;
  EXPECT_EQ(written(copy), fullXml);
  EXPECT_EQ(written(assigned), fullXml);
  for (ztCAD_Line* other : {&copy, &assigned}) {
    other->setName("other");
    other->method().setMethod("other");
    other->property().attributes().setComment("other");
    other->setVertices(ztCAD_Vertices());
    other->setReadOk(true);
  }
  EXPECT_EQ(written(source), fullXml);
  EXPECT_EQ(source.method().method().toStdString(), "");
  EXPECT_FALSE(source.wasRead());
}

TEST(Line, CopiesTakeTheState) {
  const auto source = readFrom<ztCAD_Line>(fullXml);
  const ztCAD_Line copy = source;
  EXPECT_TRUE(source.readOk());
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
}

// A template point takes its source's property block along; a template line does not, and hosts rely on that.
TEST(TemplateLine, CopiesTheGeometryOfItsSourceOnly) {
  ztCAD_TmplLine source;
  ASSERT_TRUE(read(source, fullXml));
  bool nameIsFree = false;
  const ztCAD_TmplLine made("T1", source, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(written(made),
            "<templateLine color=\"\" comment=\"\" inform=\"\" method=\"polyline\" name=\"T1\"><vertices>\n"
            "0, 0, 0;\n1.5, 0, -2;\n</vertices></templateLine>");
  EXPECT_EQ(made.method().method().toStdString(), "") << "nor is the method copied";
  EXPECT_FALSE(made.wasRead()) << "nor the state";
  EXPECT_EQ(source.name().toStdString(), "L1");
}

TEST(TemplateLine, CanBeMadeOfALine) {
  bool nameIsFree = false;
  ztCAD_TmplLine made("T1", fullLine(), nameIsFree);
  EXPECT_EQ(made.vertices().coordinates(), (Reals{0, 0, 0, 1.5, 0, -2}));
  EXPECT_EQ(made.property().attributes().comment().toStdString(), "");
}

}  // namespace
