#include "display.h"

#include <QVector>

#include "../core/element_sink.h"
#include "../core/element_view.h"
#include "../core/number_text.h"
#include "../core/vocabulary.h"

using ztcad::words;

QString& ztCAD_Color::toText(QString& out, bool /*debugForm*/) const {
  if (!m_isSet) return out;
  out += words().rgb;
  for (const std::uint32_t component : {m_red, m_green, m_blue}) {
    out += QLatin1String(", ");
    ztcad::appendIndex(out, component);
  }
  return out;
}

void ztCAD_Color::write(ztcad::ElementSink& element) const {
  QString text;
  element.attribute(words().color, toText(text, false));
}

bool ztCAD_Color::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  const QString text = element.attribute(words().color).value_or(QString());
  if (text.isEmpty()) return true;
  const QVector<QStringRef> parts = text.splitRef(QLatin1Char(','), Qt::SkipEmptyParts);
  if (parts.isEmpty()) return true;
  if (parts[0] != words().rgb) return false;
  if (parts.size() != 4) return true;
  set(ztcad::indexOrZero(parts[1]), ztcad::indexOrZero(parts[2]), ztcad::indexOrZero(parts[3]));
  return true;
}

namespace {
const QString& wordFor(bool visible) { return visible ? words().trueWord : words().falseWord; }

bool visibleFrom(const QString& text) {
  if (text.toLower() == words().falseWord) return false;
  double number = 0;
  return !ztcad::toReal(text, number) || number > 0.0;
}
}  // namespace

QString& ztCAD_Visible::toText(QString& out, bool /*debugForm*/) const {
  if (m_isSet) out += words().visible + QLatin1Char('=') + wordFor(m_value) + wordFor(m_value);
  return out;
}

void ztCAD_Visible::write(ztcad::ElementSink& element) const {
  if (m_isSet) element.attribute(words().visible, wordFor(m_value));
}

bool ztCAD_Visible::read(const ztcad::ElementView& element, bool& fault) {
  const auto text = element.attribute(words().visible);
  if (text) setValue(visibleFrom(*text));
  fault = false;
  return true;
}

QString& ztCAD_gShowable::toText(QString& out, bool debugForm) const {
  out += words().color + QLatin1Char('=');
  m_color.toText(out, debugForm);
  out += words().visible + QLatin1Char('=');
  return m_visible.toText(out, debugForm);
}

void ztCAD_gShowable::write(ztcad::ElementSink& element) const {
  m_color.write(element);
  m_visible.write(element);
}

bool ztCAD_gShowable::read(const ztcad::ElementView& element, bool& fault) {
  bool colorFault = false;
  bool visibleFault = false;
  const bool colorOk = m_color.read(element, colorFault);
  const bool visibleOk = m_visible.read(element, visibleFault);
  fault = colorFault && visibleFault;
  return colorOk && visibleOk;
}
