#include "header.h"

#include "../../number/number_text.h"
#include "../../xml/element_sink.h"
#include "../../xml/element_view.h"
#include "../review.h"
#include "../vocabulary.h"

using ztcad::Rule;
using ztcad::words;

namespace {
using Version = std::optional<std::uint32_t>;

void writeText(ztcad::ElementSink& element, const QString& name, const std::optional<QString>& value) {
  if (value) element.attribute(name, *value);
}

void writeVersion(ztcad::ElementSink& element, const QString& name, const Version& version) {
  if (!version) return;
  QString text;
  ztcad::appendIndex(text, *version);
  element.attribute(name, text);
}

void readVersion(const ztcad::ElementView& element, const QString& name, Version& version) {
  std::uint32_t number = 0;
  const auto text = element.attribute(name);
  if (!text) return report(element, Rule::missing_version, name);
  if (ztcad::toIndex(*text, number))
    version = number;
  else
    reportAttribute(element, name, Rule::bad_version, name, ztcad::Quoted{*text});
}

QLatin1String presence(const Version& version) { return QLatin1String(version ? "1" : "0"); }
}  // namespace

QString ztCAD_HeaderNode::toText() const {
  const QLatin1String next(" , ");
  return QLatin1String("Header( ") + words().inform + QLatin1Char('=') + m_inform.value_or(words().noValue) +
         next + words().majorVersion + QLatin1Char('=') + presence(m_majorVersion) + next +
         words().minorVersion + QLatin1Char('=') + presence(m_minorVersion) + QLatin1String(" )") +
         m_state.toText();
}

void ztCAD_HeaderNode::write(ztcad::ElementSink& parent) const {
  parent.element(words().header, [this](ztcad::ElementSink& element) {
    writeVersion(element, words().majorVersion, m_majorVersion);
    writeVersion(element, words().minorVersion, m_minorVersion);
    writeText(element, words().producerVersion, m_producerVersion);
    writeText(element, words().producerName, m_producerName);
    writeText(element, words().producerPlatform, m_producerPlatform);
    writeText(element, words().inform, m_inform);
  });
}

bool ztCAD_HeaderNode::read(const ztcad::ElementView& element, bool& fault) {
  fault = false;
  readVersion(element, words().majorVersion, m_majorVersion);
  readVersion(element, words().minorVersion, m_minorVersion);
  if (auto inform = element.attribute(words().inform)) {
    reviewText(element, words().inform, *inform);
    m_inform = std::move(inform);
  }
  for (const QString& name : {words().producerVersion, words().producerName, words().producerPlatform})
    if (reviewOf(element) && element.hasAttribute(name))
      reportAttribute(element, name, Rule::producer_not_kept, name);
  constexpr std::uint32_t error = 3;
  if (!m_majorVersion || !m_minorVersion) m_state = {true, error};
  return true;
}
