#pragma once

#include <algorithm>
#include <QByteArray>

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
inline void mutate(QByteArray& bytes, Dice& dice) {
  const int at = dice.roll(bytes.size() + 1);
  const int length = dice.roll(std::min(bytes.size() - at, 30) + 1);
  switch (dice.roll(6)) {
    case 0:
      bytes.truncate(at);
      break;
    case 1:
      bytes.insert(dice.roll(bytes.size() + 1), bytes.mid(at, length));
      break;
    case 2:
      bytes.remove(at, length);
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
