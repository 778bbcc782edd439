#include "core/container.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

#include "balls.h"

namespace {

TEST(Container, IsEmptyByDefault) {
  const Balls balls;
  EXPECT_TRUE(balls.empty());
  EXPECT_EQ(balls.size(), 0u);
  EXPECT_TRUE(balls.begin() == balls.end());
}

TEST(Container, AddReturnsFalseAndStoresACopy) {
  Balls balls;
  Ball original{"a"};
  EXPECT_FALSE(balls.add(original));
  original.name = "changed";
  EXPECT_EQ(namesOf(balls), Names{"a"});
  EXPECT_NE(&balls.front(), &original);
}

TEST(Container, KeepsInsertionOrderAndDuplicates) {
  Balls balls = ballsNamed({"b", "a"});
  EXPECT_FALSE(balls.add(balls.front()));
  EXPECT_EQ(namesOf(balls), (Names{"b", "a", "b"}));
  EXPECT_EQ(balls.size(), 3u);
  EXPECT_EQ(balls.front().name, "b");
  EXPECT_EQ(balls.back().name, "b");
}

TEST(Container, AppendNewAddsADefaultConstructedElement) {
  Balls balls = ballsNamed({"a"});
  Ball& appended = balls.appendNew();
  EXPECT_EQ(appended.name, "");
  EXPECT_EQ(&appended, &balls.back());
  appended.name = "read";
  EXPECT_EQ(namesOf(balls), (Names{"a", "read"}));
}

TEST(Container, RemovesTheElementStoredAtTheAddress) {
  for (std::size_t place = 0; place < 3; ++place) {
    Balls balls = ballsNamed({"a", "a", "a"});
    Names expected = {"0", "1", "2"};
    std::vector<const Ball*> stored;
    for (Ball& ball : balls) {
      ball.name = expected[stored.size()];
      stored.push_back(&ball);
    }
    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(place));
    EXPECT_TRUE(balls.remove(stored[place]));
    EXPECT_EQ(namesOf(balls), expected);
  }
}

TEST(Container, TheAddressOfTheCopiedOriginalRemovesNothing) {
  const Ball original{"a"};
  Balls balls;
  balls.add(original);
  EXPECT_FALSE(balls.remove(&original));
  EXPECT_EQ(balls.size(), 1u);
}

TEST(Container, AnAddressRemovesOnlyOnce) {
  Balls balls = ballsNamed({"a", "b"});
  const void* first = &balls.front();
  EXPECT_TRUE(balls.remove(first));
  EXPECT_FALSE(balls.remove(first));
  EXPECT_EQ(namesOf(balls), Names{"b"});
}

TEST(Container, RemovingFromAnEmptyContainerReturnsFalse) {
  const Ball elsewhere{"a"};
  Balls balls;
  EXPECT_FALSE(balls.remove(&elsewhere));
  EXPECT_FALSE(balls.remove(nullptr));
  EXPECT_TRUE(balls.empty());
}

TEST(Container, NullRemovesNothing) {
  Balls balls = ballsNamed({"a"});
  EXPECT_FALSE(balls.remove(nullptr));
  EXPECT_EQ(balls.size(), 1u);
}

TEST(Container, CanBeUsedAgainAfterClear) {
  Balls balls = ballsNamed({"a", "b"});
  balls.clear();
  EXPECT_TRUE(balls.empty());
  balls.add(Ball{"c"});
  EXPECT_EQ(namesOf(balls), Names{"c"});
}

TEST(Container, AddressesStayValidWhileTheContainerGrowsAndShrinks) {
  Balls balls = ballsNamed({"a", "kept"});
  const Ball* kept = &balls.back();
  for (int i = 0; i < 1000; ++i)
    balls.add(Ball{"b"});
  balls.remove(&balls.front());
  EXPECT_EQ(&balls.front(), kept);
}

TEST(Container, SwapExchangesContentsAndKeepsAddresses) {
  Balls one = ballsNamed({"a"});
  Balls other = ballsNamed({"b", "c"});
  const Ball* a = &one.front();
  const Ball* b = &other.front();
  one.swap(other);
  EXPECT_EQ(namesOf(one), (Names{"b", "c"}));
  EXPECT_EQ(namesOf(other), Names{"a"});
  EXPECT_EQ(&one.front(), b);
  EXPECT_EQ(&other.front(), a);
  EXPECT_TRUE(one.remove(b));
}

TEST(Container, ACopyHasItsOwnElements) {
  Balls balls = ballsNamed({"a"});
  Balls copy = balls;
  copy.front().name = "changed";
  EXPECT_EQ(namesOf(balls), Names{"a"});
  EXPECT_FALSE(copy.remove(&balls.front()));
}

TEST(Container, ElementsCanBeChangedDuringIteration) {
  Balls balls = ballsNamed({"a", "b"});
  for (Ball& ball : balls)
    ball.name += "!";
  EXPECT_EQ(namesOf(balls), (Names{"a!", "b!"}));
}

TEST(Container, DestroysItsElements) {
  struct Counted {
    explicit Counted(int& n) : alive(n) { ++alive; }
    Counted(const Counted& other) : alive(other.alive) { ++alive; }
    ~Counted() { --alive; }
    bool isSame(const void* address) const { return this == address; }
    int& alive;
  };
  int alive = 0;
  {
    ztCAD_Cont<Counted> counted;
    for (int i = 0; i < 3; ++i)
      counted.add(Counted(alive));
    EXPECT_EQ(alive, 3);
    counted.remove(&counted.front());
    EXPECT_EQ(alive, 2);
  }
  EXPECT_EQ(alive, 0);
}

TEST(Container, APlaceholderIsAlwaysEmpty) {
  ztCAD_Cont<ztCAD_empty_stub_class> placeholder;
  ztCAD_Cont<ztCAD_empty_stub_class> other = placeholder;
  placeholder.clear();
  placeholder.swap(other);
  EXPECT_TRUE(placeholder.empty());
  EXPECT_EQ(placeholder.size(), 0u);
  EXPECT_TRUE(placeholder.begin() == placeholder.end());
}

TEST(Container, HoldsPointersWithoutOwningThem) {
  Ball ball{"a"};
  {
    ztCAD_Cont<Ball*> pointers;
    EXPECT_FALSE(pointers.add(&ball));
    EXPECT_EQ(pointers.front(), &ball);
  }
  EXPECT_EQ(ball.name, "a");
}

TEST(Container, CanBeDestroyedThroughItsBase) {
  EXPECT_TRUE(std::has_virtual_destructor_v<Balls>);
  EXPECT_TRUE(std::has_virtual_destructor_v<ztCAD_cmnSelector2<ztCAD_KindPoint>>);
}

TEST(Kind, NumbersAreFixed) {
  struct Row {
    const char* name;
    ztCAD_Kind kind;
    int number;
  };
  const Row rows[] = {
      {"detail", ztCAD_KindDetail, 1},
      {"template detail", ztCAD_KindTmplDetail, 2},
      {"structure", ztCAD_KindStructure, 3},
      {"template structure", ztCAD_KindTmplStructure, 4},
      {"point", ztCAD_KindPoint, 10},
      {"template point", ztCAD_KindTmplPoint, 11},
      {"line", ztCAD_KindLine, 13},
      {"template line", ztCAD_KindTmplLine, 14},
      {"element MIP", ztCAD_KindElementMIP, 16},
      {"template element MIP", ztCAD_KindTmplElementMIP, 17},
      {"triangle", ztCAD_KindTriangle, 19},
      {"template triangle", ztCAD_KindTmplTriangle, 20},
  };
  for (const Row& row : rows)
    EXPECT_EQ(row.kind, row.number) << row.name;
}

TEST(Kind, EveryNumberSelectsADistinctClass) {
  EXPECT_FALSE((std::is_same_v<ztCAD_cmnSelector2<10>, ztCAD_cmnSelector2<11>>));
  EXPECT_FALSE((std::is_convertible_v<ztCAD_cmnSelector2<10>*, ztCAD_cmnSelector2<11>*>));
}

}  // namespace
