#include "serve.h"

#include <array>
#include <cstdio>
#include <string>

#include "../check/review_file.h"
#include "message.h"

namespace cli {

namespace {

bool readRequest(std::string& file) {
  std::array<char, frameHeaderSize> header{};
  if (std::fread(header.data(), 1, header.size(), stdin) != header.size()) return false;
  constexpr std::uint64_t longestName = 1 << 20;  // guards against a terminal as standard input
  const std::uint64_t length = lengthIn(header.data());
  if (length > longestName) return false;
  file.resize(length);
  return std::fread(file.data(), 1, file.size(), stdin) == file.size();
}

bool write(const std::string& bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

}  // namespace

ExitCode serve() {
  for (std::string file; readRequest(file);)
    if (!write(framed(toMessage(reviewFile(file))))) return ExitCode::Failed;
  return ExitCode::Good;
}

}  // namespace cli
