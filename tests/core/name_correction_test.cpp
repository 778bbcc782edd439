#include "core/name_correction.h"

#include <gtest/gtest.h>
#include <ostream>
#include <QString>
#include <string>

#include "recorded_answers.h"
#include "text/append_character.h"
#include "text/narrow_text.h"
#include "time_growth.h"

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QRegExp>
#endif

namespace {

using namespace std::string_literals;

struct Row {
  const char* name;
  std::string text;
  std::string fallback;
  std::string corrected;
};

const Row rows[] = {
    {"empty with empty fallback", "", "", "_"},
    {"empty name uses the fallback", "", "part", "part"},
    {"the fallback is corrected too", "", "1 a", "_1_a"},
    {"whitespace fallback", "", "  ", "_"},
    {"fallback unused", "a", "b", "a"},
    {"one letter", "a", "", "a"},
    {"one digit", "7", "", "_7"},
    {"a space is not empty", " ", "part", "_"},
    {"one underscore", "_", "", "_"},
    {"valid", "Part12", "", "Part12"},
    {"digits, space, letters", "12 ab", "", "_12_ab"},
    {"double underscore between letters", "ab__cd", "", "ab_cd"},
    {"minus, underscore, minus between letters", "ab-_-cd", "", "ab_cd"},
    {"single underscore is kept", "ab_cd", "", "ab_cd"},
    {"runs at both ends", "--ab..", "", "_ab_"},
    {"digit after a minus", "-1", "", "_1"},
    {"digit after underscores", "__1", "", "_1"},
    {"digit inside", "a1", "", "a1"},
    {"line feed and tab", "a\n\tb", "", "a_b"},
    {"name of a renamed duplicate", "A_$1", "", "A_1"},
    {"placeholder", "%1%2", "", "_1_2"},
    {"backslash and digit reference", "a\\1b", "", "a_1b"},
    {"NUL inside", "a\0b"s, "", "a_b"},
    {"only NUL", "\0"s, "part", "_"},
    {"Cyrillic letters", "Деталь", "", "Деталь"},
    {"Cyrillic with spaces", "Деталь № 5", "", "Деталь_5"},
    {"Cyrillic yo and short i", "ёжЙ", "", "ёжЙ"},
    {"leading Arabic digit", "\xD9\xA3x", "", "_\xD9\xA3x"},
    {"Chinese", "零件", "", "零件"},
    {"combining mark", "e\xCC\x81", "", "e\xCC\x81"},
    {"no-break space",
     "a\xC2\xA0"
     "b",
     "", "a_b"},
    {"byte order mark",
     "\xEF\xBB\xBF"
     "a",
     "", "_a"},
    {"symbol above U+FFFF",
     "a\xF0\x9F\x98\x80"
     "b",
     "", "a_b"},
    {"letters above U+FFFF are not letters", "\xF0\x9D\x94\xB8\xF0\x9D\x94\xB9", "", "_"},
    {"windows-1251 letters", "\xC4\xE5\xF2\xE0\xEB\xFC", "", "\xC4\xE5\xF2\xE0\xEB\xFC"},
    {"windows-1251 with space", "1 \xC4\xE5", "", "_1_\xC4\xE5"},
    {"windows-1251 byte 98", "\xC4\x98\xE5", "", "\xC4_\xE5"},
    {"windows-1251 fallback", "", "\xC4 \xE5", "\xC4_\xE5"},
    {"UTF-8 name, windows-1251 fallback", "Д", "\xC4", "Д"},
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class CorrectedName : public testing::TestWithParam<Row> {};

TEST_P(CorrectedName, IsValidAndInTheEncodingOfTheText) {
  EXPECT_EQ(ztcad::correctName(GetParam().text, GetParam().fallback), GetParam().corrected);
}

TEST_P(CorrectedName, IsUnchangedByASecondCorrection) {
  EXPECT_EQ(ztcad::correctName(GetParam().corrected, ""), GetParam().corrected);
}

INSTANTIATE_TEST_SUITE_P(NameCorrection, CorrectedName, testing::ValuesIn(rows));

// the result has the encoding of the name, so a windows-1251 letter stays the same byte
TEST(NameCorrection, KeepsEveryLetterOfWindows1251) {
  std::string alphabet;
  for (int byte = 0xC0; byte <= 0xFF; ++byte)
    alphabet += static_cast<char>(byte);
  EXPECT_EQ(ztcad::correctName(alphabet, ""), alphabet);
}

TEST(NameCorrection, CorrectsAMillionCharacters) {
  const std::string letters(1000000, 'a');
  EXPECT_EQ(ztcad::correctName(letters, ""), letters);
  EXPECT_EQ(ztcad::correctName(std::string(1000000, '-'), ""), "_");
  EXPECT_EQ(ztcad::correctName(std::string(1000000, '1'), "").size(), 1000001u);
}

// Replacing in place would move the rest of the text once for each run.
TEST(NameCorrection, TakesLinearTimeForAnyNumberOfRuns) {
  const auto correct = [](int count) {
    std::string runs;
    for (int i = 0; i < count; ++i)
      runs += "a! ";
    EXPECT_EQ(ztcad::correctName(runs, "").size(), 2 * static_cast<std::size_t>(count));
  };
  EXPECT_LT(timeGrowth(100000, correct), linearTimeGrowth);
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
// The definition of a corrected name, by Qt.
std::string correctedByQt(const std::string& name) {
  QString text = ztcad::fromNarrow(name);
  if (text.contains(QRegExp(QLatin1String("^\\d")))) text.prepend(QLatin1Char('_'));
  text.replace(QRegExp(QLatin1String("([^\\d\\w]|_)+")), QLatin1String("_"));
  return ztcad::toNarrow(text, ztcad::narrowEncodingOf(name));
}

#else
std::string correctedByQt(const std::string& /*name*/) { return {}; }  // never asked
#endif

TEST(NameCorrection, IsThatOfRegularExpressionsForRandomTexts) {
  checkRandomInputs("corrected_names", randomRounds(20000), [](Dice& dice) {
    const auto below = [&](int bound) { return static_cast<char32_t>(dice.roll(bound)); };
    std::string name;
    for (int length = 1 + dice.roll(12); length > 0; --length) {
      const char32_t characters[] = {below(0x80), below(0x800), below(0xD800), 0x10000 + below(0x1000), U'_'};
      ztcad::appendUtf8(dice.pick(characters), name);
    }
    if (dice.oneIn(4)) name += static_cast<char>(0x80 + dice.roll(0x80));  // windows-1251, most likely
    const std::string corrected = ztcad::correctName(name, "");
    if (qtIsTheReference) {
      EXPECT_EQ(corrected, correctedByQt(name)) << name;
    }
    return corrected;
  });
}

TEST(NameCorrection, NameFallbackAndResultMayBeOneObject) {
  std::string name = "1 a";
  name = ztcad::correctName(name, name);
  EXPECT_EQ(name, "_1_a");
}

}  // namespace
