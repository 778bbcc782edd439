#pragma once

#include <stdexcept>
#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

// The system's own loader of libraries, by one set of names. Failures throw.
namespace system_loader {

#if defined(_WIN32)

[[noreturn]] inline void fail(const std::string& what) {
  throw std::runtime_error(what + ": error " + std::to_string(GetLastError()));
}

/// Opens a library; each `open` asks for one `close`.
inline void* open(const char* fileName) {
  void* const handle = LoadLibraryA(fileName);
  if (!handle) fail(fileName);
  return handle;
}

inline void close(void* handle) {
  if (FreeLibrary(static_cast<HMODULE>(handle)) == 0) fail("FreeLibrary");
}

/// The address of what the library exports under this name.
inline void* find(void* handle, const char* name) {
  const auto address = GetProcAddress(static_cast<HMODULE>(handle), name);
  if (!address) fail(name);
  return reinterpret_cast<void*>(address);
}

/// Whether the loader counts the library among the loaded ones.
inline bool isLoaded(const char* fileName) { return GetModuleHandleA(fileName) != nullptr; }

#else

[[noreturn]] inline void fail() { throw std::runtime_error(dlerror()); }

/// Opens a library; each `open` asks for one `close`.
inline void* open(const char* fileName) {
  void* const handle = dlopen(fileName, RTLD_NOW | RTLD_LOCAL);
  if (!handle) fail();
  return handle;
}

inline void close(void* handle) {
  if (dlclose(handle) != 0) fail();
}

/// The address of what the library, or one that it needs, exports under this name.
inline void* find(void* handle, const char* name) {
  void* const address = dlsym(handle, name);
  if (!address) fail();
  return address;
}

/// Whether the loader counts the library among the loaded ones.
inline bool isLoaded(const char* fileName) {
  void* const handle = dlopen(fileName, RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}

#endif

}  // namespace system_loader
