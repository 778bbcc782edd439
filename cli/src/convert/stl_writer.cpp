#include <cmath>
#include <limits>

#include "../failure.h"
#include "../number_text.h"
#include "mesh_writers.h"
#include "placed_mesh.h"

namespace cli {

namespace {

using Point = std::array<double, 3>;

/// The unit normal of a triangle; 0 if it has none.
Point normalOf(const Point& a, const Point& b, const Point& c) {
  const Point u{b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  const Point v{c[0] - a[0], c[1] - a[1], c[2] - a[2]};
  const Point n{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  const double length = std::hypot(n[0], n[1], n[2]);
  if (!(length > 0) || !std::isfinite(length)) return {};
  return {n[0] / length, n[1] / length, n[2] / length};
}

/// Calls a function with the normal and the corners of each facet.
template <typename Write>
void forEachFacet(const PlacedMesh& mesh, Write write) {
  for (std::size_t i = 0; i < mesh.facetCount(); ++i) {
    const auto corners = mesh.facet(i);
    const Point a = mesh.vertex(corners[0]);
    const Point b = mesh.vertex(corners[1]);
    const Point c = mesh.vertex(corners[2]);
    write(normalOf(a, b, c), a, b, c);
  }
}

std::string lineText(const char* keyword, const Point& xyz) {
  return std::string(keyword) + " " + numberText(xyz[0]) + " " + numberText(xyz[1]) + " " +
         numberText(xyz[2]) + "\n";
}

}  // namespace

Losses writeStl(const Model& model, OutputFile& file) {
  Losses losses;
  std::size_t count = 0;
  forEachPlaced(model, losses, [&](const PlacedMesh& mesh) { count += mesh.facetCount(); });
  if (count > std::numeric_limits<std::uint32_t>::max())
    throw Failure("a binary STL file cannot hold " + std::to_string(count) + " facets");
  std::string header = "binary STL";  // must not start with "solid"
  header.resize(80, ' ');
  file.write(header);
  file.write(static_cast<std::uint32_t>(count));
  Losses ignored;
  forEachPlaced(model, ignored, [&](const PlacedMesh& mesh) {
    forEachFacet(mesh, [&](const Point& n, const Point& a, const Point& b, const Point& c) {
      for (const Point* point : {&n, &a, &b, &c})
        for (const double number : *point)
          file.write(static_cast<float>(number));
      file.write(std::string_view("\0\0", 2));
    });
  });
  return losses;
}

Losses writeStlText(const Model& model, OutputFile& file) {
  Losses losses;
  forEachPlaced(model, losses, [&](const PlacedMesh& mesh) {
    const std::string name = onOneLine(mesh.name());
    file.write("solid " + name + "\n");
    forEachFacet(mesh, [&](const Point& n, const Point& a, const Point& b, const Point& c) {
      file.write(lineText("facet normal", n) + "outer loop\n" + lineText("vertex", a) +
                 lineText("vertex", b) + lineText("vertex", c) + "endloop\nendfacet\n");
    });
    file.write("endsolid " + name + "\n");
  });
  return losses;
}

}  // namespace cli
