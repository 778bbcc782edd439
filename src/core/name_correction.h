#pragma once

#include <string>

namespace ztcad {

/// Makes a valid element name out of any text: no digit in front, and each run of characters that are neither
/// letters nor digits replaced by one underscore. An empty name takes `fallback` instead, and "_" where that
/// is empty too. Letters are those of every script. The answer comes in the encoding in which the text came.
std::string correctName(const std::string& name, const std::string& fallback);

}  // namespace ztcad
