#include "documents.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "coordinates.h"
#include "measurement.h"
#include "mixed_document.h"
#include "mixed_reference.h"
#include "reference_implementation.h"

namespace benchmarks {

namespace {

std::vector<PointRecord> makePoints(Shape shape, std::size_t size) {
  Coordinates coordinates;
  std::vector<PointRecord> points(size);
  for (std::size_t i = 0; i < size; ++i) {
    points[i].name = pointName(shape, i);
    points[i].x = coordinates.next();
    points[i].y = coordinates.next();
    points[i].z = coordinates.next();
  }
  return points;
}

/// Placements at different positions, turned about the z axis.
ReferencedPoints makeReferences(std::size_t size) {
  constexpr double angle = 0.01;
  Coordinates coordinates;
  ReferencedPoints points;
  const std::vector<PointRecord> templates = makePoints(Shape::Templates, templatesToRefer);
  points.templates.assign(templates.begin(), templates.end());
  for (std::size_t i = 0; i < size; ++i) {
    PointReference& reference = points.references.emplace_back();
    reference.name = "bolt " + std::to_string(i);
    reference.archetype = templates[i % templatesToRefer].name;
    const double x = coordinates.next();
    const double y = coordinates.next();
    const double z = coordinates.next();
    const double c = std::cos(angle * static_cast<double>(i));
    const double s = std::sin(angle * static_cast<double>(i));
    reference.placement = {x, y, z, c, s, 0, 0 - s, c, 0, 0, 0, 1};  // -s might be a negative zero
  }
  return points;
}

bool write(const Document& document) {
  if (document.shape == Shape::References) return referenceSave(makeReferences(document.size), document.file);
  if (document.shape == Shape::Mesh) return referenceSave(makeMesh(document.size), document.file);
  return referenceSave(makePoints(document.shape, document.size), document.shape, document.file);
}

std::string withEach(const std::string& text, const std::string& what, const std::string& replacement) {
  std::string replaced;
  std::size_t copied = 0;
  for (std::size_t found = text.find(what); found != std::string::npos; found = text.find(what, copied)) {
    replaced += text.substr(copied, found - copied) + replacement;
    copied = found + what.size();
  }
  return replaced + text.substr(copied);
}

std::string afterEmptyElements(const std::string& text, const std::string& insertion) {
  return withEach(text, "/>", "/>" + insertion);
}

/// The text of each element with a tag becomes a CDATA section.
std::string withCdataIn(const std::string& tag, const std::string& text) {
  const std::string start = '<' + tag + '>';
  const std::string end = "</" + tag + '>';
  return withEach(withEach(text, end, "]]>" + end), start, start + "<![CDATA[");
}

/// The lists of a mesh are CDATA sections, and one follows each empty element.
std::string withCdata(const std::string& text) {
  return afterEmptyElements(withCdataIn("vertices", withCdataIn("faces", text)), "<![CDATA[ ]]>");
}

/// @param ascii all documents are
std::string inUtf16(const std::string& ascii) {
  std::string units = "\xff\xfe";
  for (const char c : ascii)
    (units += c) += '\0';
  return units;
}

/// The text of a document in another form.
std::string textInForm(Form form, const std::string& file) {
  std::ifstream plain(file, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(plain)), std::istreambuf_iterator<char>());
  const std::size_t afterDeclaration = text.find("?>") + 2;
  switch (form) {
    case Form::DocumentType:
      text.insert(afterDeclaration, "<!DOCTYPE GMD>");
      break;
    case Form::Comments:
      text = text.substr(0, afterDeclaration) + "<!DOCTYPE GMD>" +
             afterEmptyElements(text.substr(afterDeclaration), "<!---->");
      break;
    case Form::Cdata:
      text = withCdata(text);
      break;
    case Form::Instructions:
      text = afterEmptyElements(text, "<?note?>");
      break;
    case Form::CdataAtTheEnd:
      text.insert(text.rfind("</"), "<![CDATA[ ]]>");
      break;
    case Form::Utf16:
      text = inUtf16("<?xml version=\"1.0\"?>" + text.substr(afterDeclaration));
      break;
  }
  return text;
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
  return shape == Shape::SameName ? "hinge" : "hinge " + std::to_string(index);
}

Documents::Documents(const std::string& folder) : m_folder(folder + "/ztCAD_benchmark_XXXXXX") {
  if (!::mkdtemp(m_folder.data())) throw std::runtime_error("cannot create a folder in " + folder);
}

Documents::~Documents() {
  std::error_code ignored;
  std::filesystem::remove_all(m_folder, ignored);
}

const Document& Documents::make(Shape shape, std::size_t size) {
  const auto found = std::find_if(m_documents.begin(), m_documents.end(),
                                  [&](const Document& d) { return d.shape == shape && d.size == size; });
  if (found != m_documents.end()) return *found;
  Document created;
  created.shape = shape;
  created.size = size;
  created.file = m_folder + "/document" + std::to_string(m_documents.size()) + ".xml";
  // in a child process: this one must stay small
  if (!inChild([&] { return timed([&] { return write(created); }); }).succeeded)
    throw std::runtime_error(created.file + " cannot be written");
  created.bytes = static_cast<double>(std::filesystem::file_size(created.file));
  return m_documents.emplace_back(created);
}

Document Documents::makeMixed(const std::string& text, std::size_t copies) const {
  Document once;
  once.shape = Shape::Mixed;
  once.file = m_folder + "/mixed_once.xml";
  once.bytes = static_cast<double>(text.size());
  std::ofstream(once.file, std::ios::binary) << text;
  MixedDocument content;
  if (!referenceLoad(once, content))
    throw std::runtime_error("the mixed document cannot be read or holds templates");
  Document created = once;
  created.size = copies * sizeOf(content).elements;
  created.numbers = copies * sizeOf(content).numbers;
  created.file = m_folder + "/mixed.xml";
  const auto write = [&] {
    std::ofstream file(created.file, std::ios::binary);
    return static_cast<bool>(file << repeated(text, copies) << std::flush);
  };
  // in a child process: this one must stay small
  if (!inChild([&] { return timed(write); }).succeeded)
    throw std::runtime_error(created.file + " cannot be written");
  created.bytes = static_cast<double>(std::filesystem::file_size(created.file));
  return created;
}

Document Documents::inForm(Form form, const Document& document) {
  Document copy = document;
  copy.file += ".form.xml";
  const auto write = [&] {
    std::ofstream file(copy.file, std::ios::binary);
    return static_cast<bool>(file << textInForm(form, document.file) << std::flush);
  };
  // in a child process: a later one would reuse memory that this one freed, and seem to need less
  if (!inChild([&] { return timed(write); }).succeeded)
    throw std::runtime_error(copy.file + " cannot be written");
  copy.bytes = static_cast<double>(std::filesystem::file_size(copy.file));
  return copy;
}

}  // namespace benchmarks
