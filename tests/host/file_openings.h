#pragma once

#include <string>
#include <vector>

/// The names of the files that this process opens while one of these lives, whoever asks: the program defines the
/// functions that open files itself, and hands on to those of the system. Seen is what goes through these functions,
/// so not what the system's libraries open inside themselves.
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
