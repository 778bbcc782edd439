#include "reference_implementation.h"

#include <cstring>
#include <string_view>

#include "reference_parts.h"

namespace benchmarks {

namespace {

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

void readReference(const pugi::xml_node& node, PointReference& reference) {
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (name == "name")
      reference.name = attribute.value();
    else if (name == "comment")
      reference.comment = attribute.value();
    else if (name == "inform")
      reference.inform = attribute.value();
    else if (name == "color")
      reference.color = attribute.value();
    else if (name == "file")
      reference.file = attribute.value();
    else if (name == "template")
      reference.archetype = attribute.value();
    else if (name == "MCS")
      readNumbers(attribute.value(), reference.placement);
  }
}

// ---------------------------------------------------------------------------------------------------- saving

constexpr std::size_t capacityForPoint = 512;  // also for a reference to one

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

void writeReference(Text& text, const PointReference& reference) {
  text << "   <pointRef MCS=\"";
  writeRecord(text, "CS", reference.placement);
  text << "\" color=\"" << reference.color << "\" comment=\"" << reference.comment << "\" file=\""
       << reference.file << "\" inform=\"" << reference.inform << "\" name=\"" << reference.name
       << "\" template=\"" << reference.archetype << "\"/>\n";
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

bool referenceLoad(const Document& document, ReferencedPoints& points) {
  Tree tree;
  if (!parse(document, tree)) return false;
  for (const pugi::xml_node& node : tree.xml.child("GMD").children()) {
    const std::string_view tag = node.name();
    if (tag == "pointRef")
      readReference(node, points.references.emplace_back());
    else if (tag == "templatePoint")
      readPoint(node, points.templates.emplace_back());
  }
  return points.templates.size() == templatesToRefer && points.references.size() == document.size;
}

bool referenceSave(const Mesh& mesh, const std::string& file) {
  const std::size_t numbers = mesh.coordinates.size() + mesh.indices.size();
  Text text(capacityForFrame + numbers * (Text::longestNumber + 2));
  beginDocument(text, "benchmark");
  text << "   <solid color=\"\" comment=\"\" inform=\"\" method=\"triangulation\" name=\"part\">\n"
       << "      <vertices>\n";
  writeTriples(text, mesh.coordinates);
  text << "</vertices>\n      <faces>\n";
  writeTriples(text, mesh.indices);
  text << "</faces>\n   </solid>\n</GMD>\n";
  return text.save(file);
}

bool referenceSave(const std::vector<PointRecord>& points, Shape shape, const std::string& file) {
  Text text(capacityForFrame + points.size() * capacityForPoint);
  beginDocument(text, "benchmark");
  writePoints(text, points, shape);
  text << "</GMD>\n";
  return text.save(file);
}

bool referenceSave(const ReferencedPoints& points, const std::string& file) {
  Text text(capacityForFrame + (points.templates.size() + points.references.size()) * capacityForPoint);
  beginDocument(text, "benchmark");
  for (const PointRecord& point : points.templates)
    writePoint(text, point, "   <templatePoint");
  for (const PointReference& reference : points.references)
    writeReference(text, reference);
  text << "</GMD>\n";
  return text.save(file);
}

}  // namespace benchmarks
