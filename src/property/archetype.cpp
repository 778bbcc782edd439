#include "archetype.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"

using ztcad::words;

QString& ztCAD_gArche::toText(QString& out, bool /*debugForm*/) const {
  const QLatin1String is("=");
  out += words().arche + QLatin1Char('(') + words().templateName + is + m_templateName + QLatin1String(", ") +
         words().file + is + m_file + QLatin1Char(')');
  return out;
}

void ztCAD_gArche::write(ztcad::ElementSink& element) const {
  element.attribute(words().templateName, m_templateName);
  element.attribute(words().file, m_file);
}

bool ztCAD_gArche::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  m_templateName = ztcad::keptText(element, words().templateName);
  m_file = ztcad::keptText(element, words().file);
  return true;
}
