#pragma once

#include <gtest/gtest.h>
#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QStringList>
#include <string>
#include <utility>

#include "xml/dom_backend.h"

/// Converts elements and property classes to and from XML text, which keeps most tests to two lines. All
/// texts are UTF-8.

inline QString fromUtf8(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// The root element of an XML text, with the document that owns it. Text that does not parse fails the test.
struct ParsedXml {
  explicit ParsedXml(const std::string& xml) {
    QString message;
    EXPECT_TRUE(document.setContent(fromUtf8(xml), &message)) << xml << "\n" << message.toStdString();
    root = document.documentElement();
  }
  QDomDocument document;
  QDomElement root;
};

namespace node_text {

inline QString openingOf(const QDomElement& element) {
  QStringList attributes;
  const QDomNamedNodeMap map = element.attributes();
  for (int i = 0; i < map.count(); ++i) {
    const QDomAttr attribute = map.item(i).toAttr();
    attributes += ' ' + attribute.name() + "=\"" + attribute.value().toHtmlEscaped() + '"';
  }
  attributes.sort();  // the order in a DOM tree is unspecified
  return '<' + element.tagName() + attributes.join(QString());
}

inline QString textOf(const QDomNode& node) {
  if (!node.isElement()) return node.nodeValue().toHtmlEscaped();
  const QDomElement element = node.toElement();
  if (!element.hasChildNodes()) return openingOf(element) + "/>";
  QString text = openingOf(element) + '>';
  for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling())
    text += textOf(child);
  return text + "</" + element.tagName() + '>';
}

// Vertex and facet lists are not nodes: they have writeElement and readElement, which their owner calls.
template <typename T>
auto writeTo(const T& list, QDomElement& parent, QDomDocument& document, int)
    -> decltype(list.writeElement(std::declval<ztcad::ElementSink&>())) {
  ztcad::DomSink sink(parent, document);
  list.writeElement(sink);
}
template <typename T>
void writeTo(const T& node, QDomElement& parent, QDomDocument& document, long) {
  EXPECT_EQ(&node.writeXml(parent, document), &parent);
}

template <typename T>
auto readFrom(T& list, const QDomElement& element, bool&, int)
    -> decltype(list.readElement(ztcad::DomView(element))) {
  return list.readElement(ztcad::DomView(element));
}
template <typename T>
bool readFrom(T& node, const QDomElement& element, bool& fault, long) {
  return node.readXml(element, fault);
}

}  // namespace node_text

/// What the object writes: its own element, or for a property class the element <e> with the attributes it
/// set. Attributes are sorted by name.
template <typename T>
std::string written(const T& object) {
  QDomDocument document;
  QDomElement parent = document.createElement("e");
  node_text::writeTo(object, parent, document, 0);
  const QDomElement child = parent.firstChildElement();
  return node_text::textOf(child.isNull() ? parent : child).toStdString();
}

/// Reads the object from the element `xml` and returns the result of the read.
template <typename T>
bool read(T& object, const std::string& xml) {
  bool fault = false;
  return node_text::readFrom(object, ParsedXml(xml).root, fault, 0);
}

/// The fault flag after the object was read from the element `xml`; `before` is the flag's value on entry.
template <typename T>
bool faultAfterReading(T& object, const std::string& xml, bool before) {
  object.readXml(ParsedXml(xml).root, before);
  return before;
}

/// A new object read from the element `xml`, whether or not the read succeeded.
template <typename T>
T readFrom(const std::string& xml) {
  T object;
  read(object, xml);
  return object;
}

/// What a new object writes after it was read from the element `xml`.
template <typename T>
std::string roundTrip(const std::string& xml) {
  return written(readFrom<T>(xml));
}

/// The text that toText appends. Checks that the earlier content of the output is kept.
template <typename T>
std::string text(const T& object, bool debugForm) {
  QString out("before ");
  EXPECT_EQ(&object.toText(out, debugForm), &out);
  EXPECT_TRUE(out.startsWith("before "));
  return out.mid(7).toStdString();
}

/// The text of an object that has one form only; checks that the debug form equals the storage form.
template <typename T>
std::string onlyText(const T& object) {
  EXPECT_EQ(text(object, false), text(object, true));
  return text(object, false);
}
