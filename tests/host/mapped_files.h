#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#if defined(_WIN32)
#define PSAPI_VERSION 2  // the functions are in kernel32
#include <windows.h>
// must follow windows.h
#include <psapi.h>
#endif

/// A mapping of a part of a file into this process.
struct MappedPart {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  std::string file;

  bool isOfLibrary() const {
    const std::string name = std::filesystem::path(file).filename().string();
    return name == "ztCAD.dll" || name.rfind("libztCAD", 0) == 0;
  }
};

#if defined(_WIN32)

/// The program and the loaded libraries, each as one part.
inline std::vector<MappedPart> mappedParts() {
  HMODULE modules[1024];
  DWORD bytes = 0;
  if (!EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &bytes)) return {};
  std::vector<MappedPart> parts;
  for (std::size_t i = 0; i < bytes / sizeof(HMODULE); ++i) {
    MODULEINFO info{};
    char name[4096] = {};
    GetModuleInformation(GetCurrentProcess(), modules[i], &info, sizeof info);
    GetModuleFileNameA(modules[i], name, sizeof name);
    const auto begin = reinterpret_cast<std::uintptr_t>(info.lpBaseOfDll);
    parts.push_back({begin, begin + info.SizeOfImage, name});
  }
  return parts;
}

#else

/// All mappings of files, as reported by the system; anonymous memory is left out.
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

#endif

inline std::set<std::string> mappedFiles() {
  std::set<std::string> files;
  for (const MappedPart& part : mappedParts())
    files.insert(part.file);
  return files;
}

inline bool libraryIsMapped() {
  for (const MappedPart& part : mappedParts())
    if (part.isOfLibrary()) return true;
  return false;
}

/// Whether an address is in the code or data of the library, which become invalid when it is unloaded.
inline bool liesInLibrary(const void* address) {
#if defined(_WIN32)
  HMODULE owner = nullptr;
  const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  return GetModuleHandleExA(flags, static_cast<LPCSTR>(address), &owner) &&
         owner == GetModuleHandleA("ztCAD.dll");
#else
  const auto place = reinterpret_cast<std::uintptr_t>(address);
  for (const MappedPart& part : mappedParts())
    if (part.isOfLibrary() && part.begin <= place && place < part.end) return true;
  return false;
#endif
}
