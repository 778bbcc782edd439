#include "geometry/point.h"

#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "geometry/default_locale.h"
#include "node_text.h"

namespace {

static_assert(std::is_base_of_v<ztCAD_cmnSelector2<ztCAD_KindPoint>, ztCAD_Point>);
static_assert(std::is_base_of_v<ztCAD_cmnSelector2<ztCAD_KindTmplPoint>, ztCAD_TmplPoint>);
static_assert(std::is_abstract_v<ztCAD_commonPoint>, "what is common is no element of its own");
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_Base*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_baseElement*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_IBaseChecker*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_StateCorrect*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_INameLCS_Selector*>);

ztCAD_Point point(const std::string& name, const ztCAD_Coord& center) {
  bool nameIsFree = false;
  return {fromUtf8(name), center, nameIsFree};
}

ztCAD_Point fullPoint() {
  ztCAD_Point made = point("P1", ztCAD_Coord(1, 2.5, 0));
  made.property().attributes().setComment("c");
  made.property().attributes().setInform("i");
  made.property().showable().setColor({255, 0, 0});
  made.property().showable().setVisible(ztCAD_Visible(true));
  made.property().setLcs(ztCAD_LCS(true, std::vector<double>(12, 1.0)));
  return made;
}

const char* const fullXml =
    R"(<point LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" center="1, 2.5, 0;" color="RGB, 255, 0, 0" comment="c" inform="i" method="pointXYZ" name="P1" visible="true"/>)";
const char* const fullText =
    "method==pointXYZ prop=attr=(name=P1, comment=c, inform=i) ,color=RGB, 255, 0, 0visible=visible=truetrueCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1\nCenter=coord(1, 2.5, 0;), ";

// ---------------------------------------------------------------------------------------------- construction

TEST(Point, IsEmptyAtFirst) {
  const ztCAD_Point made;
  EXPECT_FALSE(made.center().isValid());
  EXPECT_FALSE(made.readOk());
  EXPECT_FALSE(made.wasRead());
  EXPECT_EQ(made.name().toStdString(), "");
  EXPECT_EQ(made.method().method().toStdString(), "pointXYZ");
}

TEST(Point, TakesNameAndCenterOfItsConstructor) {
  bool nameIsFree = false;
  const ztCAD_Point made("Точка", ztCAD_Coord(1, 2, 3), nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(made.name().toStdString(), "Точка");
  EXPECT_EQ(text(made, false), "1, 2, 3;");
  EXPECT_EQ(made.method().method().toStdString(), "pointXYZ");
  EXPECT_FALSE(made.readOk());
}

TEST(Point, TakesACenterWithoutAValueToo) { EXPECT_FALSE(point("P1", ztCAD_Coord()).center().isValid()); }

TEST(Point, EveryNameIsFree) {
  for (int i = 0; i < 2; ++i) {
    for (const char* name : {"", "P1", "🙂"}) {
      bool nameIsFree = false;
      const ztCAD_Point made(name, ztCAD_Coord(), nameIsFree);
      EXPECT_TRUE(nameIsFree) << name;
    }
  }
}

TEST(Point, TellsItsElementAndItsWordForCoordinateSystems) {
  EXPECT_EQ(ztCAD_Point().elementName().toStdString(), "point");
  EXPECT_EQ(ztCAD_Point().lcsWord().toStdString(), "LCS");
  EXPECT_EQ(ztCAD_TmplPoint().elementName().toStdString(), "templatePoint");
  EXPECT_EQ(ztCAD_TmplPoint().lcsWord().toStdString(), "MCS");
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(Point, StorageTextIsThatOfTheCenter) {
  EXPECT_EQ(text(fullPoint(), false), "1, 2.5, 0;");
  EXPECT_EQ(text(ztCAD_Point(), false), "");
}

TEST(Point, DebugTextNamesMethodPropertiesAndCenter) {
  EXPECT_EQ(
      text(point("", ztCAD_Coord(0, 0, 0)), true),
      "method==pointXYZ prop=attr=(name=, comment=, inform=) ,color=visible=\nCenter=coord(0, 0, 0;), ");
  EXPECT_EQ(text(fullPoint(), true), fullText);
}

TEST(Point, DebugTextOfAPointWithoutACenterKeepsTheWord) {
  EXPECT_EQ(text(ztCAD_Point(), true),
            "method==pointXYZ prop=attr=(name=, comment=, inform=) ,color=visible=\nCenter=coord, ");
}

TEST(Point, DebugTextSubstitutesNothing) {
  ztCAD_Point made = point("%1 %2", ztCAD_Coord(1, 2, 3));
  made.method().setMethod("%3");
  EXPECT_EQ(text(made, true),
            "method==%3 prop=attr=(name=%1 %2, comment=, inform=) ,color=visible=\nCenter=coord(1, 2, 3;), ");
}

// --------------------------------------------------------------------------------------------------- writing

TEST(Point, DefaultOneWritesAnEmptyCenter) {
  EXPECT_EQ(written(ztCAD_Point()),
            R"(<point center="" color="" comment="" inform="" method="pointXYZ" name=""/>)");
  EXPECT_EQ(written(ztCAD_TmplPoint()),
            R"(<templatePoint center="" color="" comment="" inform="" method="pointXYZ" name=""/>)");
}

TEST(Point, WritesOneElementWithoutChildren) { EXPECT_EQ(written(fullPoint()), fullXml); }

TEST(Point, IsAppendedBehindWhatTheParentHas) {
  ParsedXml xml(R"(<GMD a="1"><header/></GMD>)");
  point("A", ztCAD_Coord(1, 2, 3)).writeXml(xml.root, xml.document);
  point("B", ztCAD_Coord()).writeXml(xml.root, xml.document);
  EXPECT_EQ(node_text::textOf(xml.root).toStdString(),
            R"(<GMD a="1"><header/>)"
            R"(<point center="1, 2, 3;" color="" comment="" inform="" method="pointXYZ" name="A"/>)"
            R"(<point center="" color="" comment="" inform="" method="pointXYZ" name="B"/></GMD>)");
}

TEST(Point, WritesSixSignificantDigits) {
  EXPECT_EQ(
      written(point("P1", ztCAD_Coord(0.1234567, 1e-7, 1234567))),
      R"(<point center="0.123457, 1e-07, 1.23457e+06;" color="" comment="" inform="" method="pointXYZ" name="P1"/>)");
}

// --------------------------------------------------------------------------------------------------- reading

TEST(Point, ReadsWhatItWrites) { EXPECT_EQ(roundTrip<ztCAD_Point>(fullXml), fullXml); }

TEST(Point, OrderOfAttributesDoesNotMatter) {
  const std::string attributes[] = {R"( name="P1")",        R"( comment="c")",
                                    R"( inform="i")",       R"( method="pointXYZ")",
                                    R"( center="1,2.5,0")", R"( color="RGB,255,0,0")",
                                    R"( visible="1")",      R"( LCS="CS,1,1,1,1,1,1,1,1,1,1,1,1")"};
  std::string forward;
  std::string backward;
  for (const std::string& attribute : attributes) {
    forward += attribute;
    backward.insert(0, attribute);
  }
  EXPECT_EQ(roundTrip<ztCAD_Point>("<point" + forward + "/>"), fullXml);
  EXPECT_EQ(roundTrip<ztCAD_Point>("<point" + backward + "/>"), fullXml);
}

TEST(Point, KeepsForeignLettersQuotesAndPlaceholders) {
  for (const std::string description :
       {R"(comment="Ось Ё" inform="№" method="pointXYZ" name="Точка")",
        R"(comment="it's &quot;so&quot;" inform="&lt;&amp;&gt;" method="pointXYZ" name="&quot;A&quot;")",
        R"(comment="%1 %2" inform="%L1" method="pointXYZ" name="%1")",
        R"(comment="a🙂b" inform="𝄞" method="pointXYZ" name="🙂")"}) {
    const std::string xml = R"(<point center="0, 0, 0;" color="" )" + description + "/>";
    EXPECT_EQ(roundTrip<ztCAD_Point>(xml), xml);
  }
}

struct ReadRow {
  const char* name;
  const char* attributes;
  bool ok;
  const char* center;  // as written afterwards
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

const ReadRow readRows[] = {
    {"Nothing", "", false, ""},
    {"Center", R"(name="P1" method="pointXYZ" center="1, 2, 3;")", true, "1, 2, 3;"},
    {"CompactCenter", R"(name="P1" method="pointXYZ" center="1,2,3")", true, "1, 2, 3;"},
    {"OneNumber", R"(name="P1" method="pointXYZ" center="1")", true, "1, 0, 0;"},
    {"TwoNumbers", R"(name="P1" method="pointXYZ" center="1, 2;")", true, "1, 2, 0;"},
    {"FourNumbers", R"(name="P1" method="pointXYZ" center="1, 2, 3, 4;")", false, ""},
    {"EmptyCenter", R"(name="P1" method="pointXYZ" center="")", false, ""},
    {"NoCenter", R"(name="P1" method="pointXYZ")", false, ""},
    {"CenterInOtherCase", R"(name="P1" method="pointXYZ" Center="1,2,3")", false, ""},
    {"WordInCenter", R"(name="P1" method="pointXYZ" center="1, x, 3;")", false, ""},
    {"CyrillicInCenter", R"(name="P1" method="pointXYZ" center="1, два, 3;")", false, ""},
    {"DebugTextInCenter", R"x(name="P1" method="pointXYZ" center="coord(1, 2, 3;)")x", false, ""},
    {"OverflowInCenter", R"(name="P1" method="pointXYZ" center="1e999, 2, 3;")", false, ""},
    {"NoName", R"(method="pointXYZ" center="1,2,3")", false, "1, 2, 3;"},
    {"EmptyName", R"(name="" method="pointXYZ" center="1,2,3")", true, "1, 2, 3;"},
    {"NoMethod", R"(name="P1" center="1,2,3")", true, "1, 2, 3;"},
    {"OtherMethod", R"(name="P1" method="sphere" center="1,2,3")", true, "1, 2, 3;"},
    {"WrongColor", R"(name="P1" method="pointXYZ" center="1,2,3" color="red")", false, "1, 2, 3;"},
    {"ShortColor", R"(name="P1" method="pointXYZ" center="1,2,3" color="RGB, 1, 2")", true, "1, 2, 3;"},
    {"WrongCoordinateSystem", R"(name="P1" center="1,2,3" LCS="CS, 1, 2")", true, "1, 2, 3;"},
    {"UnknownAttributes", R"(name="P1" center="1,2,3" radius="x" MIP="y" foo="z")", true, "1, 2, 3;"},
};

std::string pointXml(const ReadRow& row) { return std::string("<point ") + row.attributes + "/>"; }

class PointReading : public testing::TestWithParam<ReadRow> {};

TEST_P(PointReading, NeedsACenterAndAPropertyBlock) {
  ztCAD_Point made;
  EXPECT_EQ(read(made, pointXml(GetParam())), GetParam().ok);
  EXPECT_EQ(made.readOk(), GetParam().ok);
  EXPECT_TRUE(made.wasRead());
  EXPECT_EQ(text(made, false), GetParam().center);
}

TEST_P(PointReading, IsTheSameForATemplate) {
  ztCAD_TmplPoint made;
  EXPECT_EQ(read(made, pointXml(GetParam())), GetParam().ok);
  EXPECT_EQ(made.readOk(), GetParam().ok);
  EXPECT_EQ(text(made, false), GetParam().center);
}

TEST_P(PointReading, KeepsTheEarlierCenterWhereThereIsNoOther) {
  ztCAD_Point made = point("P0", ztCAD_Coord(7, 8, 9));
  made.setReadOk(!GetParam().ok);
  read(made, pointXml(GetParam()));
  EXPECT_EQ(made.readOk(), GetParam().ok) << "the last read counts";
  EXPECT_EQ(text(made, false), *GetParam().center ? GetParam().center : "7, 8, 9;");
}

TEST_P(PointReading, IsDoneByTheCheck) {
  ztCAD_Point made;
  bool fault = true;
  const ParsedXml xml(pointXml(GetParam()));
  EXPECT_EQ(made.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
  EXPECT_FALSE(fault);
  EXPECT_EQ(written(made), roundTrip<ztCAD_Point>(pointXml(GetParam())));
  EXPECT_EQ(made.readOk(), GetParam().ok);
}

TEST_P(PointReading, ClearsTheFault) {
  ztCAD_Point made;
  EXPECT_FALSE(faultAfterReading(made, pointXml(GetParam()), true));
  EXPECT_FALSE(faultAfterReading(made, pointXml(GetParam()), false));
}

INSTANTIATE_TEST_SUITE_P(Point, PointReading, testing::ValuesIn(readRows),
                         [](const auto& row) { return row.param.name; });

TEST(Point, FailedCenterLeavesTheRestRead) {
  ztCAD_Point made;
  EXPECT_FALSE(read(made, R"(<point name="P1" method="other" center="x" visible="0"/>)"));
  EXPECT_EQ(written(made),
            R"(<point center="" color="" comment="" inform="" method="other" name="P1" visible="false"/>)");
}

TEST(Point, TakesTheMethodThatItReads) {
  EXPECT_EQ(
      readFrom<ztCAD_Point>(R"(<point name="P" method="сфера" center="1"/>)").method().method().toStdString(),
      "сфера");
  EXPECT_EQ(readFrom<ztCAD_Point>(R"(<point name="P" center="1"/>)").method().method().toStdString(),
            "pointXYZ");
}

TEST(Point, TagIsNotLookedAt) {
  ztCAD_Point made;
  EXPECT_TRUE(read(made, R"(<templatePoint name="P1" center="1,2,3"/>)"));
}

TEST(Point, ModelSystemIsPassedOver) {
  const char* const xml = R"(<e name="P1" center="1,2,3" MCS="CS,1,1,1,1,1,1,1,1,1,1,1,1"/>)";
  EXPECT_FALSE(readFrom<ztCAD_Point>(xml).property().hasLCS());
  EXPECT_FALSE(readFrom<ztCAD_TmplPoint>(xml).property().hasLCS());
}

TEST(Point, ReadingLeavesTheDefaultLocaleSetToC) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    ztCAD_Point made;
    EXPECT_TRUE(read(made, R"(<point name="P1" center="1.5, 2.25, -0.5;"/>)"));
    EXPECT_TRUE(DefaultLocale::isC());
    EXPECT_EQ(text(made, false), "1.5, 2.25, -0.5;");
  }
}

// ----------------------------------------------------------------------------------------- copies, templates

TEST(Point, ChangingACopyLeavesTheSource) {
  const ztCAD_Point source = fullPoint();
  ztCAD_Point copy = source;
  EXPECT_EQ(text(copy, true), fullText);
  copy.setName("other");
  copy.setCenter(ztCAD_Coord());
  copy.method().setMethod("other");
  copy.property().setLcs(std::nullopt);
  copy.setReadOk(true);
  EXPECT_EQ(text(source, true), fullText);
  EXPECT_FALSE(source.readOk());
}

TEST(Point, ChangingAnAssignedPointLeavesTheSource) {
  const ztCAD_Point source = fullPoint();
  ztCAD_Point assigned = point("before", ztCAD_Coord());
  assigned.method().setMethod("before");
  assigned = source;
  EXPECT_EQ(text(assigned, true), fullText);
  assigned.setName("other");
  assigned.method().setMethod("other");
  assigned.setCenter(ztCAD_Coord(9, 9, 9));
  EXPECT_EQ(text(source, true), fullText);
}

TEST(Point, AssignmentToItselfChangesNothing) {
  ztCAD_Point made = fullPoint();
  const ztCAD_Point& itself = made;
  made = itself;
  EXPECT_EQ(text(made, true), fullText);
}

TEST(Point, CopiesTakeTheState) {
  const auto source = readFrom<ztCAD_Point>(R"(<point name="P1" center="1,2,3"/>)");
  const ztCAD_Point copy = source;
  ztCAD_Point assigned;
  assigned = source;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(assigned.readOk());
}

TEST(Point, ContainerHoldsACopyAndFindsItByItsAddress) {
  ztCAD_Cont<ztCAD_Point> points;
  const ztCAD_Point source = fullPoint();
  points.add(source);
  points.add(source);
  points.front().setName("A");
  EXPECT_EQ(source.name().toStdString(), "P1");
  EXPECT_FALSE(points.remove(&source));
  const ztCAD_Point* const second = &points.back();
  EXPECT_TRUE(points.remove(second));
  ASSERT_EQ(points.size(), 1u);
  EXPECT_EQ(points.front().name().toStdString(), "A");
}

TEST(TemplatePoint, KeepsCenterAndPropertiesOfItsSourceUnderANewName) {
  bool nameIsFree = false;
  const ztCAD_TmplPoint first("T1", fullPoint(), nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(
      written(first),
      R"(<templatePoint LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" center="1, 2.5, 0;" color="RGB, 255, 0, 0" comment="c" inform="i" method="pointXYZ" name="T1" visible="true"/>)");
  const ztCAD_TmplPoint second("Шаблон", first, nameIsFree);
  EXPECT_EQ(second.name().toStdString(), "Шаблон");
  EXPECT_EQ(first.name().toStdString(), "T1");
  EXPECT_EQ(text(second, false), "1, 2.5, 0;");
}

TEST(TemplatePoint, ChangingItLeavesItsSource) {
  const ztCAD_Point source = fullPoint();
  bool nameIsFree = false;
  ztCAD_TmplPoint made("T1", source, nameIsFree);
  made.property().attributes().setComment("other");
  made.property().showable().setColor({});
  made.setCenter(ztCAD_Coord());
  EXPECT_EQ(text(source, true), fullText);
}

TEST(TemplatePoint, OfAPointWithoutACenterHasNone) {
  bool nameIsFree = false;
  const ztCAD_TmplPoint made("T1", ztCAD_Point(), nameIsFree);
  EXPECT_FALSE(made.center().isValid());
  EXPECT_EQ(written(made),
            R"(<templatePoint center="" color="" comment="" inform="" method="pointXYZ" name="T1"/>)");
}

TEST(TemplatePoint, IsNotReadWhenItsSourceWas) {
  const auto source = readFrom<ztCAD_Point>(R"(<point name="P1" center="1,2,3"/>)");
  bool nameIsFree = false;
  const ztCAD_TmplPoint made("T1", source, nameIsFree);
  EXPECT_FALSE(made.readOk());
  EXPECT_FALSE(made.wasRead());
}

TEST(TemplatePoint, MayTakeTheNameOfItsSource) {
  const ztCAD_Point source = fullPoint();
  bool nameIsFree = false;
  const ztCAD_TmplPoint made(source.name(), source, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(made.name().toStdString(), "P1");
}

TEST(TemplatePoint, ReadsAndWritesUnderItsOwnTag) {
  const std::string xml =
      R"(<templatePoint center="1, 2, 3;" color="" comment="" inform="" method="pointXYZ" name="T1"/>)";
  EXPECT_EQ(roundTrip<ztCAD_TmplPoint>(xml), xml);
}

}  // namespace
