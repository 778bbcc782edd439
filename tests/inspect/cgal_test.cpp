#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Polygon_mesh_processing/measure.h>
#include <CGAL/Polygon_mesh_processing/orientation.h>
#include <CGAL/Surface_mesh.h>
#include <gtest/gtest.h>
#include <filesystem>
#include <random>

#include "documents.h"
#include "random_seed.h"

// Closedness, orientation and volume, judged by CGAL. The only source that includes it: it takes long to
// compile.

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Surface = CGAL::Surface_mesh<Kernel::Point_3>;
namespace processing = CGAL::Polygon_mesh_processing;

/// What CGAL says; it refuses facets that would make a surface non-manifold or inconsistent.
struct Judgement {
  bool isManifold = true;
  bool isClosed = false;
  bool isOutward = false;
  double volume = 0;
  double area = 0;
};

Judgement judged(const TestMesh& mesh) {
  Surface surface;
  std::vector<Surface::Vertex_index> vertices;
  for (std::size_t i = 0; i < mesh.xyz.size(); i += 3)
    vertices.push_back(surface.add_vertex({mesh.xyz[i], mesh.xyz[i + 1], mesh.xyz[i + 2]}));
  Judgement judgement;
  for (std::size_t i = 0; i < mesh.ijk.size(); i += 3)
    if (surface.add_face(vertices[mesh.ijk[i]], vertices[mesh.ijk[i + 1]], vertices[mesh.ijk[i + 2]]) ==
        Surface::null_face())
      judgement.isManifold = false;
  judgement.isClosed = judgement.isManifold && CGAL::is_closed(surface) && surface.number_of_faces() > 0;
  if (!judgement.isClosed) return judgement;
  judgement.isOutward = processing::is_outward_oriented(surface);
  judgement.volume = processing::volume(surface);
  judgement.area = processing::area(surface);
  return judgement;
}

void expectTheSame(const TestMesh& mesh) {
  const Judgement judgement = judged(mesh);
  const MeshHandle analysis = analysed(mesh);
  const ztCADInspect_MeshState& state = *ztCADInspect_meshState(analysis.get());
  EXPECT_EQ(state.isClosed == 1, judgement.isClosed);
  if (!judgement.isClosed) return;
  EXPECT_EQ(state.isInsideOut == 0, judgement.isOutward);
  ztCADInspect_MassProperties mass = {};
  const int problem = ztCADInspect_meshMass(analysis.get(), &mass);
  EXPECT_EQ(problem, judgement.isOutward ? ztCADInspect_MassKnown : ztCADInspect_MassInsideOut);
  if (problem != ztCADInspect_MassKnown) return;
  EXPECT_NEAR(mass.volume, judgement.volume, 1e-9 * std::abs(judgement.volume));
  EXPECT_NEAR(mass.area, judgement.area, 1e-9 * judgement.area);
}

TEST(Cgal, AgreesAboutRandomBodies) {
  std::mt19937_64 random(randomSeed());
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    TestMesh mesh = randomMesh(random, 1 + round % 3);
    const std::size_t facet = random() % mesh.facetCount();
    const auto first = mesh.ijk.begin() + static_cast<std::ptrdiff_t>(3 * facet);
    switch (round % 5) {
      case 1:
        mesh.reverse();
        break;
      case 2:
        mesh.ijk.erase(first, first + 3);
        break;  // a hole
      case 3:
        std::swap(mesh.ijk[3 * facet], mesh.ijk[3 * facet + 1]);
        break;  // a facet that faces inwards
      case 4:
        mesh = torusMesh(5 + round, 4 + round);
        break;
      default:
        break;
    }
    expectTheSame(mesh);
  }
}

TEST(Cgal, AgreesAboutRealParts) {
  int solids = 0;
  for (const char* const name : {"panda.xml", "fandisk.xml", "rocker-arm.xml"}) {
    const std::filesystem::path path = std::filesystem::path(ZTCAD_TEST_REAL_DOCUMENTS) / name;
    if (!std::filesystem::exists(path))
      GTEST_SKIP() << "no documents of real parts in " << path.parent_path();
    const DocumentHandle document(ztCAD_loadDocument(path.string().c_str(), nullptr));
    ASSERT_NE(document, nullptr);
    const SceneHandle scene = sceneOf(document);
    for (std::int64_t i = 0; i < ztCADInspect_shapeCount(scene.get()); ++i) {
      const ztCADInspect_Shape& shape = ztCADInspect_shapes(scene.get())[i];
      if (shape.kind != ztCADInspect_ShapeMesh) continue;
      SCOPED_TRACE(name);
      TestMesh mesh;
      mesh.xyz.assign(shape.vertices, shape.vertices + 3 * shape.vertexCount);
      mesh.ijk.assign(shape.facets, shape.facets + 3 * shape.facetCount);
      expectTheSame(mesh);
      ++solids;
    }
  }
  EXPECT_EQ(solids, 11);
}

}  // namespace
