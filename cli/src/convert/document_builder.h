#pragma once

#include <optional>
#include <string>

#include "../loaded_document.h"
#include "model.h"

namespace cli {

struct DocumentSettings {
  std::string source;  // name of the file that the model is from
  std::optional<double> density;
};

/// Makes a document of a model: a solid for each mesh of triangles, lines and points. Nodes whose transform
/// only moves and turns become coordinate systems; other transforms are applied to the vertices. Prints what
/// it cannot do.
LoadedDocument documentOf(const Model& model, const DocumentSettings& settings);

}  // namespace cli
