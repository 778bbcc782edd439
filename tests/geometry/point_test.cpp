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
static_assert(std::is_abstract_v<ztCAD_commonPoint>, "the common base cannot be instantiated");
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_Base*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_baseElement*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_IBaseChecker*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_StateCorrect*>);
static_assert(std::is_convertible_v<ztCAD_Point*, ztCAD_INameLCS_Selector*>);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) && defined(__linux__) && defined(__x86_64__)
static_assert(sizeof(ztCAD_Point) <= 176, "documents have millions of points");
#endif

ztCAD_Point point(const std::string& name, const ztCAD_Coord& center) {
  bool nameIsFree = false;
  return {fromUtf8(name), center, nameIsFree};
}

ztCAD_Point fullPoint() {
  ztCAD_Point element = point("P1", ztCAD_Coord(1, 2.5, 0));
  element.property().attributes().setComment("c");
  element.property().attributes().setInform("i");
  element.property().showable().setColor({255, 0, 0});
  element.property().showable().setVisible(ztCAD_Visible(true));
  element.property().setLcs(ztCAD_LCS(true, std::vector<double>(12, 1.0)));
  return element;
}

const char* const fullXml =
    R"(<point LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" center="1, 2.5, 0;" color="RGB, 255, 0, 0" comment="c" inform="i" method="pointXYZ" name="P1" visible="true"/>)";
const char* const fullText =
    "method==pointXYZ prop=attr=(name=P1, comment=c, inform=i) ,color=RGB, 255, 0, 0visible=visible=truetrueCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1\nCenter=coord(1, 2.5, 0;), ";

// ---------------------------------------------------------------------------------------------- construction

TEST(Point, IsEmptyByDefault) {
  const ztCAD_Point element;
  EXPECT_FALSE(element.center().isValid());
  EXPECT_FALSE(element.readOk());
  EXPECT_FALSE(element.wasRead());
  EXPECT_EQ(element.name().toStdString(), "");
  EXPECT_EQ(element.method().method().toStdString(), "pointXYZ");
}

TEST(Point, HasTheNameAndCenterPassedToItsConstructor) {
  bool nameIsFree = false;
  const ztCAD_Point element("Точка", ztCAD_Coord(1, 2, 3), nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(element.name().toStdString(), "Точка");
  EXPECT_EQ(text(element, false), "1, 2, 3;");
  EXPECT_EQ(element.method().method().toStdString(), "pointXYZ");
  EXPECT_FALSE(element.readOk());
}

TEST(Point, AcceptsACenterWithoutAValue) { EXPECT_FALSE(point("P1", ztCAD_Coord()).center().isValid()); }

TEST(Point, EveryNameIsReportedFree) {
  for (int i = 0; i < 2; ++i) {
    for (const char* name : {"", "P1", "🙂"}) {
      bool nameIsFree = false;
      const ztCAD_Point element(name, ztCAD_Coord(), nameIsFree);
      EXPECT_TRUE(nameIsFree) << name;
    }
  }
}

TEST(Point, ReturnsItsElementNameAndCoordinateSystemAttribute) {
  EXPECT_EQ(ztCAD_Point().elementName().toStdString(), "point");
  EXPECT_EQ(ztCAD_Point().lcsWord().toStdString(), "LCS");
  EXPECT_EQ(ztCAD_TmplPoint().elementName().toStdString(), "templatePoint");
  EXPECT_EQ(ztCAD_TmplPoint().lcsWord().toStdString(), "MCS");
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(Point, HasTheStorageTextOfItsCenter) {
  EXPECT_EQ(text(fullPoint(), false), "1, 2.5, 0;");
  EXPECT_EQ(text(ztCAD_Point(), false), "");
}

TEST(Point, DebugTextContainsMethodPropertiesAndCenter) {
  EXPECT_EQ(
      text(point("", ztCAD_Coord(0, 0, 0)), true),
      "method==pointXYZ prop=attr=(name=, comment=, inform=) ,color=visible=\nCenter=coord(0, 0, 0;), ");
  EXPECT_EQ(text(fullPoint(), true), fullText);
}

TEST(Point, DebugTextOfAPointWithoutACenterKeepsTheWord) {
  EXPECT_EQ(text(ztCAD_Point(), true),
            "method==pointXYZ prop=attr=(name=, comment=, inform=) ,color=visible=\nCenter=coord, ");
}

TEST(Point, DebugTextDoesNotSubstitutePlaceholders) {
  ztCAD_Point element = point("%1 %2", ztCAD_Coord(1, 2, 3));
  element.method().setMethod("%3");
  EXPECT_EQ(text(element, true),
            "method==%3 prop=attr=(name=%1 %2, comment=, inform=) ,color=visible=\nCenter=coord(1, 2, 3;), ");
}

// --------------------------------------------------------------------------------------------------- writing

TEST(Point, ADefaultPointWritesAnEmptyCenter) {
  EXPECT_EQ(written(ztCAD_Point()),
            R"(<point center="" color="" comment="" inform="" method="pointXYZ" name=""/>)");
  EXPECT_EQ(written(ztCAD_TmplPoint()),
            R"(<templatePoint center="" color="" comment="" inform="" method="pointXYZ" name=""/>)");
}

TEST(Point, WritesOneElementWithoutChildren) { EXPECT_EQ(written(fullPoint()), fullXml); }

TEST(Point, IsAppendedAfterTheChildrenOfItsParent) {
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

TEST(Point, TheOrderOfAttributesDoesNotMatter) {
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

TEST(Point, KeepsNonAsciiLettersQuotesAndPlaceholders) {
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
    {"InvalidColor", R"(name="P1" method="pointXYZ" center="1,2,3" color="red")", false, "1, 2, 3;"},
    {"ShortColor", R"(name="P1" method="pointXYZ" center="1,2,3" color="RGB, 1, 2")", true, "1, 2, 3;"},
    {"InvalidCoordinateSystem", R"(name="P1" center="1,2,3" LCS="CS, 1, 2")", true, "1, 2, 3;"},
    {"UnknownAttributes", R"(name="P1" center="1,2,3" radius="x" MIP="y" foo="z")", true, "1, 2, 3;"},
};

std::string pointXml(const ReadRow& row) { return std::string("<point ") + row.attributes + "/>"; }

class PointReading : public testing::TestWithParam<ReadRow> {};

TEST_P(PointReading, RequiresACenterAndAPropertyBlock) {
  ztCAD_Point element;
  EXPECT_EQ(read(element, pointXml(GetParam())), GetParam().ok);
  EXPECT_EQ(element.readOk(), GetParam().ok);
  EXPECT_TRUE(element.wasRead());
  EXPECT_EQ(text(element, false), GetParam().center);
}

TEST_P(PointReading, ReadsATemplateTheSameWay) {
  ztCAD_TmplPoint element;
  EXPECT_EQ(read(element, pointXml(GetParam())), GetParam().ok);
  EXPECT_EQ(element.readOk(), GetParam().ok);
  EXPECT_EQ(text(element, false), GetParam().center);
}

TEST_P(PointReading, KeepsThePreviousCenterWithoutAValidNewOne) {
  ztCAD_Point element = point("P0", ztCAD_Coord(7, 8, 9));
  element.setReadOk(!GetParam().ok);
  read(element, pointXml(GetParam()));
  EXPECT_EQ(element.readOk(), GetParam().ok) << "the state reflects the last read";
  EXPECT_EQ(text(element, false), *GetParam().center ? GetParam().center : "7, 8, 9;");
}

TEST_P(PointReading, IsPerformedByReadAndCheck) {
  ztCAD_Point element;
  bool fault = true;
  const ParsedXml xml(pointXml(GetParam()));
  EXPECT_EQ(element.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
  EXPECT_FALSE(fault);
  EXPECT_EQ(written(element), roundTrip<ztCAD_Point>(pointXml(GetParam())));
  EXPECT_EQ(element.readOk(), GetParam().ok);
}

TEST_P(PointReading, ClearsTheFault) {
  ztCAD_Point element;
  EXPECT_FALSE(faultAfterReading(element, pointXml(GetParam()), true));
  EXPECT_FALSE(faultAfterReading(element, pointXml(GetParam()), false));
}

INSTANTIATE_TEST_SUITE_P(Point, PointReading, testing::ValuesIn(readRows),
                         [](const auto& row) { return row.param.name; });

TEST(Point, AnInvalidCenterDoesNotStopTheOtherAttributes) {
  ztCAD_Point element;
  EXPECT_FALSE(read(element, R"(<point name="P1" method="other" center="x" visible="0"/>)"));
  EXPECT_EQ(written(element),
            R"(<point center="" color="" comment="" inform="" method="other" name="P1" visible="false"/>)");
}

TEST(Point, HasTheMethodThatItReads) {
  EXPECT_EQ(
      readFrom<ztCAD_Point>(R"(<point name="P" method="сфера" center="1"/>)").method().method().toStdString(),
      "сфера");
  EXPECT_EQ(readFrom<ztCAD_Point>(R"(<point name="P" center="1"/>)").method().method().toStdString(),
            "pointXYZ");
}

TEST(Point, TheTagIsIgnored) {
  ztCAD_Point element;
  EXPECT_TRUE(read(element, R"(<templatePoint name="P1" center="1,2,3"/>)"));
}

TEST(Point, AModelSystemIsIgnored) {
  const char* const xml = R"(<e name="P1" center="1,2,3" MCS="CS,1,1,1,1,1,1,1,1,1,1,1,1"/>)";
  EXPECT_FALSE(readFrom<ztCAD_Point>(xml).property().hasLCS());
  EXPECT_FALSE(readFrom<ztCAD_TmplPoint>(xml).property().hasLCS());
}

TEST(Point, ReadingSetsTheDefaultLocaleToC) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    ztCAD_Point element;
    EXPECT_TRUE(read(element, R"(<point name="P1" center="1.5, 2.25, -0.5;"/>)"));
    EXPECT_TRUE(DefaultLocale::isC());
    EXPECT_EQ(text(element, false), "1.5, 2.25, -0.5;");
  }
}

// ----------------------------------------------------------------------------------------- copies, templates

TEST(Point, ChangingACopyKeepsTheSource) {
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

TEST(Point, ChangingAnAssignedPointKeepsTheSource) {
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
  ztCAD_Point element = fullPoint();
  const ztCAD_Point& itself = element;
  element = itself;
  EXPECT_EQ(text(element, true), fullText);
}

TEST(Point, CopiesKeepTheReadState) {
  const auto source = readFrom<ztCAD_Point>(R"(<point name="P1" center="1,2,3"/>)");
  const ztCAD_Point copy = source;
  ztCAD_Point assigned;
  assigned = source;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(assigned.readOk());
}

TEST(Point, AContainerHoldsACopyAndFindsItByAddress) {
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

TEST(TemplatePoint, CopiesCenterAndPropertiesOfItsSourceUnderANewName) {
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

TEST(TemplatePoint, ChangingItKeepsTheSource) {
  const ztCAD_Point source = fullPoint();
  bool nameIsFree = false;
  ztCAD_TmplPoint element("T1", source, nameIsFree);
  element.property().attributes().setComment("other");
  element.property().showable().setColor({});
  element.setCenter(ztCAD_Coord());
  EXPECT_EQ(text(source, true), fullText);
}

TEST(TemplatePoint, HasNoCenterIfItsSourceHasNone) {
  bool nameIsFree = false;
  const ztCAD_TmplPoint element("T1", ztCAD_Point(), nameIsFree);
  EXPECT_FALSE(element.center().isValid());
  EXPECT_EQ(written(element),
            R"(<templatePoint center="" color="" comment="" inform="" method="pointXYZ" name="T1"/>)");
}

TEST(TemplatePoint, DoesNotCopyTheReadStateOfItsSource) {
  const auto source = readFrom<ztCAD_Point>(R"(<point name="P1" center="1,2,3"/>)");
  bool nameIsFree = false;
  const ztCAD_TmplPoint element("T1", source, nameIsFree);
  EXPECT_FALSE(element.readOk());
  EXPECT_FALSE(element.wasRead());
}

TEST(TemplatePoint, MayHaveTheNameOfItsSource) {
  const ztCAD_Point source = fullPoint();
  bool nameIsFree = false;
  const ztCAD_TmplPoint element(source.name(), source, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(element.name().toStdString(), "P1");
}

TEST(TemplatePoint, ReadsAndWritesUnderItsOwnTag) {
  const std::string xml =
      R"(<templatePoint center="1, 2, 3;" color="" comment="" inform="" method="pointXYZ" name="T1"/>)";
  EXPECT_EQ(roundTrip<ztCAD_TmplPoint>(xml), xml);
}

}  // namespace
