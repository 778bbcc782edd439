#include "coordinate.h"

#include "../core/vocabulary.h"
#include "../number/number_list.h"
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

bool ztCAD_Coord::fromText(const QString& text) { return ztcad::readCoord(ztcad::ElementText(text), *this); }

bool ztcad::readCoord(const ElementText& text, ztCAD_Coord& coord) {
  double xyz[3] = {};
  if (parseShortList(text, xyz, 3) == 0) return false;
  coord.set(xyz[0], xyz[1], xyz[2]);
  return true;
}

QString& ztCAD_Vertex::toText(QString& out, bool debugForm) const { return m_coord.toText(out, debugForm); }
