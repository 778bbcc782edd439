#pragma once

#include <ztCAD/inspect.h>

#include "finding_list.h"
#include "mass.h"
#include "mesh_view.h"
#include "settings.h"

namespace ztcad::inspect {

/// What an analysis of a mesh finds: counts, findings, mass properties.
struct MeshAnalysis {
  ztCADInspect_MeshState state = {};
  FindingList findings;
  int massProblem = ztCADInspect_MassNoFacets;
  Mass mass = {};
};

MeshAnalysis analyse(const MeshView& mesh, const Subject& subject, const Settings& settings);

/// The arrays of a solid.
MeshView viewOf(const ztCAD_Base* solid);

}  // namespace ztcad::inspect

/// What the C interface knows as a mesh.
struct ztCADInspect_Mesh {
  ztCADInspect_MeshState state = {};
  ztCADInspect_Findings findings;
  int massProblem = ztCADInspect_MassNoFacets;
  ztCADInspect_MassProperties mass = {};
};
