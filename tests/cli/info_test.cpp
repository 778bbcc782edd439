#include <gtest/gtest.h>

#include <algorithm>

#include "program.h"
#include "samples.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;

const char* const mechanism = R"(<GMD>
<header majorVersion="2" minorVersion="1" inform="four bolts"/>
<templatePoint name="mark" center="9, 9, 9;"/>
<point name="origin" center="-1, 0, 2.5;"/>
<pointRef name="here" template="mark"/>
<elementMIP name="load" method="MIP" MIP="MIP, 0.5, 0, 0, 0, 1, 1, 1, 0, 0, 0"/>
<solid name="ball" method="sphere" center="0, 0, 0;" radius="3"/>
<detail name="plate" MIP="MIP, 2, 0, 0, 0, 1, 1, 1, 0, 0, 0">
<solid name="skin" method="triangulation" MIP="MIP, 100, 0, 0, 0, 1, 1, 1, 0, 0, 0">
<vertices>0, 0, 0; 4, 0, 0; 0, 4, 0;</vertices><faces>0, 1, 2;</faces></solid>
</detail>
<detailRef name="bolt 1" template="bolt"/>
<detailRef name="bolt 2" template="bolt"/>
<detailRef name="elsewhere" template="bolt" file="bolts.xml"/>
<detailRef name="nowhere" template="nut"/>
<structure name="arm" LCS="">
<point name="a" center="0, 0, 0;"/>
<structure name="hand" LCS=""><structureRef name="finger" template="finger"/></structure>
</structure>
<template_detail name="bolt" MIP="MIP, 0.25, 0, 0, 0, 1, 1, 1, 0, 0, 0"/>
<template_structure name="finger"><detailRef name="bolt 3" template="bolt"/>
<structureRef name="ring" template="finger"/></template_structure>
</GMD>
)";

}  // namespace

TEST(Info, DescribesADocumentInJson) {
  const TemporaryFiles files;
  files.put("mechanism.xml", mechanism);
  const ProgramRun run = runProgram({"info", "mechanism.xml", "--format", "json"}, {"", files.folder()});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(validates(run.output, schemaOf("info")));
  EXPECT_EQ(onlyDocument(run), json::parse(R"({
    "file": "mechanism.xml", "code": 0, "fault": false,
    "header": {"majorVersion": 2, "minorVersion": 1, "inform": "four bolts", "state": "unknown"},
    "elements": {"point": 2, "sphere": 1, "solid": 1, "mass-inertia-element": 1, "detail": 1, "structure": 2,
                 "point-reference": 1, "detail-reference": 5, "structure-reference": 2,
                 "template-point": 1, "template-detail": 1, "template-structure": 1},
    "vertices": 3, "facets": 1,
    "box": {"min": [-3.0, -3.0, -3.0], "max": [9.0, 9.0, 9.0]},
    "mass": {"declared": 3.25, "elements": 5, "unresolved": 3}})"));
}

TEST(Info, DescribesADocumentAsText) {
  const TemporaryFiles files;
  files.put("good.xml", goodDocument);
  const ProgramRun run = runProgram({"info", "good.xml"}, {"", files.folder()});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(run.output,
            "good.xml\n"
            "  version                 2.1\n"
            "  inform                  good\n"
            "  point                   1\n"
            "  vertices                0\n"
            "  facets                  0\n"
            "  box                     0, 0, 0 to 0, 0, 0\n");
}

TEST(Info, ListsEveryElementInATree) {
  const TemporaryFiles files;
  files.put("mechanism.xml", mechanism);
  const ProgramRun text = runProgram({"info", "--tree", "mechanism.xml"}, {"", files.folder()});
  EXPECT_NE(text.output.find("    structure \"arm\"\n"
                             "      point \"a\"\n"
                             "      structure \"hand\"\n"
                             "        structure-reference \"finger\"\n"),
            std::string::npos)
      << text.output;
  const ProgramRun run =
      runProgram({"info", "--tree", "--format", "json", "mechanism.xml"}, {"", files.folder()});
  EXPECT_TRUE(validates(run.output, schemaOf("info")));
  const json tree = onlyDocument(run).at("tree");
  ASSERT_EQ(tree.size(), 13U);
  const auto arm =
      std::find_if(tree.begin(), tree.end(), [](const json& element) { return element.at("name") == "arm"; });
  ASSERT_NE(arm, tree.end());
  EXPECT_EQ(arm->at("elements").at(1).at("elements").size(), 1U);
}

TEST(Info, TakesAnEmptyDocument) {
  const ProgramRun run = runProgram({"info", "-", "--tree", "--format", "json"}, {"<GMD/>"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(validates(run.output, schemaOf("info")));
  EXPECT_EQ(onlyDocument(run), json::parse(R"({"file": "-", "code": 0, "fault": false,
    "header": {"majorVersion": null, "minorVersion": null, "inform": "", "state": "unknown"},
    "elements": {}, "vertices": 0, "facets": 0, "box": null,
    "mass": {"declared": null, "elements": 0, "unresolved": 0}, "tree": []})"));
}

TEST(Info, SaysOfADocumentWithErrorsThatItIsNotWell) {
  const ProgramRun run = runProgram({"info", "-"}, {badDocument});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.output.find("not well; 'ztcad check' says why"), std::string::npos);
}

TEST(Info, FailsForAFileThatDoesNotLoad) {
  const TemporaryFiles files;
  files.put("broken.xml", brokenDocument);
  files.put("good.xml", goodDocument);
  const ProgramRun run =
      runProgram({"info", "--format", "json", "missing.xml", "broken.xml", "good.xml"}, {"", files.folder()});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_TRUE(validates(run.output, schemaOf("info")));
  const json documents = json::parse(run.output).at("documents");
  EXPECT_TRUE(documents.at(0).at("code").is_null());
  EXPECT_EQ(documents.at(0).at("problem"), "no such file");
  EXPECT_EQ(documents.at(1).at("code"), 110);
  EXPECT_EQ(documents.at(2).at("code"), 0);
  EXPECT_NE(run.errors.find("ztcad: missing.xml: no such file\n"), std::string::npos);
}
