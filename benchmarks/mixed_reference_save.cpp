#include <string_view>

#include "mixed_reference.h"
#include "reference_parts.h"

namespace benchmarks {

namespace {

using namespace mixed;

// ----------------------------------------------------------------------------------------------- visiting

/// Calls `visit` for every element, those that hold others first.
template <typename Visit>
void visitAll(const Detail& detail, Visit& visit) {
  for (const Point& point : detail.points)
    visit(point);
  for (const Sphere& sphere : detail.spheres)
    visit(sphere);
  for (const Solid& solid : detail.solids)
    visit(solid);
  for (const Line& line : detail.lines)
    visit(line);
}

template <typename Visit>
void visitAll(const Content& content, Visit& visit) {
  for (const Point& point : content.points)
    visit(point);
  for (const Line& line : content.lines)
    visit(line);
  for (const MipElement& element : content.mipElements)
    visit(element);
  for (const Sphere& sphere : content.spheres)
    visit(sphere);
  for (const Solid& solid : content.solids)
    visit(solid);
  for (const Detail& detail : content.details) {
    visit(detail);
    visitAll(detail, visit);
  }
  for (const Structure& structure : content.structures) {
    visit(structure);
    visitAll(structure.content, visit);
  }
  for (const auto* const references :
       {&content.pointReferences, &content.lineReferences, &content.mipReferences, &content.solidReferences,
        &content.detailReferences, &content.structureReferences})
    for (const Reference& reference : *references)
      visit(reference);
}

template <typename Numbers>
std::size_t sizeOf(const std::optional<Numbers>& numbers) {
  return numbers ? numbers->size() : 0;
}

/// Counts elements, numbers, and the characters of texts.
struct Counter {
  ContentSize size;
  std::size_t characters = 0;

  void operator()(const Point& point) { add(point, point.center.size()); }
  void operator()(const Line& line) { add(line, line.vertices.size()); }
  void operator()(const MipElement& element) { add(element, sizeOf(element.mip)); }
  void operator()(const Sphere& sphere) { add(sphere, sizeOf(sphere.mip) + sphere.center.size()); }
  void operator()(const Solid& solid) {
    add(solid, sizeOf(solid.mip) + solid.vertices.size() + solid.faces.size());
  }
  void operator()(const Detail& detail) { add(detail, sizeOf(detail.mip)); }
  void operator()(const Structure& structure) { add(structure, 0); }
  void operator()(const Reference& reference) {
    add(reference, sizeOf(reference.placement));
    characters += reference.file.size() + reference.archetype.size();
  }

 private:
  void add(const Properties& properties, std::size_t numbers) {
    ++size.elements;
    size.numbers += sizeOf(properties.color) + sizeOf(properties.system) + numbers;
    characters += properties.name.size() + properties.comment.size() + properties.inform.size();
  }
};

// ------------------------------------------------------------------------------------------------- writing

/// Whitespace before a tag.
class Indent {
 public:
  explicit Indent(std::size_t level) : m_level(level) {}
  Indent next() const { return Indent(m_level + 1); }
  friend Text& operator<<(Text& text, Indent indent) {
    for (std::size_t i = 0; i < indent.m_level; ++i)
      text << "   ";
    return text;
  }

 private:
  std::size_t m_level;
};

template <typename Numbers>
void writeAttribute(Text& text, std::string_view start, std::string_view word,
                    const std::optional<Numbers>& numbers) {
  if (!numbers) return;
  text << start;
  writeRecord(text, word, *numbers);
  text << "\"";
}

void writeSystem(Text& text, const Properties& properties) {
  writeAttribute(text, " LCS=\"", "CS", properties.system);
}

void writeMip(Text& text, const MassInertia& mip) { writeAttribute(text, " MIP=\"", "MIP", mip); }

void writeCenter(Text& text, const std::array<double, 3>& center) {
  text << " center=\"" << center[0] << ", " << center[1] << ", " << center[2] << ";\"";
}

void writeColorAndComment(Text& text, const Properties& properties) {
  text << " color=\"";
  if (properties.color) writeRecord(text, "RGB", *properties.color);
  text << "\" comment=\"" << properties.comment;
}

void writeVisible(Text& text, const Properties& properties) {
  if (properties.visible) text << (*properties.visible ? " visible=\"true\"" : " visible=\"false\"");
}

/// The attributes from "color" to "name". @param method with its name and a leading space; may be empty
void writeTexts(Text& text, const Properties& properties, std::string_view method) {
  writeColorAndComment(text, properties);
  text << "\" inform=\"" << properties.inform << "\"" << method << " name=\"" << properties.name << "\"";
}

template <typename Number>
void writeList(Text& text, Indent indent, std::string_view tag, const std::vector<Number>& numbers) {
  text << indent << "<" << tag << ">\n";
  writeTriples(text, numbers);
  text << "</" << tag << ">\n";
}

void write(Text& text, Indent indent, const Point& point) {
  text << indent << "<point";
  writeSystem(text, point);
  writeCenter(text, point.center);
  writeTexts(text, point, " method=\"pointXYZ\"");
  writeVisible(text, point);
  text << "/>\n";
}

void write(Text& text, Indent indent, const Line& line) {
  text << indent << "<line";
  writeSystem(text, line);
  writeTexts(text, line, " method=\"polyline\"");
  writeVisible(text, line);
  text << ">\n";
  writeList(text, indent.next(), "vertices", line.vertices);
  text << indent << "</line>\n";
}

void write(Text& text, Indent indent, const MipElement& element) {
  text << indent << "<elementMIP";
  writeSystem(text, element);
  writeMip(text, element.mip);
  writeTexts(text, element, " method=\"MIP\"");
  writeVisible(text, element);
  text << "/>\n";
}

void write(Text& text, Indent indent, const Sphere& sphere) {
  text << indent << "<solid";
  writeSystem(text, sphere);
  writeMip(text, sphere.mip);
  writeCenter(text, sphere.center);
  writeTexts(text, sphere, " method=\"sphere\"");
  text << (sphere.hasRadius ? " radius=\"1\"" : " radius=\"0\"");
  writeVisible(text, sphere);
  text << "/>\n";
}

void write(Text& text, Indent indent, const Solid& solid) {
  text << indent << "<solid";
  writeSystem(text, solid);
  writeMip(text, solid.mip);
  writeTexts(text, solid, " method=\"triangulation\"");
  writeVisible(text, solid);
  text << ">\n";
  writeList(text, indent.next(), "vertices", solid.vertices);
  writeList(text, indent.next(), "faces", solid.faces);
  text << indent << "</solid>\n";
}

void write(Text& text, Indent indent, const Reference& reference, std::string_view tag) {
  text << indent << "<" << tag;
  writeSystem(text, reference);
  text << " MCS=\"";
  if (reference.placement) writeRecord(text, "CS", *reference.placement);
  text << "\"";
  writeColorAndComment(text, reference);
  text << "\" file=\"" << reference.file << "\" inform=\"" << reference.inform << "\" name=\""
       << reference.name << "\" template=\"" << reference.archetype << "\"";
  writeVisible(text, reference);
  text << "/>\n";
}

template <typename Elements, typename... Tag>
void writeEach(Text& text, Indent indent, const Elements& elements, Tag... tag) {
  for (const auto& element : elements)
    write(text, indent, element, tag...);
}

template <typename... Lists>
bool areEmpty(const Lists&... lists) {
  return (lists.empty() && ...);
}

bool isEmpty(const Detail& detail) {
  return areEmpty(detail.points, detail.spheres, detail.solids, detail.lines);
}

bool isEmpty(const Content& content) {
  return areEmpty(content.points, content.pointReferences, content.lines, content.lineReferences,
                  content.mipElements, content.mipReferences, content.spheres, content.solids,
                  content.solidReferences, content.details, content.detailReferences, content.structures,
                  content.structureReferences);
}

void write(Text& text, Indent indent, const Detail& detail) {
  text << indent << "<detail";
  writeSystem(text, detail);
  writeMip(text, detail.mip);
  writeTexts(text, detail, "");
  writeVisible(text, detail);
  if (isEmpty(detail)) {
    text << "/>\n";
    return;
  }
  text << ">\n";
  writeEach(text, indent.next(), detail.points);
  writeEach(text, indent.next(), detail.spheres);
  writeEach(text, indent.next(), detail.solids);
  writeEach(text, indent.next(), detail.lines);
  text << indent << "</detail>\n";
}

/// Everything except structures and references to them, whose order differs in documents and structures.
void writeParts(Text& text, Indent indent, const Content& content) {
  writeEach(text, indent, content.points);
  writeEach(text, indent, content.pointReferences, "pointRef");
  writeEach(text, indent, content.lines);
  writeEach(text, indent, content.lineReferences, "lineRef");
  writeEach(text, indent, content.mipElements);
  writeEach(text, indent, content.mipReferences, "elementMipRef");
  writeEach(text, indent, content.spheres);
  writeEach(text, indent, content.solids);
  writeEach(text, indent, content.solidReferences, "solidRef");
  writeEach(text, indent, content.details);
  writeEach(text, indent, content.detailReferences, "detailRef");
}

void write(Text& text, Indent indent, const Structure& structure) {
  const Content& content = structure.content;
  text << indent << "<structure";
  if (structure.system)
    writeSystem(text, structure);
  else
    text << " LCS=\"\"";
  writeTexts(text, structure, "");
  writeVisible(text, structure);
  if (isEmpty(content)) {
    text << "/>\n";
    return;
  }
  text << ">\n";
  writeParts(text, indent.next(), content);
  writeEach(text, indent.next(), content.structures);
  writeEach(text, indent.next(), content.structureReferences, "structureRef");
  text << indent << "</structure>\n";
}

Counter counted(const MixedDocument& mixed) {
  Counter counter;
  visitAll(mixed.content, counter);
  return counter;
}

}  // namespace

ContentSize sizeOf(const MixedDocument& mixed) { return counted(mixed).size; }

bool referenceSave(const MixedDocument& mixed, const std::string& file) {
  constexpr std::size_t capacityForWords = 1024;  // of one element, indented no deeper than structures nest
  constexpr std::size_t separator = 2;
  const Counter counter = counted(mixed);
  Text text(capacityForFrame + mixed.inform.size() + counter.characters +
            counter.size.elements * capacityForWords +
            counter.size.numbers * (Text::longestNumber + separator));
  beginDocument(text, mixed.inform);
  const Indent indent(1);
  writeParts(text, indent, mixed.content);
  writeEach(text, indent, mixed.content.structureReferences, "structureRef");
  writeEach(text, indent, mixed.content.structures);
  text << "</GMD>\n";
  return text.save(file);
}

}  // namespace benchmarks
