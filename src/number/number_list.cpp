#include "number_list.h"

#include <algorithm>
#include <type_traits>

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

/// Takes no remarks.
struct WithoutRemarks {
  template <typename Number>
  void number(const char* /*begin*/, const char* /*end*/) {}
  void piece(TriplePiece /*kind*/, std::string_view /*piece*/, bool /*hasReals*/) {}
};

struct WithRemarks {
  ListRemarks& remarks;

  template <typename Number>
  void number(const char* begin, const char* end) {
    if constexpr (std::is_same_v<Number, double>)
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
        number<double>(part.data() + first, part.data() + part.size());
        ++i;
      }
      if (part.size() == piece.size()) return;
      piece.remove_prefix(part.size() + 1);
    }
  }
};

/// Reads three numbers and the ";" after them. On false the cursor is unchanged.
template <typename Number, typename Remarks>
bool readTriple(PlainCursor& text, Number* triple, Remarks& remarks) {
  PlainCursor ahead = text;
  const char* begins[3];
  const char* ends[3];
  for (int i = 0; i < 3; ++i) {
    skipWhitespace(ahead);
    begins[i] = ahead.at;
    if (!readNumber(ahead, triple[i])) return false;
    ends[i] = ahead.at;
    skipWhitespace(ahead);
    if (!skip(i < 2 ? ',' : ';', ahead)) return false;
  }
  text = ahead;
  for (int i = 0; i < 3; ++i)
    remarks.template number<Number>(begins[i], ends[i]);
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

template <typename Number, typename Remarks>
bool parseAnyTriples(const ElementText& text, std::vector<Number>& values, Remarks remarks) {
  if (!text.isBytes()) return parseTriples(QStringView(text.toString()), values);
  const std::string_view bytes = text.bytes();
  PlainCursor left = cursorOf(text);
  bool noneBad = true;
  while (left.at != left.end) {
    Number triple[3];
    if (readTriple(left, triple, remarks)) {
      values.insert(values.end(), triple, triple + 3);
      reserveFor(left, bytes.data(), values);
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

bool parseTriples(const ElementText& text, std::vector<double>& values, ListRemarks* remarks) {
  return parse(text, values, remarks);
}
bool parseTriples(const ElementText& text, std::vector<std::uint32_t>& values, ListRemarks* remarks) {
  return parse(text, values, remarks);
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
