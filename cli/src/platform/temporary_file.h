#pragma once

#include <cstdio>
#include <string>

namespace cli {

/// A new file that only this user may read, removed at the end of the object's life.
class TemporaryFile {
 public:
  /// Throws `Failure` if the file cannot be made.
  TemporaryFile();
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& name() const { return m_name; }
  /// Appends the rest of a stream. Throws `Failure` if it cannot be read or the file cannot be written.
  void fillFrom(std::FILE* stream);

 private:
  std::string m_name;
  std::FILE* m_file = nullptr;
};

}  // namespace cli
