#include <gtest/gtest.h>
#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "node_text.h"
#include "structure/read_structures.h"
#include "structure/sample_elements.h"
#include "structure/structure.h"
#include "time_growth.h"
#include "xml/tree_of_xml.h"

namespace {

using Nested = std::vector<ztCAD_commonStructure*>;
Nested nestedIn(const ztCAD_commonStructure& structure) {
  return {structure.structures().begin(), structure.structures().end()};
}

class NestedStructures : public testing::Test {
 protected:
  ~NestedStructures() override { ztcad::clearReadStructures(); }
};

// ---------------------------------------------------------------------------------------------------- adding

TEST_F(NestedStructures, AddingStoresAPointerToTheObject) {
  ztCAD_Structure nested = structure("N");
  ztCAD_TmplStructure holder;
  EXPECT_FALSE(holder.addStructure(nested));
  EXPECT_EQ(nestedIn(holder), Nested{&nested});
}

TEST_F(NestedStructures, TheSameStructureCanBeHeldTwice) {
  ztCAD_Structure holder;
  {
    ztCAD_Structure nested = structure("N");
    ztCAD_Structure other = structure("O");
    EXPECT_FALSE(holder.addStructure(nested));
    EXPECT_FALSE(holder.addStructure(other));
    EXPECT_FALSE(holder.addStructure(nested));
    EXPECT_EQ(nestedIn(holder), (Nested{&nested, &other, &nested}));
    EXPECT_EQ(childrenOf(holder), "structure N, structure O, structure N");
    const auto* const clone = holder.clone();
    EXPECT_EQ(std::set<ztCAD_commonStructure*>(clone->structures().begin(), clone->structures().end()).size(),
              3u);
  }
  EXPECT_TRUE(holder.structures().empty());
}

TEST_F(NestedStructures, AStructureInItselfIsRefused) {
  ztCAD_Structure made;
  EXPECT_TRUE(made.addStructure(made));
  EXPECT_TRUE(made.structures().empty());
}

TEST_F(NestedStructures, CyclesOfAnyLengthAreRefused) {
  ztCAD_Structure a;
  ztCAD_TmplStructure b;
  ztCAD_Structure c;
  EXPECT_FALSE(a.addStructure(b));
  EXPECT_TRUE(b.addStructure(a));
  EXPECT_FALSE(b.addStructure(c));
  EXPECT_TRUE(c.addStructure(a));
  EXPECT_TRUE(c.addStructure(b));
  EXPECT_TRUE(c.structures().empty());
  EXPECT_FALSE(a.addStructure(c)) << "two paths to one structure are not a cycle";
}

TEST_F(NestedStructures, ARefusedStructureIsAcceptedOnceTheCycleIsGone) {
  ztCAD_Structure a;
  ztCAD_Structure c;
  {
    ztCAD_Structure b;
    EXPECT_FALSE(a.addStructure(b));
    EXPECT_FALSE(b.addStructure(c));
    EXPECT_TRUE(c.addStructure(a));
  }
  EXPECT_FALSE(c.addStructure(a));
}

// ------------------------------------------------------------------------------------------------- assigning

TEST_F(NestedStructures, AssignmentOmitsStructuresThatWouldCloseACycle) {
  ztCAD_Structure a = structure("A");
  ztCAD_Structure other = structure("O");
  ztCAD_Structure middle = structure("M");
  ztCAD_Structure b = structure("B");
  EXPECT_FALSE(middle.addStructure(a));
  EXPECT_FALSE(b.addStructure(a));
  EXPECT_FALSE(b.addStructure(other));
  EXPECT_FALSE(b.addStructure(middle));
  a = b;
  EXPECT_EQ(nestedIn(a), Nested{&other});
  EXPECT_EQ(childrenOf(a), "structure O");
  EXPECT_EQ(a.name().toStdString(), "B");
}

TEST_F(NestedStructures, SwappingHolderAndNestedStructureLeavesNoCycle) {
  ztCAD_Structure a = structure("A");
  ztCAD_Structure b = structure("B");
  EXPECT_FALSE(a.addStructure(b));
  std::swap(a, b);
  EXPECT_EQ(a.name().toStdString(), "B");
  EXPECT_EQ(b.name().toStdString(), "A");
  EXPECT_TRUE(a.structures().empty());
  EXPECT_TRUE(b.structures().empty()) << "it would hold itself";
}

TEST_F(NestedStructures, AssignmentReleasesEarlierNestedStructures) {
  ztCAD_Structure old = structure("old");
  ztCAD_Structure made;
  EXPECT_FALSE(made.addStructure(old));
  made = ztCAD_Structure();
  EXPECT_TRUE(made.structures().empty());
  EXPECT_FALSE(old.addStructure(made));
}

TEST_F(NestedStructures, ReadingReleasesEarlierNestedStructures) {
  ztCAD_Structure made;
  {
    ztCAD_Structure old = structure("old");
    EXPECT_FALSE(made.addStructure(old));
    EXPECT_TRUE(read(made, R"(<structure name="S"><structure name="N"/></structure>)"));
  }
  EXPECT_EQ(childrenOf(made), "structure N");
}

// ------------------------------------------------------------------------------------------------ destroying

TEST_F(NestedStructures, ADestroyedStructureLeavesEveryHolder) {
  ztCAD_Structure first;
  ztCAD_Structure second;
  ztCAD_Structure stays = structure("stays");
  auto nested = std::make_unique<ztCAD_Structure>();
  for (ztCAD_Structure* holder : {&first, &second}) {
    EXPECT_FALSE(holder->addStructure(*nested));
    EXPECT_FALSE(holder->addStructure(stays));
  }
  bool nameIsFree = false;
  const ztCAD_TmplStructure shares("T", first, nameIsFree);
  const ztCAD_Structure copy = second;
  nested.reset();
  for (const ztCAD_commonStructure* holder :
       {static_cast<const ztCAD_commonStructure*>(&first), static_cast<const ztCAD_commonStructure*>(&second),
        static_cast<const ztCAD_commonStructure*>(&shares), static_cast<const ztCAD_commonStructure*>(&copy)})
    EXPECT_EQ(nestedIn(*holder), Nested{&stays});
}

TEST_F(NestedStructures, TheHolderCanBeDestroyedFirst) {
  ztCAD_Structure nested = structure("N");
  {
    ztCAD_Structure holder;
    EXPECT_FALSE(holder.addStructure(nested));
    EXPECT_FALSE(holder.addStructure(nested));
  }
  ztCAD_Structure other;
  EXPECT_FALSE(nested.addStructure(other));
  EXPECT_EQ(written(nested).find("</structure>"), written(nested).rfind("</structure>"));
}

TEST_F(NestedStructures, TemplateAndSourceCanBeDestroyedInEitherOrder) {
  for (const bool sourceFirst : {true, false}) {
    ztCAD_Structure nested = structure("N");
    auto source = std::make_unique<ztCAD_Structure>();
    EXPECT_FALSE(source->addStructure(nested));
    bool nameIsFree = false;
    auto made = std::make_unique<ztCAD_TmplStructure>("T", *source, nameIsFree);
    if (sourceFirst) source.reset();
    made.reset();
    source.reset();
    EXPECT_EQ(nested.name().toStdString(), "N");
  }
}

TEST_F(NestedStructures, ClearingReadStructuresRemovesThemFromTheirHolders) {
  auto first = readFrom<ztCAD_Structure>(
      R"(<structure name="S"><structure name="N"><structure name="O"/></structure></structure>)");
  ztCAD_Structure second;
  ztCAD_Structure own = structure("own");
  EXPECT_FALSE(second.addStructure(*first.structures().front()));
  EXPECT_FALSE(second.addStructure(own));
  EXPECT_FALSE(first.structures().front()->addStructure(own));
  ztcad::clearReadStructures();
  EXPECT_TRUE(first.structures().empty());
  EXPECT_EQ(nestedIn(second), Nested{&own});
  EXPECT_TRUE(read(first, R"(<structure name="S"><structure name="N"/></structure>)"));
  EXPECT_EQ(childrenOf(first), "structure N");
}

// While the process ends, destructors must not access structures that may already be destroyed: neither
// holder nor nested structure removes itself from the other.
TEST_F(NestedStructures, AbandonedStructuresAreNotRemovedFromTheirHolders) {
  for (const bool holderFirst : {true, false}) {
    auto holder = std::make_unique<ztCAD_Structure>();
    auto nested = std::make_unique<ztCAD_Structure>();
    EXPECT_FALSE(holder->addStructure(*nested));
    ztcad::abandonNestedStructures(true);
    if (holderFirst) holder.reset();
    nested.reset();
    EXPECT_EQ(holder ? holder->structures().size() : 1u, 1u);
    holder.reset();
    ztcad::abandonNestedStructures(false);
  }
}

TEST_F(NestedStructures, AreRemovedFromTheirHoldersAfterAbandoningHasEnded) {
  ztcad::abandonNestedStructures(true);
  ztcad::abandonNestedStructures(false);
  ztCAD_Structure holder;
  {
    ztCAD_Structure nested;
    EXPECT_FALSE(holder.addStructure(nested));
  }
  EXPECT_TRUE(holder.structures().empty());
}

// The time to destroy a structure must depend on its own nestings only, not on those of its holder.
class WideHolder : public testing::TestWithParam<int> {};

TEST_P(WideHolder, IsDestroyedInLinearTime) {
  const auto nestAndDestroy = [order = GetParam()](int width) {
    auto holder = std::make_unique<ztCAD_Structure>();
    std::vector<std::unique_ptr<ztCAD_Structure>> nested;
    for (int i = 0; i < width; ++i) {
      nested.push_back(std::make_unique<ztCAD_Structure>());
      ASSERT_FALSE(holder->addStructure(*nested.back()));
    }
    if (order == 0) holder.reset();
    if (order == 2) std::reverse(nested.begin(), nested.end());
    if (order == 3) std::shuffle(nested.begin(), nested.end(), std::mt19937(1));
    if (order == 4) *holder = ztCAD_Structure(*holder);
    for (auto& one : nested)
      one.reset();
    EXPECT_TRUE(!holder || holder->structures().empty());
  };
  EXPECT_LT(timeGrowth(8000, nestAndDestroy), linearTimeGrowth);
}

const char* const wideHolderNames[] = {"HolderFirst", "FirstToLast", "LastToFirst", "Shuffled",
                                       "AfterAssignment"};

INSTANTIATE_TEST_SUITE_P(NestedStructures, WideHolder, testing::Range(0, 5),
                         [](const auto& row) { return wideHolderNames[row.param]; });

void nestRepeatedlyInOneHolder(int times) {
  ztCAD_Structure holder;
  ztCAD_Structure other;
  auto nested = std::make_unique<ztCAD_Structure>();
  for (int i = 0; i < times; ++i)
    ASSERT_FALSE(holder.addStructure(*nested));
  ASSERT_FALSE(holder.addStructure(other));
  nested.reset();
  EXPECT_EQ(nestedIn(holder), Nested{&other});
}

TEST_F(NestedStructures, AStructureHeldManyTimesIsDestroyedInLinearTime) {
  EXPECT_LT(timeGrowth(12'500, nestRepeatedlyInOneHolder), linearTimeGrowth);
}

void nestInManyHolders(int count) {
  std::vector<ztCAD_Structure> holders(static_cast<std::size_t>(count));
  auto nested = std::make_unique<ztCAD_Structure>();
  for (ztCAD_Structure& holder : holders)
    ASSERT_FALSE(holder.addStructure(*nested));
  nested.reset();
  for (const ztCAD_Structure& holder : holders)
    ASSERT_TRUE(holder.structures().empty());
}

TEST_F(NestedStructures, AStructureWithManyHoldersIsDestroyedInLinearTime) {
  EXPECT_LT(timeGrowth(5'000, nestInManyHolders), linearTimeGrowth);
}

// Sixty levels, each held twice by the next: a search that follows every path would visit 2^59 structures and
// never end.
TEST_F(NestedStructures, SearchForCyclesVisitsEachStructureOnce) {
  std::vector<std::unique_ptr<ztCAD_Structure>> levels;
  for (int i = 0; i < 60; ++i) {
    levels.push_back(std::make_unique<ztCAD_Structure>());
    for (int times = 0; i > 0 && times < 2; ++times)
      ASSERT_FALSE(levels[i]->addStructure(*levels[i - 1]));
  }
  EXPECT_TRUE(levels.front()->addStructure(*levels.back()));
}

// ----------------------------------------------------------------------------------------------------- depth

struct DepthRow {
  const char* name;
  std::function<void(ztCAD_StructureContent&)> fill;
};
std::ostream& operator<<(std::ostream& out, const DepthRow& row) { return out << row.name; }

template <typename Fill>
auto withDetail(Fill fill) {
  return [fill](ztCAD_StructureContent& content) { fill(content.details.appendNew().content()); };
}

const DepthRow depthRows[] = {
    {"Nothing", [](auto&) {}},
    {"Point", [](auto& c) { c.points.appendNew(); }},
    {"Sphere", [](auto& c) { c.spheres.appendNew(); }},
    {"MassElement", [](auto& c) { c.mipElements.add(ztCAD_ElementMIP("M", mipRecord())); }},
    {"Line", [](auto& c) { c.lines.appendNew(); }},
    {"Solid", [](auto& c) { c.triangles.appendNew(); }},
    {"EmptyDetail", withDetail([](auto&) {})},
    {"DetailWithPoint", withDetail([](auto& c) { c.points.appendNew(); })},
    {"DetailWithSphere", withDetail([](auto& c) { c.spheres.appendNew(); })},
    {"DetailWithSolid", withDetail([](auto& c) { c.triangles.appendNew(); })},
    {"DetailWithLine", withDetail([](auto& c) { c.lines.appendNew(); })},
    {"TwoDetailsTheFirstDeeper",
     [](auto& c) {
       c.details.appendNew().content().lines.appendNew();
       c.details.appendNew();
     }},
    {"StructureReference", [](auto& c) { c.structureReferences.appendNew(); }},
    {"DetailReference", [](auto& c) { c.detailReferences.appendNew(); }},
    {"PointReference", [](auto& c) { c.pointReferences.appendNew(); }},
    {"LineReference", [](auto& c) { c.lineReferences.appendNew(); }},
    {"MassReference", [](auto& c) { c.mipReferences.appendNew(); }},
    {"SolidReference", [](auto& c) { c.triangleReferences.appendNew(); }},
};

class NestingDepth : public testing::TestWithParam<DepthRow> {
 protected:
  /// The longest accepted chain of nested structures, with content in the innermost: built from the innermost
  /// outwards, or from the outermost inwards with the innermost added last.
  std::vector<std::unique_ptr<ztCAD_Structure>> deepest(bool outwards) const {
    std::vector<std::unique_ptr<ztCAD_Structure>> chain;
    auto filled = std::make_unique<ztCAD_Structure>();
    GetParam().fill(filled->content());
    chain.push_back(outwards ? std::move(filled) : std::make_unique<ztCAD_Structure>());
    for (;;) {
      auto next = std::make_unique<ztCAD_Structure>();
      if (!outwards) GetParam().fill(next->content());
      ztCAD_Structure& holder = outwards ? *next : *chain.back();
      ztCAD_Structure& nested = outwards ? *chain.back() : *next;
      if (holder.addStructure(nested)) {
        EXPECT_TRUE(holder.structures().empty());
        return chain;
      }
      if (!outwards) next->content() = ztCAD_StructureContent();
      chain.push_back(std::move(next));
    }
  }
  static bool fitsInAFile(const ztCAD_Structure& structure, const std::string& around = "") {
    QDomDocument tree;
    const std::string open = around.empty() ? "" : '<' + around + '>';
    const std::string close = around.empty() ? "" : "</" + around + '>';
    return xml_tree::parseXml(fromUtf8("<GMD>" + open + written(structure) + close + "</GMD>"), tree).parsed;
  }
};

TEST_P(NestingDepth, IsThatOfAFileWhenBuiltOutwards) {
  const auto chain = deepest(true);
  EXPECT_GT(chain.size(), 250u);
  EXPECT_TRUE(fitsInAFile(*chain.back()));
  EXPECT_FALSE(fitsInAFile(*chain.back(), "structure")) << "one more level would have fitted";
}

TEST_P(NestingDepth, IsThatOfAFileWhenBuiltInwards) {
  const auto chain = deepest(false);
  GetParam().fill(chain.back()->content());
  EXPECT_TRUE(fitsInAFile(*chain.front()));
  EXPECT_FALSE(fitsInAFile(*chain.front(), "structure")) << "one more level would have fitted";
}

TEST_P(NestingDepth, CountsBothChainsWhenTheyAreJoined) {
  auto lower = deepest(true);
  std::vector<std::unique_ptr<ztCAD_Structure>> upper;
  for (int i = 0; i < 100; ++i) {
    upper.push_back(std::make_unique<ztCAD_Structure>());
    if (i > 0) {
      ASSERT_FALSE(upper[i - 1]->addStructure(*upper[i]));
    }
  }
  const std::size_t fits = lower.size() - upper.size();
  EXPECT_TRUE(upper.back()->addStructure(*lower[fits]));
  EXPECT_FALSE(upper.back()->addStructure(*lower[fits - 1]));
}

INSTANTIATE_TEST_SUITE_P(NestedStructures, NestingDepth, testing::ValuesIn(depthRows),
                         [](const auto& row) { return row.param.name; });

TEST_F(NestedStructures, RemainingDepthIsThatOfTheLongestPathUp) {
  ztCAD_Structure near;
  ztCAD_Structure far;
  ztCAD_Structure shared;
  EXPECT_TRUE(shared.hasRoomFor(254));
  EXPECT_FALSE(shared.hasRoomFor(255)) << "the root and the structure use two levels";
  EXPECT_FALSE(near.addStructure(shared));
  EXPECT_FALSE(far.addStructure(near));
  EXPECT_FALSE(far.addStructure(shared));
  EXPECT_TRUE(shared.hasRoomFor(252));
  EXPECT_FALSE(shared.hasRoomFor(253));
}

TEST_F(NestedStructures, AssignmentOmitsStructuresNestedTooDeep) {
  std::vector<std::unique_ptr<ztCAD_Structure>> chain;
  for (int i = 0; i < 200; ++i) {
    chain.push_back(std::make_unique<ztCAD_Structure>());
    if (i > 0) {
      ASSERT_FALSE(chain[i]->addStructure(*chain[i - 1]));
    }
  }
  std::vector<std::unique_ptr<ztCAD_Structure>> other;
  for (int i = 0; i < 100; ++i) {
    other.push_back(std::make_unique<ztCAD_Structure>());
    if (i > 0) {
      ASSERT_FALSE(other[i]->addStructure(*other[i - 1]));
    }
  }
  ztCAD_Structure flat = structure("flat");
  ASSERT_FALSE(other.back()->addStructure(flat));
  *chain.front() = *other.back();
  EXPECT_EQ(nestedIn(*chain.front()), Nested{&flat});
}

}  // namespace
