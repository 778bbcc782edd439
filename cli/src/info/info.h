#pragma once

#include <string>
#include <vector>

#include "../exit_code.h"

namespace cli {

struct InfoOptions {
  std::vector<std::string> files;
  bool tree = false;
  bool json = false;
};

/// The command `info`.
ExitCode printInfo(const InfoOptions& options);

}  // namespace cli
