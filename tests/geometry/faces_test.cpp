#include "geometry/faces.h"

#include <gtest/gtest.h>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "geometry/default_locale.h"
#include "geometry/thread_count.h"
#include "node_text.h"
#include "property/base.h"

namespace {

static_assert(std::is_convertible_v<ztCAD_Facet*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_Faces*, ztCAD_ISerialize*>);
static_assert(!std::is_convertible_v<ztCAD_Faces*, ztCAD_Base*>, "a facet list has no property block");

using Indices = std::vector<std::uint32_t>;

constexpr std::uint32_t maximum = 4294967295;

ztCAD_Faces faces(const Indices& indices) {
  ztCAD_Faces list;
  list.setIndices(indices);
  return list;
}

// ----------------------------------------------------------------------------------------------------- facet

TEST(Facet, HasZeroIndicesByDefault) {
  const ztCAD_Facet facet;
  EXPECT_EQ(text(facet, false), "0, 0, 0;");
  EXPECT_EQ(text(facet, true), "facet(I1=0, I2=0, I3=0)");
}

TEST(Facet, TextsContainItsIndices) {
  EXPECT_EQ(text(ztCAD_Facet(0, 1, 2), false), "0, 1, 2;");
  EXPECT_EQ(text(ztCAD_Facet(0, 1, 2), true), "facet(I1=0, I2=1, I3=2)");
  EXPECT_EQ(text(ztCAD_Facet(maximum, 1234567, 100), false), "4294967295, 1234567, 100;");
  EXPECT_EQ(text(ztCAD_Facet(maximum, 1234567, 100), true), "facet(I1=4294967295, I2=1234567, I3=100)");
}

TEST(Facet, SetReplacesAllIndices) {
  ztCAD_Facet facet(7, 8, 9);
  facet.set(1, 2, 3);
  EXPECT_EQ(facet.I1(), 1u);
  EXPECT_EQ(facet.I2(), 2u);
  EXPECT_EQ(facet.I3(), 3u);
}

TEST(Facet, ChangingACopyKeepsTheSource) {
  const ztCAD_Facet source(1, 2, 3);
  ztCAD_Facet copy = source;
  copy.set(4, 5, 6);
  EXPECT_EQ(text(source, false), "1, 2, 3;");
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(Faces, StorageTextOfAnEmptyListIsALineFeed) { EXPECT_EQ(text(ztCAD_Faces(), false), "\n"); }

TEST(Faces, DebugTextOfAnEmptyListIsWordAndParentheses) { EXPECT_EQ(text(ztCAD_Faces(), true), "\nfaces()"); }

TEST(Faces, StorageTextHasOneLinePerFacet) {
  EXPECT_EQ(text(faces({0, 1, 2}), false), "\n0, 1, 2;\n");
  EXPECT_EQ(text(faces({0, 1, 2, 2, 1, maximum}), false), "\n0, 1, 2;\n2, 1, 4294967295;\n");
}

TEST(Faces, DebugTextHasOneLinePerFacet) {
  EXPECT_EQ(text(faces({0, 1, 2}), true), "\nfaces(\nfacet(I1=0, I2=1, I3=2)\n)");
  EXPECT_EQ(text(faces({0, 1, 2, 2, 1, 3}), true),
            "\nfaces(\nfacet(I1=0, I2=1, I3=2)\nfacet(I1=2, I2=1, I3=3)\n)");
}

TEST(Faces, TextsDoNotDependOnTheDefaultLocale) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    EXPECT_EQ(text(faces({1234567, 0, maximum}), false), "\n1234567, 0, 4294967295;\n");
    EXPECT_EQ(text(faces({1234567, 0, maximum}), true),
              "\nfaces(\nfacet(I1=1234567, I2=0, I3=4294967295)\n)");
  }
}

TEST(Faces, AddAppendsWithoutARangeCheck) {
  ztCAD_Faces list;
  list.add(ztCAD_Facet(0, 1, 2));
  list.add(ztCAD_Facet(maximum, 0, 0));
  list.add(ztCAD_Facet(0, 1, 2));
  EXPECT_EQ(list.indices(), (Indices{0, 1, 2, maximum, 0, 0, 0, 1, 2}));
}

// --------------------------------------------------------------------------------------------------- reading

struct ReadRow {
  const char* name;
  const char* text;
  bool ok;
  Indices indices;
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

std::vector<ReadRow> readRows() {
  return {
      {"Empty", "", true, {}},
      {"LineFeed", "\n", true, {}},
      {"OneFacet", "\n0, 1, 2;\n", true, {0, 1, 2}},
      {"TwoFacets", "\n0, 1, 2;\n2, 1, 3;\n", true, {0, 1, 2, 2, 1, 3}},
      {"Compact", "0,1,2;2,1,3", true, {0, 1, 2, 2, 1, 3}},
      {"Duplicates", "0,1,2;0,1,2;", true, {0, 1, 2, 0, 1, 2}},
      {"SameIndexThrice", "5,5,5;", true, {5, 5, 5}},
      {"WordInTheSecond", "0, 1, 2; 2, 1, x;", false, {0, 1, 2}},
      {"WordInTheFirst", "x, 1, 2; 2, 1, 0;", false, {2, 1, 0}},
      {"FourthIndexDropped", "0, 1, 2, 3; 4, 5, 6", true, {0, 1, 2, 4, 5, 6}},
      {"FourthIndexIsAWord", "0, 1, 2, x; 4, 5, 6", false, {4, 5, 6}},
      {"TwoIndices", "0, 1; 4, 5, 6", false, {4, 5, 6}},
      {"OnlyComma", ",", false, {}},
      {"IndexWithoutComma", "7; 0,1,2", true, {0, 1, 2}},
      {"WordWithoutComma", "x; 0,1,2", true, {0, 1, 2}},
      {"EmptyPartsIgnored", ",0,,1,,2,", true, {0, 1, 2}},
      {"Largest", "4294967295, 0, 4294967295", true, {maximum, 0, maximum}},
      {"AboveTheLargest", "4294967296, 0, 1; 0,1,2", false, {0, 1, 2}},
      {"Negative", "-1, 0, 1; 0,1,2", false, {0, 1, 2}},
      {"Fraction", "1.0, 0, 1; 0,1,2", false, {0, 1, 2}},
      {"Exponent", "1e1, 0, 1; 0,1,2", false, {0, 1, 2}},
      {"Hexadecimal", "0x1, 0, 1; 0,1,2", false, {0, 1, 2}},
      {"PlusSignAndLeadingZeros", "+1, 007, 010", true, {1, 7, 10}},
      {"Cyrillic", "ноль, 1, 2; 0,1,2", false, {0, 1, 2}},
      {"ArabicDigits", "١, 1, 2; 0,1,2", false, {0, 1, 2}},
      {"OwnDebugText", "\nfaces(\nfacet(I1=0, I2=1, I3=2)\n)", false, {}},
      {"WhitespaceAndLineFeeds", "  0 ,\n1\t, 2 \r\n;\r\n", true, {0, 1, 2}},
  };
}

class FacesReading : public testing::TestWithParam<ReadRow> {};

TEST_P(FacesReading, KeepsCompleteTriplesAndReportsOthers) {
  ztCAD_Faces list;
  EXPECT_EQ(list.fromText(fromUtf8(GetParam().text)), GetParam().ok);
  EXPECT_EQ(list.indices(), GetParam().indices);
}

TEST_P(FacesReading, ReplacesTheWholeList) {
  ztCAD_Faces list = faces({7, 8, 9});
  EXPECT_EQ(list.fromText(fromUtf8(GetParam().text)), GetParam().ok);
  EXPECT_EQ(list.indices(), GetParam().indices);
}

TEST_P(FacesReading, ReadsTheTextOfAnElement) {
  ztCAD_Faces list = faces({7, 8, 9});
  EXPECT_EQ(read(list, std::string("<faces>") + GetParam().text + "</faces>"), GetParam().ok);
  EXPECT_EQ(list.indices(), GetParam().indices);
}

TEST_P(FacesReading, SetsTheDefaultLocaleToC) {
  for (const QLocale::Language language : otherLanguages) {
    const DefaultLocale other{QLocale(language)};
    ztCAD_Faces list;
    EXPECT_EQ(list.fromText(fromUtf8(GetParam().text)), GetParam().ok);
    EXPECT_TRUE(DefaultLocale::isC());
  }
}

TEST_P(FacesReading, DoesNotDependOnTheThreadCount) {
  for (const std::uint32_t threads : {0u, 1u, 2u}) {
    for (const std::int32_t mode : {ztParallel::Logical, ztParallel::Primary}) {
      const ThreadCount configured(threads, mode);
      ztCAD_Faces list;
      for (int again = 0; again < 2; ++again) {
        EXPECT_EQ(list.fromText(fromUtf8(GetParam().text)), GetParam().ok) << threads;
        EXPECT_EQ(list.indices(), GetParam().indices) << threads;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Faces, FacesReading, testing::ValuesIn(readRows()),
                         [](const auto& row) { return row.param.name; });

TEST(Faces, ReadsWhatItWrites) {
  for (const std::string xml :
       {"<faces>\n</faces>", "<faces>\n0, 1, 2;\n</faces>", "<faces>\n0, 1, 2;\n4294967295, 0, 7;\n</faces>"})
    EXPECT_EQ(roundTrip<ztCAD_Faces>(xml), xml);
}

// ------------------------------------------------------------------------------------------------ long lists

Indices manyIndices() {
  Indices indices;
  for (std::uint32_t i = 0; i < 30000; ++i)
    indices.insert(indices.end(), {i, i + 1, maximum - i});
  return indices;
}

std::string expectedStorageText(const Indices& indices) {
  std::string expected = "\n";
  for (std::size_t i = 0; i < indices.size(); i += 3)
    expected += text(ztCAD_Facet(indices[i], indices[i + 1], indices[i + 2]), false) + "\n";
  return expected;
}

TEST(Faces, ALongListIsWrittenCompletely) {
  const ztCAD_Faces list = faces(manyIndices());
  const std::string expected = expectedStorageText(list.indices());
  ASSERT_GT(expected.size(), 5u * 64 * 1024);
  EXPECT_TRUE(text(list, false) == expected);
  EXPECT_TRUE(written(list) == "<faces>" + expected + "</faces>");
}

TEST(Faces, ALongListIsReadInOrderWithAnyThreadCount) {
  const QString storageText = fromUtf8(expectedStorageText(manyIndices()));
  for (const std::uint32_t threads : {1u, 2u}) {
    const ThreadCount configured(threads, ztParallel::Primary);
    ztCAD_Faces list;
    EXPECT_TRUE(list.fromText(storageText));
    EXPECT_TRUE(list.indices() == manyIndices()) << threads;
  }
}

// ---------------------------------------------------------------------------------------------------- copies

TEST(Faces, ChangingACopyKeepsTheSource) {
  const ztCAD_Faces source = faces({0, 1, 2});
  ztCAD_Faces copy = source;
  copy.add(ztCAD_Facet(3, 4, 5));
  EXPECT_EQ(source.indices(), (Indices{0, 1, 2}));
  ztCAD_Faces assigned = faces({7, 8, 9});
  assigned = source;
  EXPECT_EQ(assigned.indices(), (Indices{0, 1, 2}));
  assigned.setIndices({});
  EXPECT_EQ(source.indices(), (Indices{0, 1, 2}));
}

TEST(Faces, AssignmentToItselfChangesNothing) {
  ztCAD_Faces list = faces({0, 1, 2});
  const ztCAD_Faces& itself = list;
  list = itself;
  EXPECT_EQ(list.indices(), (Indices{0, 1, 2}));
}

}  // namespace
