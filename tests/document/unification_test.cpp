#include "core/document/unification.h"

#include <gtest/gtest.h>
#include <string>

#include "core/document/check.h"
#include "sample_documents.h"
#include "time_growth.h"

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
    {"counter continues across kinds", {"A", "A"}, {"A", "A"}, {"A", "A_$1"}, {"A_$2", "A_$3"}},
    {"generated name occurs later", {"A", "A", "A_$1"}, {}, {"A", "A_$1", "A_$1_$1"}, {}},
    {"generated name occurs earlier", {"A_$1", "A", "A"}, {}, {"A_$1", "A", "A_$1"}, {}},
    {"name generated twice restarts its counter",
     {"A_$1", "A_$1", "A", "A", "A_$1"},
     {},
     {"A_$1", "A_$1_$1", "A", "A_$1", "A_$1_$1"},
     {}},
    {"empty names", {"", ""}, {""}, {"", "_$1"}, {"_$2"}},
    {"different case", {"a", "A"}, {}, {"a", "A"}, {}},
    {"different spaces", {"A", "A ", " A"}, {}, {"A", "A ", " A"}, {}},
    {"Cyrillic", {"Ёж", "Ёж"}, {}, {"Ёж", "Ёж_$1"}, {}},
    {"placeholders", {"%1", "%1"}, {}, {"%1", "%1_$1"}, {}},
    {"interleaved", {"A", "B", "A", "B"}, {"B"}, {"A", "B", "A_$1", "B_$1"}, {"B_$2"}},
};

TEST(Unification, NamesBecomeUniqueInContainerOrder) {
  for (const Row& row : rows) {
    ztCAD_GMDDocument document("");
    addPoints(document, row.points);
    addTemplatePoints(document, row.templatePoints);
    EXPECT_TRUE(ztcad::unifyNames(document.content())) << row.name;
    EXPECT_EQ(namesIn(document.content().points), row.uniquePoints) << row.name;
    EXPECT_EQ(namesIn(document.content().templatePoints), row.uniqueTemplatePoints) << row.name;
  }
}

TEST(Unification, CountersAreDecimal) {
  ztCAD_GMDDocument document("");
  addPoints(document, Names(12, "P"));
  ztcad::unifyNames(document.content());
  EXPECT_EQ(document.content().points.back().name(), QString("P_$11"));
}

TEST(Unification, ASecondPassChangesNothingOnceNamesAreUnique) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"A", "A", "A"});
  ztcad::unifyNames(document.content());
  EXPECT_TRUE(ztcad::unifyNames(document.content()));
  EXPECT_EQ(namesIn(document.content().points), (Names{"A", "A_$1", "A_$2"}));
}

TEST(Unification, EachPassRestartsTheCounters) {
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

void unifyEqualNames(int count) {
  ztCAD_GMDDocument document("");
  const ztCAD_Point point = pointNamed("P");
  for (int i = 0; i < count; ++i)
    document.content().points.add(point);
  ztcad::unifyNames(document.content());
  EXPECT_EQ(document.content().points.back().name(), QString("P_$%1").arg(count - 1));
}

TEST(Unification, TimeIsLinearInTheNumberOfEqualNames) {
  EXPECT_LT(timeGrowth(12500, unifyEqualNames), linearTimeGrowth);
}

// ----------------------------------------------------------------------------------- every kind, every level

Names namesOfKinds(const ztCAD_DocumentContent& content) {
  Names names;
  forEachKind(content, [&](const char* kind, const auto& elements) {
    for (const std::string& name : namesIn(elements))
      names.push_back(std::string(kind) + " " + name);
  });
  return names;
}

TEST(Unification, VisitsTheKindsInOrderExceptTemplateStructuresAndDetails) {
  ztCAD_GMDDocument document("");
  forEachKind(document.content(), [](const char*, auto& elements) { elements.appendNew().setName("A"); });
  EXPECT_TRUE(ztcad::unifyNames(document.content()));
  EXPECT_EQ(namesOfKinds(document.content()),
            (Names{"structure A", "structureRef A_$1", "template_structure A", "point A_$2", "line A_$3",
                   "sphere A_$4", "solid A_$5", "elementMIP A_$6", "detail A_$7", "detailRef A_$8",
                   "template_detail A", "templatePoint A_$9", "pointRef A_$10", "templateLine A_$11",
                   "lineRef A_$12", "templateElementMIP A_$13", "elementMipRef A_$14", "templateSolid A_$15",
                   "solidRef A_$16"}));
}

TEST(Unification, RenamesATemplateLineWithTheNameOfAPoint) {
  ztCAD_GMDDocument document("");
  document.content().templateLines.appendNew().setName("A");
  addPoints(document, {"A"});
  savedBytes(document);
  EXPECT_EQ(namesIn(document.content().points), Names{"A"});
  EXPECT_EQ(namesIn(document.content().templateLines), Names{"A_$1"});
}

TEST(Unification, ChangesNothingWithoutDuplicates) {
  ztCAD_GMDDocument document("");
  forEachKind(document.content(), [](const char* kind, auto& elements) {
    elements.appendNew().setName(kind);
    elements.appendNew().setName(QString("other ") + kind);
  });
  const Names before = namesOfKinds(document.content());
  EXPECT_TRUE(ztcad::unifyNames(document.content()));
  EXPECT_EQ(namesOfKinds(document.content()), before);
}

TEST(Unification, DuplicateTemplateStructuresAndDetailsKeepTheirNames) {
  ztCAD_GMDDocument document("");
  for (int i = 0; i < 2; ++i) {
    document.content().templateStructures.appendNew().setName("S");
    document.content().templateDetails.appendNew().setName("D");
  }
  EXPECT_TRUE(ztcad::unifyNames(document.content()));
  EXPECT_EQ(namesIn(document.content().templateStructures), (Names{"S", "S"}));
  EXPECT_EQ(namesIn(document.content().templateDetails), (Names{"D", "D"}));
  EXPECT_FALSE(ztcad::passesCheck(document.content()));
}

TEST(Unification, EachStructureAndDetailIsASeparateLevel) {
  ztCAD_GMDDocument document("");
  const std::string points = "<point name='Q' center='1'/><point name='Q' center='1'/>";
  for (const char* tag : {"structure", "template_structure", "detail", "template_detail"}) {
    const std::string element = tag;
    loadString(document,
               documentWith("<point name='Q' center='1'/><" + element + " name='one'>" + points + "</" +
                            element + "><" + element + " name='two'>" + points + "</" + element + ">"));
    EXPECT_EQ(namesIn(document.content().points), Names{"Q"}) << tag;
    int levels = 0;
    const auto expectLevel = [&](auto& group) {
      ++levels;
      EXPECT_EQ(namesIn(group.content().points), (Names{"Q", "Q_$1"})) << tag;
    };
    for (auto& group : document.content().structures)
      expectLevel(group);
    for (auto& group : document.content().templateStructures)
      expectLevel(group);
    for (auto& group : document.content().details)
      expectLevel(group);
    for (auto& group : document.content().templateDetails)
      expectLevel(group);
    EXPECT_EQ(levels, 2) << tag;
  }
}

TEST(Unification, NestedStructuresAreNamedFirstAndAreSeparateLevels) {
  ztCAD_GMDDocument document("");
  loadString(document,
             documentWith("<structure name='S'><point name='S' center='1'/><point name='N' center='1'/>"
                          "<structure name='N'><point name='N' center='1'/><line name='N' "
                          "method='polyline'><vertices/></line></structure></structure>"));
  const ztCAD_Structure& outer = document.content().structures.front();
  EXPECT_EQ(namesIn(outer.content().points), (Names{"S", "N_$1"}));
  ASSERT_EQ(outer.structures().size(), 1u);
  const ztCAD_commonStructure& inner = *outer.structures().front();
  EXPECT_EQ(inner.name(), QString("N"));
  EXPECT_EQ(namesIn(inner.content().points), Names{"N"});
  EXPECT_EQ(namesIn(inner.content().lines), Names{"N_$1"});
}

TEST(Unification, DoesNotEnterDetailsInsideStructures) {
  ztCAD_GMDDocument document("");
  loadString(document, documentWith("<structure name='S'><detail name='D'><point name='P' center='1'/>"
                                    "<point name='P' center='1'/></detail><detail name='D'/></structure>"));
  const auto& details = document.content().structures.front().content().details;
  EXPECT_EQ(namesIn(details), (Names{"D", "D_$1"}));
  EXPECT_EQ(namesIn(details.front().content().points), (Names{"P", "P"}));
}

TEST(Unification, KindsOfADetailShareTheirCounters) {
  ztCAD_GMDDocument document("");
  ztCAD_DetailContent& content = document.content().details.appendNew().content();
  content.lines.appendNew().setName("A");
  content.triangles.appendNew().setName("A");
  content.spheres.appendNew().setName("A");
  content.points.appendNew().setName("A");
  ztcad::unifyNames(document.content());
  EXPECT_EQ(namesIn(content.points), Names{"A"});
  EXPECT_EQ(namesIn(content.spheres), Names{"A_$1"});
  EXPECT_EQ(namesIn(content.triangles), Names{"A_$2"});
  EXPECT_EQ(namesIn(content.lines), Names{"A_$3"});
}

}  // namespace
