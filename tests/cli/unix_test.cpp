/// Devices, permissions and pipes.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "document/posix_conditions.h"
#include "program.h"
#include "samples.h"
#include "temporary_files.h"

namespace {

namespace fs = std::filesystem;

/// A document that is larger than what pipes and buffers hold.
std::string largeDocument() {
  std::string document = "<GMD><header majorVersion=\"2\" minorVersion=\"1\" inform=\"\"/>";
  for (int i = 0; i < 20000; ++i)
    document += "<point name=\"p" + std::to_string(i) + "\"/>\n";
  return document + "</GMD>";
}

}  // namespace

TEST(FullDisk, IsAnErrorOfEveryCommand) {
  const TemporaryFiles files;
  const std::string good = files.put("good.xml", goodDocument);
  const std::string bad = files.put("bad.xml", badDocument);
  const std::vector<std::vector<std::string>> calls{{"check", bad},
                                                    {"check", good, "--format", "json"},
                                                    {"check", good, "--format", "sarif"},
                                                    {"info", good},
                                                    {"info", good, "--format", "json"},
                                                    {"format", good},
                                                    {"rules"},
                                                    {"--help"},
                                                    {"--version"}};
  for (const std::vector<std::string>& arguments : calls) {
    const ProgramRun run = runProgram(arguments, {"", "", "/dev/full"});
    EXPECT_EQ(run.exitCode, 2) << arguments.at(0);
    EXPECT_EQ(run.errors, "ztcad: cannot write to standard output: No space left on device\n");
  }
}

TEST(FullDisk, IsAnErrorOfFormatWithAnOutputFile) {
  const TemporaryFiles files;
  const ProgramRun run = runProgram({"format", files.put("good.xml", goodDocument), "-o", "/dev/full"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.errors.rfind("ztcad: /dev/full: ", 0), 0U) << run.errors;
}

TEST(BrokenPipe, EndsTheProgramWithAMessage) {
  const TemporaryFiles files;
  const std::string large = files.put("large.xml", largeDocument());
  for (const char* command : {"check", "format"}) {
    const std::string pipe = files.path(std::string("pipe-") + command);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const pid_t reader = ::fork();
    if (reader == 0) {  // reads a little and leaves, as head does
      const int descriptor = ::open(pipe.c_str(), O_RDONLY);
      char byte = 0;
      ::_exit(::read(descriptor, &byte, 1) == 1 ? 0 : 1);
    }
    const ProgramRun run = runProgram({command, large}, {"", "", pipe});
    EXPECT_EQ(run.exitCode, 2) << command;
    EXPECT_EQ(run.errors, "ztcad: cannot write to standard output: Broken pipe\n");
  }
}

TEST(Permissions, OfFilesAndFoldersAreProblemsAndTheRestGoesOn) {
  const TemporaryFiles files;
  fs::permissions(files.folder(), fs::perms(0755));
  files.put("bad.xml", badDocument);
  fs::permissions(files.put("secret.xml", goodDocument), fs::perms::none);
  fs::create_directory(files.path("closed"));
  files.put("closed/a.xml", goodDocument);
  fs::permissions(files.path("closed"), fs::perms::none);
  ProgramRun run;
  {
    const OrdinaryUser user;
    run = runProgram({"check", "."}, {"", files.folder()});
  }
  fs::permissions(files.path("closed"), fs::perms::owner_all);
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_NE(run.output.find("bad.xml:4:1: error"), std::string::npos);
  EXPECT_NE(run.errors.find("ztcad: closed: Permission denied\n"), std::string::npos) << run.errors;
  EXPECT_NE(run.errors.find("ztcad: secret.xml: "), std::string::npos) << run.errors;
}

TEST(SpecialFiles, AreRefusedWithoutWaiting) {
  const TemporaryFiles files;
  ASSERT_EQ(::mkfifo(files.path("pipe.xml").c_str(), 0600), 0);
  for (const char* command : {"check", "info", "format"}) {
    const ProgramRun run = runProgram({command, files.path("pipe.xml")});
    EXPECT_EQ(run.exitCode, 2) << command;
    EXPECT_NE(run.errors, "") << command;
  }
}

TEST(Links, ToFoldersAreNotFollowedInsideFolders) {
  const TemporaryFiles files;
  files.put("good.xml", goodDocument);
  fs::create_directory_symlink(files.folder(), files.path("loop"));
  const ProgramRun run = runProgram({"check", ".", "--format", "json"}, {"", files.folder()});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(run.output).at("documents").size(), 1U);
}

TEST(FileNames, MayBeAnyBytes) {
  const TemporaryFiles files;
  files.put("\xff\xfe.xml", badDocument);
  const ProgramRun text = runProgram({"check", ".", "--level", "error"}, {"", files.folder()});
  EXPECT_EQ(text.output.rfind("\xff\xfe.xml:4:1: error", 0), 0U) << text.output;
  const ProgramRun json = runProgram({"check", ".", "--format", "json"}, {"", files.folder()});
  EXPECT_EQ(onlyDocument(json).at("file"), "\uFFFD\uFFFD.xml");
}

TEST(FileNames, ControlNoTerminal) {
  const TemporaryFiles files;
  files.put("a\x1b[31m\n.xml", badDocument);
  const ProgramRun run = runProgram({"check", ".", "--level", "error"}, {"", files.folder()});
  EXPECT_EQ(run.output.rfind("a\\x1b[31m\\n.xml:4:1: error", 0), 0U) << run.output;
}

TEST(InPlace, KeepsTheLinkAndThePermissionsOfAFile) {
  const TemporaryFiles files;
  fs::permissions(files.put("real.xml", goodDocument), fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("real.xml", files.path("link.xml"));
  EXPECT_EQ(runProgram({"format", "--in-place", files.path("link.xml")}).exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(files.path("link.xml")));
  EXPECT_EQ(fs::status(files.path("real.xml")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_NE(bytesOf(files.path("real.xml")), goodDocument);
}
