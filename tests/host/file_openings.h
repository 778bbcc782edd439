#pragma once

#include <string>
#include <vector>

/// Records the names of the files that this process opens while the object lives. The program interposes the
/// C library's functions that open files, so files that the C library opens internally are not recorded.
class FileOpenings {
 public:
  FileOpenings();
  ~FileOpenings();
  FileOpenings(const FileOpenings&) = delete;
  FileOpenings& operator=(const FileOpenings&) = delete;

  const std::vector<std::string>& names() const { return m_names; }
  bool contain(const std::string& name) const;

 private:
  std::vector<std::string> m_names;
};
