#pragma once

#include "types.h"

/// @file
/// Records and lists from which elements are built.
///
/// Created records belong to the library until it is unloaded. Elements copy them, so one record serves for
/// any number of elements. With a null argument a creation function returns null, and any other function does
/// nothing. Arrays are read or written during the call and not kept. No function throws.
///
/// The library stores and writes numbers as given; it interprets none of them. Their meaning below is a
/// convention of the format, for programs to agree on. Units of length and mass are those of the document,
/// which does not name them.

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

/// A triangle: three indices into a vertex list, by convention from 0. They are not compared with any list.
ZTCAD_API ztCAD_Facet* crtFacet(const uint32_t* i1, const uint32_t* i2, const uint32_t* i3);

/// A colour. Components are kept as given and not clamped to 255.
ZTCAD_API ztCAD_Color* crtColor(const uint32_t* red, const uint32_t* green, const uint32_t* blue);

/// A local coordinate system.
///
/// @param twelveValues by convention origin, x axis, y axis, z axis, three numbers each, in the frame of the
///                     holder: the structure or detail that contains the element, or the document. An
///                     element's own coordinates are in its own system. The placement of a reference puts its
///                     template there; the template's own system comes inside the placement
ZTCAD_API ztCAD_LCS* crtLCS_nostl(const double* twelveValues);

/// A mass-inertia record.
///
/// @param values `count` reals, by convention: the mass; the centre of mass, three numbers in the element's
///               frame; then Ixx, Iyy, Izz, Ixy, Ixz, Iyz about the centre of mass, in the directions of the
///               axes of that frame. The last three are entries of the inertia matrix: Ixy = -integral of x*y
///               dm
/// @param count  ten. A record of fewer values can be created, but no element takes it
/// @return null also if `values` is null or `count` is negative
ZTCAD_API ztCAD_MIP* crtMIP_nostl(const double* values, int32_t count);
/// Gives a record other values, for example those of the next element. Null: nothing happens.
/// @param values `count` reals, as in `crtMIP_nostl`; with null or a negative count the record is unchanged
ZTCAD_API void ztCAD_fillMIP(ztCAD_MIP* record, const double* values, int32_t count);
/// Gives a coordinate system other values. Null: nothing happens.
/// @param values  `count` reals, as in `crtLCS_nostl`; may be null if `count` is 0
/// @param count   twelve, or 0 for an empty system; a system of another count is written but not read back
/// @param isLocal which name the system is written under: true "LCS", the system of an element; false "MCS".
///                References write their placement as "MCS" in either case
ZTCAD_API void ztCAD_fillLCS(ztCAD_LCS* lcs, const double* values, int32_t count, bool isLocal);
/// Gives a position other values. Null: nothing happens.
/// @param xyz three reals; null makes it a position without a value
ZTCAD_API void ztCAD_fillCoord(ztCAD_Coord* coord, const double* xyz);
/// Sets two integers that are copied with the record and never written; hosts may use them freely. Null:
/// nothing happens.
ZTCAD_API void ztCAD_setMIPIntegers(ztCAD_MIP* record, int32_t first, int32_t second);

/// Whether two coordinate systems have the same number of values, and each pair differs by less than 1e-08.
/// Whether they are local is not compared. False if either is null.
ZTCAD_API bool isEqual(const ztCAD_LCS* a, const ztCAD_LCS* b);

// -------------------------------------------------------------------------------- vertices

/// Appends a vertex; one without a value is appended as 0, 0, 0, so that facet indices keep their meaning.
ZTCAD_API void addVertex(const ztCAD_Vertex* vertex, ztCAD_Vertices* vertices);
/// Appends `count` vertices, given by pointers, in order. Null entries are skipped; a negative count counts
/// as 0. If memory runs out, the list is unchanged.
ZTCAD_API void addVertexN_nostl(const ztCAD_Vertex* const* added, int32_t count, ztCAD_Vertices* vertices);
/// Appends the vertices of a flat array, without a record for each of them: the function for large meshes.
/// @param xyz   `count` * 3 reals, x y z interleaved, in the document's length unit; null: nothing happens
/// @param count number of vertices (not of reals); a negative count counts as 0
///
/// If memory runs out, the list is unchanged.
ZTCAD_API void addVertexXYZ_nostl(const double* xyz, int32_t count, ztCAD_Vertices* vertices);

/// Number of vertices; 0 for null.
ZTCAD_API int32_t ztCAD_getVertexCount(const ztCAD_Vertices* vertices);
/// Copies vertices into a flat array.
/// @param first index of the first one, from 0
/// @param xyz   array of `count` * 3 reals; null: nothing is copied
/// @return the number of vertices copied: fewer than `count` at the end of the list; 0 if `first` is not in
///         the list, and for null
ZTCAD_API int32_t getVertexXYZ_nostl(const ztCAD_Vertices* vertices, int32_t first, int32_t count,
                                     double* xyz);
/// The list's own reals, three for each vertex, valid until the list changes or is destroyed; null for an
/// empty list and for null.
ZTCAD_API const double* ztCAD_getVertexData(const ztCAD_Vertices* vertices);
/// Empties the list, for example to fill it for the next solid.
ZTCAD_API void ztCAD_clearVertices(ztCAD_Vertices* vertices);

// -------------------------------------------------------------------------------- facets

/// Appends the three indices of a facet.
ZTCAD_API void addFacet(const ztCAD_Facet* facet, ztCAD_Faces* faces);
/// Appends `count` facets, given by pointers, in order. Null entries are skipped; a negative count counts as
/// 0. If memory runs out, the list is unchanged.
ZTCAD_API void addFacetN_nostl(const ztCAD_Facet* const* added, int32_t count, ztCAD_Faces* faces);
/// Appends the facets of a flat array.
/// @param ijk   `count` * 3 indices into a list of vertices, by convention from 0; they are not compared with
///              any list. Null: nothing happens
/// @param count number of facets (not of indices); a negative count counts as 0
///
/// If memory runs out, the list is unchanged.
ZTCAD_API void addFacetIJK_nostl(const uint32_t* ijk, int32_t count, ztCAD_Faces* faces);

/// Number of facets; 0 for null.
ZTCAD_API int32_t ztCAD_getFacetCount(const ztCAD_Faces* faces);
/// Copies facets into a flat array.
/// @param first index of the first one, from 0
/// @param ijk   array of `count` * 3 indices; null: nothing is copied
/// @return the number of facets copied: fewer than `count` at the end of the list; 0 if `first` is not in the
///         list, and for null
ZTCAD_API int32_t getFacetIJK_nostl(const ztCAD_Faces* faces, int32_t first, int32_t count, uint32_t* ijk);
/// The list's own indices, three for each facet, valid until the list changes or is destroyed; null for an
/// empty list and for null.
ZTCAD_API const uint32_t* ztCAD_getFacetData(const ztCAD_Faces* faces);
/// Empties the list, for example to fill it for the next solid.
ZTCAD_API void ztCAD_clearFaces(ztCAD_Faces* faces);

ZTCAD_C_END
