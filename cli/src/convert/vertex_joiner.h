#pragma once

#include <cstdint>
#include <vector>

#include "model.h"

namespace cli {

/// Collects the vertices of a mesh. A vertex at exactly the position of an earlier one is the earlier one.
class VertexJoiner {
 public:
  explicit VertexJoiner(Mesh& mesh) : m_vertices(mesh.own.vertices) {}

  /// The index of the vertex at this position. Throws `Failure` if there are more than 2^31 - 1.
  std::uint32_t add(double x, double y, double z);

 private:
  std::size_t slotOf(const double* xyz) const;
  void grow();

  std::vector<double>& m_vertices;
  std::vector<std::uint32_t> m_slots;  // index + 1; 0: free. The number of slots is a power of two
};

/// Joins the vertices of a mesh that are at most a distance apart with the first of them, and removes the
/// facets that lose a corner by that.
/// @return the number of facets that were removed
std::size_t joinWithin(Mesh& mesh, double distance);

}  // namespace cli
