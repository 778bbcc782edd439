#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace cli {

/// Standard output. A write that fails throws `Failure`.
class Output {
 public:
  Output() : m_stream(stdout) {}
  Output& operator<<(std::string_view text) {
    write(text);
    return *this;
  }
  void write(std::string_view bytes);
  void flush();

 private:
  std::FILE* m_stream;
};

/// Prints "ztcad: message" to standard error.
void printError(std::string_view message);

/// The text on one line: control characters, which could also control a terminal, are replaced by escapes
/// such as "\n" and "\x1b".
std::string onOneLine(std::string_view text);

}  // namespace cli
