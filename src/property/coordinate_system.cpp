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
#include "equal_systems.h"
#include "word_numbers.h"

using ztcad::words;

const QString& ztCAD_LCS::attributeName() const { return m_isLocal ? words().lcs : words().mcs; }

namespace {
ztcad::WordAndNumbers textOf(const std::vector<double>& values) {
  return {words().cs, values.data(), values.data() + values.size()};
}
}  // namespace

QString& ztCAD_LCS::toText(QString& out, bool /*debugForm*/) const {
  if (!m_values.empty()) textOf(m_values).appendTo(out);
  return out;
}

void ztCAD_LCS::write(ztcad::ElementSink& element) const {
  if (m_values.empty())
    element.plainAttribute(attributeName(), {});
  else
    element.plainAttribute(attributeName(), textOf(m_values).text());
}

bool ztCAD_LCS::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  const ztcad::AttributeBytes bytes = element.attributeBytes(attributeName());
  double plain[valueCount];
  if (ztcad::parseWordAndNumbers(bytes, words().cs, plain)) {
    m_values.insert(m_values.end(), std::begin(plain), std::end(plain));
    return true;
  }
  const QString text = element.attribute(attributeName()).value_or(QString());
  if (text.isEmpty()) return false;
  const std::vector<QStringView> parts = ztcad::commaParts(text);
  if (parts.size() != 1 + valueCount || parts[0] != words().cs) {
    reportAttribute(element, attributeName(), ztcad::Rule::system_parts, ztcad::Quoted{text});
    return false;
  }
  m_values.reserve(m_values.size() + valueCount);
  ztcad::ReviewedNumbers numbers(element, attributeName());
  std::transform(parts.begin() + 1, parts.end(), std::back_inserter(m_values),
                 [&numbers](QStringView part) { return numbers.realOrZero(part); });
  numbers.report();
  ztcad::reviewReals(element, attributeName());
  return true;
}

bool ztcad::isEqual(const ztCAD_LCS& a, const ztCAD_LCS& b) {
  const auto close = [](double x, double y) {
    const double difference = x - y;
    return -ztCAD_LCS::tolerance < difference && difference < ztCAD_LCS::tolerance;
  };
  return std::equal(a.values().begin(), a.values().end(), b.values().begin(), b.values().end(), close);
}
