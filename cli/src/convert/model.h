#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// Triangles, a polyline or a point: what mesh files hold. Vertices and facets are views; `own` keeps arrays
/// that are nobody else's.
struct Mesh {
  enum class Kind { Triangles, Polyline, Point };

  Kind kind = Kind::Triangles;
  const double* vertices = nullptr;  // x y z interleaved
  std::size_t vertexCount = 0;
  const std::uint32_t* facets = nullptr;  // three indices each
  std::size_t facetCount = 0;

  struct {
    std::vector<double> vertices;
    std::vector<std::uint32_t> facets;
  } own;
  /// Makes the views those of the own arrays. Call it after they were filled.
  void viewOwn() {
    vertices = own.vertices.data();
    vertexCount = own.vertices.size() / 3;
    facets = own.facets.data();
    facetCount = own.facets.size() / 3;
  }

  const double* vertex(std::size_t index) const { return vertices + 3 * index; }
  const std::uint32_t* facet(std::size_t index) const { return facets + 3 * index; }
};

/// The first three rows of a 4x4 matrix, row by row.
using Transform = std::array<double, 12>;
inline constexpr Transform identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};

using Colour = std::array<std::uint8_t, 3>;

/// A mesh at a place, or a group of nodes.
struct Node {
  static constexpr std::int64_t none = -1;

  std::string name;
  std::string path{};          // of the element in the document; empty if it comes from a mesh file
  std::int64_t parent = none;  // index of a node before it
  std::int64_t mesh = none;    // index of its mesh; none: a group
  std::optional<Colour> colour{};
  Transform transform = identity;  // from the mesh to the model
};

/// What is converted: meshes, and where they are placed. Parents come before their children.
struct Model {
  std::deque<Mesh> meshes;
  std::deque<Node> nodes;

  bool hasFacets() const {
    return std::any_of(meshes.begin(), meshes.end(), [](const Mesh& mesh) { return mesh.facetCount > 0; });
  }
};

/// A point seen through a transform.
inline std::array<double, 3> placed(const Transform& t, const double* p) {
  return {t[0] * p[0] + t[1] * p[1] + t[2] * p[2] + t[3], t[4] * p[0] + t[5] * p[1] + t[6] * p[2] + t[7],
          t[8] * p[0] + t[9] * p[1] + t[10] * p[2] + t[11]};
}

/// Whether a transform turns solids inside out.
inline bool mirrors(const Transform& t) {
  return t[0] * (t[5] * t[10] - t[6] * t[9]) - t[1] * (t[4] * t[10] - t[6] * t[8]) +
             t[2] * (t[4] * t[9] - t[5] * t[8]) <
         0;
}

}  // namespace cli
