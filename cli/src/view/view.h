#pragma once

#include <string>
#include <string_view>

#include "../exit_code.h"

namespace cli {

struct ViewOptions {
  std::string file;
  std::string output;
};

/// The command `view`.
ExitCode view(const ViewOptions& options);

/// The command with another page than the program's own.
ExitCode viewWith(const ViewOptions& options, std::string_view page);

}  // namespace cli
