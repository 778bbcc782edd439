#pragma once

#include <functional>
#include <string>

/// Interferes with one call of a function of the system: the first one of that name while the object lives.
/// The program interposes the functions open, openat, fstat, fsync, close, linkat, renameat and fchown; calls
/// of others, and calls from inside the C library, are not affected.
class Interference {
 public:
  /// @param before runs before the call; an error number that is not 0 lets the call fail with it
  Interference(const std::string& function, std::function<int()> before);
  Interference(const std::string& function, int error) : Interference(function, [error] { return error; }) {}
  ~Interference();
  Interference(const Interference&) = delete;
  Interference& operator=(const Interference&) = delete;

  /// Whether the function was called.
  bool happened() const;

 private:
  const std::string m_function;
};

/// A file system that cannot create files without a name, for a scope.
class NoUnnamedFiles {
 public:
  NoUnnamedFiles();
  ~NoUnnamedFiles();
  NoUnnamedFiles(const NoUnnamedFiles&) = delete;
  NoUnnamedFiles& operator=(const NoUnnamedFiles&) = delete;
};
