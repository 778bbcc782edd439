#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace ztcad {

/// Which characters XML names consist of: letters, digits and marks of every script, and `_`, `:`, `-`, `.`;
/// a name starts with a letter, `_` or `:`. The classes are those of Qt 5.15 (Unicode 13), whichever Qt the
/// library is built with. No character beyond U+FFFF belongs to a name.
bool startsName(char32_t character);
bool isInName(char32_t character);

/// Length in bytes of the name at the start of a text; 0 if none starts there.
std::size_t nameLength(std::string_view text);

/// The classes of ASCII.
/// @{
enum class NameByte : unsigned char { None, Inside, Start };

constexpr std::array<NameByte, 128> makeNameBytes() {
  std::array<NameByte, 128> found{};
  for (std::size_t byte = 0; byte < found.size(); ++byte) {
    const char c = static_cast<char>(byte);
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':';
    const bool isInside = (c >= '0' && c <= '9') || c == '-' || c == '.';
    found[byte] = isLetter ? NameByte::Start : isInside ? NameByte::Inside : NameByte::None;
  }
  return found;
}
inline constexpr auto nameBytes = makeNameBytes();
/// @}

}  // namespace ztcad
