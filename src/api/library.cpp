#include "library.h"

#include "../core/name_registry.h"
#include "../core/vocabulary.h"
#include "../structure/read_structures.h"
#include "../structure/structure.h"
#include "../support/_Common/lazy_lock.h"
#include "created_objects.h"

namespace {

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
    ztcad::abandonNestedStructures(true);  // for good: what a host owns may be tied to what goes now
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

ztParallel* getParallel_Morvik() { return &ztcad::parallelSettings(); }

const char* ztCADVersion() { return ZTCAD_VERSION; }
