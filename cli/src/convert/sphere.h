#pragma once

#include "model.h"

namespace cli {

/// A sphere as triangles: an icosahedron of which each facet is cut into 64, its vertices on the sphere.
Mesh sphereMesh(const double* center, double radius);

}  // namespace cli
