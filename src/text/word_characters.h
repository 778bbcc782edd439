#pragma once

namespace ztcad {

/// Character classes of names. The tables are those of Qt 5.15 (Unicode 13), so that every build corrects a
/// name alike: the tables of Qt 6 classify 91 of these characters differently. Nothing beyond U+FFFF is a
/// digit or a word character.

/// Whether a character is a decimal digit of some script: `\d` of QRegExp.
bool isDigit(char32_t character);

/// Whether a character is a letter, mark, digit or number of some script, or an underscore: `\w` of QRegExp.
bool isWordCharacter(char32_t character);

}  // namespace ztcad
