#include "core/node_pool.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <list>
#include <utility>
#include <vector>

#include "differential/dice.h"
#include "pooled_nodes.h"
#include "random_seed.h"

namespace {

/// A node of a test: its memory, all of it filled with one byte.
struct Node {
  unsigned char* memory;
  unsigned char filling;
};

/// The nodes of a pool, as a list would have them.
class Nodes {
 public:
  explicit Nodes(std::size_t size) : m_size(size) {}
  Nodes(const Nodes&) = delete;
  Nodes& operator=(const Nodes&) = delete;
  ~Nodes() {
    while (!m_nodes.empty())
      free(m_nodes.size() - 1);
    EXPECT_EQ(m_pool, nullptr) << "the last node ends the pool";
  }

  void* allocate() {
    auto* const memory = static_cast<unsigned char*>(ztCAD_NodePool::allocate(m_pool, m_size));
    EXPECT_NE(memory, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignof(std::max_align_t), 0U);
    const Node node = {memory, m_nextFilling++};
    std::memset(memory, node.filling, m_size);
    m_nodes.push_back(node);
    EXPECT_EQ(m_pool != nullptr, isPooled);
    return memory;
  }

  /// Its memory must be as it was filled: no other node may have changed it.
  void free(std::size_t place) {
    const Node node = m_nodes[place];
    EXPECT_TRUE(isIntact(node)) << place;
    ztCAD_NodePool::free(m_pool, node.memory);
    m_nodes.erase(m_nodes.begin() + static_cast<std::ptrdiff_t>(place));
  }

  bool areIntact() const {
    return std::all_of(m_nodes.begin(), m_nodes.end(), [this](const Node& node) { return isIntact(node); });
  }
  std::size_t count() const { return m_nodes.size(); }
  const ztCAD_NodePool* pool() const { return m_pool; }

 private:
  bool isIntact(const Node& node) const {
    return std::all_of(node.memory, node.memory + m_size,
                       [&node](unsigned char byte) { return byte == node.filling; });
  }

  ztCAD_NodePool* m_pool = nullptr;
  const std::size_t m_size;
  std::vector<Node> m_nodes;
  unsigned char m_nextFilling = 0;
};

// of a list of pointers, of points, as large as a block, larger
const std::size_t sizes[] = {1, 8, 24, 200, 4096, 65472, 65473, 200000};

class NodesOfASize : public testing::TestWithParam<std::size_t> {};

TEST_P(NodesOfASize, AreApartFromEachOther) {
  Nodes nodes(GetParam());
  for (int i = 0; i < (GetParam() > 10000 ? 40 : 400); ++i)
    nodes.allocate();
  EXPECT_TRUE(nodes.areIntact());
}

TEST_P(NodesOfASize, CanBeGivenBackInAnyOrder) {
  Dice dice(randomSeed());
  for (int order = 0; order < 3; ++order) {
    Nodes nodes(GetParam());
    for (int i = 0; i < 50; ++i)
      nodes.allocate();
    while (nodes.count() > 0) {
      const int last = static_cast<int>(nodes.count()) - 1;
      nodes.free(static_cast<std::size_t>(order == 0 ? 0 : order == 1 ? last : dice.roll(last + 1)));
    }
    EXPECT_EQ(nodes.pool(), nullptr);
  }
}

TEST_P(NodesOfASize, AreUsedAgain) {
  if (!isPooled) GTEST_SKIP() << "no pool";
  Nodes nodes(GetParam());
  std::vector<void*> addresses;
  for (int i = 0; i < 20; ++i)
    addresses.push_back(nodes.allocate());
  for (int i = 0; i < 10; ++i)
    nodes.free(5);
  std::vector<void*> again;
  for (int i = 0; i < 10; ++i)
    again.push_back(nodes.allocate());
  std::vector<void*> givenBack(addresses.begin() + 5, addresses.begin() + 15);
  std::sort(givenBack.begin(), givenBack.end());
  std::sort(again.begin(), again.end());
  EXPECT_EQ(again, givenBack);
}

TEST_P(NodesOfASize, CanBeTakenAgainAfterTheLastOne) {
  Nodes nodes(GetParam());
  for (int pass = 0; pass < 3; ++pass) {
    for (int i = 0; i < 10; ++i)
      nodes.allocate();
    while (nodes.count() > 0)
      nodes.free(0);
    EXPECT_EQ(nodes.pool(), nullptr);
  }
}

TEST_P(NodesOfASize, StayAsTheyAreInAnySeriesOfCalls) {
  Dice dice(randomSeed());
  Nodes nodes(GetParam());
  const int rounds = GetParam() > 10000 ? 300 : 3000;
  for (int i = 0; i < rounds; ++i) {
    if (nodes.count() == 0 || dice.roll(5) < (i / 100 % 2 == 0 ? 4 : 1))
      nodes.allocate();
    else
      nodes.free(static_cast<std::size_t>(dice.roll(static_cast<int>(nodes.count()))));
  }
  EXPECT_TRUE(nodes.areIntact());
}

INSTANTIATE_TEST_SUITE_P(NodePool, NodesOfASize, testing::ValuesIn(sizes));

TEST(NodePool, PoolsAreIndependent) {
  Nodes one(32);
  Nodes other(48);
  for (int i = 0; i < 100; ++i) {
    one.allocate();
    other.allocate();
  }
  while (one.count() > 0)
    one.free(0);
  EXPECT_EQ(one.pool(), nullptr);
  EXPECT_TRUE(other.areIntact());
  EXPECT_EQ(other.count(), 100U);
}

// ------------------------------------------------------------------------------------------ lists with the
// allocator

template <typename T>
using PooledList = std::list<T, ztCAD_NodeAllocator<T>>;
using Numbers = PooledList<int>;

Numbers numbersUpTo(int count) {
  Numbers numbers;
  for (int i = 0; i < count; ++i)
    numbers.push_back(i);
  return numbers;
}

TEST(NodeAllocator, AListWithoutElementsHasNoPool) {
  Numbers numbers;
  EXPECT_TRUE(numbers.get_allocator() == ztCAD_NodeAllocator<int>());
  numbers.push_back(1);
  numbers.clear();
  EXPECT_TRUE(numbers.empty());
  numbers.push_back(2);
  EXPECT_EQ(numbers, Numbers{2});
}

TEST(NodeAllocator, ACopyHasNodesOfItsOwn) {
  Numbers numbers = numbersUpTo(100);
  const Numbers copy = numbers;
  numbers.clear();
  EXPECT_EQ(copy, numbersUpTo(100));
}

TEST(NodeAllocator, AMovedListTakesNodesAndPool) {
  Numbers source = numbersUpTo(100);
  const int* const first = &source.front();
  Numbers taken = std::move(source);
  EXPECT_EQ(&taken.front(), first);
  EXPECT_TRUE(source.empty());  // NOLINT(bugprone-use-after-move): a list is empty then
  source.push_back(7);
  taken.push_back(100);
  EXPECT_EQ(taken, numbersUpTo(101));
  EXPECT_EQ(source, Numbers{7});
}

TEST(NodeAllocator, AMovedAssignmentTakesNodesAndPool) {
  for (const int before : {0, 1, 100}) {
    Numbers source = numbersUpTo(50);
    Numbers target = numbersUpTo(before);
    const int* const first = &source.front();
    target = std::move(source);
    EXPECT_EQ(&target.front(), first);
    source.clear();  // NOLINT(bugprone-use-after-move): a list can be used again
    source.push_back(7);
    target.push_back(50);
    EXPECT_EQ(target, numbersUpTo(51));
    EXPECT_EQ(source, Numbers{7});
  }
}

TEST(NodeAllocator, ExchangedListsKeepTheirNodes) {
  for (const int count : {0, 1, 100}) {
    Numbers one = numbersUpTo(count);
    Numbers other = numbersUpTo(10);
    const int* const first = &other.front();
    one.swap(other);
    EXPECT_EQ(&one.front(), first);
    one.push_back(10);
    other.push_back(count);
    EXPECT_EQ(one, numbersUpTo(11));
    EXPECT_EQ(other, numbersUpTo(count + 1));
  }
}

TEST(NodeAllocator, AMillionElementsComeAndGo) {
  constexpr int count = 1000000;
  Numbers numbers = numbersUpTo(count);
  for (auto at = numbers.begin(); at != numbers.end();)
    at = *at % 2 == 0 ? numbers.erase(at) : std::next(at);
  for (int i = 0; i < count / 2; ++i)
    numbers.push_front(-i);
  EXPECT_EQ(numbers.size(), static_cast<std::size_t>(count));
  int expected = 1 - count / 2;
  auto at = numbers.begin();
  for (int i = 0; i < count / 2; ++i)
    ASSERT_EQ(*at++, expected++);
  expected = 1;
  for (; at != numbers.end(); ++at, expected += 2)
    ASSERT_EQ(*at, expected);
}

}  // namespace
