#pragma once

#include <string>

#include "../exit_code.h"
#include "comparison.h"

namespace cli {

struct DiffOptions {
  std::string a;
  std::string b;
  Tolerance tolerance;
  bool json = false;
};

/// The command `diff`.
ExitCode diff(const DiffOptions& options);

}  // namespace cli
