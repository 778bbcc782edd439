#include "shape_list.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cli {

namespace {

bool isFinite(const double* numbers, std::size_t count) {
  return std::all_of(numbers, numbers + count, [](double number) { return std::isfinite(number); });
}

Position pointAt(const double* xyz) { return {xyz[0], xyz[1], xyz[2]}; }

/// Coordinates relative to an origin in their middle: single precision has steps of a metre at 1e7. What it
/// cannot hold becomes 0.
std::vector<float> relative(const double* xyz, std::size_t count, const Position& origin) {
  std::vector<float> positions(3 * count);
  for (std::size_t i = 0; i < positions.size(); ++i) {
    const double number = xyz[i] - origin.at(i % 3);
    if (std::abs(number) <= std::numeric_limits<float>::max()) positions[i] = static_cast<float>(number);
  }
  return positions;
}

}  // namespace

void Bounds::add(const Position& point) {
  for (std::size_t i = 0; i < 3; ++i) {
    m_low.at(i) = std::min(m_low.at(i), point.at(i));
    m_high.at(i) = std::max(m_high.at(i), point.at(i));
  }
}

void Bounds::add(const Bounds& other) {
  if (other.isEmpty()) return;
  add(other.low());
  add(other.high());
}

Position Bounds::center() const {
  Position middle{};
  for (std::size_t i = 0; i < 3; ++i)
    middle.at(i) = m_low.at(i) / 2 + m_high.at(i) / 2;  // the sum may exceed what a double can hold
  return middle;
}

Bounds Bounds::placed(const double* transform) const {
  Bounds result;
  if (isEmpty()) return result;
  for (unsigned corner = 0; corner < 8; ++corner) {
    Position from{};
    for (unsigned i = 0; i < 3; ++i)
      from.at(i) = (corner >> i & 1U) != 0 ? m_high.at(i) : m_low.at(i);
    Position to{};
    for (std::size_t i = 0; i < 3; ++i) {
      const double* const row = transform + 4 * i;
      to.at(i) = row[0] * from[0] + row[1] * from[1] + row[2] * from[2] + row[3];
    }
    if (isFinite(to.data(), 3)) result.add(to);
  }
  return result;
}

ShapeList::ShapeList(const ztCADInspect_Scene* scene) {
  const ztCADInspect_Shape* const shapes = ztCADInspect_shapes(scene);
  const std::int64_t count = ztCADInspect_shapeCount(scene);
  m_indices.reserve(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i) {
    const std::optional<ShownShape> shape = shown(shapes[i]);
    m_indices.push_back(shape ? static_cast<std::int64_t>(m_shapes.size()) : -1);
    if (shape) m_shapes.push_back(*shape);
  }
}

std::optional<ShownShape> ShapeList::shown(const ztCADInspect_Shape& shape) {
  std::optional<ShownShape> result;
  if (shape.kind == ztCADInspect_ShapeMesh)
    result = mesh(shape);
  else if (shape.kind == ztCADInspect_ShapePolyline)
    result = polyline(shape);
  else
    result = sphere(shape);
  if (!result) return std::nullopt;
  result->kind = shape.kind;
  result->vertices = shape.vertexCount;
  result->facets = shape.facetCount;
  return result;
}

/// A sphere, or a point, which has no radius.
std::optional<ShownShape> ShapeList::sphere(const ztCADInspect_Shape& shape) {
  if (shape.hasCenter == 0 || !isFinite(shape.center, 3)) return std::nullopt;
  ShownShape result;
  result.origin = pointAt(shape.center);
  if (shape.kind == ztCADInspect_ShapePoint) {
    result.bounds.add(result.origin);
    return result;
  }
  if (shape.hasRadius == 0 || !std::isfinite(shape.radius) || !(shape.radius > 0)) return std::nullopt;
  result.radius = shape.radius;
  for (const double radius : {-shape.radius, shape.radius})
    result.bounds.add({shape.center[0] + radius, shape.center[1] + radius, shape.center[2] + radius});
  return result;
}

std::optional<ShownShape> ShapeList::polyline(const ztCADInspect_Shape& shape) {
  const auto count = static_cast<std::size_t>(shape.vertexCount);
  if (count == 0 || !isFinite(shape.vertices, 3 * count)) return std::nullopt;
  ShownShape result;
  for (std::size_t i = 0; i < count; ++i)
    result.bounds.add(pointAt(shape.vertices + 3 * i));
  result.origin = result.bounds.center();
  result.mesh = m_meshes.addPolyline(relative(shape.vertices, count, result.origin));
  return result;
}

std::optional<ShownShape> ShapeList::mesh(const ztCADInspect_Shape& shape) {
  const auto count = static_cast<std::size_t>(shape.vertexCount);
  const auto isUsable = [&](std::uint32_t index) {
    return index < count && isFinite(shape.vertices + 3 * std::size_t(index), 3);
  };
  ShownShape result;
  std::vector<std::uint32_t> indices;
  indices.reserve(3 * static_cast<std::size_t>(shape.facetCount));
  for (std::int64_t i = 0; i < shape.facetCount; ++i) {
    const std::uint32_t* const corners = shape.facets + 3 * i;
    if (!std::all_of(corners, corners + 3, isUsable)) continue;
    indices.insert(indices.end(), corners, corners + 3);
    for (std::size_t k = 0; k < 3; ++k)
      result.bounds.add(pointAt(shape.vertices + 3 * std::size_t(corners[k])));
  }
  if (indices.empty()) return result;
  result.origin = result.bounds.center();
  result.mesh = m_meshes.addTriangles(relative(shape.vertices, count, result.origin), indices);
  return result;
}

}  // namespace cli
