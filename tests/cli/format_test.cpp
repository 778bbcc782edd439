#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "program.h"
#include "samples.h"
#include "temporary_files.h"

namespace {

namespace fs = std::filesystem;

const std::string golden = ZTCAD_TEST_GOLDEN_FOLDER;

class Format : public testing::Test {
 protected:
  ProgramRun format(std::vector<std::string> arguments, const std::string& input = "") const {
    arguments.insert(arguments.begin(), "format");
    return runProgram(arguments, {input, m_files.folder()});
  }

  TemporaryFiles m_files;
};

/// The document as the library saves it, from a recorded file.
std::string saved() { return bytesOf(golden + "/P_every_kind.saved.xml"); }
std::string unsaved() { return bytesOf(golden + "/P_every_kind.xml"); }

std::string withoutCr(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

}  // namespace

TEST_F(Format, PrintsADocumentAsTheLibrarySavesIt) {
  m_files.put("a.xml", unsaved());
  const ProgramRun run = format({"a.xml"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(withoutCr(run.output), withoutCr(saved()));
  EXPECT_EQ(withoutCr(format({"-"}, unsaved()).output), withoutCr(saved()));
  EXPECT_EQ(format({"a.xml", "-o", "-"}).output, run.output);
  EXPECT_EQ(bytesOf(m_files.path("a.xml")), unsaved());
}

TEST_F(Format, WritesAnotherFile) {
  m_files.put("a.xml", unsaved());
  const ProgramRun run = format({"a.xml", "-o", "b.xml"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(textBytesOf(m_files.path("b.xml")), withoutCr(saved()));
  EXPECT_EQ(bytesOf(m_files.path("a.xml")), unsaved());
}

TEST_F(Format, ReplacesTheDocumentInPlace) {
  m_files.put("a.xml", unsaved());
  EXPECT_EQ(format({"--in-place", "a.xml"}).exitCode, 0);
  EXPECT_EQ(textBytesOf(m_files.path("a.xml")), withoutCr(saved()));
  EXPECT_EQ(m_files.names(), std::vector<std::string>{"a.xml"});
}

TEST_F(Format, LeavesADocumentAloneThatNeedsNoChange) {
  m_files.put("a.xml", unsaved());
  format({"--in-place", "a.xml"});
  const fs::path file = fs::u8path(m_files.path("a.xml"));
  const fs::file_time_type longAgo = fs::last_write_time(file) - std::chrono::hours(24);
  fs::last_write_time(file, longAgo);
  EXPECT_EQ(format({"--in-place", "a.xml"}).exitCode, 0);
  EXPECT_EQ(fs::last_write_time(file), longAgo);
}

TEST_F(Format, ChecksWhetherADocumentWouldChange) {
  m_files.put("a.xml", unsaved());
  const ProgramRun would = format({"--check", "a.xml"});
  EXPECT_EQ(would.exitCode, 1);
  EXPECT_EQ(would.output, "a.xml: would change\n");
  EXPECT_EQ(bytesOf(m_files.path("a.xml")), unsaved());
  format({"--in-place", "a.xml"});
  const ProgramRun wouldNot = format({"--check", "a.xml"});
  EXPECT_EQ(wouldNot.exitCode, 0);
  EXPECT_EQ(wouldNot.output, "");
  EXPECT_EQ(wouldNot.errors, "");
}

TEST_F(Format, SeesADifferenceAtTheEnd) {
  m_files.put("a.xml", unsaved());
  format({"--in-place", "a.xml"});
  const std::string formatted = bytesOf(m_files.path("a.xml"));
  for (const std::string& changed : {formatted + "\n", formatted.substr(0, formatted.size() - 1)}) {
    m_files.put("a.xml", changed);
    EXPECT_EQ(format({"--check", "a.xml"}).exitCode, 1);
  }
}

TEST_F(Format, LosesNothingOfADocumentWithErrors) {
  m_files.put("bad.xml", badDocument);
  const ProgramRun run = format({"--in-place", "bad.xml"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.errors, "ztcad: bad.xml: not changed, because it has errors; 'ztcad check' lists them\n");
  EXPECT_EQ(bytesOf(m_files.path("bad.xml")), badDocument);
}

TEST_F(Format, PrintsADocumentWithErrorsAndSaysSo) {
  m_files.put("bad.xml", badDocument);
  const ProgramRun run = format({"bad.xml"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.output.find("hinge"), std::string::npos);
  EXPECT_NE(run.errors.find("has errors"), std::string::npos);
}

TEST_F(Format, FailsForAFileThatDoesNotLoad) {
  m_files.put("broken.xml", brokenDocument);
  for (const char* file : {"missing.xml", "broken.xml"}) {
    const ProgramRun run = format({file, "-o", "out.xml"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors.rfind(std::string("ztcad: ") + file + ": ", 0), 0U) << run.errors;
  }
  EXPECT_EQ(bytesOf(m_files.path("broken.xml")), brokenDocument);
  EXPECT_EQ(m_files.names(), std::vector<std::string>{"broken.xml"});
}

TEST_F(Format, KeepsAnEarlierFileThatCannotBeReplaced) {
  m_files.put("a.xml", unsaved());
  const ProgramRun run = format({"a.xml", "-o", "missing/b.xml"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.errors.rfind("ztcad: missing/b.xml: ", 0), 0U) << run.errors;
}

TEST_F(Format, TakesCyrillicFileNames) {
  m_files.put("ось.xml", unsaved());
  EXPECT_EQ(format({"ось.xml", "-o", "вал.xml"}).exitCode, 0);
  EXPECT_EQ(textBytesOf(m_files.path("вал.xml")), withoutCr(saved()));
}
