#include "dom_backend.h"

namespace ztcad {

DomSink::DomSink(const QDomElement& element, const QDomDocument& document)
    : m_document(document), m_path{element} {}

void DomSink::attribute(const QString& name, const QString& value) {
  m_path.back().setAttribute(name, value);
}

void DomSink::plainAttribute(const QString& name, std::string_view ascii) {
  attribute(name, QLatin1String(ascii.data(), static_cast<int>(ascii.size())));
}

void DomSink::text(std::string_view ascii) {
  m_text += QLatin1String(ascii.data(), static_cast<int>(ascii.size()));
}

void DomSink::open(const QString& tag) {
  flushText();
  m_path.push_back(m_document.createElement(tag));
}

void DomSink::close() {
  flushText();
  const QDomElement closed = m_path.back();
  m_path.pop_back();
  m_path.back().appendChild(closed);
}

void DomSink::flushText() {
  if (m_text.isEmpty()) return;
  m_path.back().appendChild(m_document.createTextNode(m_text));
  m_text.clear();
}

std::optional<QString> DomView::attribute(const QString& name) const {
  if (!m_element.hasAttribute(name)) return std::nullopt;
  return m_element.attribute(name);
}

ElementText DomView::text() const { return ElementText(m_element.text()); }

void DomView::forEachChild(const ChildVisitor& visit) const {
  for (QDomElement child = m_element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
    visit(DomView(child));
}

}  // namespace ztcad
