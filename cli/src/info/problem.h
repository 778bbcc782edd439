#pragma once

#include <ztCAD/ztCAD_c.h>

#include <string>

namespace cli {

/// Why the code of an outcome is not 0, with the place if there is one: "unexpected end of file (line 2,
/// column 1)".
std::string problemOf(const ztCAD_Outcome& outcome);

}  // namespace cli
