#include "display.h"

#include <algorithm>
#include <iterator>

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../number/number_text.h"
#include "../number/word_and_numbers.h"
#include "../text/parts.h"
#include "../text/wide_utf8.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "display_values.h"
#include "word_numbers.h"

using ztcad::words;

namespace {
ztcad::WordAndNumbers textOf(const ztCAD_Color& color) {
  const std::uint32_t components[] = {color.red(), color.green(), color.blue()};
  return {words().rgb, std::begin(components), std::end(components)};
}
}  // namespace

QString& ztCAD_Color::toText(QString& out, bool /*debugForm*/) const {
  if (m_isSet) textOf(*this).appendTo(out);
  return out;
}

void ztCAD_Color::write(ztcad::ElementSink& element) const {
  if (m_isSet)
    element.plainAttribute(words().color, textOf(*this).text());
  else
    element.plainAttribute(words().color, {});
}

bool ztcad::readColor(const ElementView& element, std::optional<ztCAD_Color>& color) {
  const AttributeBytes bytes = element.attributeBytes(words().color);
  if (bytes.state == AttributeBytes::Absent) return true;
  std::uint32_t rgb[3];
  if (parseWordAndNumbers(bytes, words().rgb, rgb)) {
    color.emplace(rgb[0], rgb[1], rgb[2]);
    return true;
  }
  const std::optional<QString> text = element.attribute(words().color);
  if (!text || text->isEmpty()) return true;
  const std::vector<QStringView> parts = ztcad::commaParts(*text);
  if (!parts.empty() && parts[0] != words().rgb) {
    reportAttribute(element, words().color, Rule::bad_colour, Quoted{*text});
    return false;
  }
  if (parts.size() != 4) {
    const std::int64_t components = std::max(0, static_cast<int>(parts.size()) - 1);
    reportAttribute(element, words().color, Rule::colour_parts, Quoted{*text}, components);
    return true;
  }
  ztcad::ReviewedNumbers components(element, words().color);
  const std::uint32_t red = components.indexOrZero(parts[1]);
  const std::uint32_t green = components.indexOrZero(parts[2]);
  const std::uint32_t blue = components.indexOrZero(parts[3]);
  components.report();
  color.emplace(red, green, blue);
  return true;
}

bool ztCAD_Color::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  std::optional<ztCAD_Color> color;
  const bool ok = ztcad::readColor(element, color);
  if (color) *this = *color;
  return ok;
}

namespace {

const QString& wordFor(bool visible) { return visible ? words().trueWord : words().falseWord; }

bool visibleFrom(const QString& text) {
  if (text.toLower() == words().falseWord) return false;
  double number = 0;
  return !ztcad::toReal(text, number) || number > 0.0;
}

/// Whether a text says that something is visible or not; any other is read as true.
bool isVisibility(const QString& text) {
  double number = 0;
  const QString word = text.toLower();
  return word == words().falseWord || word == words().trueWord || ztcad::toReal(text, number);
}

}  // namespace

std::optional<ztCAD_Visible> ztcad::readVisible(const ElementView& element) {
  const AttributeBytes bytes = element.attributeBytes(words().visible);
  if (bytes.state == AttributeBytes::Absent) return std::nullopt;
  if (bytes.state == AttributeBytes::Known && equalsAscii(words().trueWord, bytes.ascii))
    return ztCAD_Visible(true);
  const std::optional<QString> text = element.attribute(words().visible);
  if (!text) return std::nullopt;
  if (!isVisibility(*text)) reportAttribute(element, words().visible, Rule::bad_visibility, Quoted{*text});
  return ztCAD_Visible(visibleFrom(*text));
}

QString& ztCAD_Visible::toText(QString& out, bool /*debugForm*/) const {
  if (m_isSet) out += words().visible + QLatin1Char('=') + wordFor(m_value) + wordFor(m_value);
  return out;
}

void ztCAD_Visible::write(ztcad::ElementSink& element) const {
  if (m_isSet) element.attribute(words().visible, wordFor(m_value));
}

bool ztCAD_Visible::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  if (const auto visible = ztcad::readVisible(element)) *this = *visible;
  return true;
}

void ztCAD_gShowable::setColor(const ztCAD_Color& color) {
  m_hasColor = color.isSet();
  m_red = color.red();
  m_green = color.green();
  m_blue = color.blue();
}

void ztCAD_gShowable::setVisible(const ztCAD_Visible& visible) {
  m_hasVisible = visible.isSet();
  m_isVisible = visible.value().value_or(false);
}

QString& ztCAD_gShowable::toText(QString& out, bool debugForm) const {
  out += words().color + QLatin1Char('=');
  color().toText(out, debugForm);
  out += words().visible + QLatin1Char('=');
  return visible().toText(out, debugForm);
}

void ztCAD_gShowable::write(ztcad::ElementSink& element) const {
  color().write(element);
  visible().write(element);
}

bool ztCAD_gShowable::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  std::optional<ztCAD_Color> color;
  const bool colorOk = ztcad::readColor(element, color);
  if (color) setColor(*color);
  if (const auto visible = ztcad::readVisible(element)) setVisible(*visible);
  return colorOk;
}
