/// The examples of docs/cli.md and README.md. A block "xml" follows a comment that names its file; in a block
/// "console", lines that start with "$ ztcad" are calls, and the lines after them are what the call prints,
/// standard error before standard output. "..." as a line matches any lines. A comment before the block gives
/// the exit code of its last call, if that is not 0.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <regex>
#include <sstream>

#include "program.h"
#include "temporary_files.h"

namespace {

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();  // saved files on Windows
    lines.push_back(line);
  }
  return lines;
}

/// The words of a command line without quotes.
std::vector<std::string> wordsOf(const std::string& line) {
  std::istringstream stream(line);
  return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

/// Whether the lines are those expected, of which one may be "...".
bool matches(const std::vector<std::string>& expected, const std::vector<std::string>& lines) {
  const auto gap = std::find(expected.begin(), expected.end(), "...");
  if (gap == expected.end()) return lines == expected;
  const auto head = static_cast<std::size_t>(gap - expected.begin());
  const auto tail = static_cast<std::size_t>(expected.end() - gap - 1);
  return lines.size() >= head + tail && std::equal(expected.begin(), gap, lines.begin()) &&
         std::equal(gap + 1, expected.end(), lines.end() - static_cast<std::ptrdiff_t>(tail));
}

/// The text without the version of the library in a JSON report.
std::string withoutVersion(const std::string& text) {
  return std::regex_replace(text, std::regex(R"("version":"[0-9.]+")"), R"("version":"")");
}

class Page {
 public:
  explicit Page(const TemporaryFiles& files) : m_files(files) {}

  void run(const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
      take(line);
    EXPECT_GE(m_calls, 1);
  }

 private:
  void take(const std::string& line) {
    std::smatch match;
    if (m_block.empty() &&
        std::regex_match(line, match, std::regex("<!-- (?:file ([^ ]+)|exit code ([0-9])) -->"))) {
      if (match[1].matched) m_file = match[1];
      if (match[2].matched) m_exitCode = std::stoi(match[2]);
    } else if (m_block.empty() && line.rfind("```", 0) == 0) {
      m_block = line.substr(3).empty() ? "other" : line.substr(3);
      m_content.clear();
    } else if (line == "```") {
      end();
    } else {
      m_content.push_back(line);
    }
  }

  void end() {
    if (m_block != "console" && !m_file.empty()) {
      std::string document;
      for (const std::string& line : m_content)
        document += line + "\n";
      m_files.put(m_file, document);
      const std::string example = bytesOf(ZTCAD_TEST_EXAMPLES "/" + m_file);
      EXPECT_TRUE(example.empty() || document == example) << "examples/" << m_file << " differs";
    } else if (m_block == "console") {
      runCalls();
    }
    m_block.clear();
    m_file.clear();
    m_exitCode = 0;
  }

  void runCalls() {
    for (std::size_t i = 0; i < m_content.size();) {
      const std::string command = m_content[i++];
      const std::string prompt = "$ ztcad ";
      ASSERT_EQ(command.substr(0, prompt.size()), prompt);
      std::vector<std::string> expected;
      while (i < m_content.size() && m_content[i].rfind("$ ", 0) != 0)
        expected.push_back(withoutVersion(m_content[i++]));
      check(command.substr(prompt.size()), expected, i == m_content.size() ? m_exitCode : 0);
    }
  }

  void check(std::string command, const std::vector<std::string>& expected, int exitCode) {
    const std::size_t redirection = command.find(" > ");
    const std::string target = redirection == std::string::npos ? "" : command.substr(redirection + 3);
    command = command.substr(0, redirection);
    const ProgramRun run = runProgram(wordsOf(command), {"", m_files.folder()});
    if (!target.empty()) m_files.put(target, run.output);
    const std::string printed = run.errors + (target.empty() ? run.output : "");
    EXPECT_TRUE(matches(expected, linesOf(withoutVersion(printed)))) << "ztcad " << command << " prints\n"
                                                                     << printed;
    EXPECT_EQ(run.exitCode, exitCode) << "ztcad " << command;
    ++m_calls;
  }

  const TemporaryFiles& m_files;
  std::string m_block;
  std::string m_file;
  int m_exitCode = 0;
  int m_calls = 0;
  std::vector<std::string> m_content;
};

}  // namespace

class PageExamples : public testing::TestWithParam<const char*> {};

TEST_P(PageExamples, PrintWhatThePageSays) {
  const TemporaryFiles files;
  Page(files).run(linesOf(bytesOf(std::string(ZTCAD_TEST_PAGES) + "/" + GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Documents, PageExamples, testing::Values("cli.md", "../README.md"));
