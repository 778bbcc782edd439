#include <gtest/gtest.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "balls.h"
#include "differential/dice.h"
#include "random_seed.h"

// The nodes of containers: where elements lie, which ones a copy or an assignment makes, and when they end.

namespace {

TEST(ContainerNodes, AnAssignmentIsACopyOfAnySize) {
  for (const std::size_t before : {0U, 1U, 2U, 3U, 100U}) {
    for (const std::size_t after : {0U, 1U, 2U, 3U, 100U}) {
      Balls target = ballsNamed(Names(before, "before"));
      Names expected;
      for (std::size_t i = 0; i < after; ++i)
        expected.push_back(std::to_string(i));
      const Balls source = ballsNamed(expected);
      EXPECT_EQ(&(target = source), &target);
      EXPECT_EQ(namesOf(target), expected) << before;
      EXPECT_EQ(namesOf(source), expected) << before;
      target.add(Ball{"more"});
      EXPECT_EQ(target.size(), after + 1);
      EXPECT_EQ(namesOf(source), expected) << before;
    }
  }
}

TEST(ContainerNodes, AnAssignmentKeepsTheAddressesOfTheElementsThatBothHave) {
  for (const std::size_t count : {1U, 2U, 3U, 5U}) {
    Balls target = ballsNamed({"a", "b", "c"});
    std::vector<const Ball*> addresses;
    for (const Ball& ball : target)
      addresses.push_back(&ball);
    target = ballsNamed(Names(count, "new"));
    std::size_t place = 0;
    for (const Ball& ball : target) {
      if (place == addresses.size()) break;
      EXPECT_EQ(&ball, addresses[place++]) << count;
    }
    EXPECT_EQ(place, std::min(count, addresses.size()));
  }
}

TEST(ContainerNodes, AnAssignmentToItselfChangesNothing) {
  Balls balls = ballsNamed({"a", "b"});
  const Ball* const first = &balls.front();
  const Balls& itself = balls;
  balls = itself;
  EXPECT_EQ(namesOf(balls), (Names{"a", "b"}));
  EXPECT_EQ(&balls.front(), first);
}

// A move is a copy: hosts that moved a container out of another one have always found its elements there.
TEST(ContainerNodes, AMovedContainerKeepsItsElements) {
  Balls source = ballsNamed({"a", "b"});
  Balls moved = std::move(source);  // NOLINT(performance-move-const-arg)
  EXPECT_EQ(namesOf(moved), (Names{"a", "b"}));
  EXPECT_EQ(namesOf(source), (Names{"a", "b"}));  // NOLINT(bugprone-use-after-move)
  moved = std::move(source);                      // NOLINT(performance-move-const-arg)
  source.clear();
  moved.add(Ball{"c"});
  EXPECT_EQ(namesOf(moved), (Names{"a", "b", "c"}));
}

TEST(ContainerNodes, EraseReturnsTheNextPosition) {
  Balls balls = ballsNamed({"a", "b", "c"});
  auto position = balls.erase(std::next(balls.begin()));
  EXPECT_EQ(position->name, "c");
  EXPECT_TRUE(balls.erase(position) == balls.end());
  EXPECT_EQ(namesOf(balls), Names{"a"});
}

TEST(ContainerNodes, CanBeEmptiedAndFilledAgainAndAgain) {
  Balls balls;
  for (int pass = 0; pass < 5; ++pass) {
    for (int i = 0; i < 1000; ++i)
      balls.add(Ball{std::to_string(i)});
    EXPECT_EQ(balls.size(), 1000U);
    EXPECT_EQ(balls.back().name, "999");
    if (pass % 2 == 0)
      balls.clear();
    else
      while (!balls.empty())
        balls.erase(balls.begin());
  }
}

TEST(ContainerNodes, AnyChangesKeepTheAddressesOfTheOthers) {
  Dice dice(randomSeed());
  Balls balls;
  std::vector<const Ball*> expected;
  for (int i = 0; i < 20000; ++i) {
    const bool grows = i / 2000 % 2 == 0;
    if (expected.empty() || dice.roll(4) < (grows ? 3 : 1)) {
      balls.add(Ball{std::to_string(i)});
      expected.push_back(&balls.back());
      continue;
    }
    const int place = std::min(dice.roll(static_cast<int>(expected.size())), 50);
    const auto position = std::next(balls.begin(), place);
    ASSERT_EQ(&*position, expected[static_cast<std::size_t>(place)]);
    balls.erase(position);
    expected.erase(expected.begin() + place);
  }
  ASSERT_EQ(balls.size(), expected.size());
  std::size_t place = 0;
  for (const Ball& ball : balls)
    ASSERT_EQ(&ball, expected[place++]);
}

struct Large {
  bool isSame(const void* address) const { return this == address; }
  std::array<char, 100000> bytes;
};

TEST(ContainerNodes, HoldsElementsLargerThanABlockOfMemory) {
  ztCAD_Cont<Large> container;
  for (int i = 0; i < 100; ++i)
    container.appendNew().bytes.fill(static_cast<char>(i));
  ztCAD_Cont<Large> copy = container;
  copy.erase(copy.begin());
  container.clear();
  int i = 1;
  for (const Large& large : copy) {
    EXPECT_EQ(large.bytes.front(), i);
    EXPECT_EQ(large.bytes.back(), i++);
  }
  EXPECT_EQ(copy.size(), 99U);
}

/// Writes its number down when it ends.
struct Ending {
  Ending(int number, std::vector<int>& ended) : m_number(number), m_ended(&ended) {}
  Ending(const Ending&) = default;
  Ending& operator=(const Ending&) = default;
  ~Ending() { m_ended->push_back(m_number); }

 private:
  int m_number;
  std::vector<int>* m_ended;
};

TEST(ContainerNodes, ItsElementsEndInTheirOrder) {
  std::vector<int> ended;
  const auto fill = [&ended](ztCAD_Cont<Ending>& endings, int count) {
    for (int i = 0; i < count; ++i)
      endings.add(Ending(i, ended));
    ended.clear();  // of the copied originals
  };
  {
    ztCAD_Cont<Ending> endings;
    fill(endings, 4);
    endings.clear();
    EXPECT_EQ(ended, (std::vector<int>{0, 1, 2, 3}));
    fill(endings, 4);
    ztCAD_Cont<Ending> shorter;
    fill(shorter, 2);
    endings = shorter;
    EXPECT_EQ(ended, (std::vector<int>{2, 3}));
    shorter.clear();
    ended.clear();
  }
  EXPECT_EQ(ended, (std::vector<int>{0, 1}));
}

/// Cannot be copied while `failing` is set.
struct Fragile {
  Fragile() = default;
  Fragile(const Fragile& /*other*/) { fail(); }
  Fragile& operator=(const Fragile& /*other*/) {
    fail();
    return *this;
  }
  ~Fragile() = default;

  static void fail() {
    if (failing) throw std::runtime_error("no copy");
  }
  static bool failing;
};
bool Fragile::failing = false;

TEST(ContainerNodes, AnElementThatCannotBeCopiedLeavesAUsableContainer) {
  ztCAD_Cont<Fragile> source;
  source.appendNew();
  source.appendNew();
  ztCAD_Cont<Fragile> empty;
  ztCAD_Cont<Fragile> filled = source;
  Fragile::failing = true;
  EXPECT_THROW(empty.add(source.front()), std::runtime_error);
  EXPECT_THROW(empty = source, std::runtime_error);
  EXPECT_THROW(filled = source, std::runtime_error);
  EXPECT_THROW(ztCAD_Cont<Fragile>{source}, std::runtime_error);
  Fragile::failing = false;
  EXPECT_TRUE(empty.empty());
  EXPECT_EQ(filled.size(), 2U);
  empty.appendNew();
  filled = empty;
  EXPECT_EQ(filled.size(), 1U);
}

}  // namespace
