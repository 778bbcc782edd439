#include "plain_reader.h"

#include <algorithm>
#include <cstring>

#include "../text/wide_utf8.h"

namespace ztcad {

namespace {

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
  return text.size() == lowerCase.size() &&
         std::equal(text.begin(), text.end(), lowerCase.begin(),
                    [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

bool isBlank(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return isSpace(c.unicode()); });
}

const char* endWithoutWhitespace(std::string_view bytes) {
  while (!bytes.empty() && isWhitespace(bytes.back()))
    bytes.remove_suffix(1);
  return bytes.data() + bytes.size();
}

}  // namespace

PlainReader::PlainReader(std::string_view bytes, XmlBytes kind, ReadObserver* observer)
    : m_at(bytes.data()), m_end(endWithoutWhitespace(bytes)), m_observer(observer) {
  require(m_at != m_end && m_end[-1] == '>');
  readDeclaration(kind);
}

/// Reads <?xml version="1.0" encoding="..." standalone="..."?>, if present; its last two attributes are
/// optional.
void PlainReader::readDeclaration(XmlBytes kind) {
  const bool hasByteOrderMark = startsWith("\xEF\xBB\xBF");
  require(!hasByteOrderMark || kind != XmlBytes::Decoded);
  if (hasByteOrderMark) m_at += 3;
  if (!startsWith("<?xml ")) return;
  m_at += std::strlen("<?xml");
  std::string_view encoding = "utf-8";
  constexpr std::string_view expected[] = {"version", "encoding", "standalone"};
  std::size_t next = 0;
  while (skipWhitespace() && *m_at != '?') {
    PlainAttribute attribute;
    readAttribute(attribute);
    require(next > 0 || attribute.name == expected[0]);
    while (next < 3 && expected[next] != attribute.name)
      ++next;
    require(next < 3 && !attribute.hasReferences && attribute.isAscii);
    if (next == 0) require(attribute.value == "1.0");
    if (next == 1) encoding = attribute.value;
    if (next == 2) require(attribute.value == "yes" || attribute.value == "no");
    ++next;
  }
  require(next > 0);
  skip('?');
  skip('>');
  if (kind != XmlBytes::AsDeclared || equalsIgnoringCase(encoding, "utf-8")) return;
  require(!hasByteOrderMark && equalsIgnoringCase(encoding, "windows-1251"));
  m_decoder.useWindows1251();
}

/// Reads whitespace, comments and processing instructions outside the root, up to and including the next "<",
/// or to the end.
void PlainReader::readBetweenElements() {
  while (true) {
    if (m_at == m_end) return;
    skipWhitespace();
    skip('<');
    if (!readIgnored()) return;
  }
}

bool PlainReader::nextChild(std::string_view tag, ReadObserver* observer) {
  while (true) {
    require(m_at != m_end);
    skipWhitespace();
    if (*m_at != '<') {
      const std::string_view text = readUntilMarkup();
      m_decoder.checkText(text);
      if (observer && !isBlank(m_decoder.characters(text))) observer->unreadText(tag.data() - 1, text.data());
    }
    ++m_at;
    if (*m_at == '/') {
      readEndTag(tag);
      return false;
    }
    if (isAtCdata())
      readCdata();
    else if (!readIgnored())
      return true;
  }
}

std::string_view PlainReader::readText(std::string_view tag) {
  std::string_view text = readUntilMarkup();
  ++m_at;
  if (text.empty() && isAtCdata()) {
    text = readCdata();
    skip('<');
  }
  require(*m_at == '/');
  readEndTag(tag);
  // As for Qt, whitespace alone is no text; which characters beyond ASCII are whitespace is left to Qt.
  const auto first = std::find_if_not(text.begin(), text.end(), isWhitespace);
  if (first == text.end()) return text.substr(text.size());
  require(classOf(*first) != NonAscii);
  return text;
}

std::string_view PlainReader::readUntilMarkup() {
  const char* const first = m_at;
  const void* const found = std::memchr(first, '<', static_cast<std::size_t>(m_end - first));
  require(found != nullptr);
  m_at = static_cast<const char*>(found);
  return since(first);
}

std::string_view PlainReader::readName() {
  const char* const first = m_at;
  require(isLetter(*first));
  const char* at = first + 1;
  while (isNameCharacter(*at))
    ++at;
  m_at = at;
  require(static_cast<std::size_t>(at - first) <= limits.text);
  return since(first);
}

void PlainReader::readEndTag(std::string_view tag) {
  ++m_at;  // the slash
  require(startsWith(tag));
  m_at += tag.size();
  skip('>');
}

/// Reads a comment or processing instruction, if that follows the "<".
bool PlainReader::readIgnored() {
  if (*m_at == '!') {
    readComment();
    return true;
  }
  if (*m_at == '?') {
    readInstruction();
    return true;
  }
  return false;
}

/// Only names that are no part of XML, and data without a "?" before its end, which parsers treat in
/// different ways.
void PlainReader::readInstruction() {
  if (m_observer) m_observer->unreadMarkup(ReadObserver::Markup::Instruction, m_at - 1);
  ++m_at;
  const std::string_view target = readName();
  require(!equalsIgnoringCase(target.substr(0, 3), "xml"));
  require(skipWhitespace() || *m_at == '?');
  const char* const data = m_at;
  const void* const end = std::memchr(data, '?', static_cast<std::size_t>(m_end - data));
  require(end != nullptr);
  m_at = static_cast<const char*>(end);
  m_decoder.checkComment(since(data));
  ++m_at;
  skip('>');
}

void PlainReader::readComment() {
  require(startsWith("!--"));
  if (m_observer) m_observer->unreadMarkup(ReadObserver::Markup::Comment, m_at - 1);
  m_at += 3;
  const std::string_view rest(m_at, static_cast<std::size_t>(m_end - m_at));
  const std::size_t end = rest.find("--");
  require(end != std::string_view::npos);
  m_decoder.checkComment(rest.substr(0, end));
  m_at += end + 2;
  skip('>');
}

/// The section is all that an element holds, or lies between elements, where it is not read. A review, which
/// reports that, reads such a document by the general reader.
std::string_view PlainReader::readCdata() {
  require(!m_observer);
  m_at += startOfCdata.size();
  const std::string_view rest(m_at, static_cast<std::size_t>(m_end - m_at));
  const std::size_t end = rest.find("]]>");
  require(end != std::string_view::npos);
  const std::string_view text = rest.substr(0, end);
  m_decoder.checkComment(text);
  m_at += end + 3;
  return text;
}

PlainStartTag PlainReader::readAnyStartTag() {
  const std::string_view name = readName();
  PlainStartTag tag = {name, m_attributeCount, m_attributeCount, false, m_tagTexts.find(name)};
  while (true) {
    const bool isSeparated = skipWhitespace();
    if (*m_at == '>' || *m_at == '/') break;
    require(isSeparated);
    if (tag.attributeEnd == m_attributes.size()) m_attributes.emplace_back();
    readAttribute(m_attributes[tag.attributeEnd++]);
  }
  tag.isEmpty = *m_at == '/';
  if (tag.isEmpty) ++m_at;
  skip('>');
  return tag;
}

/// Reads a start tag that equals the last one except for its attribute values: the bytes between the values
/// are compared, not parsed. False, with the position unchanged, for any other start tag; the values of the
/// last one are overwritten then.
bool PlainReader::readSibling() {
  const char* const first = m_at;
  const PlainStartTag& last = m_siblings.last();
  const std::string_view lastBytes = m_siblings.lastBytes();
  const char* const lastEnd = lastBytes.data() + lastBytes.size();
  const char* same = lastBytes.data();                      // in the last tag, what is at m_at in this one
  const char* sameEnd = same + equalLength(same, lastEnd);  // the bytes up to here are those from m_at on
  for (std::size_t i = last.firstAttribute; i != last.attributeEnd; ++i) {
    PlainAttribute& attribute = m_attributes[i];
    const char* const value = attribute.value.data();
    const char* const valueEnd = value + attribute.value.size();
    if (sameEnd < value) break;
    m_at += value - same;
    if (sameEnd > valueEnd) {  // the same value, with its quote
      attribute.value = {m_at, attribute.value.size()};
      attribute.isRead = false;
      m_at += attribute.value.size();
      same = valueEnd;
    } else {
      readValue(attribute);
      same = valueEnd;
      sameEnd = same + equalLength(same, lastEnd);
    }
  }
  const bool isSibling = sameEnd == lastEnd;
  m_at = isSibling ? m_at + (lastEnd - same) : first;
  return isSibling;
}

void PlainReader::readAttribute(PlainAttribute& attribute) {
  attribute.name = readName();
  attribute.key = keyOf(attribute.name.data(), attribute.name.size());
  skip('=');
  require(*m_at == '"' || *m_at == '\'');
  ++m_at;
  readValue(attribute);
  ++m_at;
}

/// Reads a value up to its closing quote. The position is after the opening one.
void PlainReader::readValue(PlainAttribute& attribute) {
  const char quote = m_at[-1];
  const char* const first = m_at;
  const char* at = first;
  attribute.hasReferences = false;
  attribute.isAscii = true;
  attribute.isRead = false;
  while (true) {
    at = skipValueCharacters(at, m_end);
    require(at != m_end);
    if (*at == quote) break;
    const CharacterClass kind = classOf(*at);
    if (kind == NonAscii) {
      attribute.isAscii = false;
      while (classOf(at[1]) == NonAscii)  // usually a whole word
        ++at;
    } else if (*at == '&') {
      attribute.hasReferences = true;
    } else {
      require(kind == Ordinary);  // the other quote
    }
    ++at;
  }
  m_at = at;
  attribute.value = since(first);
  if (!attribute.isAscii) m_decoder.checkNonAscii(attribute.value);
  if (attribute.hasReferences)
    m_decoder.withoutReferences(attribute.value);  // validates values that nobody asks for
}

const PlainAttribute* PlainReader::searchAttribute(const PlainStartTag& tag, const QString& name) const {
  const quint64 key = keyOf(name.constData(), static_cast<std::size_t>(name.size()));
  for (std::size_t i = tag.attributeEnd; i > tag.firstAttribute; --i) {  // the last duplicate wins, as in Qt
    const PlainAttribute& attribute = m_attributes[i - 1];
    if (attribute.key == key && equalsAscii(name, attribute.name)) return &attribute;
  }
  return nullptr;
}

}  // namespace ztcad
