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

// All file names are UTF-8.

/// The bytes of a file; empty if it cannot be opened.
inline std::string bytesOf(const std::string& fileName) {
  std::ifstream file(std::filesystem::u8path(fileName), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The bytes of a file written in text mode, with LF line ends. On systems whose text files use CR LF, a line
/// without CR is an error.
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

/// Replaces the content of a file; throws if it cannot be written.
inline void putBytes(const std::string& fileName, const std::string& bytes) {
  std::ofstream file(std::filesystem::u8path(fileName), std::ios::binary);
  if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush())
    throw std::runtime_error("cannot write " + fileName);
}

/// A temporary folder for one test, removed with its content.
class TemporaryFiles {
 public:
  TemporaryFiles() {
    if (!m_folder.isValid()) throw std::runtime_error("no temporary folder");
  }

  std::string folder() const { return m_folder.path().toStdString(); }
  /// The path of a file in the folder; the file need not exist.
  std::string path(const std::string& name) const { return folder() + '/' + name; }

  /// Writes a file into the folder and returns its path.
  std::string put(const std::string& name, const std::string& bytes) const {
    putBytes(path(name), bytes);
    return path(name);
  }

  /// Sorted names of all entries of the folder, including hidden files and dangling links.
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
