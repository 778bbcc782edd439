#include "geometry/sphere.h"

#include <gtest/gtest.h>
#include <cstdint>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "core/container.h"
#include "geometry/default_locale.h"
#include "geometry/thread_count.h"
#include "geometry/watched_view.h"
#include "node_text.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_Sphere*, ztCAD_Solid*>);
static_assert(std::is_convertible_v<ztCAD_Sphere*, ztCAD_INameLCS_Selector*>);
static_assert(!std::is_convertible_v<ztCAD_Sphere*, ztCAD_cmnSelector2<ztCAD_KindTriangle>*>,
              "spheres have neither a kind of their own nor the kind of other solids");

using Reals = std::vector<double>;

ztCAD_Sphere sphere(const std::string& name, const ztCAD_Coord& center, double radius) {
  bool nameIsFree = false;
  return {fromUtf8(name), center, radius, nameIsFree};
}

ztCAD_Sphere fullSphere() {
  ztCAD_Sphere element = sphere("S1", ztCAD_Coord(1, 2.5, 0), 2.5);
  element.property().attributes().setComment("c");
  element.property().attributes().setInform("i");
  element.property().showable().setColor({255, 0, 0});
  element.property().showable().setVisible(ztCAD_Visible(true));
  element.property().setLcs(ztCAD_LCS(true, Reals(12, 1.0)));
  element.setMip(ztCAD_MIP({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  return element;
}

const char* const fullXml =
    R"(<solid LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" center="1, 2.5, 0;" color="RGB, 255, 0, 0" comment="c" inform="i" method="sphere" name="S1" radius="1" visible="true"/>)";

// ---------------------------------------------------------------------------------------------- construction

TEST(Sphere, HasNeitherCenterNorRadiusByDefault) {
  const ztCAD_Sphere element;
  EXPECT_FALSE(element.center().isValid());
  EXPECT_FALSE(element.hasRadius());
  EXPECT_EQ(element.radius(), std::nullopt);
  EXPECT_FALSE(element.hasMIP());
  EXPECT_FALSE(element.readOk());
  EXPECT_FALSE(element.wasRead());
  EXPECT_EQ(element.name().toStdString(), "");
}

TEST(Sphere, HasTheNameCenterAndRadiusPassedToItsConstructor) {
  bool nameIsFree = false;
  const ztCAD_Sphere element("Шар", ztCAD_Coord(1, 2, 3), 2.5, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(element.name().toStdString(), "Шар");
  EXPECT_EQ(text(element.center(), false), "1, 2, 3;");
  EXPECT_TRUE(element.hasRadius());
  EXPECT_EQ(element.radius(), 2.5);
  EXPECT_FALSE(element.hasMIP());
  EXPECT_FALSE(element.wasRead());
}

TEST(Sphere, AcceptsACenterWithoutAValueAndAnyRadius) {
  for (const double radius : {0.0, -1.0, 1e300}) {
    const ztCAD_Sphere element = sphere("S1", ztCAD_Coord(), radius);
    EXPECT_FALSE(element.center().isValid());
    EXPECT_EQ(element.radius(), radius);
  }
}

TEST(Sphere, TheRadiusCanBeReplacedAndCleared) {
  ztCAD_Sphere element = sphere("S1", ztCAD_Coord(), 2.5);
  element.setRadius(3.5);
  EXPECT_EQ(element.radius(), 3.5);
  element.setRadius(std::nullopt);
  EXPECT_FALSE(element.hasRadius());
  EXPECT_EQ(element.radius(), std::nullopt);
}

// There is no tag "sphere": a sphere is a "solid" that differs from others by its method.
TEST(Sphere, HasTheElementNameOfAllSolids) {
  EXPECT_EQ(ztCAD_Sphere().elementName().toStdString(), "solid");
  EXPECT_EQ(ztCAD_Sphere().lcsWord().toStdString(), "LCS");
}

// ----------------------------------------------------------------------------------------------------- texts

// Unlike the other elements, a sphere has no storage text, and none is invented.
TEST(Sphere, HasNoStorageText) {
  EXPECT_EQ(text(ztCAD_Sphere(), false), "");
  EXPECT_EQ(text(fullSphere(), false), "");
}

TEST(Sphere, DebugTextContainsMethodPropertiesCenterAndRadiusFlag) {
  EXPECT_EQ(text(ztCAD_Sphere(), true),
            "method==sphereprop=attr=(name=, comment=, inform=) ,color=visible=\n Center=coord,\n radius=0");
  EXPECT_EQ(
      text(sphere("S1", ztCAD_Coord(1, 2, 3), 2.5), true),
      "method==sphereprop=attr=(name=S1, comment=, inform=) ,color=visible=\n Center=coord(1, 2, 3;),\n radius=1");
}

TEST(Sphere, DebugTextHasTheMassInertiaDataBeforeTheCenter) {
  EXPECT_EQ(
      text(fullSphere(), true),
      "method==sphereprop=attr=(name=S1, comment=c, inform=i) ,color=RGB, 255, 0, 0visible=visible=truetrueCS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1\n MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10Center=coord(1, 2.5, 0;),\n radius=1");
}

TEST(Sphere, DebugTextAlwaysNamesTheMethodSphere) {
  ztCAD_Sphere element = sphere("%1", ztCAD_Coord(), 0);
  element.method().setMethod("%2");
  EXPECT_EQ(
      text(element, true),
      "method==sphereprop=attr=(name=%1, comment=, inform=) ,color=visible=\n Center=coord,\n radius=1");
}

// --------------------------------------------------------------------------------------------------- writing

TEST(Sphere, ADefaultSphereWritesAnEmptyCenterAndRadiusZero) {
  EXPECT_EQ(written(ztCAD_Sphere()),
            R"(<solid center="" color="" comment="" inform="" method="sphere" name="" radius="0"/>)");
}

TEST(Sphere, WritesOneElementWithoutChildren) { EXPECT_EQ(written(fullSphere()), fullXml); }

TEST(Sphere, AlwaysWritesTheMethodSphere) {
  for (const char* method : {"", "triangulation", "сфера"}) {
    ztCAD_Sphere element = fullSphere();
    element.method().setMethod(method);
    EXPECT_EQ(written(element), fullXml) << method;
  }
}

// The format stores whether a radius was given, not its value: readers of the format rely on "1" and "0".
TEST(Sphere, TheRadiusIsWrittenAsAFlag) {
  for (const double radius : {2.5, 1.0, 0.0, -3.0, 1e300}) {
    const QDomElement solid = ParsedXml(written(sphere("S1", ztCAD_Coord(1, 2, 3), radius))).root;
    EXPECT_EQ(solid.attribute("radius").toStdString(), "1") << radius;
  }
  ztCAD_Sphere element = sphere("S1", ztCAD_Coord(1, 2, 3), 2.5);
  element.setRadius(std::nullopt);
  EXPECT_EQ(ParsedXml(written(element)).root.attribute("radius").toStdString(), "0");
}

TEST(Sphere, ARadiusOfTwoAndAHalfIsLoadedAsOne) {
  const ztCAD_Sphere saved = sphere("S1", ztCAD_Coord(1, 2, 3), 2.5);
  const auto loaded = readFrom<ztCAD_Sphere>(written(saved));
  EXPECT_TRUE(loaded.readOk());
  EXPECT_TRUE(loaded.hasRadius());
  EXPECT_EQ(loaded.radius(), 1.0);
  EXPECT_EQ(saved.radius(), 2.5) << "saving must not change the object";
}

// The flag is read as a value: a sphere saved without a radius is loaded with radius 0.
TEST(Sphere, AMissingRadiusIsLoadedAsZero) {
  ztCAD_Sphere saved = sphere("S1", ztCAD_Coord(1, 2, 3), 2.5);
  saved.setRadius(std::nullopt);
  EXPECT_EQ(readFrom<ztCAD_Sphere>(written(saved)).radius(), 0.0);
}

TEST(Sphere, IsAppendedAfterTheChildrenOfItsParent) {
  ParsedXml xml(R"(<GMD a="1"><header/></GMD>)");
  sphere("A", ztCAD_Coord(1, 2, 3), 1).writeXml(xml.root, xml.document);
  sphere("B", ztCAD_Coord(), 1).writeXml(xml.root, xml.document);
  EXPECT_EQ(node_text::textOf(xml.root).toStdString(),
            R"(<GMD a="1"><header/>)"
            R"(<solid center="1, 2, 3;" color="" comment="" inform="" method="sphere" name="A" radius="1"/>)"
            R"(<solid center="" color="" comment="" inform="" method="sphere" name="B" radius="1"/></GMD>)");
}

// --------------------------------------------------------------------------------------------------- reading

struct ReadRow {
  const char* name;
  const char* attributes;
  bool ok;
  const char* center;
  std::optional<double> radius;
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

const ReadRow readRows[] = {
    {"Nothing", "", false, "", {}},
    {"CenterAndRadius", "name='S' center='1, 2, 3;' radius='2.5'", true, "1, 2, 3;", 2.5},
    {"AsWritten", "name='S' method='sphere' center='1, 2, 3;' radius='1'", true, "1, 2, 3;", 1},
    {"NoCenter", "name='S' radius='2.5'", false, "", 2.5},
    {"EmptyCenter", "name='S' center='' radius='2.5'", false, "", 2.5},
    {"WordInCenter", "name='S' center='1, x, 3;' radius='2.5'", false, "", 2.5},
    {"FourNumbersInCenter", "name='S' center='1,2,3,4' radius='2.5'", false, "", 2.5},
    {"OneNumberInCenter", "name='S' center='1' radius='2.5'", true, "1, 0, 0;", 2.5},
    {"NoRadius", "name='S' center='1,2,3'", false, "1, 2, 3;", {}},
    {"EmptyRadiusFailsAndIsSet", "name='S' center='1,2,3' radius=''", false, "1, 2, 3;", 0},
    {"WhitespaceRadius", "name='S' center='1,2,3' radius=' '", true, "1, 2, 3;", 0},
    {"WordAsRadius", "name='S' center='1,2,3' radius='abc'", true, "1, 2, 3;", 0},
    {"CyrillicRadius", "name='S' center='1,2,3' radius='два'", true, "1, 2, 3;", 0},
    {"DecimalCommaInRadius", "name='S' center='1,2,3' radius='2,5'", true, "1, 2, 3;", 0},
    {"UnitAfterRadius", "name='S' center='1,2,3' radius='2.5 mm'", true, "1, 2, 3;", 0},
    {"SpacesAroundRadius", "name='S' center='1,2,3' radius=' 2.5 '", true, "1, 2, 3;", 2.5},
    {"NegativeRadius", "name='S' center='1,2,3' radius='-2'", true, "1, 2, 3;", -2},
    {"ZeroRadius", "name='S' center='1,2,3' radius='0'", true, "1, 2, 3;", 0},
    {"ExponentInRadius", "name='S' center='1,2,3' radius='25e-1'", true, "1, 2, 3;", 2.5},
    {"RadiusInOtherCase", "name='S' center='1,2,3' Radius='2.5'", false, "1, 2, 3;", {}},
    {"MethodAndGeometryWithoutName", "method='sphere' center='1,2,3' radius='2.5'", false, "1, 2, 3;", 2.5},
    {"EmptyName", "name='' center='1,2,3' radius='2.5'", true, "1, 2, 3;", 2.5},
    {"InvalidColor", "name='S' color='red' center='1,2,3' radius='2.5'", false, "1, 2, 3;", 2.5},
    {"OtherMethod", "name='S' method='cube' center='1,2,3' radius='2.5'", true, "1, 2, 3;", 2.5},
};

std::string sphereXml(const ReadRow& row) { return std::string("<solid ") + row.attributes + "/>"; }

class SphereReading : public testing::TestWithParam<ReadRow> {};

TEST_P(SphereReading, RequiresCenterRadiusAndPropertyBlock) {
  ztCAD_Sphere element;
  EXPECT_EQ(read(element, sphereXml(GetParam())), GetParam().ok);
  EXPECT_EQ(element.readOk(), GetParam().ok);
  EXPECT_TRUE(element.wasRead());
  EXPECT_EQ(text(element.center(), false), GetParam().center);
  EXPECT_EQ(element.radius(), GetParam().radius);
  EXPECT_EQ(element.hasRadius(), GetParam().radius.has_value());
}

TEST_P(SphereReading, KeepsPreviousValuesWithoutValidNewOnes) {
  ztCAD_Sphere element = sphere("S0", ztCAD_Coord(7, 8, 9), 7);
  element.setReadOk(!GetParam().ok);
  read(element, sphereXml(GetParam()));
  EXPECT_EQ(element.readOk(), GetParam().ok) << "the state reflects the last read";
  EXPECT_EQ(text(element.center(), false), *GetParam().center ? GetParam().center : "7, 8, 9;");
  EXPECT_EQ(element.radius(), GetParam().radius.value_or(7));
}

TEST_P(SphereReading, DeterminesTheSelfCheck) {
  ztCAD_Sphere element = sphere("S0", ztCAD_Coord(7, 8, 9), 7);
  read(element, sphereXml(GetParam()));
  EXPECT_EQ(element.passesCheck(), GetParam().ok) << "regardless of its center and radius, which are set";
}

TEST_P(SphereReading, IsPerformedByReadAndCheckAndClearsTheFault) {
  for (bool fault : {true, false}) {
    ztCAD_Sphere element;
    const ParsedXml xml(sphereXml(GetParam()));
    EXPECT_EQ(element.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
    EXPECT_FALSE(fault);
    EXPECT_EQ(element.radius(), GetParam().radius);
    EXPECT_FALSE(faultAfterReading(element, sphereXml(GetParam()), !fault));
  }
}

INSTANTIATE_TEST_SUITE_P(Sphere, SphereReading, testing::ValuesIn(readRows),
                         [](const auto& row) { return row.param.name; });

TEST(Sphere, ReadsWhatItWrites) { EXPECT_EQ(roundTrip<ztCAD_Sphere>(fullXml), fullXml); }

TEST(Sphere, SixDigitsOfTheCenterSurviveARoundTrip) {
  const auto loaded = readFrom<ztCAD_Sphere>(written(sphere("S1", ztCAD_Coord(0.3333333, 1234567, 1e-7), 1)));
  EXPECT_EQ(loaded.center().x(), 0.333333);
  EXPECT_EQ(loaded.center().y(), 1.23457e+06);
  EXPECT_EQ(loaded.center().z(), 1e-07);
}

TEST(Sphere, ARadiusSetsTheDefaultLocaleToCWithoutACenter) {
  for (const QLocale::Language language : otherLanguages) {
    for (const char* radius : {"2.5", "", "abc"}) {
      const DefaultLocale other{QLocale(language)};
      ztCAD_Sphere element;
      EXPECT_FALSE(read(element, std::string("<solid name='S' radius='") + radius + "'/>"));
      EXPECT_TRUE(DefaultLocale::isC()) << radius;
    }
  }
}

TEST(Sphere, WithoutCenterAndRadiusTheDefaultLocaleIsKept) {
  const DefaultLocale other{QLocale(QLocale::German)};
  EXPECT_FALSE(readFrom<ztCAD_Sphere>("<solid name='S'/>").readOk());
  EXPECT_FALSE(DefaultLocale::isC());
}

// A triangulated solid is read in mode 0; a sphere has no list and does not change the mode.
TEST(Sphere, ReadingKeepsTheParallelMode) {
  const ThreadCount configured(1, ztParallel::Primary);
  const ParsedXml xml(fullXml);
  ReadWatch watch;
  const ztcad::DomView view(xml.root);
  ztCAD_Sphere element;
  bool fault = false;
  EXPECT_TRUE(element.readAndCheck(WatchedView(view, watch), fault));
  EXPECT_EQ(watch.modes, std::set<std::int32_t>{ztParallel::Primary});
}

TEST(Sphere, ChildrenAreIgnored) {
  ztCAD_Sphere element;
  EXPECT_TRUE(read(element, "<solid name='S' center='1' radius='1'><vertices>x</vertices>text</solid>"));
}

// ---------------------------------------------------------------------------------------- self-check, copies

TEST(Sphere, SelfCheckOfASphereThatWasNotReadRequiresCenterAndRadius) {
  EXPECT_FALSE(ztCAD_Sphere().passesCheck());
  EXPECT_FALSE(sphere("S1", ztCAD_Coord(), 2.5).passesCheck());
  EXPECT_TRUE(sphere("S1", ztCAD_Coord(1, 2, 3), 2.5).passesCheck());
  ztCAD_Sphere element = sphere("S1", ztCAD_Coord(1, 2, 3), 2.5);
  element.setRadius(std::nullopt);
  EXPECT_FALSE(element.passesCheck());
}

TEST(Sphere, ChangingACopyKeepsTheSource) {
  const ztCAD_Sphere source = fullSphere();
  ztCAD_Sphere copy = source;
  ztCAD_Sphere assigned;
  assigned = source;
  for (ztCAD_Sphere* other : {&copy, &assigned}) {
    EXPECT_EQ(written(*other), fullXml);
    EXPECT_EQ(other->radius(), 2.5);
    other->setName("other");
    other->property().attributes().setComment("other");
    other->method().setMethod("other");
    other->setCenter(ztCAD_Coord());
    other->setRadius(std::nullopt);
    other->setReadOk(true);
  }
  EXPECT_EQ(written(source), fullXml);
  EXPECT_EQ(source.radius(), 2.5);
  EXPECT_EQ(source.method().method().toStdString(), "");
  EXPECT_FALSE(source.wasRead());
}

TEST(Sphere, CopiesKeepTheReadState) {
  const auto source = readFrom<ztCAD_Sphere>(fullXml);
  const ztCAD_Sphere copy = source;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
}

TEST(Sphere, AContainerFindsItByAddress) {
  ztCAD_Cont<ztCAD_Sphere> spheres;
  const ztCAD_Sphere source = fullSphere();
  spheres.add(source);
  EXPECT_FALSE(spheres.remove(&source));
  EXPECT_TRUE(spheres.remove(&spheres.front()));
}

}  // namespace
