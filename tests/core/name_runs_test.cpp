#include "core/name_runs.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "differential/dice.h"
#include "random_seed.h"

// Names that are shown to be different without a table.

namespace {

struct Taken {
  int container;
  std::string name;
};

bool runsShowDifference(const std::vector<Taken>& all) {
  static const char containers[8] = {};
  ztcad::NameRuns runs;
  for (const Taken& one : all)
    runs.take(&containers[one.container], ztCAD_ShortText(QString::fromStdString(one.name)));
  return runs.areDifferent();
}

std::vector<Taken> numbered(int container, const std::string& start, int from, int to) {
  std::vector<Taken> names;
  for (int i = from; i < to; ++i)
    names.push_back({container, start + std::to_string(i)});
  return names;
}

std::vector<Taken> operator+(std::vector<Taken> a, const std::vector<Taken>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

TEST(NameRuns, NothingIsDifferent) { EXPECT_TRUE(runsShowDifference({})); }

TEST(NameRuns, NumberedNamesOfEachContainerAreDifferent) {
  EXPECT_TRUE(runsShowDifference(numbered(0, "P ", 0, 1200)));
  EXPECT_TRUE(runsShowDifference(numbered(0, "P ", 0, 1200) + numbered(1, "bolt ", 0, 1200)));
  EXPECT_TRUE(runsShowDifference(numbered(0, "P ", 0, 12) + numbered(1, "P ", 12, 30)));
  EXPECT_TRUE(runsShowDifference(numbered(0, "P ", 12, 30) + numbered(1, "P ", 0, 12)));
  EXPECT_TRUE(runsShowDifference(numbered(0, "a long name of a point ", 0, 1200)));
}

TEST(NameRuns, ContainersMayAlternate) {
  std::vector<Taken> names;
  for (int i = 0; i < 500; ++i)
    names = names + numbered(0, "P ", i, i + 1) + numbered(1, "L ", i, i + 1) + numbered(2, "S ", i, i + 1);
  EXPECT_TRUE(runsShowDifference(names));
}

TEST(NameRuns, AContainerMayHaveAFewRuns) {
  std::vector<Taken> names;
  for (const char* const start : {"q", "p", "m", "b", "a"})
    names = names + numbered(0, start, 0, 20);
  EXPECT_TRUE(runsShowDifference(names));
}

TEST(NameRuns, EqualNamesAreNeverDifferent) {
  for (const int container : {0, 1}) {
    for (const std::string name : {"P 0", "P 7", "P 19"}) {
      EXPECT_FALSE(runsShowDifference(numbered(0, "P ", 0, 20) + std::vector<Taken>{{container, name}}))
          << name;
      EXPECT_FALSE(runsShowDifference(std::vector<Taken>{{container, name}} + numbered(0, "P ", 0, 20)))
          << name;
    }
  }
}

TEST(NameRuns, NothingIsKnownOfInterleavedContainers) {
  EXPECT_FALSE(runsShowDifference({{0, "P 1"}, {1, "P 2"}, {0, "P 3"}}));
}

TEST(NameRuns, NothingIsKnownAfterTooManyRuns) {
  ztcad::NameRuns runs;
  int taken = 0;
  while (runs.take(nullptr, ztCAD_ShortText(QString::number(1000 - taken))) && taken < 1000)
    ++taken;
  EXPECT_GE(taken, 8);
  EXPECT_LT(taken, 100);
  EXPECT_FALSE(runs.take(nullptr, ztCAD_ShortText(QString::number(5000))));
  EXPECT_FALSE(runs.areDifferent());
}

/// What is said to be different is; names of few letters are often equal.
TEST(NameRuns, AreRightAboutAnyNames) {
  Dice dice(randomSeed());
  const char* const parts[] = {"P", "P ", "1", "2", "9", "10", "a", "", "a name of many letters "};
  int known = 0;
  for (int round = 0; round < 20000; ++round) {
    std::vector<Taken> names;
    std::set<std::string> different;
    for (int count = dice.roll(8); count > 0; --count) {
      const std::string name = std::string(dice.pick(parts)) + dice.pick(parts) + dice.pick(parts);
      names.push_back({dice.roll(3), name});
      different.insert(name);
    }
    const bool areDifferent = different.size() == names.size();
    if (runsShowDifference(names)) {
      ++known;
      ASSERT_TRUE(areDifferent);
    }
    ztcad::FewNames few;
    for (const Taken& one : names)
      ASSERT_TRUE(few.take(ztCAD_ShortText(QString::fromStdString(one.name))));
    ASSERT_EQ(few.areDifferent(), areDifferent);
  }
  EXPECT_GT(known, 1000);
}

TEST(FewNames, AreNotMany) {
  ztcad::FewNames names;
  int taken = 0;
  while (taken < 1000 && names.take(ztCAD_ShortText(QString::number(taken))))
    ++taken;
  EXPECT_EQ(taken, 64);
  EXPECT_TRUE(names.areDifferent());
}

}  // namespace
