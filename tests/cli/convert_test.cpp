#include <gtest/gtest.h>
#include <ztCAD/ztCAD_c.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <sstream>

#include "program.h"
#include "random_seed.h"
#include "samples.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;
using Triangle = std::array<double, 9>;

const std::string tetrahedron = R"(solid first part
facet normal 0 0 0
outer loop
vertex 0 0 0
vertex 0 1 0
vertex 1 0 0
endloop
endfacet
facet normal 0 0 0
 outer loop
  vertex 0 0 0
  vertex 1 0 0
  vertex 0 0 1
 endloop
endfacet
facet normal 0 0 0
outer loop
vertex 1 0 0
vertex 0 1 0
vertex 0 0 1
endloop
endfacet
facet normal 0 0 0
outer loop
vertex 0 1 0
vertex 0 0 0
vertex 0 0 1
endloop
endfacet
endsolid first part
)";

/// A solid in a turned and moved structure, one in a template that is placed twice, a sphere, a line and a
/// point.
const std::string assembly = R"(<GMD>
<header majorVersion="2" minorVersion="1" inform=""/>
<point name="mark" center="7, 8, 9;" color="RGB, 0, 0, 255"/>
<line name="cable" method="polyline"><vertices>0, 0, 0; 0, 0, 2; 1, 0, 2;</vertices></line>
<solid name="ball" method="sphere" center="5, 0, 0;" radius="0.5"/>
<detailRef name="bolt one" template="bolt" MCS="CS, 10, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1"/>
<detailRef name="bolt two" template="bolt" MCS="CS, 0, 20, 0, 0, 1, 0, 0, 0, 1, 1, 0, 0"/>
<structure name="arm" LCS="CS, 1, 2, 3, 0, 1, 0, -1, 0, 0, 0, 0, 1" color="RGB, 200, 100, 7">
<solid name="plate" method="triangulation">
<vertices>0, 0, 0; 4, 0, 0; 0, 4, 0; 0, 0, 4;</vertices>
<faces>0, 2, 1; 0, 1, 3; 1, 2, 3; 2, 0, 3;</faces></solid>
</structure>
<template_detail name="bolt" MIP="MIP, 1, 0, 0, 0, 1, 1, 1, 0, 0, 0">
<solid name="head" method="triangulation" color="RGB, 1, 128, 255">
<vertices>0, 0, 0; 1, 0, 0; 0, 1, 0; 0, 0, 1;</vertices>
<faces>0, 2, 1; 0, 1, 3; 1, 2, 3; 2, 0, 3;</faces></solid>
</template_detail>
</GMD>
)";

/// The solids of a document as the library reads it.
struct Solid {
  std::string name;
  std::vector<std::uint32_t> colour;  // empty: none
  std::vector<double> mass;           // empty: none
  bool hasSystem = false;
  std::int32_t vertices = 0;
  std::int32_t facets = 0;
};

std::vector<Solid> solidsOf(const std::string& file) {
  const std::unique_ptr<ztCAD_GMDDocument, decltype(&ztCAD_endDocument)> document(
      ztCAD_loadDocument(file.c_str(), nullptr), &ztCAD_endDocument);
  std::vector<Solid> solids;
  for (std::int32_t i = 0; i < ztCAD_countInDoc(document.get(), ztCAD_ElementTriangle); ++i) {
    const ztCAD_Base* const element = ztCAD_getFromDoc(document.get(), ztCAD_ElementTriangle, i);
    Solid solid;
    std::array<char, 100> name{};
    ztCAD_getName(element, name.data(), name.size());
    solid.name = name.data();
    solid.colour.resize(3);
    if (!ztCAD_getColor(element, solid.colour.data())) solid.colour.clear();
    solid.mass.resize(10);
    if (ztCAD_getMIP(element, solid.mass.data(), 10) < 0) solid.mass.clear();
    solid.hasSystem = ztCAD_getLCS(element, nullptr, 0) == 12;
    solid.vertices = ztCAD_getVertexCount(ztCAD_getVertices(element));
    solid.facets = ztCAD_getFacetCount(ztCAD_getFaces(element));
    solids.push_back(solid);
  }
  return solids;
}

std::string binaryStl(const std::vector<Triangle>& triangles) {
  std::string bytes(80, 's');
  bytes.replace(0, 5, "solid");  // as some programs write
  const auto append = [&bytes](const auto& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
  };
  append(static_cast<std::uint32_t>(triangles.size()));
  for (const Triangle& triangle : triangles) {
    bytes.append(12, '\0');  // the normal
    for (const double number : triangle)
      append(static_cast<float>(number));
    bytes.append(2, '\0');
  }
  return bytes;
}

/// The triangles of a binary STL file, without their normals.
std::vector<Triangle> trianglesOf(const std::string& bytes) {
  std::uint32_t count = 0;
  std::memcpy(&count, bytes.data() + 80, sizeof count);
  EXPECT_EQ(bytes.size(), 84 + std::size_t{50} * count);
  std::vector<Triangle> triangles(count);
  for (std::size_t i = 0; i < count; ++i) {
    std::array<float, 9> numbers{};
    std::memcpy(numbers.data(), bytes.data() + 84 + 50 * i + 12, sizeof numbers);
    std::copy(numbers.begin(), numbers.end(), triangles[i].begin());
  }
  return triangles;
}

/// The triangles whose coordinates are integers, which single precision and six digits keep: each starts with
/// its least corner, and they are sorted.
std::vector<Triangle> wholeTriangles(const std::vector<Triangle>& triangles) {
  std::vector<Triangle> whole;
  for (Triangle triangle : triangles) {
    const auto isWhole = [](double number) { return std::abs(number - std::round(number)) < 1e-5; };
    if (!std::all_of(triangle.begin(), triangle.end(), isWhole)) continue;
    for (double& number : triangle)
      number = std::round(number) + 0.0;
    const auto turned = [&](int by) {
      Triangle other = triangle;
      std::rotate(other.begin(), other.begin() + 3 * by, other.end());
      return other;
    };
    whole.push_back(std::min({turned(0), turned(1), turned(2)}));
  }
  std::sort(whole.begin(), whole.end());
  return whole;
}

class Convert : public testing::Test {
 protected:
  ProgramRun convert(std::vector<std::string> arguments, const std::string& input = "") const {
    arguments.insert(arguments.begin(), "convert");
    return runProgram(arguments, {input, m_files.folder()});
  }

  /// A conversion that succeeds and prints nothing.
  void expectConversion(const std::vector<std::string>& arguments) const {
    const ProgramRun run = convert(arguments);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "");
  }

  std::vector<Solid> solidsIn(const std::string& name) const { return solidsOf(m_files.path(name)); }
  std::string content(const std::string& name) const { return bytesOf(m_files.path(name)); }

  const TemporaryFiles m_files;
};

}  // namespace

TEST_F(Convert, KeepsEveryTriangleOfAnStlFile) {
  std::mt19937_64 random(randomSeed());
  std::vector<Triangle> triangles;
  for (int i = 0; i < 5000; ++i) {
    Triangle triangle{};
    for (double& number : triangle)
      number = static_cast<double>(random() % 20) / 4 - 2;  // many are equal, and exact in six digits
    triangles.push_back(triangle);
    if (i % 100 == 0) triangles.push_back(triangle);                     // twice
    if (i % 100 == 1) triangles.push_back({1, 1, 1, 1, 1, 1, 2, 2, 2});  // without area
  }
  m_files.put("soup.stl", binaryStl(triangles));
  expectConversion({"soup.stl", "soup.xml"});
  const std::vector<Solid> solids = solidsIn("soup.xml");
  ASSERT_EQ(solids.size(), 1U);
  EXPECT_EQ(solids[0].name, "soup");
  EXPECT_EQ(solids[0].facets, static_cast<std::int32_t>(triangles.size()));
  EXPECT_LE(solids[0].vertices, 8000);
  expectConversion({"soup.xml", "again.stl"});
  EXPECT_EQ(trianglesOf(content("again.stl")), triangles);
  expectConversion({"soup.xml", "text.stl", "--to", "stl-text"});
  expectConversion({"text.stl", "binary.stl"});
  EXPECT_EQ(trianglesOf(content("binary.stl")), triangles);
}

TEST_F(Convert, JoinsEqualVertices) {
  m_files.put("part.stl", tetrahedron);
  expectConversion({"part.stl", "part.xml"});
  const std::vector<Solid> solids = solidsIn("part.xml");
  ASSERT_EQ(solids.size(), 1U);
  EXPECT_EQ(solids[0].name, "first_part");
  EXPECT_EQ(solids[0].vertices, 4);
  EXPECT_EQ(solids[0].facets, 4);
  EXPECT_TRUE(solids[0].mass.empty());
  EXPECT_EQ(runProgram({"check", "part.xml", "--level", "note"}, {"", m_files.folder()}).output, "");
}

TEST_F(Convert, JoinsNearVerticesOnRequest) {
  std::string loose = tetrahedron;
  loose.replace(loose.rfind("vertex 0 0 0"), 12, "vertex 1e-3 0 0");
  m_files.put("loose.stl", loose);
  expectConversion({"loose.stl", "loose.xml"});
  EXPECT_EQ(solidsIn("loose.xml").at(0).vertices, 5);
  expectConversion({"loose.stl", "joined.xml", "--join", "0.002"});
  EXPECT_EQ(solidsIn("joined.xml").at(0).vertices, 4);
  const ProgramRun run = convert({"loose.stl", "crumb.xml", "--join", "3"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "ztcad: loose.stl: removed by --join: 4 facets\n");
}

TEST_F(Convert, ReadsSeveralSolidsOfATextFile) {
  std::string upper = tetrahedron;
  std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
  m_files.put("two.stl", tetrahedron + upper);
  expectConversion({"two.stl", "two.xml"});
  const std::vector<Solid> solids = solidsIn("two.xml");
  ASSERT_EQ(solids.size(), 2U);
  EXPECT_EQ(solids[0].name, "first_part");
  EXPECT_EQ(solids[1].name, "FIRST_PART");
  EXPECT_EQ(solids[1].facets, 4);
}

TEST_F(Convert, ScalesAndNames) {
  m_files.put("part.stl", tetrahedron);
  expectConversion({"part.stl", "part.xml", "--scale", "25.4", "--name", "bracket"});
  EXPECT_EQ(solidsIn("part.xml").at(0).name, "bracket");
  const json info =
      onlyDocument(runProgram({"info", "part.xml", "--format", "json"}, {"", m_files.folder()}));
  EXPECT_EQ(info.at("box").at("max"), json::parse("[25.4, 25.4, 25.4]"));
  EXPECT_EQ(info.at("header").at("inform"), "converted from part.stl");
  m_files.put("two.stl", tetrahedron + tetrahedron);
  expectConversion({"two.stl", "two.xml", "--name", "leg"});
  EXPECT_EQ(solidsIn("two.xml").at(0).name, "leg_1");
  EXPECT_EQ(solidsIn("two.xml").at(1).name, "leg_2");
  expectConversion({"two.xml", "small.stl", "--scale", "0.5"});
  EXPECT_EQ(trianglesOf(content("small.stl")).at(1), (Triangle{0, 0, 0, 0.5, 0, 0, 0, 0, 0.5}));
}

TEST_F(Convert, GivesClosedSolidsMassData) {
  m_files.put("part.stl", tetrahedron);
  expectConversion({"part.stl", "part.xml", "--density", "6", "--scale", "2"});
  const std::vector<double> mass = solidsIn("part.xml").at(0).mass;
  ASSERT_EQ(mass.size(), 10U);
  EXPECT_DOUBLE_EQ(mass[0], 8);  // 6 * 2^3 / 6
  EXPECT_DOUBLE_EQ(mass[1], 0.5);
  EXPECT_DOUBLE_EQ(mass[4], 2.4);  // 8 * 2^2 * 3/40
  EXPECT_DOUBLE_EQ(mass[7], 0.4);  // 8 * 2^2 / 80
  std::string open = tetrahedron;
  const std::size_t last = open.rfind("facet normal");
  open.erase(last, open.rfind("endfacet") + 9 - last);
  m_files.put("open.stl", open);
  const ProgramRun run = convert({"open.stl", "open.xml", "--density", "6"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(
      run.errors,
      "ztcad: open.stl: no mass data: solid \"first_part\": The mesh is not closed: an edge has only one facet.\n");
  EXPECT_TRUE(solidsIn("open.xml").at(0).mass.empty());
}

/// What docs/cli.md says that each format keeps.
struct Kept {
  const char* format;
  bool names;
  bool colours;
  bool transforms;
  bool linesAndPoints;
};

class ConvertThereAndBack : public Convert, public testing::WithParamInterface<Kept> {};

TEST_P(ConvertThereAndBack, KeepsWhatThePageSays) {
  const Kept& kept = GetParam();
#if !defined(ZTCAD_TEST_HAS_ASSIMP)
  if (std::string(kept.format).rfind("stl", 0) != 0) GTEST_SKIP() << "this system reads STL files only";
#endif
  m_files.put("assembly.xml", assembly);
  const std::string mesh = std::string("assembly.") + kept.format;
  const ProgramRun run = convert({"assembly.xml", mesh, "--to", kept.format});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, kept.linesAndPoints ? ""
                                            : std::string("ztcad: assembly.xml: the format ") + kept.format +
                                                  " has no place for 1 point and 1 polyline\n");
  expectConversion({mesh, "back.xml", "--from", kept.format});

  // the same triangles at the same places
  convert({"assembly.xml", "expected.stl"});
  convert({"back.xml", "back.stl"});
  const std::vector<Triangle> back = trianglesOf(content("back.stl"));
  EXPECT_EQ(back.size(), 1280U + 3 * 4);  // those of the sphere, and of three solids
  const std::vector<Triangle> expected = wholeTriangles(trianglesOf(content("expected.stl")));
  EXPECT_EQ(expected.size(), 3U * 4);
  EXPECT_EQ(wholeTriangles(back), expected);

  std::vector<std::string> names;
  std::vector<std::string> colours;
  bool hasSystem = false;
  for (const Solid& solid : solidsIn("back.xml")) {
    names.push_back(solid.name.substr(0, solid.name.find('_')));  // without the number of the second bolt
    for (const std::uint32_t component : solid.colour)
      colours.push_back(std::to_string(component));
    hasSystem = hasSystem || solid.hasSystem;
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names == (std::vector<std::string>{"ball", "head", "head", "plate"}), kept.names)
      << testing::PrintToString(names);
  const std::string joined = testing::PrintToString(colours);
  EXPECT_EQ(joined.find(R"("1", "128", "255")") != std::string::npos &&
                joined.find(R"("200", "100", "7")") != std::string::npos,
            kept.colours)
      << joined;
  EXPECT_EQ(hasSystem, kept.transforms);
  const json info =
      onlyDocument(runProgram({"info", "back.xml", "--format", "json"}, {"", m_files.folder()}));
  EXPECT_EQ(info.at("elements").count("line") + info.at("elements").count("point"),
            kept.linesAndPoints ? 2U : 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, ConvertThereAndBack,
    testing::Values(Kept{"stl", false, false, false, false}, Kept{"stl-text", true, false, false, false},
                    Kept{"obj", true, true, false, true}, Kept{"ply", false, false, false, false},
                    Kept{"ply-text", false, false, false, false}, Kept{"glb", true, true, true, true},
                    Kept{"3mf", false, true, true, false}),
    [](const auto& kept) {
      std::string name = kept.param.format;
      std::replace(name.begin(), name.end(), '-', '_');
      return name;
    });

TEST_F(Convert, WritesEachPlacedItemAsANamedNode) {
  m_files.put("assembly.xml", assembly);
  EXPECT_EQ(convert({"assembly.xml", "assembly.glb"}).exitCode, 0);
  const std::string bytes = content("assembly.glb");
  std::uint32_t length = 0;
  std::memcpy(&length, bytes.data() + 12, sizeof length);
  const json scene = json::parse(bytes.substr(20, length));
  std::vector<std::string> names;
  std::size_t placed = 0;
  for (const json& node : scene.at("nodes")) {
    names.push_back(node.at("name").get<std::string>());
    placed += node.count("mesh");
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"arm", "ball", "bolt one", "bolt two", "cable", "head", "head",
                                             "mark", "plate"}));
  EXPECT_EQ(placed, 6U);
  EXPECT_EQ(scene.at("meshes").size(), 5U);  // both bolts share one
}

TEST_F(Convert, FailsForFilesThatAreNoMesh) {
  std::string shortened = binaryStl({Triangle{}, Triangle{}});
  shortened.pop_back();
  const struct Row {
    std::string name;
    std::string content;
    const char* problem;
  } rows[] = {
      {"empty.stl", "", "the file has no triangles"},
      {"short.stl", std::string(80, ' ') + std::string("\2\0\0\0", 4) + std::string(60, '\0'),
       "the file ends after 1 of 2 facets"},
      {"word.stl", "solid a\nfacet\nouter loop\nvertex 0 0 zero\n", "line 4: \"zero\" is no number"},
      {"cut.stl", "solid a\nfacet\nouter loop\nvertex 0 0 0\n", "line 5: the file ends in a facet"},
      {"two.stl", "solid a\nfacet\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nendloop",
       "line 6: a facet of 2 vertices"},
      {"other.stl", "solid a\nfacet normal 0 0 0\n<html>\n", "line 3: unexpected \"<html>\""},
      {"part.step", tetrahedron, "the extension is of no format that is known; give one with --from"},
  };
  m_files.put("out.xml", "kept");
  for (const Row& row : rows) {
    m_files.put(row.name, row.content);
    const ProgramRun run = convert({row.name, "out.xml"});
    EXPECT_EQ(run.exitCode, 2) << row.name;
    EXPECT_EQ(run.errors, "ztcad: " + row.name + ": " + row.problem + "\n");
    EXPECT_EQ(content("out.xml"), "kept");
  }
  EXPECT_EQ(convert({"missing.stl", "out.xml"}).errors, "ztcad: missing.stl: no such file\n");
  EXPECT_EQ(convert({"missing.xml", "out.stl"}).errors, "ztcad: missing.xml: no such file\n");
  EXPECT_EQ(convert({"short.stl", "out.glb"}).exitCode, 2);
  EXPECT_EQ(m_files.names().size(), 8U);  // nothing was written
}

TEST_F(Convert, KeepsAnEarlierFileThatCannotBeReplaced) {
  m_files.put("good.xml", goodDocument);
  m_files.put("out.stl", "kept");
  const ProgramRun run = convert({"good.xml", "out.stl"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.errors, "ztcad: good.xml: there is nothing that the format stl can hold\n");
  EXPECT_EQ(content("out.stl"), "kept");
  m_files.put("part.stl", tetrahedron);
  EXPECT_EQ(convert({"part.stl", "missing/out.ply"}).exitCode, 2);
}

TEST_F(Convert, LeavesOutWhatIsInvalid) {
  m_files.put("bad.xml", R"(<GMD><header majorVersion="2" minorVersion="1" inform=""/>
<solid name="s" method="triangulation"><vertices>0, 0, 0; 1, 0, 0; 0, 1, 0; nan, 0, 0;</vertices>
<faces>0, 1, 2; 0, 1, 3; 0, 1, 4;</faces></solid></GMD>)");
  const ProgramRun run = convert({"bad.xml", "bad.stl"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.errors.find("ztcad: bad.xml: left out, because an index or a number is invalid: 2 facets\n"),
            std::string::npos)
      << run.errors;
  EXPECT_EQ(trianglesOf(content("bad.stl")).size(), 1U);
}

TEST_F(Convert, UsesStandardStreams) {
  const ProgramRun document = convert({"-", "-", "--from", "stl", "--to", "xml"}, tetrahedron);
  EXPECT_EQ(document.exitCode, 0);
  EXPECT_NE(document.output.find("name=\"first_part\""), std::string::npos);
  const ProgramRun mesh = convert({"-", "-", "--from", "xml", "--to", "stl"}, document.output);
  EXPECT_EQ(mesh.exitCode, 0);
  EXPECT_EQ(trianglesOf(mesh.output).size(), 4U);
}

TEST_F(Convert, RefusesOptionsThatDoNotFit) {
  m_files.put("a.xml", goodDocument);
  m_files.put("a.stl", tetrahedron);
  const std::pair<std::vector<std::string>, const char*> rows[] = {
      {{"a.xml", "b.xml"}, "both files are documents"},
      {{"a.xml", "b.stl", "--join", "1"}, "--join is for mesh files"},
      {{"a.xml", "b.stl", "--name", "x"}, "--name is for mesh files"},
      {{"a.stl", "b.ply", "--density", "1"}, "--density is for documents"},
      {{"a.stl", "b.xml", "--scale", "0"}, "--scale: \"0\" is no number above 0"},
      {{"a.stl", "-"}, "give one with --to"},
      {{"a.stl", "b.xml", "--from", "step"}, "xml|stl|stl-text|obj"}};
  for (const auto& [arguments, problem] : rows) {
    const ProgramRun run = convert(arguments);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find(problem), std::string::npos) << run.errors;
  }
}

TEST_F(Convert, TakesCyrillicFileNames) {
  m_files.put("ось.stl", tetrahedron);
  expectConversion({"ось.stl", "вал.xml"});
  expectConversion({"вал.xml", "вал.glb"});
  EXPECT_EQ(content("вал.glb").substr(0, 4), "glTF");
}
