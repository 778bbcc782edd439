#include "mip_element.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../property/base_parts.h"
#include "../text/narrow_text.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"

using ztcad::words;

ztCAD_commonElementMIP::ztCAD_commonElementMIP() : ztCAD_baseElement(words().mip) {}

ztCAD_commonElementMIP::ztCAD_commonElementMIP(const std::string& name, const ztCAD_MIP& record)
    : ztCAD_baseElement(words().mip) {
  setName(ztcad::fromNarrow(name));
  setRecord(record);
}

QString& ztCAD_commonElementMIP::toText(QString& out, bool debugForm) const {
  out += words().method + QLatin1String("==") + words().mip + QLatin1String(" prop=");
  property().toText(out, debugForm);
  return m_record.toText(out, debugForm);
}

void ztCAD_commonElementMIP::write(ztcad::ElementSink& parent) const {
  if (!hasMIP()) return;
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    method().write(element);
    m_record.write(element);
    property().write(element);
  });
}

bool ztCAD_commonElementMIP::readAndCheck(const ztcad::ElementView& element, bool& fault) {
  const QString method = element.attribute(words().method).value_or(QString());
  const bool methodOk = method == words().mip;
  if (!methodOk) report(element, ztcad::Rule::wrong_method, ztcad::Quoted{method});
  const bool recordOk = m_record.read(element);
  if (!element.hasAttribute(words().mip)) report(element, ztcad::Rule::missing_mass_inertia);
  const bool baseOk = ztcad::readBaseParts(*this, *this, element, fault);
  setReadOk(methodOk && recordOk && baseOk);
  return readOk();
}

QString ztCAD_ElementMIP::lcsWord() const { return words().lcs; }
QString ztCAD_ElementMIP::elementName() const { return words().elementMip; }
QString ztCAD_TmplElementMIP::lcsWord() const { return words().mcs; }
QString ztCAD_TmplElementMIP::elementName() const { return words().templateElementMip; }
