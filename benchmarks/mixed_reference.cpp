#include "mixed_reference.h"

#include <string_view>

#include "reference_parts.h"

namespace benchmarks {

namespace {

using namespace mixed;

// --------------------------------------------------------------------------------------------------- loading

/// The attributes of one element, where they lie in the tree; null if absent.
struct Attributes {
  const char* name = nullptr;
  const char* comment = nullptr;
  const char* inform = nullptr;
  const char* color = nullptr;
  const char* visible = nullptr;
  const char* system = nullptr;
  const char* placement = nullptr;
  const char* mip = nullptr;
  const char* center = nullptr;
  const char* radius = nullptr;
  const char* method = nullptr;
  const char* file = nullptr;
  const char* archetype = nullptr;

  explicit Attributes(const pugi::xml_node& node) {
    for (const pugi::xml_attribute& attribute : node.attributes())
      if (const char** const value = find(attribute.name())) *value = attribute.value();
  }

 private:
  const char** find(std::string_view word) {
    if (word == "name") return &name;
    if (word == "comment") return &comment;
    if (word == "inform") return &inform;
    if (word == "color") return &color;
    if (word == "LCS") return &system;
    if (word == "method") return &method;
    if (word == "visible") return &visible;
    if (word == "center") return &center;
    if (word == "MIP") return &mip;
    if (word == "MCS") return &placement;
    if (word == "template") return &archetype;
    if (word == "file") return &file;
    if (word == "radius") return &radius;
    return nullptr;
  }
};

bool hasText(const char* text) { return text && *text; }

void readText(const char* text, std::string& value) {
  if (text) value = text;
}

template <typename Numbers>
void readRecord(const char* text, std::optional<Numbers>& numbers) {
  if (hasText(text)) readNumbers(text, numbers.emplace());
}

void readProperties(const Attributes& attributes, Properties& properties) {
  readText(attributes.name, properties.name);
  readText(attributes.comment, properties.comment);
  readText(attributes.inform, properties.inform);
  readRecord(attributes.color, properties.color);
  if (hasText(attributes.visible)) properties.visible = std::string_view(attributes.visible) == "true";
  readRecord(attributes.system, properties.system);
}

/// The vertices of a line or a solid.
void readVertices(const pugi::xml_node& node, std::vector<double>& vertices) {
  readNumbers(node.child("vertices").text().get(), vertices);
}

void readPoint(const Attributes& attributes, Point& point) {
  readProperties(attributes, point);
  if (attributes.center) readNumbers(attributes.center, point.center);
}

void readLine(const pugi::xml_node& node, const Attributes& attributes, Line& line) {
  readProperties(attributes, line);
  readVertices(node, line.vertices);
}

void readMipElement(const Attributes& attributes, MipElement& element) {
  readProperties(attributes, element);
  readRecord(attributes.mip, element.mip);
}

void readSphere(const Attributes& attributes, Sphere& sphere) {
  readProperties(attributes, sphere);
  readRecord(attributes.mip, sphere.mip);
  if (attributes.center) readNumbers(attributes.center, sphere.center);
  sphere.hasRadius = hasText(attributes.radius);
}

void readSolid(const pugi::xml_node& node, const Attributes& attributes, Solid& solid) {
  constexpr std::ptrdiff_t lengthOfIndex = 4;
  readProperties(attributes, solid);
  readRecord(attributes.mip, solid.mip);
  readVertices(node, solid.vertices);
  readNumbers(node.child("faces").text().get(), solid.faces, lengthOfIndex);
}

void readReference(const Attributes& attributes, Reference& reference) {
  readProperties(attributes, reference);
  readText(attributes.file, reference.file);
  readText(attributes.archetype, reference.archetype);
  readRecord(attributes.placement, reference.placement);
}

/// Reads an element of the kinds that details hold; false if it is none.
template <typename Holder>
bool readGeometry(const pugi::xml_node& node, std::string_view tag, const Attributes& attributes,
                  Holder& holder) {
  if (tag == "point") {
    readPoint(attributes, holder.points.emplace_back());
    return true;
  }
  if (tag == "solid" && attributes.method && attributes.method == std::string_view("triangulation")) {
    readSolid(node, attributes, holder.solids.emplace_back());
    return true;
  }
  if (tag == "solid" && attributes.method && attributes.method == std::string_view("sphere")) {
    readSphere(attributes, holder.spheres.emplace_back());
    return true;
  }
  if (tag == "line") {
    readLine(node, attributes, holder.lines.emplace_back());
    return true;
  }
  return false;
}

bool readDetail(const pugi::xml_node& node, const Attributes& attributes, Detail& detail) {
  readProperties(attributes, detail);
  readRecord(attributes.mip, detail.mip);
  for (const pugi::xml_node& child : node.children())
    if (!readGeometry(child, child.name(), Attributes(child), detail)) return false;
  return true;
}

/// The list for references with this tag; null if it is no tag of references.
std::list<Reference>* referencesOf(std::string_view tag, Content& content) {
  if (tag == "pointRef") return &content.pointReferences;
  if (tag == "lineRef") return &content.lineReferences;
  if (tag == "elementMipRef") return &content.mipReferences;
  if (tag == "solidRef") return &content.solidReferences;
  if (tag == "detailRef") return &content.detailReferences;
  if (tag == "structureRef") return &content.structureReferences;
  return nullptr;
}

bool readStructure(const pugi::xml_node& node, const Attributes& attributes, Structure& structure);

bool readElement(const pugi::xml_node& node, Content& content) {
  const std::string_view tag = node.name();
  const Attributes attributes(node);
  if (readGeometry(node, tag, attributes, content)) return true;
  if (tag == "detail") return readDetail(node, attributes, content.details.emplace_back());
  if (tag == "structure") return readStructure(node, attributes, content.structures.emplace_back());
  if (tag == "elementMIP") {
    readMipElement(attributes, content.mipElements.emplace_back());
    return true;
  }
  std::list<Reference>* const references = referencesOf(tag, content);
  if (references) readReference(attributes, references->emplace_back());
  return references != nullptr;
}

bool readStructure(const pugi::xml_node& node, const Attributes& attributes, Structure& structure) {
  readProperties(attributes, structure);
  for (const pugi::xml_node& child : node.children())
    if (!readElement(child, structure.content)) return false;
  return true;
}

}  // namespace

bool referenceLoad(const Document& document, MixedDocument& mixed) {
  Tree tree;
  if (!parse(document, tree)) return false;
  for (const pugi::xml_node& child : tree.xml.child("GMD").children()) {
    if (std::string_view(child.name()) == "header")
      mixed.inform = child.attribute("inform").value();
    else if (!readElement(child, mixed.content))
      return false;
  }
  return true;
}

}  // namespace benchmarks
