/// The reports of all golden documents, compared with recorded ones. To record them again:
///
///   ZTCAD_REFRESH_REPORTS=1 build/release/tests/cli_program_tests --gtest_filter='*Reports*'

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "program.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const std::string golden = ZTCAD_TEST_GOLDEN_FOLDER;

std::vector<std::string> documentsOf(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(fs::u8path(folder), error))
    if (entry.path().extension() == ".xml") names.push_back(entry.path().filename().u8string());
  std::sort(names.begin(), names.end());
  return names;
}

std::string recordedFile(const std::string& document) {
  return std::string(ZTCAD_TEST_RECORDED_REPORTS) + "/" + document.substr(0, document.size() - 4) + ".json";
}

/// The report without the version of the library.
std::string masked(std::string report) {
  const std::string version = R"("version":")" ZTCAD_TEST_VERSION R"(")";
  const std::size_t place = report.find(version);
  return place == std::string::npos ? report : report.replace(place, version.size(), R"("version":"0.0.0")");
}

bool hasError(const json& document) {
  const json& findings = document.at("findings");
  return std::any_of(findings.begin(), findings.end(),
                     [](const json& finding) { return finding.at("severity") == "error"; });
}

/// Code 0 and no fault exactly if there is no error; findings in the order of the text.
void expectLaw(const json& document) {
  EXPECT_EQ(document.at("code") == 0 && document.at("fault") == false, !hasError(document)) << document;
  std::int64_t last = 0;
  for (const json& finding : document.at("findings")) {
    EXPECT_LE(last, finding.at("offset").get<std::int64_t>()) << document.at("file");
    last = finding.at("offset").get<std::int64_t>();
  }
}

/// The report of a document of a folder, which has everything that is expected of each.
ProgramRun checkedReport(const std::string& folder, const std::string& document) {
  ProgramRun run = runProgram({"check", "--format", "json", "--level", "note", document}, {"", folder});
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(validates(run.output, schemaOf("check")));
  const json report = onlyDocument(run);
  expectLaw(report);
  EXPECT_EQ(run.exitCode, hasError(report) ? 1 : 0);
  const ProgramRun sarif =
      runProgram({"check", "--format", "sarif", "--level", "note", document}, {"", folder});
  EXPECT_EQ(sarif.exitCode, run.exitCode);
  EXPECT_TRUE(validates(sarif.output, ZTCAD_TEST_SARIF_SCHEMA));
  EXPECT_EQ(json::parse(sarif.output).at("runs").at(0).at("results").size(), report.at("findings").size());
  return run;
}

class Reports : public testing::TestWithParam<std::string> {};
class RealReports : public testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealReports);

std::string testName(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param.substr(0, info.param.size() - 4);
  std::replace_if(
      name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

}  // namespace

TEST_P(Reports, IsAsRecorded) {
  const std::string report = masked(checkedReport(golden, GetParam()).output);
  if (std::getenv("ZTCAD_REFRESH_REPORTS")) putBytes(recordedFile(GetParam()), report);
  EXPECT_EQ(report, bytesOf(recordedFile(GetParam())));
}

TEST_P(Reports, HasTheCodeInTheName) {
  const json report = onlyDocument(runProgram({"check", "--format", "json", GetParam()}, {"", golden}));
  const int code = GetParam()[0] == 'P' ? 0 : std::stoi(GetParam().substr(2, 3));
  EXPECT_EQ(report.at("code"), code);
}

INSTANTIATE_TEST_SUITE_P(Golden, Reports, testing::ValuesIn(documentsOf(golden)), testName);

TEST(RecordedReports, AreThoseOfTheGoldenDocuments) {
  std::set<std::string> expected;
  for (const std::string& document : documentsOf(golden))
    expected.insert(fs::u8path(recordedFile(document)).filename().u8string());
  std::set<std::string> found;
  for (const fs::directory_entry& entry : fs::directory_iterator(ZTCAD_TEST_RECORDED_REPORTS))
    found.insert(entry.path().filename().u8string());
  EXPECT_EQ(found, expected);
}

TEST_P(RealReports, SatisfyTheLaw) { checkedReport(ZTCAD_TEST_REAL_DOCUMENTS, GetParam()); }

INSTANTIATE_TEST_SUITE_P(RealDocuments, RealReports,
                         testing::ValuesIn(documentsOf(ZTCAD_TEST_REAL_DOCUMENTS)), testName);
