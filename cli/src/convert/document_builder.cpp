#include "document_builder.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "../failure.h"
#include "../output.h"
#include "solid_mass.h"

namespace cli {

namespace {

/// The coordinate system of a transform that only moves and turns: origin, x, y, z axis.
std::optional<std::array<double, 12>> systemOf(const Transform& t) {
  constexpr double tolerance = 1e-5;  // axes of six digits are within it
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = i; j < 3; ++j) {
      const double product = t[i] * t[j] + t[4 + i] * t[4 + j] + t[8 + i] * t[8 + j];
      if (!(std::abs(product - (i == j ? 1 : 0)) <= tolerance)) return std::nullopt;
    }
  if (mirrors(t)) return std::nullopt;
  return std::array<double, 12>{t[3], t[7], t[11], t[0], t[4], t[8], t[1], t[5], t[9], t[2], t[6], t[10]};
}

std::int32_t countOf(std::size_t count) {
  if (count > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
    throw Failure("a mesh has more entries than a document can hold");
  return static_cast<std::int32_t>(count);
}

std::string correctName(const std::string& name, const char* fallback) {
  std::string corrected(std::max(name.size(), std::string(fallback).size()) + 3, '\0');
  doCorrectName_nostl(name.c_str(), corrected.data(), fallback);
  corrected.resize(corrected.find('\0'));
  return corrected;
}

class DocumentBuilder {
 public:
  DocumentBuilder(const Model& model, const DocumentSettings& settings)
      : m_model(model), m_settings(settings), m_document(crtGMDDocument_nostl("")) {
    if (!m_document) throw std::bad_alloc();
    makeHeader();
  }

  LoadedDocument take() {
    for (const Node& node : m_model.nodes)
      if (node.mesh != Node::none) add(node, m_model.meshes[static_cast<std::size_t>(node.mesh)]);
    return std::move(m_document);
  }

 private:
  void makeHeader() {
    ztCAD_HeaderNode* const header = crtHeader();
    const std::uint32_t major = 2;
    const std::uint32_t minor = 1;
    ztCAD_setHeaderNumber(header, ztCAD_HeaderMajorVersion, &major);
    ztCAD_setHeaderNumber(header, ztCAD_HeaderMinorVersion, &minor);
    ztCAD_setHeaderText(header, ztCAD_HeaderInform, ("converted from " + m_settings.source).c_str());
    setHeader(header, m_document.get());  // a copy
    ztCAD_setHeaderText(header, ztCAD_HeaderInform,
                        nullptr);  // the record lives until the library is unloaded
  }

  void add(const Node& node, const Mesh& mesh) {
    switch (mesh.kind) {
      case Mesh::Kind::Triangles:
        addSolid(node, mesh);
        break;
      case Mesh::Kind::Polyline:
        setVertices(*append(node, ztCAD_ElementLine, "line"), placedVertices(node, mesh));
        break;
      case Mesh::Kind::Point:
        ztCAD_setCenter(append(node, ztCAD_ElementPoint, "point"), placedVertices(node, mesh).data());
        break;
    }
  }

  ztCAD_Base* append(const Node& node, std::int32_t kind, const char* fallback) {
    ztCAD_Base* const element = ztCAD_appendToDoc(m_document.get(), kind);
    if (!element) throw std::bad_alloc();
    ztCAD_setName(element, correctName(node.name, fallback).c_str());
    if (node.colour) {
      const std::array<std::uint32_t, 3> rgb{(*node.colour)[0], (*node.colour)[1], (*node.colour)[2]};
      ztCAD_setColor(element, rgb.data());
    }
    return element;
  }

  void addSolid(const Node& node, const Mesh& mesh) {
    ztCAD_Base* const solid = append(node, ztCAD_ElementTriangle, "solid");
    const std::optional<std::array<double, 12>> system = systemOf(node.transform);
    const bool isPlaced = node.transform != identity;
    if (system && isPlaced) {
      ztCAD_fillLCS(m_system, system->data(), 12, true);
      ztCAD_setLCS(solid, m_system);
    }
    if (system)
      setVertices(*solid, mesh.vertices, mesh.vertexCount);
    else
      setVertices(*solid, placedVertices(node, mesh));
    setFacets(*solid, mesh, !system && mirrors(node.transform));
    if (m_settings.density) addMass(*solid);
  }

  static std::vector<double> placedVertices(const Node& node, const Mesh& mesh) {
    std::vector<double> vertices;
    vertices.reserve(3 * mesh.vertexCount);
    for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
      const auto xyz = placed(node.transform, mesh.vertex(i));
      vertices.insert(vertices.end(), xyz.begin(), xyz.end());
    }
    return vertices;
  }

  void setVertices(ztCAD_Base& element, const std::vector<double>& xyz) {
    setVertices(element, xyz.data(), xyz.size() / 3);
  }
  void setVertices(ztCAD_Base& element, const double* xyz, std::size_t count) {
    ztCAD_clearVertices(m_vertices);
    addVertexXYZ_nostl(xyz, countOf(count), m_vertices);
    ztCAD_setVertices(&element, m_vertices);
    if (static_cast<std::size_t>(ztCAD_getVertexCount(ztCAD_getVertices(&element))) != count)
      throw std::bad_alloc();
  }

  void setFacets(ztCAD_Base& solid, const Mesh& mesh, bool turns) {
    std::vector<std::uint32_t> turned;
    if (turns) {
      turned.assign(mesh.facets, mesh.facets + 3 * mesh.facetCount);
      for (std::size_t i = 0; i < turned.size(); i += 3)
        std::swap(turned[i + 1], turned[i + 2]);
    }
    ztCAD_clearFaces(m_faces);
    addFacetIJK_nostl(turns ? turned.data() : mesh.facets, countOf(mesh.facetCount), m_faces);
    ztCAD_setFaces(&solid, m_faces);
    if (static_cast<std::size_t>(ztCAD_getFacetCount(ztCAD_getFaces(&solid))) != mesh.facetCount)
      throw std::bad_alloc();
  }

  void addMass(ztCAD_Base& solid) {
    const std::string problem = setSolidMass(solid, *m_settings.density);
    if (!problem.empty()) printError(m_settings.source + ": no mass data: " + problem);
  }

  const Model& m_model;
  const DocumentSettings& m_settings;
  LoadedDocument m_document;
  // records of the library, which it frees at its end: one each serves for all elements
  ztCAD_Vertices* m_vertices = crtVertices();
  ztCAD_Faces* m_faces = crtFaces();
  ztCAD_LCS* m_system = crtLCS_nostl(std::array<double, 12>{}.data());
};

}  // namespace

LoadedDocument documentOf(const Model& model, const DocumentSettings& settings) {
  return DocumentBuilder(model, settings).take();
}

}  // namespace cli
