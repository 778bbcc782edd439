#pragma once

#include <ztCAD/inspect.h>

#include <cstdint>
#include <string>

#include "finding.h"

namespace cli {

/// A finding of a review.
Finding toFinding(const ztCAD_Finding& source);

/// Whether a result code is that of a file that was not read: missing, or the system's reason.
bool isFileProblem(std::int32_t code);

/// The message of a finding with the first places: " The first edges: 0-3, 3-7."
std::string messageOf(const ztCADInspect_Finding& finding);

}  // namespace cli
