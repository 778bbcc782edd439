#include "coordinate_system.h"

#include <algorithm>
#include <iterator>

#include "../core/vocabulary.h"
#include "../number/number_text.h"
#include "../text/parts.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "equal_systems.h"

using ztcad::words;

const QString& ztCAD_LCS::attributeName() const { return m_isLocal ? words().lcs : words().mcs; }

QString& ztCAD_LCS::toText(QString& out, bool /*debugForm*/) const {
  if (m_values.empty()) return out;
  out += words().cs;
  for (const double value : m_values) {
    out += QLatin1String(", ");
    ztcad::appendReal(out, value);
  }
  return out;
}

void ztCAD_LCS::write(ztcad::ElementSink& element) const {
  QString text;
  element.attribute(attributeName(), toText(text, false));
}

bool ztCAD_LCS::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  const QString text = element.attribute(attributeName()).value_or(QString());
  if (text.isEmpty()) return false;
  const std::vector<QStringView> parts = ztcad::commaParts(text);
  if (parts.size() != 1 + valueCount || parts[0] != words().cs) return false;
  m_values.reserve(m_values.size() + valueCount);
  std::transform(parts.begin() + 1, parts.end(), std::back_inserter(m_values), ztcad::realOrZero);
  return true;
}

bool ztcad::isEqual(const ztCAD_LCS& a, const ztCAD_LCS& b) {
  const auto close = [](double x, double y) {
    const double difference = x - y;
    return -ztCAD_LCS::tolerance < difference && difference < ztCAD_LCS::tolerance;
  };
  return std::equal(a.values().begin(), a.values().end(), b.values().begin(), b.values().end(), close);
}
