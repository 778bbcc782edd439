#pragma once

#include <string>

#include "../exit_code.h"

namespace cli {

struct FormatOptions {
  std::string file;
  std::string output;  // empty: standard output
  bool inPlace = false;
  bool check = false;
};

/// The command `format`.
ExitCode format(const FormatOptions& options);

}  // namespace cli
