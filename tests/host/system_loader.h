#pragma once

#include <stdexcept>
#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

// One set of functions for the library loaders of Linux and Windows. Failures throw.
namespace system_loader {

#if defined(_WIN32)

[[noreturn]] inline void fail(const std::string& what) {
  throw std::runtime_error(what + ": error " + std::to_string(GetLastError()));
}

/// Opens a library; every call must be matched by one of `close`.
inline void* open(const char* fileName) {
  void* const handle = LoadLibraryA(fileName);
  if (!handle) fail(fileName);
  return handle;
}

inline void close(void* handle) {
  if (FreeLibrary(static_cast<HMODULE>(handle)) == 0) fail("FreeLibrary");
}

/// The address of an exported symbol of the library.
inline void* find(void* handle, const char* name) {
  const auto address = GetProcAddress(static_cast<HMODULE>(handle), name);
  if (!address) fail(name);
  return reinterpret_cast<void*>(address);
}

/// Whether the library is loaded.
inline bool isLoaded(const char* fileName) { return GetModuleHandleA(fileName) != nullptr; }

#else

[[noreturn]] inline void fail() { throw std::runtime_error(dlerror()); }

/// Opens a library; every call must be matched by one of `close`.
inline void* open(const char* fileName) {
  void* const handle = dlopen(fileName, RTLD_NOW | RTLD_LOCAL);
  if (!handle) fail();
  return handle;
}

inline void close(void* handle) {
  if (dlclose(handle) != 0) fail();
}

/// The address of an exported symbol of the library or of one of its dependencies.
inline void* find(void* handle, const char* name) {
  void* const address = dlsym(handle, name);
  if (!address) fail();
  return address;
}

/// Whether the library is loaded.
inline bool isLoaded(const char* fileName) {
  void* const handle = dlopen(fileName, RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}

#endif

}  // namespace system_loader
