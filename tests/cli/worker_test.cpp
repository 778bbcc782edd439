/// Workers that are killed or stopped while they check a document.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

#include "program.h"
#include "samples.h"
#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;

std::vector<pid_t> childrenOf(pid_t parent) {
  std::vector<pid_t> children;
  std::error_code gone;
  const std::string threads = "/proc/" + std::to_string(parent) + "/task";
  for (const auto& thread : std::filesystem::directory_iterator(threads, gone)) {
    std::ifstream file(thread.path() / "children");
    for (pid_t child = 0; file >> child;)
      children.push_back(child);
  }
  return children;
}

bool isRunning(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  std::getline(file, text);
  return !text.empty() && text.find(") Z ") == std::string::npos;
}

/// Sends a signal to the first worker that appears: a child of the program, which is a child of this process.
/// It is stopped first, so that a document is under way when the signal comes.
class FirstWorker {
 public:
  explicit FirstWorker(int signal) : m_thread([this, signal] { hit(signal); }) {}
  ~FirstWorker() {
    m_isOver = true;
    m_thread.join();
  }
  bool wasHit() const { return m_wasHit; }

 private:
  void hit(int signal) {
    while (!m_isOver && !m_wasHit)
      for (const pid_t program : childrenOf(::getpid()))
        for (const pid_t worker : childrenOf(program))
          if (!m_wasHit && isWorker(worker)) {
            m_wasHit = ::kill(worker, SIGSTOP) == 0;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            if (signal != SIGSTOP) ::kill(worker, signal);
          }
  }

  /// Not the copy of the program that will become it.
  static bool isWorker(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/cmdline");
    std::string words;
    std::getline(file, words);
    return words.find(std::string("\0worker", 7)) != std::string::npos;
  }

  std::atomic<bool> m_isOver{false};
  std::atomic<bool> m_wasHit{false};
  std::thread m_thread;
};

class Worker : public testing::Test {
 protected:
  Worker() {
    const std::string slow = slowDocument();
    for (int i = 0; i < 40; ++i)
      m_files.put("part" + std::to_string(i) + ".xml", i % 4 == 0 ? slow : goodDocument);
  }

  /// Checks the documents while the first worker gets a signal. One document has a problem, and all others
  /// have their findings.
  std::string problemAfter(int signal, const char* jobs) const {
    const FirstWorker worker(signal);
    const ProgramRun run = runProgram({"check", ".", "--format", "json", "--jobs", jobs, "--timeout", "3"},
                                      {"", m_files.folder()});
    EXPECT_TRUE(worker.wasHit());
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(validates(run.output, schemaOf("check")));
    std::string problem;
    const json report = json::parse(run.output);
    EXPECT_EQ(report.at("documents").size(), 40U);
    for (const json& document : report.at("documents")) {
      if (document.at("code").is_null())
        problem += document.at("problem").get<std::string>() + "\n";
      else
        EXPECT_EQ(document.at("findings").empty(), document.at("fault") == false);
    }
    return problem;
  }

  TemporaryFiles m_files;
};

}  // namespace

TEST_F(Worker, ThatIsKilledIsOneErrorOfItsDocument) {
  for (const char* jobs : {"1", "2"})
    EXPECT_EQ(problemAfter(SIGKILL, jobs), "the check ended its process: signal 9 (Killed)\n");
}

TEST_F(Worker, ThatHangsIsOneErrorOfItsDocument) {
  for (const char* jobs : {"1", "2"})
    EXPECT_EQ(problemAfter(SIGSTOP, jobs), "the check took more than 3 s\n");
}

TEST_F(Worker, EndsWithTheProgram) {
  // the program is killed: its workers read the end of their input
  const pid_t program = ::fork();
  if (program == 0) {
    ::execl(ZTCAD_TEST_PROGRAM, "ztcad", "check", m_files.folder().c_str(), "--format", "json", nullptr);
    ::_exit(127);
  }
  std::vector<pid_t> workers;
  while (workers.empty() && ::waitpid(program, nullptr, WNOHANG) == 0)
    workers = childrenOf(program);
  ::kill(program, SIGKILL);
  ::waitpid(program, nullptr, 0);
  for (const pid_t worker : workers) {
    for (int i = 0; i < 500 && isRunning(worker); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_FALSE(isRunning(worker));
  }
}
