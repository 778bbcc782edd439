#include "name_correction.h"

#include <string_view>

#include "../text/narrow_text.h"
#include "../text/word_characters.h"

namespace ztcad {

namespace {

// One pass over the bytes: a character that is kept keeps its bytes, so nothing is converted.
std::string corrected(std::string_view text) {
  const NarrowEncoding encoding = narrowEncodingOf(text);
  std::string name;
  name.reserve(text.size() + 1);
  if (isDigit(firstCharacter(text, encoding).code)) name += '_';
  while (!text.empty()) {
    const auto [code, length] = firstCharacter(text, encoding);
    if (code != U'_' && isWordCharacter(code)) {
      name += text.substr(0, length);
    } else if (name.empty() || name.back() != '_') {  // the byte of '_' occurs in no other character
      name += '_';
    }
    text.remove_prefix(length);
  }
  return name;
}

}  // namespace

std::string correctName(const std::string& name, const std::string& fallback) {
  const std::string& used = name.empty() ? fallback : name;
  return used.empty() ? "_" : corrected(used);
}

}  // namespace ztcad
