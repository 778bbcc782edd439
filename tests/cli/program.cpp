#include "program.h"

#include <stdexcept>

#if defined(_WIN32)
#include <QProcess>
#include <QStringList>

namespace {

/// Starts the program. Under Wine, the creation of a process fails about once in ten thousand times on a busy
/// machine. Nothing of the program has run then: another attempt hides no fault of the program.
void start(QProcess& process, const QStringList& arguments) {
  constexpr int attempts = 3;
  for (int i = 0; i < attempts; ++i) {
    process.start(QStringLiteral(ZTCAD_TEST_PROGRAM), arguments);
    if (process.waitForStarted()) return;
  }
  throw std::runtime_error("the program does not start: " + process.errorString().toStdString());
}

}  // namespace

ProgramRun runProgram(const std::vector<std::string>& arguments, const Setting& setting) {
  QProcess process;
  QStringList words;
  for (const std::string& argument : arguments)
    words.append(QString::fromStdString(argument));
  if (!setting.folder.empty()) process.setWorkingDirectory(QString::fromStdString(setting.folder));
  start(process, words);
  process.write(setting.input.data(), static_cast<qint64>(setting.input.size()));
  process.closeWriteChannel();
  constexpr int forEver = -1;
  process.waitForFinished(forEver);
  ProgramRun run;
  run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 128;
  run.output = process.readAllStandardOutput().toStdString();
  run.errors = process.readAllStandardError().toStdString();
  return run;
}

#else
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace {

using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;

File temporaryFile(const std::string& content = "") {
  File file(std::tmpfile(), &std::fclose);
  if (!file || std::fwrite(content.data(), 1, content.size(), file.get()) != content.size())
    throw std::runtime_error("no temporary file");
  std::rewind(file.get());
  return file;
}

std::string contentOf(std::FILE* file) {
  std::string content;
  std::rewind(file);
  char buffer[65536];
  while (const std::size_t size = std::fread(buffer, 1, sizeof buffer, file))
    content.append(buffer, size);
  return content;
}

}  // namespace

ProgramRun runProgram(const std::vector<std::string>& arguments, const Setting& setting) {
  const File input = temporaryFile(setting.input);
  const File output = temporaryFile();
  const File errors = temporaryFile();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, fileno(input.get()), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fileno(output.get()), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fileno(errors.get()), STDERR_FILENO);
  if (!setting.outputFile.empty())
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, setting.outputFile.c_str(), O_WRONLY, 0);
  if (!setting.folder.empty()) posix_spawn_file_actions_addchdir_np(&actions, setting.folder.c_str());
  std::vector<char*> words{const_cast<char*>(ZTCAD_TEST_PROGRAM)};  // NOLINT: they are not changed
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));  // NOLINT: likewise
  words.push_back(nullptr);
  pid_t process = 0;
  const int error = ::posix_spawn(&process, ZTCAD_TEST_PROGRAM, &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::runtime_error("the program does not start");
  int status = 0;
  ::waitpid(process, &status, 0);
  ProgramRun run;
  run.exitCode = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  run.output = contentOf(output.get());
  run.errors = contentOf(errors.get());
  return run;
}
#endif
