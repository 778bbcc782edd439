#include <gtest/gtest.h>
#include <ztCAD/inspect.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "program.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

std::string pageFile(const std::string& rule) {
  return std::string(ZTCAD_TEST_PAGES) + "/rules/" + rule + ".md";
}

/// The rules of both libraries, by their names.
std::map<std::string, const ztCAD_Rule*> allRules() {
  std::map<std::string, const ztCAD_Rule*> rules;
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i)
    rules.emplace(ztCAD_ruleAt(i)->name, ztCAD_ruleAt(i));
  for (std::int32_t i = 0; i < ztCADInspect_ruleCount(); ++i)
    rules.emplace(ztCADInspect_ruleAt(i)->name, ztCADInspect_ruleAt(i));
  EXPECT_EQ(rules.size(), static_cast<std::size_t>(ztCAD_ruleCount() + ztCADInspect_ruleCount()));
  return rules;
}

}  // namespace

TEST(Rules, AreListedWithSeverityAndSentence) {
  const ProgramRun run = runProgram({"rules"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  const auto rules = allRules();
  EXPECT_EQ(static_cast<std::size_t>(std::count(run.output.begin(), run.output.end(), '\n')), rules.size());
  for (const auto& [name, rule] : rules) {
    EXPECT_NE(run.output.find(name + " "), std::string::npos) << name;
    EXPECT_NE(run.output.find(std::string(rule->sentence) + "\n"), std::string::npos) << name;
  }
}

TEST(Rules, AreListedInJson) {
  const ProgramRun run = runProgram({"rules", "--format", "json"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_TRUE(validates(run.output, schemaOf("rules")));
  const auto listed = nlohmann::json::parse(run.output).at("rules");
  const auto rules = allRules();
  ASSERT_EQ(listed.size(), rules.size());
  std::size_t i = 0;
  for (const auto& [name, rule] : rules) {
    EXPECT_EQ(listed.at(i).at("name"), name);
    EXPECT_EQ(listed.at(i++).at("sentence"), rule->sentence);
  }
}

TEST(Rules, HaveTheirPagesInTheProgram) {
  for (const auto& [name, rule] : allRules()) {
    const std::string page = bytesOf(pageFile(name));
    const ProgramRun run = runProgram({"rules", name});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, page);
    const ProgramRun json = runProgram({"rules", name, "--format", "json"});
    EXPECT_TRUE(validates(json.output, schemaOf("rules")));
    EXPECT_EQ(nlohmann::json::parse(json.output).at("rules").at(0).at("page"), page);
  }
}
