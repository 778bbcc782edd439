#include <diff/matching.h>
#include <gtest/gtest.h>

#include <random>

#include "random_seed.h"

namespace {

using Names = std::vector<std::string>;

/// Elements whose content is the letter after "=" in their name: "p_$1=x".
struct Elements {
  Names names;
  Names contents;

  Elements(const std::initializer_list<const char*>& descriptions) {
    for (const std::string description : descriptions) {
      names.push_back(description.substr(0, description.find('=')));
      contents.push_back(description.substr(description.find('=') + 1));
    }
  }
};

/// "0-0 1-2 | only a | only b | moved pairs"
std::string matched(const Elements& a, const Elements& b) {
  const cli::Matching matching = cli::match(
      a.names, b.names, [&](std::size_t i, std::size_t j) { return a.contents[i] == b.contents[j]; });
  std::string text;
  for (const auto& [i, j] : matching.pairs)
    text += std::to_string(i) + "-" + std::to_string(j) + " ";
  for (const auto* indices : {&matching.onlyA, &matching.onlyB, &matching.moved}) {
    text += "|";
    for (const std::size_t i : *indices)
      text += " " + std::to_string(i);
  }
  return text;
}

}  // namespace

TEST(Matching, OfEqualNamesIsByOrder) { EXPECT_EQ(matched({"a", "b"}, {"a", "b"}), "0-0 1-1 |||"); }

TEST(Matching, OfNothingIsEmpty) {
  EXPECT_EQ(matched({}, {}), "|||");
  EXPECT_EQ(matched({"a"}, {}), "| 0||");
  EXPECT_EQ(matched({}, {"a"}), "|| 0|");
}

TEST(Matching, FindsInsertedAndRemovedElements) {
  EXPECT_EQ(matched({"a", "b", "c"}, {"a", "x", "b", "c"}), "0-0 1-2 2-3 || 1|");
  EXPECT_EQ(matched({"a", "b", "c"}, {"a", "c"}), "0-0 2-1 | 1||");
  EXPECT_EQ(matched({"a", "b"}, {"x", "y"}), "| 0 1| 0 1|");
}

TEST(Matching, FindsTheFewestMovedElements) {
  EXPECT_EQ(matched({"a", "b", "c", "d"}, {"d", "a", "b", "c"}), "0-1 1-2 2-3 3-0 ||| 3");
  EXPECT_EQ(matched({"a", "b", "c"}, {"b", "c", "a"}), "0-2 1-0 2-1 ||| 0");
}

TEST(Matching, OfNumberedNamesIsByNumberIfThereAreAsMany) {
  EXPECT_EQ(matched({"p=x", "p_$1=y"}, {"p=y", "p_$1=x"}), "0-0 1-1 |||");
}

TEST(Matching, OfNumberedNamesIsByContentIfThereAreMore) {
  EXPECT_EQ(matched({"p=x", "p_$1=y", "p_$2=z"}, {"p=x", "p_$1=new", "p_$2=y", "p_$3=z"}),
            "0-0 1-2 2-3 || 1|");
  EXPECT_EQ(matched({"p=x", "p_$1=y", "p_$2=z"}, {"p=y", "p_$1=z"}), "1-0 2-1 | 0||");
}

TEST(Matching, OfOneNameIsByContentToo) {
  EXPECT_EQ(matched({"=x", "=y"}, {"=new", "=x", "=y"}), "0-1 1-2 || 0|");
  EXPECT_EQ(matched({"=x", "=y", "=z"}, {"=x", "=other", "=z", "=z"}), "0-0 1-1 2-3 || 2|");
}

TEST(Matching, UsesEachElementOnce) {
  std::mt19937_64 random(randomSeed());
  for (int round = 0; round < 2000; ++round) {
    const auto some = [&] {
      Names names(random() % 8);
      for (std::string& name : names)
        name = std::string(1, static_cast<char>('a' + random() % 3)) + (random() % 2 == 0 ? "" : "_$1");
      return names;
    };
    const Names a = some();
    const Names b = some();
    const cli::Matching matching = cli::match(a, b, [&](auto, auto) { return random() % 2 == 0; });
    std::vector<int> usesOfA(a.size());
    std::vector<int> usesOfB(b.size());
    for (const auto& [i, j] : matching.pairs) {
      ++usesOfA.at(i);
      ++usesOfB.at(j);
      EXPECT_EQ(cli::baseName(a[i]), cli::baseName(b[j]));
    }
    for (const std::size_t i : matching.onlyA)
      ++usesOfA.at(i);
    for (const std::size_t j : matching.onlyB)
      ++usesOfB.at(j);
    EXPECT_EQ(usesOfA, std::vector<int>(a.size(), 1));
    EXPECT_EQ(usesOfB, std::vector<int>(b.size(), 1));
  }
}

TEST(BaseName, LeavesOutAppendedNumbers) {
  const std::pair<const char*, const char*> rows[] = {
      {"p", "p"},  {"p_$1", "p"}, {"p_$12_$3", "p"},  {"p_$", "p_$"}, {"p1", "p1"}, {"12", "12"},
      {"_$1", ""}, {"", ""},      {"p_$1x", "p_$1x"}, {"p$1", "p$1"}, {"$1", "$1"}};
  for (const auto& [name, base] : rows)
    EXPECT_EQ(cli::baseName(name), base) << name;
}
