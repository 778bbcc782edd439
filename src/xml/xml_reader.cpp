#include "xml_reader.h"

#include <utility>

#include "../text/wide_utf8.h"
#include "reference.h"

namespace ztcad {

using namespace xml_messages;

namespace {

static_assert(maximalDepth == 256, "the message names the limit");
constexpr char tooDeep[] = "elements nested deeper than 256";
constexpr char nulCharacter[] = "NUL character";

/// Inline comparisons: every tag is looked at, and a search in a set would be a call.
template <typename... Characters>
constexpr bool isOneOf(char c, Characters... set) {
  return ((c == set) || ...);
}

/// Offset of the first U+FFFE or U+FFFF, which end the text for the reader.
std::size_t findEndMark(std::string_view text) {
  for (std::size_t at = text.find("\xEF\xBF"); at < text.size(); at = text.find("\xEF\xBF", at + 1)) {
    const char last = text.substr(at).size() > 2 ? text[at + 2] : '\0';
    if (last == '\xBE' || last == '\xBF') return at;
  }
  return text.size();
}

}  // namespace

XmlReader::XmlReader(std::string_view text)
    : m_whole(text),
      m_nul(text.find('\0')),
      m_cursor(text.substr(0, findEndMark(text.substr(0, m_nul)))),
      m_documentType(m_cursor) {}

XmlEvent XmlReader::next() {
  try {
    return readNext();
  } catch (const XmlError& error) {
    m_error = error;
    m_place = Place::End;
    return XmlEvent::End;
  }
}

XmlEvent XmlReader::readNext() {
  switch (m_place) {
    case Place::Prolog:
      return readProlog();
    case Place::DocumentType:
      return readDocumentType();
    case Place::Content:
      return readContent();
    case Place::AfterRoot:
      return readAfterRoot();
    case Place::End:
      break;
  }
  return XmlEvent::End;
}

ParseOutcome XmlReader::outcome() const {
  const bool hasNul = m_nul != std::string_view::npos;
  if (hasNul && (!m_error || m_error->offset == m_nul))
    return failedParse(m_whole, {nulCharacter, m_nul, true});
  return m_error ? failedParse(m_whole, *m_error) : ParseOutcome{true, false, {}, 0, 0, 0};
}

// ------------------------------------------------------------------------------------------ outside the root

XmlEvent XmlReader::readProlog() {
  if (m_cursor.isAtWhitespace()) m_mayDeclare = false;
  m_cursor.skipWhitespace();
  if (m_cursor.peek() != '<') m_cursor.fail(element);
  m_cursor.advance();
  const char next = m_cursor.peek();
  if (next == '?') return std::exchange(m_mayDeclare, false) ? readFirstInstruction() : readInstruction();
  m_mayDeclare = false;
  if (next != '!') {
    if (isOneOf(next, '<', '-') || XmlCursor::isXmlWhitespace(next)) m_cursor.fail(element);
    m_place = Place::Content;
    return readStartTag();
  }
  m_cursor.advance();
  if (m_cursor.peek() == '-') return readComment();
  if (m_cursor.peek() != 'D') m_cursor.fail(element);
  m_documentType.readStart();
  m_place = Place::DocumentType;
  m_name = m_documentType.name();
  return XmlEvent::DocumentType;
}

XmlEvent XmlReader::readDocumentType() {
  switch (m_documentType.next()) {
    case DocumentTypeReader::Part::Notation:
      m_name = m_documentType.name();
      return XmlEvent::Notation;
    case DocumentTypeReader::Part::Instruction:
      return report(m_documentType.instruction());
    case DocumentTypeReader::Part::Comment:
      m_text = m_documentType.comment();
      return XmlEvent::Comment;
    case DocumentTypeReader::Part::End:
      break;
  }
  m_place = Place::Prolog;
  return readProlog();
}

XmlEvent XmlReader::readAfterRoot() {
  m_cursor.skipWhitespace();
  if (m_cursor.atEnd()) {
    m_place = Place::End;
    return XmlEvent::End;
  }
  if (m_cursor.peek() != '<') m_cursor.fail(unexpectedCharacter);
  m_cursor.advance();
  if (m_cursor.peek() == '?') return readInstruction();
  if (m_cursor.peek() != '!') m_cursor.fail(unexpectedCharacter);
  m_cursor.advance();
  const char next = m_cursor.peek();
  if (isOneOf(next, '<', '?', '!') || XmlCursor::isXmlWhitespace(next)) m_cursor.fail(unexpectedCharacter);
  return readComment();
}

XmlEvent XmlReader::readComment() {
  m_text = m_cursor.readComment();
  m_countsBracket = false;
  return XmlEvent::Comment;
}

XmlEvent XmlReader::readInstruction() { return report(m_cursor.readInstruction()); }

XmlEvent XmlReader::report(const XmlInstruction& instruction) {
  m_name = instruction.target;
  m_text = instruction.data;
  m_countsBracket = false;
  return XmlEvent::Instruction;
}

/// Reads the XML declaration or any other instruction.
XmlEvent XmlReader::readFirstInstruction() {
  const std::string_view rest = m_cursor.rest();
  const bool isDeclaration = rest.substr(0, 4) == "?xml" && nameLength(rest.substr(1)) == 3;
  if (!isDeclaration) return readInstruction();
  m_cursor.advance(4);
  m_declaration = readXmlDeclaration(m_cursor);
  return report({m_declaration.target, m_declaration.data});
}

// --------------------------------------------------------------------------------------------- in the root

XmlEvent XmlReader::readContent() {
  if (m_isInEmptyElement) return readEmptyElementEnd();
  if (m_entity) {
    m_name = *m_entity;
    m_entity.reset();
    return XmlEvent::EntityReference;
  }
  if (const auto event = readRun()) return *event;
  return readMarkup();
}

/// Reads characters and references up to markup or to a reference that has no character. Nothing is reported
/// of a run of whitespace, however it is written.
std::optional<XmlEvent> XmlReader::readRun() {
  const char* const first = m_cursor.position();
  m_hasReferences = false;
  if (m_cursor.skipWhitespaceBeforeMarkup()) return std::nullopt;
  while (true) {
    readCharacters();
    if (m_cursor.peek() == '<') return endRun(first, m_cursor.position());
    const char* const start = m_cursor.position();
    const XmlReference reference = m_cursor.readReference();
    m_countsBracket = false;
    if (reference.kind == XmlReference::Kind::Entity) {
      m_entity = reference.name;
      if (const auto text = endRun(first, start)) return text;
      return readContent();
    }
    m_hasReferences = true;
  }
}

/// Reports the characters of a run.
std::optional<XmlEvent> XmlReader::endRun(const char* first, const char* last) {
  m_text = {first, static_cast<std::size_t>(last - first)};
  if (m_hasReferences ? isBlankWithReferences(m_text) : isBlank(m_text)) return std::nullopt;
  return XmlEvent::Text;
}

/// Reads characters up to "<", "&" or the end of the text. Their "]]>" is an error.
void XmlReader::readCharacters() {
  const char* const first = m_cursor.position();
  if (m_nextTag < first) m_nextTag = first + m_cursor.rest().substr(0, m_cursor.rest().find('<')).size();
  std::string_view characters(first, static_cast<std::size_t>(m_nextTag - first));
  characters = characters.substr(0, characters.find('&'));
  const std::size_t counted = !m_countsBracket && characters.substr(0, 1) == "]" ? 1 : 0;
  const std::size_t closing = characters.find("]]>", counted);
  if (closing != std::string_view::npos) {
    m_cursor.advance(closing + 2);
    m_cursor.fail(content);
  }
  m_cursor.advance(characters.size());
}

XmlEvent XmlReader::readMarkup() {
  m_cursor.advance();
  const char next = m_cursor.peek();
  if (isOneOf(next, '<', '>', '&', '-', '[', ']')) m_cursor.fail(content);
  if (next == '/') return readEndTag();
  if (next == '?') return readInstruction();
  if (next != '!') return readStartTag();
  m_cursor.advance();
  if (m_cursor.peek() == '-') return readComment();
  if (m_cursor.peek() != '[') m_cursor.fail(content);
  m_cursor.readWord("[CDATA[");
  m_text = m_cursor.readUpTo("]]>");
  m_hasReferences = false;
  m_countsBracket = true;
  return XmlEvent::Cdata;
}

/// Reads a start tag from its name to its ">" or "/".
XmlEvent XmlReader::readStartTag() {
  if (!m_cursor.isAtName()) m_cursor.fail(element);
  const OpenElement opened = {m_cursor.readName(), m_attributes.size()};
  while (true) {
    m_cursor.skipWhitespace();
    if (isOneOf(m_cursor.peek(), '>', '/')) break;
    if (!m_cursor.isAtName()) m_cursor.fail(element);
    m_attributes.push_back(m_cursor.readAttribute());
  }
  if (m_open.size() == static_cast<std::size_t>(maximalDepth)) refuseText(m_cursor.offset(), tooDeep);
  m_isInEmptyElement = m_cursor.peek() == '/';
  m_cursor.advance();
  m_open.push_back(opened);
  m_name = opened.tag;
  m_countsBracket = true;
  return XmlEvent::StartElement;
}

XmlEvent XmlReader::readEmptyElementEnd() {
  if (m_cursor.peek() != '>') m_cursor.fail(element);
  m_isInEmptyElement = false;
  return endElement();
}

XmlEvent XmlReader::readEndTag() {
  m_cursor.advance();  // the slash
  if (!m_cursor.isAtName()) m_cursor.fail(element);
  if (m_cursor.readName() != m_open.back().tag) m_cursor.fail(tagMismatch);
  m_cursor.skipWhitespace();
  if (m_cursor.peek() != '>') m_cursor.fail(element);
  return endElement();
}

/// Ends the innermost element. The position is on its ">".
XmlEvent XmlReader::endElement() {
  m_cursor.advance();
  m_attributes.resize(m_open.back().firstAttribute);
  m_open.pop_back();
  m_countsBracket = false;
  if (m_open.empty()) m_place = Place::AfterRoot;
  return XmlEvent::EndElement;
}

}  // namespace ztcad
