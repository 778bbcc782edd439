#pragma once

#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>

/// A temporary folder for one test, removed with its content. Does not need Qt, unlike TemporaryFiles.
class ScratchFolder {
 public:
  ScratchFolder() {
    if (!std::filesystem::create_directory(m_path)) throw std::runtime_error("no scratch folder");
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// The path of a file in the folder; the file need not exist. Names are UTF-8.
  std::string file(const std::string& name) const {
    return (m_path / std::filesystem::u8path(name)).u8string();
  }

 private:
  std::filesystem::path m_path =
      std::filesystem::temp_directory_path() / ("ztcad-host-" + std::to_string(std::random_device{}()));
};
