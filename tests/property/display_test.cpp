#include "property/display.h"

#include <gtest/gtest.h>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>

#include "node_text.h"
#include "xml/dom_backend.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_Color*, ztCAD_ISerialize*>);
static_assert(!std::is_convertible_v<ztCAD_Color*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_Visible*, ztCAD_INode*>);
static_assert(!std::is_convertible_v<ztCAD_Visible*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_gShowable*, ztCAD_INode*>);
static_assert(!std::is_convertible_v<ztCAD_gShowable*, ztCAD_ISerialize*>);

constexpr std::uint32_t maximum = 4294967295;

std::string colorXml(const std::string& value) { return "<e color=\"" + value + "\"/>"; }
std::string visibleXml(const std::string& value) { return "<e visible=\"" + value + "\"/>"; }

// ---------------------------------------------------------------------------------------------------- colour

TEST(Color, IsUnsetByDefault) {
  const ztCAD_Color color;
  EXPECT_FALSE(color.isSet());
  EXPECT_EQ(color.red(), 0u);
  EXPECT_EQ(color.green(), 0u);
  EXPECT_EQ(color.blue(), 0u);
  EXPECT_EQ(onlyText(color), "");
}

TEST(Color, AnUnsetColorIsWrittenAsAnEmptyAttribute) {
  EXPECT_EQ(written(ztCAD_Color()), R"(<e color=""/>)");
}

TEST(Color, TextConsistsOfRgbAndThreeComponents) {
  EXPECT_EQ(onlyText(ztCAD_Color(255, 128, 0)), "RGB, 255, 128, 0");
  EXPECT_EQ(onlyText(ztCAD_Color(0, 0, 0)), "RGB, 0, 0, 0");
  EXPECT_EQ(onlyText(ztCAD_Color(300, 70000, maximum)), "RGB, 300, 70000, 4294967295");
}

TEST(Color, CanBeSetAndUnset) {
  ztCAD_Color color;
  color.set(1, 2, 3);
  EXPECT_EQ(written(color), R"(<e color="RGB, 1, 2, 3"/>)");
  color.unset();
  EXPECT_FALSE(color.isSet());
  EXPECT_EQ(color.red() + color.green() + color.blue(), 0u);
  EXPECT_EQ(written(color), R"(<e color=""/>)");
}

struct ColorRow {
  const char* name;
  const char* value;
  bool ok;
  const char* text;  // empty: the color stays unset
};
std::ostream& operator<<(std::ostream& out, const ColorRow& row) { return out << row.name; }

const ColorRow colorRows[] = {
    {"Empty", "", true, ""},
    {"WithoutSpaces", "RGB,1,2,3", true, "RGB, 1, 2, 3"},
    {"WithSpaces", "RGB, 1, 2, 3", true, "RGB, 1, 2, 3"},
    {"ManySpaces", "RGB,  1  ,   2,3 ", true, "RGB, 1, 2, 3"},
    {"Zeros", "RGB, 0, 0, 0", true, "RGB, 0, 0, 0"},
    {"AboveTheRangeOfAByte", "RGB, 300, 70000, 4294967295", true, "RGB, 300, 70000, 4294967295"},
    {"OneAbove32Bits", "RGB, 4294967296, 4294967295, 1", true, "RGB, 0, 4294967295, 1"},
    {"FarAbove32Bits", "RGB, 1, 99999999999999999999999, 3", true, "RGB, 1, 0, 3"},
    {"WordAsRed", "RGB, x, 2, 3", true, "RGB, 0, 2, 3"},
    {"WordAsGreen", "RGB, 1, x, 3", true, "RGB, 1, 0, 3"},
    {"WordAsBlue", "RGB, 1, 2, x", true, "RGB, 1, 2, 0"},
    {"Negative", "RGB, -1, 2, 3", true, "RGB, 0, 2, 3"},
    {"Fraction", "RGB, 1.0, 2.5, 3", true, "RGB, 0, 0, 3"},
    {"Exponent", "RGB, 1e2, 2, 3", true, "RGB, 0, 2, 3"},
    {"Hexadecimal", "RGB, 0x10, 10, 010", true, "RGB, 0, 10, 10"},
    {"ArabicDigits", "RGB, ١, 2, 3", true, "RGB, 0, 2, 3"},
    {"PlusSign", "RGB, +1, 2, 3", true, "RGB, 1, 2, 3"},
    {"WhitespaceComponent", "RGB, , 2, 3", true, "RGB, 0, 2, 3"},
    {"EmptyPartsIgnored", ",RGB,,1,,2,3,", true, "RGB, 1, 2, 3"},
    {"OnlyTag", "RGB", true, ""},
    {"OneComponent", "RGB, 1", true, ""},
    {"TwoComponents", "RGB, 1, 2", true, ""},
    {"EmptyThirdComponent", "RGB,1,2,", true, ""},
    {"FourComponents", "RGB, 1, 2, 3, 4", true, ""},
    {"OnlyCommas", ",,,", true, ""},
    {"LowerCaseTag", "rgb, 1, 2, 3", false, ""},
    {"MixedCaseTag", "Rgb, 1, 2, 3", false, ""},
    {"SpaceBeforeTag", " RGB, 1, 2, 3", false, ""},
    {"SpaceAfterTag", "RGB , 1, 2, 3", false, ""},
    {"OtherTag", "RGBA, 1, 2, 3", false, ""},
    {"TagWithoutComma", "RGB 1, 2, 3", false, ""},
    {"CyrillicTag", "РГБ, 1, 2, 3", false, ""},
    {"OnlyNumbers", "1, 2, 3", false, ""},
    {"TagAtTheEnd", "1, 2, 3, RGB", false, ""},
    {"OnlyWhitespace", " ", false, ""},
    {"WhitespaceAndCommas", " , ,", false, ""},
    {"Semicolon", "RGB; 1; 2; 3", false, ""},
};

class ColorReading : public testing::TestWithParam<ColorRow> {};

TEST_P(ColorReading, RequiresRgbAndThreeComponents) {
  ztCAD_Color color;
  EXPECT_EQ(read(color, colorXml(GetParam().value)), GetParam().ok);
  EXPECT_EQ(onlyText(color), GetParam().text);
  EXPECT_EQ(color.isSet(), *GetParam().text != '\0');
}

TEST_P(ColorReading, WritesItsColor) {
  EXPECT_EQ(roundTrip<ztCAD_Color>(colorXml(GetParam().value)), colorXml(GetParam().text));
}

TEST_P(ColorReading, KeepsThePreviousColorWithoutANewOne) {
  ztCAD_Color color(7, 8, 9);
  read(color, colorXml(GetParam().value));
  EXPECT_EQ(onlyText(color), *GetParam().text ? GetParam().text : "RGB, 7, 8, 9");
}

TEST_P(ColorReading, ClearsTheFault) {
  ztCAD_Color color;
  EXPECT_FALSE(faultAfterReading(color, colorXml(GetParam().value), true));
  EXPECT_FALSE(faultAfterReading(color, colorXml(GetParam().value), false));
}

INSTANTIATE_TEST_SUITE_P(Color, ColorReading, testing::ValuesIn(colorRows),
                         [](const auto& row) { return row.param.name; });

TEST(Color, AnAbsentColorSucceedsAndKeepsThePreviousOne) {
  EXPECT_EQ(roundTrip<ztCAD_Color>(R"(<e Color="RGB,1,2,3"/>)"), R"(<e color=""/>)");
  ztCAD_Color color(7, 8, 9);
  EXPECT_TRUE(read(color, "<e/>"));
  EXPECT_EQ(onlyText(color), "RGB, 7, 8, 9");
}

TEST(Color, ChangingACopyKeepsTheSource) {
  const ztCAD_Color source(1, 2, 3);
  ztCAD_Color copy = source;
  copy.set(4, 5, 6);
  EXPECT_EQ(onlyText(source), "RGB, 1, 2, 3");
}

// ------------------------------------------------------------------------------------------------ visibility

TEST(Visible, IsUndecidedByDefault) {
  const ztCAD_Visible visible;
  EXPECT_FALSE(visible.isSet());
  EXPECT_EQ(visible.value(), std::nullopt);
  EXPECT_EQ(onlyText(visible), "");
  EXPECT_EQ(written(visible), "<e/>");
}

TEST(Visible, TextRepeatsTheWord) {
  EXPECT_EQ(onlyText(ztCAD_Visible(true)), "visible=truetrue");
  EXPECT_EQ(onlyText(ztCAD_Visible(false)), "visible=falsefalse");
}

TEST(Visible, WritesTheWordOnce) {
  EXPECT_EQ(written(ztCAD_Visible(true)), R"(<e visible="true"/>)");
  EXPECT_EQ(written(ztCAD_Visible(false)), R"(<e visible="false"/>)");
}

TEST(Visible, SettingNulloptUnsetsIt) {
  ztCAD_Visible visible(true);
  visible.setValue(false);
  EXPECT_EQ(visible.value(), false);
  visible.setValue(std::nullopt);
  EXPECT_FALSE(visible.isSet());
  EXPECT_EQ(written(visible), "<e/>");
}

struct VisibleRow {
  const char* name;
  const char* value;
  bool visible;
};
std::ostream& operator<<(std::ostream& out, const VisibleRow& row) { return out << row.name; }

const VisibleRow visibleRows[] = {
    {"Empty", "", true},
    {"False", "false", false},
    {"FalseInCapitals", "FALSE", false},
    {"FalseCapitalised", "False", false},
    {"FalseInMixedCase", "fAlSe", false},
    {"FalseWithSpaces", " false ", true},
    {"FalseWithTrailingLetter", "falsey", true},
    {"True", "true", true},
    {"TrueInCapitals", "TRUE", true},
    {"OtherWord", "no", true},
    {"Hidden", "hidden", true},
    {"CyrillicWord", "ложь", true},
    {"CyrillicLetterInFalse", "fаlse", true},
    {"Emoji", "🙂", true},
    {"Whitespace", " ", true},
    {"Zero", "0", false},
    {"NegativeZero", "-0", false},
    {"ZeroWithSpaces", " 0 ", false},
    {"ZeroWithFraction", "0.000", false},
    {"ZeroWithExponent", "0e9", false},
    {"One", "1", true},
    {"Two", "2", true},
    {"Half", "0.5", true},
    {"WithExponent", "5e-1", true},
    {"SmallestNumber", "4.94066e-324", true},
    {"PositiveSign", "+1", true},
    {"Negative", "-1", false},
    {"NegativeFraction", "-0.5", false},
    {"Infinite", "inf", true},
    {"NegativeInfinite", "-inf", false},
    {"NotANumber", "nan", false},
    {"TooLargeForANumber", "1e999", true},
    {"TooLargeForANegativeNumber", "-1e999", true},
    {"TooSmallForANumber", "1e-999", true},
    {"DecimalComma", "0,0", true},
    {"TwoNumbers", "0 0", true},
    {"Hexadecimal", "0x0", true},
    {"ArabicZero", "٠", true},
};

class VisibleReading : public testing::TestWithParam<VisibleRow> {};

TEST_P(VisibleReading, FalseAndNumbersUpToZeroHide) {
  ztCAD_Visible visible(!GetParam().visible);
  EXPECT_TRUE(read(visible, visibleXml(GetParam().value)));
  EXPECT_EQ(visible.value(), GetParam().visible);
}

TEST_P(VisibleReading, WritesTrueOrFalse) {
  EXPECT_EQ(roundTrip<ztCAD_Visible>(visibleXml(GetParam().value)),
            visibleXml(GetParam().visible ? "true" : "false"));
}

INSTANTIATE_TEST_SUITE_P(Visible, VisibleReading, testing::ValuesIn(visibleRows),
                         [](const auto& row) { return row.param.name; });

TEST(Visible, AnAbsentAttributeKeepsItAndWritesNothing) {
  EXPECT_EQ(roundTrip<ztCAD_Visible>(R"(<e Visible="true"/>)"), "<e/>");
  ztCAD_Visible visible(false);
  EXPECT_TRUE(read(visible, "<e/>"));
  EXPECT_EQ(visible.value(), false);
}

TEST(Visible, EveryReadClearsTheFault) {
  for (const char* xml : {"<e/>", R"(<e visible="false"/>)", R"(<e visible="word"/>)"}) {
    for (const bool before : {false, true}) {
      ztCAD_Visible visible;
      EXPECT_FALSE(faultAfterReading(visible, xml, before)) << xml;
    }
  }
}

// ------------------------------------------------------------------------------------- colour and visibility

ztCAD_gShowable showable(const ztCAD_Color& color, const ztCAD_Visible& visible) {
  ztCAD_gShowable display;
  display.setColor(color);
  display.setVisible(visible);
  return display;
}

TEST(Showable, TextWithoutColorAndVisibilityIsTheLabels) {
  EXPECT_EQ(onlyText(ztCAD_gShowable()), "color=visible=");
}

TEST(Showable, TextConcatenatesColorAndVisibility) {
  EXPECT_EQ(onlyText(showable({255, 0, 0}, ztCAD_Visible(true))),
            "color=RGB, 255, 0, 0visible=visible=truetrue");
  EXPECT_EQ(onlyText(showable({}, ztCAD_Visible(false))), "color=visible=visible=falsefalse");
  EXPECT_EQ(onlyText(showable({1, 2, 3}, {})), "color=RGB, 1, 2, 3visible=");
}

TEST(Showable, WritesTheColorAlwaysAndTheVisibilityIfSet) {
  EXPECT_EQ(written(ztCAD_gShowable()), R"(<e color=""/>)");
  EXPECT_EQ(written(showable({1, 2, 3}, {})), R"(<e color="RGB, 1, 2, 3"/>)");
  EXPECT_EQ(written(showable({}, ztCAD_Visible(false))), R"(<e color="" visible="false"/>)");
}

TEST(Showable, ReadsBothAttributesInAnyOrder) {
  const std::string both = R"(<e color="RGB, 1, 2, 3" visible="false"/>)";
  EXPECT_EQ(roundTrip<ztCAD_gShowable>(R"(<e color="RGB,1,2,3" visible="0"/>)"), both);
  EXPECT_EQ(roundTrip<ztCAD_gShowable>(R"(<e visible="0" color="RGB,1,2,3"/>)"), both);
}

TEST(Showable, AnInvalidColorFailsButTheVisibilityIsRead) {
  ztCAD_gShowable display;
  EXPECT_FALSE(read(display, R"(<e color="red" visible="false"/>)"));
  EXPECT_EQ(written(display), R"(<e color="" visible="false"/>)");
}

TEST(Showable, AbsentAttributesSucceedAndKeepBoth) {
  ztCAD_gShowable display = showable({1, 2, 3}, ztCAD_Visible(true));
  EXPECT_TRUE(read(display, "<e/>"));
  EXPECT_EQ(written(display), R"(<e color="RGB, 1, 2, 3" visible="true"/>)");
}

TEST(Showable, EveryReadClearsTheFault) {
  for (const char* xml : {"<e/>", R"(<e color="red"/>)", R"(<e color="RGB,1,2,3" visible="x"/>)"}) {
    for (const bool before : {false, true}) {
      ztCAD_gShowable display;
      EXPECT_FALSE(faultAfterReading(display, xml, before)) << xml;
    }
  }
}

TEST(Showable, ChangingACopyKeepsTheSource) {
  const ztCAD_gShowable source = showable({1, 2, 3}, ztCAD_Visible(true));
  ztCAD_gShowable copy = source;
  copy.setColor(ztCAD_Color());
  copy.setVisible(ztCAD_Visible());
  EXPECT_EQ(onlyText(source), "color=RGB, 1, 2, 3visible=visible=truetrue");
  EXPECT_EQ(onlyText(copy), "color=visible=");
}

}  // namespace
