#pragma once

#include "types.h"

/// @file
/// The library itself: its version, and its settings for the whole process.

ZTCAD_C_BEGIN

/// Version of the library that is loaded, "major.minor.patch". The text is part of the library: valid while
/// it is loaded.
ZTCAD_API const char* ztCADVersion(void);

/// The process-wide settings of parallel execution. Never null; valid while the library is loaded.
ZTCAD_API ztParallel* getParallel_Morvik(void);

/// Which thread count applies: 1 that of physical cores, any other value that of logical processors.
ZTCAD_API int32_t ztCAD_getParallelMode(void);
/// Sets the mode. If it changes, OpenMP's thread count is set to the count of the new mode (at least 1) and
/// nested parallel regions are switched off.
/// @return the previous mode
ZTCAD_API int32_t ztCAD_setParallelMode(int32_t mode);
/// The counts for both modes; either output may be null.
ZTCAD_API void ztCAD_getThreadCounts(uint32_t* logicalThreads, uint32_t* physicalThreads);
/// Sets each count to `requested` or to what the machine has, whichever is less, and configures OpenMP for
/// the mode. When the library is loaded, it sets both to 1.
ZTCAD_API void ztCAD_setThreadCounts(uint32_t requested);
/// Physical cores of this machine, at least 1.
ZTCAD_API uint32_t ztCAD_getPhysicalCoreCount(void);

/// Sets the function that receives the reports of the library's consistency checks and of exceptions that
/// exported functions catch. Without one, reports go to Qt's warning output, except those of memory
/// exhaustion, which are dropped. The function replaces any log writer that was installed.
/// @param write   called with one line, line feed included, during the call that reports. It may install
///                another function or none; exceptions that it throws are ignored. Null removes the function
/// @param context passed to `write` unchanged
ZTCAD_API void ztCAD_setAssertionWriter(void (*write)(const char* line, void* context), void* context);
/// Reports a failed check as the library's own checks do; the process continues.
/// @param expression the condition that failed; null counts as empty
/// @param file       the source file; null counts as empty
/// @param line       the line in that file
ZTCAD_API void ztCAD_report(const char* expression, const char* file, uint32_t line);

ZTCAD_C_END
