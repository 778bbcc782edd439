#include "document_type_printer.h"

#include "../text/wide_utf8.h"

namespace ztcad {

namespace {

QString quoted(std::string_view literal) {
  const QLatin1Char quote(literal.find('\'') == std::string_view::npos ? '\'' : '"');
  return quote + fromWideUtf8(literal) + quote;
}

}  // namespace

void DocumentTypePrinter::start(std::string_view name, const XmlExternalId& id) {
  QString text = QLatin1String("<!DOCTYPE ") + fromWideUtf8(name);
  if (id.publicId) text += QLatin1String(" PUBLIC ") + quoted(*id.publicId);
  if (id.systemId && !id.publicId) text += QLatin1String(" SYSTEM");
  if (id.systemId) text += QLatin1Char(' ') + quoted(*id.systemId);
  m_start = text;
}

void DocumentTypePrinter::addNotation(std::string_view name, const XmlExternalId& id) {
  const QString key = fromWideUtf8(name);
  QString text = QLatin1String("<!NOTATION ") + key + QLatin1Char(' ');
  if (id.publicId) text += QLatin1String("PUBLIC ") + quoted(*id.publicId);
  if (id.publicId && id.systemId) text += QLatin1Char(' ') + quoted(*id.systemId);
  if (!id.publicId && id.systemId) text += QLatin1String("SYSTEM ") + quoted(*id.systemId);
  m_notations[key] = text + QLatin1Char('>');
}

std::optional<QString> DocumentTypePrinter::text() const {
  if (!m_start) return std::nullopt;
  QString text = *m_start;
  if (!m_notations.empty()) {
    text += QLatin1String(" [\n");
    for (const auto& [name, notation] : m_notations)
      text += notation + QLatin1Char('\n');
    text += QLatin1Char(']');
  }
  return text + QLatin1Char('>');
}

}  // namespace ztcad
