#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <QString>
#include <QtAlgorithms>
#include <system_error>

#include "../text/sse2.h"
#include "number_text.h"

namespace ztcad {

namespace {

// -------------------------------------------------------------------------------- characters

bool convert(QStringView text, double& value) { return toReal(text, value); }
bool convert(QStringView text, std::uint32_t& value) { return toIndex(text, value); }

template <typename Visit>
void forEachPart(QStringView text, QChar separator, Visit visit) {
  for (qsizetype start = 0; start < text.size();) {
    const qsizetype found = text.indexOf(separator, start);
    const qsizetype end = found < 0 ? text.size() : found;
    if (end > start) visit(text.mid(start, end - start));
    start = end + 1;
  }
}

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
bool parseAnyList(QStringView text, std::vector<Number>& values) {
  useCLocale();
  if (!text.contains(QLatin1Char(';'))) return appendParts(text, values);
  const QString list = text.toString().remove(QLatin1Char(';'));
  return appendParts(QStringView(list), values);
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

// -------------------------------------------------------------------------------- bytes

/// What is left of a text of plain numbers.
struct Plain {
  const char* at;
  const char* end;
  const char* endOfMemory;  // how far may be looked; behind the text stands a mark that is part of no number
};

bool isDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }
bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

void skipBlanks(Plain& text) {
  while (text.at != text.end && isBlank(*text.at))
    ++text.at;
}

bool skip(char c, Plain& text) {
  if (text.at == text.end || *text.at != c) return false;
  ++text.at;
  return true;
}

constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

#if defined(ZTCAD_SSE2)
/// What stands in sixteen bytes, one bit for each, the first one in the lowest.
struct Marks {
  quint32 others;  // all but digits; above the sixteen ones, too
  quint32 points;
};

constexpr std::ptrdiff_t markedBytes = sizeof(__m128i);

Marks findMarks(const char* at) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const __m128i digits = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
  const __m128i areDigits = _mm_cmpeq_epi8(digits, _mm_min_epu8(digits, _mm_set1_epi8(9)));
  const __m128i arePoints = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('.'));
  return {~static_cast<quint32>(_mm_movemask_epi8(areDigits)),
          static_cast<quint32>(_mm_movemask_epi8(arePoints))};
}

/// Eight bytes, digits as 0 to 9 and all others above; the first one lowest.
quint64 loadWord(const char* at) {
  constexpr quint64 zeros = 0x3030303030303030;
  quint64 word = 0;
  std::memcpy(&word, at, sizeof word);
  return word ^ zeros;
}

/// Fewer than eight of them.
quint64 firstDigits(quint64 word, int count) { return word & ((quint64{1} << (8 * count)) - 1); }

/// How many of the first bytes of a word are digits: for the few of an index this is quicker than `findMarks`.
int countDigits(quint64 word) {
  constexpr quint64 lift = 0x7676767676767676;  // of 10 and more to 80 hex
  constexpr quint64 highBits = 0x8080808080808080;
  return static_cast<int>(qCountTrailingZeroBits(((word + lift) | word) & highBits) / 8);
}

/// The number that the digits make: joined to pairs, to fours, to eight. Up to eight of them, but not none.
quint32 joinDigits(quint64 digits, int count) {
  digits <<= 8 * (8 - count);  // leading zeros
  digits = 10 * digits + (digits >> 8);
  constexpr quint64 everyOtherPair = 0x000000FF000000FF;
  constexpr quint64 firstPairs = 100 + (quint64{1000000} << 32);
  constexpr quint64 secondPairs = 1 + (quint64{10000} << 32);
  return static_cast<quint32>(
      ((digits & everyOtherPair) * firstPairs + ((digits >> 16) & everyOtherPair) * secondPairs) >> 32);
}

/// What `readShortReal` reads, with its sign and without a branch that hangs on its digits, which no processor foresees: up to
/// seven digits before the point and eight in all. False, and nothing read, for all others and near the end of the memory.
bool readFewDigits(Plain& text, double& value) {
  if (text.endOfMemory - text.at < markedBytes + 1) return false;
  const Marks marks = findMarks(text.at);
  const int sign = *text.at == '-' ? 1 : 0;
  const quint32 others = marks.others >> sign;
  const int beforePoint = static_cast<int>(qCountTrailingZeroBits(others));
  const int point = static_cast<int>((marks.points >> (sign + beforePoint)) & 1);
  const int behindPoint = point * static_cast<int>(qCountTrailingZeroBits(others >> (beforePoint + point)));
  const int count = beforePoint + behindPoint;
  if (beforePoint < 1 || beforePoint > 7 || count > 8) return false;
  const char* const whole = text.at + sign;
  const char* const end = whole + count + point;
  if (*end == 'e' || *end == 'E') return false;
  const quint64 digits = firstDigits(loadWord(whole), beforePoint) |
                         (firstDigits(loadWord(end - behindPoint), behindPoint) << (8 * beforePoint));
  constexpr double signs[] = {1, -1};
  value = signs[sign] * joinDigits(digits, count) / powersOfTen[behindPoint];
  text.at = end;
  return true;
}

bool readFewDigits(Plain& text, std::uint32_t& value) {
  if (text.endOfMemory - text.at < std::ptrdiff_t{sizeof(quint64)}) return false;
  const quint64 word = loadWord(text.at);
  const int count = countDigits(word);
  if (count < 1 || count > 7) return false;
  value = joinDigits(firstDigits(word, count), count);
  text.at += count;
  return true;
}
#else
template <typename Number>
bool readFewDigits(Plain&, Number&) {
  return false;
}
#endif

/// Digits with perhaps a point among them, no more of them than both the whole number that they make and the power of
/// ten that divides it are exact: then the quotient is the nearest double (W. Clinger, "How to read floating point
/// numbers accurately", 1990). It is what std::from_chars does too, but this is a third quicker where it matters most.
bool readShortReal(Plain& text, double& value) {
  constexpr int mostDigits = 15;
  const char* at = text.at;
  std::uint64_t digits = 0;
  for (; at != text.end && isDigit(*at); ++at)
    digits = 10 * digits + static_cast<unsigned>(*at - '0');
  std::ptrdiff_t count = at - text.at;
  std::ptrdiff_t behindPoint = 0;
  if (at != text.end && *at == '.') {
    const char* const first = ++at;
    for (; at != text.end && isDigit(*at); ++at)
      digits = 10 * digits + static_cast<unsigned>(*at - '0');
    behindPoint = at - first;
    count += behindPoint;
  }
  if (count > mostDigits || (at != text.end && (*at == 'e' || *at == 'E'))) return false;
  value = static_cast<double>(digits) / powersOfTen[behindPoint];
  text.at = at;
  return true;
}

/// A number that is written as nearly all are; false, and nothing else to be relied on, for what Qt has to judge.
bool readNumber(Plain& text, double& value) {
  if (readFewDigits(text, value)) return true;
  const bool isNegative = skip('-', text);
  if (text.at == text.end || !isDigit(*text.at)) return false;
  if (!readShortReal(text, value)) {
    const auto [end, error] = std::from_chars(text.at, text.end, value);
    if (error != std::errc()) return false;
    text.at = end;
  }
  if (isNegative) value = -value;
  return true;
}

bool readNumber(Plain& text, std::uint32_t& value) {
  if (readFewDigits(text, value)) return true;
  constexpr int mostDigits = 10;
  const char* const first = text.at;
  std::uint64_t digits = 0;
  for (; text.at != text.end && isDigit(*text.at) && text.at - first <= mostDigits; ++text.at)
    digits = 10 * digits + static_cast<unsigned>(*text.at - '0');
  value = static_cast<std::uint32_t>(digits);
  return text.at != first && digits <= std::numeric_limits<std::uint32_t>::max();
}

template <typename Number>
bool readPart(Plain& text, Number& value) {
  skipBlanks(text);
  if (!readNumber(text, value)) return false;
  skipBlanks(text);
  return true;
}

/// Three numbers and the ";" behind them; otherwise false, and the text stays.
template <typename Number>
bool readTriple(Plain& text, Number* triple) {
  Plain ahead = text;
  for (int i = 0; i < 3; ++i)
    if (!readPart(ahead, triple[i]) || !skip(i < 2 ? ',' : ';', ahead)) return false;
  text = ahead;
  return true;
}

/// Takes the room for all triples when the first ones have told how long one is.
template <typename Number>
void reserveFor(const Plain& text, const char* begin, std::vector<Number>& values) {
  constexpr std::size_t enoughToTell = 3072;
  if (values.size() != enoughToTell) return;
  const auto soFar = static_cast<double>(text.at - begin);
  const auto left = static_cast<double>(text.end - text.at);
  constexpr double margin = 1.02;
  values.reserve(enoughToTell + static_cast<std::size_t>(margin * left / soFar * enoughToTell));
}

template <typename Number>
bool parseAnyTriples(const ElementText& text, std::vector<Number>& values) {
  if (!text.isBytes()) return parseAnyTriples(QStringView(text.toString()), values);
  const std::string_view bytes = text.bytes();
  Plain left{bytes.data(), bytes.data() + bytes.size(), text.endOfMemory()};
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
    allWhole = parseAnyTriples(QStringView(text.decoded(bytes.substr(from, end - from))), values) && allWhole;
    left.at = bytes.data() + std::min(end + 1, bytes.size());
  }
  return allWhole;
}

/// Numbers between commas with at most a ";" at the end; 0 where Qt has to judge.
int readPlainList(Plain text, double* values, int most) {
  int count = 0;
  do {
    if (count == most || !readPart(text, values[count])) return 0;
    ++count;
  } while (skip(',', text));
  skip(';', text);
  skipBlanks(text);
  return text.at == text.end ? count : 0;
}

}  // namespace

bool parseList(QStringView text, std::vector<double>& values) { return parseAnyList(text, values); }
bool parseList(QStringView text, std::vector<std::uint32_t>& values) { return parseAnyList(text, values); }

bool parseTriples(QStringView text, std::vector<double>& values) { return parseAnyTriples(text, values); }
bool parseTriples(QStringView text, std::vector<std::uint32_t>& values) {
  return parseAnyTriples(text, values);
}

int parseShortList(const ElementText& text, double* values, int most) {
  const std::string_view bytes = text.bytes();
  const int count =
      text.isBytes()
          ? readPlainList({bytes.data(), bytes.data() + bytes.size(), text.endOfMemory()}, values, most)
          : 0;
  if (count > 0) return count;
  std::vector<double> numbers;
  if (!parseList(text.toString(), numbers) || numbers.size() > static_cast<std::size_t>(most)) return 0;
  std::copy(numbers.begin(), numbers.end(), values);
  return static_cast<int>(numbers.size());
}

bool parseTriples(const ElementText& text, std::vector<double>& values) {
  return parseAnyTriples(text, values);
}
bool parseTriples(const ElementText& text, std::vector<std::uint32_t>& values) {
  return parseAnyTriples(text, values);
}

}  // namespace ztcad
