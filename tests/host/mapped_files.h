#pragma once

#include <cstdint>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

/// A part of a file that is mapped into this process.
struct MappedPart {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  std::string file;

  bool isOfTheLibrary() const { return file.find("/libztCAD.so") != std::string::npos; }
};

/// All of them, as the system tells them; memory without a file is left out.
inline std::vector<MappedPart> mappedParts() {
  std::vector<MappedPart> parts;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    std::istringstream fields(line);
    MappedPart part;
    char dash = 0;
    std::string skipped;
    fields >> std::hex >> part.begin >> dash >> part.end >> skipped >> skipped >> skipped >> skipped;
    std::getline(fields >> std::ws, part.file);
    if (!part.file.empty() && part.file.front() == '/') parts.push_back(part);
  }
  return parts;
}

inline std::set<std::string> mappedFiles() {
  std::set<std::string> files;
  for (const MappedPart& part : mappedParts())
    files.insert(part.file);
  return files;
}

inline bool libraryIsMapped() {
  for (const MappedPart& part : mappedParts())
    if (part.isOfTheLibrary()) return true;
  return false;
}

/// Whether an address belongs to the code or the data of the library, which go when it is unloaded.
inline bool liesInLibrary(const void* address) {
  const auto place = reinterpret_cast<std::uintptr_t>(address);
  for (const MappedPart& part : mappedParts())
    if (part.isOfTheLibrary() && part.begin <= place && place < part.end) return true;
  return false;
}
