#pragma once

#include <cstddef>
#include <QString>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ztcad {

/// Where finished bytes go. `write` throws when it cannot take them.
class ByteOutput {
 public:
  virtual ~ByteOutput() = default;
  virtual void write(std::string_view bytes) = 0;
};

/// Which characters a written text may hold as they are, and their bytes. Codes below 128 are ASCII in all of
/// them, and an encoder is not asked for them.
class CharacterEncoder {
 public:
  virtual ~CharacterEncoder() = default;
  /// Appends the bytes of `character` (never a surrogate); false, and nothing appended, when it has none.
  virtual bool append(char32_t character, std::string& out) const = 0;
  /// The same where no numeric reference can stand: in names, comments, CDATA sections and processing
  /// instructions.
  virtual void appendBare(char32_t character, std::string& out) const;
};

/// The encoding of every saved document.
class Windows1251Encoder final : public CharacterEncoder {
 public:
  bool append(char32_t character, std::string& out) const override;
};

/// Writes XML piece by piece, byte for byte as `QDomDocument::save` does, but for three things that it does
/// better: attributes stand in the order of their names, so that the same document always gives the same
/// bytes; a character that the encoding lacks is one numeric reference, also beyond U+FFFF, and so is half a
/// surrogate pair; U+0000, U+FFFE and U+FFFF, at which parsers stop, are numeric references in every
/// encoding.
///
/// Layout: each element on a line of its own, indented by its depth, except where text is beside it.
///
/// Nothing is checked: the calls have to make a well-formed document, names are written as they are. When the
/// output throws, the writer must be dropped.
class XmlWriter {
 public:
  /// Nothing is owned. Bytes reach `output` in pieces of about 64 KB; the last ones when `finish` is called.
  ///
  /// @param indent blanks per level, not negative
  XmlWriter(ByteOutput& output, const CharacterEncoder& encoder, int indent);

  void startElement(const QString& tag);
  /// Between `startElement` and the element's first content. A second value of one name replaces the first.
  void attribute(const QString& name, const QString& value);
  void endElement();

  /// A text node, inside an element. An empty one is a node too: it keeps its neighbours on its line.
  void text(const QString& text);
  /// Text that needs no escaping (no `<`, `&`, `>`, nothing above 127). Pieces that follow each other are one
  /// text node; no text node comes from an empty one.
  void plainText(std::string_view ascii);
  void cdata(const QString& text);
  void comment(const QString& text);
  void entityReference(const QString& name);
  void processingInstruction(const QString& target, const QString& data);
  /// A document type declaration, given as it is to be written, without the line end.
  void documentType(const QString& declaration);

  /// Ends the last line and hands on all bytes. Nothing may be written afterwards.
  void finish();

 private:
  /// The ASCII characters that do not stand for themselves.
  struct Specials;
  static const Specials textSpecials;
  static const Specials valueSpecials;
  static const Specials noSpecials;

  void beginLine();
  void beginInLine();
  void beginText();
  void closeStartTag(std::string_view closing);
  void writeIndent();
  void writeBare(const QString& text);
  int writeBareCharacter(const QString& text, int at);
  void writeEscaped(const QString& text, const Specials& specials);
  int writePlainRun(const QString& text, int at, const Specials& specials);
  int writeSpecial(const QString& text, int at);
  void writeReference(char32_t character);
  void handOnWhenFull();

  ByteOutput& m_output;
  const CharacterEncoder& m_encoder;
  const std::size_t m_indent;
  std::string m_buffer;
  std::vector<QString> m_openTags;
  std::vector<std::pair<QString, QString>>
      m_attributes;  // of the open start tag, in the order of their names
  bool m_startTagIsOpen = false;
  bool m_lineEndIsDue = false;  // whether it is written depends on what follows: text stays on the line
  bool m_isBesideText = false;
};

}  // namespace ztcad
