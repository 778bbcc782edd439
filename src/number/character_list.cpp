#include "character_list.h"

#include <algorithm>
#include <QString>

#include "../text/parts.h"
#include "../text/wide_utf8.h"
#include "number_text.h"

namespace ztcad {

namespace {

bool isBlank(QStringView text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return isSpace(c.unicode()); });
}

bool convert(QStringView text, double& value) { return toReal(text, value); }
bool convert(QStringView text, std::uint32_t& value) { return toIndex(text, value); }

template <typename Number>
bool appendParts(QStringView list, std::vector<Number>& values) {
  bool allConverted = true;
  forEachPart(list, QLatin1Char(','), [&](QStringView part) {
    Number value{};
    const bool converted = convert(part, value);
    if (converted) values.push_back(value);
    allConverted = allConverted && converted;
  });
  return allConverted;
}

template <typename Number>
TriplePiece parseAnyTriple(QStringView piece, std::vector<Number>& values) {
  if (!piece.contains(QLatin1Char(','))) return isBlank(piece) ? TriplePiece::Blank : TriplePiece::Skipped;
  const std::size_t before = values.size();
  const bool allConverted = appendParts(piece, values);
  const std::size_t count = values.size() - before;
  const bool isGood = allConverted && count >= 3;
  values.resize(before + (isGood ? 3 : 0));
  if (!isGood) return TriplePiece::Bad;
  return count == 3 ? TriplePiece::Whole : TriplePiece::Cut;
}

template <typename Number>
bool parseAnyTriples(QStringView text, std::vector<Number>& values) {
  useCLocale();
  bool noneBad = true;
  forEachPart(text, QLatin1Char(';'), [&](QStringView piece) {
    noneBad = parseAnyTriple(piece, values) != TriplePiece::Bad && noneBad;
  });
  return noneBad;
}

}  // namespace

bool parseList(QStringView text, std::vector<double>& values) {
  useCLocale();
  if (!text.contains(QLatin1Char(';'))) return appendParts(text, values);
  const QString list = text.toString().remove(QLatin1Char(';'));
  return appendParts(QStringView(list), values);
}

TriplePiece parseTriple(QStringView piece, std::vector<double>& values) {
  return parseAnyTriple(piece, values);
}
TriplePiece parseTriple(QStringView piece, std::vector<std::uint32_t>& values) {
  return parseAnyTriple(piece, values);
}

bool parseTriples(QStringView text, std::vector<double>& values) { return parseAnyTriples(text, values); }
bool parseTriples(QStringView text, std::vector<std::uint32_t>& values) {
  return parseAnyTriples(text, values);
}

}  // namespace ztcad
