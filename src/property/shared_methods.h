#pragma once

#include <QString>

class ztCAD_gMethod;

namespace ztcad {

/// The method object that all elements with this word share; null for an unusual word.
const ztCAD_gMethod* sharedMethod(const QString& word);

/// Whether the object is one of those, and therefore owned by no element.
bool isSharedMethod(const ztCAD_gMethod* method);

/// Frees the memory of the shared objects, which stay and keep their words, because elements of the host may
/// exist longer. Part of the unload step.
void releaseSharedMethods();

}  // namespace ztcad
