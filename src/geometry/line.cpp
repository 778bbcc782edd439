#include "line.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../property/base_parts.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "triple_text.h"

using ztcad::words;

ztCAD_commonLine::ztCAD_commonLine(const QString& name, const ztCAD_Vertices& vertices, bool& nameIsFree)
    : ztCAD_Base(name, nameIsFree), m_vertices(vertices) {}

QString& ztCAD_commonLine::toText(QString& out, bool debugForm) const {
  ztcad::beginGeometryText(out, words().polyline, property(), debugForm);
  m_vertices.toText(out, debugForm);
  return out += QLatin1String(");");
}

void ztCAD_commonLine::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    ztcad::writeBaseParts(*this, *this, element);
    element.attribute(words().method, words().polyline);  // regardless of method()
    m_vertices.writeElement(element);
  });
}

bool ztCAD_commonLine::readAndCheck(const ztcad::ElementView& element, bool& fault) {
  const bool baseOk = ztcad::readBaseParts(*this, *this, element, fault);
  reviewMethod(element, words().polyline);
  std::optional<bool> verticesOk;
  element.forEachChild([&](const ztcad::ElementView& child) {
    if (child.tag() != words().vertices)
      skipUnknown(child);
    else if (verticesOk)
      skipRepeated(child);
    else
      verticesOk = m_vertices.readElement(child);
  });
  if (!verticesOk) report(element, ztcad::Rule::missing_vertices);
  setReadOk(verticesOk.value_or(false) && baseOk);
  return readOk();
}

QString ztCAD_Line::lcsWord() const { return words().lcs; }
QString ztCAD_Line::elementName() const { return words().line; }
QString ztCAD_TmplLine::lcsWord() const { return words().mcs; }
QString ztCAD_TmplLine::elementName() const { return words().templateLine; }
