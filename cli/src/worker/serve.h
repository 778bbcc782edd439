#pragma once

#include "../exit_code.h"

namespace cli {

/// The hidden command with which the program starts its workers.
inline constexpr const char* workerCommand = "worker";

/// The work of a worker: reviews the files that standard input names, one by one, until it ends.
ExitCode serve();

}  // namespace cli
