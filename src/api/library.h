#pragma once

/// @file
/// The library itself: c/library.h, and the class that `getParallel_Morvik` returns.

#include "../support/_Common/ztParallel.h"
#include "c/library.h"
