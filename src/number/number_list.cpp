#include "number_list.h"

#include <algorithm>

#include "character_list.h"
#include "plain_numbers.h"

namespace ztcad {

namespace {

template <typename Number>
bool readPart(PlainCursor& text, Number& value) {
  skipWhitespace(text);
  if (!readNumber(text, value)) return false;
  skipWhitespace(text);
  return true;
}

/// Reads three numbers and the ";" after them. On false the cursor is unchanged.
template <typename Number>
bool readTriple(PlainCursor& text, Number* triple) {
  PlainCursor ahead = text;
  for (int i = 0; i < 3; ++i)
    if (!readPart(ahead, triple[i]) || !skip(i < 2 ? ',' : ';', ahead)) return false;
  text = ahead;
  return true;
}

/// Reserves memory for the whole list once, by the mean length of the first triples.
template <typename Number>
void reserveFor(const PlainCursor& text, const char* begin, std::vector<Number>& values) {
  constexpr std::size_t sampleSize = 3072;
  if (values.size() != sampleSize) return;
  const auto soFar = static_cast<double>(text.at - begin);
  const auto left = static_cast<double>(text.end - text.at);
  constexpr double margin = 1.02;
  values.reserve(sampleSize + static_cast<std::size_t>(margin * left / soFar * sampleSize));
}

PlainCursor cursorOf(const ElementText& text) {
  const std::string_view bytes = text.bytes();
  return {bytes.data(), bytes.data() + bytes.size(), text.endOfMemory()};
}

template <typename Number>
bool parseAnyTriples(const ElementText& text, std::vector<Number>& values) {
  if (!text.isBytes()) return parseTriples(QStringView(text.toString()), values);
  const std::string_view bytes = text.bytes();
  PlainCursor left = cursorOf(text);
  bool allWhole = true;
  while (left.at != left.end) {
    Number triple[3];
    if (readTriple(left, triple)) {
      values.insert(values.end(), triple, triple + 3);
      reserveFor(left, bytes.data(), values);
      continue;
    }
    const auto from = static_cast<std::size_t>(left.at - bytes.data());
    const std::size_t found = bytes.find(';', from);
    const std::size_t end = found == std::string_view::npos ? bytes.size() : found;
    allWhole = parseTriples(QStringView(text.decoded(bytes.substr(from, end - from))), values) && allWhole;
    left.at = bytes.data() + std::min(end + 1, bytes.size());
  }
  return allWhole;
}

/// Reads numbers separated by commas, with an optional ";" at the end; 0 for any other text.
int readPlainList(PlainCursor text, double* values, int most) {
  int count = 0;
  do {
    if (count == most || !readPart(text, values[count])) return 0;
    ++count;
  } while (skip(',', text));
  skip(';', text);
  skipWhitespace(text);
  return text.at == text.end ? count : 0;
}

}  // namespace

bool parseTriples(const ElementText& text, std::vector<double>& values) {
  return parseAnyTriples(text, values);
}
bool parseTriples(const ElementText& text, std::vector<std::uint32_t>& values) {
  return parseAnyTriples(text, values);
}

int parseShortList(const ElementText& text, double* values, int most) {
  const int count = text.isBytes() ? readPlainList(cursorOf(text), values, most) : 0;
  if (count > 0) return count;
  std::vector<double> numbers;
  if (!parseList(text.toString(), numbers) || numbers.size() > static_cast<std::size_t>(most)) return 0;
  std::copy(numbers.begin(), numbers.end(), values);
  return static_cast<int>(numbers.size());
}

}  // namespace ztcad
