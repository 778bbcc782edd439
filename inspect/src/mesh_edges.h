#pragma once

#include <cstdint>
#include <vector>

#include "mesh_view.h"

namespace ztcad::inspect {

/// Edges of one sort: how many, and the first ones as pairs of vertices, the smaller first.
struct EdgeList {
  std::int64_t count = 0;
  std::vector<std::int64_t> places;
};

/// The edges of a mesh.
struct Edges {
  std::int64_t count = 0;
  EdgeList open;
  EdgeList nonManifold;
  EdgeList inconsistent;
};

/// Matches the edges of the facets of which `isUsed` says that they belong to the surface; null: all.
///
/// The edges are distributed to their smaller vertices; each vertex then has a few, which are sorted. That is
/// 12 bytes for a facet and 4 for a vertex, and needs no hash. Lists are in ascending order of the edges.
Edges findEdges(const MeshView& mesh, const std::vector<bool>* isUsed, std::size_t placesKept, int threads);

/// The facets with the same three vertices as an earlier one, in ascending order, of the same facets. Takes 4
/// bytes for a facet and 4 for a vertex.
std::vector<std::uint32_t> findDuplicateFacets(const MeshView& mesh, const std::vector<bool>* isUsed);

/// The number of parts that share no vertex, of the same facets.
std::int64_t countShells(const MeshView& mesh, const std::vector<bool>* isUsed);

}  // namespace ztcad::inspect
