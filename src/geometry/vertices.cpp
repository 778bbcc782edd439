#include "vertices.h"

#include "../core/vocabulary.h"
#include "../number/number_list.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "triple_text.h"

using ztcad::words;

// Copies only the coordinates; the property block of the new list is empty.
// NOLINTNEXTLINE(bugprone-copy-constructor-init): see above
ztCAD_Vertices::ztCAD_Vertices(const ztCAD_Vertices& other)
    : ztCAD_Base(), ztCAD_ISerialize(other), m_coordinates(other.m_coordinates) {}

ztCAD_Vertices& ztCAD_Vertices::operator=(const ztCAD_Vertices& other) {
  m_coordinates = other.m_coordinates;  // keeps the property block
  return *this;
}

void ztCAD_Vertices::add(const ztCAD_Vertex& vertex) {
  const ztCAD_Coord& coord = vertex.coord();
  m_coordinates.insert(m_coordinates.end(), {coord.x(), coord.y(), coord.z()});
}

void ztCAD_Vertices::add(const double* xyz, std::size_t count) {
  ztcad::appendTriples(m_coordinates, xyz, count);
}

QString& ztCAD_Vertices::toText(QString& out, bool debugForm) const {
  if (debugForm) {
    ztcad::debugText(out, words().vertices, m_coordinates, [](QString& text, const double* xyz) {
      ztCAD_Vertex(ztCAD_Coord(xyz[0], xyz[1], xyz[2])).toText(text, true);
    });
  } else {
    ztcad::storageText(m_coordinates, [&out](std::string_view piece) { ztcad::appendAscii(out, piece); });
  }
  return out;
}

bool ztCAD_Vertices::fromText(const QString& text) {
  m_coordinates.clear();
  return ztcad::parseTriples(ztcad::ElementText(text), m_coordinates);
}

void ztCAD_Vertices::writeElement(ztcad::ElementSink& parent) const {
  parent.element(words().vertices, [this](ztcad::ElementSink& element) {
    ztcad::storageText(m_coordinates, [&element](std::string_view piece) { element.text(piece); });
  });
}

bool ztCAD_Vertices::readElement(const ztcad::ElementView& element) {
  m_coordinates.clear();
  return ztcad::readList(element, [this](const ztcad::ElementText& text, ztcad::ListRemarks* remarks) {
    return ztcad::parseTriples(text, m_coordinates, remarks);
  });
}
