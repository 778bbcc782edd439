#pragma once

#include "model.h"
#include "output_file.h"

namespace cli {

/// What a mesh file could not take.
struct Losses {
  std::int64_t polylines = 0;
  std::int64_t points = 0;
};

/// Each writes a model of which every number is finite and every index is in range. Formats with one frame
/// get the meshes where their nodes place them.
/// @{
Losses writeStl(const Model& model, OutputFile& file);  ///< binary; throws `Failure` beyond 2^32 - 1 facets
Losses writeStlText(const Model& model, OutputFile& file);  ///< a solid for each node
Losses writeObj(const Model& model, OutputFile& file);      ///< an object for each node
Losses writePly(const Model& model, OutputFile& file, bool asText);
Losses writeGlb(const Model& model, OutputFile& file);  ///< throws `Failure` beyond 4 GiB
Losses write3mf(const Model& model, OutputFile& file);  ///< throws `Failure` beyond 4 GiB
/// @}

}  // namespace cli
