/// Converts any mesh file that Assimp reads into a document with one triangulated solid per mesh, and back.
///
///   mesh_to_document input.obj output.xml     converts a mesh file into a document
///   mesh_to_document input.xml output.ply     converts its solids into a mesh file of the format of that
///                                             extension

#include <ztCAD/ztCAD.h>

#include <assimp/config.h>
#include <assimp/mesh.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <algorithm>
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <iostream>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace {

bool endsWith(const std::string& text, const std::string& suffix) {
  return text.size() >= suffix.size() &&
         text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

int fail(const std::string& message) {
  std::cerr << "mesh_to_document: " << message << "\n";
  return 1;
}

// ------------------------------------------------------------------------------------------ mesh to document

ztCAD_Vertices* verticesOf(const aiMesh& mesh) {
  std::list<ztCAD_Vertex*> vertices;
  for (unsigned i = 0; i < mesh.mNumVertices; ++i) {
    const double x = mesh.mVertices[i].x;
    const double y = mesh.mVertices[i].y;
    const double z = mesh.mVertices[i].z;
    vertices.push_back(crtVertex(&x, &y, &z));
  }
  ztCAD_Vertices* const list = crtVertices();
  addVertexN(vertices, list);
  return list;
}

/// The triangles of a mesh; its points and lines are skipped.
ztCAD_Faces* facesOf(const aiMesh& mesh) {
  std::list<ztCAD_Facet*> facets;
  for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
    const aiFace& face = mesh.mFaces[i];
    if (face.mNumIndices == 3)
      facets.push_back(crtFacet(&face.mIndices[0], &face.mIndices[1], &face.mIndices[2]));
  }
  ztCAD_Faces* const list = crtFaces();
  addFacetN(facets, list);
  return list;
}

int meshToDocument(const std::string& input, const std::string& output) {
  Assimp::Importer importer;
  importer.SetPropertyBool(AI_CONFIG_PP_PTV_KEEP_HIERARCHY, true);  // keeps the meshes separate
  const aiScene* const scene = importer.ReadFile(
      input, aiProcess_Triangulate | aiProcess_JoinIdenticalVertices | aiProcess_PreTransformVertices);
  if (!scene) return fail(input + ": " + importer.GetErrorString());

  ztCAD_GMDDocument* const document = crtGMDDocument("converted from " + input);
  ztCAD_HeaderNode header;
  header.setInform(QString::fromStdString("converted from " + input));
  header.setMajorVersion(2);
  header.setMinorVersion(1);
  header.setProducerName(QString::fromUtf8("mesh_to_document"));
  setHeader(&header, document);
  for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
    const aiMesh& mesh = *scene->mMeshes[i];
    std::string name;
    doCorrectName(mesh.mName.C_Str(), name, "mesh");
    bool nameIsFree = false;
    ztCAD_Triangle* const solid = crtTriangle(name, verticesOf(mesh), facesOf(mesh), nameIsFree);
    addTriangleToDoc(solid, document);
    std::cout << "   " << name << ": " << mesh.mNumVertices << " vertices, "
              << solid->faces().indices().size() / 3 << " facets\n";
  }
  ztCAD_Outcome outcome;
  const bool saved = ztCAD_saveDocument(document, output.c_str(), &outcome);
  ztCAD_endDocument(document);
  return saved ? 0 : fail(output + " cannot be written: " + outcome.message);
}

// ------------------------------------------------------------------------------------------ document to mesh

std::unique_ptr<aiMesh> meshOf(const ztCAD_Triangle& solid) {
  const std::vector<double>& coordinates = solid.vertices().coordinates();
  const std::vector<std::uint32_t>& indices = solid.faces().indices();
  auto mesh = std::make_unique<aiMesh>();
  mesh->mName = solid.name().toStdString();
  mesh->mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
  mesh->mNumVertices = static_cast<unsigned>(coordinates.size() / 3);
  mesh->mVertices = new aiVector3D[mesh->mNumVertices];  // owned and deleted by Assimp
  const double* xyz = coordinates.data();
  for (unsigned i = 0; i < mesh->mNumVertices; ++i, xyz += 3)
    mesh->mVertices[i] =
        aiVector3D(static_cast<ai_real>(xyz[0]), static_cast<ai_real>(xyz[1]), static_cast<ai_real>(xyz[2]));
  mesh->mNumFaces = static_cast<unsigned>(indices.size() / 3);
  mesh->mFaces = new aiFace[mesh->mNumFaces];
  const std::uint32_t* facet = indices.data();
  for (unsigned i = 0; i < mesh->mNumFaces; ++i, facet += 3) {
    mesh->mFaces[i].mNumIndices = 3;
    mesh->mFaces[i].mIndices = new unsigned[3]{facet[0], facet[1], facet[2]};
  }
  return mesh;
}

/// The document format allows indices beyond the vertices; a mesh file does not.
bool indicesAreInRange(const ztCAD_Triangle& solid) {
  const std::size_t vertices = solid.vertices().coordinates().size() / 3;
  const std::vector<std::uint32_t>& indices = solid.faces().indices();
  return std::all_of(indices.begin(), indices.end(),
                     [vertices](std::uint32_t index) { return index < vertices; });
}

void collectSolids(const ztCAD_Cont<ztCAD_Triangle>& solids, std::vector<const ztCAD_Triangle*>& all) {
  for (const ztCAD_Triangle& solid : solids)
    all.push_back(&solid);
}

void collectSolids(const ztCAD_commonStructure& structure, std::vector<const ztCAD_Triangle*>& all) {
  collectSolids(structure.content().triangles, all);
  for (const ztCAD_Detail& detail : structure.content().details)
    collectSolids(detail.content().triangles, all);
  for (const ztCAD_commonStructure* nested : structure.structures())
    collectSolids(*nested, all);
}

/// Every solid of the document, including those in details and structures. Coordinates remain relative to the
/// coordinate system of their owner.
std::vector<const ztCAD_Triangle*> solidsOf(ztCAD_GMDDocument* document) {
  std::vector<const ztCAD_Triangle*> all;
  collectSolids(*ztCAD_getTriangles(document), all);
  for (const ztCAD_Detail& detail : *ztCAD_getDetails(document))
    collectSolids(detail.content().triangles, all);
  for (const ztCAD_Structure& structure : *ztCAD_getStructures(document))
    collectSolids(structure, all);
  return all;
}

std::unique_ptr<aiScene> sceneOf(const std::vector<const ztCAD_Triangle*>& solids) {
  auto scene = std::make_unique<aiScene>();
  const auto count = static_cast<unsigned>(solids.size());
  scene->mRootNode = new aiNode;
  scene->mRootNode->mNumMeshes = scene->mNumMeshes = count;
  scene->mRootNode->mMeshes = new unsigned[count];
  scene->mMeshes = new aiMesh*[count];
  scene->mNumMaterials = 1;
  scene->mMaterials = new aiMaterial*[1];
  // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks): the scene owns the material
  scene->mMaterials[0] = new aiMaterial;
  for (unsigned i = 0; i < count; ++i) {
    scene->mRootNode->mMeshes[i] = i;
    scene->mMeshes[i] = meshOf(*solids[i]).release();
  }
  // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
  return scene;
}

/// Assimp's identifier of the format for the extension of a file; empty if there is none.
std::string formatOf(const Assimp::Exporter& exporter, const std::string& file) {
  for (std::size_t i = 0; i < exporter.GetExportFormatCount(); ++i) {
    const aiExportFormatDesc* const format = exporter.GetExportFormatDescription(i);
    if (endsWith(file, std::string(".") + format->fileExtension)) return format->id;
  }
  return {};
}

int documentToMesh(const std::string& input, const std::string& output) {
  struct End {
    void operator()(ztCAD_GMDDocument* loaded) const { ztCAD_endDocument(loaded); }
  };
  ztCAD_Outcome outcome;
  const std::unique_ptr<ztCAD_GMDDocument, End> document(ztCAD_loadDocument(input.c_str(), &outcome));
  if (!document || outcome.code != ztCAD_ResultLoaded)
    return fail(input + " cannot be loaded: " + outcome.message);
  std::vector<const ztCAD_Triangle*> solids;
  for (const ztCAD_Triangle* solid : solidsOf(document.get())) {
    if (indicesAreInRange(*solid)) {
      solids.push_back(solid);
    } else {
      std::cerr << "   " << solid->name().toStdString() << ": skipped, an index is out of range\n";
    }
  }
  if (solids.empty()) return fail(input + " contains no solid that can be converted");

  Assimp::Exporter exporter;
  const std::string format = formatOf(exporter, output);
  if (format.empty()) return fail(output + ": Assimp has no export format for this extension");
  const std::unique_ptr<aiScene> scene = sceneOf(solids);
  const bool written = exporter.Export(scene.get(), format, output) == aiReturn_SUCCESS;
  std::cout << "   " << solids.size() << " solids\n";
  return written ? 0 : fail(output + ": " + exporter.GetErrorString());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3)
    return fail("usage: mesh_to_document input output (one of them .xml, the other a mesh file)");
  const std::string input = argv[1];
  const std::string output = argv[2];
  return endsWith(input, ".xml") ? documentToMesh(input, output) : meshToDocument(input, output);
}
