#include "measurement.h"

#include <fcntl.h>
#include <malloc.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

double secondsWaitedForDisk = 0;

int timedSync(long systemCall, int file) {
  const auto start = std::chrono::steady_clock::now();
  const long result = ::syscall(systemCall, file);
  secondsWaitedForDisk += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return static_cast<int>(result);
}

/// A field of the process's status, converted to bytes: the kernel reports kilobytes.
double statusBytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.compare(0, field.size(), field) == 0) return 1024 * std::stod(line.substr(field.size()));
  throw std::runtime_error("no " + field + " in /proc/self/status");
}

[[noreturn]] void runAndExit(const std::function<benchmarks::Measurement()>& measure, int pipeWriteEnd) {
  benchmarks::Measurement measurement;
  try {
    measurement = measure();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    measurement.succeeded = false;
  }
  const bool sent = ::write(pipeWriteEnd, &measurement, sizeof measurement) == sizeof measurement;
  ::_exit(sent ? 0 : 1);
}

}  // namespace

// Functions defined by the program take precedence over the C library's, also for calls from shared
// libraries: the wait for the disk is measured in every implementation.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's names are reserved
extern "C" int fsync(int file) { return timedSync(SYS_fsync, file); }
extern "C" int fdatasync(int file) { return timedSync(SYS_fdatasync, file); }
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace benchmarks {

double diskSeconds() { return secondsWaitedForDisk; }
double residentBytes() { return statusBytes("VmRSS:"); }
double peakBytes() { return statusBytes("VmHWM:"); }

bool resetPeak() {
  const int file = ::open("/proc/self/clear_refs", O_WRONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool done = ::write(file, "5", 1) == 1;
  ::close(file);
  return done;
}

void evictCaches() {
  static std::vector<unsigned char> filler(128 << 20);
  for (unsigned char& byte : filler)
    ++byte;
}

void returnFreedMemory() {
  constexpr int bytes = 128 * 1024;  // the value at the start of a program
  if (::mallopt(M_TRIM_THRESHOLD, bytes) != 1) throw std::runtime_error("mallopt() failed");
}

Measurement inChild(const std::function<Measurement()>& measure) {
  std::fflush(nullptr);  // otherwise the child would print buffered output a second time
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) throw std::runtime_error("pipe() failed");
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("fork() failed");
  if (child == 0) runAndExit(measure, ends[1]);
  ::close(ends[1]);
  Measurement measurement;
  const bool received = ::read(ends[0], &measurement, sizeof measurement) == sizeof measurement;
  ::close(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (!received || status != 0) measurement.succeeded = false;
  return measurement;
}

}  // namespace benchmarks
