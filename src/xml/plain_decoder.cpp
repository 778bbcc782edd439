#include "plain_decoder.h"

#include <charconv>
#include <cstdint>
#include <system_error>

#include "../text/append_character.h"
#include "../text/narrow_text.h"
#include "../text/windows1251.h"

namespace ztcad {

namespace {

/// The character that a reference denotes.
/// @param name the text between "&" and ";"
char32_t referencedCharacter(std::string_view name) {
  struct Entity {
    std::string_view name;
    char character;
  };
  constexpr Entity entities[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
  for (const Entity& entity : entities)
    if (name == entity.name) return static_cast<unsigned char>(entity.character);
  require(name.size() > 1 && name.front() == '#');
  const bool isHexadecimal = name[1] == 'x';
  name.remove_prefix(isHexadecimal ? 2 : 1);
  std::uint32_t code = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), code, isHexadecimal ? 16 : 10);
  require(error == std::errc() && end == name.data() + name.size());
  const bool isCharacter = code >= 0x20 || code == '\t' || code == '\n' || code == '\r';
  require(isCharacter && !QChar::isSurrogate(code) && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF);
  return code;
}

}  // namespace

void PlainDecoder::checkText(std::string_view text) const {
  bool isAscii = true;
  for (const char byte : text) {
    const CharacterClass kind = classOf(byte);
    require(kind != Control && kind != Markup);
    isAscii = isAscii && kind != NonAscii;
  }
  if (!isAscii) checkNonAscii(text);
}

void PlainDecoder::checkComment(std::string_view text) const {
  for (const char byte : text)
    require(classOf(byte) != Control);
  checkNonAscii(text);
}

void PlainDecoder::checkNonAscii(std::string_view bytes) const {
  if (!m_isWindows1251) require(isUtf8(bytes) && bytes.find('\xEF') == std::string_view::npos);
}

QString PlainDecoder::characters(std::string_view bytes) const {
  require(bytes.size() <= limits.text);
  return m_isWindows1251 ? fromWindows1251(bytes)
                         : QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
}

QString PlainDecoder::withoutReferences(std::string_view value) const {
  require(value.size() <= limits.text);
  QString text;
  for (std::size_t found = value.find('&'); found != std::string_view::npos; found = value.find('&')) {
    const std::size_t end = value.find(';', found);
    require(end != std::string_view::npos);
    text += characters(value.substr(0, found));
    appendUtf16(referencedCharacter(value.substr(found + 1, end - found - 1)), text);
    value.remove_prefix(end + 1);
  }
  return text + characters(value);
}

}  // namespace ztcad
