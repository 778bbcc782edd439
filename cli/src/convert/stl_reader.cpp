#include "stl_reader.h"

#include <charconv>
#include <cstring>
#include <memory>

#include "../failure.h"
#include "vertex_joiner.h"

namespace cli {

namespace {

constexpr std::size_t headerSize = 80;
constexpr std::size_t facetSize = 50;

std::uint32_t littleEndian(const char* bytes) {
  std::uint32_t value = 0;
  for (unsigned i = 4; i-- > 0;)
    value = value << 8U | static_cast<unsigned char>(bytes[i]);
  return value;
}

float realAt(const char* bytes) {
  const std::uint32_t bits = littleEndian(bytes);
  float value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

/// One solid after the other, each with its vertices joined.
class Solids {
 public:
  void begin(const std::string& name) {
    m_joiner.reset();
    Node node;
    node.name = name;
    node.mesh = static_cast<std::int64_t>(m_model.meshes.size());
    m_model.nodes.push_back(node);
    m_joiner = std::make_unique<VertexJoiner>(m_model.meshes.emplace_back());
  }
  bool hasBegun() const { return m_joiner != nullptr; }

  std::uint32_t vertex(double x, double y, double z) { return m_joiner->add(x, y, z); }
  void facet(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    std::vector<std::uint32_t>& facets = m_model.meshes.back().own.facets;
    facets.insert(facets.end(), {a, b, c});
  }

  Model take() {
    for (Mesh& mesh : m_model.meshes)
      mesh.viewOwn();
    return std::move(m_model);
  }

 private:
  Model m_model;
  std::unique_ptr<VertexJoiner> m_joiner;
};

std::size_t facetsStated(std::string_view bytes) { return littleEndian(bytes.data() + headerSize); }

/// Binary files may start with "solid" too: their size decides.
bool isBinary(std::string_view bytes) {
  if (bytes.size() < headerSize + 4) return false;
  if (bytes.size() == headerSize + 4 + facetSize * facetsStated(bytes)) return true;
  const std::size_t start = bytes.find_first_not_of(" \t\r\n");
  return start == std::string_view::npos || bytes.compare(start, 5, "solid") != 0;
}

Model readBinary(std::string_view bytes) {
  const std::size_t count = facetsStated(bytes);
  const std::size_t present = (bytes.size() - headerSize - 4) / facetSize;
  if (present < count)
    throw Failure("the file ends after " + std::to_string(present) + " of " + std::to_string(count) +
                  " facets");
  Solids solids;
  solids.begin("");
  for (std::size_t i = 0; i < count; ++i) {
    const char* corner = bytes.data() + headerSize + 4 + i * facetSize + 12;  // after the normal
    std::uint32_t indices[3];
    for (std::uint32_t& index : indices) {
      index = solids.vertex(realAt(corner), realAt(corner + 4), realAt(corner + 8));
      corner += 12;
    }
    solids.facet(indices[0], indices[1], indices[2]);
  }
  return solids.take();
}

/// The text form. Normals are ignored; polygons of more than three corners, which some writers make, are cut
/// into triangles.
class TextReader {
 public:
  explicit TextReader(std::string_view text) : m_rest(text) {}

  Model read() {
    while (nextWord()) {
      if (is("solid"))
        m_solids.begin(restOfLine());
      else if (is("vertex"))
        addVertex();
      else if (is("endloop"))
        endPolygon();
      else if (is("facet") || is("endsolid"))
        restOfLine();
      else if (!is("outer") && !is("loop") && !is("endfacet"))
        fail("unexpected \"" + std::string(m_word.substr(0, 40)) + "\"");
    }
    if (!m_polygon.empty()) fail("the file ends in a facet");
    return m_solids.take();
  }

 private:
  bool is(std::string_view keyword) const {
    return m_word.size() == keyword.size() &&
           std::equal(keyword.begin(), keyword.end(), m_word.begin(),
                      [](char expected, char c) { return (c | 0x20) == expected; });
  }

  bool nextWord() {
    while (!m_rest.empty() && isSpace(m_rest.front())) {
      if (m_rest.front() == '\n') ++m_line;
      m_rest.remove_prefix(1);
    }
    std::size_t size = 0;
    while (size < m_rest.size() && !isSpace(m_rest[size]))
      ++size;
    m_word = m_rest.substr(0, size);
    m_rest.remove_prefix(size);
    return size > 0;
  }

  std::string restOfLine() {
    std::string_view line = m_rest.substr(0, m_rest.find('\n'));
    m_rest.remove_prefix(line.size());
    while (!line.empty() && isSpace(line.front()))
      line.remove_prefix(1);
    while (!line.empty() && isSpace(line.back()))
      line.remove_suffix(1);
    return std::string(line);
  }

  double number() {
    if (!nextWord()) fail("a number is missing");
    const std::string_view digits = m_word.substr(m_word.front() == '+' ? 1 : 0);
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec != std::errc() || result.ptr != digits.data() + digits.size())
      fail("\"" + std::string(m_word.substr(0, 40)) + "\" is no number");
    return value;
  }

  void addVertex() {
    if (!m_solids.hasBegun()) fail("a facet before \"solid\"");
    const double x = number();
    const double y = number();
    const double z = number();
    m_polygon.push_back(m_solids.vertex(x, y, z));
  }

  void endPolygon() {
    if (m_polygon.size() < 3) fail("a facet of " + std::to_string(m_polygon.size()) + " vertices");
    for (std::size_t i = 2; i < m_polygon.size(); ++i)
      m_solids.facet(m_polygon[0], m_polygon[i - 1], m_polygon[i]);
    m_polygon.clear();
  }

  static bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

  [[noreturn]] void fail(const std::string& problem) const {
    throw Failure("line " + std::to_string(m_line) + ": " + problem);
  }

  std::string_view m_rest;
  std::string_view m_word;
  std::int64_t m_line = 1;
  std::vector<std::uint32_t> m_polygon;
  Solids m_solids;
};

}  // namespace

Model readStl(std::string_view bytes) {
  return isBinary(bytes) ? readBinary(bytes) : TextReader(bytes).read();
}

}  // namespace cli
