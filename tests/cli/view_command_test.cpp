#include <gtest/gtest.h>

#include "program.h"
#include "samples.h"
#include "temporary_files.h"

namespace {

/// The command of the built program; view_test.cpp tests what is in a page.
class ViewCommand : public testing::Test {
 protected:
  ProgramRun view(const std::vector<std::string>& arguments, const std::string& input = "") const {
    std::vector<std::string> all{"view"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProgram(all, {input, m_files.folder()});
  }
  std::string content(const std::string& file) const { return bytesOf(m_files.path(file)); }

  const TemporaryFiles m_files;
};

}  // namespace

TEST_F(ViewCommand, NeedsADocumentAndAPage) {
  m_files.put("good.xml", goodDocument);
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{}, {"good.xml"}, {"-o", "out.html"}}) {
    const ProgramRun run = view(arguments);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("see 'ztcad view --help'"), std::string::npos) << run.errors;
  }
  EXPECT_EQ(content("out.html"), "");
}

#if defined(ZTCAD_TEST_HAS_VIEWER_PAGE)

TEST_F(ViewCommand, WritesThePageWithTheDocument) {
  m_files.put("деталь.xml", goodDocument);
  const ProgramRun run = view({"деталь.xml", "-o", "страница.html"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output + run.errors, "");
  const std::string page = content("страница.html");
  EXPECT_NE(page.find("Content-Security-Policy"), std::string::npos);
  EXPECT_NE(page.find("деталь.xml\n</title>"), std::string::npos);
  EXPECT_NE(page.find("\"name\":[\"origin\"]"), std::string::npos);
  EXPECT_EQ(page.find("<!--ztcad:"), std::string::npos);
  EXPECT_LT(page.size(), 1000000U);
}

TEST_F(ViewCommand, ExitCodeSaysWhetherThereAreErrors) {
  m_files.put("bad.xml", badDocument);
  m_files.put("broken.xml", brokenDocument);
  for (const char* const file : {"bad.xml", "broken.xml"}) {
    EXPECT_EQ(view({file, "-o", "out.html"}).exitCode, 1);
    EXPECT_NE(content("out.html").find(std::string(file) + "\n</title>"), std::string::npos);
  }
}

TEST_F(ViewCommand, WhatCannotBeReadOrWrittenGivesTwo) {
  m_files.put("good.xml", goodDocument);
  const ProgramRun missing = view({"missing.xml", "-o", "out.html"});
  EXPECT_EQ(missing.exitCode, 2);
  EXPECT_NE(missing.errors.find("missing.xml"), std::string::npos);
  EXPECT_EQ(content("out.html"), "");
  EXPECT_EQ(view({"good.xml", "-o", "no folder/out.html"}).exitCode, 2);
  EXPECT_EQ(view({"good.xml", "-o", "./good.xml"}).exitCode, 2);
  EXPECT_EQ(content("good.xml"), goodDocument);
}

TEST_F(ViewCommand, ReadsStandardInputAndWritesStandardOutput) {
  m_files.put("good.xml", goodDocument);
  ASSERT_EQ(view({"good.xml", "-o", "file.html"}).exitCode, 0);
  const ProgramRun run = view({"-", "-o", "-"}, goodDocument);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_NE(run.output.find("standard input\n</title>"), std::string::npos);
  const std::string data = "\"code\":0";
  EXPECT_EQ(run.output.substr(run.output.find(data)),
            content("file.html").substr(content("file.html").find(data)));
}

#endif
