#include "sphere.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace cli {

namespace {

/// A sphere of radius 1 around the origin.
class UnitSphere {
 public:
  UnitSphere() {
    const double t = (1 + std::sqrt(5.0)) / 2;
    for (const auto& [x, y, z] : {std::array{-1., t, 0.},
                                  {1., t, 0.},
                                  {-1., -t, 0.},
                                  {1., -t, 0.},
                                  {0., -1., t},
                                  {0., 1., t},
                                  {0., -1., -t},
                                  {0., 1., -t},
                                  {t, 0., -1.},
                                  {t, 0., 1.},
                                  {-t, 0., -1.},
                                  {-t, 0., 1.}})
      add(x, y, z);
    facets = {0, 11, 5,  0, 5,  1, 0, 1, 7, 0, 7,  10, 0, 10, 11, 1, 5, 9, 5, 11,
              4, 11, 10, 2, 10, 7, 6, 7, 1, 8, 3,  9,  4, 3,  4,  2, 3, 2, 6, 3,
              6, 8,  3,  8, 9,  4, 9, 5, 2, 4, 11, 6,  2, 10, 8,  6, 7, 9, 8, 1};
    for (int i = 0; i < 3; ++i)
      refine();
  }

  std::vector<double> vertices;
  std::vector<std::uint32_t> facets;

 private:
  std::uint32_t add(double x, double y, double z) {
    const double length = std::sqrt(x * x + y * y + z * z);
    vertices.insert(vertices.end(), {x / length, y / length, z / length});
    return static_cast<std::uint32_t>(vertices.size() / 3 - 1);
  }

  /// Cuts each facet into four.
  void refine() {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> middles;
    const auto middle = [&](std::uint32_t a, std::uint32_t b) {
      const auto [known, isNew] = middles.try_emplace(std::minmax(a, b), 0);
      if (isNew) {
        const double* const p = &vertices[std::size_t{3} * a];
        const double* const q = &vertices[std::size_t{3} * b];
        known->second = add(p[0] + q[0], p[1] + q[1], p[2] + q[2]);
      }
      return known->second;
    };
    std::vector<std::uint32_t> finer;
    for (std::size_t i = 0; i < facets.size(); i += 3) {
      const std::uint32_t a = facets[i];
      const std::uint32_t b = facets[i + 1];
      const std::uint32_t c = facets[i + 2];
      const std::uint32_t ab = middle(a, b);
      const std::uint32_t bc = middle(b, c);
      const std::uint32_t ca = middle(c, a);
      finer.insert(finer.end(), {a, ab, ca, b, bc, ab, c, ca, bc, ab, bc, ca});
    }
    facets = std::move(finer);
  }
};

}  // namespace

Mesh sphereMesh(const double* center, double radius) {
  static const UnitSphere unit;
  Mesh mesh;
  mesh.own.facets = unit.facets;
  mesh.own.vertices = unit.vertices;
  for (std::size_t i = 0; i < mesh.own.vertices.size(); ++i)
    mesh.own.vertices[i] = center[i % 3] + radius * mesh.own.vertices[i];
  mesh.viewOwn();
  return mesh;
}

}  // namespace cli
