#include "character_list.h"

#include <QString>

#include "../text/parts.h"
#include "number_text.h"

namespace ztcad {

namespace {

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
bool parseAnyTriples(QStringView text, std::vector<Number>& values) {
  useCLocale();
  bool allWhole = true;
  forEachPart(text, QLatin1Char(';'), [&](QStringView piece) {
    if (!piece.contains(QLatin1Char(','))) return;
    const std::size_t before = values.size();
    const bool whole = appendParts(piece, values) && values.size() - before >= 3;
    values.resize(before + (whole ? 3 : 0));
    allWhole = allWhole && whole;
  });
  return allWhole;
}

}  // namespace

bool parseList(QStringView text, std::vector<double>& values) {
  useCLocale();
  if (!text.contains(QLatin1Char(';'))) return appendParts(text, values);
  const QString list = text.toString().remove(QLatin1Char(';'));
  return appendParts(QStringView(list), values);
}

bool parseTriples(QStringView text, std::vector<double>& values) { return parseAnyTriples(text, values); }
bool parseTriples(QStringView text, std::vector<std::uint32_t>& values) {
  return parseAnyTriples(text, values);
}

}  // namespace ztcad
