#include "output.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "failure.h"

namespace cli {

namespace {

[[noreturn]] void fail() {
  throw Failure(std::string("cannot write to standard output: ") + std::strerror(errno));
}

bool isControl(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 || code == 0x7f;
}

std::string escaped(char character) {
  if (character == '\n') return "\\n";
  if (character == '\r') return "\\r";
  if (character == '\t') return "\\t";
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "\\x%02x", static_cast<unsigned char>(character));
  return text.data();
}

}  // namespace

void Output::write(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), m_stream) != bytes.size()) fail();
}

void Output::flush() {
  if (std::fflush(m_stream) != 0) fail();
}

void printError(std::string_view message) {
  const std::string line = "ztcad: " + onOneLine(message) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string onOneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  for (const char character : text) {
    if (isControl(character))
      line += escaped(character);
    else
      line += character;
  }
  return line;
}

}  // namespace cli
