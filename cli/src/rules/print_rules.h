#pragma once

#include <string>

#include "../exit_code.h"

namespace cli {

struct RulesOptions {
  std::string rule;  // empty: all
  bool json = false;
};

/// The command `rules`.
ExitCode printRules(const RulesOptions& options);

}  // namespace cli
