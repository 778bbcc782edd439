#include <gtest/gtest.h>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "core/document/check.h"
#include "differential/dice.h"
#include "random_seed.h"
#include "sample_documents.h"

// Duplicates among the names of templates, which are not looked for where all names ascend.

namespace {

/// The places of the elements whose name one before them has.
std::vector<std::size_t> placesOfDuplicates(const Names& names) {
  std::set<std::string> seen;
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < names.size(); ++i)
    if (!seen.insert(names[i]).second) places.push_back(i);
  return places;
}

std::vector<std::size_t> visitedPlaces(const ztCAD_GMDDocument& document) {
  std::vector<const ztCAD_Base*> elements;
  for (const ztCAD_TmplPoint& point : document.content().templatePoints)
    elements.push_back(&point);
  std::vector<std::size_t> places;
  ztcad::forEachDuplicate(document.content(), [&](const ztCAD_Base& element) {
    std::size_t place = 0;
    while (place < elements.size() && elements[place] != &element)
      ++place;
    places.push_back(place);
  });
  return places;
}

void check(const Names& names) {
  ztCAD_GMDDocument document("");
  addTemplatePoints(document, names);
  const std::vector<std::size_t> expected = placesOfDuplicates(names);
  ASSERT_EQ(visitedPlaces(document), expected) << testing::PrintToString(names);
  ASSERT_EQ(ztcad::passesCheck(document.content()), expected.empty()) << testing::PrintToString(names);
  for (ztCAD_TmplPoint& point : document.content().templatePoints)
    point.property().attributes();  // their names are then elsewhere
  ASSERT_EQ(visitedPlaces(document), expected) << testing::PrintToString(names);
}

Names numbered(int count, const std::string& start) {
  Names names;
  for (int i = 0; i < count; ++i)
    names.push_back(start + std::to_string(i));
  return names;
}

// of short names, of such that become long on the way, of long ones
const std::string starts[] = {"", "P ", "P 12345678901 ", "a name of more than 31 characters ", "Я"};

TEST(Duplicates, ThereAreNoneAmongAscendingNames) {
  for (const std::string& start : starts)
    for (const int count : {0, 1, 2, 200})
      check(numbered(count, start));
}

TEST(Duplicates, EqualNeighboursAreFound) {
  for (const std::string& start : starts) {
    for (const std::size_t place : {0U, 1U, 20U, 39U}) {
      Names names = numbered(40, start);
      names.insert(names.begin() + static_cast<std::ptrdiff_t>(place), 2, names[place]);
      check(names);
    }
  }
}

TEST(Duplicates, AreFoundBeforeAndAfterADescent) {
  for (const std::string& start : starts) {
    for (const std::size_t place : {1U, 20U, 40U}) {
      Names names = numbered(40, start);
      names.insert(names.begin() + static_cast<std::ptrdiff_t>(place), start + "!");
      check(names);
      Names before = names;
      before.insert(before.begin(), names.front());
      check(before);
      Names after = names;
      after.push_back(names[place - 1]);
      check(after);
      after.push_back(start + "!");
      check(after);
    }
  }
}

TEST(Duplicates, OnlyADescentAtTheEndIsFound) {
  for (const std::string& start : starts) {
    Names names = numbered(1000, start);
    names.push_back(names[500]);
    check(names);
    names.back() = start + "x";
    check(names);
  }
}

TEST(DuplicatesDifferential, AreThoseOfAnOrderedSet) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(2000);
  int without = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFatalFailure(); ++i) {
    const std::string start = dice.pick(starts);
    Names names;
    int next = 0;
    const int oddity = 1 + dice.roll(60);
    for (int left = dice.roll(60); left > 0; --left) {
      if (!dice.oneIn(oddity)) next += 1 + dice.roll(3);
      const bool goesBack = dice.oneIn(oddity) && !names.empty();
      names.push_back(goesBack ? std::string(dice.pick(names)) : start + std::to_string(next));
    }
    check(names);
    without += placesOfDuplicates(names).empty() ? 1 : 0;
  }
  EXPECT_GT(without, rounds / 20);
  EXPECT_LT(without, rounds - rounds / 4);
}

}  // namespace
