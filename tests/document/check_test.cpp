#include "core/document/check.h"

#include <gtest/gtest.h>
#include <string>

#include "sample_documents.h"

namespace {

TEST(Check, AsksForUniqueNamesOfTemplatePointsAlone) {
  struct Row {
    const char* name;
    Names points;
    Names templatePoints;
    bool passes;
  };
  const Row rows[] = {
      {"empty document", {}, {}, true},
      {"one of each", {"A"}, {"B"}, true},
      {"two template points of one name", {}, {"A", "A"}, false},
      {"not side by side", {}, {"A", "B", "A"}, false},
      {"two empty names", {}, {"", ""}, false},
      {"point and template point of one name", {"A"}, {"A"}, true},
      {"two points of one name", {"A", "A"}, {}, true},
      {"names of other case", {}, {"a", "A"}, true},
      {"Cyrillic and Latin letters that look alike", {}, {"\xD0\x90", "A"}, true},
      {"Cyrillic", {}, {"Ё", "Ё"}, false},
  };
  for (const Row& row : rows) {
    ztCAD_GMDDocument document("");
    addPoints(document, row.points);
    addTemplatePoints(document, row.templatePoints);
    EXPECT_EQ(ztcad::passesCheck(document.content()), row.passes) << row.name;
  }
}

TEST(Check, ChangesNoName) {
  ztCAD_GMDDocument document("");
  addTemplatePoints(document, {"A", "A"});
  EXPECT_FALSE(ztcad::passesCheck(document.content()));
  EXPECT_EQ(namesIn(document.content().templatePoints), (Names{"A", "A"}));
}

TEST(Check, DoesNotAskWhetherPointsAreComplete) {
  ztCAD_GMDDocument document("");
  document.content().points.appendNew();
  document.content().templatePoints.appendNew();
  EXPECT_TRUE(ztcad::passesCheck(document.content()));
}

}  // namespace
