#pragma once

/// @file
/// Sixteen bytes at once, where the processor can: every one of 64-bit PCs. ZTCAD_SSE2 tells.

#if defined(__SSE2__) || defined(_M_X64)
#define ZTCAD_SSE2
#include <emmintrin.h>
#endif
