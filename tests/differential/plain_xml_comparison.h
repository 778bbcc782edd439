#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>
#include <QStringList>
#include <string_view>

#include "xml/dom_backend.h"
#include "xml/plain_xml.h"
#include "xml/tree_of_xml.h"

/// The content of an element view and of its descendants as text, for comparing two backends.
///
/// A plain view can be read only once, and does not know in advance whether an element contains children or
/// text. `guide`, the same element of a DOM tree, decides which of them is read and which attributes are
/// queried.
class ViewContent {
 public:
  ViewContent(const ztcad::ElementView& view, const QDomElement& guide) { append(view, guide); }

  const QString& text() const { return m_text; }
  /// Answers of the view that contradict each other or the guide's number of children.
  const QStringList& contradictions() const { return m_contradictions; }

 private:
  void append(const ztcad::ElementView& view, const QDomElement& guide) {
    m_text += QLatin1Char('<') + view.tag();
    for (const QString& name : namesToQuery(guide))
      appendAttribute(view, name);
    m_text += QLatin1Char('>');
    QDomElement child = guide.firstChildElement();
    if (child.isNull()) {
      // readers of number lists treat all whitespace alike, so line ends need not be normalised
      QString text = view.text().toString();
      m_text += text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
                    .replace(QLatin1Char('\r'), QLatin1Char('\n'));
    } else {
      view.forEachChild([&](const ztcad::ElementView& childView) {
        append(childView, child);
        child = child.nextSiblingElement();
      });
      if (!child.isNull()) m_contradictions += QLatin1String("children missing in ") + guide.tagName();
    }
    m_text += QLatin1String("</>");
  }

  void appendAttribute(const ztcad::ElementView& view, const QString& name) {
    const auto value = view.attribute(name);
    const auto asText = view.attributeText(name);
    if (view.hasAttribute(name) != value.has_value() || asText.has_value() != value.has_value() ||
        (value && asText->toString() != *value))
      m_contradictions += QLatin1String("attribute ") + name;
    if (value) m_text += QLatin1Char(' ') + name + QLatin1Char('=') + *value;
  }

  /// The attributes of the guide, and common names that it may lack.
  static QStringList namesToQuery(const QDomElement& guide) {
    QStringList names;
    for (const char* const name : {"a", "b", "x", "name", "center", "encoding", "version"})
      names += QLatin1String(name);
    for (int i = 0; i < guide.attributes().count(); ++i)
      names += guide.attributes().item(i).nodeName();
    names.sort();
    names.removeDuplicates();
    return names;
  }

  QString m_text;
  QStringList m_contradictions;
};

/// Result of reading the same bytes with the plain reader and with the DOM reference.
struct PlainXmlComparison {
  bool isPlain = false;     ///< the plain reader accepted the bytes
  QStringList differences;  ///< empty if the two agree
};

/// The plain reader may refuse any bytes. What it accepts must parse into a tree, and both must yield the
/// same elements, attributes and texts.
inline PlainXmlComparison compareWithTree(std::string_view bytes) {
  using ztcad::ElementView;
  PlainXmlComparison result;
  const auto readPlain = [bytes](const auto& visit) {
    return ztcad::readPlainXml(bytes, ztcad::XmlBytes::AsDeclared, visit);
  };
  result.isPlain = readPlain([](const ElementView&) {});
  if (!result.isPlain) return result;

  QDomDocument tree;
  const auto outcome = xml_tree::parseXml(QByteArray(bytes.data(), static_cast<int>(bytes.size())), tree);
  if (!outcome.parsed) {
    result.differences += QLatin1String("not well-formed: ") + outcome.message;
    return result;
  }
  const QDomElement guide = tree.documentElement();
  const ViewContent byTree(ztcad::DomView(guide), guide);
  result.differences += byTree.contradictions();
  QString text;
  QStringList contradictions;
  const bool isStillPlain = readPlain([&](const ElementView& root) {
    const ViewContent byBytes(root, guide);
    text = byBytes.text();
    contradictions = byBytes.contradictions();
  });
  // reading the content may reveal what skipping it does not, for example a comment inside text
  if (!isStillPlain) return result;
  result.differences += contradictions;
  if (text != byTree.text())
    result.differences += QLatin1String("plain: ") + text + QLatin1String("\ntree:  ") + byTree.text();
  return result;
}
