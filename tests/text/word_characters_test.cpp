#include "text/word_characters.h"

#include <gtest/gtest.h>
#include <string>

#include "recorded_answers.h"

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QRegExp>
#include <QString>
#endif

namespace {

using ztcad::isDigit;
using ztcad::isWordCharacter;

TEST(WordCharacters, AreThoseOfQRegExp) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  const QRegExp digit(QLatin1String("\\d"));
  const QRegExp word(QLatin1String("\\w"));
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const QString text(QChar(static_cast<ushort>(unit)));
    EXPECT_EQ(isDigit(unit), digit.exactMatch(text)) << std::hex << unit;
    EXPECT_EQ(isWordCharacter(unit), word.exactMatch(text)) << std::hex << unit;
  }
#endif
  checkEveryUnit("word_characters", [](int unit) {
    const auto character = static_cast<char32_t>(unit);
    return std::string(isDigit(character) ? "d" : "") + (isWordCharacter(character) ? "w" : "");
  });
}

TEST(WordCharacters, EveryDigitIsAWordCharacter) {
  int digits = 0;
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    if (!isDigit(unit)) continue;
    EXPECT_TRUE(isWordCharacter(unit)) << std::hex << unit;
    ++digits;
  }
  EXPECT_EQ(digits, 370);
}

// Letters that later versions of Unicode added, and a few from the edges of the table.
TEST(WordCharacters, AreThoseOfUnicode13) {
  EXPECT_TRUE(isWordCharacter(U'\u08C7')) << "added in version 13";
  EXPECT_FALSE(isWordCharacter(U'\u08C8')) << "added in version 14";
  EXPECT_FALSE(isWordCharacter(0));
  EXPECT_TRUE(isWordCharacter(U'_'));
  EXPECT_FALSE(isWordCharacter(0xD800)) << "a surrogate";
  EXPECT_TRUE(isDigit(U'\uFF19')) << "the last digit";
  EXPECT_FALSE(isDigit(U'\uFF1A'));
}

TEST(WordCharacters, NoneAreBeyondTheBasicMultilingualPlane) {
  for (char32_t character = 0x10000; character <= 0x10FFFF; ++character) {
    ASSERT_FALSE(isDigit(character)) << std::hex << character;
    ASSERT_FALSE(isWordCharacter(character)) << std::hex << character;
  }
}

}  // namespace
