#pragma once

#include <string>

#include "finding.h"

namespace cli {

/// Has the library review a file.
Review reviewFile(const std::string& file);

}  // namespace cli
