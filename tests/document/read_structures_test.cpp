#include "structure/read_structures.h"

#include <gtest/gtest.h>
#include <functional>
#include <memory>

#include "sample_documents.h"

namespace {

/// A substitute for a structure that reports its destruction.
class Watched : public ztCAD_Base {
 public:
  explicit Watched(std::function<void()> onDestruction) : m_onDestruction(std::move(onDestruction)) {}
  ~Watched() override { m_onDestruction(); }

 private:
  std::function<void()> m_onDestruction;
};

class ReadStructures : public testing::Test {
 protected:
  ~ReadStructures() override { ztcad::clearReadStructures(); }

  void keep(std::function<void()> onDestruction = {}) {
    ++alive;
    ztcad::keepReadStructure(std::make_unique<Watched>([this, onDestruction] {
      --alive;
      if (onDestruction) onDestruction();
    }));
  }

  int alive = 0;
};

TEST_F(ReadStructures, ClearingAnEmptyListDoesNothing) {
  ztcad::clearReadStructures();
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, ClearingDestroysAll) {
  for (int i = 0; i < 3; ++i)
    keep();
  EXPECT_EQ(alive, 3);
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, TheListCanBeUsedAgainAfterClearing) {
  keep();
  ztcad::clearReadStructures();
  keep();
  EXPECT_EQ(alive, 1);
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, DestroyingAnyDocumentClears) {
  const ztCAD_GMDDocument living("");
  keep();
  { const ztCAD_GMDDocument ending(""); }
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, LoadingDoesNotClear) {
  ztCAD_GMDDocument document("");
  keep();
  loadString(document, "<GMD/>");
  loadBytes(document, "<GMD/>");
  EXPECT_EQ(alive, 1);
}

TEST_F(ReadStructures, ADestructorCanClear) {
  keep([] { ztcad::clearReadStructures(); });
  keep([] { ztcad::clearReadStructures(); });
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, StructuresAddedDuringClearingAreKeptUntilTheNextClearing) {
  keep([this] { keep(); });
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 1);
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

}  // namespace
