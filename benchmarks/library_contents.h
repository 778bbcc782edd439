#pragma once

#include <ztCAD/ztCAD.h>

#include "documents.h"

namespace benchmarks {

/// Counts what a document holds, through the functions for hosts that know no C++ containers.
ContentSize sizeOf(ztCAD_GMDDocument* document);

}  // namespace benchmarks
