#include "convert.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <memory>
#include <sstream>

#include "../failure.h"
#include "../info/problem.h"
#include "../input_file.h"
#include "../output.h"
#include "../platform/file_names.h"
#include "assimp_module.h"
#include "document_builder.h"
#include "document_model.h"
#include "mesh_writers.h"
#include "stl_reader.h"
#include "vertex_joiner.h"

namespace cli {

namespace {

std::string bytesOf(const std::string& path) {
  std::error_code error;
  if (std::filesystem::is_directory(pathOf(path), error)) throw Failure("it is a folder");
  std::ifstream stream(pathOf(path), std::ios::binary);
  std::ostringstream content;
  if (!stream || (stream.peek() != std::ifstream::traits_type::eof() && !(content << stream.rdbuf())))
    throw Failure("the file cannot be read");
  return content.str();
}

/// Multiplies the coordinates and the places of a model.
void scale(Model& model, double factor) {
  for (Mesh& mesh : model.meshes) {
    if (mesh.own.vertices.empty())
      mesh.own.vertices.assign(mesh.vertices, mesh.vertices + 3 * mesh.vertexCount);
    for (double& number : mesh.own.vertices)
      number *= factor;
    mesh.vertices = mesh.own.vertices.data();
  }
  for (Node& node : model.nodes)
    for (const std::size_t k : {std::size_t{3}, std::size_t{7}, std::size_t{11}})
      node.transform[k] *= factor;
}

std::string counted(std::int64_t number, const char* word) {
  return std::to_string(number) + " " + word + (number == 1 ? "" : "s");
}

class Conversion {
 public:
  explicit Conversion(const ConvertOptions& options)
      : m_options(options),
        m_from(options.from ? *options.from : formatOfFile(options.input, "--from")),
        m_to(options.to ? *options.to : formatOfFile(options.output, "--to")) {
    requireFittingOptions();
  }

  ExitCode run() {
    const InputFile input(m_options.input);
    std::unique_ptr<DocumentModel> document;
    Model fromMesh;
    if (m_from == MeshFormat::Document)
      document = std::make_unique<DocumentModel>(input.path(), m_options.input);
    else
      fromMesh = readMesh(input.path());
    Model& model = document ? document->model() : fromMesh;
    if (m_options.join) join(model);
    if (m_options.scale != 1) scale(model, m_options.scale);
    if (m_to == MeshFormat::Document)
      writeDocument(model);
    else
      writeMesh(model);
    return !document || document->isWhole() ? ExitCode::Good : ExitCode::NotWell;
  }

 private:
  void requireFittingOptions() const {
    const bool fromDocument = m_from == MeshFormat::Document;
    const bool toDocument = m_to == MeshFormat::Document;
    if (fromDocument && toDocument)
      throw UsageError("both files are documents; 'ztcad format' writes a document again");
    if (fromDocument && m_options.join) throw UsageError("--join is for mesh files, whose vertices it joins");
    if (fromDocument && !m_options.name.empty())
      throw UsageError("--name is for mesh files; elements of a document have names");
    if (!toDocument && m_options.density)
      throw UsageError("--density is for documents: mesh files have no mass data");
  }

  Model readMesh(const std::string& path) const {
    try {
      if (!std::filesystem::exists(pathOf(path))) throw Failure("no such file");
      const bool isStl = m_from == MeshFormat::Stl || m_from == MeshFormat::StlText;
      const MeshFormat extension = m_from == MeshFormat::PlyText ? MeshFormat::Ply : m_from;
      Model model = isStl ? readStl(bytesOf(path)) : readByAssimp(path, wordFor(extension));
      removeEmpty(model);
      if (model.nodes.empty()) throw Failure("the file has no triangles");
      nameNodes(model);
      return model;
    } catch (const Failure& failure) {
      throw Failure(m_options.input + ": " + failure.what());
    }
  }

  static void removeEmpty(Model& model) {
    const auto isEmpty = [&](const Node& node) {
      const Mesh& mesh = model.meshes[static_cast<std::size_t>(node.mesh)];
      return mesh.kind == Mesh::Kind::Triangles ? mesh.facetCount == 0 : mesh.vertexCount == 0;
    };
    model.nodes.erase(std::remove_if(model.nodes.begin(), model.nodes.end(), isEmpty), model.nodes.end());
  }

  /// With --name one element gets it, several the name and a number. Nodes without a name get that of the
  /// file.
  void nameNodes(Model& model) const {
    const std::string stem =
        m_options.input == standardStream ? "" : pathOf(m_options.input).stem().u8string();
    std::size_t number = 0;
    for (Node& node : model.nodes) {
      if (!m_options.name.empty())
        node.name = m_options.name + (model.nodes.size() > 1 ? "_" + std::to_string(++number) : "");
      else if (node.name.empty())
        node.name = stem;
    }
  }

  void join(Model& model) {
    std::size_t removed = 0;
    for (Mesh& mesh : model.meshes)
      if (mesh.kind == Mesh::Kind::Triangles) removed += joinWithin(mesh, *m_options.join);
    if (removed > 0)
      printError(m_options.input +
                 ": removed by --join: " + counted(static_cast<std::int64_t>(removed), "facet"));
  }

  void writeDocument(const Model& model) {
    const LoadedDocument document = documentOf(model, {m_options.input, m_options.density});
    ztCAD_Outcome outcome;
    if (m_options.output != standardStream) {
      if (!ztCAD_saveDocument(document.get(), m_options.output.c_str(), &outcome))
        throw Failure(m_options.output + ": " + problemOf(outcome));
      return;
    }
    OutputFile file(m_options.output);
    const auto write = [](const char* bytes, std::int64_t size, void* context) {
      try {
        static_cast<OutputFile*>(context)->write(std::string_view(bytes, static_cast<std::size_t>(size)));
        return true;
      } catch (const Failure&) {
        return false;
      }
    };
    if (!ztCAD_saveDocumentTo(document.get(), write, &file, &outcome))
      throw Failure(m_options.output + ": " + problemOf(outcome));
    file.commit();
  }

  void writeMesh(const Model& model) {
    const bool keepsLines = m_to == MeshFormat::Obj || m_to == MeshFormat::Glb;
    if (model.nodes.empty() || (!keepsLines && !model.hasFacets()))
      throw Failure(m_options.input + ": there is nothing that the format " + wordFor(m_to) + " can hold");
    OutputFile file(m_options.output);
    const Losses losses = write(model, file);
    file.commit();
    if (losses.points + losses.polylines == 0) return;
    printError(m_options.input + ": the format " + wordFor(m_to) + " has no place for " +
               counted(losses.points, "point") + " and " + counted(losses.polylines, "polyline"));
  }

  Losses write(const Model& model, OutputFile& file) const {
    switch (m_to) {
      case MeshFormat::Stl:
        return writeStl(model, file);
      case MeshFormat::StlText:
        return writeStlText(model, file);
      case MeshFormat::Obj:
        return writeObj(model, file);
      case MeshFormat::Ply:
        return writePly(model, file, false);
      case MeshFormat::PlyText:
        return writePly(model, file, true);
      case MeshFormat::Glb:
        return writeGlb(model, file);
      case MeshFormat::ThreeMf:
        return write3mf(model, file);
      case MeshFormat::Document:
        break;
    }
    return {};
  }

  const ConvertOptions& m_options;
  MeshFormat m_from;
  MeshFormat m_to;
};

}  // namespace

ExitCode convert(const ConvertOptions& options) { return Conversion(options).run(); }

}  // namespace cli
