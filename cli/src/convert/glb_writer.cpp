#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "../failure.h"
#include "../gltf/glb.h"
#include "../report/json_text.h"
#include "mesh_writers.h"

namespace cli {

namespace {

using nlohmann::ordered_json;
using Vector = std::array<double, 3>;

/// Whether a transform moves, turns, mirrors and stretches along the axes only, which is all that the matrix
/// of a node may do.
bool keepsRightAngles(const Transform& t) {
  constexpr double tolerance = 1e-4;
  const auto axis = [&](std::size_t column) { return Vector{t[column], t[4 + column], t[8 + column]}; };
  const auto dot = [](const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
  for (std::size_t i = 0; i < 3; ++i) {
    const Vector a = axis(i);
    const Vector b = axis((i + 1) % 3);
    const double lengths = std::sqrt(dot(a, a) * dot(b, b));
    if (!(lengths > 0) || std::abs(dot(a, b)) > tolerance * lengths) return false;
  }
  return true;
}

/// The arrays of a mesh in the file: single precision, around an origin of their own where that is needed to
/// keep the shape.
class Arrays {
 public:
  /// @param transform applied to the vertices; null: none
  Arrays(const Mesh& mesh, const Transform* transform) : m_mesh(mesh), m_transform(transform) {
    Vector low;
    Vector high;
    low.fill(std::numeric_limits<double>::infinity());
    high.fill(-std::numeric_limits<double>::infinity());
    for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
      const Vector xyz = exact(i);
      for (std::size_t k = 0; k < 3; ++k) {
        low[k] = std::min(low[k], xyz[k]);
        high[k] = std::max(high[k], xyz[k]);
      }
    }
    const double size = std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
    double farthest = 0;
    for (std::size_t k = 0; k < 3; ++k)
      farthest = std::max({farthest, std::abs(low[k]), std::abs(high[k])});
    constexpr double far = 16;  // times the size: four bits of the twenty-four are lost there
    if (farthest > far * size)
      for (std::size_t k = 0; k < 3; ++k)
        m_origin[k] = low[k] + (high[k] - low[k]) / 2;
    for (std::size_t k = 0; k < 3; ++k) {
      m_low[k] = static_cast<float>(low[k] - m_origin[k]);
      m_high[k] = static_cast<float>(high[k] - m_origin[k]);
    }
  }

  std::size_t vertexCount() const { return m_mesh.vertexCount; }
  std::size_t indexCount() const { return m_mesh.kind == Mesh::Kind::Triangles ? 3 * m_mesh.facetCount : 0; }
  const Vector& origin() const { return m_origin; }
  const std::array<float, 3>& low() const { return m_low; }
  const std::array<float, 3>& high() const { return m_high; }
  /// The mode of a primitive; none for triangles.
  std::optional<int> mode() const {
    if (m_mesh.kind == Mesh::Kind::Triangles) return std::nullopt;
    return m_mesh.kind == Mesh::Kind::Polyline && m_mesh.vertexCount > 1 ? gltf::lineStrip : gltf::points;
  }

  void writeVertices(OutputFile& file) const {
    for (std::size_t i = 0; i < m_mesh.vertexCount; ++i) {
      const Vector xyz = exact(i);
      for (std::size_t k = 0; k < 3; ++k)
        file.write(static_cast<float>(xyz[k] - m_origin[k]));
    }
  }
  void writeIndices(OutputFile& file) const {
    const bool isMirrored = m_transform && mirrors(*m_transform);
    for (std::size_t i = 0; i < indexCount() / 3; ++i) {
      const std::uint32_t* const corners = m_mesh.facet(i);
      file.write(corners[0]);
      file.write(corners[isMirrored ? 2 : 1]);
      file.write(corners[isMirrored ? 1 : 2]);
    }
  }

 private:
  Vector exact(std::size_t index) const {
    const double* const xyz = m_mesh.vertex(index);
    return m_transform ? placed(*m_transform, xyz) : Vector{xyz[0], xyz[1], xyz[2]};
  }

  const Mesh& m_mesh;
  const Transform* m_transform;
  Vector m_origin{};
  std::array<float, 3> m_low{};
  std::array<float, 3> m_high{};
};

/// Components of a colour are stored as light, not as the eye sees it.
double linear(std::uint8_t component) {
  const double value = component / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

class GlbWriter {
 public:
  GlbWriter(const Model& model, OutputFile& file) : m_model(model), m_file(file) {}

  void write() {
    for (std::size_t i = 0; i < m_model.nodes.size(); ++i)
      addNode(i);
    linkNodes();
    if (m_meshes.empty()) throw Failure("there is nothing to write");
    const std::uint64_t indexStart = 12 * m_vertexCount;
    const std::uint64_t bytes = indexStart + 4 * m_indexCount;
    m_file.write(gltf::glbStart(jsonOf(indexStart, bytes), bytes));
    for (const Arrays& arrays : m_arrays)
      arrays.writeVertices(m_file);
    for (const Arrays& arrays : m_arrays)
      arrays.writeIndices(m_file);
  }

 private:
  void addNode(std::size_t index) {
    const Node& node = m_model.nodes[index];
    ordered_json object = ordered_json::object();
    if (!node.name.empty()) object["name"] = node.name;
    if (node.mesh != Node::none) {
      const bool isBaked = !keepsRightAngles(node.transform);
      const std::size_t arrays = arraysOf(node, isBaked ? static_cast<std::int64_t>(index) : Node::none);
      object["mesh"] = meshOf(arrays, node.colour);
      const Transform transform = moved(isBaked ? identity : node.transform, m_arrays[arrays].origin());
      if (transform != identity) object["matrix"] = columnsOf(transform);
    }
    if (!node.path.empty()) object["extras"] = {{"path", node.path}};
    m_nodes.push_back(jsonText(object));
  }

  /// @param bakedFor node whose transform is applied to the vertices; none: none
  std::size_t arraysOf(const Node& node, std::int64_t bakedFor) {
    const auto [known, isNew] = m_arraysOf.try_emplace({node.mesh, bakedFor}, m_arrays.size());
    if (isNew) {
      const Mesh& mesh = m_model.meshes[static_cast<std::size_t>(node.mesh)];
      const Arrays& arrays = m_arrays.emplace_back(mesh, bakedFor == Node::none ? nullptr : &node.transform);
      addAccessors(arrays);
    }
    return known->second;
  }

  void addAccessors(const Arrays& arrays) {
    m_firstAccessor.push_back(m_accessors.size());
    m_accessors.push_back(jsonText(ordered_json{{"bufferView", 0},
                                                {"byteOffset", 12 * m_vertexCount},
                                                {"componentType", gltf::floatingPoint},
                                                {"count", arrays.vertexCount()},
                                                {"type", "VEC3"},
                                                {"min", arrays.low()},
                                                {"max", arrays.high()}}));
    m_vertexCount += arrays.vertexCount();
    if (arrays.indexCount() == 0) return;
    m_accessors.push_back(jsonText(ordered_json{{"bufferView", 1},
                                                {"byteOffset", 4 * m_indexCount},
                                                {"componentType", gltf::unsignedInt},
                                                {"count", arrays.indexCount()},
                                                {"type", "SCALAR"}}));
    m_indexCount += arrays.indexCount();
  }

  /// A mesh of glTF for arrays in a colour.
  std::size_t meshOf(std::size_t arrays, const std::optional<Colour>& colour) {
    const auto [known, isNew] = m_meshOf.try_emplace({arrays, colour}, m_meshes.size());
    if (!isNew) return known->second;
    const std::size_t accessor = m_firstAccessor[arrays];
    ordered_json primitive{{"attributes", {{"POSITION", accessor}}}};
    if (m_arrays[arrays].indexCount() > 0) primitive["indices"] = accessor + 1;
    if (const auto mode = m_arrays[arrays].mode()) primitive["mode"] = *mode;
    if (colour) primitive["material"] = materialOf(*colour);
    m_meshes.push_back(jsonText(ordered_json{{"primitives", ordered_json::array({primitive})}}));
    return known->second;
  }

  std::size_t materialOf(const Colour& colour) {
    const auto [known, isNew] = m_materialOf.try_emplace(colour, m_materials.size());
    if (isNew) {
      const ordered_json factor{linear(colour[0]), linear(colour[1]), linear(colour[2]), 1};
      m_materials.push_back(jsonText(
          ordered_json{{"pbrMetallicRoughness",
                        {{"baseColorFactor", factor}, {"metallicFactor", 0}, {"roughnessFactor", 0.8}}},
                       {"doubleSided", true}}));
    }
    return known->second;
  }

  /// A transform for vertices from which an origin was subtracted.
  static Transform moved(Transform transform, const Vector& origin) {
    const Vector translation = placed(transform, origin.data());
    for (std::size_t k = 0; k < 3; ++k)
      transform[4 * k + 3] = translation[k];
    return transform;
  }

  static ordered_json columnsOf(const Transform& t) {
    return {t[0], t[4], t[8], 0, t[1], t[5], t[9], 0, t[2], t[6], t[10], 0, t[3], t[7], t[11], 1};
  }

  /// Groups name their children.
  void linkNodes() {
    std::vector<std::string> children(m_nodes.size());
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      const std::int64_t parent = m_model.nodes[i].parent;
      std::string& list = parent == Node::none ? m_roots : children[static_cast<std::size_t>(parent)];
      list += (list.empty() ? "" : ",") + std::to_string(i);
    }
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      if (children[i].empty()) continue;
      const bool isEmpty = m_nodes[i].size() == 2;
      m_nodes[i].pop_back();
      m_nodes[i] += std::string(isEmpty ? "" : ",") + "\"children\":[" + children[i] + "]}";
    }
  }

  std::string jsonOf(std::uint64_t indexStart, std::uint64_t bytes) const {
    std::vector<std::string> views{jsonText(ordered_json{
        {"buffer", 0}, {"byteLength", indexStart}, {"byteStride", 12}, {"target", gltf::arrayBuffer}})};
    if (bytes > indexStart)
      views.push_back(jsonText(ordered_json{{"buffer", 0},
                                            {"byteOffset", indexStart},
                                            {"byteLength", bytes - indexStart},
                                            {"target", gltf::elementArrayBuffer}}));
    return "{" + gltf::assetMember() + ",\"scene\":0,\"scenes\":[{\"nodes\":[" + m_roots + "]}]" +
           gltf::listMember("nodes", m_nodes) + gltf::listMember("meshes", m_meshes) +
           gltf::listMember("materials", m_materials) + gltf::listMember("accessors", m_accessors) +
           gltf::listMember("bufferViews", views) + ",\"buffers\":[{\"byteLength\":" + std::to_string(bytes) +
           "}]}";
  }

  const Model& m_model;
  OutputFile& m_file;
  std::deque<Arrays> m_arrays;
  std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> m_arraysOf;  // mesh and node
  std::map<std::pair<std::size_t, std::optional<Colour>>, std::size_t> m_meshOf;
  std::map<Colour, std::size_t> m_materialOf;
  std::vector<std::size_t> m_firstAccessor;  // of each arrays
  std::uint64_t m_vertexCount = 0;
  std::uint64_t m_indexCount = 0;
  std::string m_roots;
  std::vector<std::string> m_nodes;
  std::vector<std::string> m_meshes;
  std::vector<std::string> m_materials;
  std::vector<std::string> m_accessors;
};

}  // namespace

Losses writeGlb(const Model& model, OutputFile& file) {
  GlbWriter(model, file).write();
  return {};
}

}  // namespace cli
