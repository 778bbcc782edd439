#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "../output.h"

namespace cli {

/// A file that is written as a whole: it replaces an earlier one of its name at the end, in one step, or not
/// at all. What is no regular file, such as a device, is written directly; "-" is standard output.
class OutputFile {
 public:
  /// Throws `Failure` if the file cannot be made, here and below.
  explicit OutputFile(const std::string& name);
  /// Removes what was written, unless `commit` was called.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void write(std::string_view bytes);
  /// Integers and reals as little-endian bytes.
  void write(std::uint32_t value);
  void write(float value);
  void write(double value);
  void commit();

 private:
  void flush();
  [[noreturn]] void fail() const;

  std::string m_name;
  std::string m_temporaryName;  // empty: the file is written directly
  bool m_isStandardOutput;
  std::ofstream m_file;
  std::string m_buffer;
};

}  // namespace cli
