#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "../number/number_text.h"

class ztCAD_Coord;
class ztCAD_cmnProperty;

namespace ztcad {

/// The storage text of a triple of numbers, "1.5, 0, -2;". Coordinates, vertices and facets are all written
/// so.
/// @param out room for `longestTriple` characters
/// @return the end of what was written
char* writeTriple(const double* triple, char* out);
char* writeTriple(const std::uint32_t* triple, char* out);
constexpr int longestTriple = 3 * (longestNumber + 2);

template <typename Number>
void appendTriple(std::string& out, const Number* triple) {
  char text[longestTriple];
  out.append(text, writeTriple(triple, text));
}

/// The storage text of a list of triples: a line feed, then each triple on a line of its own. It is handed to
/// `take` (a function of `std::string_view`) in pieces of some 64 KB, so that no list stands twice in memory.
/// A last number or two that make no triple are left out.
template <typename Number, typename Take>
void storageText(const std::vector<Number>& numbers, Take&& take) {
  constexpr std::size_t pieceSize = 65536;
  std::vector<char> piece(std::min(pieceSize, numbers.size() * longestTriple / 3) + longestTriple + 2);
  char* const begin = piece.data();
  char* const full = begin + piece.size() - longestTriple - 1;
  char* end = begin;
  *end++ = '\n';
  for (std::size_t first = 0; first + 3 <= numbers.size(); first += 3) {
    end = writeTriple(&numbers[first], end);
    *end++ = '\n';
    if (end < full) continue;
    take(std::string_view(begin, static_cast<std::size_t>(end - begin)));
    end = begin;
  }
  take(std::string_view(begin, static_cast<std::size_t>(end - begin)));
}

/// `ztCAD_Coord::fromText` of a carrier's text.
bool readCoord(const ElementText& text, ztCAD_Coord& coord);

/// The text of a list for people: a line feed, `word`, "(", then each triple on a line of its own as
/// `appendOne` (a function of the text and of the first number) writes it, ")".
template <typename Number, typename AppendOne>
void debugText(QString& out, const QString& word, const std::vector<Number>& numbers, AppendOne&& appendOne) {
  out += QLatin1Char('\n') + word + QLatin1Char('(');
  if (!numbers.empty()) out += QLatin1Char('\n');
  for (std::size_t first = 0; first + 3 <= numbers.size(); first += 3) {
    appendOne(out, &numbers[first]);
    out += QLatin1Char('\n');
  }
  out += QLatin1Char(')');
}

/// The beginning of the text of a polyline or triangulated solid: a line feed, `word`, the method and the
/// properties. The method is told as "pointXYZ" whatever it is; programs that read these texts know it so.
void beginGeometryText(QString& out, const QString& word, const ztCAD_cmnProperty& property, bool debugForm);

inline void appendAscii(QString& out, std::string_view text) {
  out += QLatin1String(text.data(), static_cast<int>(text.size()));
}

/// Appends `count` triples of an array that may lie in the list itself. Without memory the list stays as it was.
template <typename Number>
void appendTriples(std::vector<Number>& list, const Number* triples, std::size_t count) {
  const std::less_equal<> notBehind;
  const bool isOwn = notBehind(list.data(), triples) && notBehind(triples, list.data() + list.size());
  const std::vector<Number> copy(isOwn ? triples : nullptr, isOwn ? triples + 3 * count : nullptr);
  const Number* const begin = isOwn ? copy.data() : triples;
  list.insert(list.end(), begin, begin + 3 * count);
}

}  // namespace ztcad
