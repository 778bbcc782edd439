#include "property/coordinate_system.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <ostream>
#include <QTextStream>
#include <string>
#include <type_traits>
#include <vector>

#include "node_text.h"
#include "property/system_values.h"
#include "xml/dom_backend.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_LCS*, ztCAD_ISerialize*>);
static_assert(!std::is_convertible_v<ztCAD_LCS*, ztCAD_INode*>);

using Values = std::vector<double>;
using ztcad::isEqual;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const char* const identityText = "CS, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1";

ztCAD_LCS local(const Values& values) { return {true, values}; }
ztCAD_LCS identitySystem() { return local({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}); }

std::string lcsXml(const std::string& value) { return "<e LCS=\"" + value + "\"/>"; }

// ----------------------------------------------------------------------------------------------- text, write

TEST(CoordinateSystem, IsEmptyAndLocalByDefault) {
  const ztCAD_LCS system;
  EXPECT_TRUE(system.values().empty());
  EXPECT_TRUE(system.isLocal());
  EXPECT_EQ(onlyText(system), "");
}

TEST(CoordinateSystem, AnEmptySystemWritesAnEmptyAttribute) {
  EXPECT_EQ(written(ztCAD_LCS()), R"(<e LCS=""/>)");
  EXPECT_EQ(written(ztCAD_LCS(false, {})), R"(<e MCS=""/>)");
}

TEST(CoordinateSystem, TextConsistsOfTagAndValues) {
  EXPECT_EQ(onlyText(identitySystem()), identityText);
  EXPECT_EQ(onlyText(local({1.5})), "CS, 1.5");
}

TEST(CoordinateSystem, AModelSystemDiffersOnlyInTheAttributeName) {
  const ztCAD_LCS model(false, identitySystem().values());
  EXPECT_EQ(onlyText(model), identityText);
  EXPECT_EQ(written(model), std::string("<e MCS=\"") + identityText + "\"/>");
  EXPECT_EQ(written(identitySystem()), std::string("<e LCS=\"") + identityText + "\"/>");
}

TEST(CoordinateSystem, SettersChangeBothMembers) {
  ztCAD_LCS system;
  system.setValues({1, 2});
  system.setIsLocal(false);
  EXPECT_EQ(written(system), R"(<e MCS="CS, 1, 2"/>)");
}

TEST(CoordinateSystem, ValuesHaveSixSignificantDigits) {
  EXPECT_EQ(onlyText(local({0.123456789, 1234567.0, 1e-7, -2.5, -0.0, 1e100})),
            "CS, 0.123457, 1.23457e+06, 1e-07, -2.5, 0, 1e+100");
}

TEST(CoordinateSystem, ValuesAreFormattedAsByQTextStream) {
  for (const double value : {0.0, -0.0, 0.5, 100.0, 123456.0, 999999.5, 100000.5, 0.0009765625, 1000.125,
                             1e-5, -1.234567e-308, 1.7976931348623157e308, infinity, -infinity}) {
    QString expected("CS, ");
    QTextStream(&expected) << value;
    EXPECT_EQ(onlyText(local({value})), expected.toStdString());
  }
}

// ------------------------------------------------------------------------------------------------------ read

struct ReadRow {
  const char* name;
  const char* value;
  const char* text;  // empty: the read fails
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

const ReadRow readRows[] = {
    {"Empty", "", ""},
    {"OnlyTag", "CS", ""},
    {"OneValue", "CS, 1", ""},
    {"ElevenValues", "CS,1,2,3,4,5,6,7,8,9,10,11", ""},
    {"TwelveValues", "CS,1,2,3,4,5,6,7,8,9,10,11,12", "CS, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12"},
    {"ThirteenValues", "CS,1,2,3,4,5,6,7,8,9,10,11,12,13", ""},
    {"TwelveValuesWithoutTag", "1,2,3,4,5,6,7,8,9,10,11,12", ""},
    {"ThirteenValuesWithoutTag", "1,2,3,4,5,6,7,8,9,10,11,12,13", ""},
    {"Whitespace", "CS,  1 ,2, 3,4,5,6,7,8,9,10,11,  12 ", "CS, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12"},
    {"EmptyPartsDropped", ",CS,,1,2,3,4,5,6,7,8,9,10,11,12,", "CS, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12"},
    {"WhitespaceValueIsZero", "CS, ,2,3,4,5,6,7,8,9,10,11,12", "CS, 0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12"},
    {"InvalidNumberIsZero", "CS,x,1.2.3,0x10,4 4,1e999,-1e999,1e-999,тест,🙂,%1,--1,1;",
     "CS, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0"},
    {"NumberForms", "CS,+1,-2,.5,6.,1e3,1E-3,-0,007,0.1234567,inf,-inf,nan",
     "CS, 1, -2, 0.5, 6, 1000, 0.001, 0, 7, 0.123457, inf, -inf, nan"},
    {"LowerCaseTag", "cs,1,2,3,4,5,6,7,8,9,10,11,12", ""},
    {"OtherTag", "LCS,1,2,3,4,5,6,7,8,9,10,11,12", ""},
    {"CyrillicTag", "СS,1,2,3,4,5,6,7,8,9,10,11,12", ""},
    {"SpaceBeforeTag", " CS,1,2,3,4,5,6,7,8,9,10,11,12", ""},
    {"SpaceAfterTag", "CS ,1,2,3,4,5,6,7,8,9,10,11,12", ""},
    {"TagAtTheEnd", "1,2,3,4,5,6,7,8,9,10,11,12,CS", ""},
    {"Semicolons", "CS;1;2;3;4;5;6;7;8;9;10;11;12", ""},
};

class CoordinateSystemReading : public testing::TestWithParam<ReadRow> {};

TEST_P(CoordinateSystemReading, RequiresTheTagAndTwelveValues) {
  const bool expected = *GetParam().text != '\0';
  ztCAD_LCS system;
  EXPECT_EQ(read(system, lcsXml(GetParam().value)), expected);
  EXPECT_EQ(onlyText(system), GetParam().text);
  EXPECT_EQ(system.values().size(), expected ? 12u : 0u);
}

TEST_P(CoordinateSystemReading, ReadsAModelSystemByTheSameRule) {
  ztCAD_LCS system(false, {});
  EXPECT_EQ(read(system, std::string("<e MCS=\"") + GetParam().value + "\"/>"), *GetParam().text != '\0');
  EXPECT_EQ(onlyText(system), GetParam().text);
  EXPECT_FALSE(system.isLocal());
}

TEST_P(CoordinateSystemReading, ChangesNothingWhenItFails) {
  ztCAD_LCS system = local({1, 2});
  if (read(system, lcsXml(GetParam().value))) return;
  EXPECT_EQ(system.values(), (Values{1, 2}));
  EXPECT_TRUE(system.isLocal());
}

TEST_P(CoordinateSystemReading, ClearsTheFault) {
  ztCAD_LCS system;
  EXPECT_FALSE(faultAfterReading(system, lcsXml(GetParam().value), true));
  EXPECT_FALSE(faultAfterReading(system, lcsXml(GetParam().value), false));
}

INSTANTIATE_TEST_SUITE_P(CoordinateSystem, CoordinateSystemReading, testing::ValuesIn(readRows),
                         [](const auto& row) { return row.param.name; });

TEST(CoordinateSystem, ReadsTwelveRealsExactly) {
  const auto system =
      readFrom<ztCAD_LCS>(lcsXml("CS, 0.1, -0.2, 1e-3, 1, 0, 0, 0, 1, 0, 0, 0, 12345.678901"));
  EXPECT_EQ(system.values(), (Values{0.1, -0.2, 1e-3, 1, 0, 0, 0, 1, 0, 0, 0, 12345.678901}));
}

TEST(CoordinateSystem, OverflowReadsAsZero) {
  const auto system = readFrom<ztCAD_LCS>(lcsXml("CS,1e999,-1e999,0,0,0,0,0,0,0,0,0,0"));
  EXPECT_EQ(system.values(), Values(12, 0.0));
}

TEST(CoordinateSystem, AnAbsentAttributeFails) {
  ztCAD_LCS system;
  EXPECT_FALSE(read(system, R"(<e lcs="CS,1,2,3,4,5,6,7,8,9,10,11,12"/>)"));
}

TEST(CoordinateSystem, ReadsOnlyTheAttributeOfItsOwnKind) {
  const std::string lcs = R"(<e LCS="CS,1,2,3,4,5,6,7,8,9,10,11,12"/>)";
  const std::string mcs = R"(<e MCS="CS,1,2,3,4,5,6,7,8,9,10,11,12"/>)";
  ztCAD_LCS localSystem;
  ztCAD_LCS modelSystem(false, {});
  EXPECT_FALSE(read(localSystem, mcs));
  EXPECT_FALSE(read(modelSystem, lcs));
  EXPECT_TRUE(localSystem.values().empty());
  EXPECT_TRUE(modelSystem.values().empty());
}

TEST(CoordinateSystem, IgnoresTheAttributeOfTheOtherKind) {
  const std::string both = R"(<e MCS="CS,2,2,2,2,2,2,2,2,2,2,2,2" LCS="CS,1,1,1,1,1,1,1,1,1,1,1,1"/>)";
  ztCAD_LCS modelSystem(false, {});
  EXPECT_TRUE(read(modelSystem, both));
  EXPECT_EQ(modelSystem.values(), Values(12, 2.0));
  EXPECT_EQ(readFrom<ztCAD_LCS>(both).values(), Values(12, 1.0));
}

TEST(CoordinateSystem, ReadValuesAreAppendedToExistingOnes) {
  ztCAD_LCS system = local({7});
  EXPECT_TRUE(read(system, lcsXml("CS,1,1,1,1,1,1,1,1,1,1,1,1")));
  ASSERT_EQ(system.values().size(), 13u);
  EXPECT_EQ(system.values().front(), 7);
  EXPECT_EQ(system.values().back(), 1);
}

TEST(CoordinateSystem, ReadsAndWritesThroughViewAndSink) {
  ParsedXml from(lcsXml(identityText));
  ParsedXml to("<e/>");
  ztCAD_LCS system;
  bool fault = true;
  EXPECT_TRUE(system.read(ztcad::DomView(from.root), fault));
  EXPECT_FALSE(fault);
  ztcad::DomSink sink(to.root, to.document);
  system.write(sink);
  EXPECT_EQ(node_text::textOf(to.root).toStdString(), lcsXml(identityText));
}

TEST(CoordinateSystem, ChangingACopyKeepsTheSource) {
  const ztCAD_LCS source = identitySystem();
  ztCAD_LCS copy = source;
  copy.setValues({});
  copy.setIsLocal(false);
  EXPECT_EQ(written(source), lcsXml(identityText));
  EXPECT_EQ(written(copy), R"(<e MCS=""/>)");
}

TEST(CoordinateSystem, ConstructorCopiesTheArray) {
  Values values = {1, 2, 3};
  const ztCAD_LCS system(true, values);
  values[0] = 9;
  EXPECT_EQ(system.values(), (Values{1, 2, 3}));
}

// ------------------------------------------------------------------------------------------------ comparison

struct EqualRow {
  const char* name;
  Values a;
  Values b;
  bool equal;
};
std::ostream& operator<<(std::ostream& out, const EqualRow& row) { return out << row.name; }

std::vector<EqualRow> equalRows() {
  return {
      {"BothEmpty", {}, {}, true},
      {"EmptyAndOne", {}, {0}, false},
      {"Same", {1, 2, 3}, {1, 2, 3}, true},
      {"FirstIsAPrefixOfSecond", {1, 2}, {1, 2, 3}, false},
      {"SecondIsAPrefixOfFirst", {1, 2, 3}, {1, 2}, false},
      {"WithinTolerance", {0}, {5e-09}, true},
      {"WithinToleranceBelow", {0}, {-5e-09}, true},
      {"BeyondTolerance", {0}, {2e-08}, false},
      {"OutsideToleranceBelow", {0}, {-2e-08}, false},
      {"ExactlyTheTolerance", {1e-08}, {0}, false},
      {"ExactlyTheToleranceBelow", {0}, {1e-08}, false},
      {"JustBelowTheTolerance", {std::nextafter(1e-08, 0)}, {0}, true},
      {"LastDiffers", {1, 2, 3}, {1, 2, 4}, false},
      {"FirstDiffers", {0, 2, 3}, {1, 2, 3}, false},
      {"ToleranceIsAbsolute", {1e9}, {1e9 + 1e-6}, false},
      {"ZerosOfBothSigns", {0.0}, {-0.0}, true},
      {"InfinityIsNotEqualToItself", {infinity}, {infinity}, false},
      {"NanIsNotEqualToItself", {notANumber}, {notANumber}, false},
  };
}

class CoordinateSystemComparison : public testing::TestWithParam<EqualRow> {};

TEST_P(CoordinateSystemComparison, ComparesEachValueWithinTheTolerance) {
  const EqualRow& row = GetParam();
  EXPECT_EQ(isEqual(local(row.a), local(row.b)), row.equal);
  EXPECT_EQ(isEqual(local(row.b), local(row.a)), row.equal);
}

TEST_P(CoordinateSystemComparison, IgnoresWhetherASystemIsLocal) {
  EXPECT_EQ(isEqual(local(GetParam().a), ztCAD_LCS(false, GetParam().b)), GetParam().equal);
}

INSTANTIATE_TEST_SUITE_P(CoordinateSystem, CoordinateSystemComparison, testing::ValuesIn(equalRows()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
