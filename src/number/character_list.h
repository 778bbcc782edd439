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

/// `parseTriples` of number_list.h.
/// @{
[[nodiscard]] bool parseTriples(QStringView text, std::vector<double>& values);
[[nodiscard]] bool parseTriples(QStringView text, std::vector<std::uint32_t>& values);
/// @}

}  // namespace ztcad
