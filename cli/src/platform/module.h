#pragma once

namespace cli {

/// Loads a library that comes with the program: from the program's own folder in the build, else from where
/// it is installed. It stays loaded. Throws `Failure` if it is not there or cannot be loaded.
/// @return the address of a function in it
void* functionOfModule(const char* module, const char* function);

}  // namespace cli
