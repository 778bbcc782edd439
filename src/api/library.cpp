#include "library.h"

#include <ztCAD/version.h>

#include "../core/document/live_documents.h"
#include "../core/name_registry.h"
#include "../core/vocabulary.h"
#include "../number/number_text.h"
#include "../property/shared_methods.h"
#include "../structure/read_structures.h"
#include "../structure/structure.h"
#include "../support/lazy_lock.h"
#include "created_objects.h"
#include "guard.h"
#include "host_log.h"
#include "reviews.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace {

// When a process exits, Windows first kills its other threads wherever they are, then unloads libraries: a
// thread may have held the lock of the heap, or changed half of a list. Nothing is released then; the memory
// ends with the process.
bool processIsEnding = false;

/// The only object of the library whose constructor and destructor the system runs: the load step and the
/// unload step.
///
/// Whatever is released here is created again, empty, if a destructor of the host uses it afterwards.
class Library {
 public:
  Library() {
    ztcad::createGuardLock();
    ztcad::parallelSettings().initialise(1);
    ztcad::guarded(
        [] {  // without memory the host may still load the library: what is missing is created later
          ztcad::words();
          ztcad::sharedMethod(QString());
          ztcad::createdObjects();
          ztcad::queryLocale();
        });
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    if (processIsEnding) return;
    ztcad::abandonNestedStructures(true);  // for good: structures of the host may be linked to released ones
    ztcad::releaseHostLog();
    ztcad::releaseReviews();
    ztcad::releaseCreatedObjects();
    ztcad::releaseLiveDocuments();
    ztcad::clearReadStructures();
    ztcad::releaseNameRegistry();
    ztcad::releaseSharedMethods();
    ztcad::releaseWords();
    ztcad::destroyGuardLock();
  }
};

// NOLINTNEXTLINE(clang-diagnostic-exit-time-destructors,clang-diagnostic-global-constructors): the only one
const Library library;

}  // namespace

#if defined(_WIN32)
// Called by the system before the destructors of static objects. `reserved` is null for FreeLibrary, and not
// null when the process ends.
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
