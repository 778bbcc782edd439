#include <gtest/gtest.h>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <set>

#include "documents.h"

// Null, nonsense and misuse, for every exported function.

namespace {

TEST(Null, IsAnsweredByEveryFunction) {
  std::set<std::string> called;
  char text[8] = "filled";
  double numbers[12] = {};
  ztCADInspect_MassProperties mass = {};
  ztCADInspect_Options options = defaultOptions();
  const DocumentHandle document = loaded("<point name='p' center='0,0,0'/>");
  const ztCAD_Base* const point = ztCAD_getFromDoc(document.get(), ztCAD_ElementPoint, 0);
  const ztCAD_Base* found = nullptr;
#define CALLED(name) (called.insert("ztCADInspect_" #name), ztCADInspect_##name)
  EXPECT_STRNE(CALLED(version)(), "");
  CALLED(initOptions)(nullptr, sizeof options);
  ztCADInspect_initOptions(&options, 0);
  ztCADInspect_initOptions(&options, -1);
  EXPECT_EQ(options.greatestDepth, 256);
  EXPECT_EQ(CALLED(optionsProblem)(nullptr), nullptr);
  EXPECT_EQ(CALLED(findingCount)(nullptr), 0);
  EXPECT_EQ(CALLED(findingAt)(nullptr, 0), nullptr);
  CALLED(endFindings)(nullptr);
  EXPECT_GT(CALLED(ruleCount)(), 20);
  EXPECT_EQ(CALLED(ruleAt)(std::numeric_limits<std::int32_t>::max()), nullptr);
  EXPECT_STREQ(CALLED(massProblemText)(-1), "");
  EXPECT_STREQ(ztCADInspect_massProblemText(0), "");
  for (int problem = 1; problem <= ztCADInspect_MassBadArgument; ++problem)
    EXPECT_STRNE(ztCADInspect_massProblemText(problem), "") << problem;
  EXPECT_STREQ(ztCADInspect_massProblemText(ztCADInspect_MassBadArgument + 1), "");
  EXPECT_EQ(CALLED(declaredMass)(nullptr, &options, &mass), ztCADInspect_MassBadArgument);
  EXPECT_EQ(ztCADInspect_declaredMass(point, nullptr, nullptr), ztCADInspect_MassBadArgument);
  EXPECT_EQ(ztCADInspect_declaredMass(point, nullptr, &mass), ztCADInspect_MassNotDeclared);
  EXPECT_EQ(CALLED(sphereMass)(nullptr, 1, nullptr, &mass), ztCADInspect_MassBadArgument);
  EXPECT_EQ(ztCADInspect_sphereMass(numbers, 1, nullptr, nullptr), ztCADInspect_MassBadArgument);
  EXPECT_FALSE(CALLED(massToNumbers)(nullptr, nullptr, nullptr, numbers));
  EXPECT_FALSE(ztCADInspect_massToNumbers(&mass, nullptr, nullptr, nullptr));
  EXPECT_FALSE(CALLED(transformMass)(nullptr, numbers, nullptr, &mass));
  EXPECT_FALSE(ztCADInspect_transformMass(&mass, nullptr, nullptr, &mass));
  EXPECT_FALSE(ztCADInspect_transformMass(&mass, numbers, nullptr, nullptr));
  EXPECT_FALSE(CALLED(sumMass)(nullptr, 1, &mass));
  EXPECT_FALSE(ztCADInspect_sumMass(&mass, 0, &mass));
  EXPECT_FALSE(ztCADInspect_sumMass(&mass, -1, &mass));
  EXPECT_FALSE(ztCADInspect_sumMass(&mass, 1, nullptr));
  EXPECT_EQ(CALLED(analyseMesh)(nullptr, 1, nullptr, 0, nullptr), nullptr);
  EXPECT_EQ(ztCADInspect_analyseMesh(nullptr, 0, nullptr, 1, nullptr), nullptr);
  EXPECT_EQ(ztCADInspect_analyseMesh(numbers, std::int64_t{1} << 31, nullptr, 0, nullptr), nullptr);
  EXPECT_EQ(CALLED(analyseElement)(nullptr, nullptr), nullptr);
  EXPECT_EQ(ztCADInspect_analyseElement(point, nullptr), nullptr);
  EXPECT_EQ(CALLED(meshState)(nullptr), nullptr);
  EXPECT_EQ(CALLED(meshFindings)(nullptr), nullptr);
  EXPECT_EQ(CALLED(meshMass)(nullptr, &mass), ztCADInspect_MassBadArgument);
  CALLED(endMesh)(nullptr);
  EXPECT_EQ(CALLED(openScene)(nullptr, "", nullptr), nullptr);
  EXPECT_EQ(CALLED(itemCount)(nullptr), 0);
  EXPECT_EQ(CALLED(items)(nullptr), nullptr);
  EXPECT_EQ(CALLED(shapeCount)(nullptr), 0);
  EXPECT_EQ(CALLED(shapes)(nullptr), nullptr);
  EXPECT_EQ(CALLED(itemPath)(nullptr, 0, text, sizeof text), -1);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(CALLED(fileCount)(nullptr), 0);
  EXPECT_EQ(CALLED(fileName)(nullptr, 0), nullptr);
  CALLED(endScene)(nullptr);
  EXPECT_EQ(CALLED(check)(nullptr, ztCADInspect_CheckAll), nullptr);
  EXPECT_EQ(CALLED(openMassTable)(nullptr), nullptr);
  EXPECT_EQ(CALLED(massRowCount)(nullptr), 0);
  EXPECT_EQ(CALLED(massRows)(nullptr), nullptr);
  EXPECT_EQ(CALLED(massTotal)(nullptr), nullptr);
  CALLED(endMassTable)(nullptr);
  EXPECT_EQ(CALLED(openIndex)(nullptr), nullptr);
  EXPECT_EQ(CALLED(findPath)(nullptr, "/GMD"), nullptr);
  std::int64_t count = 7;
  EXPECT_EQ(CALLED(findName)(nullptr, "p", &count), nullptr);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(CALLED(listName)(nullptr, "p", &found, 1), 0);
  EXPECT_EQ(CALLED(pathOf)(nullptr, point, text, sizeof text), -1);
  EXPECT_EQ(CALLED(holderOf)(nullptr, point), nullptr);
  CALLED(endIndex)(nullptr);
#undef CALLED

  const IndexHandle index(ztCADInspect_openIndex(document.get()));
  EXPECT_EQ(ztCADInspect_findPath(index.get(), nullptr), nullptr);
  EXPECT_EQ(ztCADInspect_findName(index.get(), nullptr, nullptr), nullptr);
  EXPECT_EQ(ztCADInspect_listName(index.get(), "p", nullptr, 5), 1);
  EXPECT_EQ(ztCADInspect_listName(index.get(), "p", &found, -5), 1);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(ztCADInspect_pathOf(index.get(), nullptr, nullptr, 0), -1);
  EXPECT_EQ(ztCADInspect_pathOf(index.get(), point, nullptr, 0), 13);
  EXPECT_EQ(ztCADInspect_pathOf(index.get(), point, text, sizeof text), 13);
  EXPECT_STREQ(text, "") << "a text that does not fit is not written";
  EXPECT_EQ(ztCADInspect_holderOf(index.get(), nullptr), nullptr);
  const SceneHandle scene = sceneOf(document);
  EXPECT_EQ(ztCADInspect_fileName(scene.get(), -1), nullptr);
  EXPECT_EQ(ztCADInspect_fileName(scene.get(), 1), nullptr);
  EXPECT_EQ(ztCADInspect_itemPath(scene.get(), -1, text, 0), -1);
  const MeshHandle mesh = analysed(tetrahedronMesh());
  EXPECT_EQ(ztCADInspect_meshMass(mesh.get(), nullptr), ztCADInspect_MassBadArgument);
  EXPECT_EQ(ztCADInspect_findingAt(ztCADInspect_meshFindings(mesh.get()), 0), nullptr);
  EXPECT_EQ(ztCADInspect_findingAt(ztCADInspect_meshFindings(mesh.get()), -1), nullptr);

  // all functions of the committed list were called
  std::set<std::string> exported;
  std::ifstream list(ZTCAD_TEST_EXPORTED_FUNCTIONS);
  for (std::string name; std::getline(list, name);)
    exported.insert(name);
  EXPECT_EQ(called, exported);
}

TEST(Options, AreCheckedOneByOne) {
  ztCADInspect_Options options = defaultOptions();
  EXPECT_EQ(options.size, static_cast<std::int64_t>(sizeof options));
  EXPECT_EQ(ztCADInspect_optionsProblem(&options), nullptr);
  const double nan = std::nan("");
  const auto isWrong = [](auto change) {
    ztCADInspect_Options changed = defaultOptions();
    change(changed);
    if (ztCADInspect_optionsProblem(&changed) == nullptr) return false;
    // a wrong value counts as its default
    const DocumentHandle document = loaded("<point name='p' center='1,2,3'/>");
    return ztCADInspect_itemCount(sceneOf(document, &changed).get()) == 1;
  };
  EXPECT_TRUE(isWrong([](auto& o) { o.systemOrder[0] = 1; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.systemOrder[2] = 4; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.systemOrder[2] = -1; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.systemIsTransposed = 2; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.ownSystems = -1; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.templateSystem = 3; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.massOrder[9] = 0; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.massOrder[9] = 10; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.productsAreIntegrals = 7; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.momentsAboutOrigin = 7; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.massInHolderFrame = 7; }));
  EXPECT_TRUE(isWrong([=](auto& o) { o.density = nan; }));
  EXPECT_TRUE(isWrong([=](auto& o) { o.systemTolerance = nan; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.degenerateTolerance = -1; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.principalTolerance = -1; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.declaredTolerance = HUGE_VAL; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.readFiles = 2; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.greatestFileSize = -1; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.greatestFileCount = -1; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.greatestDepth = 257; }));
  EXPECT_TRUE(isWrong([](auto& o) { o.greatestItemCount = -1; }));
}

// A host that was built with an earlier header has a shorter struct.
TEST(Options, MayBeShorter) {
  struct {
    ztCADInspect_Options options;
    char after[16];
  } host;
  std::memset(&host, 0x55, sizeof host);
  const std::int64_t size = offsetof(ztCADInspect_Options, readFiles);
  ztCADInspect_initOptions(&host.options, size);
  EXPECT_EQ(host.options.size, size);
  EXPECT_EQ(reinterpret_cast<const unsigned char*>(&host.options)[size], 0x55);
  EXPECT_EQ(ztCADInspect_optionsProblem(&host.options), nullptr) << "what is missing has its default";
  const DocumentHandle document = loaded("<point name='p' center='1,2,3'/>");
  EXPECT_EQ(ztCADInspect_itemCount(sceneOf(document, &host.options).get()), 1);
  std::memset(&host, 0x55, sizeof host);
  ztCADInspect_initOptions(&host.options, sizeof host);
  EXPECT_EQ(host.options.size, static_cast<std::int64_t>(sizeof host.options));
  host.options.size = -5;
  EXPECT_EQ(ztCADInspect_optionsProblem(&host.options), nullptr);
}

TEST(Mass, OfNonsenseIsNone) {
  const double center[3] = {0, 0, 0};
  const double nowhere[3] = {0, std::nan(""), 0};
  ztCADInspect_MassProperties mass = {};
  EXPECT_EQ(ztCADInspect_sphereMass(center, -1, nullptr, &mass), ztCADInspect_MassNoRadius);
  EXPECT_EQ(ztCADInspect_sphereMass(center, 0, nullptr, &mass), ztCADInspect_MassNoRadius);
  EXPECT_EQ(ztCADInspect_sphereMass(center, HUGE_VAL, nullptr, &mass), ztCADInspect_MassNoValue);
  EXPECT_EQ(ztCADInspect_sphereMass(center, 1e300, nullptr, &mass), ztCADInspect_MassNoValue);
  EXPECT_EQ(ztCADInspect_sphereMass(nowhere, 1, nullptr, &mass), ztCADInspect_MassNoValue);
  ASSERT_EQ(ztCADInspect_sphereMass(center, 1, nullptr, &mass), ztCADInspect_MassKnown);
  double transform[12] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};
  transform[3] = std::nan("");
  ztCADInspect_MassProperties result = {};
  EXPECT_FALSE(ztCADInspect_transformMass(&mass, transform, nullptr, &result));
  transform[3] = 0;
  EXPECT_TRUE(ztCADInspect_transformMass(&mass, transform, nullptr, &mass)) << "in place";
  ztCADInspect_MassProperties opposite = mass;
  opposite.mass = -mass.mass;
  const ztCADInspect_MassProperties both[2] = {mass, opposite};
  EXPECT_FALSE(ztCADInspect_sumMass(both, 2, &result));
}

TEST(Scene, OfAnEndedDocumentIsEmpty) {
  ztCAD_GMDDocument* const document = loaded("<point name='p' center='1,2,3'/>").release();
  ztCAD_endDocument(document);
  const SceneHandle scene(ztCADInspect_openScene(document, nullptr, nullptr));
  EXPECT_EQ(ztCADInspect_itemCount(scene.get()), 0);
}

}  // namespace
