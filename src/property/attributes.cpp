#include "attributes.h"

#include <utility>

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "kept_text.h"

using ztcad::words;

QString& ztCAD_gAttr::toText(QString& out, bool /*debugForm*/) const {
  const QLatin1String is("=");
  const QLatin1String next(", ");
  out += QLatin1Char('(') + words().name + is + m_name + next + words().comment + is + m_comment + next +
         words().inform + is + m_inform + QLatin1Char(')');
  return out;
}

void ztCAD_gAttr::write(ztcad::ElementSink& element) const {
  element.attribute(words().comment, m_comment);
  element.attribute(words().name, m_name);
  element.attribute(words().inform, m_inform);
}

bool ztCAD_gAttr::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  auto name = element.attribute(words().name);
  setReadOk(name.has_value());
  reviewName(element, name);
  m_name = std::move(name).value_or(QString());
  m_comment = ztcad::keptText(element, words().comment);
  m_inform = ztcad::keptText(element, words().inform);
  return readOk();
}

std::optional<ztCAD_ShortText> ztcad::readName(const ElementView& element) {
  const AttributeBytes bytes = element.attributeBytes(words().name);
  if (bytes.state == AttributeBytes::Known) return ztCAD_ShortText::fromAscii(bytes.ascii);
  const auto name = element.attribute(words().name);
  reviewName(element, name);
  return name ? std::optional(ztCAD_ShortText(*name)) : std::nullopt;
}

ztCAD_ShortText ztcad::readKeptText(const ElementView& element, const QString& attribute) {
  const AttributeBytes bytes = element.attributeBytes(attribute);
  if (bytes.state == AttributeBytes::Absent) return {};
  if (bytes.state == AttributeBytes::Known) return ztCAD_ShortText::fromAscii(bytes.ascii);
  return ztCAD_ShortText(keptText(element, attribute));
}

bool ztCAD_gAttr::readAndCheck(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  return element.hasAttribute(words().name);
}
