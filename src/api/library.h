#pragma once

#include "../support/_Common/ztParallel.h"
#include "../support/export.h"

extern "C" {

/// The process-wide settings of parallel execution: a pointer that stays good while the library is loaded.
/// Never null.
ZTCAD_API ztParallel* getParallel_Morvik();

/// Version of the library that is loaded, "major.minor.patch"; lies in the library.
ZTCAD_API const char* ztCADVersion();
}
