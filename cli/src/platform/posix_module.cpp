#include <dlfcn.h>

#include <filesystem>
#include <string>

#include "../failure.h"
#include "module.h"

namespace cli {

void* functionOfModule(const char* module, const char* function) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
  fs::path file = folder / module;
  if (!fs::exists(file, error)) file = folder / ZTCAD_MODULES_FROM_PROGRAM / module;
  if (!fs::exists(file, error))
    throw Failure("this format needs the module " + std::string(module) + ", which is not installed");
  void* const library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const address = library ? ::dlsym(library, function) : nullptr;
  if (!address) {
    const char* const problem = ::dlerror();
    throw Failure(std::string("the module ") + module + " cannot be loaded: " + (problem ? problem : ""));
  }
  return address;
}

}  // namespace cli
