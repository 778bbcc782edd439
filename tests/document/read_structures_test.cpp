#include "structure/read_structures.h"

#include <gtest/gtest.h>
#include <functional>
#include <memory>

#include "sample_documents.h"

namespace {

/// Stands in for a structure; tells its end.
class Watched : public ztCAD_Base {
 public:
  explicit Watched(std::function<void()> atEnd) : m_atEnd(std::move(atEnd)) {}
  ~Watched() override { m_atEnd(); }

 private:
  std::function<void()> m_atEnd;
};

class ReadStructures : public testing::Test {
 protected:
  ~ReadStructures() override { ztcad::clearReadStructures(); }

  void keep(std::function<void()> atEnd = {}) {
    ++alive;
    ztcad::keepReadStructure(std::make_unique<Watched>([this, atEnd] {
      --alive;
      if (atEnd) atEnd();
    }));
  }

  int alive = 0;
};

TEST_F(ReadStructures, ClearOfNoneDoesNothing) {
  ztcad::clearReadStructures();
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, ClearDestroysAll) {
  for (int i = 0; i < 3; ++i)
    keep();
  EXPECT_EQ(alive, 3);
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, TheListServesAgainAfterAClear) {
  keep();
  ztcad::clearReadStructures();
  keep();
  EXPECT_EQ(alive, 1);
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, EndOfAnyDocumentClears) {
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

TEST_F(ReadStructures, AnEndMayAskForAClear) {
  keep([] { ztcad::clearReadStructures(); });
  keep([] { ztcad::clearReadStructures(); });
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

TEST_F(ReadStructures, WhatIsKeptDuringAClearStaysForTheNext) {
  keep([this] { keep(); });
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 1);
  ztcad::clearReadStructures();
  EXPECT_EQ(alive, 0);
}

}  // namespace
