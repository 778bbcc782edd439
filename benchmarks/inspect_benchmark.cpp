/// Checks and mass properties of a mesh of two million facets by the library ztCADInspect, compared with
/// loading its document, and with CGAL's own way from the same arrays.
///
///   inspect_benchmark [--quick]
///
///   --quick  a small mesh, to see that everything runs

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Polygon_mesh_processing/measure.h>
#include <CGAL/Polygon_mesh_processing/orientation.h>
#include <CGAL/Polygon_mesh_processing/polygon_soup_to_polygon_mesh.h>
#include <CGAL/Surface_mesh.h>
#include <ztCAD/inspect.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "measurement.h"

namespace {

using namespace benchmarks;

const double turn = 6.283185307179586;

/// A ring around the z axis, of 2 * n * n facets.
struct Arrays {
  std::vector<double> vertices;
  std::vector<std::uint32_t> facets;

  explicit Arrays(int n) {
    for (int i = 0; i < n; ++i)
      for (int j = 0; j < n; ++j) {
        const double r = 10 + 3 * std::cos(turn * j / n);
        vertices.insert(vertices.end(),
                        {r * std::cos(turn * i / n), r * std::sin(turn * i / n), 3 * std::sin(turn * j / n)});
      }
    const auto at = [&](int i, int j) { return static_cast<std::uint32_t>((i % n) * n + j % n); };
    for (int i = 0; i < n; ++i)
      for (int j = 0; j < n; ++j)
        facets.insert(facets.end(),
                      {at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j), at(i + 1, j + 1), at(i, j + 1)});
  }
  std::int64_t vertexCount() const { return static_cast<std::int64_t>(vertices.size() / 3); }
  std::int64_t facetCount() const { return static_cast<std::int64_t>(facets.size() / 3); }
};

bool save(const Arrays& arrays, const std::string& file) {
  ztCAD_GMDDocument* const document = crtGMDDocument_nostl("");
  ztCAD_Vertices* const vertices = crtVertices();
  ztCAD_Faces* const faces = crtFaces();
  addVertexXYZ_nostl(arrays.vertices.data(), static_cast<std::int32_t>(arrays.vertexCount()), vertices);
  addFacetIJK_nostl(arrays.facets.data(), static_cast<std::int32_t>(arrays.facetCount()), faces);
  ztCAD_Base* const solid = ztCAD_appendToDoc(document, ztCAD_ElementTriangle);
  ztCAD_setName(solid, "ring");
  ztCAD_setVertices(solid, vertices);
  ztCAD_setFaces(solid, faces);
  const bool isSaved = ztCAD_saveDocument(document, file.c_str(), nullptr);
  ztCAD_endDocument(document);
  return isSaved;
}

bool load(const std::string& file) {
  ztCAD_GMDDocument* const document = ztCAD_loadDocument(file.c_str(), nullptr);
  return document != nullptr;  // which the process keeps, as a host does
}

bool analyse(const Arrays& arrays, int threads) {
  ztCADInspect_Options options;
  ztCADInspect_initOptions(&options, sizeof options);
  options.threads = threads;
  ztCADInspect_Mesh* const mesh = ztCADInspect_analyseMesh(
      arrays.vertices.data(), arrays.vertexCount(), arrays.facets.data(), arrays.facetCount(), &options);
  ztCADInspect_MassProperties mass = {};
  const bool isKnown = ztCADInspect_meshMass(mesh, &mass) == ztCADInspect_MassKnown;
  ztCADInspect_endMesh(mesh);
  return isKnown && mass.volume > 1000;
}

// Closedness, orientation, volume and area: less than what is compared with it.
bool analyseWithCgal(const Arrays& arrays) {
  using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
  namespace processing = CGAL::Polygon_mesh_processing;
  std::vector<Kernel::Point_3> points;
  std::vector<std::array<std::size_t, 3>> triangles;
  for (std::size_t i = 0; i < arrays.vertices.size(); i += 3)
    points.emplace_back(arrays.vertices[i], arrays.vertices[i + 1], arrays.vertices[i + 2]);
  for (std::size_t i = 0; i < arrays.facets.size(); i += 3)
    triangles.push_back({arrays.facets[i], arrays.facets[i + 1], arrays.facets[i + 2]});
  if (!processing::is_polygon_soup_a_polygon_mesh(triangles)) return false;
  CGAL::Surface_mesh<Kernel::Point_3> surface;
  processing::polygon_soup_to_polygon_mesh(points, triangles, surface);
  return CGAL::is_closed(surface) && processing::is_outward_oriented(surface) &&
         processing::volume(surface) > 1000 && processing::area(surface) > 0;
}

/// The fastest of three runs, each in a process of its own.
Measurement best(const std::function<bool()>& work) {
  Measurement fastest;
  for (int i = 0; i < 3; ++i) {
    const Measurement next = inChild([&] { return timed(work); });
    if (!next.succeeded) return next;
    if (i == 0 || next.seconds < fastest.seconds) fastest = next;
  }
  return fastest;
}

}  // namespace

int main(int argc, char** argv) {
  const bool isQuick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
  const Arrays arrays(isQuick ? 100 : 1000);
  const std::filesystem::path folder = std::filesystem::is_directory("/dev/shm")
                                           ? std::filesystem::path("/dev/shm")
                                           : std::filesystem::temp_directory_path();
  const std::string file = (folder / "inspect_benchmark.xml").string();
  if (!save(arrays, file)) {
    std::fprintf(stderr, "inspect_benchmark: cannot write %s\n", file.c_str());
    return 2;
  }
  struct Row {
    const char* name = nullptr;
    Measurement measurement;
  };
  const Row rows[] = {{"load of its document", best([&] { return load(file); })},
                      {"checks and mass, 1 thread", best([&] { return analyse(arrays, 1); })},
                      {"checks and mass, 2 threads", best([&] { return analyse(arrays, 2); })},
                      {"CGAL", best([&] { return analyseWithCgal(arrays); })}};
  std::filesystem::remove(file);
  const auto facets = static_cast<double>(arrays.facetCount());
  std::printf("a mesh of %.0f facets\n", facets);
  bool isComplete = true;
  for (const Row& row : rows) {
    std::printf("  %-28s %7.3f s  %6.1f bytes a facet\n", row.name, row.measurement.seconds,
                row.measurement.peak / facets);
    isComplete = isComplete && row.measurement.succeeded;
  }
  if (!isComplete) {
    std::fprintf(stderr, "inspect_benchmark: a run failed\n");
    return 1;
  }
  std::printf("  of the load: %.2f (target: at most 1); of CGAL: %.3f (target: at most 0.25)\n",
              rows[1].measurement.seconds / rows[0].measurement.seconds,
              rows[1].measurement.seconds / rows[3].measurement.seconds);
  return 0;
}
