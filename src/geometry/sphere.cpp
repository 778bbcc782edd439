#include "sphere.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../number/number_text.h"
#include "../property/base_parts.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "triple_text.h"

using ztcad::Quoted;
using ztcad::Rule;
using ztcad::words;

ztCAD_Sphere::ztCAD_Sphere(const QString& name, const ztCAD_Coord& center, double radius, bool& nameIsFree)
    : ztCAD_Solid(name, nameIsFree), m_center(center), m_hasRadius(true), m_radius(radius) {}

void ztCAD_Sphere::setRadius(std::optional<double> radius) {
  m_hasRadius = radius.has_value();
  m_radius = radius.value_or(0);
}

QString& ztCAD_Sphere::toText(QString& out, bool debugForm) const {
  if (!debugForm) return out;
  out += words().method + QLatin1String("==") + words().sphere + QLatin1String("prop=");
  property().toText(out, true);
  out += QLatin1String("\n ");
  appendMipText(out, true);
  out += QLatin1String("Center=");
  m_center.toText(out, true);
  return out += QLatin1String(",\n ") + words().radius + QLatin1String(m_hasRadius ? "=1" : "=0");
}

void ztCAD_Sphere::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    ztcad::writeBaseParts(*this, *this, element);
    element.attribute(words().method, words().sphere);  // regardless of method()
    writeMip(element);
    ztcad::writeCenter(m_center, element);
    element.plainAttribute(words().radius, m_hasRadius ? "1" : "0");
  });
}

namespace {
/// Sets the radius from the attribute, of which a save will only keep that there is one.
/// @return whether there is one
bool readRadius(const ztcad::ElementView& element, ztCAD_Sphere& sphere) {
  const auto text = element.attribute(words().radius);
  double radius = 0;
  if (text) {
    ztcad::useCLocale();
    ztcad::ReviewedNumbers number(element, words().radius);
    radius = number.realOrZero(*text);
    if (!text->isEmpty()) number.report();
    sphere.setRadius(radius);
  }
  if (!text || text->isEmpty()) {
    report(element, Rule::missing_radius);
    return false;
  }
  if (radius != 1) reportAttribute(element, words().radius, Rule::radius_not_kept, Quoted{*text});
  return true;
}
}  // namespace

bool ztCAD_Sphere::readAndCheck(const ztcad::ElementView& element, bool& fault) {
  const bool centerOk = ztcad::readCenter(element, m_center);
  const bool radiusOk = readRadius(element, *this);
  const bool baseOk = ztcad::readBaseParts(*this, *this, element, fault);
  readMip(element);
  setReadOk(centerOk && radiusOk && baseOk);
  return readOk();
}

QString ztCAD_Sphere::lcsWord() const { return words().lcs; }
QString ztCAD_Sphere::elementName() const { return words().solid; }
