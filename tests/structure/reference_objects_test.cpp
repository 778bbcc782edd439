#include <gtest/gtest.h>
#include <functional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "node_text.h"
#include "structure/reference.h"
#include "structure/sample_elements.h"

// The values of a reference before and after its objects are made.

namespace {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) && defined(__linux__) && defined(__x86_64__)
static_assert(sizeof(ztCAD_PointRef) <= 216, "documents have millions of references");
#endif

using Ref = ztCAD_PointRef;

struct Change {
  const char* name;
  std::function<void(Ref&)> apply;
};
std::ostream& operator<<(std::ostream& out, const Change& change) { return out << change.name; }

std::vector<double> severalValues(std::size_t count) { return std::vector<double>(count, 0.5); }

const Change changes[] = {
    {"Nothing", [](Ref&) {}},
    {"Placement", [](Ref& one) { one.setLcs(ztCAD_LCS(true, twelveValues())); }},
    {"NoPlacement", [](Ref& one) { one.setLcs(ztCAD_LCS()); }},
    {"PlacementOfThreeValues", [](Ref& one) { one.setLcs(ztCAD_LCS(false, severalValues(3))); }},
    {"PlacementOfThirteenValues", [](Ref& one) { one.setLcs(ztCAD_LCS(false, severalValues(13))); }},
    {"ShortTemplateName", [](Ref& one) { one.setTemplateName(QLatin1String("T")); }},
    {"LongTemplateName", [](Ref& one) { one.setTemplateName(QString(100, QLatin1Char('t'))); }},
    {"CyrillicTemplateName", [](Ref& one) { one.setTemplateName(fromUtf8("Шаблон")); }},
    {"NoTemplateName", [](Ref& one) { one.setTemplateName(QString()); }},
    {"File", [](Ref& one) { one.setFile(QLatin1String("f.xml")); }},
    {"NoFile", [](Ref& one) { one.setFile(QString()); }},
    {"ArchetypeInThisDocument",
     [](Ref& one) {
       ztCAD_gArche archetype;
       archetype.setTemplateName(QLatin1String("A"));
       one.setArchetype(archetype);
     }},
    {"ArchetypeInAFile",
     [](Ref& one) {
       ztCAD_gArche archetype;
       archetype.setTemplateName(QLatin1String("A"));
       archetype.setFile(QLatin1String("a.xml"));
       one.setArchetype(archetype);
     }},
    {"Read", [](Ref& one) { EXPECT_TRUE(read(one, R"(<pointRef name="R" template="T"/>)")); }},
    {"ReadPlacement",
     [](Ref& one) {
       EXPECT_TRUE(read(one, std::string("<pointRef MCS=\"") + twelveText + "\" template=\"T\"/>"));
     }},
    {"ReadFile", [](Ref& one) { EXPECT_TRUE(read(one, R"(<pointRef template="T" file="f.xml"/>)")); }},
    {"Assigned",
     [](Ref& one) {
       Ref other;
       other.setTemplateName(QLatin1String("other"));
       other.setLcs(ztCAD_LCS(true, twelveValues()));
       one = other;
     }},
    {"AssignedWithObjects",
     [](Ref& one) {
       Ref other;
       other.archetype().setTemplateName(QLatin1String("other"));
       one = other;
     }},
};

void makeObjects(const Ref& one) { EXPECT_NE(&one.lcs(), nullptr); }

std::vector<double> placementOf(const Ref& one) {
  return {one.placementData(), one.placementData() + one.placementSize()};
}

/// Expects the same of both by every function, those that make objects last.
void expectEqual(const Ref& a, const Ref& b) {
  EXPECT_EQ(placementOf(a), placementOf(b));
  EXPECT_EQ(a.templateName(), b.templateName());
  EXPECT_EQ(a.file(), b.file());
  EXPECT_EQ(written(a), written(b));
  EXPECT_EQ(onlyText(a), onlyText(b));
  EXPECT_EQ(written(Ref(a)), written(b));
  EXPECT_EQ(a.lcs().values(), b.lcs().values());
  EXPECT_EQ(a.lcs().isLocal(), b.lcs().isLocal());
  EXPECT_EQ(a.archetype().templateName(), b.archetype().templateName());
  EXPECT_EQ(a.archetype().file(), b.archetype().file());
}

class ReferenceObjects : public testing::TestWithParam<Change> {};

TEST_P(ReferenceObjects, HoldTheValues) {
  Ref one;
  GetParam().apply(one);
  const std::vector<double> placement = placementOf(one);
  const QString templateName = one.templateName();
  const QString file = one.file();
  const std::string text = written(one);
  EXPECT_EQ(one.lcs().values(), placement);
  EXPECT_FALSE(one.lcs().isLocal());
  EXPECT_EQ(one.archetype().templateName(), templateName);
  EXPECT_EQ(one.archetype().file(), file);
  EXPECT_EQ(written(one), text);
}

TEST_P(ReferenceObjects, TakeEveryChangeAsTheValuesDo) {
  for (const Change& first : changes) {
    SCOPED_TRACE(first.name);
    Ref values;
    first.apply(values);
    Ref early;
    makeObjects(early);
    first.apply(early);
    Ref late(values);
    makeObjects(late);
    for (Ref* one : {&values, &early, &late})
      GetParam().apply(*one);
    expectEqual(early, values);
    expectEqual(late, values);
  }
}

TEST_P(ReferenceObjects, AssignmentReplacesThemAndTheValues) {
  for (const Change& former : changes) {
    SCOPED_TRACE(former.name);
    for (const bool hasObjects : {false, true}) {
      Ref source;
      GetParam().apply(source);
      Ref target;
      former.apply(target);
      if (hasObjects) makeObjects(target);
      target = source;
      expectEqual(target, source);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Changes, ReferenceObjects, testing::ValuesIn(changes),
                         [](const auto& change) { return std::string(change.param.name); });

TEST(ReferenceObjectsOfOneReference, StayWhereTheyAre) {
  Ref one;
  const ztCAD_LCS& lcs = one.lcs();
  const ztCAD_gArche& archetype = one.archetype();
  one.setLcs(ztCAD_LCS(false, twelveValues()));
  one.setTemplateName(QLatin1String("T"));
  one.setFile(QLatin1String("f.xml"));
  one = Ref(one);
  EXPECT_EQ(&one.lcs(), &lcs);
  EXPECT_EQ(&one.archetype(), &archetype);
  EXPECT_EQ(lcs.values(), twelveValues());
  EXPECT_EQ(archetype.templateName(), QLatin1String("T"));
  EXPECT_EQ(archetype.file(), QLatin1String("f.xml"));
}

TEST(ReferenceObjectsOfOneReference, AreTheSameForThreadsThatMakeThemAtATime) {
  for (int round = 0; round < 100; ++round) {
    Ref one;
    one.setLcs(ztCAD_LCS(false, twelveValues()));
    const Ref& shared = one;
    const ztCAD_LCS* seen[2] = {};
    std::thread other([&] { seen[0] = &shared.lcs(); });
    seen[1] = &shared.lcs();
    other.join();
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_EQ(seen[0]->values(), twelveValues());
  }
}

}  // namespace
