#include <gtest/gtest.h>
#include <chrono>

#include "documents.h"

namespace {

using Texts = std::vector<std::string>;

std::string nameOf(const ztCAD_Base* element) {
  char name[100] = "nothing";
  if (element) ztCAD_getName(element, name, sizeof name);
  return name;
}

const char* const nested =
    "<structure name='a'><detail name='d' MIP='MIP,1,0,0,0,1,1,1,0,0,0'><point name='p' center='1,2,3'/></detail>"
    "<structure name='b'><point name='p' center='1,2,3'/><point name='q' center='1,2,3'/></structure></structure>"
    "<structure name='c'/><template_structure name='T'><point name='p' center='1,2,3'/></template_structure>";

TEST(Index, FindsByPath) {
  const DocumentHandle document = loaded(nested);
  const IndexHandle index(ztCADInspect_openIndex(document.get()));
  const auto found = [&](const char* path) { return nameOf(ztCADInspect_findPath(index.get(), path)); };
  EXPECT_EQ(found("/GMD/structure[1]"), "a");
  EXPECT_EQ(found("/GMD/structure[2]"), "c");
  EXPECT_EQ(found("/GMD/structure"), "a") << "no number means the first";
  EXPECT_EQ(found("/GMD[1]/structure[1]/structure[1]/point[2]"), "q");
  EXPECT_EQ(found("/GMD/structure[1]/structure[1]/point[2]/@center"), "q");
  EXPECT_EQ(found("/GMD/template_structure[1]/point[1]"), "p");
  for (const char* const path :
       {"", "/", "/GMD", "/gmd/structure[1]", "GMD/structure[1]", "/GMD/structure[0]", "/GMD/structure[3]",
        "/GMD/structure[-1]", "/GMD/structure[1", "/GMD/structure[1]x", "/GMD/structure[]",
        "/GMD/structure[99999999999999999999]", "/GMD/structure[1]/", "/GMD//structure[1]",
        "/GMD/@x/structure[1]", "/GMD/structure[1]/point[1]", "/GMD/\xff[1]"})
    EXPECT_EQ(found(path), "nothing") << path;
}

TEST(Index, FindsByNameAndCountsDuplicates) {
  const DocumentHandle document = loaded(nested);
  const IndexHandle index(ztCADInspect_openIndex(document.get()));
  std::int64_t count = -1;
  const ztCAD_Base* const first = ztCADInspect_findName(index.get(), "p", &count);
  EXPECT_EQ(count, 3);
  const ztCAD_Base* all[3] = {};
  EXPECT_EQ(ztCADInspect_listName(index.get(), "p", all, 3), 3);
  EXPECT_EQ(all[0], first);
  char path[100];
  Texts paths;
  for (const ztCAD_Base* const element : all) {
    ASSERT_GT(ztCADInspect_pathOf(index.get(), element, path, sizeof path), 0);
    paths.emplace_back(path);
    EXPECT_EQ(ztCADInspect_findPath(index.get(), path), element);
  }
  EXPECT_EQ(paths, (Texts{"/GMD/structure[1]/detail[1]/point[1]", "/GMD/structure[1]/structure[1]/point[1]",
                          "/GMD/template_structure[1]/point[1]"}));
  EXPECT_EQ(nameOf(ztCADInspect_holderOf(index.get(), first)), "d");
  EXPECT_EQ(ztCADInspect_holderOf(index.get(), ztCADInspect_findPath(index.get(), "/GMD/structure[1]")),
            nullptr);
  EXPECT_EQ(ztCADInspect_findName(index.get(), "gone", &count), nullptr);
  EXPECT_EQ(count, 0);
}

TEST(Index, FindsWhatASaveWouldWrite) {
  // every path leads to the element of that tag and number in the saved text: the order of a save
  const DocumentHandle document = loaded(
      "<solid name='mesh' method='triangulation'><vertices/><faces/></solid><solid name='ball' method='sphere' "
      "center='0,0,0' radius='1'/><detail name='d' MIP='MIP,1,0,0,0,1,1,1,0,0,0'><solid name='mesh2' "
      "method='triangulation'><vertices/><faces/></solid><solid name='ball2' method='sphere' center='0,0,0' "
      "radius='1'/></detail>");
  std::string saved;
  ASSERT_TRUE(ztCAD_saveDocumentTo(
      document.get(),
      [](const char* bytes, std::int64_t size, void* context) {
        static_cast<std::string*>(context)->append(bytes, static_cast<std::size_t>(size));
        return true;
      },
      &saved, nullptr));
  const IndexHandle index(ztCADInspect_openIndex(document.get()));
  EXPECT_LT(saved.find("\"ball\""), saved.find("\"mesh\""));
  EXPECT_EQ(nameOf(ztCADInspect_findPath(index.get(), "/GMD/solid[1]")), "ball");
  EXPECT_EQ(nameOf(ztCADInspect_findPath(index.get(), "/GMD/solid[2]")), "mesh");
  EXPECT_LT(saved.find("\"ball2\""), saved.find("\"mesh2\""));
  EXPECT_EQ(nameOf(ztCADInspect_findPath(index.get(), "/GMD/detail[1]/solid[1]")), "ball2");
}

TEST(Index, OfAStructureInSeveralHoldersHasItsFirstPlace) {
  const DocumentHandle document = loaded("<structure name='a'/><structure name='b'/>");
  ztCAD_Base* holders[2] = {};
  ASSERT_EQ(ztCAD_listDoc(document.get(), ztCAD_ElementStructure, holders, 2), 2);
  bool isFree = false;
  const double values[12] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  ztCAD_Structure* const shared = crtStructure_nostl("shared", crtLCS_nostl(values), isFree);
  for (ztCAD_Base* const holder : holders)
    ASSERT_FALSE(addStructureToStructure(reinterpret_cast<const ztCAD_commonStructure*>(shared),
                                         reinterpret_cast<ztCAD_commonStructure*>(holder)));
  const IndexHandle index(ztCADInspect_openIndex(document.get()));
  char path[100];
  ztCADInspect_pathOf(index.get(), reinterpret_cast<const ztCAD_Base*>(shared), path, sizeof path);
  EXPECT_STREQ(path, "/GMD/structure[1]/structure[1]");
  const SceneHandle scene = sceneOf(document);
  EXPECT_EQ(ztCADInspect_itemCount(scene.get()), 4) << "but is placed in both";
}

TEST(Index, AnswersInConstantTime) {
  const auto secondsOf = [](int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += "<point name='p" + std::to_string(i) + "' center='1,2,3'/>";
    const DocumentHandle document = loaded(text);
    const IndexHandle index(ztCADInspect_openIndex(document.get()));
    EXPECT_NE(ztCADInspect_findPath(index.get(), "/GMD/point[1]"), nullptr);
    double least = 1e9;
    for (int round = 0; round < 5; ++round) {
      const auto start = std::chrono::steady_clock::now();
      for (int i = 0; i < 2000; ++i) {
        const std::string name = "p" + std::to_string(i * 7919 % count);
        const ztCAD_Base* const found = ztCADInspect_findName(index.get(), name.c_str(), nullptr);
        char path[40];
        ztCADInspect_pathOf(index.get(), found, path, sizeof path);
        EXPECT_EQ(ztCADInspect_findPath(index.get(), path), found);
      }
      least =
          std::min(least, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return least;
  };
  // a hundred times the elements; caches make some difference
  EXPECT_LT(secondsOf(200000), 10 * secondsOf(2000) + 0.01);
}

}  // namespace
