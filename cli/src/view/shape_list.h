#pragma once

#include <ztCAD/inspect.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "../gltf/compressed_meshes.h"

namespace cli {

using Position = std::array<double, 3>;

/// A box; empty until something is added.
class Bounds {
 public:
  void add(const Position& point);
  bool isEmpty() const { return m_high[0] < m_low[0]; }
  const Position& low() const { return m_low; }
  const Position& high() const { return m_high; }
  /// Halfway between both corners.
  Position center() const;
  /// The box of the box's corners after a transform of twelve numbers.
  Bounds placed(const double* transform) const;
  void add(const Bounds& other);

 private:
  static constexpr double infinity = std::numeric_limits<double>::infinity();

  Position m_low{infinity, infinity, infinity};
  Position m_high{-infinity, -infinity, -infinity};
};

/// A shape that can be drawn.
struct ShownShape {
  std::int32_t kind = 0;  // a `ztCADInspect_ShapeKind`
  Position origin{};      // what positions in the file of meshes are relative to; the centre of a sphere
  std::optional<double> radius{};
  std::int64_t mesh = -1;  // index in the file of meshes; -1: none
  std::int64_t vertices = 0;
  std::int64_t facets = 0;
  Bounds bounds{};  // in the frame of its element
};

/// The shapes of a scene that can be drawn. Those without a position or with a number that is not finite
/// cannot; of a mesh, facets with such a vertex or with an invalid index are left out.
class ShapeList {
 public:
  explicit ShapeList(const ztCADInspect_Scene* scene);

  const std::vector<ShownShape>& shapes() const { return m_shapes; }
  const gltf::CompressedMeshes& meshes() const { return m_meshes; }
  /// The index of a shape of the scene in this list; -1 if it cannot be drawn.
  std::int64_t indexOf(std::int64_t sceneShape) const {
    return sceneShape < 0 ? -1 : m_indices[static_cast<std::size_t>(sceneShape)];
  }

 private:
  std::optional<ShownShape> shown(const ztCADInspect_Shape& shape);
  static std::optional<ShownShape> sphere(const ztCADInspect_Shape& shape);
  std::optional<ShownShape> polyline(const ztCADInspect_Shape& shape);
  std::optional<ShownShape> mesh(const ztCADInspect_Shape& shape);

  std::vector<ShownShape> m_shapes;
  std::vector<std::int64_t> m_indices;
  gltf::CompressedMeshes m_meshes;
};

}  // namespace cli
