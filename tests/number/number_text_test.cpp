#include "number/number_text.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <ostream>
#include <QLocale>
#include <string>
#include <vector>

#include "number/character_list.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QString text(const std::string& utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

// --------------------------------------------------------------------------------------------------- writing

struct RealRow {
  const char* name;
  double value;
  const char* text;
};

const RealRow realRows[] = {
    {"zero", 0.0, "0"},
    {"negative zero", -0.0, "0"},
    {"one", 1.0, "1"},
    {"half", 0.5, "0.5"},
    {"negative", -2.0, "-2"},
    {"hundred", 100.0, "100"},
    {"six digits", 123456.0, "123456"},
    {"seven digits", 1234567.0, "1.23457e+06"},
    {"largest without exponent", 999999.0, "999999"},
    {"rounded up to an exponent", 999999.5, "1e+06"},
    {"first with exponent", 1000000.0, "1e+06"},
    {"rounded to six digits", 0.1234567, "0.123457"},
    {"smallest without exponent", 0.0001, "0.0001"},
    {"small", 0.00001, "1e-05"},
    {"smaller", 1e-7, "1e-07"},
    {"exponent of three digits", 1e100, "1e+100"},
    {"longest", -1.234567e-308, "-1.23457e-308"},
    {"huge", std::numeric_limits<double>::max(), "1.79769e+308"},
    {"smallest subnormal", std::numeric_limits<double>::denorm_min(), "4.94066e-324"},
    {"tie goes away from zero", 100000.5, "100001"},
    {"negative tie goes away from zero", -100000.5, "-100001"},
    {"tie at an odd digit", 100001.5, "100002"},
    {"tie in a fraction", 0.0009765625, "0.000976563"},
    {"tie at a multiple of 1/16", 1000.0625, "1000.06"},
    {"tie at a multiple of 1/8", 1000.125, "1000.13"},
    {"tie with exponent", 1000005.0, "1.00001e+06"},
    {"just below a tie", 100000.49999999999, "100000"},
    {"infinite", infinity, "inf"},
    {"negative infinite", -infinity, "-inf"},
    {"not a number", notANumber, "nan"},
    {"negative not a number", -notANumber, "nan"},
};

void PrintTo(const RealRow& row, std::ostream* out) { *out << row.name; }

class FormattedReal : public testing::TestWithParam<RealRow> {};

TEST_P(FormattedReal, HasSixSignificantDigits) {
  char written[ztcad::longestNumber];
  EXPECT_EQ(std::string(written, ztcad::writeReal(GetParam().value, written)), GetParam().text);
}

TEST_P(FormattedReal, IsFormattedIdenticallyInAQString) {
  QString appended = text("до ");
  ztcad::appendReal(appended, GetParam().value);
  EXPECT_EQ(appended.toStdString(), std::string("до ") + GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(NumberText, FormattedReal, testing::ValuesIn(realRows));

/// The exponent is found by comparing with powers of ten, of which those below 1 are no doubles.
TEST(NumberText, ThePowersOfTenAndTheirNeighboursAreFormattedAsByQt) {
  for (int exponent = -25; exponent <= 20; ++exponent) {
    for (const char* const digits : {"1", "9.99999", "9.999995", "9.9999949", "1.000005", "5"}) {
      const double value = std::stod(std::string(digits) + "e" + std::to_string(exponent));
      double lower = value;
      double upper = value;
      for (int step = 0; step < 8; ++step) {
        for (const double real : {lower, upper, -lower, -upper}) {
          char text[ztcad::longestNumber];
          const std::string written(text, ztcad::writeReal(real, text));
          EXPECT_EQ(written, QString(QLatin1String("%1")).arg(real, 0, 'g', -1).toStdString());
        }
        lower = std::nextafter(lower, 0);
        upper = std::nextafter(upper, 1e300);
      }
    }
  }
}

TEST(NumberText, FormatsIndicesInFull) {
  for (const std::uint32_t value : {0u, 1u, 9u, 10u, 1234567u, 4294967295u}) {
    char written[ztcad::longestNumber];
    EXPECT_EQ(std::string(written, ztcad::writeIndex(value, written)), std::to_string(value));
    QString appended = text("до ");
    ztcad::appendIndex(appended, value);
    EXPECT_EQ(appended.toStdString(), "до " + std::to_string(value));
  }
}

// --------------------------------------------------------------------------------------------------- reading

struct RealTextRow {
  const char* name;
  const char* text;
  bool converts;
  double value;
};

const RealTextRow realTextRows[] = {
    {"empty", "", false, 0},
    {"only whitespace", " ", false, 0},
    {"zero", "0", true, 0},
    {"one", "1", true, 1},
    {"leading zeros", "00012", true, 12},
    {"plus", "+1", true, 1},
    {"minus", "-1", true, -1},
    {"minus sign U+2212", "−1.5", true, -1.5},
    {"minus sign in the exponent", "1e−5", true, 1e-5},
    {"two signs", "+-1", false, 0},
    {"exponent", "1e-3", true, 1e-3},
    {"capital exponent", "1E+3", true, 1e3},
    {"exponent without digits", "1e", false, 0},
    {"no digits before the point", ".5", true, 0.5},
    {"no digits after the point", "5.", true, 5},
    {"only a point", ".", false, 0},
    {"comma", "2,5", false, 0},
    {"group separators", "1,000", false, 0},
    {"letters", "x", false, 0},
    {"trailing letters", "1x", false, 0},
    {"whitespace inside", "1 2", false, 0},
    {"surrounded by whitespace", " \t\r\n1.5\v\f ", true, 1.5},
    {"surrounded by Unicode whitespace", "\u00a0\u2003\u30001.5\u2028", true, 1.5},
    {"byte order mark is not whitespace", " \ufeff1", false, 0},
    {"hexadecimal", "0x10", false, 0},
    {"Arabic digit", "١", false, 0},
    {"infinite", "inf", true, infinity},
    {"negative infinite", " -INF ", true, -infinity},
    {"infinity spelled out", "infinity", false, 0},
    {"too large", "1e999", false, 0},
    {"negative too large", "-1e999", false, 0},
    {"too small", "1e-400", false, 0},
    {"zero with a huge exponent", "0e999", true, 0},
    {"smallest subnormal", "4e-324", true, std::numeric_limits<double>::denorm_min()},
    {"largest", "1.7976931348623157e308", true, std::numeric_limits<double>::max()},
    {"many digits", "0.1000000000000000055511151231257827021181583404541015625", true, 0.1},
    {"many zeros", "0.00000000000000000000000000000000000000000000000000000001", true, 1e-56},
};

void PrintTo(const RealTextRow& row, std::ostream* out) { *out << row.name; }

class RealFromText : public testing::TestWithParam<RealTextRow> {};

TEST_P(RealFromText, ConvertsCompletelyOrKeepsTheValue) {
  double value = 7;
  EXPECT_EQ(ztcad::toReal(text(GetParam().text), value), GetParam().converts);
  EXPECT_EQ(value, GetParam().converts ? GetParam().value : 7);
}

TEST_P(RealFromText, IsZeroIfItDoesNotConvert) {
  EXPECT_EQ(ztcad::realOrZero(text(GetParam().text)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(NumberText, RealFromText, testing::ValuesIn(realTextRows));

TEST(NumberText, ParsesNanButNotNegativeNan) {
  double value = 7;
  EXPECT_TRUE(ztcad::toReal(text(" NaN "), value));
  EXPECT_TRUE(std::isnan(value));
  EXPECT_FALSE(ztcad::toReal(text("-nan"), value));
}

TEST(NumberText, KeepsTheSignOfZero) {
  EXPECT_TRUE(std::signbit(ztcad::realOrZero(text("-0"))));
  EXPECT_FALSE(std::signbit(ztcad::realOrZero(text("0"))));
}

struct IndexTextRow {
  const char* name;
  const char* text;
  bool converts;
  std::uint32_t value;
};

const IndexTextRow indexTextRows[] = {
    {"empty", "", false, 0},
    {"only whitespace", " ", false, 0},
    {"zero", "0", true, 0},
    {"one", "1", true, 1},
    {"leading zeros are not octal", "010", true, 10},
    {"plus", "+1", true, 1},
    {"minus", "-1", false, 0},
    {"negative zero", "-0", false, 0},
    {"largest", "4294967295", true, 4294967295u},
    {"largest with zeros", "00000000000000000000000000000000000004294967295", true, 4294967295u},
    {"too large", "4294967296", false, 0},
    {"much too large", "99999999999999999999999999", false, 0},
    {"negative that would wrap", "-4294967295", false, 0},
    {"real", "1.0", false, 0},
    {"exponent", "1e2", false, 0},
    {"hexadecimal", "0x10", false, 0},
    {"group separators", "1,000", false, 0},
    {"trailing letters", "1x", false, 0},
    {"surrounded by whitespace", "\n 12\t", true, 12},
    {"surrounded by Unicode whitespace", "\u00a0\u300012\u2029", true, 12},
    {"Arabic digit", "١", false, 0},
};

void PrintTo(const IndexTextRow& row, std::ostream* out) { *out << row.name; }

class IndexFromText : public testing::TestWithParam<IndexTextRow> {};

TEST_P(IndexFromText, ConvertsCompletelyOrKeepsTheValue) {
  std::uint32_t value = 7;
  EXPECT_EQ(ztcad::toIndex(text(GetParam().text), value), GetParam().converts);
  EXPECT_EQ(value, GetParam().converts ? GetParam().value : 7);
}

TEST_P(IndexFromText, IsZeroIfItDoesNotConvert) {
  EXPECT_EQ(ztcad::indexOrZero(text(GetParam().text)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(NumberText, IndexFromText, testing::ValuesIn(indexTextRows));

TEST(NumberText, NulAndSurrogatesDoNotConvert) {
  for (const QChar invalid :
       {QChar(0), QChar(0xD800), QChar(0xDC00), QChar(0xFFFF), QChar(0x131), QChar(0x130)}) {
    for (const QString& texts :
         {QString(invalid), QLatin1Char('1') + QString(invalid), QString(invalid) + QLatin1Char('1')}) {
      double real = 7;
      std::uint32_t index = 7;
      EXPECT_FALSE(ztcad::toReal(texts, real));
      EXPECT_FALSE(ztcad::toIndex(texts, index));
    }
  }
}

TEST(NumberText, ANullStringDoesNotConvert) {
  double real = 7;
  EXPECT_FALSE(ztcad::toReal(QString(), real));
  EXPECT_EQ(ztcad::realOrZero({}), 0);
  EXPECT_EQ(ztcad::indexOrZero({}), 0u);
}

TEST(NumberText, ParsesOnlyTheGivenView) {
  const QString longer = text("123456");
  EXPECT_EQ(ztcad::indexOrZero(QStringView(longer).mid(1, 3)), 234u);
  EXPECT_EQ(ztcad::realOrZero(QStringView(longer).mid(1, 3)), 234);
}

// ----------------------------------------------------------------------------------------------------- lists

struct ListRow {
  const char* name;
  const char* text;
  bool complete;
  std::vector<double> values;
};

const ListRow listRows[] = {
    {"empty", "", true, {}},
    {"one", "5", true, {5}},
    {"three", "1.5, 0, -2", true, {1.5, 0, -2}},
    {"terminated by a semicolon", "1, 2, 3;", true, {1, 2, 3}},
    {"semicolons only", ";;", true, {}},
    {"commas only", ",,", true, {}},
    {"empty parts", ",1,,2,", true, {1, 2}},
    {"part that is only a semicolon", "1,;,2", true, {1, 2}},
    {"semicolon joins digits", "1;2, 3", true, {12, 3}},
    {"semicolon in a number", "1;e;2", true, {100}},
    {"whitespace part", "1, ,2", false, {1, 2}},
    {"whitespace at the end", "1, ", false, {1}},
    {"only whitespace", " ", false, {}},
    {"continues after an invalid part", "1, x, 3", false, {1, 3}},
    {"too large", "1, 1e999, 3", false, {1, 3}},
    {"line feeds", "\n1,\n2\n", true, {1, 2}},
    {"spaces instead of commas", "1 2", false, {}},
    {"non-ASCII", "1, № 2, −3", false, {1, -3}},
};

void PrintTo(const ListRow& row, std::ostream* out) { *out << row.name; }

class List : public testing::TestWithParam<ListRow> {};

TEST_P(List, AppendsEveryPartThatConverts) {
  std::vector<double> values = {42};
  EXPECT_EQ(ztcad::parseList(text(GetParam().text), values), GetParam().complete);
  std::vector<double> expected = {42};
  expected.insert(expected.end(), GetParam().values.begin(), GetParam().values.end());
  EXPECT_EQ(values, expected);
}

INSTANTIATE_TEST_SUITE_P(NumberText, List, testing::ValuesIn(listRows));

TEST(NumberText, IndexTriplesAreOfValidIndicesOnly) {
  std::vector<std::uint32_t> values = {42};
  EXPECT_TRUE(ztcad::parseTriples(text("1, 4294967295, +5"), values));
  EXPECT_EQ(values, (std::vector<std::uint32_t>{42, 1, 4294967295u, 5}));
  for (const char* const bad : {"1, -2, 3", "1, 2, 3.0", "1, 2, 4294967296", "1, 2, "})
    EXPECT_FALSE(ztcad::parseTriples(text(bad), values)) << bad;
  EXPECT_EQ(values.size(), 4u);
}

const ListRow tripleRows[] = {
    {"empty", "", true, {}},
    {"line feed", "\n", true, {}},
    {"as saved", "\n0, 0, 0;\n1, 0, 0;\n", true, {0, 0, 0, 1, 0, 0}},
    {"no whitespace, not terminated", "1,2,3;4,5,6", true, {1, 2, 3, 4, 5, 6}},
    {"fourth number is dropped", "1, 2, 3, 4;", true, {1, 2, 3}},
    {"fourth number does not convert", "1, 2, 3, x;", false, {}},
    {"two numbers", "1, 2;", false, {}},
    {"invalid number", "1, x, 3", false, {}},
    {"invalid triple among valid ones", "1,2,3; 1, x, 3; 4,5,6", false, {1, 2, 3, 4, 5, 6}},
    {"short triple among valid ones", "1,2,3;1,2;4,5,6;", false, {1, 2, 3, 4, 5, 6}},
    {"segment without a comma is ignored", "1,2,3; 7 ;x;4,5,6;", true, {1, 2, 3, 4, 5, 6}},
    {"empty segments", ";;1,2,3;;", true, {1, 2, 3}},
    {"only a comma", ",", false, {}},
    {"empty parts", "1,,2,,3", true, {1, 2, 3}},
    {"whitespace part", "1, ,2,3", false, {}},
    {"non-ASCII", "−1,2,3;№,5,6", false, {-1, 2, 3}},
};

class Triples : public testing::TestWithParam<ListRow> {};

TEST_P(Triples, AppendEveryTripleThatConverts) {
  std::vector<double> values = {42};
  EXPECT_EQ(ztcad::parseTriples(text(GetParam().text), values), GetParam().complete);
  std::vector<double> expected = {42};
  expected.insert(expected.end(), GetParam().values.begin(), GetParam().values.end());
  EXPECT_EQ(values, expected);
}

INSTANTIATE_TEST_SUITE_P(NumberText, Triples, testing::ValuesIn(tripleRows));

TEST(NumberText, IndexTriplesAppendOnlyValidTriples) {
  std::vector<std::uint32_t> values;
  EXPECT_FALSE(ztcad::parseTriples(text("0, 1, 2; 2, 1, x"), values));
  EXPECT_EQ(values, (std::vector<std::uint32_t>{0, 1, 2}));
  EXPECT_FALSE(ztcad::parseTriples(text("1,2,3.0;4,5,-6;7,8,9"), values));
  EXPECT_EQ(values, (std::vector<std::uint32_t>{0, 1, 2, 7, 8, 9}));
}

TEST(NumberText, NulAndSurrogatesInvalidateOnlyTheirOwnTriple) {
  for (const QChar invalid : {QChar(0), QChar(0xD800), QChar(0xDC00)}) {
    std::vector<double> values;
    EXPECT_FALSE(ztcad::parseTriples(text("1,2,3;4,") + invalid + text(",6;7,8,9"), values));
    EXPECT_EQ(values, (std::vector<double>{1, 2, 3, 7, 8, 9}));
    values.clear();
    EXPECT_FALSE(ztcad::parseList(text("1,") + invalid + text(",3"), values));
    EXPECT_EQ(values, (std::vector<double>{1, 3}));
  }
}

// ---------------------------------------------------------------------------------------------------- locale

class NumberLocale : public testing::Test {
 protected:
  ~NumberLocale() override { QLocale::setDefault(m_before); }

 private:
  const QLocale m_before;
};

bool defaultLocaleIsC() {
  return QLocale().language() == QLocale::C && QLocale().numberOptions() == QLocale::c().numberOptions();
}

TEST_F(NumberLocale, ParsingAnyListSetsTheCLocale) {
  QLocale cWithGroups(QLocale::C);
  cWithGroups.setNumberOptions(QLocale::DefaultNumberOptions);
  std::vector<double> reals;
  std::vector<std::uint32_t> indices;
  for (const QLocale& before : {QLocale(QLocale::German), QLocale(QLocale::Arabic), QLocale::system(),
                                cWithGroups, QLocale(QLocale::C, QLocale::UnitedStates)}) {
    for (const char* list : {"", "1,2,3", "x"}) {
      QLocale::setDefault(before);
      static_cast<void>(ztcad::parseList(text(list), reals));
      EXPECT_TRUE(defaultLocaleIsC());
      QLocale::setDefault(before);
      static_cast<void>(ztcad::parseTriples(text(list), reals));
      EXPECT_TRUE(defaultLocaleIsC());
      QLocale::setDefault(before);
      static_cast<void>(ztcad::parseTriples(text(list), indices));
      EXPECT_TRUE(defaultLocaleIsC());
    }
  }
}

TEST_F(NumberLocale, UseCLocaleSetsTheCLocale) {
  QLocale::setDefault(QLocale(QLocale::German));
  ztcad::useCLocale();
  EXPECT_TRUE(defaultLocaleIsC());
}

TEST_F(NumberLocale, DoesNotAffectNumbers) {
  QLocale::setDefault(QLocale(QLocale::German));
  QString written;
  ztcad::appendReal(written, 1234.5);
  ztcad::appendReal(written, 100000.5);
  ztcad::appendIndex(written, 1234567);
  EXPECT_EQ(written.toStdString(), "1234.51000011234567");
  EXPECT_EQ(ztcad::realOrZero(text("+1.5")), 1.5);
  EXPECT_EQ(ztcad::realOrZero(text("+1,5")), 0);
  EXPECT_EQ(ztcad::indexOrZero(text("+1.000")), 0u);
  EXPECT_EQ(QLocale().language(), QLocale::German);
}

}  // namespace
