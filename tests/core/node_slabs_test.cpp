#include "core/node_slabs.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "core/node_pool.h"
#include "differential/dice.h"
#include "pooled_nodes.h"
#include "random_seed.h"

namespace {

using Texts = std::list<std::string, ztCAD_NodeAllocator<std::string>>;

void fill(Texts& texts, int count) {
  for (int i = 0; i < count; ++i)
    texts.push_back("a text with a number at its end: " + std::to_string(i));
}

void expectFilled(const Texts& texts, int count) {
  ASSERT_EQ(texts.size(), static_cast<std::size_t>(count));
  int i = 0;
  for (const std::string& text : texts)
    ASSERT_EQ(text, "a text with a number at its end: " + std::to_string(i++));
}

std::ptrdiff_t distance(const std::string& a, const std::string& b) {
  return reinterpret_cast<const char*>(&b) - reinterpret_cast<const char*>(&a);
}

TEST(NodeSlabs, ListsThatAreFilledOneAfterTheOtherLieSideBySide) {
  if (!isPooled) GTEST_SKIP() << "no pool";
  std::vector<Texts> lists(20);
  {
    const ztcad::NodeSlabScope scope;
    for (Texts& list : lists)
      fill(list, 10);
  }
  const std::ptrdiff_t node = distance(lists[19].front(), *std::next(lists[19].begin()));
  EXPECT_EQ(node, static_cast<std::ptrdiff_t>(sizeof(std::string) + 2 * sizeof(void*)));
  int side = 0;
  for (const Texts& list : lists) {
    expectFilled(list, 10);
    for (auto text = std::next(list.begin()); text != list.end(); ++text)
      side += distance(*std::prev(text), *text) == node ? 1 : 0;
  }
  EXPECT_GT(side, 20 * 9 * 8 / 10) << "all but those at the ends of slabs";
}

TEST(NodeSlabs, ListsMayBeFilledTogetherAndLater) {
  std::vector<Texts> lists(7);
  {
    const ztcad::NodeSlabScope scope;
    for (int i = 0; i < 500; ++i)
      for (Texts& list : lists)
        list.push_back("a text with a number at its end: " + std::to_string(i));
  }
  for (Texts& list : lists) {
    expectFilled(list, 500);
    list.clear();
    fill(list, 300);
    expectFilled(list, 300);
  }
}

TEST(NodeSlabs, AListMayGrowAfterTheScope) {
  Texts list;
  {
    const ztcad::NodeSlabScope scope;
    fill(list, 3);
  }
  for (int i = 3; i < 1000; ++i)
    list.push_back("a text with a number at its end: " + std::to_string(i));
  expectFilled(list, 1000);
}

TEST(NodeSlabs, LargeElementsHaveMemoryOfTheirOwn) {
  struct Large {
    char bytes[10000];
  };
  const ztcad::NodeSlabScope scope;
  std::list<Large, ztCAD_NodeAllocator<Large>> list;
  for (int i = 0; i < 50; ++i)
    list.emplace_back().bytes[9999] = static_cast<char>(i);
  int i = 0;
  for (const Large& large : list)
    EXPECT_EQ(large.bytes[9999], static_cast<char>(i++));
}

TEST(NodeSlabs, ScopesNest) {
  Texts outer;
  Texts inner;
  const ztcad::NodeSlabScope scope;
  EXPECT_EQ(ztcad::NodeSlabScope::innermost(), &scope);
  fill(outer, 5);
  {
    const ztcad::NodeSlabScope nested;
    EXPECT_EQ(ztcad::NodeSlabScope::innermost(), &nested);
    fill(inner, 5);
  }
  EXPECT_EQ(ztcad::NodeSlabScope::innermost(), &scope);
  for (int i = 5; i < 100; ++i)
    outer.push_back("a text with a number at its end: " + std::to_string(i));
  expectFilled(outer, 100);
  expectFilled(inner, 5);
}

TEST(NodeSlabs, AScopeBelongsToOneThread) {
  const ztcad::NodeSlabScope scope;
  const ztcad::NodeSlabScope* other = &scope;
  std::thread([&other] { other = ztcad::NodeSlabScope::innermost(); }).join();
  EXPECT_EQ(other, nullptr);
}

TEST(NodeSlabs, AnyThreadMayGiveNodesBack) {
  auto lists = std::make_unique<std::vector<Texts>>(100);
  auto others = std::make_unique<std::vector<Texts>>(100);
  {
    const ztcad::NodeSlabScope scope;
    for (std::size_t i = 0; i < lists->size(); ++i) {
      fill((*lists)[i], 20);
      fill((*others)[i], 20);
    }
  }
  std::thread thread([&lists] { lists.reset(); });
  others.reset();
  thread.join();
  EXPECT_EQ(lists, nullptr);
}

TEST(NodeSlabs, AnySeriesOfCallsKeepsTheElements) {
  Dice dice(randomSeed());
  std::vector<Texts> lists(12);
  std::vector<std::vector<std::string>> expected(lists.size());
  auto scope = std::make_unique<ztcad::NodeSlabScope>();
  for (int step = 0; step < 20000; ++step) {
    const auto at = static_cast<std::size_t>(dice.roll(static_cast<int>(lists.size())));
    Texts& list = lists[at];
    if (dice.oneIn(2000)) {
      scope.reset();
      if (dice.oneIn(2)) scope = std::make_unique<ztcad::NodeSlabScope>();
    }
    if (dice.oneIn(60)) {
      list.clear();
      expected[at].clear();
    } else if (dice.oneIn(3) && !list.empty()) {
      const int place = dice.roll(static_cast<int>(list.size()));
      list.erase(std::next(list.begin(), place));
      expected[at].erase(expected[at].begin() + place);
    } else {
      list.push_back(std::to_string(step) + " is the number of this step");
      expected[at].push_back(list.back());
    }
  }
  for (std::size_t at = 0; at < lists.size(); ++at)
    EXPECT_TRUE(std::equal(lists[at].begin(), lists[at].end(), expected[at].begin(), expected[at].end()));
}

}  // namespace
