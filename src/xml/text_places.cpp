#include "text_places.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "../text/wide_utf8.h"
#include "xml_reader.h"

namespace ztcad {

namespace {

/// Walks through a text character by character.
class TextWalk {
 public:
  TextWalk(std::string_view bytes, const XmlText& text) : m_bytes(bytes), m_text(text) {
    m_place = {1, 1, static_cast<std::int64_t>(text.sourceStart()), 0};
  }

  const TextPlace& place() const { return m_place; }
  bool atEnd() const { return m_place.inText >= m_text.characters().size(); }

  void step() {
    const std::string_view characters = m_text.characters();
    const Utf8Character character = utf8Character(characters.data() + m_place.inText);
    const auto offset = static_cast<std::size_t>(m_place.offset);
    m_place.offset += static_cast<std::int64_t>(m_text.sourceLength(character, m_bytes, offset));
    m_place.inText += character.length;
    const bool isCrLf = character.code == '\r' && !atEnd() && characters[m_place.inText] == '\n';
    const bool endsLine = character.code == '\n' || (character.code == '\r' && !isCrLf);
    m_place.line += endsLine ? 1 : 0;
    m_place.column = endsLine ? 1 : m_place.column + 1;
  }

 private:
  const std::string_view m_bytes;
  const XmlText& m_text;
  TextPlace m_place;
};

/// The elements that are open at a position of a pass through a text.
class PathTracker {
 public:
  void open(std::string_view tag) {
    const std::int64_t number = m_open.empty() ? 0 : ++m_open.back().children[tag];
    m_open.push_back({tag, number, {}});
  }
  void close() { m_open.pop_back(); }

  std::string path() const {
    constexpr std::size_t longestTag = 100;
    std::string path;
    for (const OpenElement& element : m_open) {
      path += '/';
      path += element.tag.substr(0, longestTag);
      if (element.number > 0) path += '[' + std::to_string(element.number) + ']';
    }
    return path;
  }

 private:
  struct OpenElement {
    std::string_view tag;
    std::int64_t number;  // 0: the root
    std::unordered_map<std::string_view, std::int64_t> children;
  };
  std::vector<OpenElement> m_open;
};

}  // namespace

bool isIn(const char* position, std::string_view text) {
  const std::less_equal<> notAfter;
  return notAfter(text.data(), position) && notAfter(position, text.data() + text.size());
}

std::vector<TextPlace> placesOf(const std::vector<const char*>& positions, std::string_view bytes,
                                const XmlText& text) {
  std::vector<TextPlace> places;
  places.reserve(positions.size());
  TextWalk walk(bytes, text);
  const std::string_view characters = text.characters();
  for (const char* const position : positions) {
    if (isIn(position, characters)) {
      const auto target = static_cast<std::size_t>(position - characters.data());
      while (walk.place().inText < target && !walk.atEnd())
        walk.step();
    } else {
      while (walk.place().offset < position - bytes.data() && !walk.atEnd())
        walk.step();
    }
    places.push_back(walk.place());
  }
  return places;
}

Occurrences replacedBytes(std::string_view bytes, const XmlText& text) {
  Occurrences replaced;
  if (!text.isRepaired()) return replaced;
  const std::string_view replacement = "\xEF\xBF\xBD";
  const std::string_view characters = text.characters();
  for (TextWalk walk(bytes, text); !walk.atEnd(); walk.step()) {
    const auto offset = static_cast<std::size_t>(walk.place().offset);
    const bool isReplacement = characters.substr(walk.place().inText, 3) == replacement;
    if (isReplacement && bytes.substr(offset, 3) != replacement)
      replaced.add(characters.data() + walk.place().inText);
  }
  return replaced;
}

std::vector<std::string> pathsOf(const std::vector<std::size_t>& positions, const XmlText& text) {
  std::vector<std::string> paths;
  paths.reserve(positions.size());
  const char* const begin = text.characters().data();
  XmlReader reader(text.characters());
  PathTracker tracker;
  const auto takeBefore = [&](std::size_t end) {
    while (paths.size() < positions.size() && positions[paths.size()] < end)
      paths.push_back(tracker.path());
  };
  while (paths.size() < positions.size()) {
    const XmlEvent event = reader.next();
    if (event == XmlEvent::End) break;
    if (event == XmlEvent::StartElement) {
      takeBefore(static_cast<std::size_t>(reader.name().data() - 1 - begin));
      tracker.open(reader.name());
    } else if (event == XmlEvent::EndElement) {
      takeBefore(static_cast<std::size_t>(reader.position() - begin));
      tracker.close();
    }
  }
  paths.resize(positions.size(), tracker.path());
  return paths;
}

}  // namespace ztcad
