#pragma once

#include "coordinate_system.h"

namespace ztcad {

/// Whether two systems have the same number of values and corresponding values differ by less than the
/// tolerance. Whether they are local is not compared.
[[nodiscard]] bool isEqual(const ztCAD_LCS& a, const ztCAD_LCS& b);

/// Reads the attribute as `ztCAD_LCS::read` does. False, with `values` unspecified, where that fails.
[[nodiscard]] bool readSystem(const ElementView& element, const QString& attribute,
                              double (&values)[ztCAD_LCS::valueCount]);

/// Writes the attribute as `ztCAD_LCS::write` does.
void writeSystem(ElementSink& element, const QString& attribute, const double* begin, const double* end);

}  // namespace ztcad
