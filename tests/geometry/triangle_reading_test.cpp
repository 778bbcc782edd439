#include <gtest/gtest.h>
#include <cstdint>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "geometry/default_locale.h"
#include "geometry/sample_solids.h"
#include "geometry/thread_count.h"
#include "geometry/triangle.h"
#include "geometry/watched_view.h"
#include "node_text.h"

namespace {

struct ReadRow {
  const char* name;
  const char* attributes;
  const char* children;
  bool ok;
  Reals coordinates;
  Indices indices;
};
std::ostream& operator<<(std::ostream& out, const ReadRow& row) { return out << row.name; }

std::vector<ReadRow> readRows() {
  const char* const both = "<vertices>1,2,3;</vertices><faces>0,1,2;</faces>";
  return {
      {"Nothing", "", "", false, {}, {}},
      {"OnlyName", "name='S'", "", false, {}, {}},
      {"BothLists", "name='S'", both, true, {1, 2, 3}, {0, 1, 2}},
      {"ListsWithoutPropertyAttributes", "", both, false, {1, 2, 3}, {0, 1, 2}},
      {"EmptyName", "name=''", both, true, {1, 2, 3}, {0, 1, 2}},
      {"InvalidColor", "name='S' color='red'", both, false, {1, 2, 3}, {0, 1, 2}},
      {"OtherMethod", "name='S' method='sphere'", both, true, {1, 2, 3}, {0, 1, 2}},
      {"EmptyLists", "name='S'", "<vertices/><faces/>", true, {}, {}},
      {"LineFeeds", "name='S'", "<vertices>\n</vertices><faces>\n</faces>", true, {}, {}},
      {"FacesFirst",
       "name='S'",
       "<faces>0,1,2</faces><vertices>1,2,3</vertices>",
       true,
       {1, 2, 3},
       {0, 1, 2}},
      {"NoVertices", "name='S'", "<faces>0,1,2;</faces>", false, {}, {0, 1, 2}},
      {"NoFaces", "name='S'", "<vertices>1,2,3;</vertices>", false, {1, 2, 3}, {}},
      {"OtherCase", "name='S'", "<Vertices>1,2,3;</Vertices><FACES>0,1,2</FACES>", false, {}, {}},
      {"VerticesAreAGrandchild",
       "name='S'",
       "<part><vertices>1,2,3;</vertices></part><faces>0,1,2;</faces>",
       false,
       {},
       {0, 1, 2}},
      {"FacesAreAGrandchild",
       "name='S'",
       "<vertices>1,2,3;</vertices><part><faces>0,1,2;</faces></part>",
       false,
       {1, 2, 3},
       {}},
      {"GrandchildrenBeforeTheChildren",
       "name='S'",
       "<part><vertices>9,9,9</vertices><faces>9,9,9</faces></part><vertices>1,2,3;</vertices><faces>0,1,2</faces>",
       true,
       {1, 2, 3},
       {0, 1, 2}},
      {"TwoVertexLists",
       "name='S'",
       "<vertices>1,2,3;</vertices><vertices>4,5,6;</vertices><faces>0,1,2;</faces>",
       true,
       {1, 2, 3},
       {0, 1, 2}},
      {"TwoFacetLists",
       "name='S'",
       "<vertices>1,2,3;</vertices><faces>0,1,2;</faces><faces>3,4,5;</faces>",
       true,
       {1, 2, 3},
       {0, 1, 2}},
      {"FirstListsAreInvalid",
       "name='S'",
       "<vertices>x,2,3</vertices><faces>x,1,2</faces><vertices>1,2,3</vertices><faces>0,1,2</faces>",
       false,
       {},
       {}},
      {"SecondListsAreInvalid",
       "name='S'",
       "<vertices>1,2,3</vertices><faces>0,1,2</faces><vertices>x,2,3</vertices><faces>x,1,2</faces>",
       true,
       {1, 2, 3},
       {0, 1, 2}},
      {"WordInTheSecondVertex",
       "name='S'",
       "<vertices>1,2,3;4,x,6;</vertices><faces>0,1,2;</faces>",
       false,
       {1, 2, 3},
       {0, 1, 2}},
      {"WordInTheSecondFacet",
       "name='S'",
       "<vertices>1,2,3;</vertices><faces>0,1,2;3,x,5;</faces>",
       false,
       {1, 2, 3},
       {0, 1, 2}},
      {"NegativeIndex",
       "name='S'",
       "<vertices>1,2,3;</vertices><faces>0,-1,2;</faces>",
       false,
       {1, 2, 3},
       {}},
      {"Cyrillic", "name='Тело'", "<vertices>раз,2,3;</vertices><faces>ноль,1,2;</faces>", false, {}, {}},
      {"SurroundedByOtherNodes",
       "name='S'",
       "text<!--c--><line/><vertices><![CDATA[1,2,3;]]></vertices>text<faces>0,1,2</faces>",
       true,
       {1, 2, 3},
       {0, 1, 2}},
  };
}

std::string solidXml(const ReadRow& row) {
  return std::string("<solid ") + row.attributes + ">" + row.children + "</solid>";
}

class TriangulatedSolidReading : public testing::TestWithParam<ReadRow> {};

TEST_P(TriangulatedSolidReading, RequiresBothListsAndAPropertyBlock) {
  ztCAD_Triangle solid;
  EXPECT_EQ(read(solid, solidXml(GetParam())), GetParam().ok);
  EXPECT_EQ(solid.readOk(), GetParam().ok);
  EXPECT_TRUE(solid.wasRead());
  EXPECT_EQ(solid.vertices().coordinates(), GetParam().coordinates);
  EXPECT_EQ(solid.faces().indices(), GetParam().indices);
  EXPECT_FALSE(solid.hasMIP());
}

TEST_P(TriangulatedSolidReading, ReadsATemplateTheSameWay) {
  ztCAD_TmplTriangle solid;
  EXPECT_EQ(read(solid, solidXml(GetParam())), GetParam().ok);
  EXPECT_EQ(solid.readOk(), GetParam().ok);
  EXPECT_EQ(solid.vertices().coordinates(), GetParam().coordinates);
  EXPECT_EQ(solid.faces().indices(), GetParam().indices);
}

TEST_P(TriangulatedSolidReading, DeterminesTheSelfCheck) {
  ztCAD_Triangle solid = oneFacet();
  read(solid, solidXml(GetParam()));
  EXPECT_EQ(solid.passesCheck(), GetParam().ok) << "regardless of its lists, which are complete";
  EXPECT_EQ(solid.readOk(), GetParam().ok);
}

TEST_P(TriangulatedSolidReading, IsPerformedByReadAndCheckAndClearsTheFault) {
  for (bool fault : {true, false}) {
    ztCAD_Triangle solid;
    const ParsedXml xml(solidXml(GetParam()));
    EXPECT_EQ(solid.readAndCheck(ztcad::DomView(xml.root), fault), GetParam().ok);
    EXPECT_FALSE(fault);
    EXPECT_EQ(solid.faces().indices(), GetParam().indices);
    EXPECT_FALSE(faultAfterReading(solid, solidXml(GetParam()), !fault));
  }
}

// Lines and spheres do not change the mode. A solid is read in mode 0, because its facet list is parsed with
// the thread count of that mode. The previous mode is restored afterwards, also when the read fails.
TEST_P(TriangulatedSolidReading, RunsInModeZeroAndRestoresTheMode) {
  for (const std::int32_t mode : {ztParallel::Logical + 0, ztParallel::Primary + 0, 7}) {
    const ThreadCount configured(1, mode);
    const ParsedXml xml(solidXml(GetParam()));
    ReadWatch watch;
    const ztcad::DomView view(xml.root);
    ztCAD_Triangle solid;
    bool fault = false;
    EXPECT_EQ(solid.readAndCheck(WatchedView(view, watch), fault), GetParam().ok);
    EXPECT_EQ(watch.modes, std::set<std::int32_t>{ztParallel::Logical});
    EXPECT_EQ(ztcad::parallelSettings().mode, mode);
  }
}

INSTANTIATE_TEST_SUITE_P(TriangulatedSolid, TriangulatedSolidReading, testing::ValuesIn(readRows()),
                         [](const auto& row) { return row.param.name; });

TEST(TriangulatedSolid, AMissingListKeepsThePreviousOne) {
  ztCAD_Triangle solid = oneFacet();
  EXPECT_FALSE(read(solid, "<solid name='S'/>"));
  EXPECT_EQ(solid.vertices().coordinates().size(), 9u);
  EXPECT_EQ(solid.faces().indices(), (Indices{0, 1, 2}));
  EXPECT_FALSE(read(solid, "<solid name='S'><vertices>1,2,3;</vertices></solid>"));
  EXPECT_EQ(solid.vertices().coordinates(), (Reals{1, 2, 3}));
  EXPECT_EQ(solid.faces().indices(), (Indices{0, 1, 2}));
}

TEST(TriangulatedSolid, ReadsWhatItWrites) {
  EXPECT_EQ(roundTrip<ztCAD_Triangle>(fullSolidXml), fullSolidXml);
  const std::string tmpl =
      "<templateSolid color=\"\" comment=\"Ё\" inform=\"%1\" method=\"triangulation\" name=\"Тело\"><vertices>\n"
      "1, 2, 3;\n</vertices><faces>\n0, 0, 0;\n</faces></templateSolid>";
  EXPECT_EQ(roundTrip<ztCAD_TmplTriangle>(tmpl), tmpl);
}

TEST(TriangulatedSolid, SixDigitsSurviveARoundTrip) {
  const auto copy =
      readFrom<ztCAD_Triangle>(written(triangle("S1", {0.3333333, 1234567, 1e-7}, {1234567, 0, 1})));
  EXPECT_EQ(copy.vertices().coordinates(), (Reals{0.333333, 1.23457e+06, 1e-07}));
  EXPECT_EQ(copy.faces().indices(), (Indices{1234567, 0, 1})) << "integers lose no digits";
}

TEST(TriangulatedSolid, EitherListSetsTheDefaultLocaleToC) {
  for (const char* child : {"<vertices>1.5,2,3;</vertices>", "<faces>0,1,2;</faces>", "<faces/>"}) {
    const DefaultLocale other{QLocale(QLocale::German)};
    ztCAD_Triangle solid;
    EXPECT_FALSE(read(solid, std::string("<solid name='S'>") + child + "</solid>"));
    EXPECT_TRUE(DefaultLocale::isC()) << child;
  }
}

// --------------------------------------------------------------------------------- parallel mode, exceptions

class ThrowingView : public testing::TestWithParam<ReadWatch::Call> {};

TEST_P(ThrowingView, RestoresTheModeOnAnException) {
  for (const std::int32_t mode : {ztParallel::Logical + 0, ztParallel::Primary + 0, 7}) {
    const ThreadCount configured(1, mode);
    const ParsedXml xml(fullSolidXml);
    const ztcad::DomView view(xml.root);
    ReadWatch watch;
    watch.failing = GetParam();
    ztCAD_Triangle solid;
    bool fault = false;
    EXPECT_THROW(solid.readAndCheck(WatchedView(view, watch), fault), std::runtime_error);
    EXPECT_EQ(watch.modes, std::set<std::int32_t>{ztParallel::Logical});
    EXPECT_EQ(ztcad::parallelSettings().mode, mode);
    EXPECT_FALSE(solid.readOk());
  }
}

INSTANTIATE_TEST_SUITE_P(TriangulatedSolid, ThrowingView,
                         testing::Values(ReadWatch::Call::Attribute, ReadWatch::Call::Children,
                                         ReadWatch::Call::Tag, ReadWatch::Call::Text));

TEST(TriangulatedSolid, ReadingFromADomTreeAlsoRestoresTheMode) {
  const ThreadCount configured(1, ztParallel::Primary);
  ztCAD_Triangle solid;
  EXPECT_TRUE(read(solid, fullSolidXml));
  EXPECT_EQ(ztcad::parallelSettings().mode, ztParallel::Primary);
  EXPECT_FALSE(read(solid, "<solid/>"));
  EXPECT_EQ(ztcad::parallelSettings().mode, ztParallel::Primary);
}

TEST(TriangulatedSolid, TwoConfiguredThreadsReadTheSameSolid) {
  for (const std::int32_t mode : {ztParallel::Logical, ztParallel::Primary}) {
    const ThreadCount configured(2, mode);
    EXPECT_EQ(roundTrip<ztCAD_Triangle>(fullSolidXml), fullSolidXml);
    EXPECT_EQ(ztcad::parallelSettings().mode, mode);
  }
}

}  // namespace
