#include "serve.h"

#include <array>
#include <cstdio>
#include <string>

#include "../check/review_file.h"
#include "message.h"

namespace cli {

namespace {

/// Nothing at the end of the input.
std::optional<ReviewRequest> readRequest() {
  std::array<char, frameHeaderSize> header{};
  if (std::fread(header.data(), 1, header.size(), stdin) != header.size()) return std::nullopt;
  constexpr std::uint64_t longest = 1 << 20;  // guards against a terminal as standard input
  const std::uint64_t length = lengthIn(header.data());
  if (length > longest) return std::nullopt;
  std::string message(length, '\0');
  if (std::fread(message.data(), 1, message.size(), stdin) != message.size()) return std::nullopt;
  return requestFrom(message);
}

bool write(const std::string& bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

}  // namespace

ExitCode serve() {
  while (const std::optional<ReviewRequest> request = readRequest())
    if (!write(framed(toMessage(reviewFile(*request))))) return ExitCode::Failed;
  return ExitCode::Good;
}

}  // namespace cli
