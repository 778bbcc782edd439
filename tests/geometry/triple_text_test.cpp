#include "geometry/triple_text.h"

#include <gtest/gtest.h>
#include <cstdint>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

template <typename Number>
Pieces piecesOf(const std::vector<Number>& numbers) {
  Pieces pieces;
  ztcad::storageText(numbers, [&pieces](std::string_view piece) { pieces.emplace_back(piece); });
  return pieces;
}

std::string joined(const Pieces& pieces) {
  return std::accumulate(pieces.begin(), pieces.end(), std::string());
}

std::vector<std::uint32_t> countingFromZero(std::size_t count) {
  std::vector<std::uint32_t> numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0u);
  return numbers;
}

std::string linesOf(const std::vector<std::uint32_t>& numbers) {
  std::string lines = "\n";
  for (std::size_t i = 0; i + 3 <= numbers.size(); i += 3)
    lines += std::to_string(numbers[i]) + ", " + std::to_string(numbers[i + 1]) + ", " +
             std::to_string(numbers[i + 2]) + ";\n";
  return lines;
}

std::string debugText(const std::vector<double>& numbers) {
  QString out("before");
  ztcad::debugText(out, "list", numbers,
                   [](QString& text, const double* first) { text += QString("<%1>").arg(*first); });
  return out.toStdString();
}

TEST(TripleText, AppendsThreeNumbersAndASemicolon) {
  const double reals[] = {1.5, 0, -2};
  const std::uint32_t indices[] = {0, 1, std::numeric_limits<std::uint32_t>::max()};
  QString out("before ");
  ztcad::appendTriple(out, reals);
  ztcad::appendTriple(out, indices);
  EXPECT_EQ(out.toStdString(), "before 1.5, 0, -2;0, 1, 4294967295;");
}

TEST(TripleText, StorageTextOfAnEmptyListIsALineFeed) {
  EXPECT_EQ(piecesOf(std::vector<double>()), Pieces{"\n"});
  EXPECT_EQ(piecesOf(std::vector<std::uint32_t>()), Pieces{"\n"});
}

TEST(TripleText, StorageTextHasOneLinePerTriple) {
  EXPECT_EQ(piecesOf(std::vector<double>{0, 0, 0, 1, 0, 0}), Pieces{"\n0, 0, 0;\n1, 0, 0;\n"});
}

TEST(TripleText, AnIncompleteTripleIsOmitted) {
  EXPECT_EQ(joined(piecesOf(std::vector<double>{7})), "\n");
  EXPECT_EQ(joined(piecesOf(std::vector<double>{7, 8})), "\n");
  EXPECT_EQ(joined(piecesOf(std::vector<double>{1, 2, 3, 7, 8})), "\n1, 2, 3;\n");
  EXPECT_EQ(debugText({1, 2, 3, 7, 8}), "before\nlist(\n<1>\n)");
}

TEST(TripleText, LongListsArriveInPiecesOfAbout64KiB) {
  const auto numbers = countingFromZero(60000);
  const Pieces pieces = piecesOf(numbers);
  EXPECT_EQ(joined(pieces), linesOf(numbers));
  ASSERT_GT(pieces.size(), 2u);
  for (std::size_t i = 0; i + 1 < pieces.size(); ++i) {
    EXPECT_GE(pieces[i].size(), 64u * 1024) << i;
    EXPECT_LT(pieces[i].size(), 64u * 1024 + 40) << i;
    EXPECT_EQ(pieces[i].back(), '\n') << "a line must not be split";
  }
  EXPECT_LT(pieces.back().size(), 64u * 1024 + 40);
}

TEST(TripleText, NothingIsLostOrRepeatedAtPieceBoundaries) {
  // lines of 9 characters: 64 KiB are reached between 7281 and 7282 of them
  for (std::size_t triples = 7279; triples <= 7284; ++triples) {
    const std::vector<std::uint32_t> numbers(triples * 3, 1);
    EXPECT_EQ(joined(piecesOf(numbers)), linesOf(numbers)) << triples;
  }
}

TEST(TripleText, DebugTextOfAnEmptyListHasNoTripleLines) { EXPECT_EQ(debugText({}), "before\nlist()"); }

TEST(TripleText, DebugTextHasOneLinePerTriple) {
  EXPECT_EQ(debugText({1, 2, 3, 4, 5, 6}), "before\nlist(\n<1>\n<4>\n)");
}

TEST(TripleText, AsciiIsAppendedUnchanged) {
  QString out("Ё");
  ztcad::appendAscii(out, "");
  ztcad::appendAscii(out, std::string_view("1, 2;xxx", 5));
  EXPECT_EQ(out.toStdString(), "Ё1, 2;");
}

}  // namespace
