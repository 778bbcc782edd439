#pragma once

#include <algorithm>

namespace cli {

/// What the program returns. Over several files the highest code counts.
enum class ExitCode {
  Good = 0,
  NotWell = 1,  ///< the command did its work, and what it looked at is not well
  Failed = 2    ///< the command could not do its work, or not all of it
};

constexpr ExitCode worst(ExitCode a, ExitCode b) { return std::max(a, b); }

}  // namespace cli
