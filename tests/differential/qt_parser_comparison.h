#pragma once

#include <gtest/gtest.h>
#include <QDomDocument>
#include <string>

#include "plain_xml_comparison.h"
#include "recorded_answers.h"
#include "xml/described_xml.h"
#include "xml/dom_backend.h"
#include "xml/tree_of_xml.h"
#include "xml/xml_view.h"

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QBuffer>
#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>
#endif

/// @file
/// Comparison of the library's XML reader with the parser of Qt 5.15. Where the library deliberately differs
/// from Qt (characters beyond U+FFFF, hostile input), a comment states how the comparison allows for it.

struct ParseCounts {
  int accepted = 0;
  int illFormed = 0;
  int refused = 0;

  void add(const ztcad::ParseOutcome& outcome) {
    ++(outcome.parsed ? accepted : outcome.isRefused ? refused : illFormed);
  }
};

/// The library's answer to a text, for records: what became of it, position, sum of the content, message.
inline std::string answerOf(const xml_tree::DescribedXml& described) {
  const ztcad::ParseOutcome& outcome = described.outcome();
  const std::string result = outcome.parsed ? "well-formed" : outcome.isRefused ? "refused" : "ill-formed";
  return result + ' ' + std::to_string(outcome.line) + ':' + std::to_string(outcome.column) + ' ' +
         sumOf(described.content()) + ' ' + outcome.message.toStdString();
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

/// The names of encodings, and some of their tables, are those of Qt with ICU.
inline bool qtHasIcu() { return QTextCodec::availableCodecs().contains("ibm-912"); }

inline void describe(const QDomNode& node, QString& out) {
  out += QString("(%1 %2 %3 ").arg(node.nodeType()).arg(node.nodeName(), node.nodeValue());
  QStringList attributes;
  for (int i = 0; i < node.attributes().count(); ++i)
    attributes += node.attributes().item(i).nodeName() + '=' + node.attributes().item(i).nodeValue();
  attributes.sort();
  out += attributes.join(' ');
  for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
    describe(child, out);
  out += ')';
}

/// Text form of a tree for comparing two trees; attributes are sorted by name.
inline std::string described(const QDomDocument& tree) {
  QString result = tree.doctype().name() + tree.doctype().publicId() + tree.doctype().systemId();
  for (QDomNode node = tree.firstChild(); !node.isNull(); node = node.nextSibling())
    describe(node, result);
  return result.toStdString();
}

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// Records whether Qt's SAX reader encounters entity declarations or too deep nesting in a text.
class ForbiddenContent final : public QXmlDefaultHandler {
 public:
  explicit ForbiddenContent(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    QXmlInputSource source(&buffer);
    QXmlSimpleReader reader;
    reader.setFeature("http://xml.org/sax/features/namespaces", false);
    reader.setContentHandler(this);
    reader.setDeclHandler(this);
    reader.setDTDHandler(this);
    reader.parse(&source);
  }

  bool declaresEntities = false;
  bool isTooDeep = false;

  bool startElement(const QString&, const QString&, const QString&, const QXmlAttributes&) override {
    isTooDeep = isTooDeep || ++m_depth > ztcad::maximalDepth;
    return !isTooDeep;
  }
  bool endElement(const QString&, const QString&, const QString&) override {
    --m_depth;
    return true;
  }
  bool internalEntityDecl(const QString&, const QString&) override { return !(declaresEntities = true); }
  bool externalEntityDecl(const QString&, const QString&, const QString&) override {
    return !(declaresEntities = true);
  }
  bool unparsedEntityDecl(const QString&, const QString&, const QString&, const QString&) override {
    return !(declaresEntities = true);
  }

 private:
  int m_depth = 0;
};

QT_WARNING_POP

inline bool mayHoldANul(const QByteArray& bytes) { return bytes.contains('\0'); }

/// Whether there may be a character reference that Qt truncates; the trees then differ on purpose.
inline bool mayHoldALongReference(const QByteArray& bytes) {
  static const QRegularExpression reference("&#(x[0-9a-fA-F]{5,}|[0-9]{5,});");
  return QString::fromLatin1(bytes).remove(QChar(0)).contains(reference);
}

/// Whether the bytes contain 98 hex, which windows-1251 leaves undefined, and Qt, built without ICU, does not
/// read it.
inline bool holdsAnUnreadableByte(const QByteArray& bytes) {
  return bytes.contains('\x98') && QTextCodec::codecForName("windows-1251")->toUnicode("\x98") != QChar(0x98);
}

/// What the views of a text show, of an ill-formed one up to the error.
inline std::string viewed(const QByteArray& bytes, const QDomElement& guide) {
  std::string content;
  const ztcad::XmlText xml(xml_tree::view(bytes), ztcad::XmlBytes::AsDeclared);
  ztcad::readXml(xml, [&](const ztcad::ElementView& root) {
    const ViewContent view(root, guide);
    content = view.text().toStdString() + view.contradictions().join(' ').toStdString();
  });
  return content;
}

inline std::string viewedInTree(const QDomElement& root) {
  if (root.isNull()) return {};
  return ViewContent(ztcad::DomView(root), root).text().toStdString();
}

/// Whether the text declares an encoding by a name that only Qt with ICU knows ("windows01251"), and this Qt is
/// without.
inline bool declaresAnEncodingOfIcu(const QByteArray& bytes) {
  static const QRegularExpression declared(QStringLiteral("^<\\?xml[^>]*encoding\\s*=\\s*['\"]([^'\"]*)"));
  const QRegularExpressionMatch match = declared.match(QString::fromLatin1(bytes));
  return !qtHasIcu() && match.hasMatch() && !QTextCodec::codecForName(match.captured(1).toLatin1());
}

/// Compares acceptance, message, position, tree and views of a text with those of Qt's parser.
inline void compareWithQt(const QByteArray& bytes) {
  const ForbiddenContent forbidden(bytes);
  QDomDocument tree;
  const ztcad::ParseOutcome outcome = xml_tree::parseXml(bytes, tree);
  const std::string shown = "bytes: " + bytes.toPercentEncoding(" <>&;'\"=!?/[]").toStdString();
  if (forbidden.declaresEntities || forbidden.isTooDeep) {
    ASSERT_FALSE(outcome.parsed) << shown;
    ASSERT_TRUE(tree.firstChild().isNull()) << shown;
    return;
  }
  const bool mayBeRefused = mayHoldANul(bytes) || bytes.contains("<!ENTITY");
  QDomDocument byQt;
  QString message;
  int line = 0;
  int column = 0;
  const bool parsedByQt = byQt.setContent(bytes, &message, &line, &column);
  if (mayBeRefused && outcome.message == "NUL character") return;
  if (declaresAnEncodingOfIcu(bytes)) return;
  if (outcome.isRefused && (outcome.message == "parentheses nested too deep" ||
                            outcome.message.startsWith("encoding not supported: ")))
    return;
  if (mayBeRefused && outcome.message == "entity declaration") {
    ASSERT_FALSE(parsedByQt) << "Qt's reader encountered no entity declaration in " << shown;
    return;
  }
  ASSERT_EQ(outcome.parsed, parsedByQt) << shown;
  ASSERT_EQ(outcome.message.toStdString(), message.toStdString()) << shown;
  ASSERT_EQ(outcome.line, line) << shown;
  ASSERT_EQ(outcome.column, column) << shown;
  if (mayHoldALongReference(bytes) || holdsAnUnreadableByte(bytes)) return;
  ASSERT_EQ(described(tree), described(byQt)) << shown;
  ASSERT_EQ(viewed(bytes, byQt.documentElement()), viewedInTree(byQt.documentElement())) << shown;
}

#else

/// Nobody can be asked: records are compared instead.
inline void compareWithQt(const QByteArray& /*bytes*/) {}
inline bool qtHasIcu() { return false; }

#endif

/// Compares the library's answer with that of Qt, if Qt can be asked, and returns it.
inline std::string comparedAnswer(const QByteArray& bytes, ParseCounts& counts, bool qtCanAnswer = true) {
  if (qtCanAnswer) compareWithQt(bytes);
  const xml_tree::DescribedXml described(xml_tree::view(bytes), ztcad::XmlBytes::AsDeclared);
  counts.add(described.outcome());
  return answerOf(described);
}
