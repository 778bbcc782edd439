#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <random>

#include "meshes.h"
#include "random_seed.h"

namespace {

using Texts = std::vector<std::string>;

TestMesh withVertex(TestMesh mesh, double x, double y, double z) {
  mesh.xyz.insert(mesh.xyz.end(), {x, y, z});
  return mesh;
}

TestMesh withFacet(TestMesh mesh, std::uint32_t a, std::uint32_t b, std::uint32_t c) {
  mesh.ijk.insert(mesh.ijk.end(), {a, b, c});
  return mesh;
}

TestMesh withoutFacet(TestMesh mesh, std::size_t facet) {
  const auto first = mesh.ijk.begin() + static_cast<std::ptrdiff_t>(3 * facet);
  mesh.ijk.erase(first, first + 3);
  return mesh;
}

TestMesh withTurnedFacet(TestMesh mesh, std::size_t facet) {
  std::swap(mesh.ijk[3 * facet], mesh.ijk[3 * facet + 1]);
  return mesh;
}

TestMesh withCoordinate(TestMesh mesh, std::size_t index, double value) {
  mesh.xyz[index] = value;
  return mesh;
}

TestMesh reversed(TestMesh mesh) {
  mesh.reverse();
  return mesh;
}

TestMesh twoTetrahedra(double apart) {
  TestMesh mesh = tetrahedronMesh();
  TestMesh other = mesh;
  other.moveBy(apart, 0, 0);
  mesh.append(other);
  return mesh;
}

// two tetrahedra with a common edge from (0, 0, 0) to (0, 0, 1)
TestMesh edgeOfFour() {
  TestMesh mesh = tetrahedronMesh();
  mesh = withVertex(withVertex(mesh, -1, 0, 0), 0, -1, 0);
  for (const std::uint32_t index : {0U, 5U, 4U, 0U, 4U, 3U, 0U, 3U, 5U, 4U, 5U, 3U})
    mesh.ijk.push_back(index);
  return mesh;
}

struct Row {
  const char* name;
  TestMesh mesh;
  Texts findings;
  int problem;
};

class MeshRow : public testing::TestWithParam<Row> {};

const double nan = std::numeric_limits<double>::quiet_NaN();
const double inf = std::numeric_limits<double>::infinity();

TEST_P(MeshRow, HasTheseFindings) {
  const MeshHandle mesh = analysed(GetParam().mesh);
  ASSERT_NE(mesh, nullptr);
  EXPECT_EQ(shortened(ztCADInspect_meshFindings(mesh.get())), GetParam().findings);
  ztCADInspect_MassProperties mass;
  EXPECT_EQ(ztCADInspect_meshMass(mesh.get(), &mass), GetParam().problem);
}

const std::uint32_t beyond = std::numeric_limits<std::uint32_t>::max();

INSTANTIATE_TEST_SUITE_P(
    Meshes, MeshRow,
    testing::Values(
        Row{"Sound", tetrahedronMesh(), {}, ztCADInspect_MassKnown},
        Row{"Empty", {}, {}, ztCADInspect_MassNoFacets},
        Row{"OnlyVertices", {{0, 0, 0, 1, 1, 1}, {}}, {"unused-vertex x2: 0 1"}, ztCADInspect_MassNoFacets},
        Row{"OnlyFacets", {{}, {0, 1, 2}}, {"index-out-of-range x1: 0"}, ztCADInspect_MassBadIndex},
        Row{"BadIndex",
            withFacet(withFacet(tetrahedronMesh(), 0, 1, 4), beyond, 1, 2),
            {"index-out-of-range x2: 4 5"},
            ztCADInspect_MassBadIndex},
        Row{"Open", withoutFacet(tetrahedronMesh(), 3), {"open-edge x3: 1 2 1 3 2 3"}, ztCADInspect_MassOpen},
        Row{"OneFacet",
            {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}},
            {"open-edge x3: 0 1 0 2 1 2"},
            ztCADInspect_MassOpen},
        Row{"TurnedFacet",
            withTurnedFacet(tetrahedronMesh(), 0),
            {"inconsistent-winding x3: 0 1 0 2 1 2"},
            ztCADInspect_MassWinding},
        Row{"InsideOut", reversed(tetrahedronMesh()), {"inside-out x1"}, ztCADInspect_MassInsideOut},
        Row{"EdgeOfFour", edgeOfFour(), {"non-manifold-edge x1: 0 3"}, ztCADInspect_MassNonManifold},
        Row{"TwoShells", twoTetrahedra(5), {"several-shells x1"}, ztCADInspect_MassKnown},
        Row{"TouchingShells",
            twoTetrahedra(1),
            {"coincident-vertices x1: 4", "several-shells x1"},
            ztCADInspect_MassKnown},
        Row{"NegativeZero",
            withVertex(tetrahedronMesh(), -0.0, 0, -0.0),
            {"coincident-vertices x1: 4", "unused-vertex x1: 4"},
            ztCADInspect_MassKnown},
        Row{"Unused",
            withVertex(tetrahedronMesh(), 7, 7, 7),
            {"unused-vertex x1: 4"},
            ztCADInspect_MassKnown},
        Row{"DuplicateFacet",
            withFacet(tetrahedronMesh(), 1, 0, 2),
            {"duplicate-facet x1: 4", "non-manifold-edge x3: 0 1 0 2 1 2"},
            ztCADInspect_MassNonManifold},
        Row{"DuplicateFacetTurned",
            withFacet(tetrahedronMesh(), 0, 1, 2),
            {"duplicate-facet x1: 4", "non-manifold-edge x3: 0 1 0 2 1 2"},
            ztCADInspect_MassNonManifold},
        // closed and consistent, but flat
        Row{"TwoSides",
            {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2, 0, 2, 1}},
            {"duplicate-facet x1: 1"},
            ztCADInspect_MassNoVolume},
        Row{"IndexTwice",
            withFacet(tetrahedronMesh(), 1, 1, 2),
            {"degenerate-facet x1: 4"},
            ztCADInspect_MassKnown},
        Row{"ThreeInALine",
            {{0, 0, 0, 1, 0, 0, 2, 0, 0}, {0, 1, 2}},
            {"degenerate-facet x1: 0", "open-edge x3: 0 1 0 2 1 2"},
            ztCADInspect_MassOpen},
        Row{"AllAtOnePoint",
            {{5, 5, 5, 5, 5, 5, 5, 5, 5}, {0, 1, 2}},
            {"degenerate-facet x1: 0", "open-edge x3: 0 1 0 2 1 2", "coincident-vertices x2: 1 2"},
            ztCADInspect_MassOpen},
        Row{"NotANumber",
            withCoordinate(tetrahedronMesh(), 4, nan),
            {"no-value x1: 1", "open-edge x3: 0 2 0 3 2 3"},
            ztCADInspect_MassNoValue},
        Row{"Infinite",
            withCoordinate(withVertex(tetrahedronMesh(), 1, 1, 1), 14, -inf),
            {"no-value x1: 4", "unused-vertex x1: 4"},
            ztCADInspect_MassNoValue}),
    [](const auto& row) { return row.param.name; });

TEST(Mesh, CountsWhatItSays) {
  const MeshHandle mesh = analysed(boxMesh(1, 2, 3));
  const ztCADInspect_MeshState& state = *ztCADInspect_meshState(mesh.get());
  EXPECT_EQ(state.vertexCount, 8);
  EXPECT_EQ(state.facetCount, 12);
  EXPECT_EQ(state.edges, 18);
  EXPECT_EQ(state.shells, 1);
  EXPECT_EQ(state.isClosed, 1);
  EXPECT_EQ(state.isInsideOut, 0);
  EXPECT_EQ(state.boxLow[2], 0);
  EXPECT_EQ(state.boxHigh[2], 3);
}

TEST(Mesh, KeepsTheFirstTenPlaces) {
  TestMesh mesh = torusMesh(20, 20);
  for (int i = 0; i < 30; ++i)
    mesh = withFacet(mesh, 500U + static_cast<std::uint32_t>(i), 0, 1);
  const MeshHandle analysis = analysed(mesh);
  EXPECT_EQ(shortened(ztCADInspect_meshFindings(analysis.get())),
            Texts{"index-out-of-range x30: 800 801 802 803 804 805 806 807 808 809"});
}

TEST(Mesh, IsNotCopied) {
  MeshHandle analysis;
  {
    const TestMesh mesh = withFacet(tetrahedronMesh(), 0, 0, 1);
    analysis = analysed(mesh);
  }
  const ztCADInspect_Finding& finding = *ztCADInspect_findingAt(ztCADInspect_meshFindings(analysis.get()), 0);
  EXPECT_STREQ(finding.message, "Facets of the mesh without an area: 1.");
  EXPECT_EQ(finding.element, nullptr);
  EXPECT_EQ(finding.name, nullptr);
  EXPECT_STREQ(finding.path, "");
}

TEST(Mesh, TolerancesAreRelativeToItsSize) {
  for (const double scale : {1e-12, 1.0, 1e12}) {
    TestMesh thin{{0, 0, 0, scale, 0, 0, 0, 1e-9 * scale, 0}, {0, 1, 2}};
    EXPECT_EQ(ztCADInspect_meshState(analysed(thin).get())->degenerateFacets, 0) << scale;
    ztCADInspect_Options options = defaultOptions();
    options.degenerateTolerance = 1e-8;
    EXPECT_EQ(ztCADInspect_meshState(analysed(thin, &options).get())->degenerateFacets, 1) << scale;
  }
}

/// The same answers without any cleverness.
struct SlowAnswers {
  std::int64_t edges = 0;
  std::int64_t open = 0;
  std::int64_t nonManifold = 0;
  std::int64_t inconsistent = 0;
  std::int64_t duplicates = 0;
  std::int64_t coincident = 0;
  std::int64_t shells = 0;

  explicit SlowAnswers(const TestMesh& mesh) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::vector<bool>> found;
    std::map<std::array<std::uint32_t, 3>, int> facets;
    std::vector<int> shell(mesh.vertexCount(), 0);
    for (std::size_t i = 0; i < mesh.ijk.size(); i += 3) {
      std::array<std::uint32_t, 3> facet = {mesh.ijk[i], mesh.ijk[i + 1], mesh.ijk[i + 2]};
      if (facet[0] == facet[1] || facet[1] == facet[2] || facet[2] == facet[0]) continue;
      for (std::size_t k = 0; k < 3; ++k) {
        const std::uint32_t a = facet[k];
        const std::uint32_t b = facet[(k + 1) % 3];
        found[std::minmax(a, b)].push_back(a < b);
      }
      std::sort(facet.begin(), facet.end());
      if (facets[facet]++ > 0) ++duplicates;
      for (const std::uint32_t vertex : facet)
        shell[vertex] = 1;
    }
    for (const auto& [edge, directions] : found) {
      ++edges;
      open += directions.size() == 1 ? 1 : 0;
      nonManifold += directions.size() > 2 ? 1 : 0;
      inconsistent += directions.size() == 2 && directions[0] == directions[1] ? 1 : 0;
    }
    std::map<std::array<double, 3>, int> positions;
    for (std::size_t i = 0; i < mesh.xyz.size(); i += 3)
      if (positions[{mesh.xyz[i], mesh.xyz[i + 1], mesh.xyz[i + 2]}]++ > 0) ++coincident;
    // flood the shells
    for (bool isMore = true; isMore;) {
      isMore = false;
      for (std::size_t i = 0; i < shell.size() && !isMore; ++i)
        if (shell[i] == 1) {
          shell[i] = 2;
          ++shells;
          isMore = true;
        }
      for (bool grows = isMore; grows;) {
        grows = false;
        for (const auto& facet : facets) {
          bool touches = false;
          for (const std::uint32_t vertex : facet.first)
            touches = touches || shell[vertex] == 2;
          for (const std::uint32_t vertex : facet.first)
            if (touches && shell[vertex] == 1) {
              shell[vertex] = 2;
              grows = true;
            }
        }
      }
      for (int& state : shell)
        if (state == 2) state = 3;
    }
  }
};

TEST(Mesh, HasTheAnswersOfTheSlowWayForRandomSoups) {
  std::mt19937_64 random(randomSeed());
  for (int round = 0; round < randomRounds(500); ++round) {
    TestMesh mesh;
    const auto vertices = 1 + random() % 20;
    const auto facets = random() % 40;
    for (std::size_t i = 0; i < 3 * vertices; ++i)
      mesh.xyz.push_back(static_cast<double>(random() % 4));
    for (std::size_t i = 0; i < 3 * facets; ++i)
      mesh.ijk.push_back(static_cast<std::uint32_t>(random() % vertices));
    const SlowAnswers slow(mesh);
    const MeshHandle analysis = analysed(mesh);
    const ztCADInspect_MeshState& state = *ztCADInspect_meshState(analysis.get());
    EXPECT_EQ(state.edges, slow.edges);
    EXPECT_EQ(state.openEdges, slow.open);
    EXPECT_EQ(state.nonManifoldEdges, slow.nonManifold);
    EXPECT_EQ(state.inconsistentEdges, slow.inconsistent);
    EXPECT_EQ(state.duplicateFacets, slow.duplicates);
    EXPECT_EQ(state.coincidentVertices, slow.coincident);
    EXPECT_EQ(state.shells, slow.shells);
  }
}

TEST(Mesh, HasTheSameFindingsForAnyNumberOfThreads) {
  std::mt19937_64 random(randomSeed());
  TestMesh mesh = torusMesh(400, 300);
  for (int i = 0; i < 1000; ++i)
    mesh.ijk[random() % mesh.ijk.size()] = static_cast<std::uint32_t>(random() % (mesh.vertexCount() + 5));
  ztCADInspect_Options options = defaultOptions();
  const MeshHandle once = analysed(mesh, &options);
  for (const int threads : {2, 8}) {
    options.threads = threads;
    const MeshHandle again = analysed(mesh, &options);
    EXPECT_EQ(shortened(ztCADInspect_meshFindings(again.get())),
              shortened(ztCADInspect_meshFindings(once.get())));
  }
}

// One vertex in all facets, and vertices that share most bits: no step takes quadratic time.
TEST(Mesh, OfUnusualShapeTakesNoLonger) {
  TestMesh fan;
  const std::uint32_t count = 300000;
  for (std::uint32_t i = 0; i < count; ++i)
    fan.xyz.insert(fan.xyz.end(), {static_cast<double>(i), static_cast<double>(i % 7), 0});
  for (std::uint32_t i = 1; i + 1 < count; ++i)
    fan.ijk.insert(fan.ijk.end(), {0, i, i + 1});
  TestMesh repeated;
  for (std::uint32_t i = 0; i < count; ++i) {
    repeated.xyz.insert(repeated.xyz.end(), {1, 2, 3});
    repeated.ijk.insert(repeated.ijk.end(), {0, 1, 2});
  }
  EXPECT_EQ(ztCADInspect_meshState(analysed(fan).get())->openEdges, count);
  const MeshHandle same = analysed(repeated);
  EXPECT_EQ(ztCADInspect_meshState(same.get())->coincidentVertices, count - 1);
  EXPECT_EQ(ztCADInspect_meshState(same.get())->duplicateFacets, count - 1);
}

}  // namespace
