#include "measuring.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

double waitedForDisk = 0;

int waitFor(long systemCall, int file) {
  const auto start = std::chrono::steady_clock::now();
  const long result = ::syscall(systemCall, file);
  waitedForDisk += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return static_cast<int>(result);
}

/// A field of the process's status, which tells kilobytes.
double statusBytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.compare(0, field.size(), field) == 0) return 1024 * std::stod(line.substr(field.size()));
  throw std::runtime_error("no " + field + " in /proc/self/status");
}

[[noreturn]] void runAndEnd(const std::function<benchmarks::Figures()>& measure, int pipeEnd) {
  benchmarks::Figures figures;
  try {
    figures = measure();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    figures.fine = false;
  }
  const bool told = ::write(pipeEnd, &figures, sizeof figures) == sizeof figures;
  ::_exit(told ? 0 : 1);
}

}  // namespace

// A program's own functions come before the system's, for its libraries too: so the wait of every save is known,
// whoever asks for it.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" int fsync(int file) { return waitFor(SYS_fsync, file); }
extern "C" int fdatasync(int file) { return waitFor(SYS_fdatasync, file); }
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace benchmarks {

double diskSeconds() { return waitedForDisk; }
double residentBytes() { return statusBytes("VmRSS:"); }
double peakBytes() { return statusBytes("VmHWM:"); }

bool forgetPeak() {
  const int file = ::open("/proc/self/clear_refs", O_WRONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool done = ::write(file, "5", 1) == 1;
  ::close(file);
  return done;
}

void sweepCaches() {
  static std::vector<unsigned char> other(128 << 20);
  for (unsigned char& byte : other)
    ++byte;
}

Figures inChild(const std::function<Figures()>& measure) {
  std::fflush(nullptr);  // else the child would print it again
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) runAndEnd(measure, ends[1]);
  ::close(ends[1]);
  Figures figures;
  const bool told = ::read(ends[0], &figures, sizeof figures) == sizeof figures;
  ::close(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (!told || status != 0) figures.fine = false;
  return figures;
}

}  // namespace benchmarks
