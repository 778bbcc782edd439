#include "document_type_reader.h"

#include "xml_outcome.h"

namespace ztcad {

using namespace xml_messages;

namespace {

bool isOneOf(char c, std::string_view set) { return set.find(c) != std::string_view::npos; }

}  // namespace

/// Reads whitespace, at least one character of it.
void DocumentTypeReader::readWhitespace(const char* messageIfMissing) {
  if (!XmlCursor::isXmlWhitespace(m_cursor.peek())) m_cursor.fail(messageIfMissing);
  m_cursor.skipWhitespace();
}

bool DocumentTypeReader::skip(char expected) {
  if (m_cursor.peek() != expected) return false;
  m_cursor.advance();
  return true;
}

/// Reads the end of a declaration, with whitespace before it.
void DocumentTypeReader::readEnd() {
  m_cursor.skipWhitespace();
  if (!skip('>')) m_cursor.fail(unexpectedCharacter);
}

void DocumentTypeReader::readStart() {
  m_externalId = {};
  m_cursor.readWord("DOCTYPE");
  readWhitespace(documentType);
  if (isOneOf(m_cursor.peek(), "[]%>")) m_cursor.fail(documentType);
  m_name = m_cursor.readName();
  m_cursor.skipWhitespace();
  if (isOneOf(m_cursor.peek(), "SP")) {
    readExternalId(IdKind::External);
    m_cursor.skipWhitespace();
  }
  m_isInSubset = skip('[');
  if (!m_isInSubset && !skip('>')) m_cursor.fail(documentType);
}

DocumentTypeReader::Part DocumentTypeReader::next() {
  if (m_isInNotation) readNotationEnd();
  while (m_isInSubset) {
    m_cursor.skipWhitespace();
    if (const auto part = readDeclaration()) return *part;
  }
  return Part::End;
}

/// Reads one declaration or reference of the subset, or its end.
std::optional<DocumentTypeReader::Part> DocumentTypeReader::readDeclaration() {
  const char next = m_cursor.peek();
  if (next == '%') {
    readParameterReference();
    return std::nullopt;
  }
  if (next == ']') {
    m_cursor.advance();
    m_cursor.skipWhitespace();
    if (!skip('>')) m_cursor.fail(documentType);
    m_isInSubset = false;
    return std::nullopt;
  }
  if (isOneOf(next, "DSP[>")) m_cursor.fail(documentType);
  return readMarkup();
}

std::optional<DocumentTypeReader::Part> DocumentTypeReader::readMarkup() {
  const std::size_t start = m_cursor.offset();
  if (!skip('<')) m_cursor.fail(letter);
  if (m_cursor.peek() == '?') {
    m_instruction = m_cursor.readInstruction();
    return Part::Instruction;
  }
  if (!skip('!')) m_cursor.fail(letter);
  switch (m_cursor.peek()) {
    case '-':
      m_comment = m_cursor.readComment();
      return Part::Comment;
    case 'A':
      readAttributeList();
      return std::nullopt;
    case 'N':
      return readNotation();
    case 'E':
      break;
    default:
      m_cursor.fail(letter);
  }
  m_cursor.advance();
  if (m_cursor.peek() == 'N') {
    m_cursor.readWord("NTITY");
    refuseText(start, "entity declaration");
  }
  if (m_cursor.peek() != 'L') m_cursor.fail(letter);
  readElement();
  return std::nullopt;
}

/// Reads a reference to a parameter entity. None is declared, so it is ignored.
void DocumentTypeReader::readParameterReference() {
  m_cursor.advance();
  m_cursor.readName();
  if (!skip(';')) m_cursor.fail(letter);
}

/// @param kind whether a public identifier alone is enough
void DocumentTypeReader::readExternalId(IdKind kind) {
  m_externalId = {};
  const char first = m_cursor.peek();
  if (!isOneOf(first, "SP")) m_cursor.fail(unexpectedCharacter);
  m_cursor.readWord(first == 'S' ? "SYSTEM" : "PUBLIC");
  readWhitespace(unexpectedCharacter);
  if (first == 'P') {
    m_externalId.publicId = readPublicLiteral();
    const bool isSeparated = XmlCursor::isXmlWhitespace(m_cursor.peek());
    m_cursor.skipWhitespace();
    const bool isComplete = !isSeparated || !isOneOf(m_cursor.peek(), "\"'");
    if (isComplete && kind == IdKind::ExternalOrPublic) return;
    if (isComplete) m_cursor.fail(unexpectedCharacter);
  }
  m_externalId.systemId = readLiteral();
}

/// Reads a literal without quotes of the other kind.
std::string_view DocumentTypeReader::readPublicLiteral() {
  const char quote = m_cursor.peek();
  const std::string_view inside = m_cursor.rest().substr(1);
  const std::size_t other = inside.find(quote == '"' ? '\'' : '"');
  if (isOneOf(quote, "\"'") && other < inside.find(quote)) {
    m_cursor.advance(1 + other);
    m_cursor.fail(unexpectedCharacter);
  }
  return readLiteral();
}

std::string_view DocumentTypeReader::readLiteral() {
  const char quote = m_cursor.peek();
  if (!isOneOf(quote, "\"'")) m_cursor.fail(unexpectedCharacter);
  m_cursor.advance();
  return m_cursor.readUpTo({&quote, 1});
}

// -------------------------------------------------------------------------------- element declarations

/// Reads an element declaration from the "L" of "ELEMENT".
void DocumentTypeReader::readElement() {
  m_cursor.readWord("LEMENT");
  readWhitespace(unexpectedCharacter);
  if (isOneOf(m_cursor.peek(), ">|()#?*+")) m_cursor.fail(unexpectedCharacter);
  m_cursor.readName();
  readWhitespace(unexpectedCharacter);
  switch (m_cursor.peek()) {
    case 'A':
      m_cursor.readWord("ANY");
      break;
    case 'E':
      m_cursor.readWord("EMPTY");
      break;
    case '(':
      m_cursor.advance();
      m_cursor.skipWhitespace();
      if (isOneOf(m_cursor.peek(), ">|?*+")) m_cursor.fail(unexpectedCharacter);
      if (m_cursor.peek() == '#') {
        readMixedContent();
      } else {
        readChildren();
        if (isOneOf(m_cursor.peek(), "?*+")) m_cursor.advance();
      }
      break;
    default:
      m_cursor.fail(unexpectedCharacter);
  }
  readEnd();
}

void DocumentTypeReader::readMixedContent() {
  m_cursor.readWord("#PCDATA");
  bool hasNames = false;
  while (true) {
    m_cursor.skipWhitespace();
    if (skip(')')) break;
    if (!skip('|')) m_cursor.fail(unexpectedCharacter);
    m_cursor.skipWhitespace();
    if (isOneOf(m_cursor.peek(), ">|()#?*+")) m_cursor.fail(unexpectedCharacter);
    m_cursor.readName();
    hasNames = true;
  }
  if (!skip('*') && hasNames) m_cursor.fail(unexpectedCharacter);
}

/// Reads choices and sequences after their first "(". Counts levels instead of calling itself for each.
void DocumentTypeReader::readChildren() {
  int depth = 1;
  do {
    readChild(depth);
  } while (readAfterChild(depth));
}

/// Reads the "(" before a name, and the name.
void DocumentTypeReader::readChild(int& depth) {
  while (m_cursor.peek() == '(') {
    if (++depth > maximalDepth) refuseText(m_cursor.offset(), "parentheses nested too deep");
    m_cursor.advance();
    m_cursor.skipWhitespace();
  }
  const char next = m_cursor.peek();
  if (isOneOf(next, ")?*+|,") || XmlCursor::isXmlWhitespace(next)) m_cursor.fail(unexpectedCharacter);
  m_cursor.readName();
}

/// Reads from the end of a child to the next one.
/// @return false if there is none: the last ")" has been read
bool DocumentTypeReader::readAfterChild(int& depth) {
  while (true) {
    const char next = m_cursor.peek();
    if (isOneOf(next, "?*+") || XmlCursor::isXmlWhitespace(next)) {
      m_cursor.advance();
      m_cursor.skipWhitespace();
    }
    if (skip(')')) {
      if (--depth == 0) return false;
      continue;
    }
    if (!isOneOf(m_cursor.peek(), "|,")) m_cursor.fail(unexpectedCharacter);
    m_cursor.advance();
    m_cursor.skipWhitespace();
    return true;
  }
}

// ------------------------------------------------------------------------------ attribute declarations

/// Reads an attribute list declaration from its "A".
void DocumentTypeReader::readAttributeList() {
  m_cursor.readWord("ATTLIST");
  readWhitespace(letter);
  m_cursor.readName();
  m_cursor.skipWhitespace();
  while (!skip('>')) {
    m_cursor.readName();
    readWhitespace(letter);
    readAttributeType();
    readWhitespace(letter);
    readDefault();
    if (m_cursor.peek() != '>') readWhitespace(letter);
  }
}

void DocumentTypeReader::readAttributeType() {
  switch (m_cursor.peek()) {
    case '(':
      readAlternatives(&XmlCursor::readToken);
      break;
    case 'C':
      m_cursor.readWord("CDATA");
      break;
    case 'I':
      m_cursor.readWord("ID");
      if (m_cursor.peek() != 'R') break;
      m_cursor.readWord("REF");
      skip('S');
      break;
    case 'E':
      m_cursor.readWord("ENTIT");
      if (m_cursor.peek() == 'I') {
        m_cursor.readWord("IES");
      } else if (!skip('Y')) {
        m_cursor.fail(letter);
      }
      break;
    case 'N':
      readTokenOrNotationType();
      break;
    default:
      m_cursor.fail(letter);
  }
}

void DocumentTypeReader::readTokenOrNotationType() {
  m_cursor.advance();
  if (m_cursor.peek() == 'M') {
    m_cursor.readWord("MTOKEN");
    skip('S');
    return;
  }
  if (m_cursor.peek() != 'O') m_cursor.fail(letter);
  m_cursor.readWord("OTATION");
  readWhitespace(letter);
  if (m_cursor.peek() != '(') m_cursor.fail(letter);
  readAlternatives(&XmlCursor::readName);
}

/// Reads alternatives from their "(" to their ")"; `readOne` reads each of them.
void DocumentTypeReader::readAlternatives(std::string_view (XmlCursor::*readOne)()) {
  do {
    m_cursor.advance();
    m_cursor.skipWhitespace();
    (m_cursor.*readOne)();
    m_cursor.skipWhitespace();
  } while (m_cursor.peek() == '|');
  if (!skip(')')) m_cursor.fail(letter);
}

void DocumentTypeReader::readDefault() {
  while (skip('#')) {
    switch (m_cursor.peek()) {
      case 'I':
        m_cursor.readWord("IMPLIED");
        return;
      case 'R':
        m_cursor.readWord("REQUIRED");
        return;
      case 'F':
        m_cursor.readWord("FIXED");
        readWhitespace(letter);  // another "#" may follow: "#FIXED #IMPLIED" is accepted
        break;
      default:
        m_cursor.fail(letter);
    }
  }
  XmlAttribute value;
  m_cursor.readValue(value);
}

// ------------------------------------------------------------------------------------------- notations

/// Reads a notation declaration from its "N". One without an identifier is not reported.
std::optional<DocumentTypeReader::Part> DocumentTypeReader::readNotation() {
  m_cursor.readWord("NOTATION");
  readWhitespace(unexpectedCharacter);
  if (m_cursor.peek() == '>') m_cursor.fail(unexpectedCharacter);
  m_name = m_cursor.readName();
  if (!skip('>')) {
    readWhitespace(unexpectedCharacter);
    if (!skip('>')) {
      readExternalId(IdKind::ExternalOrPublic);
      m_isInNotation = true;
      return Part::Notation;
    }
  }
  return std::nullopt;
}

void DocumentTypeReader::readNotationEnd() {
  readEnd();
  m_isInNotation = false;
}

}  // namespace ztcad
