#include "xml_print.h"

#include <algorithm>
#include <QChar>
#include <QRegExp>
#include <QStringList>
#include <QTextCodec>
#include <QTextStream>

#include "../text/append_character.h"
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

bool isXmlDeclaration(const QDomNode& node) {
  return node.isProcessingInstruction() && node.nodeName() == QLatin1String("xml");
}

/// The encoding that the tree declares, found as QDom finds it; empty without one.
QString declaredEncoding(const QDomDocument& tree) {
  if (!isXmlDeclaration(tree.firstChild())) return {};
  QRegExp encoding(QLatin1String("encoding\\s*=\\s*((\"([^\"]*)\")|('([^']*)'))"));
  encoding.indexIn(tree.firstChild().nodeValue());
  return encoding.cap(3).isEmpty() ? encoding.cap(5) : encoding.cap(3);
}

/// Writes UTF-8, limited to the characters of the named encoding; an unknown encoding has all characters.
class DeclaredEncoder final : public CharacterEncoder {
 public:
  explicit DeclaredEncoder(const QString& name)
      : m_isWindows1251(name.compare(QLatin1String("windows-1251"), Qt::CaseInsensitive) == 0),
        m_codec(m_isWindows1251 ? nullptr : QTextCodec::codecForName(name.toLatin1())) {}

  bool append(char32_t character, std::string& out) const override {
    if (!has(character)) return false;
    appendUtf8(character, out);
    return true;
  }
  void appendBare(char32_t character, std::string& out) const override { appendUtf8(character, out); }

 private:
  bool has(char32_t character) const {
    if (m_isWindows1251) return windows1251FromUnicode(character).has_value();
    if (!m_codec) return true;
    QString text;
    appendUtf16(character, text);
    return m_codec->canEncode(text);
  }

  const bool m_isWindows1251;
  const QTextCodec* const m_codec;  // owned by Qt; null: all characters exist
};

/// The text that Qt writes for one node.
QString textByQt(const QDomNode& node) {
  QString text;
  QTextStream stream(&text);
  node.save(stream, 0);
  stream.flush();
  return text;
}

/// Splits the text after each `[` and `>` outside quotes. The rest after the last one is dropped.
QStringList splitAfterBrackets(const QString& text) {
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

/// Sorts the notations, which Qt writes in unspecified order: all pieces but the first and the last.
void printDocumentType(const QDomDocumentType& type, XmlWriter& writer) {
  if (type.name().isEmpty()) return;
  QStringList pieces = splitAfterBrackets(textByQt(type));
  if (pieces.size() > 2) std::sort(pieces.begin() + 1, pieces.end() - 1);
  writer.documentType(pieces.join(QString()));
}

/// Extracts the names of an element's attributes from the text that Qt writes for its start tag.
QStringList namesInStartTag(const QDomElement& element) {
  const QString tag = textByQt(element.cloneNode(false));
  QStringList names;
  for (int at = tag.indexOf(QLatin1Char(' ')); at >= 0 && tag.at(at) == QLatin1Char(' ');) {
    const int nameEnd = tag.indexOf(QLatin1String("=\""), at);
    names += tag.mid(at + 1, nameEnd - at - 1);
    at = tag.indexOf(QLatin1Char('"'), nameEnd + 2) + 1;
  }
  names.sort();  // the writer inserts each in order, which is cheapest at the end
  return names;
}

/// The names of an element's attributes. `QDomNamedNodeMap::item` searches from the start each time (five
/// minutes for eighty thousand attributes), so it is used for few attributes only.
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

/// Writes one node without its children; of an element the start tag only.
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
      break;  // a parsed tree has no other kind of node
  }
}

/// Writes a top-level node with all its descendants. Not recursive, so the depth of the tree is not limited
/// by the stack.
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

  bool typeIsDue = true;  // the document type comes after the XML declaration and before all else
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
