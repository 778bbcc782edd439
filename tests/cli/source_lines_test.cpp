#include <gtest/gtest.h>
#include <view/source_lines.h>

#include <QTextCodec>

#include "temporary_files.h"

namespace {

using cli::linesAround;

std::vector<std::string> textsAt(const std::string& bytes, const cli::Place& place) {
  std::vector<std::string> texts;
  const auto lines = linesAround(bytes, {place});
  for (const cli::SourceLine& line : lines.at(0))
    texts.push_back(std::to_string(line.number) + ":" + line.text);
  return texts;
}

using Texts = std::vector<std::string>;

/// UTF-16 or UTF-32 of a text in UTF-8.
std::string encoded(const std::u32string& text, int size, bool isBigEndian) {
  std::string bytes;
  const auto unit = [&](char32_t value) {
    for (int i = 0; i < size; ++i)
      bytes +=
          static_cast<char>(value >> static_cast<unsigned>(8 * (isBigEndian ? size - 1 - i : i)) & 0xffU);
  };
  for (const char32_t character : text) {
    if (size == 2 && character > 0xffff) {
      unit(0xd800 + ((character - 0x10000) >> 10U));
      unit(0xdc00 + ((character - 0x10000) & 0x3ffU));
    } else {
      unit(character);
    }
  }
  return bytes;
}

}  // namespace

TEST(SourceLines, AreUpToTwoBeforeAndAfter) {
  const std::string text = "one\ntwo\r\nthree\rfour\n\nsix";
  EXPECT_EQ(textsAt(text, {1, 1, 0}), (Texts{"1:one", "2:two", "3:three"}));
  EXPECT_EQ(textsAt(text, {4, 1, 15}), (Texts{"2:two", "3:three", "4:four", "5:", "6:six"}));
  EXPECT_EQ(textsAt(text, {6, 1, 21}), (Texts{"4:four", "5:", "6:six"}));
  EXPECT_EQ(textsAt(text + "\n", {6, 1, 21}), (Texts{"4:four", "5:", "6:six"}));
  EXPECT_EQ(textsAt("", {1, 1, 0}), Texts());
  EXPECT_EQ(textsAt(text, {100, 1, 1000}), Texts());
}

TEST(SourceLines, LongOnesAreCutAroundThePlace) {
  std::string line;
  std::size_t offset = 0;
  for (int i = 0; i < 1000; ++i) {
    if (i == 500) offset = line.size();
    line += i == 500 ? "<" : "я";
  }
  const auto lines = linesAround(line + "\n" + line, {{1, 501, static_cast<std::int64_t>(offset)}}).at(0);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].skipped, 440);
  EXPECT_EQ(lines[0].text.size(), 2 * 159 + 1U);
  EXPECT_EQ(lines[0].text.find('<'), 120U);
  EXPECT_EQ(lines[1].skipped, 0);
  EXPECT_EQ(lines[1].text.size(), 2 * 160U);
}

TEST(SourceLines, AtTheStartOfALongLineAreNotCutBefore) {
  const std::string line(1000, 'a');
  const auto lines = linesAround(line, {{1, 30, 29}}).at(0);
  EXPECT_EQ(lines.at(0).skipped, 0);
  EXPECT_EQ(lines.at(0).text, std::string(160, 'a'));
}

TEST(SourceLines, AreDecodedFromUnicode) {
  const std::u32string text = U"<a>\n<b имя=\"𝛼\"/>\n</a>";
  const Texts expected{"1:<a>", "2:<b имя=\"𝛼\"/>", "3:</a>"};
  for (const int size : {2, 4})
    for (const bool isBigEndian : {false, true}) {
      const std::string mark = encoded(U"\ufeff", size, isBigEndian);
      const std::string bytes = encoded(text, size, isBigEndian);
      EXPECT_EQ(textsAt(bytes, {2, 1, 4 * size}), expected);
      EXPECT_EQ(textsAt(mark + bytes, {2, 1, 5 * size}), expected);
    }
  EXPECT_EQ(textsAt("\xef\xbb\xbf<a>\n<b имя=\"𝛼\"/>\n</a>", {2, 1, 7}), expected);
}

TEST(SourceLines, AreDecodedAsTheLibraryReadsThem) {
  const QString line = QString::fromUtf8("<point имя=\"вал & втулка\"\tx='</a>'/>");
  for (const char* const encoding : {"windows-1251", "KOI8-R", "ISO-8859-5", "IBM866", "KOI8-U"}) {
    SCOPED_TRACE(encoding);
    const QTextCodec* const codec = QTextCodec::codecForName(encoding);
    ASSERT_NE(codec, nullptr);
    const std::string bytes = std::string("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?>\n" +
                              codec->fromUnicode(line).toStdString();
    EXPECT_EQ(linesAround(bytes, {{2, 1, 0}}).at(0).at(1).text, "<point имя=\"вал & втулка\" x='</a>'/>");
  }
}

TEST(SourceLines, OfGoldenDocumentsInEveryEncodingAreTheSame) {
  int count = 0;
  for (const char* const name :
       {"windows1251", "koi8r", "utf8", "utf8_with_bom", "utf16_little_endian", "utf16_big_endian"}) {
    SCOPED_TRACE(name);
    const std::string file = std::string(ZTCAD_TEST_GOLDEN_FOLDER) + "/P_cyrillic_" + name + ".xml";
    const std::string bytes = bytesOf(file);
    ASSERT_NE(bytes, "");
    std::string all;
    const auto lines = linesAround(bytes, {{3, 1, 0}});
    for (const cli::SourceLine& line : lines.at(0))
      all += line.text;
    EXPECT_NE(all.find("name=\""), std::string::npos) << all;
    EXPECT_NE(all.find("\xd0"), std::string::npos) << all;  // the first byte of most Cyrillic letters
    EXPECT_EQ(all.find("\xef\xbf\xbd"), std::string::npos) << all;
    ++count;
  }
  EXPECT_EQ(count, 6);
}

TEST(SourceLines, OfOneLongLineTakeLinearTime) {
  std::string line;
  std::vector<cli::Place> places;
  for (int i = 0; i < 5000; ++i) {
    places.push_back({1, static_cast<std::int64_t>(line.size()) + 1, static_cast<std::int64_t>(line.size())});
    line += std::string(2000, 'x') + "<";
  }
  EXPECT_EQ(linesAround(line, places).size(), places.size());  // 50 GB to look at if lines were read whole
}
