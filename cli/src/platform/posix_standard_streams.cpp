#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

#include "open_temporary_file.h"
#include "standard_streams.h"

namespace cli {

void prepareStandardStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  // a closed stream keeps its number: another file that got it would be written to
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
    if (::fcntl(stream, F_GETFD) < 0)
      static_cast<void>(::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

std::vector<std::string> programArguments(int argc, char** argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool isTerminal(std::FILE* stream) {
  const char* const terminal = std::getenv("TERM");
  return ::isatty(::fileno(stream)) == 1 && terminal && std::strcmp(terminal, "dumb") != 0;
}

std::FILE* openTemporaryFile(const std::string& folder, std::string& name) {
  name = folder + "/ztcad-XXXXXX";
  const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
  return descriptor < 0 ? nullptr : ::fdopen(descriptor, "wb");
}

}  // namespace cli
