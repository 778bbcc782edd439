#pragma once

#include <string>

#include "model.h"

namespace cli {

/// The module that reads mesh files by Assimp: a library of its own, which only `convert` loads, because
/// Assimp would double the time that every other command takes to start.
/// @{
inline constexpr const char* assimpModuleName = "ztcad-assimp.so";
inline constexpr const char* assimpReadName = "ztcadReadByAssimp";
/// Reads a file.
/// @param extension of the format, such as "obj"
/// @param problem   output: why the file was not read
/// @return whether it was
using AssimpRead = bool (*)(const char* path, const char* extension, Model& model, std::string& problem);
/// @}

/// Reads a file by Assimp. Throws `Failure` if the module is missing or the file cannot be read.
Model readByAssimp(const std::string& path, const std::string& extension);

}  // namespace cli
