// Memory that runs out while a host loads the library and makes its first call. Each allocation is refused in
// turn, alone and with all that follow it, each time in a process of its own.
//
//   exhaustion_loading <library> [library loaded before...]
//   exhaustion_loading --at <n> once|from-there-on <library> [library loaded before...]
//
// The host must survive, except where the OpenMP runtime ends it, and when memory is back, load and call.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "refused_allocations.h"

namespace {

using refused_allocations::Mode;

/// Loads the library and creates a document; false if one of these fails.
bool loadAndCall(const char* library) {
  void* const handle = dlopen(library, RTLD_NOW);
  if (!handle) return false;
  using Create = void* (*)(const char*);
  const auto create = reinterpret_cast<Create>(dlsym(handle, "crtGMDDocument_nostl"));
  return create && create("a document with a text that is too long for any short string");
}

void loadBefore(const std::vector<std::string>& libraries) {
  for (const std::string& library : libraries)
    if (!dlopen(library.c_str(), RTLD_NOW | RTLD_GLOBAL)) throw std::runtime_error(dlerror());
}

enum Status { Good = 0, Bad = 77 };  // the OpenMP runtime ends processes with 1

Status attempt(const char* library, long nth, Mode mode) {
  refused_allocations::start(nth, mode);
  loadAndCall(library);
  refused_allocations::stop();
  return loadAndCall(library) ? Good : Bad;
}

int statusOf(const char* library, long nth, Mode mode) {
  const pid_t process = fork();
  if (process < 0) throw std::runtime_error("no process");
  if (process == 0) {
    alarm(60);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    _exit(attempt(library, nth, mode));
  }
  int status = 0;
  waitpid(process, &status, 0);
  return status;
}

long allocationsOf(const char* library) {
  int numbers[2];
  if (pipe(numbers) != 0) throw std::runtime_error("no pipe");
  const pid_t process = fork();
  if (process == 0) {
    refused_allocations::start(0, Mode::Once);
    const bool works = loadAndCall(library);
    const long count = refused_allocations::stop();
    _exit(works && write(numbers[1], &count, sizeof count) == sizeof count ? Good : Bad);
  }
  close(numbers[1]);
  long count = 0;
  if (read(numbers[0], &count, sizeof count) != sizeof count)
    throw std::runtime_error("the library does not load");
  close(numbers[0]);
  waitpid(process, nullptr, 0);
  return count;
}

bool refuseEach(const char* library) {
  const long allocations = allocationsOf(library);
  long ended = 0;
  long bad = 0;
  for (long nth = 1; nth <= allocations; ++nth) {
    for (const Mode mode : {Mode::Once, Mode::FromThereOn}) {
      std::fflush(stdout);  // or each process prints it again
      const int status = statusOf(library, nth, mode);
      if (status == 0) continue;
      const bool isBad = WIFEXITED(status) && WEXITSTATUS(status) == Bad;
      ++(isBad ? bad : ended);
      std::printf("allocation %ld refused %s: %s\n", nth, mode == Mode::Once ? "once" : "from-there-on",
                  isBad ? "the host cannot load the library later" : "the process ends");
    }
  }
  std::printf("%ld allocations: %ld processes ended, %ld could not go on\n", allocations, ended, bad);
  // the OpenMP runtime ends the process where it has no memory for the thread's settings: two allocations
  constexpr long known = 4;
  return ended <= known && bad == 0;
}

int run(std::vector<std::string> arguments) {
  const bool one = arguments.at(0) == "--at";
  const std::size_t library = one ? 3 : 0;
  loadBefore({arguments.begin() + static_cast<std::ptrdiff_t>(library) + 1, arguments.end()});
  const char* const name = arguments.at(library).c_str();
  if (!one) return refuseEach(name) ? EXIT_SUCCESS : EXIT_FAILURE;
  return attempt(name, std::stol(arguments[1]), arguments[2] == "once" ? Mode::Once : Mode::FromThereOn);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "exhaustion_loading: %s\n", exception.what());
    return EXIT_FAILURE;
  }
}
