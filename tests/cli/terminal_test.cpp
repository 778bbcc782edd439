/// Colours and progress, which only terminals get.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "program.h"
#include "samples.h"
#include "temporary_files.h"

namespace {

/// What the program prints if both its outputs are a terminal.
std::string onTerminal(const std::vector<std::string>& arguments, const char* noColour) {
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0) return "no terminal";
  const std::string name = ::ptsname(master);
  const pid_t process = ::fork();
  if (process == 0) {
    const int terminal = ::open(name.c_str(), O_RDWR);
    ::dup2(terminal, STDOUT_FILENO);
    ::dup2(terminal, STDERR_FILENO);
    ::setenv("TERM", "xterm", 1);
    ::setenv("NO_COLOR", noColour, 1);
    std::vector<char*> words{const_cast<char*>("ztcad")};  // NOLINT
    for (const std::string& argument : arguments)
      words.push_back(const_cast<char*>(argument.c_str()));  // NOLINT
    words.push_back(nullptr);
    ::execv(ZTCAD_TEST_PROGRAM, words.data());
    ::_exit(127);
  }
  std::string text;
  char buffer[4096];
  // ends with an error when the last process that has the terminal ends
  for (ssize_t size = ::read(master, buffer, sizeof buffer); size > 0;
       size = ::read(master, buffer, sizeof buffer))
    text.append(buffer, static_cast<std::size_t>(size));
  ::waitpid(process, nullptr, 0);
  ::close(master);
  return text;
}

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
    ++count;
  return count;
}

}  // namespace

TEST(Terminal, ShowsColoursAndASummary) {
  const TemporaryFiles files;
  const std::string text = onTerminal({"check", files.put("bad.xml", badDocument)}, "");
  EXPECT_NE(text.find("\x1b[31merror:\x1b[0m The point \"hinge\" has no centre."), std::string::npos) << text;
  EXPECT_NE(text.find("ztcad: 1 document: 1 error, 1 warning, 0 notes; 1 finding below --level"),
            std::string::npos)
      << text;
}

TEST(Terminal, ShowsNoColoursIfTheEnvironmentForbidsThem) {
  const TemporaryFiles files;
  const std::string text = onTerminal({"check", files.put("bad.xml", badDocument)}, "1");
  EXPECT_EQ(text.find('\x1b'), std::string::npos) << text;
  EXPECT_NE(text.find("bad.xml:4:1: error: "), std::string::npos) << text;
}

TEST(Terminal, ShowsTheProgressOfLongWork) {
  const TemporaryFiles files;
  const std::string document = files.put("0.xml", slowDocument());
  for (int i = 1; i < 100; ++i)
    std::filesystem::create_hard_link(document, files.path(std::to_string(i) + ".xml"));
  const std::string text = onTerminal({"check", "--jobs", "1", "--only", "wrong-root", files.folder()}, "");
  EXPECT_NE(text.find(" of 100 documents"), std::string::npos) << text;
  EXPECT_EQ(occurrences(text, " of 100 documents"), occurrences(text, "\r\x1b[K")) << "each count is removed";
}
