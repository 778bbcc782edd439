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
/// Records and lists from containers of the standard library; everything else, and what holds for all, stands in
/// c/records.h.

extern "C" {

/// A local coordinate system. A system of other than twelve values is made all the same, but does not read
/// back.
ZTCAD_API ztCAD_LCS* crtLCS(const std::vector<double>& values);
/// As `crtMIP_nostl`.
ZTCAD_API ztCAD_MIP* crtMIP(const std::vector<double>& values);

/// As `addVertexN_nostl`.
ZTCAD_API void addVertexN(const std::list<ztCAD_Vertex*>& added, ztCAD_Vertices* vertices);
/// As `addFacetN_nostl`.
ZTCAD_API void addFacetN(const std::list<ztCAD_Facet*>& added, ztCAD_Faces* faces);
}
