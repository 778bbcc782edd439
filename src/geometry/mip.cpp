#include "mip.h"

#include <iterator>
#include <utility>

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../number/number_text.h"
#include "../number/word_and_numbers.h"
#include "../property/word_numbers.h"
#include "../text/parts.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"

using ztcad::words;

namespace {
/// The first values; a record may have more.
ztcad::WordAndNumbers textOf(const std::vector<double>& values) {
  return {words().mip, values.data(), values.data() + ztCAD_MIP::valueCount};
}
}  // namespace

QString& ztCAD_MIP::toText(QString& out, bool /*debugForm*/) const {
  if (isComplete()) textOf(m_values).appendTo(out);
  return out;
}

bool ztCAD_MIP::fromText(const QString& text) {
  const std::vector<QStringView> parts = ztcad::commaParts(text);
  if (parts.size() != 1 + valueCount || parts[0] != words().mip) return false;
  if (!m_isValid) setValues({});
  bool allConverted = true;
  for (int i = 1; i <= valueCount; ++i) {
    double value = 0;
    allConverted = ztcad::toReal(parts[i], value) && allConverted;
    m_values.push_back(value);
  }
  return allConverted;
}

void ztCAD_MIP::write(ztcad::ElementSink& element) const {
  if (isComplete()) element.plainAttribute(words().mip, textOf(m_values).text());
}

bool ztCAD_MIP::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  const ztcad::AttributeBytes bytes = element.attributeBytes(words().mip);
  if (bytes.state == ztcad::AttributeBytes::Absent) return false;
  double plain[valueCount];
  if (ztcad::parseWordAndNumbers(bytes, words().mip, plain)) {
    m_values.assign(std::begin(plain), std::end(plain));
    m_isValid = true;
    return true;
  }
  const auto text = element.attribute(words().mip);
  if (!text) return false;
  ztCAD_MIP fresh;
  if (!fresh.fromText(*text)) {
    reportAttribute(element, words().mip, ztcad::Rule::bad_mass_inertia, ztcad::Quoted{*text});
    return false;
  }
  ztcad::reviewReals(element, words().mip);
  m_isValid = fresh.m_isValid;
  m_values = fresh.m_values;
  return true;
}

void ztCAD_OptionalMIP::setRecord(const std::optional<ztCAD_MIP>& record) {
  if (record && !record->isComplete()) return;
  m_record = record.value_or(ztCAD_MIP());
}

QString& ztCAD_OptionalMIP::toText(QString& out, bool debugForm) const {
  return m_record.toText(out, debugForm);
}

void ztCAD_OptionalMIP::write(ztcad::ElementSink& element) const { m_record.write(element); }

bool ztCAD_OptionalMIP::read(const ztcad::ElementView& element) {
  ztCAD_MIP fresh;
  bool fault = false;
  if (!fresh.read(element, fault)) return false;
  m_record = std::move(fresh);
  return true;
}
