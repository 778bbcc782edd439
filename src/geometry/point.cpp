#include "point.h"

#include "../core/vocabulary.h"
#include "../property/base_parts.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "triple_text.h"

using ztcad::words;

ztCAD_commonPoint::ztCAD_commonPoint() : ztCAD_baseElement(words().pointXyz) {}

ztCAD_commonPoint::ztCAD_commonPoint(const QString& name, const ztCAD_Coord& center, bool& nameIsFree)
    : ztCAD_Base(name, nameIsFree), ztCAD_baseElement(words().pointXyz), m_center(center) {}

QString& ztCAD_commonPoint::toText(QString& out, bool debugForm) const {
  if (!debugForm) return m_center.toText(out, false);
  out += words().method + QLatin1String("==");
  method().toText(out, true);
  out += QLatin1String(" prop=");
  property().toText(out, true);
  out += QLatin1String("\nCenter=");
  m_center.toText(out, true);
  return out += QLatin1String(", ");
}

void ztCAD_commonPoint::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    ztcad::writeBaseParts(*this, *this, element);
    ztcad::writeCenter(m_center, element);
  });
}

bool ztCAD_commonPoint::readAndCheck(const ztcad::ElementView& element, bool& fault) {
  const bool centerOk = ztcad::readCenter(element, m_center);
  const bool baseOk = ztcad::readBaseParts(*this, *this, element, fault);
  setReadOk(centerOk && baseOk);
  return readOk();
}

QString ztCAD_Point::lcsWord() const { return words().lcs; }
QString ztCAD_Point::elementName() const { return words().point; }

ztCAD_TmplPoint::ztCAD_TmplPoint(const QString& name, const ztCAD_commonPoint& source, bool& nameIsFree)
    : ztCAD_commonPoint(name, source.center(), nameIsFree) {
  setProperty(source.property());
  setName(name);
}

QString ztCAD_TmplPoint::lcsWord() const { return words().mcs; }
QString ztCAD_TmplPoint::elementName() const { return words().templatePoint; }
