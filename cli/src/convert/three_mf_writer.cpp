#include <limits>
#include <map>

#include "../failure.h"
#include "../number_text.h"
#include "mesh_writers.h"

namespace cli {

namespace {

constexpr std::uint64_t greatestSize = std::numeric_limits<std::uint32_t>::max();

/// The checksum of ZIP.
class Crc32 {
 public:
  void add(std::string_view bytes) {
    static const std::array<std::uint32_t, 256> table = [] {
      std::array<std::uint32_t, 256> entries{};
      for (std::uint32_t i = 0; i < entries.size(); ++i) {
        entries[i] = i;
        for (int bit = 0; bit < 8; ++bit)
          entries[i] = entries[i] >> 1U ^ ((entries[i] & 1U) != 0U ? 0xEDB88320U : 0U);
      }
      return entries;
    }();
    for (const char byte : bytes)
      m_state = m_state >> 8U ^ table[(m_state ^ static_cast<unsigned char>(byte)) & 0xFFU];
  }
  std::uint32_t value() const { return ~m_state; }

 private:
  std::uint32_t m_state = 0xFFFFFFFFU;
};

/// A ZIP archive of files that are not compressed.
class Zip {
 public:
  explicit Zip(OutputFile& file) : m_file(file) {}

  /// @param writeContent called twice with a function that takes pieces: for size and checksum, then to write
  template <typename WriteContent>
  void add(const std::string& name, WriteContent writeContent) {
    Crc32 crc;
    std::uint64_t size = 0;
    writeContent([&](std::string_view piece) {
      crc.add(piece);
      size += piece.size();
    });
    const std::uint64_t start = m_size;
    if (start + size + 1024 > greatestSize)
      throw Failure("the model needs more than the 4 GiB that a file can have");
    constexpr std::uint16_t version = 20;
    constexpr std::uint16_t utf8Names = 1U << 11U;
    constexpr std::uint16_t firstDay = 0x21;  // 1980-01-01: the same model gives the same bytes
    const std::string common = word(version) + word(utf8Names) + word(0) + word(0) + word(firstDay) +
                               longWord(crc.value()) + longWord(size) + longWord(size) + word(name.size()) +
                               word(0);
    write("PK\3\4" + common + name);
    writeContent([this](std::string_view piece) { write(piece); });
    m_directory += "PK\1\2" + word(version) + common + word(0) + word(0) + word(0) + longWord(0) +
                   longWord(start) + name;
    ++m_count;
  }

  void end() {
    const std::uint64_t start = m_size;
    write(m_directory);
    write("PK\5\6" + word(0) + word(0) + word(m_count) + word(m_count) + longWord(m_directory.size()) +
          longWord(start) + word(0));
  }

 private:
  static std::string word(std::uint64_t value) {
    return {static_cast<char>(value & 0xFFU), static_cast<char>(value >> 8U & 0xFFU)};
  }
  static std::string longWord(std::uint64_t value) { return word(value) + word(value >> 16U); }
  void write(std::string_view bytes) {
    m_file.write(bytes);
    m_size += bytes.size();
  }

  OutputFile& m_file;
  std::uint64_t m_size = 0;
  std::string m_directory;
  std::uint64_t m_count = 0;
};

constexpr const char* contentTypes =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/><Default Extension="model" ContentType="application/vnd.ms-package.3dmanufacturing-3dmodel+xml"/></Types>
)";
constexpr const char* relations =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Target="/3D/3dmodel.model" Id="model" Type="http://schemas.microsoft.com/3dmanufacturing/2013/01/3dmodel"/></Relationships>
)";

std::string attributeText(const std::string& text) {
  std::string escaped;
  for (const char c : onOneLine(text)) {
    if (c == '&')
      escaped += "&amp;";
    else if (c == '<')
      escaped += "&lt;";
    else if (c == '"')
      escaped += "&quot;";
    else
      escaped += c;
  }
  return escaped;
}

std::string hexText(const Colour& colour) {
  constexpr const char* digits = "0123456789ABCDEF";
  std::string text = "#";
  for (const std::uint8_t component : colour) {
    text += digits[component / 16];
    text += digits[component % 16];
  }
  return text;
}

/// The model part: an object for each mesh in its colour, and one with a name for each node, which places it.
class ModelPart {
 public:
  explicit ModelPart(const Model& model) : m_model(model) {
    for (const Node& node : model.nodes) {
      if (!isSolid(node)) continue;
      if (node.colour) m_materialOf.try_emplace(*node.colour, m_materialOf.size());
      m_objectOf.try_emplace({node.mesh, node.colour}, firstObject + m_objectOf.size());
    }
    std::size_t index = 0;
    for (auto& [colour, material] : m_materialOf)
      material = index++;
  }

  template <typename Write>
  void write(Write write) const {
    write(R"(<?xml version="1.0" encoding="UTF-8"?>)"
          "\n"
          R"(<model unit="millimeter" xmlns="http://schemas.microsoft.com/3dmanufacturing/core/2015/02">)"
          "\n<resources>\n");
    if (!m_materialOf.empty()) write("<basematerials id=\"1\">\n");
    for (const auto& [colour, material] : m_materialOf)
      write("<base name=\"" + hexText(colour) + "\" displaycolor=\"" + hexText(colour) + "\"/>\n");
    if (!m_materialOf.empty()) write("</basematerials>\n");
    for (const auto& [key, object] : m_objectOf)
      writeMesh(m_model.meshes[static_cast<std::size_t>(key.first)], key.second, object, write);
    std::string build = "</resources>\n<build>\n";
    std::size_t object = firstObject + m_objectOf.size();
    for (const Node& node : m_model.nodes) {
      if (!isSolid(node)) continue;
      write("<object id=\"" + std::to_string(object) + "\" type=\"model\" name=\"" +
            attributeText(node.name) + "\"><components><component objectid=\"" +
            std::to_string(m_objectOf.at({node.mesh, node.colour})) + "\"/></components></object>\n");
      build += "<item objectid=\"" + std::to_string(object++) + "\"" + transformText(node.transform) + "/>\n";
    }
    write(build + "</build>\n</model>\n");
  }

 private:
  static constexpr std::size_t firstObject = 2;

  bool isSolid(const Node& node) const {
    return node.mesh != Node::none &&
           m_model.meshes[static_cast<std::size_t>(node.mesh)].kind == Mesh::Kind::Triangles;
  }

  template <typename Write>
  void writeMesh(const Mesh& mesh, const std::optional<Colour>& colour, std::size_t object,
                 Write write) const {
    std::string start = "<object id=\"" + std::to_string(object) + "\" type=\"model\"";
    if (colour) start += " pid=\"1\" pindex=\"" + std::to_string(m_materialOf.at(*colour)) + "\"";
    write(start + "><mesh><vertices>\n");
    for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
      const double* const xyz = mesh.vertex(i);
      write("<vertex x=\"" + numberText(xyz[0]) + "\" y=\"" + numberText(xyz[1]) + "\" z=\"" +
            numberText(xyz[2]) + "\"/>\n");
    }
    write("</vertices><triangles>\n");
    for (std::size_t i = 0; i < mesh.facetCount; ++i) {
      const std::uint32_t* const corners = mesh.facet(i);
      write("<triangle v1=\"" + std::to_string(corners[0]) + "\" v2=\"" + std::to_string(corners[1]) +
            "\" v3=\"" + std::to_string(corners[2]) + "\"/>\n");
    }
    write("</triangles></mesh></object>\n");
  }

  /// Column by column: vectors of 3MF are rows.
  static std::string transformText(const Transform& t) {
    if (t == identity) return {};
    std::string text = " transform=\"";
    for (std::size_t column = 0; column < 4; ++column)
      for (std::size_t row = 0; row < 3; ++row)
        text += numberText(t[4 * row + column]) + (column == 3 && row == 2 ? "\"" : " ");
    return text;
  }

  const Model& m_model;
  std::map<Colour, std::size_t> m_materialOf;
  std::map<std::pair<std::int64_t, std::optional<Colour>>, std::size_t> m_objectOf;
};

}  // namespace

/// The length unit is always the millimetre: a document names none.
Losses write3mf(const Model& model, OutputFile& file) {
  Losses losses;
  for (const Node& node : model.nodes) {
    if (node.mesh == Node::none) continue;
    const Mesh::Kind kind = model.meshes[static_cast<std::size_t>(node.mesh)].kind;
    losses.polylines += kind == Mesh::Kind::Polyline ? 1 : 0;
    losses.points += kind == Mesh::Kind::Point ? 1 : 0;
  }
  const ModelPart part(model);
  Zip zip(file);
  zip.add("[Content_Types].xml", [](const auto& write) { write(contentTypes); });
  zip.add("_rels/.rels", [](const auto& write) { write(relations); });
  zip.add("3D/3dmodel.model", [&](const auto& write) { part.write(write); });
  zip.end();
  return losses;
}

}  // namespace cli
