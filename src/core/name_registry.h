#pragma once

#include <QString>

namespace ztcad {

/// Whether `name` is free in the process-wide registry of names: always true, because nothing adds names to
/// it. It exists because constructors report the answer; duplicates are renamed by the unification.
bool nameIsFree(const QString& name);

/// Part of the unload step.
void releaseNameRegistry();

}  // namespace ztcad
