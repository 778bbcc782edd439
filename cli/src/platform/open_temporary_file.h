#pragma once

#include <cstdio>
#include <string>

namespace cli {

/// Makes and opens a new file in a folder, for this user alone.
/// @param name output: the name of the file
/// @return null, with the reason in `errno`, if there is none
std::FILE* openTemporaryFile(const std::string& folder, std::string& name);

}  // namespace cli
