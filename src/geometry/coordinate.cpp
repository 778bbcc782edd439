#include "coordinate.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../number/number_list.h"
#include "../xml/element_sink.h"
#include "triple_text.h"

QString& ztCAD_Coord::toText(QString& out, bool debugForm) const {
  if (debugForm) out += ztcad::words().coord;
  if (!m_isValid) return out;
  const double triple[] = {m_x, m_y, m_z};
  if (debugForm) out += QLatin1Char('(');
  ztcad::appendTriple(out, triple);
  if (debugForm) out += QLatin1Char(')');
  return out;
}

namespace {
/// Returns how many numbers were read; 0 if the text does not parse.
int parse(const ztcad::ElementText& text, ztCAD_Coord& coord) {
  double xyz[3] = {};
  const int count = ztcad::parseShortList(text, xyz, 3);
  if (count > 0) coord.set(xyz[0], xyz[1], xyz[2]);
  return count;
}
}  // namespace

bool ztCAD_Coord::fromText(const QString& text) { return parse(ztcad::ElementText(text), *this) > 0; }

void ztcad::writeCenter(const ztCAD_Coord& coord, ElementSink& element) {
  const double triple[] = {coord.x(), coord.y(), coord.z()};
  char text[longestTriple];
  const char* const end = coord.isValid() ? writeTriple(triple, text) : text;
  element.plainAttribute(words().center, {text, static_cast<std::size_t>(end - text)});
}

bool ztcad::readCenter(const ElementView& element, ztCAD_Coord& coord) {
  const QString& word = words().center;
  const AttributeBytes bytes = element.numberBytes(word);
  double xyz[3];
  if (bytes.state == AttributeBytes::Known && parsePlainList(bytes.ascii, bytes.endOfMemory, xyz, 3) == 3) {
    coord.set(xyz[0], xyz[1], xyz[2]);
    return true;
  }
  const auto text = element.attributeText(word);
  if (!text) {
    report(element, Rule::missing_centre);
    return false;
  }
  const int count = parse(*text, coord);
  if (count == 3) {
    reviewReals(element, word);
    return true;
  }
  const Rule rule = count == 0 ? Rule::bad_centre : Rule::short_centre;
  reportAttribute(element, word, rule, Quoted{text->toString()}, std::int64_t{count});
  reviewReals(element, word);
  return count > 0;
}

QString& ztCAD_Vertex::toText(QString& out, bool debugForm) const { return m_coord.toText(out, debugForm); }
