#include <convert/vertex_joiner.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

#include "random_seed.h"

namespace {

using cli::Mesh;

/// A mesh of one facet for each three vertices.
Mesh meshOf(const std::vector<double>& vertices) {
  Mesh mesh;
  mesh.own.vertices = vertices;
  for (std::uint32_t i = 0; i < vertices.size() / 3; ++i)
    mesh.own.facets.push_back(i);
  mesh.viewOwn();
  return mesh;
}

}  // namespace

TEST(VertexJoiner, JoinsEqualVerticesOnly) {
  Mesh mesh;
  cli::VertexJoiner joiner(mesh);
  EXPECT_EQ(joiner.add(1, 2, 3), 0U);
  EXPECT_EQ(joiner.add(std::nextafter(1.0, 2), 2, 3), 1U);
  EXPECT_EQ(joiner.add(1, 2, 3), 0U);
  EXPECT_EQ(joiner.add(0, 0, 0), 2U);
  EXPECT_EQ(joiner.add(-0.0, 0, -0.0), 2U);
  EXPECT_EQ(mesh.own.vertices.size(), 9U);
}

TEST(VertexJoiner, AgreesWithAMap) {
  std::mt19937_64 random(randomSeed());
  Mesh mesh;
  cli::VertexJoiner joiner(mesh);
  std::map<std::array<double, 3>, std::uint32_t> expected;
  for (int i = 0; i < 100000; ++i) {
    const auto coordinate = [&] { return 0.1 * static_cast<double>(random() % 40); };
    const std::array<double, 3> xyz{coordinate(), coordinate(), coordinate()};
    const auto known = expected.try_emplace(xyz, static_cast<std::uint32_t>(expected.size())).first;
    ASSERT_EQ(joiner.add(xyz[0], xyz[1], xyz[2]), known->second);
  }
  EXPECT_EQ(mesh.own.vertices.size(), 3 * expected.size());
}

TEST(JoinWithin, JoinsVerticesUpToTheDistance) {
  const std::vector<double> vertices{0, 0, 0, 5, 0, 0, 0, 5, 0, 0.1, 0, 0, 5, 0, 0.09, 0, 0, 5};
  Mesh mesh = meshOf(vertices);
  EXPECT_EQ(cli::joinWithin(mesh, 0.1), 0U);
  EXPECT_EQ(mesh.vertexCount, 4U);
  EXPECT_EQ(mesh.own.facets, (std::vector<std::uint32_t>{0, 1, 2, 0, 1, 3}));
}

TEST(JoinWithin, RemovesFacetsThatLoseACorner) {
  Mesh mesh = meshOf({0, 0, 0, 0.01, 0, 0, 0, 5, 0, 1, 1, 1, 2, 2, 2, 3, 3, 4});
  EXPECT_EQ(cli::joinWithin(mesh, 0.1), 1U);
  EXPECT_EQ(mesh.facetCount, 1U);
  // one that never had three corners is kept
  Mesh degenerate = meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0});
  degenerate.own.facets = {0, 0, 1};
  degenerate.viewOwn();
  EXPECT_EQ(cli::joinWithin(degenerate, 0.1), 0U);
  EXPECT_EQ(degenerate.facetCount, 1U);
}

TEST(JoinWithin, FindsVerticesAcrossTheCellsOfItsGrid) {
  std::mt19937_64 random(randomSeed());
  for (int round = 0; round < 200; ++round) {
    std::vector<double> vertices;
    const auto coordinate = [&] { return static_cast<double>(random() % 2000) / 1000 - 1; };
    for (int i = 0; i < 90; ++i)
      vertices.push_back(coordinate());
    constexpr double distance = 0.3;
    // the obvious way: each vertex is the first kept one near it, or is kept
    std::vector<double> kept;
    for (std::size_t i = 0; i < vertices.size(); i += 3) {
      bool isNear = false;
      for (std::size_t k = 0; k < kept.size(); k += 3)
        isNear = isNear || std::hypot(kept[k] - vertices[i], kept[k + 1] - vertices[i + 1],
                                      kept[k + 2] - vertices[i + 2]) <= distance;
      if (!isNear)
        kept.insert(kept.end(), vertices.begin() + static_cast<std::ptrdiff_t>(i),
                    vertices.begin() + static_cast<std::ptrdiff_t>(i) + 3);
    }
    Mesh mesh = meshOf(vertices);
    cli::joinWithin(mesh, distance);
    ASSERT_EQ(mesh.own.vertices, kept);
  }
}
