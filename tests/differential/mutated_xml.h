#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

#include "dice.h"

/// Markup and characters that mutate() inserts.
inline const char* const xmlFragments[] = {"<",
                                           ">",
                                           "/>",
                                           "</",
                                           "&",
                                           ";",
                                           "'",
                                           "\"",
                                           "=",
                                           "!",
                                           "?",
                                           "-->",
                                           "<!--",
                                           "]]>",
                                           "<![CDATA[",
                                           "<?",
                                           "?>",
                                           "<!DOCTYPE r [",
                                           "]>",
                                           "<!ENTITY e 'x'>",
                                           "<!ENTITY",
                                           "<a>",
                                           "</a>",
                                           "<a/>",
                                           "<r>",
                                           "</r>",
                                           "&lt;",
                                           "&#65;",
                                           "&#x1f600;",
                                           "&u;",
                                           "%u;",
                                           " ",
                                           "\r",
                                           "\n",
                                           "\t",
                                           "(",
                                           ")",
                                           "[",
                                           "]",
                                           "#",
                                           "x",
                                           "\xd0\xaf",
                                           "\xff",
                                           "<r a='1'>",
                                           "<!ELEMENT r (a)>",
                                           "<!ATTLIST r a CDATA '",
                                           "<?xml version='1.0'?>",
                                           "<?xml version='1.0' encoding='utf-8'?>",
                                           "\xef\xbf\xbf",
                                           "\xef\xbf\xbe",
                                           "-",
                                           "--"};

/// Makes one random change: truncates, repeats or removes a piece, inserts or replaces with a fragment, or
/// sets a byte.
inline void mutate(std::string& bytes, Dice& dice) {
  const auto roll = [&dice](std::size_t sides) {
    return static_cast<std::size_t>(dice.roll(static_cast<int>(sides)));
  };
  constexpr std::size_t longestPiece = 30;
  const std::size_t at = roll(bytes.size() + 1);
  const std::size_t length = roll(std::min(bytes.size() - at, longestPiece) + 1);
  switch (dice.roll(6)) {
    case 0:
      bytes.resize(at);
      break;
    case 1:
      bytes.insert(roll(bytes.size() + 1), bytes.substr(at, length));
      break;
    case 2:
      bytes.erase(at, length);
      break;
    case 3:
      bytes.insert(at, dice.pick(xmlFragments));
      break;
    case 4:
      bytes.replace(at, length, dice.pick(xmlFragments));
      break;
    default:
      if (at < bytes.size()) bytes[at] = static_cast<char>(dice.roll(256));
      break;
  }
}
