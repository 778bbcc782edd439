#pragma once

#include <cstdint>
#include <QStringView>
#include <vector>

namespace ztcad {

/// Lists of numbers in characters: the slow path of number_list.h and the definition of what it accepts. Each
/// number is converted as Qt does. All of them set the default locale to C (see `useCLocale`).

/// Parses a list separated by commas and appends it to `values`. Every ";" is ignored, empty parts are
/// dropped. True only if every part converted; those that did are appended in any case.
[[nodiscard]] bool parseList(QStringView text, std::vector<double>& values);

/// What a piece of a list of triples is.
enum class TriplePiece {
  Blank,    ///< whitespace, or nothing
  Skipped,  ///< without a comma: adds nothing, and is no failure
  Bad,      ///< too short, or with a part that does not convert: adds nothing, and fails the list
  Whole,    ///< three numbers, which are appended
  Cut,      ///< more numbers, of which the first three are appended
};

/// Parses one piece of a list, without its ";".
/// @{
TriplePiece parseTriple(QStringView piece, std::vector<double>& values);
TriplePiece parseTriple(QStringView piece, std::vector<std::uint32_t>& values);
/// @}

/// `parseTriples` of number_list.h.
/// @{
[[nodiscard]] bool parseTriples(QStringView text, std::vector<double>& values);
[[nodiscard]] bool parseTriples(QStringView text, std::vector<std::uint32_t>& values);
/// @}

}  // namespace ztcad
