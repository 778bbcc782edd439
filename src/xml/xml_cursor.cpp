#include "xml_cursor.h"

#include "../text/text_limits.h"
#include "../text/wide_utf8.h"
#include "plain_characters.h"

namespace ztcad {

bool XmlCursor::isAtAnyName() const { return startsName(utf8Character(m_at).code); }

std::string_view XmlCursor::readName() {
  if (!isAtName()) fail(xml_messages::letter);
  const char* const first = m_at;
  while (!atEnd() && static_cast<unsigned char>(*m_at) < nameBytes.size() &&
         nameBytes[static_cast<unsigned char>(*m_at)] != NameByte::None)
    ++m_at;
  if (!atEnd() && static_cast<unsigned char>(*m_at) >= nameBytes.size()) {
    m_at = first;
    advance(nameLength(rest()));
  }
  if (atEnd()) failAtEnd();
  const std::string_view name(first, static_cast<std::size_t>(m_at - first));
  if (name.size() > limits.text) refuseText(static_cast<std::size_t>(first - m_text), TooLong::text);
  return name;
}

std::string_view XmlCursor::readToken() {
  const char* const first = m_at;
  if (atEnd()) failAtEnd();
  while (!atEnd()) {
    const Utf8Character next = utf8Character(m_at);
    if (!isInName(next.code)) break;
    advance(next.length);
  }
  if (m_at == first) fail(xml_messages::letter);
  if (atEnd()) failAtEnd();
  return {first, static_cast<std::size_t>(m_at - first)};
}

void XmlCursor::readWord(std::string_view word) {
  for (const char expected : word) {
    if (peek() != expected) fail(xml_messages::unexpectedCharacter);
    advance();
  }
}

XmlAttribute XmlCursor::readAttribute() {
  XmlAttribute attribute;
  attribute.name = readName();
  attribute.key = keyOf(attribute.name.data(), attribute.name.size());
  skipWhitespace();
  if (peek() != '=') fail(xml_messages::unexpectedCharacter);
  advance();
  skipWhitespace();
  readValue(attribute);
  return attribute;
}

void XmlCursor::readValue(XmlAttribute& attribute) {
  const char quote = peek();
  if (quote != '"' && quote != '\'') fail(xml_messages::unexpectedCharacter);
  advance();
  const char* const end = skipValueCharacters(m_at, m_end);
  if (end != m_end && *end == quote) {
    attribute.value = {m_at, static_cast<std::size_t>(end - m_at)};
    m_at = end;
  } else {
    readAnyValue(attribute, quote);
  }
  advance();
}

/// Reads a value that may hold more than plain characters, up to its closing quote.
void XmlCursor::readAnyValue(XmlAttribute& attribute, char quote) {
  attribute.value = rest().substr(0, rest().find(quote));
  attribute.isAscii = isAscii(attribute.value);
  const std::size_t tag = attribute.value.find('<');
  const std::string_view beforeTag = attribute.value.substr(0, tag);
  std::size_t at = beforeTag.find('&');
  attribute.hasReferences = at != std::string_view::npos;
  while (at != std::string_view::npos)
    at = beforeTag.find('&', at + checkedReference(m_at + at).length);
  advance(beforeTag.size());
  if (tag != std::string_view::npos) fail(xml_messages::unexpectedCharacter);
  if (atEnd()) failAtEnd();
}

XmlReference XmlCursor::readReference() {
  const XmlReference reference = checkedReference(m_at);
  advance(reference.length);
  return reference;
}

/// The reference at `at`. Fails if it is ill-formed.
XmlReference XmlCursor::checkedReference(const char* at) const {
  const XmlReference reference = referenceAtStart({at, static_cast<std::size_t>(m_end - at)});
  switch (reference.kind) {
    case XmlReference::Kind::NoName:
      failAt(at + reference.length, xml_messages::letter);
    case XmlReference::Kind::IllFormed:
      failAt(at + reference.length, xml_messages::illFormedReference);
    case XmlReference::Kind::Incomplete:
      failAtEnd();
    default:
      return reference;
  }
}

std::string_view XmlCursor::readUpTo(std::string_view closing) {
  const std::string_view inside = rest().substr(0, rest().find(closing));
  if (inside.size() == rest().size()) failAtEnd();
  advance(inside.size() + closing.size());
  return inside;
}

std::string_view XmlCursor::readComment() {
  for (int dash = 0; dash < 2; ++dash) {
    if (peek() != '-') fail(xml_messages::comment);
    advance();
  }
  const std::string_view inside = readUpTo("--");
  if (peek() != '>') fail(xml_messages::comment);
  advance();
  return inside;
}

XmlInstruction XmlCursor::readInstruction() {
  XmlInstruction instruction;
  instruction.target = readTarget();
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  const std::string_view target = instruction.target;
  if (target.size() == 3 && lower(target[0]) == 'x' && lower(target[1]) == 'm' && lower(target[2]) == 'l')
    fail(xml_messages::instructionName);
  instruction.data = readInstructionData();
  return instruction;
}

std::string_view XmlCursor::readTarget() {
  advance();  // the question mark
  if (!isAtName()) fail(xml_messages::unexpectedCharacter);
  return readName();
}

std::string_view XmlCursor::readInstructionData() {
  if (!isAtWhitespace() && peek() != '?') fail(xml_messages::unexpectedCharacter);
  skipWhitespace();
  return readUpTo("?>");
}

void XmlCursor::failAtEnd() const { failAt(m_end, xml_messages::unexpectedEnd); }

void XmlCursor::failAt(const char* at, const char* message) const {
  throw XmlError{message, static_cast<std::size_t>(at - m_text), false};
}

}  // namespace ztcad
