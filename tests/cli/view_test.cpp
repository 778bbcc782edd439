#include <failure.h>
#include <gtest/gtest.h>
#include <view/finding_list.h>
#include <view/page_text.h>
#include <view/view.h>
#include <ztCAD/inspect.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "samples.h"
#include "temporary_files.h"
#include "view_page.h"

namespace {

using cli::ExitCode;
using nlohmann::json;

std::string documentOf(const std::string& content) {
  return R"(<GMD><header majorVersion="2" minorVersion="1" inform=""/>)" + content + "</GMD>";
}

const std::string tetrahedron =
    "<vertices>0, 0, 0; 1, 0, 0; 0, 1, 0; 0, 0, 1;</vertices>"
    "<faces>0, 2, 1; 0, 1, 3; 1, 2, 3; 2, 0, 3;</faces>";

/// The documents of the golden tests and the real ones.
std::vector<std::string> documents() {
  std::vector<std::string> files;
  for (const char* const folder : {ZTCAD_TEST_GOLDEN_FOLDER, ZTCAD_TEST_REAL_DOCUMENTS}) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored))
      if (entry.path().extension() == ".xml") files.push_back(entry.path().u8string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

/// The path that tags and numbers give an element.
std::string pathOf(const json& elements, std::size_t index) {
  const int number = elements.at("number").at(index);
  const std::string step =
      "/" + elements.at("tag").at(index).get<std::string>() + "[" + std::to_string(number) + "]";
  const int parent = elements.at("parent").at(index);
  return (parent < 0 ? "/GMD" : pathOf(elements, static_cast<std::size_t>(parent))) + step;
}

/// Compares the elements of a page with the document, and with what the library for inspection says.
void expectEveryElement(const std::string& file, const json& page) {
  ztCAD_Outcome outcome;
  ztCAD_GMDDocument* const document = ztCAD_loadDocument(file.c_str(), &outcome);
  const json& elements = page.at("elements");
  const std::size_t count = elements.at("kind").size();
  for (const char* const column : {"name", "tag", "number", "parent", "visible", "color", "fields", "system"})
    EXPECT_EQ(elements.at(column).size(), count) << column;
  ztCADInspect_Index* const index = ztCADInspect_openIndex(document);
  std::set<const ztCAD_Base*> seen;
  for (std::size_t i = 0; i < count; ++i) {
    EXPECT_LT(elements.at("parent").at(i).get<int>(), static_cast<int>(i));
    if (elements.at("number").at(i) == 0) continue;
    const std::string path = pathOf(elements, i);
    const ztCAD_Base* const element = ztCADInspect_findPath(index, path.c_str());
    ASSERT_NE(element, nullptr) << path;
    EXPECT_TRUE(seen.insert(element).second) << path;
    std::string name(1000, '\0');
    name.resize(static_cast<std::size_t>(ztCAD_getName(element, name.data(), 1000)));
    EXPECT_EQ(elements.at("name").at(i), name);
  }
  ztCADInspect_endIndex(index);
  ztCAD_endDocument(document);
}

void expectConsistentItems(const json& page) {
  const json& items = page.at("items");
  const json& shapes = page.at("shapes");
  const std::size_t count = items.at("element").size();
  const int elements = static_cast<int>(page.at("elements").at("kind").size());
  for (const char* const column : {"source", "parent", "shape", "color", "visible"})
    EXPECT_EQ(items.at(column).size(), count) << column;
  if (!items.at("transform").is_null()) {
    EXPECT_EQ(items.at("transform").size(), 12 * count);
  }
  for (std::size_t i = 0; i < count; ++i) {
    EXPECT_LT(items.at("parent").at(i).get<int>(), static_cast<int>(i));
    EXPECT_LT(items.at("element").at(i).get<int>(), elements);
    EXPECT_LT(items.at("source").at(i).get<int>(), elements);
    EXPECT_LT(items.at("shape").at(i).get<int>(), static_cast<int>(shapes.at("kind").size()));
    EXPECT_EQ(items.at("element").at(i) == -1, items.at("other").contains(std::to_string(i)));
  }
}

json onlyFinding(const json& page) {
  EXPECT_EQ(page.at("findings").size(), 1U) << page.at("findings");
  return page.at("findings").at(0);
}

}  // namespace

TEST(ViewPage, HasEveryElementOfEveryDocument) {
  std::size_t count = 0;
  for (const std::string& file : documents()) {
    SCOPED_TRACE(file);
    const ViewPage page = viewPageOf(file);
    if (page.document.at("problem").is_null()) {
      expectEveryElement(file, page.document);
      expectConsistentItems(page.document);
      ++count;
    } else {
      EXPECT_EQ(page.exitCode, ExitCode::NotWell);
      EXPECT_EQ(page.document.at("elements").at("kind").size(), 0U);
      EXPECT_EQ(page.document.at("items").at("element").size(), 0U);
      EXPECT_EQ(page.glb, "");
      EXPECT_GE(page.document.at("findings").size(), 1U);
    }
  }
  EXPECT_GT(count, 50U);
}

TEST(ViewPage, MeshesAreThoseOfTheDocument) {
  for (const std::string& file : documents()) {
    SCOPED_TRACE(file);
    const ViewPage page = viewPageOf(file);
    const std::vector<DecodedMesh> meshes =
        page.glb.empty() ? std::vector<DecodedMesh>() : decodedMeshes(page.glb);
    const json& shapes = page.document.at("shapes");
    std::set<int> used;
    for (std::size_t i = 0; i < shapes.at("kind").size(); ++i) {
      const int index = shapes.at("mesh").at(i);
      if (index < 0) continue;
      EXPECT_TRUE(used.insert(index).second);
      const DecodedMesh& mesh = meshes.at(static_cast<std::size_t>(index));
      const bool isMesh = shapes.at("kind").at(i) == "mesh";
      EXPECT_EQ(mesh.indices.size(), isMesh ? 3 * shapes.at("facets").at(i).get<std::size_t>() : 0U);
      EXPECT_LE(mesh.positions.size(), 3 * shapes.at("vertices").at(i).get<std::size_t>());
    }
    EXPECT_EQ(used.size(), meshes.size());
  }
}

TEST(ViewPage, FindingsAreThoseOfCheckWithTheirElements) {
  const ViewPage page = viewPageOfText(documentOf(R"(
<point name="here" center="0, 0, 0"/>
<point name="here"/>
<solid name="open" method="triangulation">
<vertices>0, 0, 0; 1, 0, 0; 0, 1, 0;</vertices><faces>0, 1, 2; 0, 1, 9;</faces></solid>
<line metod="spline"/>)"));
  EXPECT_EQ(page.exitCode, ExitCode::NotWell);
  std::map<std::string, json> findings;
  for (const json& finding : page.document.at("findings")) {
    findings[finding.at("rule")] = finding;
    EXPECT_TRUE(page.document.at("rules").contains(finding.at("rule").get<std::string>()));
  }
  const json& elements = page.document.at("elements");
  const auto elementOf = [&](const char* rule) {
    const json& index = findings.at(rule).at("index");
    return index == -1 ? json() : elements.at("name").at(index.get<std::size_t>());
  };
  EXPECT_EQ(elementOf("missing-centre"), "here_$1");  // renamed by the load
  EXPECT_EQ(elementOf("index-out-of-range"), "open");
  EXPECT_EQ(elementOf("open-edge"), "open");
  EXPECT_TRUE(elementOf("unknown-method").is_null());
  EXPECT_EQ(findings.at("open-edge").at("spots").size(), 3U);
  EXPECT_EQ(findings.at("open-edge").at("spots").at(0), json::parse("[[0.0, 0.0, 0.0], [1.0, 0.0, 0.0]]"));
  EXPECT_EQ(findings.at("missing-centre").count("spots"), 0U);
  EXPECT_EQ(findings.count("element-place"), 0U);
  EXPECT_EQ(page.document.at("omitted"), 0);
}

TEST(ViewPage, FindingsOfNestedElementsWithTheSameNameAreNotMixedUp) {
  std::string structures;
  for (int i = 0; i < 3; ++i)
    structures += R"(<structure name="s)" + std::to_string(i) +
                  R"("><detail name="d" MIP="MIP, 1, 0, 0, 0, 1, 1, 1, 0, 0, 0">)" +
                  (i == 1 ? R"(<solid name="x" method="sphere" center="0, 0, 0"/>)" : "") +
                  R"(<solid name="x" method="sphere" center="0, 0, 0" radius="1"/></detail></structure>)";
  const json page = viewPageOfText(documentOf(structures)).document;
  for (const json& finding : page.at("findings")) {
    if (finding.at("rule") != "missing-radius") continue;
    EXPECT_EQ(pathOf(page.at("elements"), finding.at("index").get<std::size_t>()),
              "/GMD/structure[2]/detail[1]/solid[1]");
    return;
  }
  FAIL() << page.at("findings");
}

TEST(ViewPage, OfManyFindingsTheMostSevereAreKept) {
  std::string content;
  const auto most = static_cast<int>(cli::FindingList::most);
  for (int i = 0; i < most; ++i)
    content +=
        "<bracket/>\n<point name=\"p" + std::to_string(i) + "\"" + (i < 100 ? "" : " center=\"0\"") + "/>\n";
  const json page = viewPageOfText(documentOf(content)).document;
  EXPECT_EQ(page.at("findings").size(), cli::FindingList::most);
  const auto errors = std::count_if(page.at("findings").begin(), page.at("findings").end(),
                                    [](const json& finding) { return finding.at("severity") == "error"; });
  EXPECT_EQ(errors, 100);
  EXPECT_GE(page.at("omitted").get<int>(), 100);
}

TEST(ViewPage, OfADocumentThatDoesNotLoadHasTheLines) {
  const ViewPage page = viewPageOfText("<GMD>\n<point>\n<line/>\n</GMD>\n");
  EXPECT_EQ(page.exitCode, ExitCode::NotWell);
  EXPECT_EQ(page.document.at("code"), 110);
  EXPECT_FALSE(page.document.at("problem").is_null());
  const json finding = onlyFinding(page.document);
  EXPECT_EQ(finding.at("line"), 4);
  EXPECT_EQ(finding.at("text"), json::parse(R"([[2, "<point>"], [3, "<line/>"], [4, "</GMD>"]])"));
}

TEST(ViewPage, AFileThatCannotBeReadGivesNoPage) {
  const TemporaryFiles files;
  EXPECT_THROW(viewPageOf(files.path("missing.xml")), cli::Failure);
  EXPECT_THROW(viewPageOf(files.folder()), cli::Failure);
}

TEST(ViewPage, TextsOfTheDocumentAreData) {
  const std::string hostile = "</script><script>alert(1)</script>\" ' & \xe2\x80\xae \xe2\x80\xa8 <!--";
  std::string attribute;
  for (const char character : hostile)
    attribute += character == '<'   ? "&lt;"
                 : character == '&' ? "&amp;"
                 : character == '"' ? "&quot;"
                                    : std::string(1, character);
  const ViewPage page = viewPageOfText(documentOf("<point name=\"" + attribute + "\" comment=\"" + attribute +
                                                  "\" center=\"0, 0, 0\"/><solidRef name=\"r\" template=\"" +
                                                  attribute + "\"/>"));
  EXPECT_EQ(page.document.at("elements").at("name").at(0), hostile);
  EXPECT_EQ(page.document.at("elements").at("fields").at(0).at(0), json({"comment", hostile}));
  EXPECT_EQ(page.html.find("<script>"), std::string::npos);
  EXPECT_EQ(page.html.find("<!--"), std::string::npos);
  EXPECT_EQ(page.html.find("\xe2\x80\xa8"), std::string::npos);
  std::size_t ends = 0;
  for (std::size_t at = page.html.find("</script"); at != std::string::npos;
       at = page.html.find("</script", at + 1))
    ++ends;
  EXPECT_EQ(ends, 1U);  // of the data; there is no mesh
}

TEST(ViewPage, TitleIsTheNameOfTheFile) {
#if defined(_WIN32)  // which has no such names
  const std::string name = "вал & втулка.xml";
  const std::string title = "вал &amp; втулка.xml";
#else
  const std::string name = "вал & <втулка>.xml";
  const std::string title = "вал &amp; &lt;втулка&gt;.xml";
#endif
  const ViewPage page = viewPageOfText(goodDocument, name);
  EXPECT_EQ(page.document.at("file"), name);
  EXPECT_NE(page.html.find("<title>\n" + title + "\n</title>"), std::string::npos);
}

TEST(ViewPage, HiddenElementsAreInItAndMarked) {
  const json page = viewPageOfText(documentOf(R"(<structure name="s" visible="false" color="RGB, 1, 300, 16">
<point name="in" center="1, 2, 3"/></structure><point name="out" center="4, 5, 6"/>)"))
                        .document;
  EXPECT_EQ(page.at("elements").at("visible"), json::parse("[1, 0, 1]"));
  EXPECT_EQ(page.at("elements").at("color"), json::parse(R"([null, "#01ff10", null])"));
  const json& items = page.at("items");
  for (std::size_t i = 0; i < 3; ++i) {
    const json name = page.at("elements").at("name").at(items.at("element").at(i).get<std::size_t>());
    EXPECT_EQ(items.at("visible").at(i), name == "out" ? 1 : 0);
    EXPECT_EQ(items.at("color").at(i), name == "out" ? json() : json("#01ff10"));
  }
  EXPECT_EQ(page.at("bounds"), json::parse(R"({"low": [4.0, 5.0, 6.0], "high": [4.0, 5.0, 6.0]})"));
}

TEST(ViewPage, PlacesTemplatesByTransforms) {
  const json page =
      viewPageOfText(documentOf(R"(<templateSolid name="t">)" + tetrahedron + R"(</templateSolid>
<solidRef name="moved" template="t" MCS="CS, 10, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1"/>
<solidRef name="mirrored" template="t" MCS="CS, 0, 0, 5, -1, 0, 0, 0, 1, 0, 0, 0, 1"/>)"))
          .document;
  const json& items = page.at("items");
  ASSERT_EQ(items.at("element").size(), 2U);
  EXPECT_EQ(page.at("shapes").at("kind").size(), 1U);
  EXPECT_EQ(items.at("shape"), json::parse("[0, 0]"));
  const auto name = [&](const char* column, std::size_t i) {
    return page.at("elements").at("name").at(items.at(column).at(i).get<std::size_t>());
  };
  EXPECT_EQ(name("element", 0), "moved");
  EXPECT_EQ(name("source", 0), "t");
  EXPECT_EQ(items.at("transform"),
            json::parse("[1.0, 0.0, 0.0, 10.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0,"
                        "-1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 5.0]"));
  EXPECT_EQ(page.at("bounds"), json::parse(R"({"low": [-1.0, 0.0, 0.0], "high": [11.0, 1.0, 6.0]})"));
}

TEST(ViewPage, ElementsOfOtherFilesAreNamed) {
  const TemporaryFiles files;
  files.put("other.xml",
            documentOf(
                R"(<template_structure name="t"><point name="вал" center="1, 2, 3"/></template_structure>)"));
  const json page =
      viewPageOf(
          files.put("page.xml", documentOf(R"(<structureRef name="r" template="t" file="other.xml"/>)")))
          .document;
  EXPECT_EQ(page.at("items").at("element"), json::parse("[0, -1]"));
  EXPECT_EQ(page.at("items").at("source"), json::parse("[-1, -1]"));
  EXPECT_EQ(page.at("items").at("other"), json::parse(R"({"1": ["point", "вал", "other.xml"]})"));
  EXPECT_EQ(page.at("bounds").at("low"), json::parse("[1.0, 2.0, 3.0]"));
}

TEST(ViewPage, PositionsAreExactFarFromTheOrigin) {
  const ViewPage page = viewPageOfText(documentOf(
      R"(<solid name="far" method="triangulation"><vertices>10000000, 0, 0; 10000000.25, 0, 0; 10000000, 0.25, 0; 9, 9, 9;</vertices>
<faces>0, 1, 2;</faces></solid>)"));
  EXPECT_EQ(page.document.at("shapes").at("origin"), json::parse("[10000000.125, 0.125, 0]"));
  const std::vector<DecodedMesh> meshes = decodedMeshes(page.glb);
  ASSERT_EQ(meshes.size(), 1U);
  EXPECT_EQ(meshes[0].positions,
            (std::vector<float>{-0.125F, -0.125F, 0, 0.125F, -0.125F, 0, -0.125F, 0.125F, 0}));
  EXPECT_EQ(meshes[0].indices, (std::vector<std::uint32_t>{0, 1, 2}));
}

TEST(ViewPage, WhatCannotBeDrawnIsLeftOut) {
  const ViewPage page = viewPageOfText(documentOf(
      R"(<point name="nowhere"/><point name="nan" center="nan, 0, 0"/>
<solid name="flat" method="sphere" center="0, 0, 0" radius="0"/>
<line name="inf" method="polyline"><vertices>0, 0, 0; inf, 0, 0;</vertices></line>
<line name="dot" method="polyline"><vertices>1, 1, 1;</vertices></line>
<solid name="half" method="triangulation"><vertices>0, 0, 0; 1, 0, 0; 0, 1, 0; nan, 0, 0;</vertices>
<faces>0, 1, 2; 0, 1, 3; 0, 1, 4;</faces></solid>
<solid name="none" method="triangulation"><vertices>0, 0, 0;</vertices><faces>0, 1, 2;</faces></solid>
<solid name="huge" method="triangulation"><vertices>-1e300, 0, 0; 1e300, 0, 0; 0, 1, 0;</vertices>
<faces>0, 1, 2;</faces></solid>)"));
  const json& shapes = page.document.at("shapes");
  EXPECT_EQ(shapes.at("kind"), json::parse(R"(["polyline", "mesh", "mesh", "mesh"])"));
  EXPECT_EQ(shapes.at("mesh"), json::parse("[0, 1, -1, 2]"));
  EXPECT_EQ(shapes.at("facets"), json::parse("[0, 3, 1, 1]"));
  const std::vector<DecodedMesh> meshes = decodedMeshes(page.glb);
  EXPECT_EQ(meshes.at(0).mode, 0);
  EXPECT_EQ(meshes.at(1).indices.size(), 3U);
  for (const float number : meshes.at(2).positions)
    EXPECT_TRUE(std::isfinite(number));
}

TEST(ViewPage, HasMassPropertiesByElement) {
  const json page =
      viewPageOfText(
          documentOf(
              R"(<point name="p" center="0"/><solid name="t" method="triangulation" MIP="MIP, 2, 0, 0, 0, 1, 1, 1, 0, 0, 0">)" +
              tetrahedron +
              R"(</solid><solid name="o" method="triangulation"><vertices>0, 0, 0; 1, 0, 0; 0, 1, 0;</vertices>
<faces>0, 1, 2;</faces></solid>)"))
          .document;
  const json& mass = page.at("elements").at("mass");
  EXPECT_EQ(mass.count("0"), 0U);
  EXPECT_EQ(mass.at("1").at("declared").at("mass"), 2.0);
  EXPECT_NEAR(mass.at("1").at("computed").at("volume").get<double>(), 1.0 / 6, 1e-15);
  EXPECT_TRUE(mass.at("1").at("reason").is_null());
  EXPECT_TRUE(mass.at("2").at("computed").is_null());
  EXPECT_EQ(mass.at("2").at("reason"), "The mesh is not closed: an edge has only one facet.");
}

TEST(ViewPage, HasFieldsAsTheFormatSpellsThem) {
  const json page =
      viewPageOfText(
          documentOf(
              R"(<solid name="s" method="sphere" center="1,2.5,3" radius="0.5" comment="c" inform="i" color="RGB,1,2,3" visible="0"
LCS="CS,1,2,3,1,0,0,0,1,0,0,0,1" MIP="MIP,1,0,0,0,1,1,1,0,0,0"/><solidRef name="r" template="t" file="" MCS="CS,1,2,3,1,0,0,0,1,0,0,0,1"/>)"))
          .document;
  EXPECT_EQ(page.at("elements").at("fields").at(0),
            json::parse(R"([["comment", "c"], ["inform", "i"], ["color", "RGB, 1, 2, 3"],
    ["visible", "false"], ["LCS", "CS, 1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1"], ["method", "sphere"], ["center", "1, 2.5, 3"],
    ["radius", "0.5"], ["MIP", "MIP, 1, 0, 0, 0, 1, 1, 1, 0, 0, 0"]])"));
  EXPECT_EQ(page.at("elements").at("fields").at(1),
            json::parse(R"([["template", "t"], ["MCS", "CS, 1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1"]])"));
  EXPECT_EQ(page.at("elements").at("system").at(0), json::parse("[1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1]"));
}

TEST(ViewPage, OfARealMeshTakesAQuarterOfTheDocument) {
  for (const char* const name : {"fandisk", "rocker-arm"}) {
    const std::string file = std::string(ZTCAD_TEST_REAL_DOCUMENTS) + "/" + name + ".xml";
    const std::size_t size = bytesOf(file).size();
    if (size == 0) GTEST_SKIP() << "the real documents are not there";
    EXPECT_LT(viewPageOf(file).html.size(), size / 4) << name;  // the viewer has 1 MB more
  }
}

TEST(PageText, NeedsItsThreePlaces) {
  const cli::PageText text("a<!--ztcad:title-->b<!--ztcad:document-->c<!--ztcad:scene-->d");
  EXPECT_EQ(text.beforeTitle(), "a");
  EXPECT_EQ(text.beforeDocument(), "b");
  EXPECT_EQ(text.beforeScene(), "c");
  EXPECT_EQ(text.end(), "d");
  EXPECT_THROW(cli::PageText("a<!--ztcad:title-->b<!--ztcad:scene-->"), cli::Failure);
}
