#include <gtest/gtest.h>
#include <chrono>
#include <filesystem>

#include "documents.h"
#include "temporary_files.h"

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

std::string attribute(const std::string& name, const std::string& value) {
  return ' ' + name + "=\"" + value + '"';
}
std::string named(const std::string& name) { return attribute("name", name); }

/// Where a point of an item's frame is in the document.
std::array<double, 3> placed(const ztCADInspect_Item& item, double a, double b, double c) {
  const double* const t = item.transform;
  return {t[0] * a + t[1] * b + t[2] * c + t[3], t[4] * a + t[5] * b + t[6] * c + t[7],
          t[8] * a + t[9] * b + t[10] * c + t[11]};
}

TEST(Scene, OfNothingIsEmpty) {
  const DocumentHandle document = loaded("");
  const SceneHandle scene = sceneOf(document);
  ASSERT_NE(scene, nullptr);
  EXPECT_EQ(ztCADInspect_itemCount(scene.get()), 0);
  EXPECT_EQ(ztCADInspect_items(scene.get()), nullptr);
  EXPECT_EQ(ztCADInspect_shapes(scene.get()), nullptr);
  EXPECT_EQ(ztCADInspect_fileCount(scene.get()), 1);
  EXPECT_EQ(findingsOf(scene), Texts());
}

TEST(Scene, HasAllElementsInTheOrderOfASave) {
  const DocumentHandle document = loaded(
      "<structure name='s'><structure name='inner'><point name='deep' center='1,2,3'/></structure>"
      "<structureRef name='sr' template='T'/>" +
      tetrahedron("name='solid'") +
      "<solid name='ball' method='sphere' center='0,0,0' radius='1'/><point name='p' center='1,2,3'/>"
      "<detail name='d' MIP='MIP,1,0,0,0,1,1,1,0,0,0'><line name='l' method='polyline'><vertices>0,0,0;1,1,1;"
      "</vertices></line></detail></structure>"
      "<elementMIP name='m' method='MIP' MIP='MIP,1,0,0,0,1,1,1,0,0,0'/>"
      "<template_structure name='T'><point name='in T' center='1,1,1'/></template_structure>"
      "<pointRef name='pr' template='P'/><templatePoint name='P' center='0,0,0'/>");
  const SceneHandle scene = sceneOf(document);
  EXPECT_EQ(itemsOf(scene),
            (Texts{"0 point-reference pr", "0 mass-inertia-element m", "0 structure s", "1 point p",
                   "1 sphere ball", "1 solid solid", "1 detail d", "2 line l", "1 structure inner",
                   "2 point deep", "1 structure-reference sr", "2 point in T"}));
  const ztCADInspect_Item* const items = ztCADInspect_items(scene.get());
  EXPECT_EQ(items[2].end, 12);
  EXPECT_EQ(items[6].end, 8);
  EXPECT_EQ(pathOf(scene, 4), "/GMD/structure[1]/solid[1]");
  EXPECT_EQ(pathOf(scene, 5), "/GMD/structure[1]/solid[2]") << "spheres are written first, with the same tag";
  EXPECT_EQ(pathOf(scene, 11), "/GMD/template_structure[1]/point[1]");
  EXPECT_EQ(pathOf(scene, 12), "none");
  EXPECT_NE(items[10].source, items[10].element);
  EXPECT_EQ(ztCAD_getKind(items[10].source), ztCAD_ElementTmplStructure);
  const ztCADInspect_Shape* const shapes = ztCADInspect_shapes(scene.get());
  EXPECT_EQ(ztCADInspect_shapeCount(scene.get()), 7);
  EXPECT_EQ(items[1].shape, -1);
  EXPECT_EQ(items[2].shape, -1);
  const ztCADInspect_Shape& mesh = shapes[items[5].shape];
  EXPECT_EQ(mesh.kind, ztCADInspect_ShapeMesh);
  EXPECT_EQ(mesh.vertexCount, 4);
  EXPECT_EQ(mesh.facetCount, 4);
  EXPECT_EQ(mesh.vertices[3], 1);
  EXPECT_EQ(mesh.facets[1], 2U);
  EXPECT_EQ(shapes[items[4].shape].kind, ztCADInspect_ShapeSphere);
  EXPECT_EQ(shapes[items[4].shape].radius, 1);
  EXPECT_EQ(shapes[items[7].shape].kind, ztCADInspect_ShapePolyline);
  EXPECT_EQ(shapes[items[7].shape].vertexCount, 2);
  EXPECT_EQ(shapes[items[3].shape].center[2], 3);
}

TEST(Scene, SharesTheShapesOfTemplates) {
  const DocumentHandle document =
      loaded("<templateSolid name='T'>" + std::string(tetrahedronLists) +
             "</templateSolid><solidRef name='a' template='T'/><solidRef name='b' template='T'/>");
  const SceneHandle scene = sceneOf(document);
  ASSERT_EQ(ztCADInspect_itemCount(scene.get()), 2);
  const ztCADInspect_Item* const items = ztCADInspect_items(scene.get());
  EXPECT_EQ(items[0].shape, 0);
  EXPECT_EQ(items[1].shape, 0);
  EXPECT_EQ(ztCADInspect_shapeCount(scene.get()), 1);
}

// origin, x axis, y axis, z axis; own system of elements; the template's own system inside the placement
TEST(Scene, CombinesSystems) {
  const DocumentHandle document = loaded(
      "<structure name='s'" + attribute("LCS", turnedAboutZ) + "><point name='p' center='1,2,3'" +
      attribute("LCS", movedByX) + "/></structure><template_structure name='T'" + attribute("LCS", movedByX) +
      "><point name='q' center='1,2,3'/></template_structure><structureRef name='r' template='T'" +
      attribute("MCS", turnedAboutZ) + "/>");
  using Place = std::array<double, 3>;
  const auto places = [&](const ztCADInspect_Options& options) {
    const SceneHandle scene = sceneOf(document, &options);
    const ztCADInspect_Item* const items = ztCADInspect_items(scene.get());
    // r, q, s, p
    return std::array<Place, 2>{placed(items[3], 1, 2, 3), placed(items[1], 1, 2, 3)};
  };
  ztCADInspect_Options options = defaultOptions();
  EXPECT_EQ(places(options), (std::array<Place, 2>{Place{8, 22, 33}, Place{8, 22, 33}}));
  options.ownSystems = 0;
  EXPECT_EQ(places(options), (std::array<Place, 2>{Place{8, 21, 33}, Place{8, 22, 33}}));
  options = defaultOptions();
  options.templateSystem = ztCADInspect_TemplateOutside;
  EXPECT_EQ(places(options)[1], (Place{9, 21, 33}));
  options.templateSystem = ztCADInspect_TemplateIgnored;
  EXPECT_EQ(places(options)[1], (Place{8, 21, 33}));
  options = defaultOptions();
  options.systemIsTransposed = 1;
  EXPECT_EQ(places(options)[0], (Place{12, 18, 33}));
  options = defaultOptions();
  const std::int32_t order[4] = {ztCADInspect_SystemX, ztCADInspect_SystemY, ztCADInspect_SystemZ,
                                 ztCADInspect_SystemOrigin};
  std::copy(order, order + 4, options.systemOrder);
  const DocumentHandle other =
      loaded("<point name='p' center='1,2,3' LCS='CS,0,1,0,-1,0,0,0,0,1,10,20,30'/>");
  const SceneHandle scene = sceneOf(other, &options);
  EXPECT_EQ(placed(*ztCADInspect_items(scene.get()), 1, 2, 3), (Place{8, 21, 33}));
}

TEST(Scene, InheritsColourAndVisibility) {
  const DocumentHandle document = loaded(
      "<templatePoint name='T' center='0,0,0' color='RGB,1,2,3'/><templatePoint name='U' center='0,0,0' "
      "visible='false'/><structure name='s' color='RGB,300,5,6'><point name='a' center='0,0,0'/><point name='b' "
      "center='0,0,0' color='RGB,7,8,9'/><pointRef name='c' template='T'/><pointRef name='d' template='U' "
      "visible='true'/></structure><structure name='h' visible='false'><point name='e' center='0,0,0' "
      "visible='true'/></structure>");
  const SceneHandle scene = sceneOf(document);
  std::map<std::string, const ztCADInspect_Item*> items;
  for (std::int64_t i = 0; i < ztCADInspect_itemCount(scene.get()); ++i)
    items[ztCADInspect_items(scene.get())[i].name] = ztCADInspect_items(scene.get()) + i;
  const auto color = [&](const char* name) {
    const ztCADInspect_Item& item = *items.at(name);
    return std::array<int, 4>{item.hasColor, item.color[0], item.color[1], item.color[2]};
  };
  EXPECT_EQ(color("a"), (std::array<int, 4>{1, 255, 5, 6}));
  EXPECT_EQ(color("b"), (std::array<int, 4>{1, 7, 8, 9}));
  EXPECT_EQ(color("c"), (std::array<int, 4>{1, 1, 2, 3}));
  EXPECT_EQ(color("e"), (std::array<int, 4>{0, 0, 0, 0}));
  EXPECT_EQ(items.at("a")->isVisible, 1);
  EXPECT_EQ(items.at("d")->isVisible, 0) << "the template is hidden";
  EXPECT_EQ(items.at("e")->isVisible, 0) << "the holder is hidden";
}

// ------------------------------------------------------------------------------------- hostile scenes

std::string templateStructure(const std::string& name, const std::string& content) {
  return "<template_structure" + named(name) + '>' + content + "</template_structure>";
}
std::string reference(const std::string& name, const std::string& target, const std::string& file = {}) {
  return "<structureRef" + named(name) + attribute("template", target) + attribute("file", file) + "/>";
}

TEST(Rings, OfReferencesAreCut) {
  const DocumentHandle document =
      loaded(reference("start", "A") + templateStructure("A", reference("to B", "B")) +
             templateStructure("B", "<point name='p' center='0,0,0'/>" + reference("to A", "A")) +
             templateStructure("C", reference("to C", "C")));
  const SceneHandle scene = sceneOf(document);
  EXPECT_EQ(itemsOf(scene), (Texts{"0 structure-reference start", "1 structure-reference to B", "2 point p",
                                   "2 structure-reference to A"}));
  EXPECT_EQ(findingsOf(scene),
            (Texts{"reference-ring /GMD/template_structure[2]/structureRef[1]/@template",
                   "reference-ring /GMD/template_structure[3]/structureRef[1]/@template"}));
  const FindingsHandle findings(ztCADInspect_check(scene.get(), ztCADInspect_CheckScene));
  EXPECT_STREQ(
      ztCADInspect_findingAt(findings.get(), 0)->message,
      "The structure reference \"to A\" leads back to the template that contains it: \"A\" -> \"B\" -> "
      "\"A\".");
}

TEST(Bombs, AreNotUnfolded) {
  std::string text = reference("start", "T0");
  for (int i = 0; i < 60; ++i) {
    const std::string next = 'T' + std::to_string(i + 1);
    text += templateStructure('T' + std::to_string(i), reference("a", next) + reference("b", next));
  }
  text += templateStructure("T60", "<point name='p' center='0,0,0'/>");
  const DocumentHandle document = loaded(text);
  const SceneHandle scene = sceneOf(document);
  EXPECT_EQ(ztCADInspect_itemCount(scene.get()), 1) << "the reference itself";
  EXPECT_EQ(findingsOf(scene), Texts{"scene-too-large /GMD/structureRef[1]"});
  // sums of it take no longer
  const TableHandle table(ztCADInspect_openMassTable(scene.get()));
  EXPECT_EQ(ztCADInspect_massTotal(table.get())->declaredProblem, ztCADInspect_MassNotDeclared);
}

TEST(Bombs, LeaveRoomForTheRest) {
  ztCADInspect_Options options = defaultOptions();
  options.greatestItemCount = 10;
  std::string points;
  for (int i = 0; i < 8; ++i)
    points += "<point name='p' center='0,0,0'/>";
  const DocumentHandle document = loaded("<point name='first' center='0,0,0'/>" + reference("r", "T") +
                                         reference("r", "T") + templateStructure("T", points));
  const SceneHandle scene = sceneOf(document, &options);
  EXPECT_EQ(ztCADInspect_itemCount(scene.get()), 10);
  EXPECT_EQ(findingsOf(scene), Texts{"scene-too-large /GMD/structureRef[2]"});
  options.greatestItemCount = 0;
  EXPECT_EQ(ztCADInspect_itemCount(sceneOf(document, &options).get()), 0);
  options.greatestItemCount = 12;
  const SceneHandle more = sceneOf(document, &options);
  EXPECT_EQ(ztCADInspect_itemCount(more.get()), 11) << "a template is placed as a whole or not at all";
}

TEST(Depth, IsLimited) {
  const auto chain = [](int length) {
    std::string text = reference("start", "T0");
    for (int i = 0; i < length; ++i)
      text += templateStructure('T' + std::to_string(i), reference("next", 'T' + std::to_string(i + 1)));
    return loaded(text + templateStructure('T' + std::to_string(length), "<point name='p' center='0,0,0'/>"));
  };
  const DocumentHandle allowed = chain(255);
  EXPECT_EQ(ztCADInspect_itemCount(sceneOf(allowed).get()), 257);
  EXPECT_EQ(findingsOf(sceneOf(allowed)), Texts());
  const DocumentHandle deeper = chain(256);
  EXPECT_EQ(ztCADInspect_itemCount(sceneOf(deeper).get()), 257);
  EXPECT_EQ(findingsOf(sceneOf(deeper)).size(), 1U);
  const DocumentHandle endless = chain(20000);
  const Texts findings = findingsOf(sceneOf(endless));
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].rfind("reference-too-deep /GMD/template_structure[256]", 0), 0U) << findings[0];
}

TEST(References, WithoutTemplatesAreOneFinding) {
  const DocumentHandle document = loaded(
      "<templatePoint name='T' center='0,0,0'/><pointRef name='a' template='gone'/><pointRef name='b' "
      "template='gone'/><lineRef name='c' template='T'/>");
  const SceneHandle scene = sceneOf(document);
  EXPECT_EQ(findingsOf(scene), (Texts{"template-missing /GMD/pointRef[1]/@template x2",
                                      "template-missing /GMD/lineRef[1]/@template"}))
      << "a template of another kind is none";
  EXPECT_EQ(ztCADInspect_items(scene.get())[0].source, nullptr);
  EXPECT_EQ(ztCADInspect_items(scene.get())[0].shape, -1);
}

class Files : public testing::Test {
 protected:
  std::string put(const std::string& name, const std::string& content) const {
    fs::create_directories(fs::path(m_files.path(name)).parent_path());
    return m_files.put(name, "<GMD>" + content + "</GMD>");
  }
  SceneHandle sceneOf(const std::string& content, const ztCADInspect_Options* options = nullptr) {
    m_document = loaded(content);
    return ::sceneOf(m_document, options, folder());
  }
  std::string folder() const { return m_files.path("model"); }

  TemporaryFiles m_files;

 private:
  DocumentHandle m_document;
};

const std::string ball =
    "<template_structure name='Ball'><point name='p' center='1,2,3'/></template_structure>";

TEST_F(Files, AreFoundRelativeToTheFileThatNamesThem) {
  put("model/lib/ball.xml", ball);
  put("model/lib/more/deep.xml", templateStructure("Deep", reference("up", "Ball", "../ball.xml")));
  const SceneHandle scene =
      sceneOf(reference("a", "Ball", "lib/ball.xml") + reference("b", "Deep", "./lib/../lib/more/deep.xml") +
              reference("c", "Ball", "lib//ball.xml"));
  EXPECT_EQ(itemsOf(scene),
            (Texts{"0 structure-reference a", "1 point p", "0 structure-reference b",
                   "1 structure-reference up", "2 point p", "0 structure-reference c", "1 point p"}));
  EXPECT_EQ(findingsOf(scene), Texts());
  ASSERT_EQ(ztCADInspect_fileCount(scene.get()), 3) << "each file is loaded once";
  EXPECT_STREQ(ztCADInspect_fileName(scene.get(), 0), "");
  EXPECT_STREQ(ztCADInspect_fileName(scene.get(), 1), "lib/ball.xml");
  EXPECT_STREQ(ztCADInspect_fileName(scene.get(), 2), "lib/more/deep.xml");
  EXPECT_EQ(ztCADInspect_items(scene.get())[1].file, 1);
  EXPECT_EQ(ztCADInspect_shapeCount(scene.get()), 1);
}

TEST_F(Files, WithCyrillicNamesAreFound) {
  put("model/\xd0\xba\xd1\x83\xd0\xb1.xml", ball);
  const SceneHandle scene = sceneOf(reference("a", "Ball", "\xd0\xba\xd1\x83\xd0\xb1.xml"));
  EXPECT_EQ(findingsOf(scene), Texts());
  EXPECT_EQ(ztCADInspect_itemCount(scene.get()), 2);
}

TEST_F(Files, ThatReferToEachOtherAreARing) {
  put("model/a.xml", templateStructure("A", reference("to B", "B", "b.xml")));
  put("model/b.xml", templateStructure("B", reference("to A", "A", "a.xml")));
  const SceneHandle scene = sceneOf(reference("start", "A", "a.xml"));
  EXPECT_EQ(findingsOf(scene), Texts{"reference-ring /GMD/structureRef[1]"})
      << "a finding about another file names the reference that leads there";
}

TEST_F(Files, OutsideTheAllowedFolderAreNotRead) {
  put("secret.xml", ball);
  put("model/inside.xml", ball);
  put("model/lib/up.xml", templateStructure("Up", reference("out", "Ball", "../../secret.xml")));
  for (const std::string& name :
       {std::string("../secret.xml"), std::string("lib/../../secret.xml"), m_files.path("secret.xml"),
        m_files.path("model/inside.xml"), std::string("../missing.xml"), std::string("../model"),
        std::string("..")}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(findingsOf(sceneOf(reference("a", "Ball", name))),
              Texts{"file-not-allowed /GMD/structureRef[1]/@file"});
  }
  EXPECT_EQ(findingsOf(sceneOf(reference("a", "Up", "lib/up.xml"))),
            Texts{"file-not-allowed /GMD/structureRef[1]"});
  // unless the host allows more
  ztCADInspect_Options options = defaultOptions();
  const std::string wider = m_files.folder();
  options.allowedFolder = wider.c_str();
  EXPECT_EQ(findingsOf(sceneOf(reference("a", "Ball", "../secret.xml"), &options)), Texts());
  options.readFiles = 0;
  EXPECT_EQ(findingsOf(sceneOf(reference("a", "Ball", "inside.xml"), &options)),
            Texts{"file-not-allowed /GMD/structureRef[1]/@file"});
  options = defaultOptions();
  options.allowedFolder = "/no/such/folder";
  EXPECT_EQ(findingsOf(sceneOf(reference("a", "Ball", "inside.xml"), &options)),
            Texts{"file-not-allowed /GMD/structureRef[1]/@file"});
}

#if !defined(_WIN32)
TEST_F(Files, ThatSymbolicLinksLeadToAreReadInsideOnly) {
  put("secret.xml", ball);
  put("model/real.xml", ball);
  put("model/lib/other.xml", ball);
  fs::create_symlink("real.xml", m_files.path("model/inner.xml"));
  fs::create_symlink("../secret.xml", m_files.path("model/outer.xml"));
  fs::create_directory_symlink("..", m_files.path("model/parent"));
  fs::create_symlink("loop.xml", m_files.path("model/loop.xml"));
  fs::create_symlink("gone.xml", m_files.path("model/dangling.xml"));
  const auto finding = [&](const std::string& name) {
    return findingsOf(sceneOf(reference("a", "Ball", name)));
  };
  EXPECT_EQ(finding("inner.xml"), Texts());
  EXPECT_EQ(finding("outer.xml"), Texts{"file-not-allowed /GMD/structureRef[1]/@file"});
  EXPECT_EQ(finding("parent/secret.xml"), Texts{"file-not-allowed /GMD/structureRef[1]/@file"});
  EXPECT_EQ(finding("parent/model/real.xml"), Texts()) << "what matters is where it leads";
  EXPECT_EQ(finding("loop.xml"), Texts{"file-unreadable /GMD/structureRef[1]/@file"});
  EXPECT_EQ(finding("dangling.xml"), Texts{"file-missing /GMD/structureRef[1]/@file"});
  fs::create_symlink("/dev/zero", m_files.path("model/zero.xml"));
  EXPECT_EQ(finding("zero.xml"), Texts{"file-not-allowed /GMD/structureRef[1]/@file"});
}
#endif

TEST_F(Files, ThatCannotBeReadAreOneFinding) {
  put("model/lib/x.xml", ball);
  m_files.put("model/broken.xml", "<GMD>");
  m_files.put("model/other.xml", "<html/>");
  const auto finding = [&](const std::string& name) {
    return findingsOf(sceneOf(reference("a", "Ball", name) + reference("b", "Ball", name)));
  };
  EXPECT_EQ(finding("gone.xml"), Texts{"file-missing /GMD/structureRef[1]/@file x2"});
  EXPECT_EQ(finding("lib/gone/x.xml"), Texts{"file-missing /GMD/structureRef[1]/@file x2"});
  EXPECT_EQ(finding("lib"), Texts{"file-unreadable /GMD/structureRef[1]/@file x2"});
  EXPECT_EQ(finding("broken.xml"), Texts{"file-unreadable /GMD/structureRef[1]/@file x2"});
  EXPECT_EQ(finding("other.xml"), Texts{"file-unreadable /GMD/structureRef[1]/@file x2"});
}

TEST_F(Files, AreLimitedInSizeAndNumber) {
  for (int i = 0; i < 5; ++i)
    put("model/" + std::to_string(i) + ".xml", ball);
  std::string text;
  for (int i = 0; i < 5; ++i)
    text += reference("a", "Ball", std::to_string(i) + ".xml");
  ztCADInspect_Options options = defaultOptions();
  options.greatestFileCount = 3;
  SceneHandle scene = sceneOf(text, &options);
  EXPECT_EQ(ztCADInspect_fileCount(scene.get()), 4);
  EXPECT_EQ(findingsOf(scene), (Texts{"file-too-large /GMD/structureRef[4]/@file",
                                      "file-too-large /GMD/structureRef[5]/@file"}));
  options = defaultOptions();
  options.greatestFileSize = static_cast<std::int64_t>(2 * (ball.size() + 11) + 1);
  scene = sceneOf(text, &options);
  EXPECT_EQ(ztCADInspect_fileCount(scene.get()), 3) << "the size is that of all files together";
  EXPECT_EQ(findingsOf(scene).size(), 3U);
}

// ------------------------------------------------------------------------------------- cost

TEST(Scene, OfAMillionItemsIsLinear) {
  const auto documentOf = [](int count) {
    std::string text = "<templateSolid name='T'>" + std::string(tetrahedronLists) + "</templateSolid>";
    for (int i = 0; i < count; ++i)
      text += "<solidRef name='r" + std::to_string(i) + "' template='T' MCS='CS," + std::to_string(i) +
              ",0,0,1,0,0,0,1,0,0,0,1'/>";
    return loaded(text);
  };
  const auto seconds = [](const DocumentHandle& document) {
    const auto start = std::chrono::steady_clock::now();
    const SceneHandle scene = sceneOf(document);
    EXPECT_GT(ztCADInspect_itemCount(scene.get()), 0);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  const DocumentHandle few = documentOf(62500);
  const DocumentHandle many = documentOf(1000000);
  double least = 1e9;
  for (int i = 0; i < 3; ++i)
    least = std::min(least, seconds(few));
  const SceneHandle scene = sceneOf(many);
  EXPECT_EQ(ztCADInspect_itemCount(scene.get()), 1000000);
  EXPECT_EQ(ztCADInspect_items(scene.get())[999999].transform[3], 999999);
  EXPECT_EQ(ztCADInspect_shapeCount(scene.get()), 1);
  EXPECT_LT(std::min(seconds(many), seconds(many)), 16 * 4 * least + 0.5);
}

}  // namespace
