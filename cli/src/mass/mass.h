#pragma once

#include <optional>
#include <string>

#include "../exit_code.h"

namespace cli {

struct MassOptions {
  std::string file;
  std::optional<double> density;  // mass of a unit of volume
  std::string output;             // document with the computed data; empty: none
  bool json = false;
};

/// The command `mass`.
ExitCode printMass(const MassOptions& options);

}  // namespace cli
