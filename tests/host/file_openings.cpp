#undef _FORTIFY_SOURCE  // otherwise the system's headers define some of the functions below

#include "file_openings.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace {

std::vector<std::string>* recorded = nullptr;

void record(const char* name) {
  if (recorded) recorded->emplace_back(name);
}

/// The system's function of that name.
template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

using Open = int(const char*, int, ...);
using OpenAt = int(int, const char*, int, ...);
using OpenStream = std::FILE*(const char*, const char*);

mode_t modeOf(int flags, va_list& arguments) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

FileOpenings::FileOpenings() { recorded = &m_names; }
FileOpenings::~FileOpenings() { recorded = nullptr; }

bool FileOpenings::contain(const std::string& name) const {
  return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
}

extern "C" {

int open(const char* name, int flags, ...) {
  static auto* const system = next<Open>("open");
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeOf(flags, arguments);
  va_end(arguments);
  record(name);
  return system(name, flags, mode);
}

int open64(const char* name, int flags, ...) {
  static auto* const system = next<Open>("open64");
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeOf(flags, arguments);
  va_end(arguments);
  record(name);
  return system(name, flags, mode);
}

int openat(int folder, const char* name, int flags, ...) {
  static auto* const system = next<OpenAt>("openat");
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeOf(flags, arguments);
  va_end(arguments);
  record(name);
  return system(folder, name, flags, mode);
}

int openat64(int folder, const char* name, int flags, ...) {
  static auto* const system = next<OpenAt>("openat64");
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeOf(flags, arguments);
  va_end(arguments);
  record(name);
  return system(folder, name, flags, mode);
}

std::FILE* fopen(const char* name, const char* mode) {
  static auto* const system = next<OpenStream>("fopen");
  record(name);
  return system(name, mode);
}

std::FILE* fopen64(const char* name, const char* mode) {
  static auto* const system = next<OpenStream>("fopen64");
  record(name);
  return system(name, mode);
}
}
