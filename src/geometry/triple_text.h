#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <QString>
#include <string_view>
#include <vector>

#include "../core/review.h"
#include "../number/number_text.h"
#include "../text/element_text.h"
#include "../text/text_limits.h"

class ztCAD_Coord;
class ztCAD_cmnProperty;

namespace ztcad {

class ElementSink;

/// Writes the storage form of three numbers, "1.5, 0, -2;", used for coordinates, vertices and facets.
/// @param out room for `longestTriple` characters
/// @return the end of what was written
/// @{
char* writeTriple(const double* triple, char* out);
char* writeTriple(const std::uint32_t* triple, char* out);
/// @}
constexpr int longestTriple = 3 * (longestNumber + 2);

template <typename Number>
void appendTriple(QString& out, const Number* triple) {
  char text[longestTriple];
  out += QLatin1String(text, static_cast<int>(writeTriple(triple, text) - text));
}

/// Writes the storage form of a list: a line feed, then each triple on its own line. The text is passed to
/// `take` (a function of `std::string_view`) in pieces of about 64 KB, so that it is never in memory as a
/// whole. One or two numbers at the end that form no triple are omitted. Throws `TooLong` for a list that
/// would not be read.
template <typename Number, typename Take>
void storageText(const std::vector<Number>& numbers, Take&& take) {
  if (numbers.size() / 3 > limits.list) throw TooLong(TooLong::list, nullptr);
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

/// Parses the text of a list element and reports what its parser remarks.
/// @param parse a function of the text and of `ListRemarks*`, null if nobody wants them
template <typename Parse>
bool readList(const ElementView& list, Parse&& parse) {
  ListRemarks remarks;
  const bool ok = parse(list.text(), reviewOf(list) ? &remarks : nullptr);
  reviewList(list, remarks);
  return ok;
}

/// Sets the attribute "center", to an empty text if there is no position.
void writeCenter(const ztCAD_Coord& coord, ElementSink& element);

/// Reads the attribute "center" as `ztCAD_Coord::fromText` does. False, with `coord` unchanged, if it is
/// absent or does not parse.
[[nodiscard]] bool readCenter(const ElementView& element, ztCAD_Coord& coord);

/// Appends the diagnostic form of a list: a line feed, `word`, "(", then each triple on its own line,
/// formatted by `appendOne` (a function of the text and a pointer to the first number), and ")".
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

/// Appends the start of the text of a polyline or triangulated solid: a line feed, `word`, the method and the
/// properties. The method is always given as "pointXYZ", whatever it is: programs that read these texts
/// expect it so.
void beginGeometryText(QString& out, const QString& word, const ztCAD_cmnProperty& property, bool debugForm);

inline void appendAscii(QString& out, std::string_view text) {
  out += QLatin1String(text.data(), static_cast<int>(text.size()));
}

/// Appends `count` triples from an array that may be part of the list itself. If memory runs out, the list is
/// unchanged.
template <typename Number>
void appendTriples(std::vector<Number>& list, const Number* triples, std::size_t count) {
  const std::less_equal<> notAfter;
  const bool isOwn = notAfter(list.data(), triples) && notAfter(triples, list.data() + list.size());
  const std::vector<Number> copy(isOwn ? triples : nullptr, isOwn ? triples + 3 * count : nullptr);
  const Number* const begin = isOwn ? copy.data() : triples;
  list.insert(list.end(), begin, begin + 3 * count);
}

}  // namespace ztcad
