#include "xml_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "../text/wide_utf8.h"
#include "../text/windows1251.h"

namespace ztcad {

namespace {

constexpr std::size_t pieceSize = 65536;
/// A longer value is not kept encoded until its start tag ends, so that saves need little memory.
constexpr qsizetype longestEncoded = 4096;

/// A character and its number of UTF-16 units. An unpaired surrogate counts as a character.
struct Decoded {
  char32_t character;
  qsizetype units;
};

Decoded decode(QStringView text, qsizetype at) {
  const QChar first = text.at(at);
  if (first.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate())
    return {QChar::surrogateToUcs4(first, text.at(at + 1)), 2};
  return {first.unicode(), 1};
}

/// Whether every parser takes the unescaped character for the end of the text.
bool endsParsing(char32_t character) { return character == 0 || character == 0xfffe || character == 0xffff; }

/// Whether the `>` at `at` follows two brackets: text must not contain the end of a CDATA section.
bool closesCdata(QStringView text, qsizetype at) {
  return at >= 2 && text.at(at - 1) == QLatin1Char(']') && text.at(at - 2) == QLatin1Char(']');
}

bool isAscii(char32_t character) { return character < 128; }

/// Appends units below 128.
void appendAscii(const char16_t* units, qsizetype count, ByteBuffer& out) {
  char* const room = out.room(static_cast<std::size_t>(count));
  for (qsizetype i = 0; i < count; ++i)
    room[i] = static_cast<char>(units[i]);
  out.commit(room + count);
}

void appendReference(char32_t character, ByteBuffer& out) {
  char digits[8];
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits), static_cast<quint32>(character), 16).ptr;
  out += "&#x";
  out += std::string_view(digits, static_cast<std::size_t>(end - digits));
  out += ';';
}

/// Appends the character at `at`, which may need escaping; returns its number of units.
qsizetype appendSpecial(QStringView text, qsizetype at, const CharacterEncoder& encoder, ByteBuffer& out) {
  const Decoded next = decode(text, at);
  switch (next.character) {
    case '<':
      out += "&lt;";
      break;
    case '&':
      out += "&amp;";
      break;
    case '"':
      out += "&quot;";
      break;
    case '>':
      out += at >= 2 && closesCdata(text, at) ? "&gt;" : ">";
      break;
    default:
      if (isAscii(next.character) || QChar::isSurrogate(next.character) || endsParsing(next.character) ||
          !encoder.append(next.character, out))
        appendReference(next.character, out);
  }
  return next.units;
}

}  // namespace

struct XmlWriter::Specials {
  std::array<bool, 128> is{};

  constexpr explicit Specials(std::string_view characters) {
    for (const char character : characters)
      is[static_cast<unsigned char>(character)] = true;
  }

  /// Appends the units from `at` on that need no escaping, at most one piece; returns their number.
  qsizetype appendRun(QStringView text, qsizetype at, ByteBuffer& out) const {
    const char16_t* const units = text.utf16() + at;
    const qsizetype limit = std::min(text.size() - at, static_cast<qsizetype>(pieceSize));
    qsizetype run = 0;
    while (run < limit && units[run] < 128 && !is[units[run]])
      ++run;
    appendAscii(units, run, out);
    return run;
  }

  /// Appends the units from `at` on: those that need no escaping, or one character; returns their number.
  qsizetype append(QStringView text, qsizetype at, const CharacterEncoder& encoder, ByteBuffer& out) const {
    const qsizetype run = appendRun(text, at, out);
    return run > 0 ? run : appendSpecial(text, at, encoder, out);
  }
};

// both sets contain NUL: see endsParsing
constexpr XmlWriter::Specials XmlWriter::textSpecials{std::string_view("<&>\r\0", 5)};
constexpr XmlWriter::Specials XmlWriter::valueSpecials{std::string_view("<&>\r\0\"\t\n", 8)};
constexpr XmlWriter::Specials XmlWriter::noSpecials{std::string_view()};

void CharacterEncoder::appendBare(char32_t character, ByteBuffer& out) const {
  if (!append(character, out)) out += '?';
}

bool Windows1251Encoder::append(char32_t character, ByteBuffer& out) const {
  const auto byte = windows1251FromUnicode(character);
  if (byte) out += static_cast<char>(*byte);
  return byte.has_value();
}

XmlWriter::XmlWriter(ByteOutput& output, const CharacterEncoder& encoder, int indent)
    : m_output(output), m_encoder(encoder), m_indent(static_cast<std::size_t>(std::max(indent, 0))) {
  m_buffer.room(2 * pieceSize);
}

void XmlWriter::startElement(const QString& tag) {
  beginLine();
  if (m_names.trim()) m_lastAttributes.clear();
  m_startTag = nameOf(tag);
  m_buffer += '<';
  m_buffer += m_names.bytes(m_startTag);
  if (m_tags.size() == m_depth) m_tags.emplace_back();
  QString& kept = m_tags[m_depth++];
  if (kept.constData() != tag.constData()) kept = tag;  // siblings usually have the same tag
  m_startTagIsOpen = true;
}

/// Appends the units from `at` on without escaping: ASCII, or one other character; returns their number.
qsizetype XmlWriter::appendUnescaped(QStringView text, qsizetype at, ByteBuffer& out) const {
  const qsizetype run = noSpecials.appendRun(text, at, out);
  if (run > 0) return run;
  const Decoded next = decode(text, at);
  if (QChar::isSurrogate(next.character)) {
    out += '?';
  } else {
    m_encoder.appendBare(next.character, out);
  }
  return next.units;
}

NameCache::Index XmlWriter::nameOf(const QString& name) {
  return m_names.find(name, [this](const QString& newName) {
    ByteBuffer bytes;
    for (qsizetype at = 0; at < newName.size();)
      at += appendUnescaped(newName, at, bytes);
    return std::string(bytes.bytes());
  });
}

void XmlWriter::attribute(const QString& name, const QString& value) {
  const NameCache::Index index = nameOf(name);
  const std::size_t begin = m_written.size();
  m_written += m_names.attributeStart(index);
  std::uint32_t longValue = 0;
  if (value.size() <= longestEncoded) {
    for (qsizetype at = 0; at < value.size();)
      at += valueSpecials.append(value, at, m_encoder, m_written);
    m_written += '"';
  } else {
    m_longValues.push_back(value);
    longValue = static_cast<std::uint32_t>(m_longValues.size());
  }
  addAttribute(index, begin, longValue);
}

bool XmlWriter::isPlainValue(std::string_view ascii) {
  return std::none_of(ascii.begin(), ascii.end(),
                      [](char c) { return valueSpecials.is[static_cast<unsigned char>(c)]; });
}

void XmlWriter::plainAttribute(const QString& name, std::string_view ascii) {
  const NameCache::Index index = nameOf(name);
  const std::size_t begin = m_written.size();
  m_written += m_names.attributeStart(index);
  m_written += ascii;
  m_written += '"';
  addAttribute(index, begin);
}

/// Field by field: a copy of the whole would wait until each field has been written.
void XmlWriter::addAttribute(NameCache::Index name, std::size_t begin, std::uint32_t longValue) {
  Attribute& attribute = m_attributes.emplace_back();
  attribute.name = name;
  attribute.longValue = longValue;
  attribute.begin = begin;
  attribute.end = m_written.size();
}

void XmlWriter::endElement() {
  const QString& tag = m_tags[--m_depth];
  if (m_startTagIsOpen) {
    closeStartTag("/>");
  } else {
    beginLine();
    m_buffer += "</";
    m_buffer += m_names.bytes(nameOf(tag));
    m_buffer += '>';
  }
  m_lineEndIsDue = true;
  flushIfFull();
}

void XmlWriter::text(const QString& text) {
  beginText();
  writeEscaped(text, textSpecials);
}

void XmlWriter::plainText(std::string_view ascii) {
  if (ascii.empty()) return;
  beginText();
  for (; !ascii.empty(); ascii.remove_prefix(std::min(ascii.size(), pieceSize))) {
    m_buffer += ascii.substr(0, pieceSize);
    flushIfFull();
  }
}

bool XmlWriter::isPlainText(std::string_view text) {
  return ztcad::isAscii(text) && std::none_of(text.begin(), text.end(), [](char c) {
           return textSpecials.is[static_cast<unsigned char>(c)];
         });
}

void XmlWriter::cdata(const QString& text) {
  beginText();
  m_buffer += "<![CDATA[";
  writeUnescaped(text);
  m_buffer += "]]>";
}

void XmlWriter::comment(const QString& text) {
  beginLine();
  m_buffer += "<!--";
  writeUnescaped(text);
  if (text.endsWith(QLatin1Char('-'))) m_buffer += ' ';  // "--->" would not end the comment
  m_buffer += "-->";
  m_lineEndIsDue = true;
}

void XmlWriter::entityReference(const QString& name) {
  beginInLine();
  m_buffer += '&';
  writeUnescaped(name);
  m_buffer += ';';
}

void XmlWriter::processingInstruction(const QString& target, const QString& data) {
  beginInLine();
  m_buffer += "<?";
  writeUnescaped(target);
  m_buffer += ' ';
  writeUnescaped(data);
  m_buffer += "?>\n";
}

void XmlWriter::documentType(const QString& declaration) {
  beginInLine();
  writeUnescaped(declaration);
  m_buffer += '\n';
}

void XmlWriter::finish() {
  beginInLine();
  m_output.write(m_buffer.bytes());
  m_buffer.clear();
}

void XmlWriter::beginLine() {
  const bool isBesideText = m_isBesideText;
  beginInLine();
  if (!isBesideText) writeIndent();
}

void XmlWriter::beginInLine() {
  if (m_startTagIsOpen) closeStartTag(">");
  if (m_lineEndIsDue) m_buffer += '\n';
  m_lineEndIsDue = false;
  m_isBesideText = false;
}

void XmlWriter::beginText() {
  if (m_startTagIsOpen) closeStartTag(">");
  m_lineEndIsDue = false;
  m_isBesideText = true;
}

void XmlWriter::closeStartTag(std::string_view closing) {
  for (const std::size_t place : attributeOrder()) {
    const Attribute& attribute = m_attributes[place];
    m_buffer += m_written.bytes().substr(attribute.begin, attribute.end - attribute.begin);
    if (attribute.longValue > 0) {
      writeEscaped(m_longValues[attribute.longValue - 1], valueSpecials);
      m_buffer += '"';
    }
    flushIfFull();
  }
  m_attributes.clear();
  m_written.clear();
  m_longValues.clear();
  m_buffer += closing;
  m_startTagIsOpen = false;
  m_lineEndIsDue = true;
}

/// The places of the attributes that are written, in the order of their names.
const std::vector<std::size_t>& XmlWriter::attributeOrder() {
  if (m_startTag >= m_lastAttributes.size()) m_lastAttributes.resize(m_startTag + 1);
  LastAttributes& last = m_lastAttributes[m_startTag];
  const bool areSame =
      std::equal(m_attributes.begin(), m_attributes.end(), last.names.begin(), last.names.end(),
                 [](const Attribute& attribute, NameCache::Index name) { return attribute.name == name; });
  if (!areSame) orderAttributes(last);
  return last.order;
}

void XmlWriter::orderAttributes(LastAttributes& last) {
  last.names.clear();
  last.order.clear();
  for (const Attribute& attribute : m_attributes) {
    last.order.push_back(last.names.size());
    last.names.push_back(attribute.name);
  }
  const auto rankAt = [&](std::size_t place) { return m_names.rank(last.names[place]); };
  std::sort(last.order.begin(), last.order.end(),
            [&](std::size_t a, std::size_t b) { return std::pair(rankAt(a), a) < std::pair(rankAt(b), b); });
  // of several values of one name, the last one is written
  const auto isSame = [&](std::size_t a, std::size_t b) { return last.names[a] == last.names[b]; };
  const auto firstKept = std::unique(last.order.rbegin(), last.order.rend(), isSame).base();
  last.order.erase(last.order.begin(), firstKept);
}

void XmlWriter::writeIndent() { m_buffer.append(m_depth * m_indent, ' '); }

void XmlWriter::writeUnescaped(QStringView text) {
  for (qsizetype at = 0; at < text.size(); flushIfFull())
    at += appendUnescaped(text, at, m_buffer);
}

void XmlWriter::writeEscaped(QStringView text, const Specials& specials) {
  for (qsizetype at = 0; at < text.size(); flushIfFull())
    at += specials.append(text, at, m_encoder, m_buffer);
}

void XmlWriter::flushIfFull() {
  if (m_buffer.size() < pieceSize) return;
  m_output.write(m_buffer.bytes());
  m_buffer.clear();
}

}  // namespace ztcad
