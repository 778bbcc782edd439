#include "triangle.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../property/base_parts.h"
#include "../support/parallel_settings.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "triple_text.h"

using ztcad::words;

ztCAD_commonTriangle::ztCAD_commonTriangle(const QString& name, const ztCAD_Vertices& vertices,
                                           const ztCAD_Faces& faces, bool& nameIsFree)
    : ztCAD_Solid(name, nameIsFree), m_vertices(vertices), m_faces(faces) {}

QString& ztCAD_commonTriangle::toText(QString& out, bool debugForm) const {
  ztcad::beginGeometryText(out, words().triangulation, property(), debugForm);
  appendMipText(out, debugForm);
  m_vertices.toText(out, debugForm);
  out += QLatin1String(" ,");
  m_faces.toText(out, debugForm);
  return out += QLatin1String(");");
}

void ztCAD_commonTriangle::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    ztcad::writeBaseParts(*this, *this, element);
    element.attribute(words().method, words().triangulation);  // regardless of method()
    writeMip(element);
    m_vertices.writeElement(element);
    m_faces.writeElement(element);
  });
}

bool ztCAD_commonTriangle::readAndCheck(const ztcad::ElementView& element, bool& fault) {
  const ztcad::ParallelModeScope scope(ztParallel::Logical);
  const bool baseOk = ztcad::readBaseParts(*this, *this, element, fault);
  reviewMethod(element, words().triangulation);
  readMip(element);
  std::optional<bool> verticesOk;
  std::optional<bool> facesOk;
  element.forEachChild([&](const ztcad::ElementView& child) {
    const QString& tag = child.tag();
    const bool isVertices = tag == words().vertices;
    if (!isVertices && tag != words().faces)
      skipUnknown(child);
    else if (isVertices ? verticesOk : facesOk)
      skipRepeated(child);
    else if (isVertices)
      verticesOk = m_vertices.readElement(child);
    else
      facesOk = m_faces.readElement(child);
  });
  if (!verticesOk) report(element, ztcad::Rule::missing_vertices);
  if (!facesOk) report(element, ztcad::Rule::missing_faces);
  setReadOk(verticesOk.value_or(false) && facesOk.value_or(false) && baseOk);
  return readOk();
}

bool ztCAD_commonTriangle::passesCheck() const {
  if (wasRead()) return readOk();
  return m_vertices.coordinates().size() % 3 == 0 && m_faces.indices().size() % 3 == 0;
}

QString ztCAD_Triangle::lcsWord() const { return words().lcs; }
QString ztCAD_Triangle::elementName() const { return words().solid; }
QString ztCAD_TmplTriangle::lcsWord() const { return words().mcs; }
QString ztCAD_TmplTriangle::elementName() const { return words().templateSolid; }
