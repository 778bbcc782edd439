#include <gtest/gtest.h>

#include "program.h"
#include "samples.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;

/// A box of 2 x 2 x 3, closed.
const std::string box =
    R"(<vertices>0, 0, 0; 2, 0, 0; 2, 2, 0; 0, 2, 0; 0, 0, 3; 2, 0, 3; 2, 2, 3; 0, 2, 3;</vertices>
<faces>0, 2, 1; 0, 3, 2; 4, 5, 6; 4, 6, 7;
0, 1, 5; 0, 5, 4; 1, 2, 6; 1, 6, 5; 2, 3, 7; 2, 7, 6; 3, 0, 4; 3, 4, 7;</faces>)";

/// A declared box, an open mesh, and a detail at x = 10 with a box that declares nothing.
const std::string document = R"(<GMD><header majorVersion="2" minorVersion="1" inform=""/>
<solid name="block" method="triangulation" MIP="MIP, 48, 1, 1, 1.5, 50, 50, 32, 0, 0, 0">)" +
                             box +
                             R"(</solid>
<detail name="part" MIP="MIP, 5, 0, 0, 0, 1, 1, 1, 0, 0, 0" LCS="CS, 10, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1">
<solid name="core" method="triangulation">)" +
                             box + R"(</solid></detail></GMD>)";

class Mass : public testing::Test {
 protected:
  json mass(const std::string& text, const std::vector<std::string>& options) const {
    m_files.put("m.xml", text);
    std::vector<std::string> arguments{"mass", "m.xml", "--format", "json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramRun run = runProgram(arguments, {"", m_files.folder()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(validates(run.output, schemaOf("mass")));
    return json::parse(run.output);
  }

  const TemporaryFiles m_files;
};

}  // namespace

TEST_F(Mass, ComparesDeclaredAndComputedData) {
  const json report = mass(document, {"--density", "4"});
  EXPECT_EQ(report.at("file"), "m.xml");
  EXPECT_EQ(report.at("density"), 4.0);
  ASSERT_EQ(report.at("elements").size(), 3U);
  EXPECT_EQ(report.at("elements").at(0), json::parse(R"({
    "path": "/GMD/solid[1]", "kind": "solid", "name": "block",
    "declared": {"mass": 48.0, "center": [1.0, 1.0, 1.5],
                 "inertia": [[50.0, 0.0, 0.0], [0.0, 50.0, 0.0], [0.0, 0.0, 32.0]]},
    "computed": {"mass": 48.0, "volume": 12.0, "area": 32.0, "center": [1.0, 1.0, 1.5],
                 "inertia": [[52.0, 0.0, 0.0], [0.0, 52.0, 0.0], [0.0, 0.0, 32.0]]},
    "reason": null})"));
  const json part = report.at("elements").at(1);
  EXPECT_EQ(part.at("path"), "/GMD/detail[1]");
  EXPECT_EQ(part.at("declared").at("mass"), 5.0);
  EXPECT_EQ(part.at("computed").at("mass"), 48.0);
  EXPECT_EQ(part.at("computed").at("center"), json::parse("[1.0, 1.0, 1.5]"));  // in its own frame
  EXPECT_EQ(report.at("elements").at(2).at("path"), "/GMD/detail[1]/solid[1]");
  EXPECT_TRUE(report.at("elements").at(2).at("declared").is_null());
  EXPECT_EQ(report.at("total").at("declared").at("mass"), 53.0);
  EXPECT_EQ(report.at("total").at("computed").at("mass"), 96.0);
  EXPECT_EQ(report.at("total").at("computed").at("center"),
            json::parse("[6.0, 1.0, 1.5]"));  // in the document's
}

TEST_F(Mass, WithoutADensityIsPerUnitOfDensity) {
  const json report = mass(document, {});
  EXPECT_TRUE(report.at("density").is_null());
  const json computed = report.at("elements").at(0).at("computed");
  EXPECT_EQ(computed.count("mass"), 0U);
  EXPECT_EQ(computed.at("volume"), 12.0);
  EXPECT_EQ(computed.at("inertia").at(0).at(0), 13.0);
}

TEST_F(Mass, SaysWhyNothingWasComputed) {
  std::string open = document;
  open.replace(open.find("0, 2, 1; "), 9, "");
  const json report = mass(open, {"--density", "4"});
  EXPECT_TRUE(report.at("elements").at(0).at("computed").is_null());
  EXPECT_EQ(report.at("elements").at(0).at("reason"), "The mesh is not closed: an edge has only one facet.");
  EXPECT_TRUE(report.at("total").at("computed").is_null());
}

TEST_F(Mass, OfAnEmptyDocumentIsEmpty) {
  const json report = mass("<GMD/>", {});
  EXPECT_TRUE(report.at("elements").empty());
  EXPECT_TRUE(report.at("total").at("computed").is_null());
}

TEST_F(Mass, WritesTheComputedData) {
  mass(document, {"--density", "2", "--write", "out.xml"});
  const std::string saved = textBytesOf(m_files.path("out.xml"));
  std::size_t count = 0;
  for (std::size_t i = saved.find("MIP, 24"); i != std::string::npos; i = saved.find("MIP, 24", i + 1))
    ++count;
  EXPECT_EQ(count, 3U) << saved;
  const json again = mass(saved, {"--density", "2"});
  for (const json& element : again.at("elements"))
    EXPECT_EQ(element.at("declared").at("inertia"), element.at("computed").at("inertia"));
}

TEST_F(Mass, FailsForAFileThatDoesNotLoad) {
  m_files.put("broken.xml", brokenDocument);
  for (const char* file : {"missing.xml", "broken.xml"}) {
    const ProgramRun run = runProgram({"mass", file}, {"", m_files.folder()});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors.rfind(std::string("ztcad: ") + file + ": ", 0), 0U) << run.errors;
  }
}

TEST_F(Mass, SaysThatADocumentHasErrors) {
  const ProgramRun run = runProgram({"mass", "-"}, {badDocument});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.errors.find("has errors"), std::string::npos);
}
