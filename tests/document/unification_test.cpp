#include "core/document/unification.h"

#include <gtest/gtest.h>
#include <string>

#include "sample_documents.h"

namespace {

struct Row {
  const char* name;
  Names points;
  Names templatePoints;
  Names uniquePoints;
  Names uniqueTemplatePoints;
};

const Row rows[] = {
    {"empty document", {}, {}, {}, {}},
    {"no duplicate", {"B", "A"}, {"C"}, {"B", "A"}, {"C"}},
    {"three of one name", {"P", "P", "P"}, {}, {"P", "P_$1", "P_$2"}, {}},
    {"point and template point", {"A"}, {"A"}, {"A"}, {"A_$1"}},
    {"counter goes on across kinds", {"A", "A"}, {"A", "A"}, {"A", "A_$1"}, {"A_$2", "A_$3"}},
    {"new name met later", {"A", "A", "A_$1"}, {}, {"A", "A_$1", "A_$1_$1"}, {}},
    {"new name met before", {"A_$1", "A", "A"}, {}, {"A_$1", "A", "A_$1"}, {}},
    {"name given twice starts its counter anew",
     {"A_$1", "A_$1", "A", "A", "A_$1"},
     {},
     {"A_$1", "A_$1_$1", "A", "A_$1", "A_$1_$1"},
     {}},
    {"empty names", {"", ""}, {""}, {"", "_$1"}, {"_$2"}},
    {"case counts", {"a", "A"}, {}, {"a", "A"}, {}},
    {"blanks count", {"A", "A ", " A"}, {}, {"A", "A ", " A"}, {}},
    {"Cyrillic", {"Ёж", "Ёж"}, {}, {"Ёж", "Ёж_$1"}, {}},
    {"placeholders", {"%1", "%1"}, {}, {"%1", "%1_$1"}, {}},
    {"interleaved", {"A", "B", "A", "B"}, {"B"}, {"A", "B", "A_$1", "B_$1"}, {"B_$2"}},
};

TEST(Unification, NamesBecomeUniqueInTheOrderOfTheContainers) {
  for (const Row& row : rows) {
    ztCAD_GMDDocument document("");
    addPoints(document, row.points);
    addTemplatePoints(document, row.templatePoints);
    EXPECT_TRUE(ztcad::unifyNames(document.content())) << row.name;
    EXPECT_EQ(namesIn(document.content().points), row.uniquePoints) << row.name;
    EXPECT_EQ(namesIn(document.content().templatePoints), row.uniqueTemplatePoints) << row.name;
  }
}

TEST(Unification, ElevenOfOneNameCountOnInDecimal) {
  ztCAD_GMDDocument document("");
  addPoints(document, Names(12, "P"));
  ztcad::unifyNames(document.content());
  EXPECT_EQ(document.content().points.back().name(), QString("P_$11"));
}

TEST(Unification, SecondPassChangesNothingOnceNamesAreUnique) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"A", "A", "A"});
  ztcad::unifyNames(document.content());
  EXPECT_TRUE(ztcad::unifyNames(document.content()));
  EXPECT_EQ(namesIn(document.content().points), (Names{"A", "A_$1", "A_$2"}));
}

TEST(Unification, EachPassCountsAnew) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"A", "A"});
  ztcad::unifyNames(document.content());
  addPoints(document, {"A"});
  ztcad::unifyNames(document.content());
  EXPECT_EQ(namesIn(document.content().points), (Names{"A", "A_$1", "A_$1"}));
}

TEST(Unification, ChangesNothingButTheName) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"A", "A"});
  document.content().points.back().property().attributes().setComment("c");
  document.content().points.back().setCenter(ztCAD_Coord(1, 2, 3));
  ztcad::unifyNames(document.content());
  EXPECT_EQ(document.content().points.back().property().attributes().comment(), QString("c"));
  EXPECT_EQ(document.content().points.back().center().y(), 2);
  EXPECT_FALSE(document.content().points.back().readOk());
}

TEST(Unification, OfManyEqualNamesTakesNoQuadraticTime) {
  constexpr int count = 100000;  // a walk over all earlier names for each one would take minutes
  ztCAD_GMDDocument document("");
  const ztCAD_Point point = pointNamed("P");
  for (int i = 0; i < count; ++i)
    document.content().points.add(point);
  ztcad::unifyNames(document.content());
  EXPECT_EQ(document.content().points.back().name(), QString("P_$%1").arg(count - 1));
}

}  // namespace
