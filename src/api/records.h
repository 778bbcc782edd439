#pragma once

#include <list>
#include <vector>

#include "../geometry/faces.h"
#include "../geometry/mip.h"
#include "../geometry/point.h"
#include "../geometry/vertices.h"
#include "../property/coordinate_system.h"
#include "../property/display.h"
#include "c/records.h"

/// @file
/// Records and lists from containers of the standard library. c/records.h declares all other functions, says
/// what the values mean by convention, and states the rules that apply to these too.

extern "C" {

/// A local coordinate system.
/// @param values by convention origin, x axis, y axis, z axis, three numbers each, in the frame of the
///               holder, as in `crtLCS_nostl`. A system of another number of values can be created and
///               written, but is not read back
ZTCAD_API ztCAD_LCS* crtLCS(const std::vector<double>& values);
/// Like `crtMIP_nostl`: by convention mass, centre of mass, then Ixx, Iyy, Izz, Ixy, Ixz, Iyz.
ZTCAD_API ztCAD_MIP* crtMIP(const std::vector<double>& values);

/// Like `addVertexN_nostl`.
ZTCAD_API void addVertexN(const std::list<ztCAD_Vertex*>& added, ztCAD_Vertices* vertices);
/// Like `addFacetN_nostl`.
ZTCAD_API void addFacetN(const std::list<ztCAD_Facet*>& added, ztCAD_Faces* faces);
}
