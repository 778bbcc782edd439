#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include "../geometry/faces.h"
#include "../geometry/mip.h"
#include "../geometry/point.h"
#include "../geometry/vertices.h"
#include "../property/coordinate_system.h"
#include "../property/display.h"

/// Records and lists from which elements are built.
///
/// What is made here belongs to the library until it is unloaded and serves for any number of elements, which
/// take copies. A null argument: nothing is made and null comes back, or nothing is added. No exception comes
/// out.

extern "C" {

/// An empty list of vertices.
ZTCAD_API ztCAD_Vertices* crtVertices();
/// An empty list of facets.
ZTCAD_API ztCAD_Faces* crtFaces();

/// A position; three reals by pointer, in the document's length unit. No range is checked.
ZTCAD_API ztCAD_Coord* crtCoord(const double* x, const double* y, const double* z);
ZTCAD_API ztCAD_Vertex* crtVertex(const double* x, const double* y, const double* z);
ZTCAD_API ztCAD_Vertex* crtVertexByCoord(const ztCAD_Coord* coord);
/// A vertex at a point's centre, without a value when the point has none.
ZTCAD_API ztCAD_Vertex* crtVertexByPoint(const ztCAD_Point* point);

/// A triangle, as three indices into a vertex list. They are not compared with any list.
ZTCAD_API ztCAD_Facet* crtFacet(const std::uint32_t* i1, const std::uint32_t* i2, const std::uint32_t* i3);

/// A colour. Components are kept as given, nothing is clamped to 255.
ZTCAD_API ztCAD_Color* crtColor(const std::uint32_t* red, const std::uint32_t* green,
                                const std::uint32_t* blue);

/// A local coordinate system. A system of other than twelve values is made all the same, but does not read
/// back.
ZTCAD_API ztCAD_LCS* crtLCS(const std::vector<double>& values);
/// The same from an array of twelve values.
ZTCAD_API ztCAD_LCS* crtLCS_nostl(const double* twelveValues);

/// A mass-inertia record of ten values. One of fewer is made all the same, but is refused wherever it is set.
ZTCAD_API ztCAD_MIP* crtMIP(const std::vector<double>& values);
/// The same from an array of `count` values; null and a negative count: nothing is made.
ZTCAD_API ztCAD_MIP* crtMIP_nostl(const double* values, std::int32_t count);

/// Appends a vertex; one without a value counts as 0, 0, 0.
ZTCAD_API void addVertex(const ztCAD_Vertex* vertex, ztCAD_Vertices* vertices);
/// Appends each vertex in order; a null entry is passed over.
ZTCAD_API void addVertexN(const std::list<ztCAD_Vertex*>& added, ztCAD_Vertices* vertices);
/// The same from an array of `count` pointers; a negative count counts as 0.
ZTCAD_API void addVertexN_nostl(const ztCAD_Vertex* const* added, std::int32_t count,
                                ztCAD_Vertices* vertices);

/// Appends the three indices of a facet.
ZTCAD_API void addFacet(const ztCAD_Facet* facet, ztCAD_Faces* faces);
/// Appends each facet in order; a null entry is passed over.
ZTCAD_API void addFacetN(const std::list<ztCAD_Facet*>& added, ztCAD_Faces* faces);
/// The same from an array of `count` pointers; a negative count counts as 0.
ZTCAD_API void addFacetN_nostl(const ztCAD_Facet* const* added, std::int32_t count, ztCAD_Faces* faces);

/// Whether two coordinate systems have equally many values that pairwise differ by less than 1e-08. Whether
/// they are local is not compared. False when either is null.
ZTCAD_API bool isEqual(const ztCAD_LCS* a, const ztCAD_LCS* b);
}
