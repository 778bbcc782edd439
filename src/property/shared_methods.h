#pragma once

#include <QString>

class ztCAD_gMethod;

namespace ztcad {

/// The method object that all elements with this word share (`ztCAD_gMethod::isShared`); null for an unusual
/// word.
const ztCAD_gMethod* sharedMethod(const QString& word);

/// Frees the memory of the shared objects, which stay and keep their words, because elements of the host may
/// exist longer. Part of the unload step.
void releaseSharedMethods();

}  // namespace ztcad
