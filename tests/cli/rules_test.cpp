#include <gtest/gtest.h>
#include <ztCAD/ztCAD_c.h>

#include <filesystem>

#include "program.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

std::string pageFile(const std::string& rule) {
  return std::string(ZTCAD_TEST_PAGES) + "/rules/" + rule + ".md";
}

}  // namespace

TEST(Rules, AreListedWithSeverityAndSentence) {
  const ProgramRun run = runProgram({"rules"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), ztCAD_ruleCount());
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i) {
    const ztCAD_Rule& rule = *ztCAD_ruleAt(i);
    EXPECT_NE(run.output.find(std::string(rule.name) + " "), std::string::npos) << rule.name;
    EXPECT_NE(run.output.find(std::string(rule.sentence) + "\n"), std::string::npos) << rule.name;
  }
}

TEST(Rules, AreListedInJson) {
  const ProgramRun run = runProgram({"rules", "--format", "json"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(validates(run.output, schemaOf("rules")));
  const auto rules = nlohmann::json::parse(run.output).at("rules");
  ASSERT_EQ(rules.size(), static_cast<std::size_t>(ztCAD_ruleCount()));
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i) {
    EXPECT_EQ(rules.at(static_cast<std::size_t>(i)).at("name"), ztCAD_ruleAt(i)->name);
    EXPECT_EQ(rules.at(static_cast<std::size_t>(i)).at("sentence"), ztCAD_ruleAt(i)->sentence);
  }
}

TEST(Rules, HaveTheirPagesInTheProgram) {
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i) {
    const std::string rule = ztCAD_ruleAt(i)->name;
    const ProgramRun run = runProgram({"rules", rule});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, bytesOf(pageFile(rule)));
    const ProgramRun json = runProgram({"rules", rule, "--format", "json"});
    EXPECT_TRUE(validates(json.output, schemaOf("rules")));
    EXPECT_EQ(nlohmann::json::parse(json.output).at("rules").at(0).at("page"), bytesOf(pageFile(rule)));
  }
}
