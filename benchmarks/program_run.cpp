#include "program_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <ztCAD/ztCAD_c.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX has no header for it

namespace benchmarks {

namespace {

/// Runs a program without its output; whether it ends with the expected exit code.
bool succeeds(const char* program, const std::vector<std::string>& arguments, int exitCode = 0) {
  std::vector<char*> words{const_cast<char*>(program)};  // NOLINT: exec does not change its arguments
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));  // NOLINT: likewise
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  const int error = ::posix_spawn(&process, program, &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 1;
  return error == 0 && ::waitpid(process, &status, 0) == process && WIFEXITED(status) &&
         WEXITSTATUS(status) == exitCode;
}

}  // namespace

std::string folderOfLinks(const Document& document, int count) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::path(document.file).parent_path() / "many";
  fs::remove_all(folder);
  fs::create_directory(folder);
  for (int i = 0; i < count; ++i)
    fs::create_hard_link(document.file, folder / (std::to_string(i) + ".xml"));
  return folder.string();
}

Measurement programCheck(const std::string& folder, int jobs) {
  return timed([&] {
    return succeeds(ZTCAD_BENCHMARK_PROGRAM, {"check", "--jobs", std::to_string(jobs), folder});
  });
}

Measurement programInfo(const Document& document) {
  return timed([&] { return succeeds(ZTCAD_BENCHMARK_PROGRAM, {"info", document.file}); });
}

Measurement programView(const Document& document) {
  namespace fs = std::filesystem;
  const std::string page = document.file + ".html";
  const Measurement measurement = timed([&] {
    return succeeds(ZTCAD_BENCHMARK_PROGRAM, {"view", document.file, "-o", page}) &&
           fs::file_size(page) <= fs::file_size(document.file) / 4 + 1000000;
  });
  fs::remove(page);
  return measurement;
}

std::string changedCopy(const Document& document) {
  std::ifstream file(document.file, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const std::size_t digit = text.find_first_of("12345678", text.size() / 2);
  if (digit != std::string::npos) ++text[digit];
  std::string copy = document.file + ".changed";
  std::ofstream(copy, std::ios::binary) << text;
  return copy;
}

Measurement programDiff(const Document& document, const std::string& copy) {
  return timed([&] {
    constexpr int differ = 1;
    return succeeds(ZTCAD_BENCHMARK_PROGRAM, {"diff", document.file, copy}, differ);
  });
}

Measurement programLoad(const Document& document) {
  return timed([&] { return succeeds("/proc/self/exe", {loadOption, document.file}); });
}

bool loadAlone(const std::string& file) {
  ztCAD_Outcome outcome;
  ztCAD_GMDDocument* const document = ztCAD_loadDocument(file.c_str(), &outcome);
  ztCAD_endDocument(document);
  return document && outcome.code == ztCAD_ResultLoaded;
}

}  // namespace benchmarks
