#include <gtest/gtest.h>
#include <filesystem>

#include "documents.h"
#include "exact_integrals.h"

// Documents of real parts, where they are available.

namespace {

const std::filesystem::path folder = ZTCAD_TEST_REAL_DOCUMENTS;

DocumentHandle loadedReal(const char* name) {
  return DocumentHandle(ztCAD_loadDocument((folder / name).string().c_str(), nullptr));
}

TEST(RealDocuments, TheRobotArmHasTheMassThatItsPartsDeclare) {
  if (!std::filesystem::exists(folder / "panda.xml"))
    GTEST_SKIP() << "no documents of real parts in " << folder;
  const DocumentHandle document = loadedReal("panda.xml");
  ASSERT_NE(document, nullptr);
  const SceneHandle scene = sceneOf(document);
  const TableHandle table(ztCADInspect_openMassTable(scene.get()));
  const ztCADInspect_MassRow& total = *ztCADInspect_massTotal(table.get());
  ASSERT_EQ(total.declaredProblem, ztCADInspect_MassKnown);
  EXPECT_EQ(total.undeclared, 0);
  EXPECT_NEAR(total.declared.mass, 17.451907, 1e-12);

  // the same by hand: every declared tensor, turned into the world and moved to the common centre
  double sum = 0;
  double moment[3] = {};
  double aboutOrigin[9] = {};
  int parts = 0;
  const ztCADInspect_Item* const items = ztCADInspect_items(scene.get());
  for (std::int64_t i = 0; i < ztCADInspect_itemCount(scene.get()); ++i) {
    double v[10];
    if (ztCAD_getMIP(items[i].element, v, 10) < 10) continue;
    ++parts;
    const double* const t = items[i].transform;
    double center[3];
    for (int k = 0; k < 3; ++k) {
      center[k] = t[4 * k] * v[1] + t[4 * k + 1] * v[2] + t[4 * k + 2] * v[3] + t[4 * k + 3];
      moment[k] += v[0] * center[k];
    }
    sum += v[0];
    const double own[3][3] = {{v[4], v[7], v[8]}, {v[7], v[5], v[9]}, {v[8], v[9], v[6]}};
    const double square = center[0] * center[0] + center[1] * center[1] + center[2] * center[2];
    for (int p = 0; p < 3; ++p)
      for (int q = 0; q < 3; ++q) {
        double turned = 0;
        for (int a = 0; a < 3; ++a)
          for (int b = 0; b < 3; ++b)
            turned += t[4 * p + a] * own[a][b] * t[4 * q + b];
        aboutOrigin[3 * p + q] += turned + v[0] * ((p == q ? square : 0) - center[p] * center[q]);
      }
  }
  EXPECT_EQ(parts, 13) << "nine details and four mass-inertia elements";
  double square = 0;
  for (double& x : moment) {
    x /= sum;
    square += x * x;
  }
  for (int p = 0; p < 3; ++p) {
    EXPECT_NEAR(total.declared.center[p], moment[p], 2e-6) << "axes have six digits";
    for (int q = 0; q < 3; ++q)
      EXPECT_NEAR(total.declared.inertia[3 * p + q],
                  aboutOrigin[3 * p + q] - sum * ((p == q ? square : 0) - moment[p] * moment[q]), 1e-5);
  }
}

TEST(RealDocuments, EveryTensorOfTheRobotArmIsPossible) {
  if (!std::filesystem::exists(folder / "panda.xml"))
    GTEST_SKIP() << "no documents of real parts in " << folder;
  const DocumentHandle document = loadedReal("panda.xml");
  const SceneHandle scene = sceneOf(document);
  const FindingsHandle findings(ztCADInspect_check(scene.get(), ztCADInspect_CheckAll));
  for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings.get()); ++i) {
    const ztCADInspect_Finding& finding = *ztCADInspect_findingAt(findings.get(), i);
    EXPECT_EQ(finding.severity, ztCAD_SeverityNote) << finding.message;
  }
  // hulls of links with motors inside, and two frames without a mass
  std::map<std::string, int> rules;
  for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings.get()); ++i)
    ++rules[ztCADInspect_findingAt(findings.get(), i)->rule];
  EXPECT_EQ(rules, (std::map<std::string, int>{{"declared-differs", 9}, {"mass-not-positive", 2}}));
}

TEST(RealDocuments, TheirSolidsAreClosedAndExact) {
  for (const char* const name : {"panda.xml", "fandisk.xml", "rocker-arm.xml"}) {
    if (!std::filesystem::exists(folder / name)) GTEST_SKIP() << "no documents of real parts in " << folder;
    const DocumentHandle document = loadedReal(name);
    const SceneHandle scene = sceneOf(document);
    EXPECT_EQ(findingsOf(scene, ztCADInspect_CheckScene | ztCADInspect_CheckMeshes),
              std::vector<std::string>());
    for (std::int64_t i = 0; i < ztCADInspect_shapeCount(scene.get()); ++i) {
      const ztCADInspect_Shape& shape = ztCADInspect_shapes(scene.get())[i];
      if (shape.kind != ztCADInspect_ShapeMesh) continue;
      TestMesh mesh;
      mesh.xyz.assign(shape.vertices, shape.vertices + 3 * shape.vertexCount);
      mesh.ijk.assign(shape.facets, shape.facets + 3 * shape.facetCount);
      ztCADInspect_MassProperties mass = {};
      ASSERT_EQ(massProblem(mesh, mass), ztCADInspect_MassKnown);
      const ztCADInspect_MeshState state = *ztCADInspect_meshState(analysed(mesh).get());
      EXPECT_EQ(state.isClosed, 1);
      EXPECT_LE(ExactIntegrals(mesh).errorOf(mass, state.boxHigh[0] - state.boxLow[0]), 1e-12);
    }
  }
}

}  // namespace
