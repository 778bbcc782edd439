#include <gtest/gtest.h>

#include <filesystem>

#include "program.h"
#include "samples.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

/// A folder with a good, a bad and a broken document.
class Check : public testing::Test {
 protected:
  ProgramRun check(Words arguments, const std::string& input = "") const {
    arguments.insert(arguments.begin(), "check");
    return runProgram(arguments, {input, m_files.folder()});
  }
  json report(Words arguments, const std::string& input = "") const {
    arguments.insert(arguments.end(), {"--format", "json"});
    const ProgramRun run = check(arguments, input);
    EXPECT_TRUE(validates(run.output, schemaOf("check")));
    return json::parse(run.output);
  }

  TemporaryFiles m_files;
  const std::string m_good = m_files.put("good.xml", goodDocument);
  const std::string m_bad = m_files.put("bad.xml", badDocument);
  const std::string m_broken = m_files.put("broken.xml", brokenDocument);
};

std::string rulesOf(const json& document) {
  std::string rules;
  for (const json& finding : document.at("findings"))
    rules += finding.at("rule").get<std::string>() + " ";
  return rules;
}

std::string filesOf(const json& report) {
  std::string files;
  for (const json& document : report.at("documents"))
    files += document.at("file").get<std::string>() + " ";
  return files;
}

}  // namespace

TEST_F(Check, SaysNothingAboutAGoodDocument) {
  const ProgramRun run = check({"good.xml"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.errors, "");
}

TEST_F(Check, PrintsALineForEachFinding) {
  const ProgramRun run = check({"bad.xml"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(
      run.output,
      "bad.xml:4:1: error: The point \"hinge\" has no centre. [missing-centre]\n"
      "bad.xml:5:1: warning: The element \"bracket\" has no meaning here; it is skipped with its content. "
      "[unknown-element]\n");
  EXPECT_EQ(run.errors, "");
}

TEST_F(Check, PrintsJson) {
  const json report = this->report({"bad.xml", "--level", "error"});
  EXPECT_EQ(report.at("schema"), 1);
  EXPECT_EQ(report.at("tool"), (json{{"name", "ztcad"}, {"version", ZTCAD_TEST_VERSION}}));
  const json expected =
      json::parse(R"([{"file": "bad.xml", "code": 0, "fault": true, "omitted": 0, "findings": [
    {"severity": "error", "rule": "missing-centre", "message": "The point \"hinge\" has no centre.",
     "line": 4, "column": 1, "offset": 104, "path": "/GMD/point[2]", "element": {"kind": "point", "name": "hinge"}}]}])");
  EXPECT_EQ(report.at("documents"), expected);
  EXPECT_EQ(report.at("summary"), json::parse(R"({"documents": 1, "errors": 1, "warnings": 0, "notes": 0})"));
}

TEST_F(Check, SearchesFoldersInTheOrderOfNames) {
  std::filesystem::create_directory(std::filesystem::u8path(m_files.path("deep")));
  m_files.put("deep/a.xml", goodDocument);
  m_files.put("notes.txt", "no document");
  EXPECT_EQ(filesOf(report({"."})), "bad.xml broken.xml deep/a.xml good.xml ");
  EXPECT_EQ(filesOf(report({"good.xml", "deep"})), "good.xml deep/a.xml ");
}

TEST_F(Check, GivesTheSameReportWithAnyNumberOfJobs) {
  for (int i = 0; i < 40; ++i)
    m_files.put("more" + std::to_string(i) + ".xml", i % 3 == 0   ? badDocument
                                                     : i % 3 == 1 ? goodDocument
                                                                  : brokenDocument);
  const ProgramRun one = check({".", "--jobs", "1"});
  for (const char* jobs : {"2", "7", "1000"}) {
    const ProgramRun several = check({".", "--jobs", jobs});
    EXPECT_EQ(several.output, one.output);
    EXPECT_EQ(several.exitCode, one.exitCode);
  }
}

TEST_F(Check, ReadsStandardInputAsAFile) {
  for (const char* document : {goodDocument, badDocument, brokenDocument, ""}) {
    m_files.put("same.xml", document);
    json fromFile = report({"same.xml"}).at("documents").at(0);
    fromFile["file"] = "-";
    EXPECT_EQ(report({"-"}, document).at("documents").at(0), fromFile);
  }
}

TEST_F(Check, FiltersByRule) {
  EXPECT_EQ(rulesOf(report({"bad.xml"}).at("documents").at(0)), "missing-centre unknown-element ");
  EXPECT_EQ(rulesOf(report({"bad.xml", "--only", "unknown-element"}).at("documents").at(0)),
            "unknown-element ");
  EXPECT_EQ(rulesOf(report({"bad.xml", "--ignore", "unknown-element"}).at("documents").at(0)),
            "missing-centre ");
  EXPECT_EQ(check({"bad.xml", "--ignore", "missing-centre"}).exitCode, 0);
}

TEST_F(Check, ShowsFindingsFromALevelOn) {
  EXPECT_EQ(rulesOf(report({"bad.xml", "--level", "error"}).at("documents").at(0)), "missing-centre ");
  EXPECT_EQ(rulesOf(report({"bad.xml", "--level", "note"}).at("documents").at(0)),
            "missing-centre unknown-element comment-not-kept ");
}

TEST_F(Check, FailsFromALevelOn) {
  m_files.put("warning.xml",
              "<GMD><header majorVersion=\"2\" minorVersion=\"1\" inform=\"\"/><bracket/></GMD>");
  EXPECT_EQ(check({"warning.xml"}).exitCode, 0);
  EXPECT_EQ(check({"warning.xml", "--fail-on", "warning"}).exitCode, 1);
  EXPECT_EQ(check({"warning.xml", "--fail-on", "warning", "--level", "error"}).exitCode, 1);
  EXPECT_EQ(check({"good.xml", "--fail-on", "note"}).exitCode, 0);
}

TEST_F(Check, ShowsWhatMakesItFail) {
  m_files.put("note.xml", "<GMD><header majorVersion=\"2\" minorVersion=\"1\" inform=\"\"/><!-- --></GMD>");
  EXPECT_EQ(check({"note.xml"}).output, "");
  const ProgramRun run = check({"note.xml", "--fail-on", "note"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.output.find("note:"), std::string::npos);
}

TEST_F(Check, CountsWhatItOmits) {
  const json report = this->report({"bad.xml", "--max", "1"});
  EXPECT_EQ(rulesOf(report.at("documents").at(0)), "missing-centre ");
  EXPECT_EQ(report.at("documents").at(0).at("omitted"), 1);
  EXPECT_EQ(report.at("summary").at("warnings"), 1);
  EXPECT_EQ(check({"bad.xml", "--max", "0"}).output, "bad.xml: findings that are not shown: 2\n");
  EXPECT_EQ(check({"bad.xml", "--max", "0"}).exitCode, 1);
}

TEST_F(Check, ReportsOnlyWhatTheBaselineLacks) {
  m_files.put("earlier.json", check({"bad.xml", "good.xml", "--format", "json"}).output);
  const ProgramRun same = check({".", "--baseline", "earlier.json", "--ignore", "not-well-formed"});
  EXPECT_EQ(same.output, "");
  EXPECT_EQ(same.exitCode, 0);
  std::string changed = badDocument;
  changed.insert(changed.find("<point"), "\n<point name=\"new\"/>\n");
  m_files.put("bad.xml", changed);
  const json report = this->report({"bad.xml", "--baseline", "earlier.json"});
  ASSERT_EQ(rulesOf(report.at("documents").at(0)), "missing-centre ");
  EXPECT_EQ(report.at("documents").at(0).at("findings").at(0).at("element").at("name"), "new");
}

TEST_F(Check, ReportsAFileThatCannotBeReadAsAProblem) {
  const ProgramRun run = check({"missing.xml", "good.xml", "--format", "json", "--ignore", "missing-centre"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_TRUE(validates(run.output, schemaOf("check")));
  const json document = json::parse(run.output).at("documents").at(0);
  EXPECT_EQ(document.at("file"), "missing.xml");
  EXPECT_TRUE(document.at("code").is_null());
  EXPECT_EQ(document.at("problem"), "no such file");
  EXPECT_EQ(run.errors, "ztcad: missing.xml: no such file\n");
}

TEST_F(Check, FailsForAFolderWithoutDocuments) {
  std::filesystem::create_directory(std::filesystem::u8path(m_files.path("empty")));
  const ProgramRun run = check({"empty", "bad.xml"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.errors, "ztcad: empty: the folder has no documents (*.xml)\n");
  EXPECT_NE(run.output.find("bad.xml:4:1: error"), std::string::npos) << "the rest goes on";
}

TEST_F(Check, TakesCyrillicFileNames) {
  std::filesystem::create_directory(std::filesystem::u8path(m_files.path("детали")));
  m_files.put("детали/ось.xml", badDocument);
  EXPECT_EQ(filesOf(report({"детали"})), "детали/ось.xml ");
  EXPECT_EQ(filesOf(report({"детали/ось.xml"})), "детали/ось.xml ");
  EXPECT_EQ(check({"детали/ось.xml", "--max", "0"}).output,
            "детали/ось.xml: findings that are not shown: 2\n");
}

TEST_F(Check, KeepsAFindingOnOneLine) {
  m_files.put(
      "lines.xml",
      "<GMD><header majorVersion=\"2\" minorVersion=\"1\" inform=\"\"/><point name=\"a&#10;b&#27;[31m\"/></GMD>");
  const ProgramRun run = check({"lines.xml"});
  EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 1) << run.output;
  EXPECT_EQ(run.output.find('\x1b'), std::string::npos);
}

TEST_F(Check, TakesFiveHundredDocuments) {
  for (int i = 0; i < 500; ++i)
    m_files.put("part" + std::to_string(i) + ".xml", i % 2 == 0 ? badDocument : goodDocument);
  const json report = this->report({".", "--jobs", "2"});
  EXPECT_EQ(report.at("summary"),
            json::parse(R"({"documents": 503, "errors": 252, "warnings": 251, "notes": 0})"));
  EXPECT_EQ(report.at("documents").size(), 503U);
}
