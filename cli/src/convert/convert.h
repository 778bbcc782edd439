#pragma once

#include <optional>
#include <string>

#include "../exit_code.h"
#include "mesh_format.h"

namespace cli {

struct ConvertOptions {
  std::string input;
  std::string output;
  std::optional<MeshFormat> from;  // by default by extension
  std::optional<MeshFormat> to;
  double scale = 1;
  std::string name;               // of solids; empty: as in the file
  std::optional<double> density;  // gives closed solids mass-inertia data
  std::optional<double> join;     // distance within which vertices are joined; by default equal ones
};

/// The command `convert`.
ExitCode convert(const ConvertOptions& options);

}  // namespace cli
