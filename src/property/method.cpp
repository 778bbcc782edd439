#include "method.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"

using ztcad::words;

QString& ztCAD_gMethod::toText(QString& out, bool /*debugForm*/) const { return out += m_method; }

void ztCAD_gMethod::write(ztcad::ElementSink& element) const { element.attribute(words().method, m_method); }

bool ztCAD_gMethod::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  auto method = element.attribute(words().method);
  if (method) {
    ztcad::reviewText(element, words().method, *method);
    m_method.swap(*method);
  }
  return method.has_value();
}
