#include "windows1251.h"

#include <algorithm>
#include <array>

#include "qt_size.h"

namespace ztcad {

namespace {

// The code page is ASCII below 80 hex, the Russian alphabet (U+0410 to U+044F) from C0 hex on, and this in
// between.
constexpr std::array<char16_t, 64> middle = {
    0x0402, 0x0403, 0x201a, 0x0453, 0x201e, 0x2026, 0x2020, 0x2021,  // 80
    0x20ac, 0x2030, 0x0409, 0x2039, 0x040a, 0x040c, 0x040b, 0x040f,  // 88
    0x0452, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,  // 90
    0x0098, 0x2122, 0x0459, 0x203a, 0x045a, 0x045c, 0x045b, 0x045f,  // 98
    0x00a0, 0x040e, 0x045e, 0x0408, 0x00a4, 0x0490, 0x00a6, 0x00a7,  // A0
    0x0401, 0x00a9, 0x0404, 0x00ab, 0x00ac, 0x00ad, 0x00ae, 0x0407,  // A8
    0x00b0, 0x00b1, 0x0406, 0x0456, 0x0491, 0x00b5, 0x00b6, 0x00b7,  // B0
    0x0451, 0x2116, 0x0454, 0x00bb, 0x0458, 0x0405, 0x0455, 0x0457,  // B8
};
constexpr unsigned char middleStart = 0x80;
constexpr unsigned char alphabetStart = 0xC0;
constexpr char16_t alphabetFirst = 0x0410;
constexpr char16_t alphabetLast = 0x044f;

}  // namespace

QChar windows1251ToUnicode(unsigned char byte) {
  if (byte < middleStart) return QLatin1Char(static_cast<char>(byte));
  if (byte < alphabetStart) return QChar(middle[byte - middleStart]);
  return QChar(alphabetFirst + (byte - alphabetStart));
}

QString fromWindows1251(std::string_view bytes) {
  QString text(qtSize(bytes), Qt::Uninitialized);
  QChar* to = text.data();
  for (const char byte : bytes)
    *to++ = windows1251ToUnicode(static_cast<unsigned char>(byte));
  return text;
}

std::optional<unsigned char> windows1251FromUnicode(char32_t character) {
  if (character < middleStart) return static_cast<unsigned char>(character);
  if (character >= alphabetFirst && character <= alphabetLast)
    return static_cast<unsigned char>(character - alphabetFirst + alphabetStart);
  const auto found = std::find(middle.begin(), middle.end(), character);
  if (found == middle.end()) return std::nullopt;
  return static_cast<unsigned char>(found - middle.begin() + middleStart);
}

}  // namespace ztcad
