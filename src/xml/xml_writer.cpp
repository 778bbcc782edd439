#include "xml_writer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "../text/windows1251.h"

namespace ztcad {

namespace {

constexpr std::size_t pieceSize = 65536;

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

void appendAscii(const char16_t* units, qsizetype count, std::string& out) {
  const std::size_t before = out.size();
  out.resize(before + static_cast<std::size_t>(count));
  std::transform(units, units + count, out.begin() + static_cast<std::ptrdiff_t>(before),
                 [](char16_t unit) { return static_cast<char>(unit); });
}

}  // namespace

struct XmlWriter::Specials {
  std::array<bool, 128> is{};

  constexpr explicit Specials(std::string_view characters) {
    for (const char character : characters)
      is[static_cast<unsigned char>(character)] = true;
  }

  /// Number of units at the start of `units` that need no escaping; at most one piece, to keep the buffer
  /// small.
  qsizetype plainRun(const char16_t* units, qsizetype count) const {
    const qsizetype limit = std::min(count, static_cast<qsizetype>(pieceSize));
    qsizetype run = 0;
    while (run < limit && units[run] < 128 && !is[units[run]])
      ++run;
    return run;
  }
};

// both sets contain NUL: see endsParsing
constexpr XmlWriter::Specials XmlWriter::textSpecials{std::string_view("<&>\r\0", 5)};
constexpr XmlWriter::Specials XmlWriter::valueSpecials{std::string_view("<&>\r\0\"\t\n", 8)};
constexpr XmlWriter::Specials XmlWriter::noSpecials{std::string_view()};

void CharacterEncoder::appendBare(char32_t character, std::string& out) const {
  if (!append(character, out)) out += '?';
}

bool Windows1251Encoder::append(char32_t character, std::string& out) const {
  const auto byte = windows1251FromUnicode(character);
  if (byte) out += static_cast<char>(*byte);
  return byte.has_value();
}

XmlWriter::XmlWriter(ByteOutput& output, const CharacterEncoder& encoder, int indent)
    : m_output(output), m_encoder(encoder), m_indent(static_cast<std::size_t>(std::max(indent, 0))) {
  m_buffer.reserve(2 * pieceSize);
}

void XmlWriter::startElement(const QString& tag) {
  beginLine();
  m_buffer += '<';
  writeUnescaped(tag);
  m_openTags.push_back(tag);
  m_startTagIsOpen = true;
}

void XmlWriter::attribute(const QString& name, const QString& value) {
  const auto place =
      std::lower_bound(m_attributes.begin(), m_attributes.end(), name,
                       [](const auto& present, const QString& sought) { return present.first < sought; });
  if (place != m_attributes.end() && place->first == name) {
    place->second = value;
  } else {
    m_attributes.emplace(place, name, value);
  }
}

void XmlWriter::endElement() {
  const QString tag = std::move(m_openTags.back());
  m_openTags.pop_back();
  if (m_startTagIsOpen) {
    closeStartTag("/>");
  } else {
    beginLine();
    m_buffer += "</";
    writeUnescaped(tag);
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
  m_output.write(m_buffer);
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
  for (const auto& [name, value] : m_attributes) {
    m_buffer += ' ';
    writeUnescaped(name);
    m_buffer += "=\"";
    writeEscaped(value, valueSpecials);
    m_buffer += '"';
  }
  m_attributes.clear();
  m_buffer += closing;
  m_startTagIsOpen = false;
  m_lineEndIsDue = true;
}

void XmlWriter::writeIndent() { m_buffer.append(m_openTags.size() * m_indent, ' '); }

void XmlWriter::writeUnescaped(QStringView text) {
  for (qsizetype at = 0; at < text.size();) {
    at += writePlainRun(text, at, noSpecials);
    if (at < text.size() && text.at(at).unicode() > 127) at += writeUnescapedCharacter(text, at);
    flushIfFull();
  }
}

qsizetype XmlWriter::writeUnescapedCharacter(QStringView text, qsizetype at) {
  const Decoded next = decode(text, at);
  if (QChar::isSurrogate(next.character)) {
    m_buffer += '?';
  } else {
    m_encoder.appendBare(next.character, m_buffer);
  }
  return next.units;
}

void XmlWriter::writeEscaped(QStringView text, const Specials& specials) {
  for (qsizetype at = 0; at < text.size();) {
    const qsizetype run = writePlainRun(text, at, specials);
    at += run > 0 ? run : writeSpecial(text, at);
    flushIfFull();
  }
}

/// Writes the units from `at` on that need no escaping, at most one piece; returns their number.
qsizetype XmlWriter::writePlainRun(QStringView text, qsizetype at, const Specials& specials) {
  const char16_t* const units = text.utf16() + at;
  const qsizetype run = specials.plainRun(units, text.size() - at);
  appendAscii(units, run, m_buffer);
  return run;
}

/// Writes the character at `at`, which may need escaping; returns its number of units.
qsizetype XmlWriter::writeSpecial(QStringView text, qsizetype at) {
  const Decoded next = decode(text, at);
  switch (next.character) {
    case '<':
      m_buffer += "&lt;";
      break;
    case '&':
      m_buffer += "&amp;";
      break;
    case '"':
      m_buffer += "&quot;";
      break;
    case '>':
      m_buffer += at >= 2 && closesCdata(text, at) ? "&gt;" : ">";
      break;
    default:
      if (isAscii(next.character) || QChar::isSurrogate(next.character) || endsParsing(next.character) ||
          !m_encoder.append(next.character, m_buffer))
        writeReference(next.character);
  }
  return next.units;
}

void XmlWriter::writeReference(char32_t character) {
  char digits[8];
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits), static_cast<quint32>(character), 16).ptr;
  m_buffer += "&#x";
  m_buffer.append(digits, end);
  m_buffer += ';';
}

void XmlWriter::flushIfFull() {
  if (m_buffer.size() < pieceSize) return;
  m_output.write(m_buffer);
  m_buffer.clear();
}

}  // namespace ztcad
