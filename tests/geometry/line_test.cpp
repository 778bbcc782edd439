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
static_assert(std::is_abstract_v<ztCAD_commonLine>, "the common base cannot be instantiated");
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
  ztCAD_Line element = line("L1", {0, 0, 0, 1.5, 0, -2});
  element.property().attributes().setComment("c");
  element.property().attributes().setInform("i");
  element.property().showable().setColor({255, 0, 0});
  element.property().showable().setVisible(ztCAD_Visible(true));
  element.property().setLcs(ztCAD_LCS(true, Reals(12, 1.0)));
  return element;
}

const char* const fullXml =
    R"(<line LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" color="RGB, 255, 0, 0" comment="c" inform="i" method="polyline" name="L1" visible="true"><vertices>
0, 0, 0;
1.5, 0, -2;
</vertices></line>)";

// ---------------------------------------------------------------------------------------------- construction

TEST(Line, IsEmptyByDefault) {
  const ztCAD_Line element;
  EXPECT_TRUE(element.vertices().coordinates().empty());
  EXPECT_FALSE(element.readOk());
  EXPECT_FALSE(element.wasRead());
  EXPECT_EQ(element.name().toStdString(), "");
}

TEST(Line, HasTheNameAndCoordinatesPassedToItsConstructor) {
  ztCAD_Vertices vertices;
  vertices.setCoordinates({1, 2, 3});
  vertices.setName("list");
  bool nameIsFree = false;
  const ztCAD_Line element("Линия", vertices, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(element.name().toStdString(), "Линия");
  EXPECT_EQ(element.vertices().coordinates(), (Reals{1, 2, 3}));
  EXPECT_EQ(element.vertices().name().toStdString(), "") << "only the coordinates are copied";
  EXPECT_FALSE(element.wasRead());
}

TEST(Line, EveryNameIsReportedFree) {
  for (int i = 0; i < 2; ++i) {
    bool nameIsFree = false;
    const ztCAD_Line element("L1", ztCAD_Vertices(), nameIsFree);
    EXPECT_TRUE(nameIsFree);
  }
}

TEST(Line, ReturnsItsElementNameAndCoordinateSystemAttribute) {
  EXPECT_EQ(ztCAD_Line().elementName().toStdString(), "line");
  EXPECT_EQ(ztCAD_Line().lcsWord().toStdString(), "LCS");
  EXPECT_EQ(ztCAD_TmplLine().elementName().toStdString(), "templateLine");
  EXPECT_EQ(ztCAD_TmplLine().lcsWord().toStdString(), "MCS");
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(Line, StorageTextContainsMethodPropertiesAndVertices) {
  EXPECT_EQ(
      text(line("L1", {0, 0, 0, 1.5, 0, -2}), false),
      "\npolyline(method=pointXYZprop=attr=(name=L1, comment=, inform=) ,color=visible=\n0, 0, 0;\n1.5, 0, -2;\n);");
  EXPECT_EQ(text(ztCAD_Line(), false),
            "\npolyline(method=pointXYZprop=attr=(name=, comment=, inform=) ,color=visible=\n);");
}

TEST(Line, DebugTextContainsTheDebugTextOfTheVertices) {
  EXPECT_EQ(
      text(line("L1", {0, 0, 0, 1.5, 0, -2}), true),
      "\npolyline(method=pointXYZprop=attr=(name=L1, comment=, inform=) ,color=visible=\nvertices(\ncoord(0, 0, 0;)\ncoord(1.5, 0, -2;)\n));");
  EXPECT_EQ(text(ztCAD_Line(), true),
            "\npolyline(method=pointXYZprop=attr=(name=, comment=, inform=) ,color=visible=\nvertices());");
}

// Existing programs that parse these texts expect this word; writing the line's own method would break them.
TEST(Line, TextAlwaysNamesTheMethodPointXyz) {
  ztCAD_Line element = line("%1", {});
  element.method().setMethod("polyline");
  EXPECT_EQ(text(element, false),
            "\npolyline(method=pointXYZprop=attr=(name=%1, comment=, inform=) ,color=visible=\n);");
}

// --------------------------------------------------------------------------------------------------- writing

TEST(Line, AnEmptyListIsWrittenAsALineFeedAndReadAsEmpty) {
  const std::string xml =
      "<line color=\"\" comment=\"\" inform=\"\" method=\"polyline\" name=\"\"><vertices>\n</vertices></line>";
  EXPECT_EQ(written(ztCAD_Line()), xml);
  ztCAD_Line element = line("L1", {1, 2, 3});
  EXPECT_TRUE(read(element, xml));
  EXPECT_TRUE(element.vertices().coordinates().empty());
}

TEST(Line, WritesVerticesInItsOnlyChild) { EXPECT_EQ(written(fullLine()), fullXml); }

TEST(Line, AlwaysWritesTheMethodPolyline) {
  for (const char* method : {"", "pointXYZ", "triangulation", "сфера"}) {
    ztCAD_Line element = fullLine();
    element.method().setMethod(method);
    EXPECT_EQ(written(element), fullXml) << method;
    EXPECT_EQ(element.method().method().toStdString(), method) << "writing must not change the object";
  }
  ztCAD_TmplLine element;
  element.method().setMethod("sphere");
  EXPECT_EQ(written(element),
            "<templateLine color=\"\" comment=\"\" inform=\"\" method=\"polyline\" "
            "name=\"\"><vertices>\n</vertices></templateLine>");
}

TEST(Line, IsAppendedAfterTheChildrenOfItsParent) {
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
      {"OneVertexIsSufficient", "<line name='L'><vertices>\n1, 2, 3;\n</vertices></line>", true, {1, 2, 3}},
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
      {"FirstOfTwoListsIsInvalid",
       "<line name='L'><vertices>1,x,3;</vertices><vertices>4,5,6;</vertices></line>",
       false,
       {}},
      {"SecondOfTwoListsIsInvalid",
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
      {"SurroundedByOtherNodes",
       "<line name='L'>text<!--c--><faces>x</faces><vertices><![CDATA[1,2,3;]]></vertices></line>",
       true,
       {1, 2, 3}},
      {"NoName", "<line><vertices>1,2,3;</vertices></line>", false, {1, 2, 3}},
      {"EmptyName", "<line name=''><vertices>1,2,3;</vertices></line>", true, {1, 2, 3}},
      {"InvalidColor", "<line name='L' color='red'><vertices>1,2,3;</vertices></line>", false, {1, 2, 3}},
      {"OtherMethod", "<line name='L' method='arc'><vertices>1,2,3;</vertices></line>", true, {1, 2, 3}},
      {"OtherTag", "<solid name='L'><vertices>1,2,3;</vertices></solid>", true, {1, 2, 3}},
      {"MassInertiaIsIgnored", "<line name='L' MIP='x'><vertices>1,2,3;</vertices></line>", true, {1, 2, 3}},
  };
}

class LineReading : public testing::TestWithParam<ReadRow> {};

TEST_P(LineReading, RequiresADirectChildAndAPropertyBlock) {
  ztCAD_Line element;
  EXPECT_EQ(read(element, GetParam().xml), GetParam().ok);
  EXPECT_EQ(element.readOk(), GetParam().ok);
  EXPECT_TRUE(element.wasRead());
  EXPECT_EQ(element.vertices().coordinates(), GetParam().coordinates);
}

TEST_P(LineReading, ReadsATemplateTheSameWay) {
  ztCAD_TmplLine element;
  EXPECT_EQ(read(element, GetParam().xml), GetParam().ok);
  EXPECT_EQ(element.readOk(), GetParam().ok);
  EXPECT_EQ(element.vertices().coordinates(), GetParam().coordinates);
}

TEST_P(LineReading, KeepsThePreviousVerticesIfThereIsNoList) {
  ztCAD_Line element = line("L0", {7, 8, 9});
  element.setReadOk(!GetParam().ok);
  read(element, GetParam().xml);
  EXPECT_EQ(element.readOk(), GetParam().ok) << "the state reflects the last read";
  EXPECT_EQ(element.vertices().coordinates(), GetParam().hasList ? GetParam().coordinates : Reals({7, 8, 9}));
}

TEST_P(LineReading, IsPerformedByReadAndCheckAndClearsTheFault) {
  for (bool fault : {true, false}) {
    ztCAD_Line element;
    const ParsedXml xml(GetParam().xml);
    EXPECT_EQ(element.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
    EXPECT_FALSE(fault);
    EXPECT_EQ(element.vertices().coordinates(), GetParam().coordinates);
    EXPECT_FALSE(faultAfterReading(element, GetParam().xml, !fault));
  }
}

// A solid is read in mode 0, a line in the current mode.
TEST_P(LineReading, KeepsTheParallelMode) {
  for (const std::int32_t mode : {ztParallel::Logical + 0, ztParallel::Primary + 0, 7}) {
    const ThreadCount configured(1, mode);
    const ParsedXml xml(GetParam().xml);
    ReadWatch watch;
    const ztcad::DomView view(xml.root);
    ztCAD_Line element;
    bool fault = false;
    EXPECT_EQ(element.readAndCheck(WatchedView(view, watch), fault), GetParam().ok);
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

TEST(Line, SixDigitsSurviveARoundTrip) {
  const auto copy = readFrom<ztCAD_Line>(written(line("L1", {0.3333333, 1234567, 1e-7})));
  EXPECT_EQ(copy.vertices().coordinates(), (Reals{0.333333, 1.23457e+06, 1e-07}));
}

TEST(Line, ReadingVerticesSetsTheDefaultLocaleToC) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    EXPECT_EQ(
        readFrom<ztCAD_Line>("<line name='L'><vertices>1.5,2,3;</vertices></line>").vertices().coordinates(),
        (Reals{1.5, 2, 3}));
    EXPECT_TRUE(DefaultLocale::isC());
  }
}

// ---------------------------------------------------------------------------------- check, copies, templates

TEST(Line, ReportsWhetherItsVerticesAreCompleteTriples) {
  for (const std::size_t count : {0u, 1u, 2u, 3u, 4u, 6u})
    EXPECT_EQ(line("L1", Reals(count, 1.0)).hasWholeVertices(), count % 3 == 0) << count;
}

TEST(Line, ChangingACopyKeepsTheSource) {
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

TEST(Line, CopiesKeepTheReadState) {
  const auto source = readFrom<ztCAD_Line>(fullXml);
  const ztCAD_Line copy = source;
  EXPECT_TRUE(source.readOk());
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
}

// A template point copies the property block of its source; a template line does not, and hosts rely on that.
TEST(TemplateLine, CopiesOnlyTheGeometryOfItsSource) {
  ztCAD_TmplLine source;
  ASSERT_TRUE(read(source, fullXml));
  bool nameIsFree = false;
  const ztCAD_TmplLine element("T1", source, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(written(element),
            "<templateLine color=\"\" comment=\"\" inform=\"\" method=\"polyline\" name=\"T1\"><vertices>\n"
            "0, 0, 0;\n1.5, 0, -2;\n</vertices></templateLine>");
  EXPECT_EQ(element.method().method().toStdString(), "") << "the method is not copied either";
  EXPECT_FALSE(element.wasRead()) << "the state is not copied either";
  EXPECT_EQ(source.name().toStdString(), "L1");
}

TEST(TemplateLine, CanBeCreatedFromALine) {
  bool nameIsFree = false;
  ztCAD_TmplLine element("T1", fullLine(), nameIsFree);
  EXPECT_EQ(element.vertices().coordinates(), (Reals{0, 0, 0, 1.5, 0, -2}));
  EXPECT_EQ(element.property().attributes().comment().toStdString(), "");
}

}  // namespace
