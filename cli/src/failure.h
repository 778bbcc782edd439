#pragma once

#include <stdexcept>

namespace cli {

/// The command cannot go on. The program prints the message and returns `ExitCode::Failed`.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The arguments are wrong. The message is followed by a pointer to the help.
class UsageError : public Failure {
 public:
  using Failure::Failure;
};

}  // namespace cli
