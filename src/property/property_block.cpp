#include "property_block.h"

#include "../core/vocabulary.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"

ztCAD_cmnProperty::ztCAD_cmnProperty(const ztCAD_cmnProperty& other)
    : ztCAD_INode(other),
      ztCAD_ISerialize(other),
      ztCAD_StateCorrect(other),
      m_attributes(other.m_attributes),
      m_showable(other.m_showable),
      m_lcs(other.m_lcs ? std::make_unique<ztCAD_LCS>(*other.m_lcs) : nullptr) {}

ztCAD_cmnProperty& ztCAD_cmnProperty::operator=(const ztCAD_cmnProperty& other) {
  if (this == &other) return *this;
  ztCAD_StateCorrect::operator=(other);
  m_attributes = other.m_attributes;
  m_showable = other.m_showable;
  setLcs(other.lcs());
  return *this;
}

ztCAD_cmnProperty::~ztCAD_cmnProperty() = default;

void ztCAD_cmnProperty::setLcs(const std::optional<ztCAD_LCS>& lcs) {
  m_lcs = lcs ? std::make_unique<ztCAD_LCS>(*lcs) : nullptr;
}

QString& ztCAD_cmnProperty::toText(QString& out, bool debugForm) const {
  out += QLatin1String("attr=");
  m_attributes.toText(out, debugForm);
  out += QLatin1String(" ,");
  m_showable.toText(out, debugForm);
  if (m_lcs) m_lcs->toText(out, debugForm);
  return out;
}

void ztCAD_cmnProperty::write(ztcad::ElementSink& element) const {
  m_attributes.write(element);
  m_showable.write(element);
  if (m_lcs) m_lcs->write(element);
}

bool ztCAD_cmnProperty::read(const ztcad::ElementView& element, bool& fault) {
  const bool attributesOk = m_attributes.read(element, fault);
  const bool showableOk = m_showable.read(element, fault);
  if (element.hasAttribute(ztcad::words().lcs)) {  // rare; saves constructing an LCS
    ztCAD_LCS lcs;
    if (lcs.read(element, fault)) setLcs(lcs);
  }
  fault = false;
  setReadOk(attributesOk && showableOk);
  return readOk();
}
