#include "usual_numbers.h"

#include <algorithm>

#include "wide_numbers.h"

namespace ztcad {

namespace {

/// Reads a triple and its ";". On false the cursor is unchanged.
template <typename Number>
bool readTriple(PlainCursor& text, Number* values, TriplePlaces& places) {
  PlainCursor ahead = text;
  for (std::size_t i = 0; i < 3; ++i) {
    skipWhitespace(ahead);
    places.begins[i] = ahead.at;
    if (!readNumber(ahead, values[i])) return false;
    places.ends[i] = ahead.at;
    skipWhitespace(ahead);
    if (i < 2 && !skip(',', ahead)) return false;
  }
  if (!skip(';', ahead)) return false;
  places.mostDigits = 0;
  for (std::size_t i = 0; i < 3; ++i)
    places.mostDigits = std::max(places.mostDigits, static_cast<int>(places.ends[i] - places.begins[i]));
  text = ahead;
  return true;
}

template <typename Number>
int readNarrow(PlainCursor& text, Number* values, TriplePlaces* places, int most) {
  TriplePlaces found = {};
  int count = 0;
  for (; count < most && readTriple(text, values + 3 * count, found); ++count)
    if (places) places[count] = found;
  return count;
}

template <typename Number>
int readBest(PlainCursor& text, Number* values, TriplePlaces* places, int most) {
#if defined(ZTCAD_WIDE)
  if (hasWideInstructions())
    return places ? wide::readTriples<true>(text, values, places, most)
                  : wide::readTriples<false>(text, values, nullptr, most);
#endif
  return readNarrow(text, values, places, most);
}

}  // namespace

int readUsualTriples(PlainCursor& text, double* values, TriplePlaces* places, int most) {
  return readBest(text, values, places, most);
}
int readUsualTriples(PlainCursor& text, std::uint32_t* values, TriplePlaces* places, int most) {
  return readBest(text, values, places, most);
}

int readUsualReals([[maybe_unused]] PlainCursor& text, [[maybe_unused]] double* values,
                   [[maybe_unused]] int most) {
#if defined(ZTCAD_WIDE)
  if (hasWideInstructions()) return wide::readReals(text, values, most);
#endif
  return 0;
}

int readTriplesNarrow(PlainCursor& text, double* values, TriplePlaces* places, int most) {
  return readNarrow(text, values, places, most);
}
int readTriplesNarrow(PlainCursor& text, std::uint32_t* values, TriplePlaces* places, int most) {
  return readNarrow(text, values, places, most);
}

}  // namespace ztcad
