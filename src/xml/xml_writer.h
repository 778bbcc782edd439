#pragma once

#include <cstddef>
#include <cstdint>
#include <QString>
#include <string_view>
#include <vector>

#include "byte_buffer.h"
#include "name_cache.h"

namespace ztcad {

/// Receives the finished bytes. `write` throws if it fails.
class ByteOutput {
 public:
  virtual ~ByteOutput() = default;
  virtual void write(std::string_view bytes) = 0;
};

/// The character encoding of a written text. Codes below 128 are ASCII in every encoding and never passed to
/// an encoder.
class CharacterEncoder {
 public:
  virtual ~CharacterEncoder() = default;
  /// Appends the bytes of `character` (never a surrogate). False, with nothing appended, if the encoding
  /// lacks it.
  virtual bool append(char32_t character, ByteBuffer& out) const = 0;
  /// The same where numeric references are not allowed: in names, comments, CDATA sections and processing
  /// instructions. By default a missing character becomes a question mark.
  virtual void appendBare(char32_t character, ByteBuffer& out) const;
};

/// The encoding of every saved document.
class Windows1251Encoder final : public CharacterEncoder {
 public:
  bool append(char32_t character, ByteBuffer& out) const override;
};

/// Writes XML piece by piece, byte for byte as `QDomDocument::save` does, with three improvements:
///
/// - attributes are written in the order of their names, so the same document always gives the same bytes
/// - a character that the encoding lacks becomes one numeric reference, also beyond U+FFFF; so does an
///   unpaired surrogate
/// - U+0000, U+FFFE and U+FFFF, at which parsers stop, become numeric references in every encoding
///
/// Layout: each element on its own line, indented by its depth, except next to text.
///
/// Nothing is checked: the calls must form a well-formed document, and names are written without escaping. If
/// the output throws, the writer must be discarded.
class XmlWriter {
 public:
  /// Owns neither `output` nor `encoder`. Bytes reach `output` in pieces of about 64 KB, the last ones by
  /// `finish`.
  ///
  /// @param indent spaces per level, not negative
  XmlWriter(ByteOutput& output, const CharacterEncoder& encoder, int indent);

  void startElement(const QString& tag);
  /// Between `startElement` and the element's first content. A second value of one name replaces the first.
  /// @{
  void attribute(const QString& name, const QString& value);
  /// With a value that needs no escaping (no `<`, `&`, `"`, no control characters, nothing above 127).
  void plainAttribute(const QString& name, std::string_view ascii);
  /// @}
  /// Whether a value below 128 needs no escaping.
  static bool isPlainValue(std::string_view ascii);
  void endElement();

  /// A text node inside an element. An empty one is a node too: it keeps its neighbours on its line.
  void text(const QString& text);
  /// Text that needs no escaping (no `<`, `&`, `>`, nothing above 127). Consecutive pieces form one text
  /// node; an empty piece is no node.
  void plainText(std::string_view ascii);
  /// Whether a text is ASCII that needs no escaping.
  static bool isPlainText(std::string_view text);
  void cdata(const QString& text);
  void comment(const QString& text);
  void entityReference(const QString& name);
  void processingInstruction(const QString& target, const QString& data);
  /// A complete document type declaration without its line end; written unchanged.
  void documentType(const QString& declaration);

  /// Ends the last line and passes the remaining bytes to the output. Must be the last call.
  void finish();

 private:
  /// A set of ASCII characters that must be escaped.
  struct Specials;
  static const Specials textSpecials;
  static const Specials valueSpecials;
  static const Specials noSpecials;

  /// An attribute of the open start tag.
  struct Attribute {
    NameCache::Index name = 0;
    std::uint32_t longValue = 0;  // 1 and up: in m_longValues; only what precedes the value is written
    std::size_t begin = 0;        // of its bytes in m_written
    std::size_t end = 0;
  };

  /// The attributes of the last element with a tag: siblings usually have the same ones.
  struct LastAttributes {
    std::vector<NameCache::Index> names;  // as they were set
    std::vector<std::size_t> order;       // the places of those that are written, in the order of their names
  };

  void beginLine();
  void beginInLine();
  void beginText();
  qsizetype appendUnescaped(QStringView text, qsizetype at, ByteBuffer& out) const;
  NameCache::Index nameOf(const QString& name);
  void addAttribute(NameCache::Index name, std::size_t begin, std::uint32_t longValue = 0);
  const std::vector<std::size_t>& attributeOrder();
  void orderAttributes(LastAttributes& last);
  void closeStartTag(std::string_view closing);
  void writeIndent();
  void writeUnescaped(QStringView text);
  void writeEscaped(QStringView text, const Specials& specials);
  void flushIfFull();

  ByteOutput& m_output;
  const CharacterEncoder& m_encoder;
  const std::size_t m_indent;
  ByteBuffer m_buffer;
  std::vector<QString> m_tags;  // of the open elements, and of those that were open at greater depths
  std::size_t m_depth = 0;
  NameCache m_names;
  std::vector<LastAttributes> m_lastAttributes;  // by the index of the tag
  NameCache::Index m_startTag = 0;               // the open one
  std::vector<Attribute> m_attributes;           // of the open start tag
  ByteBuffer m_written;                          // the attributes as they were set
  std::vector<QString> m_longValues;             // as their attributes were set
  bool m_startTagIsOpen = false;
  bool m_lineEndIsDue = false;  // whether it is written depends on what follows: text stays on the line
  bool m_isBesideText = false;
};

}  // namespace ztcad
