#pragma once

#include <memory>
#include <string>

#include "platform/temporary_file.h"

namespace cli {

/// The name that means standard input, or standard output where a file is written.
inline constexpr const char* standardStream = "-";

/// A file to read. Standard input is copied into a temporary file, so that it is read exactly as a file is.
class InputFile {
 public:
  /// Throws `Failure` if standard input cannot be copied.
  explicit InputFile(const std::string& name);

  const std::string& path() const { return m_copy ? m_copy->name() : m_name; }

 private:
  std::string m_name;
  std::unique_ptr<TemporaryFile> m_copy;
};

}  // namespace cli
