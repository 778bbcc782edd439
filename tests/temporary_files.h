#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <QDir>
#include <QTemporaryDir>
#include <stdexcept>
#include <string>
#include <vector>

// File names are UTF-8 throughout.

/// The bytes of a file, empty for one that does not open.
inline std::string bytesOf(const std::string& fileName) {
  std::ifstream file(std::filesystem::u8path(fileName), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The bytes of a file that was written as text, with LF for every line end: where the system's text files have CR LF,
/// each line must have one.
inline std::string textBytesOf(const std::string& fileName) {
#if defined(_WIN32)
  std::string text;
  for (const char byte : bytesOf(fileName)) {
    if (byte == '\n') {
      if (text.empty() || text.back() != '\r') throw std::runtime_error("a line without CR in " + fileName);
      text.pop_back();
    }
    text += byte;
  }
  return text;
#else
  return bytesOf(fileName);
#endif
}

/// Writes a file as a whole.
inline void putBytes(const std::string& fileName, const std::string& bytes) {
  std::ofstream file(std::filesystem::u8path(fileName), std::ios::binary);
  if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush())
    throw std::runtime_error("cannot write " + fileName);
}

/// A folder for one test, removed with all that is in it.
class TemporaryFiles {
 public:
  TemporaryFiles() {
    if (!m_folder.isValid()) throw std::runtime_error("no temporary folder");
  }

  std::string folder() const { return m_folder.path().toStdString(); }
  /// The path of a file in the folder, which need not exist.
  std::string path(const std::string& name) const { return folder() + '/' + name; }

  /// Writes a file into the folder and returns its path.
  std::string put(const std::string& name, const std::string& bytes) const {
    putBytes(path(name), bytes);
    return path(name);
  }

  /// Names of all that is in the folder, hidden files and dangling links included, in their order.
  std::vector<std::string> names() const {
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    std::vector<std::string> names;
    for (const QString& name : QDir(m_folder.path()).entryList(everything))
      names.push_back(name.toStdString());
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  QTemporaryDir m_folder;
};
