#pragma once

#include <string>

#include "finding.h"

namespace cli {

/// A file to review.
struct ReviewRequest {
  std::string file;
  std::string folder;    // that the document's references are relative to; empty: the current one
  bool inspects = true;  // whether its scene, meshes and mass data are checked too
};

/// Has the libraries review a file.
Review reviewFile(const ReviewRequest& request);

}  // namespace cli
