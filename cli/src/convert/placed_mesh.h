#pragma once

#include "mesh_writers.h"
#include "model.h"

namespace cli {

/// A mesh where its node places it. A mirrored one has the winding of its facets turned, so that they still
/// face outwards.
class PlacedMesh {
 public:
  PlacedMesh(const Node& node, const Mesh& mesh)
      : m_node(node), m_mesh(mesh), m_isMirrored(mirrors(node.transform)) {}

  const std::string& name() const { return m_node.name; }
  const std::optional<Colour>& colour() const { return m_node.colour; }
  Mesh::Kind kind() const { return m_mesh.kind; }
  std::size_t vertexCount() const { return m_mesh.vertexCount; }
  std::size_t facetCount() const { return m_mesh.facetCount; }
  std::array<double, 3> vertex(std::size_t index) const {
    return placed(m_node.transform, m_mesh.vertex(index));
  }
  std::array<std::uint32_t, 3> facet(std::size_t index) const {
    const std::uint32_t* const corners = m_mesh.facet(index);
    if (m_isMirrored) return {corners[0], corners[2], corners[1]};
    return {corners[0], corners[1], corners[2]};
  }

 private:
  const Node& m_node;
  const Mesh& m_mesh;
  bool m_isMirrored;
};

/// Calls a function with each mesh of triangles where it is placed, and counts the rest.
template <typename Take>
void forEachPlaced(const Model& model, Losses& losses, Take take) {
  for (const Node& node : model.nodes) {
    if (node.mesh == Node::none) continue;
    const Mesh& mesh = model.meshes[static_cast<std::size_t>(node.mesh)];
    if (mesh.kind == Mesh::Kind::Polyline)
      ++losses.polylines;
    else if (mesh.kind == Mesh::Kind::Point)
      ++losses.points;
    else
      take(PlacedMesh(node, mesh));
  }
}

}  // namespace cli
