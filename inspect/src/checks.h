#pragma once

#include "finding_list.h"
#include "scene.h"

namespace ztcad::inspect {

/// The findings of `ztCADInspect_Checks`, in the order of the document.
FindingList check(Scene& scene, int checks);

}  // namespace ztcad::inspect
