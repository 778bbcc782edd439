#include <gtest/gtest.h>
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "host.h"

namespace {

struct Row {
  const char* name;
  const char* text;
  const char* fallback;
  const char* corrected;
  bool differs;
};

// The rules are tested in core/name_correction_test.cpp; these rows test what crosses the library boundary.
const Row rows[] = {
    {"empty with empty fallback", "", "", "_", true},
    {"empty is replaced by the fallback", "", "part", "part", true},
    {"empty is replaced by the corrected fallback", "", "1 a", "_1_a", true},
    {"fallback unused", "a", "b", "a", false},
    {"valid", "Part12", "", "Part12", false},
    {"two digits, space, two letters", "12 ab", "", "_12_ab", true},
    {"two underscores between letters", "ab__cd", "", "ab_cd", true},
    {"minus, underscore, minus between letters", "ab-_-cd", "", "ab_cd", true},
    {"one digit", "7", "", "_7", true},
    {"underscore", "_", "", "_", false},
    {"Cyrillic in UTF-8", "Деталь 5", "", "Деталь_5", true},
    {"Cyrillic in windows-1251", "\xC4\xE5\xF2 5", "", "\xC4\xE5\xF2_5", true},
    {"valid Cyrillic in windows-1251", "\xC4\xE5\xF2", "", "\xC4\xE5\xF2", false},
    {"fallback in windows-1251", "", "\xC4\xE5\xF2", "\xC4\xE5\xF2", true},
    {"emoji", "a😀b", "", "a_b", true},
};

TEST(CorrectingNames, ReturnsTheCorrectedNameAndWhetherItDiffers) {
  for (const Row& row : rows) {
    std::string corrected = "earlier";
    EXPECT_EQ(doCorrectName(row.text, corrected, row.fallback), row.differs) << row.name;
    EXPECT_EQ(corrected, row.corrected) << row.name;
  }
}

TEST(CorrectingNames, OutputCanBeTheName) {
  for (const Row& row : rows) {
    std::string both = row.text;
    EXPECT_EQ(doCorrectName(both, both, row.fallback), row.differs) << row.name;
    EXPECT_EQ(both, row.corrected) << row.name;
  }
}

TEST(CorrectingNames, OutputNameAndFallbackCanBeOneString) {
  std::string all = "1 a";
  EXPECT_TRUE(doCorrectName(all, all, all));
  EXPECT_EQ(all, "_1_a");
}

TEST(CorrectingNames, NullTerminatedNameStaysWithinItsBuffer) {
  constexpr char untouched = '\x7f';
  for (const Row& row : rows) {
    const std::size_t size = std::max({std::strlen(row.text), std::strlen(row.fallback), std::size_t{1}}) + 2;
    std::vector<char> buffer(size, untouched);  // the address sanitizer detects writes past its end
    EXPECT_EQ(doCorrectName_nostl(row.text, buffer.data(), row.fallback), row.differs) << row.name;
    EXPECT_STREQ(buffer.data(), row.corrected) << row.name;
    std::vector<char> larger(size + 8, untouched);
    doCorrectName_nostl(row.text, larger.data(), row.fallback);
    EXPECT_EQ(std::string(larger.data() + size, 8), std::string(8, untouched)) << row.name;
  }
}

TEST(CorrectingNames, BufferCanBeTheNameOrTheFallback) {
  char name[16] = "12 ab";
  EXPECT_TRUE(doCorrectName_nostl(name, name, ""));
  EXPECT_STREQ(name, "_12_ab");
  char fallback[16] = "12 ab";
  EXPECT_TRUE(doCorrectName_nostl("", fallback, fallback));
  EXPECT_STREQ(fallback, "_12_ab");
  char all[16] = "a  b";
  EXPECT_TRUE(doCorrectName_nostl(all, all, all));
  EXPECT_STREQ(all, "a_b");
}

TEST(CorrectingNames, NullIsAnEmptyName) {
  char buffer[8] = "earlier";
  EXPECT_TRUE(doCorrectName_nostl(nullptr, buffer, nullptr));
  EXPECT_STREQ(buffer, "_");
  EXPECT_TRUE(doCorrectName_nostl(nullptr, buffer, "part"));
  EXPECT_STREQ(buffer, "part");
  EXPECT_FALSE(doCorrectName_nostl("a", buffer, nullptr));
  EXPECT_STREQ(buffer, "a");
  EXPECT_FALSE(doCorrectName_nostl("1", nullptr, "part"));
}

TEST(CorrectingNames, AHugeNameIsCorrectedCompletely) {
  const std::string name(1000000, '-');
  std::string corrected;
  EXPECT_TRUE(doCorrectName("a" + name + "b", corrected, ""));
  EXPECT_EQ(corrected, "a_b");
}

TEST(CorrectingNames, ANulDoesNotEndAString) {
  std::string corrected;
  EXPECT_TRUE(doCorrectName(std::string("a\0b", 3), corrected, ""));
  EXPECT_EQ(corrected, "a_b");
}

TEST(UniqueName, IsEmpty) {
  std::string name = "earlier";
  crtUniqueName(name);
  EXPECT_EQ(name, "");
  crtUniqueName(name);
  EXPECT_EQ(name, "");
}

}  // namespace
