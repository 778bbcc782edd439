#include "number_list.h"

#include <algorithm>
#include <type_traits>

#include "../support/memory_pages.h"
#include "../text/text_limits.h"
#include "../text/wide_utf8.h"
#include "character_list.h"
#include "plain_numbers.h"
#include "usual_numbers.h"

namespace ztcad {

namespace {

template <typename Number>
bool readPart(PlainCursor& text, Number& value) {
  skipWhitespace(text);
  if (!readNumber(text, value)) return false;
  skipWhitespace(text);
  return true;
}

/// Takes no remarks.
struct WithoutRemarks {
  template <typename Number>
  static constexpr bool wantsNumbers = false;

  void number(const char* /*begin*/, const char* /*end*/) {}
  void piece(TriplePiece /*kind*/, std::string_view /*piece*/, bool /*hasReals*/) {}
};

struct WithRemarks {
  template <typename Number>
  static constexpr bool wantsNumbers = std::is_same_v<Number, double>;

  ListRemarks& remarks;

  void number(const char* begin, const char* end) {
    if (hasMoreDigitsThanWritten({begin, static_cast<std::size_t>(end - begin)}))
      remarks.longReals.add(begin);
  }

  /// A piece that was not read as plain numbers.
  void piece(TriplePiece kind, std::string_view piece, bool hasReals) {
    const char* const at = piece.data() + std::min(piece.find_first_not_of(" \t\r\n"), piece.size());
    if (kind == TriplePiece::Skipped) remarks.skippedPieces.add(at);
    if (kind == TriplePiece::Bad) remarks.badPieces.add(at);
    if (kind == TriplePiece::Cut) remarks.cutPieces.add(at);
    if (hasReals && (kind == TriplePiece::Whole || kind == TriplePiece::Cut)) reals(piece);
  }

 private:
  /// The first three numbers of a piece.
  void reals(std::string_view piece) {
    for (int i = 0; i < 3;) {
      const std::string_view part = piece.substr(0, piece.find(','));
      const std::size_t first = part.find_first_not_of(" \t\r\n");
      if (first != std::string_view::npos) {
        number(part.data() + first, part.data() + part.size());
        ++i;
      }
      if (part.size() == piece.size()) return;
      piece.remove_prefix(part.size() + 1);
    }
  }
};

/// The pieces in each byte of a long text, by samples.
double sampledPieces(std::string_view text) {
  constexpr std::size_t samples = 256;
  constexpr std::size_t sampleSize = 256;
  const std::size_t distance = text.size() / samples;
  std::ptrdiff_t pieces = 0;
  for (std::size_t i = 0; i < samples; ++i) {
    const std::string_view sample = text.substr(i * distance + distance / 2, sampleSize);
    pieces += std::count(sample.begin(), sample.end(), ';');
  }
  return static_cast<double>(pieces) / static_cast<double>(samples * sampleSize);
}

/// Reserves memory for the rest of a list: of a short one by the mean length of its first triples, of a long
/// one, whose first triples may be unlike the others, by samples.
/// @param count numbers so far
template <typename Number>
void reserveForRest(const PlainCursor& text, const char* begin, std::size_t count,
                    std::vector<Number>& values) {
  const std::string_view left(text.at, static_cast<std::size_t>(text.end - text.at));
  constexpr std::size_t longText = 1 << 20;
  const auto soFar = static_cast<double>(count) / 3;
  const double triples =
      left.size() >= longText ? sampledPieces(left) : soFar / static_cast<double>(text.at - begin);
  constexpr double most = 1.0 / 6;  // "1,2,3;": other pieces are no triples
  constexpr double margin = 1.02;
  const double estimated = margin * std::min(triples, most) * static_cast<double>(left.size());
  values.reserve(values.size() + 3 * static_cast<std::size_t>(estimated));
}

constexpr int usualAtOnce = 256;  // triples

/// The pages of a long list, which the system provides a few at a time shortly before they are written.
template <typename Number>
class PagesOfList {
 public:
  /// Of a list that has just reserved its memory.
  void begin(std::vector<Number>& values) {
    constexpr std::size_t longList = 1 << 20;
    if (values.capacity() * sizeof(Number) < longList) return;
    m_next = values.data() + values.size();
    m_end = values.data() + values.capacity();
  }

  /// Before numbers are added, at most 3 * `usualAtOnce`.
  void provide(const std::vector<Number>& values) {
    constexpr std::ptrdiff_t count = (1 << 18) / sizeof(Number);
    if (m_next == m_end || m_end != values.data() + values.capacity()) return;  // the latter: it has moved
    if (m_next - (values.data() + values.size()) > 3 * usualAtOnce) return;
    Number* const next = m_end - m_next > count ? m_next + count : m_end;
    providePages(m_next, static_cast<std::size_t>(next - m_next) * sizeof(Number));
    m_next = next;
  }

 private:
  Number* m_next = nullptr;
  Number* m_end = nullptr;
};

PlainCursor cursorOf(const ElementText& text) {
  const std::string_view bytes = text.bytes();
  return {bytes.data(), bytes.data() + bytes.size(), text.endOfMemory()};
}

/// Appends triples of usual numbers up to the first other piece, or many of them; false if there are none.
/// Short lists thus get exactly the memory that they need.
template <typename Number, typename Remarks>
bool readUsual(PlainCursor& text, std::vector<Number>& values, Remarks& remarks) {
  constexpr int most = usualAtOnce;
  Number numbers[3 * most];
  TriplePlaces places[most];
  constexpr bool wantsNumbers = Remarks::template wantsNumbers<Number>;
  const int count = readUsualTriples(text, numbers, wantsNumbers ? places : nullptr, most);
  values.insert(values.end(), numbers, numbers + 3 * count);
  for (int i = 0; wantsNumbers && i < count; ++i) {
    if (places[i].mostDigits <= writtenDigits) continue;
    for (std::size_t k = 0; k < 3; ++k)
      remarks.number(places[i].begins[k], places[i].ends[k]);
  }
  return count > 0;
}

template <typename Number, typename Remarks>
bool parseAnyTriples(const ElementText& text, std::vector<Number>& values, Remarks remarks) {
  if (!text.isBytes()) return parseTriples(QStringView(text.toString()), values);
  const std::string_view bytes = text.bytes();
  PlainCursor left = cursorOf(text);
  bool noneBad = true;
  const auto countSoFar = [&values, &bytes, before = values.size()] {
    const std::size_t count = values.size() - before;
    if (count / 3 > limits.list) throw TooLong(TooLong::list, bytes.data());
    return count;
  };
  bool isReserved = false;
  PagesOfList<Number> pages;
  while (left.at != left.end) {
    pages.provide(values);
    if (readUsual(left, values, remarks)) {
      const std::size_t count = countSoFar();
      if (isReserved || count < std::size_t{3} * usualAtOnce) continue;
      reserveForRest(left, bytes.data(), count, values);
      isReserved = true;
      pages.begin(values);
      continue;
    }
    const auto from = static_cast<std::size_t>(left.at - bytes.data());
    const std::size_t found = bytes.find(';', from);
    const std::size_t end = found == std::string_view::npos ? bytes.size() : found;
    const std::string_view piece = bytes.substr(from, end - from);
    const TriplePiece kind = parseTriple(QStringView(text.decoded(piece)), values);
    remarks.piece(kind, piece, std::is_same_v<Number, double>);
    noneBad = noneBad && kind != TriplePiece::Bad;
    left.at = bytes.data() + std::min(end + 1, bytes.size());
    countSoFar();
  }
  return noneBad;
}

template <typename Number>
bool parse(const ElementText& text, std::vector<Number>& values, ListRemarks* remarks) {
  return remarks ? parseAnyTriples(text, values, WithRemarks{*remarks})
                 : parseAnyTriples(text, values, WithoutRemarks());
}

/// Reads numbers separated by commas, with an optional ";" at the end; 0 for any other text.
int readPlainList(PlainCursor text, double* values, int most) {
  int count = readUsualReals(text, values, most);
  if (count == 0 && !readPart(text, values[count++])) return 0;
  skipWhitespace(text);
  for (; skip(',', text); ++count)
    if (count == most || !readPart(text, values[count])) return 0;
  skip(';', text);
  skipWhitespace(text);
  return text.at == text.end ? count : 0;
}

int readUsual(PlainCursor& text, double* values, int most) { return readUsualReals(text, values, most); }
int readUsual(PlainCursor& /*text*/, std::uint32_t* /*values*/, int /*most*/) { return 0; }

template <typename Number>
bool parsePlain(PlainCursor text, const QString& word, Number* values, int count) {
  const auto size = static_cast<std::size_t>(word.size());
  if (static_cast<std::size_t>(text.end - text.at) < size || !equalsAscii(word, {text.at, size}))
    return false;
  text.at += size;
  if (!skip(',', text)) return false;
  skipWhitespace(text);
  for (int read = 0; true;) {
    const int usual = readUsual(text, values + read, count - read);
    read += usual;
    if (usual == 0 && !readPart(text, values[read++])) return false;
    skipWhitespace(text);
    if (read == count) return text.at == text.end;
    if (!skip(',', text)) return false;
    skipWhitespace(text);
  }
}

}  // namespace

bool parseTriples(const ElementText& text, std::vector<double>& values, ListRemarks* remarks) {
  return parse(text, values, remarks);
}
bool parseTriples(const ElementText& text, std::vector<std::uint32_t>& values, ListRemarks* remarks) {
  return parse(text, values, remarks);
}

int parsePlainList(std::string_view ascii, const char* endOfMemory, double* values, int most) {
  return readPlainList({ascii.data(), ascii.data() + ascii.size(), endOfMemory}, values, most);
}

bool parseWordAndNumbers(std::string_view ascii, const char* endOfMemory, const QString& word, double* values,
                         int count) {
  return parsePlain({ascii.data(), ascii.data() + ascii.size(), endOfMemory}, word, values, count);
}
bool parseWordAndNumbers(std::string_view ascii, const char* endOfMemory, const QString& word,
                         std::uint32_t* values, int count) {
  return parsePlain({ascii.data(), ascii.data() + ascii.size(), endOfMemory}, word, values, count);
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
