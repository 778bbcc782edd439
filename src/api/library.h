#pragma once

/// @file
/// The library itself: c/library.h, and the class behind `getParallel_Morvik`.

#include "../support/_Common/ztParallel.h"
#include "c/library.h"
