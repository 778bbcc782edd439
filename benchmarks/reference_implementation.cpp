#include "reference_implementation.h"

#include <fast_float/fast_float.h>
#include <unistd.h>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>
#include <pugixml.hpp>
#include <string_view>

namespace benchmarks {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// --------------------------------------------------------------------------------------------------- loading

/// A parsed file and the buffer that its nodes point into.
struct Tree {
  std::unique_ptr<char[]> bytes;
  pugi::xml_document xml;
};

bool parse(const Document& document, Tree& tree) {
  const auto size = static_cast<std::size_t>(document.bytes);
  tree.bytes.reset(new char[size]);  // not zeroed: fread fills it
  const File file(std::fopen(document.file.c_str(), "rb"));
  if (!file || std::fread(tree.bytes.get(), 1, size, file.get()) != size) return false;
  // the documents are ASCII, so pugixml may skip the conversion from windows-1251
  return tree.xml.load_buffer_inplace(tree.bytes.get(), size, pugi::parse_default, pugi::encoding_utf8);
}

const char* readNumber(const char* first, const char* last, double& value) {
  return fast_float::from_chars(first, last, value).ptr;
}
const char* readNumber(const char* first, const char* last, std::uint32_t& value) {
  return std::from_chars(first, last, value).ptr;
}

bool isNumberPart(char c) { return (c >= '0' && c <= '9') || c == '-'; }

template <typename Number>
void readNumbers(const char* text, std::vector<Number>& numbers) {
  const char* const end = text + std::strlen(text);
  constexpr std::ptrdiff_t usualLength = 8;
  numbers.reserve(static_cast<std::size_t>((end - text) / usualLength));
  for (const char* at = text; at != end;) {
    if (!isNumberPart(*at)) {
      ++at;
      continue;
    }
    at = readNumber(at, end, numbers.emplace_back());
  }
}

void readCenter(const char* text, PointRecord& point) {
  const char* const end = text + std::strlen(text);
  text = readNumber(text, end, point.x);
  text = readNumber(text + 2, end, point.y);
  readNumber(text + 2, end, point.z);
}

void readPoint(const pugi::xml_node& node, PointRecord& point) {
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (name == "name")
      point.name = attribute.value();
    else if (name == "comment")
      point.comment = attribute.value();
    else if (name == "inform")
      point.inform = attribute.value();
    else if (name == "color")
      point.color = attribute.value();
    else if (name == "center")
      readCenter(attribute.value(), point);
  }
}

void readPoints(const pugi::xml_node& parent, std::list<PointRecord>& points) {
  for (const pugi::xml_node& node : parent.children()) {
    const std::string_view tag = node.name();
    if (tag == "structure")
      readPoints(node, points);
    else if (tag != "header")
      readPoint(node, points.emplace_back());
  }
}

// ---------------------------------------------------------------------------------------------------- saving

/// An output buffer of fixed capacity, allocated once.
class Text {
 public:
  explicit Text(std::size_t capacity) : m_bytes(new char[capacity]), m_end(m_bytes.get()) {}

  Text& operator<<(std::string_view text) {
    std::memcpy(m_end, text.data(), text.size());
    m_end += text.size();
    return *this;
  }
  Text& operator<<(double value) {
    m_end = std::to_chars(m_end, m_end + longestNumber, value, std::chars_format::general, 6).ptr;
    return *this;
  }
  Text& operator<<(std::uint32_t value) {
    m_end = std::to_chars(m_end, m_end + longestNumber, value).ptr;
    return *this;
  }

  bool save(const std::string& name) const {
    const File file(std::fopen(name.c_str(), "wb"));
    const auto size = static_cast<std::size_t>(m_end - m_bytes.get());
    return file && std::fwrite(m_bytes.get(), 1, size, file.get()) == size && std::fflush(file.get()) == 0 &&
           ::fsync(::fileno(file.get())) == 0;
  }

  static constexpr std::size_t longestNumber = 16;

 private:
  std::unique_ptr<char[]> m_bytes;
  char* m_end;
};

constexpr std::size_t capacityForFrame = 4096;

void beginDocument(Text& text) {
  text << "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n"
       << "   <header inform=\"benchmark\" majorVersion=\"2\" minorVersion=\"1\"/>\n";
}

template <typename Number>
void writeTriples(Text& text, const std::vector<Number>& numbers) {
  for (std::size_t i = 0; i + 3 <= numbers.size(); i += 3)
    text << numbers[i] << ", " << numbers[i + 1] << ", " << numbers[i + 2] << ";\n";
}

void writePoint(Text& text, const PointRecord& point, std::string_view start) {
  text << start << " center=\"" << point.x << ", " << point.y << ", " << point.z << ";\" color=\""
       << point.color << "\" comment=\"" << point.comment << "\" inform=\"" << point.inform
       << "\" method=\"pointXYZ\" name=\"" << point.name << "\"/>\n";
}

void writeStructure(Text& text, const std::vector<PointRecord>& points, std::size_t first) {
  text << "   <structure LCS=\"\" color=\"\" comment=\"\" inform=\"\" name=\"part "
       << static_cast<std::uint32_t>(first) << "\">\n";
  for (std::size_t i = first; i < points.size() && i < first + pointsInStructure; ++i)
    writePoint(text, points[i], "      <point");
  text << "   </structure>\n";
}

void writePoints(Text& text, const std::vector<PointRecord>& points, Shape shape) {
  if (shape == Shape::Structures) {
    for (std::size_t first = 0; first < points.size(); first += pointsInStructure)
      writeStructure(text, points, first);
    return;
  }
  for (const PointRecord& point : points)
    writePoint(text, point, shape == Shape::Templates ? "   <templatePoint" : "   <point");
}

}  // namespace

bool referenceLoad(const Document& document, Mesh& mesh) {
  Tree tree;
  if (!parse(document, tree)) return false;
  const pugi::xml_node solid = tree.xml.child("GMD").child("solid");
  readNumbers(solid.child("vertices").text().get(), mesh.coordinates);
  readNumbers(solid.child("faces").text().get(), mesh.indices);
  return mesh.coordinates.size() == 3 * document.size && mesh.indices.size() == 6 * document.size;
}

bool referenceLoad(const Document& document, std::list<PointRecord>& points) {
  Tree tree;
  if (!parse(document, tree)) return false;
  readPoints(tree.xml.child("GMD"), points);
  return points.size() == document.size;
}

bool referenceSave(const Mesh& mesh, const std::string& file) {
  const std::size_t numbers = mesh.coordinates.size() + mesh.indices.size();
  Text text(capacityForFrame + numbers * (Text::longestNumber + 2));
  beginDocument(text);
  text << "   <solid color=\"\" comment=\"\" inform=\"\" method=\"triangulation\" name=\"part\">\n"
       << "      <vertices>\n";
  writeTriples(text, mesh.coordinates);
  text << "</vertices>\n      <faces>\n";
  writeTriples(text, mesh.indices);
  text << "</faces>\n   </solid>\n</GMD>\n";
  return text.save(file);
}

bool referenceSave(const std::vector<PointRecord>& points, Shape shape, const std::string& file) {
  constexpr std::size_t capacityForPoint = 512;
  Text text(capacityForFrame + points.size() * capacityForPoint);
  beginDocument(text);
  writePoints(text, points, shape);
  text << "</GMD>\n";
  return text.save(file);
}

}  // namespace benchmarks
