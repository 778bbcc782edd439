#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>
#include <string>

#include "text/wide_utf8.h"
#include "xml/document_type_printer.h"
#include "xml/reference.h"
#include "xml/xml_print.h"
#include "xml/xml_reader.h"
#include "xml/xml_text.h"

namespace xml_tree {

/// Builds the tree of a text from the reader's events, so that it can be compared with a tree built by Qt.
class TreeBuilder {
 public:
  explicit TreeBuilder(std::string_view text) : m_reader(text) {
    for (ztcad::XmlEvent event = m_reader.next(); event != ztcad::XmlEvent::End; event = m_reader.next())
      add(event);
    addDocumentType();
  }

  QDomDocument tree() const { return m_tree; }
  ztcad::ParseOutcome outcome() const { return m_reader.outcome(); }

 private:
  void add(ztcad::XmlEvent event) {
    using ztcad::XmlEvent;
    switch (event) {
      case XmlEvent::DocumentType:
        m_type.start(m_reader.name(), m_reader.externalId());
        break;
      case XmlEvent::Notation:
        m_type.addNotation(m_reader.name(), m_reader.externalId());
        break;
      case XmlEvent::Instruction:
        append(m_tree.createProcessingInstruction(name(), text()));
        break;
      case XmlEvent::Comment:
        append(m_tree.createComment(text()));
        break;
      case XmlEvent::StartElement:
        startElement();
        break;
      case XmlEvent::EndElement:
        m_parent = m_parent.parentNode();
        break;
      case XmlEvent::Text:
        append(m_tree.createTextNode(ztcad::withoutReferences(m_reader.text())));
        break;
      case XmlEvent::Cdata:
        append(m_tree.createCDATASection(text()));
        break;
      case XmlEvent::EntityReference:
        append(m_tree.createEntityReference(name()));
        break;
      case XmlEvent::End:
        break;
    }
  }

  void startElement() {
    QDomElement element = m_tree.createElement(name());
    append(element);
    m_parent = element;
    for (std::size_t i = m_reader.firstAttribute(); i < m_reader.attributes().size(); ++i) {
      const ztcad::XmlAttribute& attribute = m_reader.attributes()[i];
      element.setAttribute(ztcad::fromWideUtf8(attribute.name), ztcad::withoutReferences(attribute.value));
    }
  }

  void append(const QDomNode& node) { (m_parent.isNull() ? QDomNode(m_tree) : m_parent).appendChild(node); }

  /// Notations cannot be created, so Qt reads the type; the nodes move to its tree.
  void addDocumentType() {
    const auto type = m_type.text();
    if (!type) return;
    QDomDocument typed;
    typed.setContent(*type + "<r/>");
    typed.removeChild(typed.documentElement());
    while (!m_tree.firstChild().isNull())
      typed.appendChild(typed.importNode(m_tree.firstChild(), true)), m_tree.removeChild(m_tree.firstChild());
    m_tree = typed;
  }

  QString name() const { return ztcad::fromWideUtf8(m_reader.name()); }
  QString text() const { return ztcad::fromWideUtf8(m_reader.text()); }

  ztcad::XmlReader m_reader;
  QDomDocument m_tree;
  QDomNode m_parent;  // the open element; null outside the root
  ztcad::DocumentTypePrinter m_type;
};

inline ztcad::ParseOutcome parseXml(std::string_view bytes, ztcad::XmlBytes kind, QDomDocument& tree) {
  tree = QDomDocument();
  const ztcad::XmlText text(bytes, kind);
  if (text.refusal()) return *text.refusal();
  const TreeBuilder builder(text.characters());
  if (!builder.outcome().isRefused) tree = builder.tree();
  return builder.outcome();
}

inline std::string_view view(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// What `QDomDocument::setContent` would do: parses bytes as they declare, or a text whatever it declares.
/// @{
inline ztcad::ParseOutcome parseXml(const QByteArray& bytes, QDomDocument& tree) {
  return parseXml(view(bytes), ztcad::XmlBytes::AsDeclared, tree);
}
inline ztcad::ParseOutcome parseXml(const QString& text, QDomDocument& tree) {
  return parseXml(view(text.toUtf8()), ztcad::XmlBytes::Utf8, tree);
}
/// @}

/// @param text valid UTF-8
inline std::string printXml(std::string_view text, int indent) {
  return ztcad::printXml(ztcad::XmlText(text, ztcad::XmlBytes::Utf8), indent);
}

/// A tree that the library wrote to, printed in the library's form.
inline std::string printTree(const QDomDocument& tree, int indent) {
  const QByteArray text = tree.toString(-1).toUtf8();
  return printXml(view(text), indent);
}

}  // namespace xml_tree
