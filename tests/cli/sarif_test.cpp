#include <gtest/gtest.h>
#include <ztCAD/inspect.h>

#include "program.h"
#include "samples.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;

/// The only run of a report about files of a folder.
json sarif(const TemporaryFiles& files, std::vector<std::string> arguments, int exitCode) {
  arguments.insert(arguments.begin(), {"check", "--format", "sarif"});
  const ProgramRun run = runProgram(arguments, {"", files.folder()});
  EXPECT_EQ(run.exitCode, exitCode);
  EXPECT_TRUE(validates(run.output, ZTCAD_TEST_SARIF_SCHEMA));
  return json::parse(run.output).at("runs").at(0);
}

}  // namespace

TEST(Sarif, HasAResultForEachFinding) {
  const TemporaryFiles files;
  files.put("the bad.xml", badDocument);
  const json run = sarif(files, {"."}, 1);
  ASSERT_EQ(run.at("results").size(), 2U);
  const json& result = run.at("results").at(0);
  EXPECT_EQ(result.at("ruleId"), "missing-centre");
  EXPECT_EQ(result.at("level"), "error");
  EXPECT_EQ(result.at("message").at("text"), "The point \"hinge\" has no centre.");
  EXPECT_EQ(result.at("locations").at(0), json::parse(R"({
    "physicalLocation": {"artifactLocation": {"uri": "the%20bad.xml"},
                         "region": {"startLine": 4, "startColumn": 1, "endLine": 4, "endColumn": 7}},
    "logicalLocations": [{"fullyQualifiedName": "/GMD/point[2]", "kind": "element", "name": "hinge"}]})"));
  EXPECT_EQ(run.at("columnKind"), "unicodeCodePoints");
  EXPECT_EQ(run.at("invocations").at(0).at("executionSuccessful"), true);
  EXPECT_EQ(run.at("invocations").at(0).at("exitCode"), 1);
}

TEST(Sarif, DescribesEveryRule) {
  const TemporaryFiles files;
  files.put("bad.xml", badDocument);
  const json run = sarif(files, {"bad.xml", "--level", "note"}, 1);
  const json& rules = run.at("tool").at("driver").at("rules");
  ASSERT_EQ(rules.size(), static_cast<std::size_t>(ztCAD_ruleCount() + ztCADInspect_ruleCount()));
  for (const json& rule : rules) {
    const auto name = rule.at("id").get<std::string>();
    EXPECT_EQ(rule.at("help").at("markdown"),
              bytesOf(std::string(ZTCAD_TEST_PAGES) + "/rules/" + name + ".md"));
    EXPECT_EQ(rule.at("properties").at("page"), "docs/rules/" + name + ".md#" + name);
  }
  for (const json& result : run.at("results"))
    EXPECT_EQ(rules.at(result.at("ruleIndex").get<std::size_t>()).at("id"), result.at("ruleId"));
}

TEST(Sarif, NotifiesOfFilesThatCannotBeRead) {
  const TemporaryFiles files;
  const json run = sarif(files, {"missing.xml"}, 2);
  EXPECT_TRUE(run.at("results").empty());
  const json& invocation = run.at("invocations").at(0);
  EXPECT_EQ(invocation.at("executionSuccessful"), false);
  const json& notification = invocation.at("toolExecutionNotifications").at(0);
  EXPECT_EQ(notification.at("level"), "error");
  EXPECT_EQ(notification.at("message").at("text"), "no such file");
  EXPECT_EQ(notification.at("locations").at(0).at("physicalLocation").at("artifactLocation").at("uri"),
            "missing.xml");
}

TEST(Sarif, NotifiesOfWhatItOmits) {
  const TemporaryFiles files;
  files.put("bad.xml", badDocument);
  const json run = sarif(files, {"bad.xml", "--max", "0"}, 1);
  EXPECT_TRUE(run.at("results").empty());
  EXPECT_EQ(run.at("invocations").at(0).at("toolExecutionNotifications").size(), 1U);
}

TEST(Sarif, HasAtMostAsManyResultsAsConsumersTake) {
  const TemporaryFiles files;
  std::string document = "<GMD><header majorVersion=\"2\" minorVersion=\"1\" inform=\"\"/>";
  for (int i = 0; i < 25010; ++i)
    document += "<bracket/>";
  files.put("many.xml", document + "</GMD>");
  const json run = sarif(files, {"many.xml"}, 0);
  EXPECT_EQ(run.at("results").size(), 25000U);
  EXPECT_EQ(run.at("invocations").at(0).at("toolExecutionNotifications").at(0).at("message").at("text"),
            "Results beyond the first 25000 are left out: 10");
}

TEST(Sarif, OfAGoodDocumentHasNoResult) {
  const TemporaryFiles files;
  files.put("good.xml", goodDocument);
  EXPECT_TRUE(sarif(files, {"good.xml"}, 0).at("results").empty());
}
