#include "source_lines.h"

#include <algorithm>
#include <map>

#include "../info/contents.h"
#include "../loaded_document.h"

namespace cli {

namespace {

constexpr std::int64_t linesAtEachSide = 2;
constexpr std::int64_t longestText = 160;  // characters
constexpr std::int64_t charactersBeforePlace = 60;

bool startsWith(std::string_view bytes, std::string_view start) {
  return bytes.substr(0, start.size()) == start;
}

/// The code units of a text.
struct Units {
  std::size_t size = 1;  // bytes of a unit
  bool isBigEndian = false;
  bool isUtf8 = false;
  std::size_t start = 0;  // after the byte order mark

  char32_t at(std::string_view bytes, std::size_t offset) const {
    char32_t unit = 0;
    for (std::size_t i = 0; i < size; ++i)
      unit = unit << 8U | static_cast<unsigned char>(bytes[offset + (isBigEndian ? i : size - 1 - i)]);
    return unit;
  }
  /// Whether a unit continues the character of the unit before it.
  bool continues(char32_t unit) const {
    if (size == 2) return unit >= 0xdc00 && unit < 0xe000;
    return isUtf8 && (unit & 0xc0U) == 0x80;
  }
};

/// The declaration of an XML text in bytes: "<?xml ... ?>"; empty if there is none.
std::string_view declarationOf(std::string_view bytes) {
  if (!startsWith(bytes, "<?xml")) return {};
  const std::size_t end = bytes.substr(0, 1000).find("?>");
  return end == std::string_view::npos ? std::string_view() : bytes.substr(0, end + 2);
}

bool declaresAnotherEncoding(std::string_view declaration) {
  const std::size_t at = declaration.find("encoding");
  if (at == std::string_view::npos) return false;
  std::string name(declaration.substr(at));
  std::transform(name.begin(), name.end(), name.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return name.find("UTF-8") == std::string::npos;
}

Units unitsOf(std::string_view bytes) {
  using namespace std::string_view_literals;
  if (startsWith(bytes, "\xff\xfe\0\0"sv)) return {4, false, false, 4};
  if (startsWith(bytes, "\0\0\xfe\xff"sv)) return {4, true, false, 4};
  if (startsWith(bytes, "<\0\0\0"sv)) return {4, false, false, 0};
  if (startsWith(bytes, "\0\0\0<"sv)) return {4, true, false, 0};
  if (startsWith(bytes, "\xff\xfe")) return {2, false, false, 2};
  if (startsWith(bytes, "\xfe\xff")) return {2, true, false, 2};
  if (startsWith(bytes, "<\0"sv)) return {2, false, false, 0};
  if (startsWith(bytes, "\0<"sv)) return {2, true, false, 0};
  if (startsWith(bytes, "\xef\xbb\xbf")) return {1, false, true, 3};
  return {1, false, !declaresAnotherEncoding(declarationOf(bytes)), 0};
}

void appendUtf8(std::string& text, char32_t character) {
  const auto byte = [&](char32_t bits) { text += static_cast<char>(bits); };
  if (character > 0x10ffff || (character >= 0xd800 && character < 0xe000)) character = 0xfffd;
  if (character < 0x80) {
    byte(character);
  } else if (character < 0x800) {
    byte(0xc0 | character >> 6U);
    byte(0x80 | (character & 0x3fU));
  } else if (character < 0x10000) {
    byte(0xe0 | character >> 12U);
    byte(0x80 | (character >> 6U & 0x3fU));
    byte(0x80 | (character & 0x3fU));
  } else {
    byte(0xf0 | character >> 18U);
    byte(0x80 | (character >> 12U & 0x3fU));
    byte(0x80 | (character >> 6U & 0x3fU));
    byte(0x80 | (character & 0x3fU));
  }
}

/// UTF-16 or UTF-32 as UTF-8.
std::string decodedUnits(std::string_view bytes, const Units& units) {
  std::string text;
  for (std::size_t i = 0; i + units.size <= bytes.size(); i += units.size) {
    char32_t character = units.at(bytes, i);
    const bool isHigh = units.size == 2 && character >= 0xd800 && character < 0xdc00;
    if (isHigh && i + 4 <= bytes.size() && units.continues(units.at(bytes, i + 2))) {
      character = 0x10000 + ((character - 0xd800) << 10U) + (units.at(bytes, i + 2) - 0xdc00);
      i += 2;
    }
    appendUtf8(text, character);
  }
  return text;
}

/// Decodes texts in the encoding that a declaration names, as the library does: it reads a document that has
/// this declaration and the texts as comments of points.
std::vector<std::string> decodedByLibrary(std::string_view declaration,
                                          const std::vector<std::string_view>& texts) {
  std::string document(declaration);
  document += "<GMD>";
  for (const std::string_view text : texts) {
    document += "<point name=\"\" comment=\"";
    for (const char character : text) {
      if (character == '&')
        document += "&amp;";
      else if (character == '<')
        document += "&lt;";
      else if (character == '"')
        document += "&quot;";
      else
        document += character >= 0 && character < ' ' ? ' ' : character;
    }
    document += "\"/>\n";
  }
  document += "</GMD><!-- \xff: no UTF-8, as which the library would read a text that is valid UTF-8 -->";
  const LoadedDocument loaded(
      ztCAD_loadDocumentFromText(document.data(), static_cast<std::int64_t>(document.size()), nullptr));
  std::vector<std::string> decoded;
  if (loaded)
    for (const ztCAD_Base* point : elementsOf(loaded.get(), ztCAD_ElementPoint))
      decoded.push_back(textOf(point, ztCAD_getComment));
  if (decoded.size() != texts.size()) decoded.assign(texts.begin(), texts.end());
  return decoded;
}

struct Range {
  std::size_t begin = 0;
  std::size_t end = 0;
};

class Source {
 public:
  explicit Source(std::string_view bytes) : m_bytes(bytes), m_units(unitsOf(bytes)) {}

  std::vector<std::vector<SourceLine>> around(const std::vector<Place>& places) {
    findLines(places);
    std::vector<std::vector<SourceLine>> result;
    for (const Place& place : places) {
      std::vector<SourceLine>& lines = result.emplace_back();
      const auto last = m_lines.upper_bound(place.line + linesAtEachSide);
      for (auto line = m_lines.lower_bound(place.line - linesAtEachSide); line != last; ++line)
        lines.push_back(line->first == place.line ? cutAround(place, line->second)
                                                  : cut(line->first, line->second.begin, line->second.end));
    }
    decode(result);
    return result;
  }

 private:
  /// Finds where the wanted lines begin and end.
  void findLines(const std::vector<Place>& places) {
    for (const Place& place : places)
      for (std::int64_t line = place.line - linesAtEachSide; line <= place.line + linesAtEachSide; ++line)
        if (line >= 1) m_lines[line];
    std::int64_t number = 1;
    std::size_t begin = m_units.start;
    auto wanted = m_lines.begin();
    const auto end = [&](std::size_t at) {
      if (wanted == m_lines.end() || wanted->first != number) return;
      wanted->second = {begin, at};
      ++wanted;
    };
    for (std::size_t i = begin; i + m_units.size <= m_bytes.size() && wanted != m_lines.end();) {
      const char32_t unit = m_units.at(m_bytes, i);
      const std::size_t at = i;
      i += m_units.size;
      if (unit != '\n' && unit != '\r') continue;
      end(at);
      if (unit == '\r' && i + m_units.size <= m_bytes.size() && m_units.at(m_bytes, i) == '\n')
        i += m_units.size;
      ++number;
      begin = i;
    }
    if (begin < m_bytes.size()) end(m_bytes.size());
    m_lines.erase(wanted, m_lines.end());  // beyond the end
  }

  /// The start of a line.
  SourceLine cut(std::int64_t number, std::size_t begin, std::size_t end) {
    std::int64_t characters = 0;
    std::size_t at = begin;
    for (; at + m_units.size <= end; at += m_units.size)
      if (!m_units.continues(m_units.at(m_bytes, at)) && ++characters > longestText) break;
    m_texts.push_back(m_bytes.substr(begin, std::min(at, end) - begin));
    return {number};
  }

  /// The part of a line around a place. Only that part is looked at: a mesh may be one line of megabytes.
  SourceLine cutAround(const Place& place, const Range& line) {
    const std::size_t middle = std::clamp(static_cast<std::size_t>(place.offset), line.begin, line.end);
    std::size_t begin = middle;
    std::int64_t characters = 0;
    while (begin >= line.begin + m_units.size && characters < charactersBeforePlace) {
      begin -= m_units.size;
      if (!m_units.continues(m_units.at(m_bytes, begin))) ++characters;
    }
    SourceLine result = cut(place.line, begin, line.end);
    result.skipped = begin == line.begin ? 0 : std::max<std::int64_t>(place.column - 1 - characters, 0);
    return result;
  }

  /// Fills in the texts, which are in the order of the lines.
  void decode(std::vector<std::vector<SourceLine>>& result) const {
    const std::vector<std::string> decoded = decodedTexts();
    auto text = decoded.begin();
    for (std::vector<SourceLine>& lines : result)
      for (SourceLine& line : lines) {
        line.text = *text++;
        for (char& character : line.text)
          if ((character >= 0 && character < ' ') || character == '\x7f') character = ' ';
      }
  }

  std::vector<std::string> decodedTexts() const {
    std::vector<std::string> decoded;
    if (m_units.size > 1) {
      for (const std::string_view text : m_texts)
        decoded.push_back(decodedUnits(text, m_units));
      return decoded;
    }
    if (!m_units.isUtf8) return decodedByLibrary(declarationOf(m_bytes), m_texts);
    decoded.assign(m_texts.begin(), m_texts.end());
    return decoded;
  }

  std::string_view m_bytes;
  Units m_units;
  std::map<std::int64_t, Range> m_lines;  // the wanted ones
  std::vector<std::string_view> m_texts;  // of all lines of the result
};

}  // namespace

std::vector<std::vector<SourceLine>> linesAround(std::string_view bytes, const std::vector<Place>& places) {
  return Source(bytes).around(places);
}

}  // namespace cli
