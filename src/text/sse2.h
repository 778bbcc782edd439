#pragma once

/// @file
/// Defines ZTCAD_SSE2 if the target has SSE2, as every 64-bit x86 processor does, and includes its
/// intrinsics.

#if defined(__SSE2__) || defined(_M_X64)
#define ZTCAD_SSE2
#include <emmintrin.h>
#endif
