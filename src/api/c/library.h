#pragma once

#include "types.h"

/// @file
/// The library itself: its version, and what holds for the whole process.

ZTCAD_C_BEGIN

/// Version of the library that is loaded, "major.minor.patch"; lies in the library.
ZTCAD_API const char* ztCADVersion(void);

/// The process-wide settings of parallel execution: a pointer that stays good while the library is loaded.
/// Never null.
ZTCAD_API ztParallel* getParallel_Morvik(void);

/// Which count of threads holds: 1 that of physical cores, any other value that of processors.
ZTCAD_API int32_t ztCAD_getParallelMode(void);
/// Changes the mode. If it is a new one, OpenMP gets the thread count that belongs to it (a count of 0 as 1) and nested
/// regions are switched off.
/// @return the mode before
ZTCAD_API int32_t ztCAD_setParallelMode(int32_t mode);
/// The counts for both modes; null is fine for one that is not wanted.
ZTCAD_API void ztCAD_getThreadCounts(uint32_t* logicalThreads, uint32_t* physicalThreads);
/// Sets both counts to `requested` or to what the machine has, whichever is less, and configures OpenMP for the mode.
/// The library asks for 1 when it is loaded.
ZTCAD_API void ztCAD_setThreadCounts(uint32_t requested);
/// Physical cores of this machine, at least 1.
ZTCAD_API uint32_t ztCAD_getPhysicalCoreCount(void);

/// Where the library's own consistency checks report; without a function their lines go to Qt's warning output. It takes the
/// place of any log writer that was installed.
/// @param write   called with one line, its line feed included, during the call that reports; it may install another function
///                or none, and what it throws is dropped. Null: no function from now on
/// @param context given to `write` as it is
ZTCAD_API void ztCAD_setAssertionWriter(void (*write)(const char* line, void* context), void* context);
/// Reports as the library's own checks do; the process goes on.
/// @param expression what did not hold; null counts as empty
/// @param file       where; null counts as empty
/// @param line       the line there
ZTCAD_API void ztCAD_report(const char* expression, const char* file, uint32_t line);

ZTCAD_C_END
