#include "reference.h"

#include <charconv>
#include <cstdint>
#include <system_error>

#include "../text/append_character.h"
#include "../text/qt_size.h"
#include "../text/wide_utf8.h"
#include "name_characters.h"

namespace ztcad {

namespace {

using Kind = XmlReference::Kind;

struct Predefined {
  std::string_view name;
  char character;
};
constexpr Predefined predefined[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};

bool isDigit(char c, int base) {
  const auto isBetween = [c](char low, char high) { return low <= c && c <= high; };
  return isBetween('0', '9') || (base == 16 && (isBetween('a', 'f') || isBetween('A', 'F')));
}

XmlReference failure(Kind kind, std::size_t length) {
  XmlReference reference;
  reference.kind = kind;
  reference.length = length;
  return reference;
}

XmlReference character(char32_t code, std::size_t length) {
  XmlReference reference = failure(Kind::Character, length);
  reference.character = code;
  return reference;
}

/// @param digits index of the first digit
XmlReference readNumeric(std::string_view text, std::size_t digits, int base) {
  std::size_t end = digits;
  while (end < text.size() && isDigit(text[end], base))
    ++end;
  if (end == text.size()) return {};
  if (end == digits || text[end] != ';') return failure(Kind::IllFormed, end);
  std::uint32_t code = 0;
  const auto error = std::from_chars(text.data() + digits, text.data() + end, code, base).ec;
  if (error != std::errc()) return failure(Kind::IllFormed, end);  // more than 32 bits
  constexpr std::uint32_t lastCharacter = 0x10ffff;
  return character(code > lastCharacter ? code & 0xffffU : code, end + 1);
}

XmlReference readNamed(std::string_view text) {
  const std::size_t end = 1 + nameLength(text.substr(1));
  if (end == 1) return failure(Kind::NoName, end);
  if (end == text.size()) return {};
  if (text[end] != ';') return failure(Kind::IllFormed, end);
  const std::string_view name = text.substr(1, end - 1);
  for (const Predefined& entity : predefined)
    if (name == entity.name) return character(static_cast<unsigned char>(entity.character), end + 1);
  XmlReference reference = failure(Kind::Entity, end + 1);
  reference.name = name;
  return reference;
}

/// Calls `take` with each piece of text between references and with each character that one denotes.
template <typename TakeText, typename TakeCharacter>
void replaceReferences(std::string_view text, TakeText&& takeText, TakeCharacter&& takeCharacter) {
  for (std::size_t found = text.find('&'); found != std::string_view::npos; found = text.find('&')) {
    takeText(text.substr(0, found));
    text.remove_prefix(found);
    const XmlReference reference = referenceAtStart(text);
    if (reference.kind == Kind::Character) takeCharacter(reference.character);
    text.remove_prefix(reference.length);
  }
  takeText(text);
}

}  // namespace

XmlReference referenceAtStart(std::string_view text) {
  if (text.size() < 2) return {};
  if (text[1] == '&' || text[1] == ';') return failure(Kind::IllFormed, 1);
  if (text[1] != '#') return readNamed(text);
  if (text.size() < 3) return {};
  if (text[2] == 'x') return readNumeric(text, 3, 16);
  return readNumeric(text, 2, 10);
}

QString withoutReferences(std::string_view text) {
  QString replaced;
  const auto requireRoomFor = [&](qsizetype units) {
    static_cast<void>(qtSize(static_cast<std::size_t>(replaced.size() + units), text.data()));
  };
  replaceReferences(
      text,
      [&](std::string_view piece) {
        const QString characters = fromWideUtf8(piece);
        requireRoomFor(characters.size());
        replaced += characters;
      },
      [&](char32_t denoted) {
        requireRoomFor(denoted > 0xffff ? 2 : 1);
        appendUtf16(denoted, replaced);
      });
  return replaced;
}

void appendWithoutReferences(std::string_view text, std::string& out) {
  replaceReferences(
      text, [&](std::string_view piece) { out += piece; },
      [&](char32_t denoted) { appendUtf8(denoted, out); });
}

bool isBlankWithReferences(std::string_view text) {
  bool isBlankSoFar = true;
  replaceReferences(
      text, [&](std::string_view piece) { isBlankSoFar = isBlankSoFar && isBlank(piece); },
      [&](char32_t denoted) { isBlankSoFar = isBlankSoFar && isSpace(denoted); });
  return isBlankSoFar;
}

}  // namespace ztcad
