#pragma once

#include <filesystem>
#include <string>

namespace cli {

// File names are bytes, on Windows UTF-8, with "/" between folders.

inline std::filesystem::path pathOf(const std::string& name) { return std::filesystem::u8path(name); }

inline std::string nameOf(const std::filesystem::path& path) { return path.generic_u8string(); }

}  // namespace cli
