#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "../number_text.h"
#include "mesh_writers.h"
#include "placed_mesh.h"

namespace cli {

namespace {

/// A vertex, with the colour of its object after it: an extension that most programs read, and that needs no
/// second file for materials. If one object has a colour all have one, since readers expect it of all
/// vertices or of none.
std::string vertexLine(const PlacedMesh& mesh, std::size_t index, bool hasColours) {
  constexpr Colour white{255, 255, 255};
  const auto xyz = mesh.vertex(index);
  std::string line = "v " + numberText(xyz[0]) + " " + numberText(xyz[1]) + " " + numberText(xyz[2]);
  if (hasColours)
    for (const std::uint8_t component : mesh.colour().value_or(white))
      line += " " + numberText(component / 255.0);
  return line + "\n";
}

/// Gives each object a name of its own: readers make one object of all that have one name.
class ObjectNames {
 public:
  std::string next(const std::string& name) {
    std::string unique = name;
    for (int& number = m_numbers[name]; !m_used.insert(unique).second;)
      unique = name + "_" + std::to_string(++number);
    return unique;
  }

 private:
  std::unordered_set<std::string> m_used;
  std::unordered_map<std::string, int> m_numbers;  // the last one of each name
};

}  // namespace

Losses writeObj(const Model& model, OutputFile& file) {
  const bool hasColours = std::any_of(model.nodes.begin(), model.nodes.end(), [](const Node& node) {
    return node.mesh != Node::none && node.colour;
  });
  ObjectNames names;
  std::size_t before = 1;  // indices count from 1, through the whole file
  for (const Node& node : model.nodes) {
    if (node.mesh == Node::none) continue;
    const PlacedMesh mesh(node, model.meshes[static_cast<std::size_t>(node.mesh)]);
    file.write("o " + names.next(onOneLine(mesh.name())) + "\n");
    for (std::size_t i = 0; i < mesh.vertexCount(); ++i)
      file.write(vertexLine(mesh, i, hasColours));
    for (std::size_t i = 0; i < mesh.facetCount(); ++i) {
      const auto corners = mesh.facet(i);
      file.write("f " + std::to_string(before + corners[0]) + " " + std::to_string(before + corners[1]) +
                 " " + std::to_string(before + corners[2]) + "\n");
    }
    if (mesh.kind() != Mesh::Kind::Triangles) {
      file.write(mesh.kind() == Mesh::Kind::Polyline ? "l" : "p");
      for (std::size_t i = 0; i < mesh.vertexCount(); ++i)
        file.write(" " + std::to_string(before + i));
      file.write("\n");
    }
    before += mesh.vertexCount();
  }
  return {};
}

}  // namespace cli
