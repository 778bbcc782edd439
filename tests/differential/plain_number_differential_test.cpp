#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "number/number_list.h"
#include "number/number_text.h"
#include "number/word_and_numbers.h"
#include "plain_number_text.h"
#include "random_seed.h"
#include "text/parts.h"

// The parsers of plain lists in bytes against those of any list in characters. They may refuse what the
// others take, but what they take has the same values, and they take what the library writes.

namespace {

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }
bool sameBits(std::uint32_t a, std::uint32_t b) { return a == b; }

bool convert(QStringView text, double& value) { return ztcad::toReal(text, value); }
bool convert(QStringView text, std::uint32_t& value) { return ztcad::toIndex(text, value); }

QString fromAscii(const std::string& text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

/// A text as it lies in a document: more bytes may follow, the first of them a quote. The memory is of that
/// size and no larger, so that the sanitizers find what is read beyond it.
class TextInMemory {
 public:
  TextInMemory(const std::string& text, Dice& dice) : m_size(text.size()) {
    const std::string_view following = "\" color=\"RGB, 1, 2, 3\"/>";
    const std::string all = text + std::string(following.substr(0, static_cast<std::size_t>(dice.roll(24))));
    m_bytes.assign(all.begin(), all.end());
  }
  std::string_view text() const { return {m_bytes.data(), m_size}; }
  const char* end() const { return m_bytes.data() + m_bytes.size(); }

 private:
  const std::size_t m_size;
  std::vector<char> m_bytes;
};

/// The definition of a word and numbers: parts between commas, of which empty ones are dropped.
template <typename Number>
bool parseByParts(const QString& text, const QString& word, std::vector<Number>& values, std::size_t count) {
  const std::vector<QStringView> parts = ztcad::commaParts(text);
  if (parts.size() != 1 + count || parts[0] != word) return false;
  values.assign(count, Number());
  for (std::size_t i = 0; i < count; ++i)
    if (!convert(parts[i + 1], values[i])) return false;
  return true;
}

template <typename Number>
class WordAndNumbersDifferential : public testing::Test {};

using NumberTypes = testing::Types<double, std::uint32_t>;
TYPED_TEST_SUITE(WordAndNumbersDifferential, NumberTypes);

TYPED_TEST(WordAndNumbersDifferential, WhatIsTakenHasTheValuesOfTheParts) {
  using Number = TypeParam;
  Dice dice(randomSeed());
  const int rounds = randomRounds(300000);
  int taken = 0;
  int parsed = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    const std::size_t count = dice.oneIn(2) ? 3 : 10;
    const std::string text =
        plain_number_text::list(dice, "RGB", static_cast<int>(count), std::is_same_v<Number, std::uint32_t>);
    const TextInMemory bytes(text, dice);
    const QString word = fromAscii("RGB");
    std::vector<Number> values(count);
    const bool isTaken =
        ztcad::parseWordAndNumbers(bytes.text(), bytes.end(), word, values.data(), static_cast<int>(count));
    std::vector<Number> expected;
    const bool isParsed = parseByParts(fromAscii(text), word, expected, count);
    taken += isTaken ? 1 : 0;
    parsed += isParsed ? 1 : 0;
    if (!isTaken) continue;
    EXPECT_TRUE(isParsed) << text;
    for (std::size_t place = 0; isParsed && place < count; ++place)
      EXPECT_TRUE(sameBits(values[place], expected[place])) << text << ", number " << place;
  }
  EXPECT_GT(taken, rounds / 10);
  EXPECT_LT(taken, rounds - rounds / 10);
  EXPECT_GT(taken, parsed - parsed / 4) << "the usual spellings are taken";
}

TYPED_TEST(WordAndNumbersDifferential, WhatTheLibraryWritesIsTaken) {
  using Number = TypeParam;
  Dice dice(randomSeed());
  const int rounds = randomRounds(100000);
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    std::vector<Number> numbers(dice.oneIn(2) ? 3 : 12);
    for (Number& number : numbers) {
      number = static_cast<Number>(dice.bits() >> (32 + dice.roll(32)));
      if (std::is_same_v<Number, double> && dice.oneIn(2))
        number = static_cast<Number>(dice.between(-1000, 1000));
    }
    const QString word = fromAscii("MIP");
    const ztcad::WordAndNumbers written(word, numbers.data(), numbers.data() + numbers.size());
    const TextInMemory bytes(std::string(written.text()), dice);
    std::vector<Number> values(numbers.size());
    ASSERT_TRUE(ztcad::parseWordAndNumbers(bytes.text(), bytes.end(), word, values.data(),
                                           static_cast<int>(values.size())))
        << written.text();
    std::vector<Number> expected;
    ASSERT_TRUE(parseByParts(fromAscii(std::string(written.text())), word, expected, values.size()));
    for (std::size_t place = 0; place < values.size(); ++place)
      EXPECT_TRUE(sameBits(values[place], expected[place])) << written.text();
  }
}

TEST(PlainListDifferential, WhatIsTakenHasTheValuesOfTheCharacters) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(300000);
  int taken = 0;
  int parsed = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    const std::string text = plain_number_text::list(dice, "", 1 + dice.roll(4), dice.oneIn(3));
    const TextInMemory bytes(text, dice);
    double values[3] = {7, 7, 7};
    const int count = ztcad::parsePlainList(bytes.text(), bytes.end(), values, 3);
    double expected[3] = {7, 7, 7};
    const int expectedCount = ztcad::parseShortList(ztcad::ElementText(fromAscii(text)), expected, 3);
    taken += count > 0 ? 1 : 0;
    parsed += expectedCount > 0 ? 1 : 0;
    if (count == 0) continue;
    EXPECT_EQ(count, expectedCount) << text;
    for (int place = 0; place < std::min(count, expectedCount); ++place)
      EXPECT_TRUE(sameBits(values[place], expected[place])) << text << ", number " << place;
  }
  EXPECT_GT(taken, rounds / 10);
  EXPECT_LT(taken, rounds - rounds / 10);
  EXPECT_GT(taken, parsed - parsed / 4) << "the usual spellings are taken";
}

struct Row {
  const char* text;
  bool isTaken;
};

TEST(PlainWordAndNumbers, AreASequenceOfTheWordAndExactlyThatManyNumbers) {
  const Row rows[] = {
      {"RGB, 1, 2, 3", true},
      {"RGB,1,2,3", true},
      {"RGB,\t1 ,\n2\r, 3 ", true},
      {"", false},
      {"RGB", false},
      {"RGB,", false},
      {"RGB, 1, 2", false},
      {"RGB, 1, 2, 3, 4", false},
      {"RGB, 1, 2, 3,", false},
      {"RGB, 1, 2, 3;", false},
      {"RGB 1, 2, 3", false},
      {" RGB, 1, 2, 3", false},
      {"RGB , 1, 2, 3", false},
      {"rgb, 1, 2, 3", false},
      {"RG, 1, 2, 3", false},
      {"RGBA, 1, 2, 3", false},
      {"RGB, 1,, 2, 3", false},
      {"RGB, -1, 2, 3", false},
      {"RGB, 1.0, 2, 3", false},
      {"RGB, 1, 2, 4294967296", false},
      {"RGB, 1, 2, x", false},
      {"1, 2, 3", false},
      {"RGB, 4294967295, 0, 00", true},
  };
  Dice dice(1);
  for (const Row& row : rows) {
    const TextInMemory bytes(row.text, dice);
    std::uint32_t values[3];
    EXPECT_EQ(ztcad::parseWordAndNumbers(bytes.text(), bytes.end(), fromAscii("RGB"), values, 3), row.isTaken)
        << row.text;
  }
}

TEST(PlainList, IsOneToThreeNumbersWithAnOptionalSemicolonAtTheEnd) {
  struct ListRow {
    const char* text;
    int count;
  };
  const ListRow rows[] = {
      {"1", 1},          {"1, 2", 2}, {"1, 2, 3", 3}, {"1,2,3;", 3}, {" 1 , 2 , 3 ; ", 3},
      {"-1.5e3, 0", 2},  {"", 0},     {" ", 0},       {";", 0},      {",", 0},
      {"1,", 0},         {",1", 0},   {"1,,2", 0},    {"1;2", 0},    {"1, 2, 3;;", 0},
      {"1, 2, 3, 4", 0}, {"1 2", 0},  {"x", 0},       {"1, x", 0},   {"+1", 0},
      {".5", 0},
  };
  Dice dice(1);
  for (const ListRow& row : rows) {
    const TextInMemory bytes(row.text, dice);
    double values[3];
    EXPECT_EQ(ztcad::parsePlainList(bytes.text(), bytes.end(), values, 3), row.count) << row.text;
  }
}

}  // namespace
