#include "text/short_text.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "differential/dice.h"
#include "random_seed.h"

namespace {

static_assert(std::is_nothrow_copy_constructible_v<ztCAD_ShortText>);
static_assert(std::is_nothrow_move_constructible_v<ztCAD_ShortText>);
static_assert(std::is_nothrow_copy_assignable_v<ztCAD_ShortText>);
static_assert(std::is_nothrow_move_assignable_v<ztCAD_ShortText>);
static_assert(sizeof(ztCAD_ShortText) == ztCAD_ShortText::longestShort + 1);
static_assert(sizeof(ztCAD_ShortText) >= sizeof(QString), "a long text lies in the same bytes");

constexpr int limit = static_cast<int>(ztCAD_ShortText::longestShort);

QString letters(int count) {
  QString text;
  for (int i = 0; i < count; ++i)
    text += QChar(u'a' + i % 26);
  return text;
}

QString units(const std::vector<ushort>& all) {
  QString text;
  for (const ushort unit : all)
    text += QChar(unit);
  return text;
}

struct Row {
  const char* name;
  QString text;
  bool isShort;
};
void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

const std::vector<Row>& rows() {
  static const std::vector<Row> all = {
      {"Null", QString(), true},
      {"Empty", QLatin1String(""), true},
      {"OneLetter", letters(1), true},
      {"OtherLetter", QLatin1String("b"), true},
      {"OneLessThanTheLimit", letters(limit - 1), true},
      {"AtTheLimit", letters(limit), true},
      {"AtTheLimitWithAnotherEnd", letters(limit - 1) + QLatin1Char('~'), true},
      {"OneMoreThanTheLimit", letters(limit + 1), false},
      {"OneMoreThanTheLimitWithAnotherEnd", letters(limit) + QLatin1Char('~'), false},
      {"TwiceTheLimit", letters(2 * limit), false},
      {"VeryLong", QString(100000, QLatin1Char('x')), false},
      {"Nul", units({0}), true},
      {"TwoNuls", units({0, 0}), true},
      {"NulInside", units({'a', 0, 'b'}), true},
      {"NulAtTheEnd", units({'a', 0}), true},
      {"OnlyNulsAtTheLimit", QString(limit, QChar(0)), true},
      {"NulsBeyondTheLimit", QString(limit + 1, QChar(0)), false},
      {"LastAsciiCharacter", units({0x7F}), true},
      {"FirstCharacterBeyondAscii", units({0x80}), false},
      {"LastCharacterOfLatin1", units({0xFF}), false},
      {"Cyrillic", units({0x42F}), false},
      {"LowByteOfALetter", units({0x0161}), false},  // its low byte is "a"
      {"BothBytesOfLetters", units({0x6161}), false},
      {"NonAsciiAtTheEndOfAShortText", letters(limit - 1) + QChar(0x42F), false},
      {"LoneHighSurrogate", units({0xD83D}), false},
      {"LoneLowSurrogate", units({0xDE00}), false},
      {"SurrogatesInWrongOrder", units({'a', 0xDE00, 0xD83D}), false},
      {"SurrogatePair", units({0xD83D, 0xDE00}), false},
      {"LastUnit", units({0xFFFF}), false},
  };
  return all;
}

void expectText(const ztCAD_ShortText& text, const Row& row) {
  EXPECT_EQ(text.toString(), row.text);
  EXPECT_EQ(text.isShort(), row.isShort);
  EXPECT_EQ(text.isEmpty(), row.text.isEmpty());
  if (row.isShort)
    EXPECT_EQ(std::string(text.bytes()), std::string(row.text.toLatin1().constData(), text.bytes().size()));
  else
    EXPECT_EQ(text.longOne(), row.text);
}

class OneText : public testing::TestWithParam<Row> {};

TEST_P(OneText, IsHeldAsItIs) { expectText(ztCAD_ShortText(GetParam().text), GetParam()); }

TEST_P(OneText, HasAllItsCharacters) {
  const ztCAD_ShortText text(GetParam().text);
  EXPECT_EQ(text.toString().size(), GetParam().text.size());
  if (text.isShort()) {
    EXPECT_EQ(text.bytes().size(), static_cast<std::size_t>(GetParam().text.size()));
  }
}

TEST_P(OneText, IsHeldAgainAfterItWasReadBack) {
  const ztCAD_ShortText text(GetParam().text);
  EXPECT_TRUE(ztCAD_ShortText(text.toString()) == text);
  if (text.isShort()) {
    EXPECT_TRUE(ztCAD_ShortText::fromAscii(text.bytes()) == text);
  }
}

TEST_P(OneText, IsUnchangedByAssignmentToItself) {
  ztCAD_ShortText text(GetParam().text);
  ztCAD_ShortText& itself = text;
  text = itself;
  expectText(text, GetParam());
  text = std::move(itself);
  expectText(text, GetParam());
  text.set(text.toString());
  expectText(text, GetParam());
  if (!text.isShort()) text.set(text.longOne());
  expectText(text, GetParam());
}

INSTANTIATE_TEST_SUITE_P(ShortText, OneText, testing::ValuesIn(rows()),
                         [](const auto& row) { return row.param.name; });

// ----------------------------------------------------------------------------------------------- pairs of
// texts

/// Calls `check(one, other)` for all pairs of rows.
template <typename Check>
void forEachPair(Check&& check) {
  for (const Row& one : rows())
    for (const Row& other : rows()) {
      const testing::ScopedTrace trace(__FILE__, __LINE__, std::string(one.name) + " and " + other.name);
      check(one, other);
    }
}

TEST(TwoShortTexts, AreEqualAsTheirCharactersAre) {
  forEachPair([](const Row& one, const Row& other) {
    const ztCAD_ShortText first(one.text);
    const ztCAD_ShortText second(other.text);
    EXPECT_EQ(first == second, one.text == other.text);
    EXPECT_EQ(first != second, one.text != other.text);
  });
}

TEST(TwoShortTexts, CanBeAssigned) {
  forEachPair([](const Row& one, const Row& other) {
    const ztCAD_ShortText source(one.text);
    ztCAD_ShortText copied(other.text);
    EXPECT_EQ(&(copied = source), &copied);
    expectText(copied, one);
    expectText(source, one);

    ztCAD_ShortText set(other.text);
    set.set(one.text);
    expectText(set, one);
    EXPECT_TRUE(set == source);
    if (source.isShort()) {
      ztCAD_ShortText ascii(other.text);
      ascii = ztCAD_ShortText::fromAscii(source.bytes());
      expectText(ascii, one);
      EXPECT_TRUE(ascii == source);
      EXPECT_EQ(ascii.words(), source.words()) << "nothing of the text before may remain";
    }
  });
}

TEST(TwoShortTexts, CanBeMoved) {
  forEachPair([](const Row& one, const Row& other) {
    ztCAD_ShortText source(one.text);
    ztCAD_ShortText moved(other.text);
    EXPECT_EQ(&(moved = std::move(source)), &moved);
    expectText(moved, one);
    source.set(other.text);  // NOLINT(bugprone-use-after-move): any text can be set again
    expectText(source, other);
    expectText(moved, one);
  });
}

TEST(TwoShortTexts, AreIndependentAfterACopy) {
  forEachPair([](const Row& one, const Row& other) {
    ztCAD_ShortText source(one.text);
    ztCAD_ShortText copy(source);
    source.set(other.text);
    expectText(copy, one);
    ztCAD_ShortText taken(std::move(copy));
    copy = source;  // NOLINT(bugprone-use-after-move): any text can be assigned again
    expectText(taken, one);
    expectText(copy, other);
  });
}

TEST(TwoShortTexts, CanBeExchanged) {
  forEachPair([](const Row& one, const Row& other) {
    ztCAD_ShortText first(one.text);
    ztCAD_ShortText second(other.text);
    std::swap(first, second);
    expectText(first, other);
    expectText(second, one);
  });
}

TEST(TwoShortTexts, AreInOneOrder) {
  forEachPair([](const Row& one, const Row& other) {
    const ztCAD_ShortText first(one.text);
    const ztCAD_ShortText second(other.text);
    const int relations =
        (first.isAfter(second) ? 1 : 0) + (second.isAfter(first) ? 1 : 0) + (first == second ? 1 : 0);
    EXPECT_EQ(relations, 1);
  });
}

// -------------------------------------------------------------------------------------------------- other
// rules

TEST(ShortText, IsEmptyByDefault) {
  EXPECT_TRUE(ztCAD_ShortText().isEmpty());
  EXPECT_TRUE(ztCAD_ShortText().isShort());
  EXPECT_EQ(ztCAD_ShortText().toString(), QString());
  EXPECT_TRUE(ztCAD_ShortText() == ztCAD_ShortText::fromAscii({}));
}

TEST(ShortTextOfAscii, MayBeLongerThanWhatLiesInTheObject) {
  for (std::size_t size = 0; size < 300; ++size) {
    const std::string ascii(size, 'x');
    const ztCAD_ShortText text = ztCAD_ShortText::fromAscii(ascii);
    EXPECT_EQ(text.isShort(), size <= ztCAD_ShortText::longestShort);
    EXPECT_EQ(text.toString().toStdString(), ascii);
    EXPECT_TRUE(text == ztCAD_ShortText(QString::fromStdString(ascii)));
  }
}

// "" and a null QString are equal; a text does not remember which of them it was given.
TEST(ShortText, NullIsEmpty) {
  const ztCAD_ShortText null{QString()};
  const ztCAD_ShortText empty{QString(QLatin1String(""))};
  EXPECT_TRUE(null == empty);
  EXPECT_FALSE(null.isAfter(empty));
  EXPECT_FALSE(empty.isAfter(null));
  EXPECT_EQ(null.words(), empty.words());
  EXPECT_EQ(null.toString().isNull(), empty.toString().isNull());
}

TEST(ShortText, ALongTextSharesItsCharacters) {
  const QString text = letters(limit + 1);
  const ztCAD_ShortText held(text);
  const ztCAD_ShortText copy = held;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(held.toString().constData(), text.constData());
  EXPECT_EQ(copy.toString().constData(), text.constData());
}

TEST(ShortText, AMovedTextIsEmptyOrWhatItWas) {
  ztCAD_ShortText source(letters(limit + 1));
  const ztCAD_ShortText taken = std::move(source);
  EXPECT_TRUE(source.isEmpty());  // NOLINT(bugprone-use-after-move): a long text is taken
  EXPECT_TRUE(source.isShort());
  EXPECT_EQ(taken.toString(), letters(limit + 1));
}

TEST(ShortText, CountersAscend) {
  ztCAD_ShortText last(QLatin1String("A 0"));
  for (int i = 1; i < 2000; ++i) {
    const ztCAD_ShortText next(QLatin1String("A ") + QString::number(i));
    ASSERT_TRUE(next.isAfter(last)) << i;
    ASSERT_FALSE(last.isAfter(next)) << i;
    last = next;
  }
}

// Numbers are compared by their number of digits first, and short texts come before all others.
TEST(ShortText, TextsAreInOneOrder) {
  const char characters[] = {'0', '1', '9', 'a', ' ', 0};
  std::vector<QString> texts = {QString()};
  for (std::size_t first = 0, length = 0; length < 3; ++length) {
    const std::size_t end = texts.size();
    for (; first < end; ++first)
      for (const char character : characters)
        texts.push_back(texts[first] + QChar(ushort(character)));
  }
  for (const QString& start : {QString(), letters(limit - 2), letters(limit + 1), QString(QChar(0x42F))}) {
    std::vector<ztCAD_ShortText> held;
    for (const QString& text : texts)
      held.emplace_back(start + text);
    std::sort(held.begin(), held.end(),
              [](const ztCAD_ShortText& a, const ztCAD_ShortText& b) { return b.isAfter(a); });
    for (std::size_t i = 0; i < held.size(); ++i)
      for (std::size_t k = 0; k < held.size(); ++k)
        ASSERT_EQ(held[i].isAfter(held[k]), i > k) << i << ' ' << k;
  }
}

TEST(ShortText, NumbersAreInTheOrderOfTheirDigits) {
  const char* const ordered[] = {"",       "A",       "A 0",  "A 9",   "A 00",    "A 10",  "A 10 1",
                                 "A 10 2", "A 10b",   "A 11", "A 100", "Ab",      "B 1",   "B 1_$1",
                                 "B 1_$2", "B 1_$10", "B 2",  "B 10",  "point 1", "points"};
  for (const QString& start : {QString(), letters(limit)})
    for (std::size_t i = 1; i < std::size(ordered); ++i)
      EXPECT_EQ(ztCAD_ShortText(start + QLatin1String(ordered[i]))
                    .isAfter(ztCAD_ShortText(start + QLatin1String(ordered[i - 1]))),
                true)
          << ordered[i];
}

TEST(ShortText, EachPlaceCountsInEqualityAndWords) {
  const QString usual(limit, QLatin1Char('a'));
  const ztCAD_ShortText text(usual);
  for (int place = 0; place < limit; ++place) {
    QString changed = usual;
    changed[place] = QLatin1Char('b');
    const ztCAD_ShortText other(changed);
    EXPECT_FALSE(text == other) << place;
    EXPECT_TRUE(other.isAfter(text)) << place;
    EXPECT_NE(text.words(), other.words()) << place;
  }
}

// ------------------------------------------------------------------------------------------------ random
// texts

/// Texts that often have the same start, near the limit and far below it.
QString anyText(Dice& dice) {
  const ushort ascii[] = {'a', 'a', 'a', 'b', '0', '9', ' ', 0, 1, 0x7F};
  const ushort others[] = {'a', 'b', 0x7F, 0x80, 0xFF, 0x161, 0x42F, 0xD83D, 0xDE00, 0xE000, 0xFFFF};
  const int size = dice.oneIn(2) ? dice.roll(4) : limit - 2 + dice.roll(5);
  const bool isAscii = !dice.oneIn(3);
  QString text;
  for (int i = 0; i < size; ++i)
    text += QChar(isAscii ? dice.pick(ascii) : dice.oneIn(4) ? dice.pick(others) : ushort('a'));
  return text;
}

bool isShortText(const QString& text) {
  return text.size() <= limit &&
         std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 128; });
}

/// A text with "0" and its number of digits before each number.
QString withLengths(const QString& text) {
  QString all;
  const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
  for (auto at = text.begin(); at != text.end();) {
    const auto end = std::find_if_not(at, text.end(), isDigit);
    if (end != at) (all += QLatin1Char('0')) += QChar(static_cast<ushort>(end - at));
    while (at != end)
      all += *at++;
    if (at != text.end()) all += *at++;
  }
  return all;
}

/// The order in the terms of QString: those that lie in the object, then the others; in each of the two by
/// their characters, but numbers by their number of digits first.
bool isAfterByQString(const QString& a, const QString& b) {
  if (isShortText(a) != isShortText(b)) return isShortText(b);
  return withLengths(a) > withLengths(b);
}

TEST(ShortTextDifferential, EqualityAndOrderAreThoseOfQString) {
  Dice dice(randomSeed());
  int equal = 0;
  int after = 0;
  const int rounds = randomRounds(200000);
  for (int i = 0; i < rounds; ++i) {
    const QString a = anyText(dice);
    const QString b = dice.oneIn(8) ? a : anyText(dice);
    const ztCAD_ShortText first(a);
    const ztCAD_ShortText second(b);
    ASSERT_EQ(first == second, a == b) << testing::PrintToString(a.toStdU16String());
    ASSERT_EQ(first.isAfter(second), isAfterByQString(a, b))
        << testing::PrintToString(a.toStdU16String()) << ", " << testing::PrintToString(b.toStdU16String());
    if (first.isShort() && second.isShort()) {
      ASSERT_EQ(first.words() == second.words(), a == b);
    }
    equal += a == b ? 1 : 0;
    after += first.isAfter(second) ? 1 : 0;
  }
  EXPECT_GT(equal, rounds / 20);
  EXPECT_GT(after, rounds / 5);
}

/// A pool of texts that are assigned to each other in any order, beside the same in QStrings.
TEST(ShortTextDifferential, AnySeriesOfAssignmentsIsThatOfQString) {
  Dice dice(randomSeed());
  constexpr int count = 8;
  std::vector<ztCAD_ShortText> texts(count);
  std::vector<QString> expected(count);
  const int rounds = randomRounds(200000);
  for (int i = 0; i < rounds; ++i) {
    const auto to = static_cast<std::size_t>(dice.roll(count));
    const auto from = static_cast<std::size_t>(dice.roll(count));
    switch (dice.roll(4)) {
      case 0:
        expected[to] = anyText(dice);
        texts[to].set(expected[to]);
        break;
      case 1:
        expected[to] = expected[from];
        texts[to] = texts[from];
        break;
      case 2:
        std::swap(expected[to], expected[from]);
        std::swap(texts[to], texts[from]);
        break;
      default:
        expected[to] = QString(expected[from]);
        texts[to] = ztCAD_ShortText(texts[from]);
        break;
    }
    ASSERT_EQ(texts[to].toString(), expected[to]);
    ASSERT_EQ(texts[from].toString(), expected[from]);
  }
}

}  // namespace
