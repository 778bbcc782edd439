#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace ztcad::inspect {

/// Arrays of a mesh, which it does not own.
struct MeshView {
  const double* vertices = nullptr;  // x y z each
  std::size_t vertexCount = 0;
  const std::uint32_t* facets = nullptr;  // three indices each
  std::size_t facetCount = 0;

  const double* vertex(std::size_t index) const { return vertices + 3 * index; }
  const std::uint32_t* facet(std::size_t index) const { return facets + 3 * index; }

  bool hasValue(std::size_t index) const {
    const double* const v = vertex(index);
    return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
  }
  bool isInRange(std::size_t index) const {
    const std::uint32_t* const f = facet(index);
    return f[0] < vertexCount && f[1] < vertexCount && f[2] < vertexCount;
  }
};

/// The length of a vector, without overflow. Not `std::hypot`, which rounds differently on every system.
inline double lengthOf(double x, double y, double z) {
  x = std::abs(x);
  y = std::abs(y);
  z = std::abs(z);
  double greatest = x > y ? x : y;
  greatest = greatest > z ? greatest : z;
  if (!(greatest > 0) || std::isinf(greatest)) return greatest;
  x /= greatest;
  y /= greatest;
  z /= greatest;
  return greatest * std::sqrt(x * x + y * y + z * z);
}

/// The box around the vertices that have values; empty: all zero.
struct Box {
  double low[3] = {0, 0, 0};
  double high[3] = {0, 0, 0};
  bool isEmpty = true;

  void add(const double* v) {
    for (int i = 0; i < 3; ++i) {
      low[i] = isEmpty || v[i] < low[i] ? v[i] : low[i];
      high[i] = isEmpty || v[i] > high[i] ? v[i] : high[i];
    }
    isEmpty = false;
  }
  /// Length of the diagonal; infinite for boxes beyond half the range of doubles.
  double diagonal() const { return lengthOf(high[0] - low[0], high[1] - low[1], high[2] - low[2]); }
};

}  // namespace ztcad::inspect
