#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "dice.h"

/// ASCII texts of numbers, as programs write them and damaged.
namespace plain_number_text {

inline std::string digits(Dice& dice, int most) {
  std::string text;
  for (int left = 1 + dice.roll(most); left > 0; --left)
    text += static_cast<char>('0' + dice.roll(10));
  return text;
}

/// A number without whitespace around it, in a usual spelling.
inline std::string usualNumber(Dice& dice) {
  const int most = dice.oneIn(4) ? 25 : 6;
  std::string text = dice.oneIn(3) ? "-" : "";
  text += digits(dice, most);
  if (dice.oneIn(2)) text += '.' + digits(dice, most);
  const char* const exponents[] = {"e", "E", "e-", "e+", "E-0"};
  if (dice.oneIn(6)) text += dice.pick(exponents) + digits(dice, dice.oneIn(6) ? 3 : 1);
  return text;
}

/// What only some parsers take for a number, or none.
inline std::string oddNumber(Dice& dice) {
  const char* const numbers[] = {"",
                                 "-",
                                 "+1",
                                 ".5",
                                 "5.",
                                 "-.5",
                                 "1e",
                                 "1e+",
                                 "e5",
                                 "1.2.3",
                                 "--1",
                                 "0x10",
                                 "1 2",
                                 "nan",
                                 "inf",
                                 "-inf",
                                 "NaN",
                                 "1e999",
                                 "-1e999",
                                 "1e-999",
                                 "-0",
                                 "-0.0",
                                 "007",
                                 "4294967295",
                                 "4294967296",
                                 "99999999999",
                                 "10000000000000",
                                 "1,",
                                 ",1",
                                 "1;",
                                 ";1",
                                 "1f",
                                 "1d5",
                                 "1_0",
                                 "- 1",
                                 "1. 5",
                                 "\v1",
                                 "1\f",
                                 "1\n",
                                 "\t1\r",
                                 "2e-324",
                                 "4.9e-324",
                                 "1.7976931348623159e308"};
  return dice.pick(numbers);
}

inline std::string number(Dice& dice, bool isWhole) {
  if (dice.oneIn(25)) return oddNumber(dice);
  return isWhole ? digits(dice, dice.oneIn(4) ? 11 : 3) : usualNumber(dice);
}

inline void damage(std::string& text, Dice& dice) {
  constexpr std::string_view characters = "0123456789.,;-+eE \t\r\nRGBx";
  const auto roll = [&dice](std::size_t sides) {
    return static_cast<std::size_t>(dice.roll(static_cast<int>(sides)));
  };
  if (dice.oneIn(4)) text.insert(roll(text.size() + 1), 1, dice.pick(characters));
  if (text.empty()) return;
  if (dice.oneIn(4)) text.erase(roll(text.size()), 1);
  if (!text.empty() && dice.oneIn(4)) text[roll(text.size())] = dice.pick(characters);
}

/// About `count` numbers after a word, which may be empty.
inline std::string list(Dice& dice, const std::string& word, int count, bool isWhole) {
  const char* const separators[] = {",", ", ", ", ", ", ", " ,", "\t, ", ",\n"};
  std::string text = word;
  if (dice.oneIn(12)) count += dice.roll(5) - 2;
  for (int i = 0; i < count; ++i) {
    if (i > 0 || !word.empty()) text += dice.pick(separators);
    text += number(dice, isWhole);
  }
  const char* const ends[] = {";", " ", "; ", ",", ";;", " ;"};
  if (dice.oneIn(4)) text += dice.pick(ends);
  if (dice.oneIn(4)) damage(text, dice);
  return text;
}

}  // namespace plain_number_text
