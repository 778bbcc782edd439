#include <limits>

#include "../failure.h"
#include "../number_text.h"
#include "mesh_writers.h"
#include "placed_mesh.h"

namespace cli {

namespace {

struct Totals {
  std::size_t vertices = 0;
  std::size_t facets = 0;
  bool hasColours = false;
};

std::string headerOf(const Totals& totals, bool asText) {
  std::string header = std::string("ply\nformat ") + (asText ? "ascii" : "binary_little_endian") + " 1.0\n";
  header += "element vertex " + std::to_string(totals.vertices) + "\n";
  for (const char* axis : {"x", "y", "z"})
    header += std::string("property double ") + axis + "\n";
  if (totals.hasColours)
    for (const char* component : {"red", "green", "blue"})
      header += std::string("property uchar ") + component + "\n";
  return header + "element face " + std::to_string(totals.facets) +
         "\nproperty list uchar uint vertex_indices\nend_header\n";
}

constexpr Colour white{255, 255, 255};

void writeVertices(const PlacedMesh& mesh, bool hasColours, bool asText, OutputFile& file) {
  const Colour colour = mesh.colour().value_or(white);
  for (std::size_t i = 0; i < mesh.vertexCount(); ++i) {
    const auto xyz = mesh.vertex(i);
    if (asText) {
      std::string line = numberText(xyz[0]) + " " + numberText(xyz[1]) + " " + numberText(xyz[2]);
      if (hasColours)
        for (const std::uint8_t component : colour)
          line += " " + std::to_string(component);
      file.write(line + "\n");
    } else {
      for (const double number : xyz)
        file.write(number);
      if (hasColours) file.write(std::string_view(reinterpret_cast<const char*>(colour.data()), 3));
    }
  }
}

void writeFacets(const PlacedMesh& mesh, std::size_t before, bool asText, OutputFile& file) {
  for (std::size_t i = 0; i < mesh.facetCount(); ++i) {
    file.write(asText ? "3" : "\3");
    for (const std::uint32_t corner : mesh.facet(i)) {
      if (asText)
        file.write(" " + std::to_string(before + corner));
      else
        file.write(static_cast<std::uint32_t>(before + corner));
    }
    if (asText) file.write("\n");
  }
}

}  // namespace

/// One mesh of all nodes, coordinates as doubles. Vertices of nodes without a colour are white if others have
/// one.
Losses writePly(const Model& model, OutputFile& file, bool asText) {
  Losses losses;
  Totals totals;
  forEachPlaced(model, losses, [&](const PlacedMesh& mesh) {
    totals.vertices += mesh.vertexCount();
    totals.facets += mesh.facetCount();
    totals.hasColours = totals.hasColours || mesh.colour();
  });
  if (totals.vertices > std::numeric_limits<std::uint32_t>::max())
    throw Failure("a PLY file cannot hold " + std::to_string(totals.vertices) + " vertices");
  file.write(headerOf(totals, asText));
  Losses ignored;
  forEachPlaced(model, ignored,
                [&](const PlacedMesh& mesh) { writeVertices(mesh, totals.hasColours, asText, file); });
  std::size_t before = 0;
  forEachPlaced(model, ignored, [&](const PlacedMesh& mesh) {
    writeFacets(mesh, before, asText, file);
    before += mesh.vertexCount();
  });
  return losses;
}

}  // namespace cli
