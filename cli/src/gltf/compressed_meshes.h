#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cli::gltf {

/// Meshes for a GLB file whose buffer views are compressed by EXT_meshopt_compression. The file has meshes
/// and no nodes: whoever reads it knows where they are.
///
/// Positions of all meshes are one buffer view and indices of all another, because each view costs as much
/// text as a small mesh costs bytes.
class CompressedMeshes {
 public:
  /// Adds triangles. Vertices that no triangle uses are left out, and both are reordered, which more than
  /// halves their size; corners keep their cyclic order.
  /// @param positions x y z interleaved, finite
  /// @param indices   three for each triangle, at least one triangle, each less than the number of vertices
  /// @return the index of the mesh in the file
  std::int64_t addTriangles(const std::vector<float>& positions, const std::vector<std::uint32_t>& indices);
  /// Adds a polyline; one vertex is a point.
  /// @param positions x y z interleaved, finite, at least one vertex
  std::int64_t addPolyline(const std::vector<float>& positions);

  bool isEmpty() const { return m_meshes.empty(); }
  /// Calls a function with the bytes of the file, piece by piece. There must be a mesh.
  void write(const std::function<void(std::string_view)>& take) const;

 private:
  std::size_t addPositions(const float* positions, std::size_t count);
  std::size_t addAccessor(const std::string& text);
  std::int64_t addMesh(const std::string& primitive);
  std::string jsonOf(const std::vector<std::string>& views, std::uint64_t size) const;

  std::vector<float> m_positions;
  std::vector<std::uint32_t> m_indices;
  std::vector<std::string> m_accessors;
  std::vector<std::string> m_meshes;
};

}  // namespace cli::gltf
