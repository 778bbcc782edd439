#pragma once

#include <string>
#include <string_view>

#include "../convert/output_file.h"

namespace cli {

/// Writes bytes to a file as Base64.
class Base64 {
 public:
  explicit Base64(OutputFile& file) : m_file(file) {}

  void write(std::string_view bytes);
  /// Writes what is left. Call it once, at the end.
  void finish();

 private:
  OutputFile& m_file;
  std::string m_rest;  // fewer than three bytes
};

}  // namespace cli
