#include "library.h"

#include <ztCAD/version.h>

#include "../core/name_registry.h"
#include "../core/vocabulary.h"
#include "../structure/read_structures.h"
#include "../structure/structure.h"
#include "../support/lazy_lock.h"
#include "created_objects.h"
#include "host_log.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace {

// Windows ends a process by ending its other threads wherever they are and taking the libraries down afterwards: a
// thread may have held the heap or half a list. The memory goes with the process, so nothing is released then.
bool processIsEnding = false;

/// The one object of the library with a constructor and a destructor that the system runs: load step and
/// unload step.
///
/// Everything taken down here comes back empty when a destructor of the host still asks for it afterwards.
class Library {
 public:
  Library() {
    ztcad::createGuardLock();
    ztcad::parallelSettings().initialise(1);
    ztcad::words();
    ztcad::createdObjects();
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    if (processIsEnding) return;
    ztcad::abandonNestedStructures(true);  // for good: what a host owns may be tied to what goes now
    ztcad::releaseHostLog();
    ztcad::releaseCreatedObjects();
    ztcad::clearReadStructures();
    ztcad::releaseNameRegistry();
    ztcad::releaseWords();
    ztcad::destroyGuardLock();
  }
};

// NOLINTNEXTLINE(clang-diagnostic-exit-time-destructors,clang-diagnostic-global-constructors): the one there is
const Library library;

}  // namespace

#if defined(_WIN32)
// Called by the system before the destructors of static objects; `reserved` tells the end of the process from
// FreeLibrary.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, LPVOID reserved) {
  if (reason == DLL_PROCESS_DETACH) processIsEnding = reserved != nullptr;
  return TRUE;
}
#endif

ztParallel* getParallel_Morvik() { return &ztcad::parallelSettings(); }

std::int32_t ztCAD_getParallelMode() { return ztcad::parallelSettings().mode; }

std::int32_t ztCAD_setParallelMode(std::int32_t mode) { return ztcad::parallelSettings().setMode(mode); }

void ztCAD_getThreadCounts(std::uint32_t* logicalThreads, std::uint32_t* physicalThreads) {
  if (logicalThreads) *logicalThreads = ztcad::parallelSettings().logicalThreads;
  if (physicalThreads) *physicalThreads = ztcad::parallelSettings().physicalThreads;
}

std::uint32_t ztCAD_getPhysicalCoreCount() { return ztParallel::physicalCoreCount(); }

void ztCAD_setThreadCounts(std::uint32_t requested) { ztcad::parallelSettings().initialise(requested); }

const char* ztCADVersion() { return ZTCAD_VERSION_STRING; }
