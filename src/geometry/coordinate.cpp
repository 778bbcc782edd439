#include "coordinate.h"

#include <vector>

#include "../core/number_text.h"
#include "../core/vocabulary.h"
#include "triple_text.h"

QString& ztCAD_Coord::toText(QString& out, bool debugForm) const {
  if (debugForm) out += ztcad::words().coord;
  if (!m_isValid) return out;
  const double triple[] = {m_x, m_y, m_z};
  std::string text;
  ztcad::appendTriple(text, triple);
  if (debugForm) text = '(' + text + ')';
  ztcad::appendAscii(out, text);
  return out;
}

bool ztCAD_Coord::fromText(const QString& text) { return ztcad::readCoord(ztcad::ElementText(text), *this); }

bool ztcad::readCoord(const ElementText& text, ztCAD_Coord& coord) {
  std::vector<double> numbers;
  numbers.reserve(3);
  if (!parseList(text, numbers) || numbers.empty() || numbers.size() > 3) return false;
  numbers.resize(3, 0.0);
  coord.set(numbers[0], numbers[1], numbers[2]);
  return true;
}

QString& ztCAD_Vertex::toText(QString& out, bool debugForm) const { return m_coord.toText(out, debugForm); }
