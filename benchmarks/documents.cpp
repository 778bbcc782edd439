#include "documents.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "coordinates.h"
#include "measuring.h"
#include "reference_way.h"

namespace benchmarks {

namespace {

std::vector<BarePoint> makePoints(Shape shape, std::size_t size) {
  Coordinates coordinates;
  std::vector<BarePoint> points(size);
  for (std::size_t i = 0; i < size; ++i) {
    points[i].name = pointName(shape, i);
    points[i].x = coordinates.next();
    points[i].y = coordinates.next();
    points[i].z = coordinates.next();
  }
  return points;
}

bool write(const Document& document) {
  if (document.shape == Shape::Mesh) return referenceSave(makeMesh(document.size), document.file);
  return referenceSave(makePoints(document.shape, document.size), document.shape, document.file);
}

}  // namespace

Mesh makeMesh(std::size_t vertices) {
  Coordinates coordinates;
  Mesh mesh;
  mesh.coordinates.resize(3 * vertices);
  std::generate(mesh.coordinates.begin(), mesh.coordinates.end(), [&] { return coordinates.next(); });
  mesh.indices.reserve(6 * vertices);
  const std::size_t across = 1000;
  for (std::size_t i = 0; i < vertices; ++i)
    for (const std::size_t corner : {i, i + 1, i + across, i + 1, i + across + 1, i + across})
      mesh.indices.push_back(static_cast<std::uint32_t>(corner % vertices));
  return mesh;
}

std::string pointName(Shape shape, std::size_t index) {
  return shape == Shape::OneName ? "hinge" : "hinge " + std::to_string(index);
}

Documents::Documents(const std::string& folder) : m_folder(folder + "/ztCAD_benchmark_XXXXXX") {
  if (!::mkdtemp(m_folder.data())) throw std::runtime_error("no folder can be made in " + folder);
}

Documents::~Documents() {
  std::error_code ignored;
  std::filesystem::remove_all(m_folder, ignored);
}

const Document& Documents::make(Shape shape, std::size_t size) {
  const auto found = std::find_if(m_documents.begin(), m_documents.end(),
                                  [&](const Document& d) { return d.shape == shape && d.size == size; });
  if (found != m_documents.end()) return *found;
  Document made;
  made.shape = shape;
  made.size = size;
  made.file = m_folder + "/document" + std::to_string(m_documents.size()) + ".xml";
  // in a process of its own: this one has to stay small
  if (!inChild([&] { return timed([&] { return write(made); }); }).fine)
    throw std::runtime_error(made.file + " could not be written");
  made.bytes = static_cast<double>(std::filesystem::file_size(made.file));
  return m_documents.emplace_back(made);
}

Document Documents::forTheTree(const Document& document) {
  Document copy = document;
  copy.file += ".tree.xml";
  std::filesystem::copy_file(document.file, copy.file, std::filesystem::copy_options::overwrite_existing);
  std::ofstream(copy.file, std::ios::app) << "<?note read through a tree?>\n";
  return copy;
}

}  // namespace benchmarks
