#include "assimp_module.h"

#include <assimp/material.h>
#include <assimp/mesh.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <assimp/DefaultIOSystem.h>
#include <algorithm>
#include <assimp/Importer.hpp>
#include <cmath>
#include <filesystem>
#include <memory>

#include "vertex_joiner.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

/// Opens the mesh file, whatever its extension, and materials beside it. No other file is opened, whatever
/// the mesh file names.
class Files : public Assimp::DefaultIOSystem {
 public:
  Files(const std::string& path, const std::string& extension)
      : m_path(path),
        m_name(fs::u8path(path).extension() == "." + extension ? path : path + "." + extension) {}

  /// What Assimp is to call the file: it goes by the extension.
  const std::string& name() const { return m_name; }

  bool Exists(const char* file) const override { return file == m_name || isMaterial(file); }
  Assimp::IOStream* Open(const char* file, const char* mode) override {
    if (file == m_name) return DefaultIOSystem::Open(m_path.c_str(), mode);
    return isMaterial(file) ? DefaultIOSystem::Open(file, mode) : nullptr;
  }

 private:
  bool isMaterial(const fs::path& file) const {
    std::error_code ignored;
    return file.extension() == ".mtl" && file.parent_path() == fs::path(m_name).parent_path() &&
           fs::is_regular_file(file, ignored);
  }

  std::string m_path;
  std::string m_name;
};

/// A component as the eye sees it, of one that is stored as light.
double encoded(double light) {
  return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

class ModelReader {
 public:
  /// @param isLinear whether the colours of materials are stored as light
  ModelReader(const aiScene& scene, bool isLinear, Model& model)
      : m_scene(scene), m_isLinear(isLinear), m_model(model), m_meshesOf(scene.mNumMeshes) {}

  void read() {
    for (unsigned i = 0; i < m_scene.mNumMeshes; ++i)
      addMesh(i);
    addNode(*m_scene.mRootNode, aiMatrix4x4());
  }

 private:
  void addMesh(unsigned index) {
    const aiMesh& source = *m_scene.mMeshes[index];
    if (source.mPrimitiveTypes == aiPrimitiveType_TRIANGLE)
      addTriangles(source);
    else if (source.mPrimitiveTypes == aiPrimitiveType_LINE)
      addLines(source, m_meshesOf[index]);
    else if (source.mPrimitiveTypes == aiPrimitiveType_POINT)
      addPoints(source, m_meshesOf[index]);
    if (source.mPrimitiveTypes == aiPrimitiveType_TRIANGLE)
      m_meshesOf[index].push_back(static_cast<std::int64_t>(m_model.meshes.size()) - 1);
  }

  void addTriangles(const aiMesh& source) {
    Mesh& mesh = m_model.meshes.emplace_back();
    VertexJoiner joiner(mesh);
    std::vector<std::uint32_t> indices(source.mNumVertices);
    for (unsigned i = 0; i < source.mNumVertices; ++i)
      indices[i] = joiner.add(source.mVertices[i].x, source.mVertices[i].y, source.mVertices[i].z);
    for (unsigned i = 0; i < source.mNumFaces; ++i) {
      const aiFace& face = source.mFaces[i];
      if (face.mNumIndices != 3) continue;
      for (unsigned k = 0; k < 3; ++k)
        mesh.own.facets.push_back(indices.at(face.mIndices[k]));
    }
    mesh.viewOwn();
  }

  Mesh& emptyMesh(Mesh::Kind kind, std::vector<std::int64_t>& meshes) {
    meshes.push_back(static_cast<std::int64_t>(m_model.meshes.size()));
    Mesh& mesh = m_model.meshes.emplace_back();
    mesh.kind = kind;
    return mesh;
  }

  static void addVertex(const aiMesh& source, unsigned index, Mesh& mesh) {
    if (index >= source.mNumVertices) return;
    const aiVector3D& xyz = source.mVertices[index];
    mesh.own.vertices.insert(mesh.own.vertices.end(), {xyz.x, xyz.y, xyz.z});
    mesh.viewOwn();
  }

  /// Segments that follow each other are one polyline.
  void addLines(const aiMesh& source, std::vector<std::int64_t>& meshes) {
    Mesh* mesh = nullptr;
    for (unsigned i = 0; i < source.mNumFaces; ++i) {
      const aiFace& segment = source.mFaces[i];
      if (segment.mNumIndices != 2) continue;
      if (!mesh || i == 0 || !isSame(source, source.mFaces[i - 1].mIndices[1], segment.mIndices[0])) {
        mesh = &emptyMesh(Mesh::Kind::Polyline, meshes);
        addVertex(source, segment.mIndices[0], *mesh);
      }
      addVertex(source, segment.mIndices[1], *mesh);
    }
  }

  static bool isSame(const aiMesh& source, unsigned a, unsigned b) {
    return a == b ||
           (a < source.mNumVertices && b < source.mNumVertices && source.mVertices[a] == source.mVertices[b]);
  }

  void addPoints(const aiMesh& source, std::vector<std::int64_t>& meshes) {
    for (unsigned i = 0; i < source.mNumFaces; ++i)
      addVertex(source, source.mFaces[i].mIndices[0], emptyMesh(Mesh::Kind::Point, meshes));
  }

  /// Nodes become nodes without parents, each with its place in the model.
  void addNode(const aiNode& source, const aiMatrix4x4& above) {
    const aiMatrix4x4 transform = above * source.mTransformation;
    for (unsigned i = 0; i < source.mNumMeshes; ++i) {
      const unsigned index = source.mMeshes[i];
      const aiMesh& mesh = *m_scene.mMeshes[index];
      for (const std::int64_t part : m_meshesOf.at(index)) {
        Node node;
        node.name = source.mName.length > 0 ? source.mName.C_Str() : mesh.mName.C_Str();
        node.mesh = part;
        node.colour = colourOf(mesh);
        const aiMatrix4x4& t = transform;
        node.transform = {t.a1, t.a2, t.a3, t.a4, t.b1, t.b2, t.b3, t.b4, t.c1, t.c2, t.c3, t.c4};
        m_model.nodes.push_back(std::move(node));
      }
    }
    for (unsigned i = 0; i < source.mNumChildren; ++i)
      addNode(*source.mChildren[i], transform);
  }

  static std::uint8_t byteOf(double component) {
    return static_cast<std::uint8_t>(std::lround(255 * std::clamp(component, 0.0, 1.0)));
  }

  /// The colour of all vertices, else of the material.
  std::optional<Colour> colourOf(const aiMesh& mesh) const {
    if (const aiColor4D* const colours = mesh.mColors[0]) {
      const bool areEqual = std::all_of(colours, colours + mesh.mNumVertices, [&](const aiColor4D& c) {
        return c.r == colours->r && c.g == colours->g && c.b == colours->b;
      });
      if (!areEqual || mesh.mNumVertices == 0) return std::nullopt;
      return Colour{byteOf(colours->r), byteOf(colours->g), byteOf(colours->b)};
    }
    if (mesh.mMaterialIndex >= m_scene.mNumMaterials) return std::nullopt;
    const aiMaterial& material = *m_scene.mMaterials[mesh.mMaterialIndex];
    aiString name;
    aiColor4D colour;
    if (material.Get(AI_MATKEY_NAME, name) == aiReturn_SUCCESS &&
        std::string(name.C_Str()) == AI_DEFAULT_MATERIAL_NAME)
      return std::nullopt;
    if (material.Get(AI_MATKEY_COLOR_DIFFUSE, colour) != aiReturn_SUCCESS) return std::nullopt;
    const auto component = [&](double value) { return byteOf(m_isLinear ? encoded(value) : value); };
    return Colour{component(colour.r), component(colour.g), component(colour.b)};
  }

  const aiScene& m_scene;
  bool m_isLinear;
  Model& m_model;
  std::vector<std::vector<std::int64_t>> m_meshesOf;  // of each mesh of the scene
};

}  // namespace

}  // namespace cli

extern "C" __attribute__((visibility("default"))) bool ztcadReadByAssimp(const char* path,
                                                                         const char* extension,
                                                                         cli::Model& model,
                                                                         std::string& problem) {
  try {
    Assimp::Importer importer;
    auto* const files = new cli::Files(path, extension);  // the importer deletes it
    importer.SetIOHandler(files);
    constexpr int dropped = aiComponent_NORMALS | aiComponent_TANGENTS_AND_BITANGENTS |
                            aiComponent_TEXCOORDS | aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS |
                            aiComponent_TEXTURES | aiComponent_LIGHTS | aiComponent_CAMERAS;
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS, dropped);
    const aiScene* const scene =
        importer.ReadFile(files->name(), aiProcess_Triangulate | aiProcess_SortByPType |
                                             aiProcess_RemoveComponent | aiProcess_ValidateDataStructure);
    if (!scene || !scene->mRootNode) {
      problem = importer.GetErrorString();
      return false;
    }
    cli::ModelReader(*scene, std::string(extension) == "glb", model).read();
    return true;
  } catch (const std::exception& error) {
    problem = error.what();
    return false;
  }
}
