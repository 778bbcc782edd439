#include "geometry/coordinate.h"

#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <string>
#include <tuple>
#include <type_traits>

#include "geometry/default_locale.h"
#include "node_text.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_Coord*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_Vertex*, ztCAD_ISerialize*>);
static_assert(!std::is_convertible_v<ztCAD_Coord, ztCAD_Vertex>, "a vertex must be created explicitly");

using Components = std::tuple<double, double, double>;

Components componentsOf(const ztCAD_Coord& coord) { return {coord.x(), coord.y(), coord.z()}; }

TEST(Coordinate, HasNoValueAndZeroComponentsByDefault) {
  const ztCAD_Coord coord;
  EXPECT_FALSE(coord.isValid());
  EXPECT_EQ(componentsOf(coord), Components(0, 0, 0));
}

TEST(Coordinate, TextsWithoutAValueContainNoNumbers) {
  EXPECT_EQ(text(ztCAD_Coord(), false), "");
  EXPECT_EQ(text(ztCAD_Coord(), true), "coord");
}

TEST(Coordinate, IsValidIfConstructedFromComponents) {
  const ztCAD_Coord coord(1.5, 0, -2);
  EXPECT_TRUE(coord.isValid());
  EXPECT_EQ(componentsOf(coord), Components(1.5, 0, -2));
}

TEST(Coordinate, SettingMakesItValid) {
  ztCAD_Coord coord;
  coord.set(0, 0, 0);
  EXPECT_TRUE(coord.isValid());
  EXPECT_EQ(text(coord, false), "0, 0, 0;");
}

TEST(Coordinate, TextsContainTheComponents) {
  EXPECT_EQ(text(ztCAD_Coord(1.5, 0, -2), false), "1.5, 0, -2;");
  EXPECT_EQ(text(ztCAD_Coord(1.5, 0, -2), true), "coord(1.5, 0, -2;)");
  EXPECT_EQ(text(ztCAD_Coord(1, 2.5, 0), false), "1, 2.5, 0;");
}

TEST(Coordinate, KeepsSixSignificantDigits) {
  EXPECT_EQ(text(ztCAD_Coord(0.1234567, 1e-7, 1234567.0), false), "0.123457, 1e-07, 1.23457e+06;");
  EXPECT_EQ(text(ztCAD_Coord(0.5, 100.0, -0.0), false), "0.5, 100, 0;");
}

TEST(Coordinate, FormatsNonFiniteNumbers) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(text(ztCAD_Coord(infinity, -infinity, std::numeric_limits<double>::quiet_NaN()), false),
            "inf, -inf, nan;");
}

// ------------------------------------------------------------------------------------------------------ read

struct ReadRow {
  const char* name;
  const char* text;
  bool ok;
  const char* written;  // empty: the read fails
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

const ReadRow readRows[] = {
    {"Empty", "", false, ""},
    {"ThreeNumbers", "1, 2, 3;", true, "1, 2, 3;"},
    {"WithoutSpacesAndSemicolon", "1,2,3", true, "1, 2, 3;"},
    {"OneNumber", "1", true, "1, 0, 0;"},
    {"OneNumberAndSemicolon", "1;", true, "1, 0, 0;"},
    {"TwoNumbers", "1, 2", true, "1, 2, 0;"},
    {"FourNumbers", "1, 2, 3, 4;", false, ""},
    {"ManyNumbers", "1,2,3,4,5,6,7,8,9", false, ""},
    {"Whitespace", " ", false, ""},
    {"OnlySemicolon", ";", false, ""},
    {"OnlyCommas", ",,", false, ""},
    {"EmptyPartsIgnored", ",1,,2,,3,", true, "1, 2, 3;"},
    {"WhitespacePart", "1, , 3", false, ""},
    {"SemicolonsAreRemoved", "1;2, 3;, ;4", true, "12, 3, 4;"},
    {"WordFirst", "x, 2, 3;", false, ""},
    {"WordLast", "1, 2, x;", false, ""},
    {"CyrillicWord", "1, икс, 3;", false, ""},
    {"Emoji", "1, 2, 🙂;", false, ""},
    {"Placeholder", "%1, 2, 3;", false, ""},
    {"Parentheses", "(1, 2, 3;)", false, ""},
    {"SpacesBetweenNumbers", "1 2 3", false, ""},
    {"SurroundingLineFeeds", "\n1,\t2 ,\n3\n", true, "1, 2, 3;"},
    {"NumberForms", "+1, .5, 2e3", true, "1, 0.5, 2000;"},
    {"NegativeZero", "-0, -0.0, 0", true, "0, 0, 0;"},
    {"Overflow", "1e999, 0, 0", false, ""},
    {"Underflow", "1e-999, 0, 0", false, ""},
    {"NotFinite", "inf, -inf, nan", true, "inf, -inf, nan;"},
    {"Hexadecimal", "0x10, 0, 0", false, ""},
    {"ArabicDigits", "١, 0, 0", false, ""},
};

class CoordinateReading : public testing::TestWithParam<ReadRow> {};

TEST_P(CoordinateReading, ReadsOneToThreeNumbers) {
  ztCAD_Coord coord;
  EXPECT_EQ(coord.fromText(fromUtf8(GetParam().text)), GetParam().ok);
  EXPECT_EQ(coord.isValid(), GetParam().ok);
  EXPECT_EQ(text(coord, false), GetParam().written);
}

TEST_P(CoordinateReading, KeepsThePreviousValueOnFailure) {
  ztCAD_Coord coord(7, 8, 9);
  static_cast<void>(coord.fromText(fromUtf8(GetParam().text)));
  EXPECT_EQ(text(coord, false), GetParam().ok ? GetParam().written : "7, 8, 9;");
}

TEST_P(CoordinateReading, SetsTheDefaultLocaleToC) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    ztCAD_Coord coord;
    EXPECT_EQ(coord.fromText(fromUtf8(GetParam().text)), GetParam().ok);
    EXPECT_TRUE(DefaultLocale::isC());
  }
}

INSTANTIATE_TEST_SUITE_P(Coordinate, CoordinateReading, testing::ValuesIn(readRows),
                         [](const auto& row) { return row.param.name; });

TEST(Coordinate, MissingComponentsAreZero) {
  ztCAD_Coord coord(7, 8, 9);
  EXPECT_TRUE(coord.fromText("1, 2"));
  EXPECT_EQ(componentsOf(coord), Components(1, 2, 0));
  EXPECT_TRUE(coord.fromText("5"));
  EXPECT_EQ(componentsOf(coord), Components(5, 0, 0));
}

TEST(Coordinate, ReadsAllDigits) {
  ztCAD_Coord coord;
  EXPECT_TRUE(coord.fromText("0.1234567890123456, -12345678.9, 4.9e-324"));
  EXPECT_EQ(componentsOf(coord), Components(0.1234567890123456, -12345678.9, 4.9e-324));
}

TEST(Coordinate, TextsDoNotDependOnTheDefaultLocale) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    EXPECT_EQ(text(ztCAD_Coord(1.5, 123456, -0.25), false), "1.5, 123456, -0.25;");
    EXPECT_EQ(text(ztCAD_Coord(1.5, 123456, -0.25), true), "coord(1.5, 123456, -0.25;)");
  }
}

TEST(Coordinate, ReadsItsTextWithSixDigits) {
  ztCAD_Coord coord;
  EXPECT_TRUE(coord.fromText(fromUtf8(text(ztCAD_Coord(0.1234567, -1e-7, 1234567.0), false))));
  EXPECT_EQ(componentsOf(coord), Components(0.123457, -1e-7, 1234570.0));
}

TEST(Coordinate, ChangingACopyKeepsTheSource) {
  const ztCAD_Coord source(1, 2, 3);
  ztCAD_Coord copy = source;
  copy.set(4, 5, 6);
  EXPECT_EQ(componentsOf(source), Components(1, 2, 3));
}

// ---------------------------------------------------------------------------------------------------- vertex

TEST(Vertex, IsValidIfItsCoordinateIs) {
  EXPECT_FALSE(ztCAD_Vertex().coord().isValid());
  EXPECT_FALSE(ztCAD_Vertex(ztCAD_Coord()).coord().isValid());
  EXPECT_TRUE(ztCAD_Vertex(ztCAD_Coord(0, 0, 0)).coord().isValid());
}

TEST(Vertex, HoldsACopyOfItsCoordinate) {
  ztCAD_Coord coord(1, 2, 3);
  const ztCAD_Vertex vertex(coord);
  coord.set(4, 5, 6);
  EXPECT_EQ(componentsOf(vertex.coord()), Components(1, 2, 3));
}

TEST(Vertex, HasTheTextsOfItsCoordinate) {
  ztCAD_Vertex vertex;
  EXPECT_EQ(text(vertex, false), "");
  EXPECT_EQ(text(vertex, true), "coord");
  vertex.setCoord(ztCAD_Coord(1.5, 0, -2));
  EXPECT_EQ(text(vertex, false), "1.5, 0, -2;");
  EXPECT_EQ(text(vertex, true), "coord(1.5, 0, -2;)");
}

}  // namespace
