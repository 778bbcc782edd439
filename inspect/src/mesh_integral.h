#pragma once

#include <cstdint>
#include <vector>

#include "double_double.h"
#include "mesh_view.h"

namespace ztcad::inspect {

/// Integrals over the solid inside a closed, consistently wound mesh.
struct SolidIntegrals {
  double volume = 0;      // below 0 if the mesh is inside out
  double center[3] = {};  // of the volume
  /// Integrals of (x - center.x)^2, yy, zz, xy, xz, yz.
  double second[6] = {};
  double error = 0;         // estimated relative error
  bool hasVolume = false;   // whether the volume is distinguishable from 0
  bool wasPrecise = false;  // whether the more precise sum was needed
};

/// What one pass over the facets finds.
struct FacetPass {
  double area = 0;
  std::int64_t degenerate = 0;
  std::vector<std::int64_t> degeneratePlaces;  // the first ones
  SolidIntegrals integrals;                    // meaningful for closed meshes only
};

/// Passes over the facets of which `isUsed` says that they belong to the surface; null: all.
///
/// The volume is divided into tetrahedra from an origin inside the box to each facet. Coordinates are taken
/// relative to the origin and scaled by a power of two: sums do not suffer from the place or the size of a
/// part. An estimate of the rounding goes along; where it exceeds 1e-12, as for thin walls, and the caller
/// wants the integrals, all is summed again with twice the precision, at 30 times the time.
/// @param wantsIntegrals whether the mesh is closed, so that the integrals have a meaning
FacetPass passOverFacets(const MeshView& mesh, const std::vector<bool>* isUsed, const Box& box,
                         double degenerateTolerance, std::size_t placesKept, bool wantsIntegrals,
                         int threads);

}  // namespace ztcad::inspect
