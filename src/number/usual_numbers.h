#pragma once

#include <array>
#include <cstdint>

#include "plain_numbers.h"

namespace ztcad {

/// Where the numbers of a triple lie.
struct TriplePlaces {
  std::array<const char*, 3> begins;
  std::array<const char*, 3> ends;
  int mostDigits;  // of one of the numbers, leading zeros included; may be more if the number has an exponent
};

/// Reads pieces "a, b, c;" of exactly three usual numbers, up to the first other piece.
/// @param text   input and output: the cursor; just after the last ";" that was read
/// @param values output: room for three times `most` numbers; those after the last triple are unspecified
/// @param places output: room for `most`; null: not wanted
/// @return the number of triples
/// @{
int readUsualTriples(PlainCursor& text, double* values, TriplePlaces* places, int most);
int readUsualTriples(PlainCursor& text, std::uint32_t* values, TriplePlaces* places, int most);
/// @}

/// Reads usual reals separated by commas, up to the first other piece or to the end of the text; the first
/// one begins at the cursor.
/// @param text   input and output: the cursor; just after the last number that was read
/// @param values output: room for `most`; those after the last number are unspecified
/// @return how many numbers, 0 also on processors for which there is no fast way
int readUsualReals(PlainCursor& text, double* values, int most);

/// The same triples on any processor. The functions above need half the time on one with AVX2 and BMI2.
/// @{
int readTriplesNarrow(PlainCursor& text, double* values, TriplePlaces* places, int most);
int readTriplesNarrow(PlainCursor& text, std::uint32_t* values, TriplePlaces* places, int most);
/// @}

}  // namespace ztcad
