#include "xml_print.h"

#include <map>
#include <optional>
#include <vector>

#include "../text/append_character.h"
#include "../text/code_pages.h"
#include "../text/wide_utf8.h"
#include "../text/windows1251.h"
#include "document_type_printer.h"
#include "reference.h"
#include "xml_reader.h"
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

/// Writes UTF-8, limited to the characters of the named encoding; an unknown encoding has all characters.
class DeclaredEncoder final : public CharacterEncoder {
 public:
  explicit DeclaredEncoder(std::string_view declared) {
    const std::string name = encodingName(declared);
    m_isWindows1251 = isWindows1251(name);
    m_page = findCodePage(name);
  }

  bool append(char32_t character, ByteBuffer& out) const override {
    if (!has(character)) return false;
    appendUtf8(character, out);
    return true;
  }
  void appendBare(char32_t character, ByteBuffer& out) const override { appendUtf8(character, out); }

 private:
  bool has(char32_t character) const {
    if (m_isWindows1251) return windows1251FromUnicode(character).has_value();
    return !m_page || hasCharacter(*m_page, character);
  }

  bool m_isWindows1251 = false;
  const CodePage* m_page = nullptr;  // null: all characters exist
};

/// A node outside the root: an instruction, the XML declaration included, or a comment.
struct OuterNode {
  XmlEvent kind;
  QString name;
  QString text;

  bool isDeclaration() const { return kind == XmlEvent::Instruction && name == QLatin1String("xml"); }
};

void print(const OuterNode& node, XmlWriter& writer) {
  if (node.kind == XmlEvent::Comment) {
    writer.comment(node.text);
  } else {
    writer.processingInstruction(node.name, node.text);
  }
}

/// What comes before the root. It is collected, because the document type is printed first, wherever it is.
class Prolog {
 public:
  /// Reads up to the root; the last event is its start or the end of the text.
  XmlEvent read(XmlReader& reader) {
    XmlEvent event = reader.next();
    for (; event != XmlEvent::StartElement && event != XmlEvent::End; event = reader.next()) {
      if (event == XmlEvent::DocumentType) {
        m_type.start(reader.name(), reader.externalId());
      } else if (event == XmlEvent::Notation) {
        m_type.addNotation(reader.name(), reader.externalId());
      } else {
        m_nodes.push_back({event, fromWideUtf8(reader.name()), fromWideUtf8(reader.text())});
      }
    }
    return event;
  }

  std::string encoding() const {
    return isDeclared() ? encodingIn(m_nodes.front().text.toStdString()) : std::string();
  }

  void print(XmlWriter& writer) const {
    std::size_t next = 0;
    if (isDeclared()) ztcad::print(m_nodes[next++], writer);
    if (const auto type = m_type.text()) writer.documentType(*type);
    for (; next < m_nodes.size(); ++next)
      ztcad::print(m_nodes[next], writer);
  }

 private:
  bool isDeclared() const { return !m_nodes.empty() && m_nodes.front().isDeclaration(); }

  std::vector<OuterNode> m_nodes;
  DocumentTypePrinter m_type;
};

/// Prints from the start of the root to the end of the text.
class BodyPrinter {
 public:
  BodyPrinter(XmlReader& reader, XmlWriter& writer) : m_reader(reader), m_writer(writer) {}

  void print() {
    for (XmlEvent event = XmlEvent::StartElement; event != XmlEvent::End; event = m_reader.next())
      print(event);
    for (; m_depth > 0; --m_depth)  // elements that an error leaves open
      m_writer.endElement();
  }

 private:
  void print(XmlEvent event) {
    switch (event) {
      case XmlEvent::StartElement:
        printStartTag();
        ++m_depth;
        break;
      case XmlEvent::EndElement:
        m_writer.endElement();
        --m_depth;
        break;
      case XmlEvent::Text:
        printText();
        break;
      case XmlEvent::Cdata:
        m_writer.cdata(text());
        break;
      case XmlEvent::Comment:
        m_writer.comment(text());
        break;
      case XmlEvent::EntityReference:
        m_writer.entityReference(name());
        break;
      case XmlEvent::Instruction:
        m_writer.processingInstruction(name(), text());
        break;
      default:
        break;  // document types come before the root
    }
  }

  /// Lists, which may be longer than any QString, are written as they are.
  void printText() {
    const std::string_view bytes = m_reader.text();
    if (!m_reader.hasReferences() && XmlWriter::isPlainText(bytes)) return m_writer.plainText(bytes);
    m_writer.text(m_reader.hasReferences() ? withoutReferences(bytes) : text());
  }

  void printStartTag() {
    m_writer.startElement(name());
    std::map<QString, QString> attributes;  // the last value of each name
    for (std::size_t i = m_reader.firstAttribute(); i < m_reader.attributes().size(); ++i) {
      const XmlAttribute& attribute = m_reader.attributes()[i];
      attributes[fromWideUtf8(attribute.name)] = withoutReferences(attribute.value);
    }
    for (const auto& [name, value] : attributes)
      m_writer.attribute(name, value);
  }

  QString name() const { return fromWideUtf8(m_reader.name()); }
  QString text() const { return fromWideUtf8(m_reader.text()); }

  XmlReader& m_reader;
  XmlWriter& m_writer;
  int m_depth = 0;
};

}  // namespace

std::string printXml(const XmlText& text, int indent) {
  if (text.refusal()) return {};
  XmlReader reader(text.characters());
  Prolog prolog;
  const XmlEvent event = prolog.read(reader);

  std::string printed;
  constexpr std::size_t usualGrowth = 32;  // one part of so many; growing would take twice the memory
  printed.reserve(text.characters().size() + text.characters().size() / usualGrowth + 4096);
  StringOutput output(printed);
  const DeclaredEncoder encoder(prolog.encoding());
  XmlWriter writer(output, encoder, indent);
  prolog.print(writer);
  if (event == XmlEvent::StartElement) BodyPrinter(reader, writer).print();
  writer.finish();
  if (reader.outcome().isRefused) return {};
  return printed;
}

}  // namespace ztcad
