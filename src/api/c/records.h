#pragma once

#include "types.h"

/// @file
/// Records and lists from which elements are built.
///
/// What is made here belongs to the library until it is unloaded and serves for any number of elements, which
/// take copies. A null argument: nothing is made and null comes back, or nothing is added. No exception comes
/// out. Arrays are read or written during the call and not kept.

ZTCAD_C_BEGIN

/// An empty list of vertices.
ZTCAD_API ztCAD_Vertices* crtVertices(void);
/// An empty list of facets.
ZTCAD_API ztCAD_Faces* crtFaces(void);

/// A position; three reals by pointer, in the document's length unit. No range is checked.
ZTCAD_API ztCAD_Coord* crtCoord(const double* x, const double* y, const double* z);
/// A vertex at that position.
ZTCAD_API ztCAD_Vertex* crtVertex(const double* x, const double* y, const double* z);
/// A vertex at the position of `coord`.
ZTCAD_API ztCAD_Vertex* crtVertexByCoord(const ztCAD_Coord* coord);
/// A vertex at a point's centre, without a value when the point has none.
ZTCAD_API ztCAD_Vertex* crtVertexByPoint(const ztCAD_Point* point);

/// A triangle, as three indices into a vertex list. They are not compared with any list.
ZTCAD_API ztCAD_Facet* crtFacet(const uint32_t* i1, const uint32_t* i2, const uint32_t* i3);

/// A colour. Components are kept as given, nothing is clamped to 255.
ZTCAD_API ztCAD_Color* crtColor(const uint32_t* red, const uint32_t* green, const uint32_t* blue);

/// A local coordinate system from an array of twelve values, whose meaning the library does not interpret (by custom
/// the origin, then the three axes).
ZTCAD_API ztCAD_LCS* crtLCS_nostl(const double* twelveValues);

/// A mass-inertia record of ten values (by custom the mass, its centre and the six terms of the inertia tensor). One of
/// fewer is made all the same, but is refused wherever it is set.
/// @param values `count` reals; null and a negative count: nothing is made
ZTCAD_API ztCAD_MIP* crtMIP_nostl(const double* values, int32_t count);
/// Gives a record other values, so that one serves for any number of elements. Null: nothing happens.
/// @param values `count` reals; null and a negative count: the record stays
ZTCAD_API void ztCAD_fillMIP(ztCAD_MIP* record, const double* values, int32_t count);
/// Gives a coordinate system other values, likewise.
/// @param values  `count` reals, twelve or none: an empty system; null is fine with 0. One of another count does not read back
/// @param isLocal true for the system of an element; a reference makes its placement a model system, whatever is said here
ZTCAD_API void ztCAD_fillLCS(ztCAD_LCS* lcs, const double* values, int32_t count, bool isLocal);
/// Gives a position other values, likewise.
/// @param xyz three reals; null: no position
ZTCAD_API void ztCAD_fillCoord(ztCAD_Coord* coord, const double* xyz);
/// Two integers that travel with copies of the record and are never written; hosts may use them as they like. Null:
/// nothing happens.
ZTCAD_API void ztCAD_setMIPIntegers(ztCAD_MIP* record, int32_t first, int32_t second);

/// Whether two coordinate systems have equally many values that pairwise differ by less than 1e-08. Whether
/// they are local is not compared. False when either is null.
ZTCAD_API bool isEqual(const ztCAD_LCS* a, const ztCAD_LCS* b);

// -------------------------------------------------------------------------------- vertices

/// Appends a vertex; one without a value counts as 0, 0, 0.
ZTCAD_API void addVertex(const ztCAD_Vertex* vertex, ztCAD_Vertices* vertices);
/// Appends `count` vertices, given by pointers, in order; a null entry is passed over, a negative count counts as 0. Without
/// memory those before are in the list.
ZTCAD_API void addVertexN_nostl(const ztCAD_Vertex* const* added, int32_t count, ztCAD_Vertices* vertices);
/// Appends the vertices of a flat array: without a record for each of them, and so the way for large meshes.
/// @param xyz   `count` * 3 reals, x y z interleaved, in the document's length unit; null: nothing happens
/// @param count number of vertices (not of reals); a negative count counts as 0
///
/// A list for which there is no memory stays as it was.
ZTCAD_API void addVertexXYZ_nostl(const double* xyz, int32_t count, ztCAD_Vertices* vertices);

/// Number of vertices; 0 for null.
ZTCAD_API int32_t ztCAD_getVertexCount(const ztCAD_Vertices* vertices);
/// Copies vertices into a flat array.
/// @param first index of the first one, from 0
/// @param xyz   room for `count` * 3 reals; null: nothing is copied
/// @return how many were copied: fewer than `count` at the end of the list, 0 for a `first` that is not in it and for null
ZTCAD_API int32_t getVertexXYZ_nostl(const ztCAD_Vertices* vertices, int32_t first, int32_t count,
                                     double* xyz);
/// The list's own reals, three for each vertex, until the list changes or goes; null for an empty list and for null.
ZTCAD_API const double* ztCAD_getVertexData(const ztCAD_Vertices* vertices);
/// Empties the list, so that it can serve for the next solid.
ZTCAD_API void ztCAD_clearVertices(ztCAD_Vertices* vertices);

// -------------------------------------------------------------------------------- facets

/// Appends the three indices of a facet.
ZTCAD_API void addFacet(const ztCAD_Facet* facet, ztCAD_Faces* faces);
/// Appends `count` facets, given by pointers, in order; a null entry is passed over, a negative count counts as 0. Without
/// memory those before are in the list.
ZTCAD_API void addFacetN_nostl(const ztCAD_Facet* const* added, int32_t count, ztCAD_Faces* faces);
/// Appends the facets of a flat array.
/// @param ijk   `count` * 3 indices into a list of vertices, from 0; they are not compared with any list. Null: nothing
///              happens
/// @param count number of facets (not of indices); a negative count counts as 0
///
/// A list for which there is no memory stays as it was.
ZTCAD_API void addFacetIJK_nostl(const uint32_t* ijk, int32_t count, ztCAD_Faces* faces);

/// Number of facets; 0 for null.
ZTCAD_API int32_t ztCAD_getFacetCount(const ztCAD_Faces* faces);
/// Copies facets into a flat array.
/// @param first index of the first one, from 0
/// @param ijk   room for `count` * 3 indices; null: nothing is copied
/// @return how many were copied: fewer than `count` at the end of the list, 0 for a `first` that is not in it and for null
ZTCAD_API int32_t getFacetIJK_nostl(const ztCAD_Faces* faces, int32_t first, int32_t count, uint32_t* ijk);
/// The list's own indices, three for each facet, until the list changes or goes; null for an empty list and for null.
ZTCAD_API const uint32_t* ztCAD_getFacetData(const ztCAD_Faces* faces);
/// Empties the list, so that it can serve for the next solid.
ZTCAD_API void ztCAD_clearFaces(ztCAD_Faces* faces);

ZTCAD_C_END
