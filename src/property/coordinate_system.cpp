#include "coordinate_system.h"

#include <algorithm>
#include <iterator>

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../number/number_text.h"
#include "../number/word_and_numbers.h"
#include "../text/parts.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "system_values.h"
#include "word_numbers.h"

using ztcad::words;

const QString& ztCAD_LCS::attributeName() const { return m_isLocal ? words().lcs : words().mcs; }

QString& ztCAD_LCS::toText(QString& out, bool /*debugForm*/) const {
  const double* const begin = m_values.data();
  if (!m_values.empty()) ztcad::WordAndNumbers(words().cs, begin, begin + m_values.size()).appendTo(out);
  return out;
}

void ztCAD_LCS::write(ztcad::ElementSink& element) const {
  ztcad::writeSystem(element, attributeName(), m_values.data(), m_values.data() + m_values.size());
}

bool ztCAD_LCS::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  double values[valueCount];
  if (!ztcad::readSystem(element, attributeName(), values)) return false;
  m_values.insert(m_values.end(), std::begin(values), std::end(values));
  return true;
}

void ztcad::writeSystem(ElementSink& element, const QString& attribute, const double* begin,
                        const double* end) {
  if (begin == end)
    element.plainAttribute(attribute, {});
  else
    element.plainAttribute(attribute, WordAndNumbers(words().cs, begin, end).text());
}

bool ztcad::readSystem(const ElementView& element, const QString& attribute,
                       double (&values)[ztCAD_LCS::valueCount]) {
  if (parseWordAndNumbers(element.attributeBytes(attribute), words().cs, values)) return true;
  const QString text = element.attribute(attribute).value_or(QString());
  if (text.isEmpty()) return false;
  const std::vector<QStringView> parts = commaParts(text);
  if (parts.size() != 1 + ztCAD_LCS::valueCount || parts[0] != words().cs) {
    reportAttribute(element, attribute, Rule::system_parts, Quoted{text});
    return false;
  }
  ReviewedNumbers numbers(element, attribute);
  std::transform(parts.begin() + 1, parts.end(), values,
                 [&numbers](QStringView part) { return numbers.realOrZero(part); });
  numbers.report();
  reviewReals(element, attribute);
  return true;
}

bool ztcad::isEqual(const ztCAD_LCS& a, const ztCAD_LCS& b) {
  const auto close = [](double x, double y) {
    const double difference = x - y;
    return -ztCAD_LCS::tolerance < difference && difference < ztCAD_LCS::tolerance;
  };
  return std::equal(a.values().begin(), a.values().end(), b.values().begin(), b.values().end(), close);
}
