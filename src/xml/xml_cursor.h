#pragma once

#include <cstddef>
#include <QtGlobal>
#include <string_view>

#include "name_characters.h"
#include "reference.h"

namespace ztcad {

/// Why a text is not read to its end. Thrown by the cursor, caught by the reader.
struct XmlError {
  const char* message;
  std::size_t offset;  // in bytes
  bool isRefusal;      // well-formed up to here, but not accepted
};

[[noreturn]] inline void refuseText(std::size_t offset, const char* message) {
  throw XmlError{message, offset, true};
}

/// An attribute as it lies in the text.
struct XmlAttribute {
  std::string_view name;
  std::string_view value;
  quint64 key = 0;  // see keyOf
  bool hasReferences = false;
  bool isAscii = true;
  mutable bool isRead = false;  // kept for observers only

  const char* position() const { return name.data(); }
};

/// A processing instruction, or the XML declaration as one.
struct XmlInstruction {
  std::string_view target;
  std::string_view data;
};

/// A position in an XML text, and the parts of XML that occur in several places. Each function leaves the
/// position after what it has read, and throws `XmlError` if the text has something else there.
class XmlCursor {
 public:
  explicit XmlCursor(std::string_view text)
      : m_text(text.data()), m_at(m_text), m_end(m_text + text.size()) {}

  bool atEnd() const { return m_at == m_end; }
  const char* position() const { return m_at; }
  std::size_t offset() const { return static_cast<std::size_t>(m_at - m_text); }
  std::string_view rest() const { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }
  const char* endOfText() const { return m_end; }

  /// The byte at the position. Fails at the end of the text.
  char peek() const {
    if (atEnd()) failAtEnd();
    return *m_at;
  }
  void advance(std::size_t bytes = 1) { m_at += bytes; }

  bool isAtWhitespace() const { return !atEnd() && isXmlWhitespace(*m_at); }
  /// Whether a name starts here. Fails at the end of the text.
  bool isAtName() const {
    const auto byte = static_cast<unsigned char>(peek());
    return byte < nameBytes.size() ? nameBytes[byte] == NameByte::Start : isAtAnyName();
  }
  void skipWhitespace() {
    while (isAtWhitespace())
      ++m_at;
  }

  /// Skips whitespace if "<" follows it. Otherwise the position stays as it is.
  bool skipWhitespaceBeforeMarkup() {
    const char* at = m_at;
    while (at != m_end && isXmlWhitespace(*at))
      ++at;
    const bool isBeforeMarkup = at != m_end && *at == '<';
    if (isBeforeMarkup) m_at = at;
    return isBeforeMarkup;
  }

  std::string_view readName();
  /// Reads characters of names, of which any may be the first.
  std::string_view readToken();
  /// Reads characters that are not part of a name of their own.
  void readWord(std::string_view word);
  XmlAttribute readAttribute();
  /// Reads a value in quotes, which may hold references but no "<".
  void readValue(XmlAttribute& attribute);
  /// Reads a reference from its "&". It denotes a character or an entity.
  XmlReference readReference();
  /// Reads up to `closing`, and `closing` itself; returns what comes before it.
  std::string_view readUpTo(std::string_view closing);
  /// Reads a comment from its first "-"; returns what is between the dashes.
  std::string_view readComment();
  /// Reads a processing instruction, other than an XML declaration, from its "?".
  XmlInstruction readInstruction();
  /// Reads the target of an instruction from its "?".
  std::string_view readTarget();
  /// Reads an instruction after its target.
  std::string_view readInstructionData();

  [[noreturn]] void fail(const char* message) const { failAt(m_at, message); }
  [[noreturn]] void failAtEnd() const;

  static bool isXmlWhitespace(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

 private:
  bool isAtAnyName() const;
  [[noreturn]] void failAt(const char* at, const char* message) const;
  XmlReference checkedReference(const char* at) const;
  void readAnyValue(XmlAttribute& attribute, char quote);

  const char* m_text;
  const char* m_at;
  const char* m_end;
};

/// The messages, as `QDomDocument::setContent` of Qt 5.15 reports them.
namespace xml_messages {
inline constexpr char unexpectedEnd[] = "unexpected end of file";
inline constexpr char element[] = "error occurred while parsing element";
inline constexpr char tagMismatch[] = "tag mismatch";
inline constexpr char content[] = "error occurred while parsing content";
inline constexpr char unexpectedCharacter[] = "unexpected character";
inline constexpr char instructionName[] = "invalid name for processing instruction";
inline constexpr char version[] = "version expected while reading the XML declaration";
inline constexpr char standaloneValue[] = "wrong value for standalone declaration";
inline constexpr char encodingOrStandalone[] =
    "encoding declaration or standalone declaration expected while reading the XML declaration";
inline constexpr char standalone[] = "standalone declaration expected while reading the XML declaration";
inline constexpr char documentType[] = "error occurred while parsing document type definition";
inline constexpr char letter[] = "letter is expected";
inline constexpr char comment[] = "error occurred while parsing comment";
inline constexpr char illFormedReference[] = "error occurred while parsing reference";
}  // namespace xml_messages

}  // namespace ztcad
