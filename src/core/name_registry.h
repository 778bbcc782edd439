#pragma once

#include <QString>

namespace ztcad {

/// Answers whether `name` is still free in the process-wide registry of names: always true, because nothing
/// adds names to it. Kept because constructors report the answer; duplicates are found by the unification
/// instead.
bool nameIsFree(const QString& name);

/// Part of the unload step.
void releaseNameRegistry();

}  // namespace ztcad
