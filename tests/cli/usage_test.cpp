#include <gtest/gtest.h>

#include "program.h"
#include "temporary_files.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

TEST(Usage, HelpAndVersionGoToStandardOutput) {
  for (const char* command : {"check", "info", "mass", "diff", "convert", "format", "rules"}) {
    const ProgramRun run = runProgram({command, "--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(contains(run.output, std::string("ztcad ") + command)) << run.output;
  }
  EXPECT_EQ(runProgram({"--help"}).exitCode, 0);
  EXPECT_EQ(runProgram({"--version"}).output, "ztcad " ZTCAD_TEST_VERSION "\n");
}

TEST(Usage, HelpDoesNotNameTheCommandOfWorkers) {
  EXPECT_FALSE(contains(runProgram({"--help"}).output, "worker"));
}

TEST(Usage, ErrorsHaveExitCodeTwoAndAMessage) {
  const struct Row {
    std::vector<std::string> arguments;
    const char* part;  // of the message
  } rows[] = {
      {{}, "a command is missing"},
      {{"frobnicate"}, "no command \"frobnicate\""},
      {{"check"}, "PATH"},
      {{"check", "a.xml", "--frobnicate"}, "--frobnicate"},
      {{"check", "a.xml", "--level", "fatal"}, "error|warning|note"},
      {{"check", "a.xml", "--only", "missing-center"},
       "--only: there is no rule \"missing-center\" (did you mean \"missing-centre\"?)"},
      {{"check", "a.xml", "--ignore", "zzz"}, "--ignore: there is no rule \"zzz\""},
      {{"check", "-", "-"}, "\"-\" is given more than once"},
      {{"check", "-", "--baseline", "-"}, "\"-\" is given more than once"},
      {{"check", "a.xml", "--baseline", "missing.json"}, "missing.json"},
      {{"info", "-", "-"}, "\"-\" is given more than once"},
      {{"format", "-", "--in-place"}, "--in-place"},
      {{"diff", "a.xml"}, "B is required"},
      {{"diff", "-", "-"}, "\"-\" is given more than once"},
      {{"diff", "a.xml", "b.xml", "--tolerance", "-1"}, "--tolerance: \"-1\" is no number from 0"},
      {{"mass", "a.xml", "--write", "b.xml"}, "--write needs --density"},
      {{"mass", "a.xml", "--density", "0"}, "--density: \"0\" is no number above 0"},
      {{"diff", "a.xml", "b.xml", "--relative", "1mm"}, "\"1mm\" is no number"},
      {{"rules", "missing-center"}, "did you mean \"missing-centre\""},
  };
  for (const Row& row : rows) {
    const ProgramRun run = runProgram(row.arguments);
    EXPECT_EQ(run.exitCode, 2) << run.errors;
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(contains(run.errors, row.part)) << run.errors;
    EXPECT_EQ(run.errors.substr(0, 7), "ztcad: ");
  }
}

TEST(Usage, ABaselineThatIsNoReportIsRefused) {
  const TemporaryFiles files;
  const ProgramRun run =
      runProgram({"check", files.put("a.xml", ""), "--baseline", files.put("b.json", "{}")});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_TRUE(contains(run.errors, "no report of 'ztcad check --format json'")) << run.errors;
}
