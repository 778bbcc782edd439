#pragma once

#include "types.h"

/// @file
/// Elements, templates, references and structures: made, and given their properties.
///
/// What is made here belongs to the library until it is unloaded; adding it to a document or to a structure
/// stores a copy (nested structures excepted). Names are UTF-8, else windows-1251, and kept as they are
/// given, duplicates included, until the document is saved or loaded; a null name counts as empty.
/// `nameIsFree` is an output and always true. A null object: nothing is made and null comes back, or nothing
/// is set. No exception comes out.

ZTCAD_C_BEGIN

// -------------------------------------------------------------------------------- elements

/// A point at `center`.
ZTCAD_API ztCAD_Point* crtPoint_nostl(const char* name, const ztCAD_Coord* center,
                                      ZTCAD_OUT(bool) nameIsFree);
/// A polyline through the vertices in their order.
ZTCAD_API ztCAD_Line* crtPolyline(const char* name, const ztCAD_Vertices* vertices,
                                  ZTCAD_OUT(bool) nameIsFree);
/// A sphere around `center`.
/// @param radius in the document's length unit; the file stores only that there is one
ZTCAD_API ztCAD_Sphere* crtSphere_nostl(const char* name, const ztCAD_Coord* center, double radius,
                                        ZTCAD_OUT(bool) nameIsFree);
/// A triangulated solid. The indices of the facets are not compared with the number of vertices.
ZTCAD_API ztCAD_Triangle* crtTriangle_nostl(const char* name, const ztCAD_Vertices* vertices,
                                            const ztCAD_Faces* faces, ZTCAD_OUT(bool) nameIsFree);
/// A mass-inertia element. From a record of fewer than ten values comes an element without one, which is not
/// written.
ZTCAD_API ztCAD_ElementMIP* crtMipElement_nostl(const char* name, const ztCAD_MIP* record);
/// A structure without content.
/// @param lcs the structure's coordinate system
ZTCAD_API ztCAD_Structure* crtStructure_nostl(const char* name, const ztCAD_LCS* lcs,
                                              ZTCAD_OUT(bool) nameIsFree);

// -------------------------------------------------------------------------------- templates

/// Position and properties of `source` (a point or a template point) under a new name.
ZTCAD_API ztCAD_TmplPoint* crtTmplPoint_nostl(const char* name, const ztCAD_commonPoint* source,
                                              ZTCAD_OUT(bool) nameIsFree);
/// The vertices of `source` (a line or a template line) under a new name; not its properties.
ZTCAD_API ztCAD_TmplLine* crtTmplLine_nostl(const char* name, const ztCAD_commonLine* source,
                                            ZTCAD_OUT(bool) nameIsFree);
/// The lists of `source` (a solid or a template solid) under a new name; not its properties.
ZTCAD_API ztCAD_TmplTriangle* crtTmplTriangle_nostl(const char* name, const ztCAD_commonTriangle* source,
                                                    ZTCAD_OUT(bool) nameIsFree);
/// A mass-inertia element kept as a template; as `crtMipElement_nostl`.
ZTCAD_API ztCAD_TmplElementMIP* crtTmplMipElement_nostl(const char* name, const ztCAD_MIP* record);
/// Properties and content of `source` (a structure or a template structure) under a new name. Nested
/// structures are shared with the source: a change inside one of them shows in both.
ZTCAD_API ztCAD_TmplStructure* crtTmplStructure_nostl(const char* name, const ztCAD_commonStructure* source,
                                                      ZTCAD_OUT(bool) nameIsFree);

// -------------------------------------------------------------------------------- references

/// Places a template point by its name. The placement becomes a model system, also when `lcs` is a local one.
ZTCAD_API ztCAD_PointRef* crtPointRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                            const ztCAD_TmplPoint* source, ZTCAD_OUT(bool) nameIsFree);
/// Places a template line by its name. The placement becomes a model system, also when `lcs` is a local one.
ZTCAD_API ztCAD_LineRef* crtLineRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                          const ztCAD_TmplLine* source, ZTCAD_OUT(bool) nameIsFree);
/// Places a template solid by its name. The placement becomes a model system, also when `lcs` is a local one.
ZTCAD_API ztCAD_TriangleRef* crtTriangleRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                                  const ztCAD_TmplTriangle* source,
                                                  ZTCAD_OUT(bool) nameIsFree);
/// Places a template mass-inertia element by its name. The placement becomes a model system, also when `lcs` is a local one.
ZTCAD_API ztCAD_ElementMipRef* crtElementMipRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                                      const ztCAD_TmplElementMIP* source,
                                                      ZTCAD_OUT(bool) nameIsFree);
/// Places a template structure by its name. The placement becomes a model system, also when `lcs` is a local one.
ZTCAD_API ztCAD_StructureRef* crtStructureRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                                    const ztCAD_TmplStructure* source,
                                                    ZTCAD_OUT(bool) nameIsFree);
/// Places a template detail by its name. A new reference to a detail starts at the default placement, whatever `lcs` says.
ZTCAD_API ztCAD_DetailRef* crtDetailRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                              const ztCAD_TmplDetail* source, ZTCAD_OUT(bool) nameIsFree);

// -------------------------------------------------------------------------------- properties

/// Reads a point's position. A null point: the outputs stay as they are. A point without a position is a
/// fatal error that ends the program with a message naming the point: there is no value that could be given
/// for it. `ztCAD_getCenter` answers instead.
ZTCAD_API void getPointCoord(const ztCAD_Point* point, ZTCAD_OUT(double) x, ZTCAD_OUT(double) y,
                             ZTCAD_OUT(double) z);

/// Replaces comment, inform, colour and visibility of the element, and its coordinate system where one is given. The name
/// stays. A null element: nothing happens.
/// @param comment null counts as empty
/// @param inform  likewise
/// @param color   null: the element has no colour from now on
/// @param visible 1 shown, 0 hidden, negative: no word about it
/// @param lcs     null: the element's own stays
/// @{
ZTCAD_API void setCommonPropertyPoint_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                            int32_t visible, const ztCAD_LCS* lcs, ztCAD_Point* element);
ZTCAD_API void setCommonPropertyLine_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                           int32_t visible, const ztCAD_LCS* lcs, ztCAD_Line* element);
ZTCAD_API void setCommonPropertySphere_nostl(const char* comment, const char* inform,
                                             const ztCAD_Color* color, int32_t visible, const ztCAD_LCS* lcs,
                                             ztCAD_Sphere* element);
ZTCAD_API void setCommonPropertyTriangle_nostl(const char* comment, const char* inform,
                                               const ztCAD_Color* color, int32_t visible,
                                               const ztCAD_LCS* lcs, ztCAD_Triangle* element);
ZTCAD_API void setCommonPropertyStructure_nostl(const char* comment, const char* inform,
                                                const ztCAD_Color* color, int32_t visible,
                                                const ztCAD_LCS* lcs, ztCAD_Structure* element);
ZTCAD_API void setCommonPropertyTmplStructure_nostl(const char* comment, const char* inform,
                                                    const ztCAD_Color* color, int32_t visible,
                                                    const ztCAD_LCS* lcs, ztCAD_TmplStructure* element);
/// @}

/// Replaces comment and inform of a mass-inertia element, and its coordinate system where one is given. Such elements
/// have neither colour nor visibility of their own. A null element: nothing happens.
/// @param comment null counts as empty
/// @param inform  likewise
/// @param lcs null: the element's own stays
ZTCAD_API void setCommonPropertyElementMIP_nostl(const char* comment, const char* inform,
                                                 const ztCAD_LCS* lcs, ztCAD_ElementMIP* element);

/// Gives the sphere mass-inertia data. A record of fewer than ten values: nothing happens.
ZTCAD_API void setMIP_nostl(const ztCAD_MIP* record, ztCAD_Sphere* sphere);

ZTCAD_C_END
