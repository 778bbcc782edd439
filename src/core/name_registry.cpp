#include "name_registry.h"

#include <set>

#include "../support/process_object.h"

namespace ztcad {

namespace {
ProcessObject<std::set<QString>> takenNames;
}

bool nameIsFree(const QString& name) { return takenNames.get().count(name) == 0; }

void releaseNameRegistry() { takenNames.release(); }

}  // namespace ztcad
