#include <command_line.h>
#include <failure.h>
#include <gtest/gtest.h>

#include <optional>

namespace {

using Words = std::vector<std::string>;

template <typename Options>
Options parsed(Words arguments) {
  cli::CommandLine commandLine;
  return std::get<Options>(commandLine.parse(std::move(arguments)));
}

std::string errorOf(Words arguments) {
  cli::CommandLine commandLine;
  try {
    commandLine.parse(std::move(arguments));
  } catch (const cli::UsageError& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace

TEST(CommandLine, HasDefaults) {
  const auto options = parsed<cli::CheckOptions>({"check", "a.xml"});
  EXPECT_EQ(options.paths, Words{"a.xml"});
  EXPECT_EQ(options.format, cli::ReportFormat::Text);
  EXPECT_FALSE(options.lowestShown);
  EXPECT_EQ(options.failOn, cli::Severity::Error);
  EXPECT_FALSE(options.most);
  EXPECT_EQ(options.jobs, 0);
}

TEST(CommandLine, TakesEveryOptionOfCheck) {
  const auto options = parsed<cli::CheckOptions>(
      {"check",      "a.xml",    "--format",  "sarif",     "--only",  "x",          "--only", "y",
       "--ignore=z", "--level",  "note",      "--fail-on", "warning", "--baseline", "r.json", "--max",
       "5",          "--jobs=3", "--timeout", "7",         "b.xml",   "-"});
  EXPECT_EQ(options.paths, (Words{"a.xml", "b.xml", "-"}));
  EXPECT_EQ(options.format, cli::ReportFormat::Sarif);
  EXPECT_EQ(options.only, (Words{"x", "y"}));
  EXPECT_EQ(options.ignore, Words{"z"});
  EXPECT_EQ(options.lowestShown, cli::Severity::Note);
  EXPECT_EQ(options.failOn, cli::Severity::Warning);
  EXPECT_EQ(options.baseline, "r.json");
  EXPECT_EQ(options.most, 5);
  EXPECT_EQ(options.jobs, 3);
  EXPECT_EQ(options.timeLimit, std::chrono::seconds(7));
}

TEST(CommandLine, TakesOneValueForEachFilter) {
  EXPECT_EQ(parsed<cli::CheckOptions>({"check", "--only", "x", "a.xml"}).paths, Words{"a.xml"});
  EXPECT_EQ(parsed<cli::CheckOptions>({"check", "--only", "x,y", "a.xml"}).only, (Words{"x", "y"}));
}

TEST(CommandLine, TakesUnusualFileNames) {
  for (const char* name : {"info", "rules", "{a,b}", "[", "a]", "", " ", "/x", "a=b", "ось.xml", "worker"})
    EXPECT_EQ(parsed<cli::CheckOptions>({"check", name}).paths, Words{name}) << name;
  EXPECT_EQ(parsed<cli::CheckOptions>({"check", "--", "-a.xml", "--level"}).paths,
            (Words{"-a.xml", "--level"}));
}

TEST(CommandLine, TakesFileNamesInBrackets) {
  EXPECT_EQ(parsed<cli::CheckOptions>({"check", "[a,b]"}).paths, Words{"./[a,b]"});
  EXPECT_EQ(parsed<cli::FormatOptions>({"format", "[a]"}).file, "./[a]");
}

TEST(CommandLine, TakesTheLastOfSeveralValues) {
  EXPECT_EQ(parsed<cli::CheckOptions>({"check", "--jobs", "1", "--jobs", "2", "a"}).jobs, 2);
  EXPECT_TRUE(parsed<cli::InfoOptions>({"info", "--format=text", "--format=json", "a"}).json);
}

TEST(CommandLine, TakesTheOtherCommands) {
  const auto info = parsed<cli::InfoOptions>({"info", "--tree", "a.xml", "b.xml"});
  EXPECT_TRUE(info.tree);
  EXPECT_EQ(info.files, (Words{"a.xml", "b.xml"}));
  const auto format = parsed<cli::FormatOptions>({"format", "a.xml", "-o", "b.xml"});
  EXPECT_EQ(format.file, "a.xml");
  EXPECT_EQ(format.output, "b.xml");
  EXPECT_TRUE(parsed<cli::FormatOptions>({"format", "--in-place", "a.xml"}).inPlace);
  EXPECT_TRUE(parsed<cli::FormatOptions>({"format", "--check", "a.xml"}).check);
  EXPECT_EQ(parsed<cli::RulesOptions>({"rules"}).rule, "");
  EXPECT_EQ(parsed<cli::RulesOptions>({"rules", "missing-centre"}).rule, "missing-centre");
}

TEST(CommandLine, RefusesWrongArguments) {
  const struct Row {
    Words arguments;
    const char* part;  // of the message
  } rows[] = {
      {{}, "a command is missing"},
      {{"chekc", "a.xml"}, "there is no command \"chekc\" (did you mean \"check\"?)"},
      {{"--frobnicate"}, "--frobnicate"},
      {{"check"}, "PATH"},
      {{"check", "--frobnicate", "a"}, "--frobnicate"},
      {{"check", "--format", "xml", "a"}, "\"xml\" is not one of text|json|sarif"},
      {{"check", "--format"}, "--format"},
      {{"check", "--level", "fatal", "a"}, "\"fatal\" is not one of error|warning|note"},
      {{"check", "--max", "many", "a"}, "\"many\" is no number"},
      {{"check", "--max=-1", "a"}, "\"-1\" is no number"},
      {{"check", "--jobs", "0", "a"}, "\"0\" is no number from 1 to 1024"},
      {{"check", "--jobs", "99999999999999999999", "a"}, "is no number"},
      {{"check", "--jobs", "2x", "a"}, "is no number"},
      {{"info"}, "FILE"},
      {{"format"}, "FILE"},
      {{"format", "a", "b"}, "b"},
      {{"format", "a", "--check", "--in-place"}, "exclude"},
      {{"format", "a", "-o", "b", "--in-place"}, "exclude"},
      {{"rules", "a", "b"}, "b"},
  };
  for (const Row& row : rows) {
    const std::string error = errorOf(row.arguments);
    EXPECT_NE(error.find(row.part), std::string::npos) << error;
    EXPECT_NE(error.find("--help"), std::string::npos) << error;
  }
}
