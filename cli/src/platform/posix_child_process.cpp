#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <mutex>
#include <optional>

#include "../failure.h"
#include "child_process.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX has no header for it

namespace cli {

namespace {

[[noreturn]] void failToStart(int error) {
  throw Failure(std::string("Cannot start a worker process: ") + std::strerror(error));
}

/// One end of a pipe. Processes that other threads start do not inherit it.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : m_number(number) {}
  Descriptor(Descriptor&& other) noexcept : m_number(other.m_number) { other.m_number = -1; }
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
  }
  ~Descriptor() {
    if (m_number >= 0) ::close(m_number);
  }
  int number() const { return m_number; }

 private:
  int m_number;
};

struct Pipe {
  Descriptor out;
  Descriptor in;
};

Pipe makePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) failToStart(errno);
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

/// Milliseconds until the deadline for `poll`, rounded up.
int millisecondsUntil(ChildProcess::Clock::time_point deadline) {
  using std::chrono::milliseconds;
  const auto left = std::chrono::ceil<milliseconds>(deadline - ChildProcess::Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, INT_MAX));
}

class PosixChildProcess final : public ChildProcess {
 public:
  explicit PosixChildProcess(const std::vector<std::string>& arguments) {
    Pipe input = makePipe();
    Pipe output = makePipe();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.out.number(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.in.number(), STDOUT_FILENO);
    std::vector<char*> words{const_cast<char*>("ztcad")};  // NOLINT: exec does not change its arguments
    for (const std::string& argument : arguments)
      words.push_back(const_cast<char*>(argument.c_str()));  // NOLINT: likewise
    words.push_back(nullptr);
    // the running program itself, also if its file was replaced since
    const int error = ::posix_spawn(&m_process, "/proc/self/exe", &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) failToStart(error);
    m_toChild = std::move(input.in);
    m_fromChild = std::move(output.out);
  }

  ~PosixChildProcess() override {
    kill();
    waitForEnd();
  }
  PosixChildProcess(const PosixChildProcess&) = delete;
  PosixChildProcess& operator=(const PosixChildProcess&) = delete;

  bool write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::write(m_toChild.number(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  Read read(char* buffer, std::size_t& size, Clock::time_point deadline) override {
    for (;;) {
      pollfd waiting{m_fromChild.number(), POLLIN, 0};
      const int ready = ::poll(&waiting, 1, millisecondsUntil(deadline));
      if (ready == 0) return Read::TimedOut;
      if (ready > 0) {
        const ssize_t count = ::read(m_fromChild.number(), buffer, size);
        size = count > 0 ? static_cast<std::size_t>(count) : 0;
        if (count >= 0) return count > 0 ? Read::Data : Read::End;
      }
      if (errno != EINTR) return Read::End;
    }
  }

  void closeInput() override { m_toChild = Descriptor(); }

  void kill() override {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_hasEnded) ::kill(m_process, SIGKILL);
  }

  std::string waitForEnd() override {
    siginfo_t information{};
    // leaves the process as a zombie, whose number is in use: kill() in another thread hits no other process
    while (::waitid(P_PID, static_cast<id_t>(m_process), &information, WEXITED | WNOWAIT) != 0)
      if (errno != EINTR) return m_end;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_hasEnded = true;
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status))
      m_end = "signal " + std::to_string(WTERMSIG(status)) + " (" + ::strsignal(WTERMSIG(status)) + ")";
    else
      m_end = "exit code " + std::to_string(WEXITSTATUS(status));
    return m_end;
  }

 private:
  pid_t m_process = -1;
  Descriptor m_toChild;
  Descriptor m_fromChild;
  std::mutex m_mutex;
  bool m_hasEnded = false;
  std::string m_end;
};

}  // namespace

std::unique_ptr<ChildProcess> ChildProcess::start(const std::vector<std::string>& arguments) {
  return std::make_unique<PosixChildProcess>(arguments);
}

}  // namespace cli
