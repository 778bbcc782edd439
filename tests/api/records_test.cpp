#include <gtest/gtest.h>
#include <cmath>
#include <cstdint>
#include <limits>
#include <list>
#include <vector>

#include "host.h"

namespace {

ztCAD_Vertex* vertex(double x, double y, double z) { return crtVertex(&x, &y, &z); }
ztCAD_Facet* facet(std::uint32_t i1, std::uint32_t i2, std::uint32_t i3) { return crtFacet(&i1, &i2, &i3); }

using Reals = std::vector<double>;
using Indices = std::vector<std::uint32_t>;

TEST(Records, CoordinateKeepsAnyNumbers) {
  const double rows[][3] = {
      {0, 0, 0},
      {1, 2, 3},
      {-0.5, 1e300, 5e-324},
      {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), 0}};
  for (const auto& row : rows) {
    const ztCAD_Coord* made = crtCoord(&row[0], &row[1], &row[2]);
    EXPECT_TRUE(made->isValid());
    EXPECT_EQ(made->x(), row[0]);
    EXPECT_EQ(made->y(), row[1]);
    EXPECT_EQ(made->z(), row[2]);
  }
  const double nan = std::nan("");
  EXPECT_TRUE(std::isnan(crtCoord(&nan, &nan, &nan)->x()));
}

TEST(Records, PointersToNumbersCanBeEqual) {
  const double x = 7;
  EXPECT_EQ(crtCoord(&x, &x, &x)->z(), 7);
  const std::uint32_t i = 8;
  EXPECT_EQ(crtFacet(&i, &i, &i)->I3(), 8u);
}

TEST(Records, VertexIsCreatedFromNumbersACoordinateOrAPoint) {
  const ztCAD_Coord* place = coord(1, 2, 3);
  for (const ztCAD_Vertex* made :
       {vertex(1, 2, 3), crtVertexByCoord(place), crtVertexByPoint(pointAt("P", place))}) {
    EXPECT_TRUE(made->coord().isValid());
    EXPECT_EQ(made->coord().x(), 1);
    EXPECT_EQ(made->coord().y(), 2);
    EXPECT_EQ(made->coord().z(), 3);
  }
}

TEST(Records, VertexOfAPointWithoutCoordinatesHasNoValue) {
  const ztCAD_Coord none;
  const ztCAD_Vertex* made = crtVertexByPoint(pointAt("P", &none));
  ASSERT_NE(made, nullptr);
  EXPECT_FALSE(made->coord().isValid());
  EXPECT_FALSE(crtVertexByCoord(&none)->coord().isValid());
}

TEST(Records, FacetKeepsItsIndices) {
  const ztCAD_Facet* made = facet(0, 7, UINT32_MAX);
  EXPECT_EQ(made->I1(), 0u);
  EXPECT_EQ(made->I2(), 7u);
  EXPECT_EQ(made->I3(), UINT32_MAX);
}

TEST(Records, ColourIsNotClamped) {
  const std::uint32_t red = 0;
  const std::uint32_t green = 256;
  const std::uint32_t blue = UINT32_MAX;
  const ztCAD_Color* color = crtColor(&red, &green, &blue);
  EXPECT_TRUE(color->isSet());
  EXPECT_EQ(color->red(), 0u);
  EXPECT_EQ(color->green(), 256u);
  EXPECT_EQ(color->blue(), UINT32_MAX);
}

TEST(Records, CoordinateSystemIsLocalAndKeepsItsValues) {
  const Reals values = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  const ztCAD_LCS* system = crtLCS(values);
  EXPECT_TRUE(system->isLocal());
  EXPECT_EQ(system->values(), values);
  const ztCAD_LCS* same = crtLCS_nostl(values.data());
  EXPECT_TRUE(same->isLocal());
  EXPECT_EQ(same->values(), values);
  EXPECT_EQ(crtLCS({})->values(), Reals{});
  EXPECT_EQ(crtLCS({1})->values(), Reals{1});
}

// ----------------------------------------------------------------------------------------------------- lists

TEST(Lists, AreCreatedEmpty) {
  EXPECT_TRUE(crtVertices()->coordinates().empty());
  EXPECT_TRUE(crtFaces()->indices().empty());
  EXPECT_NE(crtVertices(), crtVertices());
}

TEST(Lists, VerticesAreAppendedSinglyFromAListAndFromAnArray) {
  ztCAD_Vertices* vertices = crtVertices();
  addVertex(vertex(1, 2, 3), vertices);
  addVertexN({vertex(4, 5, 6), vertex(7, 8, 9)}, vertices);
  const ztCAD_Vertex* const array[] = {vertex(10, 11, 12), vertex(13, 14, 15), vertex(0, 0, 0)};
  addVertexN_nostl(array, 2, vertices);
  EXPECT_EQ(vertices->coordinates(), (Reals{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
}

TEST(Lists, FacetsAreAppendedSinglyFromAListAndFromAnArray) {
  ztCAD_Faces* faces = crtFaces();
  addFacet(facet(0, 1, 2), faces);
  addFacetN({facet(2, 1, 0), facet(5, 5, 5)}, faces);
  const ztCAD_Facet* const array[] = {facet(6, 7, 8), facet(9, 9, 9)};
  addFacetN_nostl(array, 1, faces);
  EXPECT_EQ(faces->indices(), (Indices{0, 1, 2, 2, 1, 0, 5, 5, 5, 6, 7, 8}));
}

TEST(Lists, NullEntriesAreIgnored) {
  ztCAD_Vertices* vertices = crtVertices();
  addVertexN({nullptr, vertex(1, 2, 3), nullptr}, vertices);
  const ztCAD_Vertex* const vertexArray[] = {nullptr, vertex(4, 5, 6), nullptr};
  addVertexN_nostl(vertexArray, 3, vertices);
  EXPECT_EQ(vertices->coordinates(), (Reals{1, 2, 3, 4, 5, 6}));

  ztCAD_Faces* faces = crtFaces();
  addFacetN({facet(1, 2, 3), nullptr, nullptr}, faces);
  const ztCAD_Facet* const facetArray[] = {nullptr, nullptr, facet(4, 5, 6)};
  addFacetN_nostl(facetArray, 3, faces);
  EXPECT_EQ(faces->indices(), (Indices{1, 2, 3, 4, 5, 6}));
}

TEST(Lists, AVertexWithoutAValueIsAppendedAsZeros) {
  const ztCAD_Coord none;
  ztCAD_Vertices* vertices = crtVertices();
  addVertex(vertex(1, 2, 3), vertices);
  addVertex(crtVertexByCoord(&none), vertices);
  addVertex(vertex(4, 5, 6), vertices);
  EXPECT_EQ(vertices->coordinates(), (Reals{1, 2, 3, 0, 0, 0, 4, 5, 6}));
}

TEST(Lists, AVertexCanBeAppendedRepeatedly) {
  ztCAD_Vertex* same = vertex(1, 2, 3);
  ztCAD_Vertices* vertices = crtVertices();
  addVertexN({same, same}, vertices);
  same->setCoord(ztCAD_Coord(4, 5, 6));
  EXPECT_EQ(vertices->coordinates(), (Reals{1, 2, 3, 1, 2, 3}));
}

// ------------------------------------------------------------------------------------------------ comparison

TEST(ComparingCoordinateSystems, EqualOnlyWithinTheTolerance) {
  struct Row {
    const char* name;
    Reals a;
    Reals b;
    bool equal;
  };
  const double inf = std::numeric_limits<double>::infinity();
  const Row rows[] = {
      {"both empty", {}, {}, true},
      {"one empty", {}, {0}, false},
      {"different lengths", {1, 2}, {1}, false},
      {"equal", {1, 2, 3}, {1, 2, 3}, true},
      {"within", {5e-09}, {0}, true},
      {"within, swapped", {0}, {5e-09}, true},
      {"exactly the tolerance", {1e-08}, {0}, false},
      {"exactly the tolerance, swapped", {0}, {1e-08}, false},
      {"beyond", {2e-08}, {0}, false},
      {"beyond in the last value", {1, 2, 3}, {1, 2, 3.1}, false},
      {"different order", {1, 2}, {2, 1}, false},
      {"signed zeros", {0.0}, {-0.0}, true},
      {"infinities", {inf}, {inf}, false},
      {"not a number", {std::nan("")}, {std::nan("")}, false},
  };
  for (const Row& row : rows)
    EXPECT_EQ(isEqual(crtLCS(row.a), crtLCS(row.b)), row.equal) << row.name;
}

TEST(ComparingCoordinateSystems, IgnoresWhetherTheyAreLocal) {
  ztCAD_LCS* local = crtLCS({1, 2, 3});
  ztCAD_LCS* model = crtLCS({1, 2, 3});
  model->setIsLocal(false);
  EXPECT_TRUE(isEqual(local, model));
  EXPECT_TRUE(isEqual(local, local));
}

// --------------------------------------------------------------------------------------------------- library

TEST(Library, ReportsItsVersion) { EXPECT_STREQ(ztCADVersion(), ZTCAD_TEST_VERSION); }

TEST(Library, ParallelSettingsAreSharedAndStartWithOneThread) {
  ztParallel* settings = getParallel_Morvik();
  ASSERT_NE(settings, nullptr);
  EXPECT_EQ(getParallel_Morvik(), settings);
  EXPECT_EQ(settings->currentThreadCount(), 1u);
  EXPECT_GE(ztParallel::physicalCoreCount(), 1u);
}

}  // namespace
