#include "document_model.h"

#include <ztCAD/inspect.h>

#include <algorithm>
#include <cmath>

#include "../failure.h"
#include "../info/problem.h"
#include "../loaded_document.h"
#include "../output.h"
#include "../scene.h"
#include "sphere.h"

namespace cli {

namespace {

bool isFinite(const double* numbers, std::size_t count) {
  return std::all_of(numbers, numbers + count, [](double number) { return std::isfinite(number); });
}

}  // namespace

/// The document, its scene and the model of it.
class DocumentModel::Scene {
 public:
  Scene(const std::string& path, const std::string& file) : m_file(file) {
    ztCAD_Outcome outcome;
    m_document.reset(ztCAD_loadDocument(path.c_str(), &outcome));
    if (!m_document) throw Failure(file + ": " + problemOf(outcome));
    if (outcome.code != ztCAD_ResultLoaded || outcome.fault)
      report("the document has errors; 'ztcad check' lists them");
    m_scene = openScene(m_document.get(), file, nullptr);
    addShapes();
    addItems();
    reportFindings();
    if (m_leftOutFacets > 0)
      report("left out, because an index or a number is invalid: " + std::to_string(m_leftOutFacets) +
             " facets");
    if (m_leftOutShapes > 0)
      report("left out, because they have no valid geometry: " + std::to_string(m_leftOutShapes) +
             " elements");
  }

  Model model;
  bool isWhole = true;

 private:
  void report(const std::string& problem) {
    isWhole = false;
    printError(m_file + ": " + problem);
  }

  void report(const ztCADInspect_Finding& finding) {
    if (finding.severity == ztCAD_SeverityError) isWhole = false;
    printError(m_file + ": " + finding.message);
  }

  void addShapes() {
    const ztCADInspect_Shape* const shapes = ztCADInspect_shapes(m_scene.get());
    const std::int64_t count = ztCADInspect_shapeCount(m_scene.get());
    for (std::int64_t i = 0; i < count; ++i) {
      const bool isUsable = addShape(shapes[i]);
      m_meshOf.push_back(isUsable ? static_cast<std::int64_t>(model.meshes.size()) - 1 : Node::none);
    }
  }

  /// Whether the shape became the last mesh of the model.
  bool addShape(const ztCADInspect_Shape& shape) {
    switch (shape.kind) {
      case ztCADInspect_ShapePoint: {
        if (shape.hasCenter == 0 || !isFinite(shape.center, 3)) return false;
        Mesh& mesh = model.meshes.emplace_back();
        mesh.kind = Mesh::Kind::Point;
        mesh.vertices = shape.center;
        mesh.vertexCount = 1;
        return true;
      }
      case ztCADInspect_ShapeSphere:
        if (shape.hasCenter == 0 || !isFinite(shape.center, 3) || !isFinite(&shape.radius, 1) ||
            !(shape.radius > 0))
          return false;
        model.meshes.push_back(sphereMesh(shape.center, shape.radius));
        model.meshes.back().viewOwn();
        return true;
      case ztCADInspect_ShapePolyline: {
        const auto count = static_cast<std::size_t>(shape.vertexCount);
        if (count == 0 || !isFinite(shape.vertices, 3 * count)) return false;
        Mesh& mesh = model.meshes.emplace_back();
        mesh.kind = Mesh::Kind::Polyline;
        mesh.vertices = shape.vertices;
        mesh.vertexCount = count;
        return true;
      }
      default:
        return addMesh(shape);
    }
  }

  bool addMesh(const ztCADInspect_Shape& shape) {
    Mesh mesh;
    mesh.vertices = shape.vertices;
    mesh.vertexCount = static_cast<std::size_t>(shape.vertexCount);
    mesh.facets = shape.facets;
    mesh.facetCount = static_cast<std::size_t>(shape.facetCount);
    const bool isValid = isFinite(mesh.vertices, 3 * mesh.vertexCount) &&
                         std::all_of(mesh.facets, mesh.facets + 3 * mesh.facetCount,
                                     [&](std::uint32_t index) { return index < mesh.vertexCount; });
    if (!isValid) keepValid(mesh);
    if (mesh.facetCount == 0) return false;
    model.meshes.push_back(std::move(mesh));
    return true;
  }

  /// Copies the facets whose corners are vertices with a position.
  void keepValid(Mesh& mesh) {
    const auto isUsable = [&](std::uint32_t index) {
      return index < mesh.vertexCount && isFinite(mesh.vertex(index), 3);
    };
    for (std::size_t i = 0; i < mesh.facetCount; ++i) {
      const std::uint32_t* const corners = mesh.facet(i);
      if (std::all_of(corners, corners + 3, isUsable))
        mesh.own.facets.insert(mesh.own.facets.end(), corners, corners + 3);
      else
        ++m_leftOutFacets;
    }
    mesh.own.vertices.assign(mesh.vertices, mesh.vertices + 3 * mesh.vertexCount);
    for (double& number : mesh.own.vertices)
      if (!std::isfinite(number)) number = 0;  // of vertices that no facet uses any more
    mesh.viewOwn();
  }

  void addItems() {
    const ztCADInspect_Item* const items = ztCADInspect_items(m_scene.get());
    const std::int64_t count = ztCADInspect_itemCount(m_scene.get());
    std::vector<std::int64_t> nodeOf(static_cast<std::size_t>(count), Node::none);
    for (std::int64_t i = 0; i < count; ++i) {
      const ztCADInspect_Item& item = items[i];
      const bool isGroup = item.end > i + 1;
      const std::int64_t mesh = item.shape < 0 ? Node::none : m_meshOf[static_cast<std::size_t>(item.shape)];
      const bool isUsable = mesh != Node::none && isFinite(item.transform, 12);
      if (item.shape >= 0 && !isUsable) ++m_leftOutShapes;
      if (!isGroup && !isUsable) continue;
      Node node;
      node.name = item.name;
      node.path = pathOf(i);
      if (item.parent >= 0) node.parent = nodeOf[static_cast<std::size_t>(item.parent)];
      if (isUsable) {
        node.mesh = mesh;
        std::copy_n(item.transform, 12, node.transform.begin());
      }
      if (item.hasColor != 0) node.colour = Colour{item.color[0], item.color[1], item.color[2]};
      nodeOf[static_cast<std::size_t>(i)] = static_cast<std::int64_t>(model.nodes.size());
      model.nodes.push_back(std::move(node));
    }
  }

  std::string pathOf(std::int64_t item) const {
    std::array<char, 256> text{};
    const std::int64_t length = ztCADInspect_itemPath(m_scene.get(), item, text.data(), text.size());
    if (length < static_cast<std::int64_t>(text.size())) return text.data();
    std::string longer(static_cast<std::size_t>(length) + 1, '\0');
    ztCADInspect_itemPath(m_scene.get(), item, longer.data(), length + 1);
    longer.pop_back();
    return longer;
  }

  /// What is not placed as the document says.
  void reportFindings() {
    const std::unique_ptr<ztCADInspect_Findings, decltype(&ztCADInspect_endFindings)> findings(
        ztCADInspect_check(m_scene.get(), ztCADInspect_CheckScene), &ztCADInspect_endFindings);
    if (!findings) throw std::bad_alloc();
    for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings.get()); ++i)
      report(*ztCADInspect_findingAt(findings.get(), i));
  }

  std::string m_file;
  LoadedDocument m_document;
  OpenScene m_scene{nullptr};
  std::vector<std::int64_t> m_meshOf;  // each shape
  std::int64_t m_leftOutFacets = 0;
  std::int64_t m_leftOutShapes = 0;
};

DocumentModel::DocumentModel(const std::string& path, const std::string& file)
    : m_scene(std::make_unique<Scene>(path, file)) {}

DocumentModel::~DocumentModel() = default;

Model& DocumentModel::model() { return m_scene->model; }

bool DocumentModel::isWhole() const { return m_scene->isWhole; }

}  // namespace cli
