#include "xml_print.h"

#include <algorithm>
#include <QChar>
#include <QRegExp>
#include <QStringList>
#include <QTextCodec>
#include <QTextStream>

#include "../text/windows1251.h"
#include "xml_writer.h"

namespace ztcad {

namespace {

class StringOutput final : public ByteOutput {
 public:
  explicit StringOutput(std::string& text) : m_text(text) {}
  void write(std::string_view bytes) override { m_text += bytes; }

 private:
  std::string& m_text;
};

void appendUtf8(char32_t character, std::string& out) {
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | ((character >> shift) & 0x3f)); };
  if (character < 0x80) {
    out += static_cast<char>(character);
  } else if (character < 0x800) {
    out += static_cast<char>(0xc0 | (character >> 6));
    out += tail(0);
  } else if (character < 0x10000) {
    out += static_cast<char>(0xe0 | (character >> 12));
    (out += tail(6)) += tail(0);
  } else {
    out += static_cast<char>(0xf0 | (character >> 18));
    ((out += tail(12)) += tail(6)) += tail(0);
  }
}

bool isXmlDeclaration(const QDomNode& node) {
  return node.isProcessingInstruction() && node.nodeName() == QLatin1String("xml");
}

/// The name of the encoding that the tree declares, as QDom finds it; empty without one.
QString declaredEncoding(const QDomDocument& tree) {
  if (!isXmlDeclaration(tree.firstChild())) return {};
  QRegExp encoding(QLatin1String("encoding\\s*=\\s*((\"([^\"]*)\")|('([^']*)'))"));
  encoding.indexIn(tree.firstChild().nodeValue());
  return encoding.cap(3).isEmpty() ? encoding.cap(5) : encoding.cap(3);
}

/// Writes UTF-8, but only characters that the named encoding knows; an unknown encoding knows all.
class DeclaredEncoder final : public CharacterEncoder {
 public:
  explicit DeclaredEncoder(const QString& name)
      : m_isWindows1251(name.compare(QLatin1String("windows-1251"), Qt::CaseInsensitive) == 0),
        m_codec(m_isWindows1251 ? nullptr : QTextCodec::codecForName(name.toLatin1())) {}

  bool append(char32_t character, std::string& out) const override {
    if (!knows(character)) return false;
    appendUtf8(character, out);
    return true;
  }
  void appendBare(char32_t character, std::string& out) const override { appendUtf8(character, out); }

 private:
  bool knows(char32_t character) const {
    if (m_isWindows1251) return windows1251FromUnicode(character).has_value();
    if (!m_codec) return true;
    if (!QChar::requiresSurrogates(character))
      return m_codec->canEncode(QChar(static_cast<ushort>(character)));
    const QChar pair[] = {QChar(QChar::highSurrogate(character)), QChar(QChar::lowSurrogate(character))};
    return m_codec->canEncode(QString(pair, 2));
  }

  const bool m_isWindows1251;
  const QTextCodec* const m_codec;  // owned by Qt; null: every character is known
};

/// The text that Qt writes for a node itself.
QString textByQt(const QDomNode& node) {
  QString text;
  QTextStream stream(&text);
  node.save(stream, 0);
  stream.flush();
  return text;
}

/// Cuts the text behind each `[` and `>` that stands outside quotes. What is left behind the last one is
/// dropped.
QStringList cutBehindBrackets(const QString& text) {
  QStringList pieces;
  QChar quote;
  int start = 0;
  for (int at = 0; at < text.size(); ++at) {
    const QChar here = text.at(at);
    if (!quote.isNull()) {
      if (here == quote) quote = QChar();
    } else if (here == QLatin1Char('"') || here == QLatin1Char('\'')) {
      quote = here;
    } else if (here == QLatin1Char('[') || here == QLatin1Char('>')) {
      pieces += text.mid(start, at + 1 - start);
      start = at + 1;
    }
  }
  return pieces;
}

/// Qt writes the notations in no order; between the opening and the end they stand in that of their names.
void printDocumentType(const QDomDocumentType& type, XmlWriter& writer) {
  if (type.name().isEmpty()) return;
  QStringList pieces = cutBehindBrackets(textByQt(type));
  if (pieces.size() > 2) std::sort(pieces.begin() + 1, pieces.end() - 1);
  writer.documentType(pieces.join(QString()));
}

/// The names of an element's attributes, taken from the text that Qt writes for its start tag.
QStringList namesInStartTag(const QDomElement& element) {
  const QString tag = textByQt(element.cloneNode(false));
  QStringList names;
  for (int at = tag.indexOf(QLatin1Char(' ')); at >= 0 && tag.at(at) == QLatin1Char(' ');) {
    const int nameEnd = tag.indexOf(QLatin1String("=\""), at);
    names += tag.mid(at + 1, nameEnd - at - 1);
    at = tag.indexOf(QLatin1Char('"'), nameEnd + 2) + 1;
  }
  names.sort();  // the writer puts each in its place, which is cheapest at the end
  return names;
}

/// The names of an element's attributes. `QDomNamedNodeMap::item` searches from the start each time, five
/// minutes for eighty thousand, so it serves the usual element only.
QStringList attributeNames(const QDomElement& element) {
  constexpr int few = 100;
  const QDomNamedNodeMap attributes = element.attributes();
  if (attributes.count() > few) return namesInStartTag(element);
  QStringList names;
  for (int i = 0; i < attributes.count(); ++i)
    names += attributes.item(i).nodeName();
  return names;
}

void printStartTag(const QDomElement& element, XmlWriter& writer) {
  writer.startElement(element.tagName());
  for (const QString& name : attributeNames(element))
    writer.attribute(name, element.attribute(name));
}

/// Writes the node itself; of an element the start only.
void printNode(const QDomNode& node, XmlWriter& writer) {
  switch (node.nodeType()) {
    case QDomNode::ElementNode:
      printStartTag(node.toElement(), writer);
      break;
    case QDomNode::TextNode:
      writer.text(node.nodeValue());
      break;
    case QDomNode::CDATASectionNode:
      writer.cdata(node.nodeValue());
      break;
    case QDomNode::CommentNode:
      writer.comment(node.nodeValue());
      break;
    case QDomNode::EntityReferenceNode:
      writer.entityReference(node.nodeName());
      break;
    case QDomNode::ProcessingInstructionNode:
      writer.processingInstruction(node.nodeName(), node.nodeValue());
      break;
    default:
      break;  // no other kind of node stands in a tree
  }
}

/// Writes a node of the top level with all that is inside it. No recursion: how deep a tree is does not
/// matter.
void printSubtree(const QDomNode& top, XmlWriter& writer) {
  QDomNode node = top;
  while (true) {
    printNode(node, writer);
    if (node.isElement() && node.hasChildNodes()) {
      node = node.firstChild();
      continue;
    }
    if (node.isElement()) writer.endElement();
    while (node != top && node.nextSibling().isNull()) {
      node = node.parentNode();
      writer.endElement();
    }
    if (node == top) return;
    node = node.nextSibling();
  }
}

}  // namespace

std::string printXml(const QDomDocument& tree, int indent) {
  std::string text;
  StringOutput output(text);
  const DeclaredEncoder encoder(declaredEncoding(tree));
  XmlWriter writer(output, encoder, indent);

  bool typeIsDue = true;  // it stands behind the XML declaration and before all else
  for (QDomNode node = tree.firstChild(); !node.isNull(); node = node.nextSibling()) {
    if (typeIsDue && !isXmlDeclaration(node)) {
      printDocumentType(tree.doctype(), writer);
      typeIsDue = false;
    }
    printSubtree(node, writer);
  }
  writer.finish();
  return text;
}

}  // namespace ztcad
