// Passes over structures that several holders share.

#include "structure/structure_pass.h"

#include <gtest/gtest.h>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "structure/read_structures.h"
#include "structure/structure.h"
#include "time_growth.h"

namespace {

class SharedStructures : public testing::Test {
 protected:
  ~SharedStructures() override { ztcad::clearReadStructures(); }

  ztCAD_Structure& make(const char* name) {
    bool nameIsFree = false;
    m_made.push_back(std::make_unique<ztCAD_Structure>(QString::fromUtf8(name), ztCAD_LCS(), nameIsFree));
    return *m_made.back();
  }

  /// Levels of two structures each, every one of which holds both of the next level: 2^levels paths lead to
  /// the last.
  ztCAD_Structure& makeLevelsOfTwos(int levels) {
    std::vector<ztCAD_Structure*> above = {&make("root")};
    ztCAD_Structure& root = *above.front();
    for (int level = 0; level < levels; ++level) {
      const std::vector<ztCAD_Structure*> below = {&make("S"), &make("S")};
      for (ztCAD_Structure* const holder : above)
        for (ztCAD_Structure* const nested : below)
          EXPECT_FALSE(holder->addStructure(*nested));
      above = below;
    }
    return root;
  }

  const std::vector<std::unique_ptr<ztCAD_Structure>>& made() const { return m_made; }

 private:
  std::vector<std::unique_ptr<ztCAD_Structure>> m_made;
};

TEST_F(SharedStructures, OneHeldTwiceByOneHolderKeepsItsName) {
  ztCAD_Structure& holder = make("holder");
  ztCAD_Structure& nested = make("N");
  holder.addStructure(nested);
  holder.addStructure(nested);
  EXPECT_TRUE(holder.unifyNames());
  EXPECT_EQ(nested.name(), QLatin1String("N"));
}

TEST_F(SharedStructures, OneHeldByTwoHoldersIsRenamedInTheFirstOnly) {
  ztCAD_Structure& root = make("root");
  ztCAD_Structure& first = make("first");
  ztCAD_Structure& second = make("second");
  ztCAD_Structure& namesake = make("N");
  ztCAD_Structure& shared = make("N");
  root.addStructure(first);
  root.addStructure(second);
  first.addStructure(namesake);
  first.addStructure(shared);
  second.addStructure(shared);
  root.unifyNames();
  EXPECT_EQ(shared.name(), QLatin1String("N_$1"));
  root.unifyNames();
  EXPECT_EQ(shared.name(), QLatin1String("N_$1"));
}

TEST_F(SharedStructures, NamesakesAfterOneThatWasMetBeforeGetACounter) {
  ztCAD_Structure& root = make("root");
  ztCAD_Structure& first = make("first");
  ztCAD_Structure& second = make("second");
  ztCAD_Structure& shared = make("N");
  ztCAD_Structure& namesake = make("N");
  root.addStructure(first);
  root.addStructure(second);
  first.addStructure(shared);
  second.addStructure(shared);
  second.addStructure(namesake);
  root.unifyNames();
  EXPECT_EQ(shared.name(), QLatin1String("N"));
  EXPECT_EQ(namesake.name(), QLatin1String("N_$1"));
}

TEST_F(SharedStructures, SixtyLevelsOfTwosAreUnifiedOnceEach) {
  ztCAD_Structure& root = makeLevelsOfTwos(60);
  root.unifyNames();
  for (std::size_t i = 1; i < made().size(); i += 2) {
    EXPECT_EQ(made()[i]->name(), QLatin1String("S"));
    EXPECT_EQ(made()[i + 1]->name(), QLatin1String("S_$1"));
  }
}

TEST_F(SharedStructures, SixtyLevelsOfTwosAreCheckedOnceEach) {
  ztCAD_Structure& root = makeLevelsOfTwos(60);
  EXPECT_TRUE(root.passesCheck());
  made().back()->content().points.add(ztCAD_Point());  // without a centre
  EXPECT_FALSE(root.passesCheck());
}

TEST_F(SharedStructures, RemovingOneHeldTwiceTakesItsFirstEntry) {
  ztCAD_Structure& holder = make("holder");
  ztCAD_Structure& twice = make("twice");
  ztCAD_Structure& other = make("other");
  for (ztCAD_Structure* const nested : {&twice, &other, &twice})
    EXPECT_FALSE(holder.addStructure(*nested));
  EXPECT_TRUE(holder.removeStructure(&twice));
  const std::vector<ztCAD_commonStructure*> left(holder.structures().begin(), holder.structures().end());
  EXPECT_EQ(left, (std::vector<ztCAD_commonStructure*>{&other, &twice}));
  EXPECT_TRUE(twice.isNested());
  EXPECT_FALSE(twice.isShared());
  EXPECT_TRUE(holder.removeStructure(&twice));
  EXPECT_FALSE(holder.removeStructure(&twice));
  EXPECT_FALSE(twice.isNested());
}

TEST_F(SharedStructures, IsSharedWhileItIsHeldMoreThanOnce) {
  ztCAD_Structure& nested = make("N");
  EXPECT_FALSE(nested.isNested());
  {
    ztCAD_Structure first;
    first.addStructure(nested);
    EXPECT_TRUE(nested.isNested());
    EXPECT_FALSE(nested.isShared());
    {
      ztCAD_Structure second;
      second.addStructure(nested);
      EXPECT_TRUE(nested.isShared());
    }
    EXPECT_FALSE(nested.isShared());
    first.addStructure(nested);
    EXPECT_TRUE(nested.isShared());
    const ztCAD_Structure copy = first;
    EXPECT_TRUE(nested.isShared());
  }
  EXPECT_FALSE(nested.isNested());
  EXPECT_FALSE(nested.isShared());
}

TEST_F(SharedStructures, OneOfManyHoldersIsMetInLinearTime) {
  const auto unifyAndCheck = [](int holders) {
    ztCAD_Structure root;
    ztCAD_Structure shared;
    std::deque<ztCAD_Structure> between(static_cast<std::size_t>(holders));
    for (ztCAD_Structure& holder : between) {
      holder.addStructure(shared);
      root.addStructure(holder);
    }
    root.unifyNames();
    EXPECT_TRUE(root.passesCheck());
  };
  EXPECT_LT(timeGrowth(4000, unifyAndCheck), linearTimeGrowth);
}

}  // namespace
