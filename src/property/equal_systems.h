#pragma once

#include "coordinate_system.h"

namespace ztcad {

/// Whether two systems have the same number of values and corresponding values differ by less than the
/// tolerance. Whether they are local is not compared.
[[nodiscard]] bool isEqual(const ztCAD_LCS& a, const ztCAD_LCS& b);

}  // namespace ztcad
