#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/document/file.h"
#include "temporary_files.h"

// Writing and reading of files, with names in UTF-8 and no limit that matters.

using Names = std::vector<std::string>;

constexpr std::size_t anyLength = 1000000000;

inline ztcad::FileError errorOfWriting(const std::string& fileName, const ztcad::WriteText& write) {
  return ztcad::writeTextFile(ztcad::fileNameOf(fileName), anyLength, write);
}

inline bool writeWith(const std::string& fileName, const ztcad::WriteText& write) {
  return errorOfWriting(fileName, write).code == 0;
}

inline bool write(const std::string& fileName, const std::string& bytes) {
  return writeWith(fileName, [&bytes](ztcad::ByteOutput& output) { output.write(bytes); });
}

inline ztcad::FileBytes read(const std::string& fileName) {
  return ztcad::readFile(ztcad::fileNameOf(fileName), anyLength);
}
