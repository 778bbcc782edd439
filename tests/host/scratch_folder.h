#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

/// A folder for one test, removed with all that is in it.
class ScratchFolder {
 public:
  ScratchFolder() {
    if (!mkdtemp(m_path.data())) throw std::runtime_error("no scratch folder");
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string file(const std::string& name) const { return m_path + '/' + name; }

 private:
  std::string m_path = (std::filesystem::temp_directory_path() / "ztcad-host-XXXXXX").string();
};
