#include "number/usual_numbers.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cstring>
#include <QStringList>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "number/number_text.h"

// The reader that uses the instructions of newer processors, against the one for all processors.

namespace {

constexpr int triples = 200000;

std::mt19937 engine(20261123);

int roll(int sides) { return static_cast<int>(engine() % static_cast<unsigned>(sides)); }

std::string digits(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += static_cast<char>('0' + roll(10));
  return text;
}

/// Mostly usual spellings, of each count of digits before and after the point.
std::string numberText(bool isReal) {
  if (!isReal) return digits(roll(50) == 0 ? roll(12) : 1 + roll(8));
  std::string text = roll(3) == 0 ? "-" : "";
  text += digits(roll(60) == 0 ? roll(18) : 1 + roll(7));
  if (roll(4) != 0) text += '.' + digits(roll(60) == 0 ? roll(20) : roll(10));
  const char* const exponents[] = {"e-05", "e+05", "E-22", "e+22", "e-300", "e5", "e", "e-", "+", "..", "x"};
  if (roll(15) == 0) text += exponents[roll(static_cast<int>(std::size(exponents)))];
  return text;
}

std::string tripleText(bool isReal) {
  const char* const usual = ", ";
  const char* const separators[] = {",", " ,", ",  ", ",\t", ";", ",\n", "", " "};
  const auto separator = [&] {
    return std::string(roll(25) == 0 ? separators[roll(static_cast<int>(std::size(separators)))] : usual);
  };
  const char* const ends[] = {";\n", ";\n", ";\r\n", ";", " ;\n", "; ", ";;", "\n", ",1;"};
  std::string text = numberText(isReal) + separator();
  text += numberText(isReal) + separator();
  return text + numberText(isReal) + (roll(10) == 0 ? ends[roll(static_cast<int>(std::size(ends)))] : ";\n");
}

struct Read {
  int count = 0;
  std::ptrdiff_t end = 0;
  std::string bits;
  std::vector<std::string_view> places;
};

bool operator==(const Read& a, const Read& b) {
  return a.count == b.count && a.end == b.end && a.bits == b.bits && a.places == b.places;
}

template <typename Number>
using Reader = int (*)(ztcad::PlainCursor&, Number*, ztcad::TriplePlaces*, int);

template <typename Number>
Read readWith(Reader<Number> reader, const char* begin, const char* end, const char* endOfMemory,
              bool hasPlaces) {
  constexpr int most = 7;
  Number values[3 * most];
  ztcad::TriplePlaces places[most];
  ztcad::PlainCursor text = {begin, end, endOfMemory};
  Read read;
  read.count = reader(text, values, hasPlaces ? places : nullptr, most);
  read.end = text.at - begin;
  read.bits.assign(reinterpret_cast<const char*>(values),
                   sizeof(Number) * 3 * static_cast<std::size_t>(read.count));
  for (int i = 0; hasPlaces && i < read.count; ++i)
    for (std::size_t k = 0; k < 3; ++k)
      read.places.emplace_back(places[i].begins[k], places[i].ends[k] - places[i].begins[k]);
  return read;
}

template <typename Number>
class TripleReader : public testing::Test {};
using Numbers = testing::Types<double, std::uint32_t>;
TYPED_TEST_SUITE(TripleReader, Numbers);

/// The memory ends with the text, or after as much markup as the wide reader needs.
TYPED_TEST(TripleReader, ReadsTheSameOnAllProcessors) {
  int all = 0;
  for (int i = 0; i < triples; i += 4) {
    std::string text;
    for (int k = 0; k < 4; ++k)
      text += tripleText(std::is_same_v<TypeParam, double>);
    const std::string memory = text + "</vertices>" + digits(roll(2) * 120);
    const char* const end = memory.data() + text.size();
    const Read narrow = readWith<TypeParam>(ztcad::readTriplesNarrow, memory.data(), end, end, true);
    for (const char* const endOfMemory : {end, memory.data() + memory.size()})
      ASSERT_EQ(readWith<TypeParam>(ztcad::readUsualTriples, memory.data(), end, endOfMemory, true), narrow)
          << text;
    Read withoutPlaces = narrow;
    withoutPlaces.places.clear();
    ASSERT_EQ(readWith<TypeParam>(ztcad::readUsualTriples, memory.data(), end, memory.data() + memory.size(),
                                  false),
              withoutPlaces)
        << text;
    all += narrow.count;
  }
  EXPECT_GT(all, triples / 3);
  EXPECT_LT(all, triples - triples / 10);
}

TYPED_TEST(TripleReader, ReadsWhatTheConversionsOfNumbersRead) {
  int all = 0;
  for (int i = 0; i < triples / 4; ++i) {
    const std::string text = tripleText(std::is_same_v<TypeParam, double>) + std::string(120, ' ');
    TypeParam values[3];
    ztcad::TriplePlaces places;
    ztcad::PlainCursor cursor = {text.data(), text.data() + text.size(), text.data() + text.size()};
    if (ztcad::readUsualTriples(cursor, values, &places, 1) == 0) continue;
    ++all;
    for (std::size_t k = 0; k < 3; ++k) {
      const QString number =
          QString::fromLatin1(places.begins[k], static_cast<int>(places.ends[k] - places.begins[k]));
      TypeParam expected{};
      bool converts = false;
      if constexpr (std::is_same_v<TypeParam, double>)
        converts = ztcad::toReal(number, expected);
      else
        converts = ztcad::toIndex(number, expected);
      ASSERT_TRUE(converts) << text;
      ASSERT_EQ(std::memcmp(&values[k], &expected, sizeof expected), 0) << text;
    }
  }
  EXPECT_GT(all, triples / 12);
}

/// A list of reals with other separators and spellings among them; the memory ends with it, or later.
TEST(UsualReals, AreThoseThatTheConversionsOfNumbersRead) {
  constexpr int most = 14;
  int all = 0;
  for (int i = 0; i < triples / 2; ++i) {
    std::string text = numberText(true);
    for (int left = roll(most + 3); left > 0; --left)
      text += (roll(40) == 0 ? " , " : roll(9) == 0 ? "," : ", ") + numberText(true);
    const char* const tails[] = {"", ";", " ", ",", ", ", "\""};
    text += tails[roll(static_cast<int>(std::size(tails)))];
    const std::string memory = text + "\" " + digits(roll(2) * 120);
    double values[most];
    ztcad::PlainCursor cursor = {memory.data(), memory.data() + text.size(), memory.data() + memory.size()};
    const int count = ztcad::readUsualReals(cursor, values, most);
    const std::string_view read =
        std::string_view(text).substr(0, static_cast<std::size_t>(cursor.at - memory.data()));
    ASSERT_LE(count, most);
    ASSERT_EQ(count == 0, read.empty()) << text;
    const QStringList parts =
        QString::fromLatin1(read.data(), static_cast<int>(read.size())).split(QLatin1Char(','));
    ASSERT_TRUE(count == 0 || parts.size() == count) << text;
    for (int k = 0; k < count; ++k) {
      double expected = 0;
      ASSERT_TRUE(ztcad::toReal(parts[k], expected)) << text;
      ASSERT_EQ(std::memcmp(&values[k], &expected, sizeof expected), 0) << text;
    }
    all += count;
  }
  EXPECT_TRUE(all == 0 || all > triples) << all;  // 0: this processor has no fast way
}

TEST(UsualReals, AreReadAcrossWindowsAndUpToTheLimit) {
  std::string text = "1";
  for (int i = 2; i <= 40; ++i)
    text += ", " + std::to_string(i) + ".25";
  const std::string memory = text + std::string(200, '"');
  for (const int most : {1, 2, 11, 12, 39, 40, 41}) {
    std::vector<double> values(static_cast<std::size_t>(most));
    ztcad::PlainCursor cursor = {memory.data(), memory.data() + text.size(), memory.data() + memory.size()};
    const int count = ztcad::readUsualReals(cursor, values.data(), most);
    if (count == 0) GTEST_SKIP() << "this processor has no fast way";
    ASSERT_EQ(count, std::min(most, 40));
    for (int i = 2; i <= count; ++i)
      EXPECT_EQ(values[static_cast<std::size_t>(i - 1)], i + 0.25);
  }
}

TEST(TripleReaderLimits, StopsAtTheFirstOtherPieceAndAtTheLimit) {
  const std::string text = "1, 2, 3;\n4, 5, 6;\n7, 8;\n9, 10, 11;\n" + std::string(120, ' ');
  const char* const end = text.data() + text.size();
  std::uint32_t values[9];
  ztcad::PlainCursor cursor = {text.data(), end, end};
  EXPECT_EQ(ztcad::readUsualTriples(cursor, values, nullptr, 1), 1);
  EXPECT_EQ(cursor.at - text.data(), 8);
  EXPECT_EQ(ztcad::readUsualTriples(cursor, values, nullptr, 3), 1);
  EXPECT_EQ(cursor.at - text.data(), 17);
  EXPECT_EQ(values[2], 6U);
  EXPECT_EQ(ztcad::readUsualTriples(cursor, values, nullptr, 3), 0);
  EXPECT_EQ(cursor.at - text.data(), 17);
}

}  // namespace
