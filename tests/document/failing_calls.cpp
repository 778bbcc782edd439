#undef _FORTIFY_SOURCE  // otherwise the system's headers define some of the functions below

#include "failing_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <map>
#include <utility>

namespace {

using Actions = std::map<std::string, std::function<int()>>;

Actions& actions() {
  static Actions all;
  return all;
}

bool areUnnamedFilesRefused = false;

/// Whether the call must fail; then `errno` is set.
bool fails(const char* function) {
  const auto place = actions().find(function);
  if (place == actions().end()) return false;
  const auto action = std::move(place->second);
  actions().erase(place);
  const int error = action();
  if (error != 0) errno = error;
  return error != 0;
}

/// The system's function of that name.
template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

Interference::Interference(const std::string& function, std::function<int()> before) : m_function(function) {
  actions()[function] = std::move(before);
}

Interference::~Interference() { actions().erase(m_function); }

bool Interference::happened() const { return actions().count(m_function) == 0; }

NoUnnamedFiles::NoUnnamedFiles() { areUnnamedFilesRefused = true; }
NoUnnamedFiles::~NoUnnamedFiles() { areUnnamedFilesRefused = false; }

extern "C" {

int open(const char* name, int flags, ...) {
  static auto* const system = next<int(const char*, int, ...)>("open");
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  return fails("open") ? -1 : system(name, flags, mode);
}

int openat(int folder, const char* name, int flags, ...) {
  static auto* const system = next<int(int, const char*, int, ...)>("openat");
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  if (areUnnamedFilesRefused && (flags & O_TMPFILE) == O_TMPFILE) {
    errno = EOPNOTSUPP;
    return -1;
  }
  return fails("openat") ? -1 : system(folder, name, flags, mode);
}

int fstat(int file, struct stat* status) noexcept {
  static auto* const system = next<int(int, struct stat*)>("fstat");
  return fails("fstat") ? -1 : system(file, status);
}

int fsync(int file) {
  static auto* const system = next<int(int)>("fsync");
  return fails("fsync") ? -1 : system(file);
}

/// The file is closed even if the call fails.
int close(int file) {
  static auto* const system = next<int(int)>("close");
  const bool isFailure = fails("close");
  const int error = errno;
  const int result = system(file);
  if (isFailure) errno = error;
  return isFailure ? -1 : result;
}

int renameat(int oldFolder, const char* oldName, int newFolder, const char* newName) noexcept {
  static auto* const system = next<int(int, const char*, int, const char*)>("renameat");
  return fails("renameat") ? -1 : system(oldFolder, oldName, newFolder, newName);
}

int linkat(int oldFolder, const char* oldName, int newFolder, const char* newName, int flags) noexcept {
  static auto* const system = next<int(int, const char*, int, const char*, int)>("linkat");
  return fails("linkat") ? -1 : system(oldFolder, oldName, newFolder, newName, flags);
}

int fchown(int file, uid_t user, gid_t group) noexcept {
  static auto* const system = next<int(int, uid_t, gid_t)>("fchown");
  return fails("fchown") ? -1 : system(file, user, group);
}
}
