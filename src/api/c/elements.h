#pragma once

#include "types.h"

/// @file
/// Creates elements, templates, references and structures, and sets their properties.
///
/// Created objects belong to the library until it is unloaded. Adding one to a document or structure stores a
/// copy, except that nested structures are held themselves. Names are UTF-8, else windows-1251; a null name
/// counts as empty. Names are kept as given, duplicates included, until the document is saved or loaded. The
/// output `nameIsFree` is always true: it does not say whether the document contains the name already. With a
/// null object a creation function returns null, and any other function does nothing. No function throws.

ZTCAD_C_BEGIN

// -------------------------------------------------------------------------------- elements

/// A point at `center`.
ZTCAD_API ztCAD_Point* crtPoint_nostl(const char* name, const ztCAD_Coord* center,
                                      ZTCAD_OUT(bool) nameIsFree);
/// A polyline through the vertices in their order.
ZTCAD_API ztCAD_Line* crtPolyline(const char* name, const ztCAD_Vertices* vertices,
                                  ZTCAD_OUT(bool) nameIsFree);
/// A sphere around `center`.
/// @param radius in the document's length unit; the file stores only whether a radius is set, not its value
ZTCAD_API ztCAD_Sphere* crtSphere_nostl(const char* name, const ztCAD_Coord* center, double radius,
                                        ZTCAD_OUT(bool) nameIsFree);
/// A triangulated solid. The indices of the facets are not compared with the number of vertices.
ZTCAD_API ztCAD_Triangle* crtTriangle_nostl(const char* name, const ztCAD_Vertices* vertices,
                                            const ztCAD_Faces* faces, ZTCAD_OUT(bool) nameIsFree);
/// A mass-inertia element. With a record of fewer than ten values, the element has no record and is not
/// written.
ZTCAD_API ztCAD_ElementMIP* crtMipElement_nostl(const char* name, const ztCAD_MIP* record);
/// A structure without content.
/// @param lcs the structure's coordinate system, in the frame of its holder: the structure's content is in
///            this system
ZTCAD_API ztCAD_Structure* crtStructure_nostl(const char* name, const ztCAD_LCS* lcs,
                                              ZTCAD_OUT(bool) nameIsFree);

// -------------------------------------------------------------------------------- templates

/// Position and properties of `source` (a point or a template point) under a new name.
ZTCAD_API ztCAD_TmplPoint* crtTmplPoint_nostl(const char* name, const ztCAD_commonPoint* source,
                                              ZTCAD_OUT(bool) nameIsFree);
/// The vertices, not the properties, of `source` (a line or a template line) under a new name.
ZTCAD_API ztCAD_TmplLine* crtTmplLine_nostl(const char* name, const ztCAD_commonLine* source,
                                            ZTCAD_OUT(bool) nameIsFree);
/// The lists, not the properties, of `source` (a solid or a template solid) under a new name.
ZTCAD_API ztCAD_TmplTriangle* crtTmplTriangle_nostl(const char* name, const ztCAD_commonTriangle* source,
                                                    ZTCAD_OUT(bool) nameIsFree);
/// A mass-inertia element kept as a template; otherwise like `crtMipElement_nostl`.
ZTCAD_API ztCAD_TmplElementMIP* crtTmplMipElement_nostl(const char* name, const ztCAD_MIP* record);
/// Properties and content of `source` (a structure or a template structure) under a new name. Nested
/// structures are shared with the source: a change inside one of them shows in both.
ZTCAD_API ztCAD_TmplStructure* crtTmplStructure_nostl(const char* name, const ztCAD_commonStructure* source,
                                                      ZTCAD_OUT(bool) nameIsFree);

// -------------------------------------------------------------------------------- references
// `lcs` is the placement: where the template is, in the frame of the reference's holder. By convention the
// template's own system comes inside it. A file stores the placement under the name "MCS".

/// Places the template point `source` by its name. The placement is written as "MCS", also if `lcs` is a
/// local system.
ZTCAD_API ztCAD_PointRef* crtPointRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                            const ztCAD_TmplPoint* source, ZTCAD_OUT(bool) nameIsFree);
/// Places the template line `source` by its name. The placement is written as "MCS", also if `lcs` is a local
/// system.
ZTCAD_API ztCAD_LineRef* crtLineRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                          const ztCAD_TmplLine* source, ZTCAD_OUT(bool) nameIsFree);
/// Places the template solid `source` by its name. The placement is written as "MCS", also if `lcs` is a
/// local system.
ZTCAD_API ztCAD_TriangleRef* crtTriangleRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                                  const ztCAD_TmplTriangle* source,
                                                  ZTCAD_OUT(bool) nameIsFree);
/// Places the template mass-inertia element `source` by its name. The placement is written as "MCS", also if
/// `lcs` is a local system.
ZTCAD_API ztCAD_ElementMipRef* crtElementMipRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                                      const ztCAD_TmplElementMIP* source,
                                                      ZTCAD_OUT(bool) nameIsFree);
/// Places the template structure `source` by its name. The placement is written as "MCS", also if `lcs` is a
/// local system.
ZTCAD_API ztCAD_StructureRef* crtStructureRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                                    const ztCAD_TmplStructure* source,
                                                    ZTCAD_OUT(bool) nameIsFree);
/// Places the template detail `source` by its name. The new reference has the default placement (no values):
/// `lcs` must not be null but is ignored. Set a placement with `ztCAD_setPlacement`.
ZTCAD_API ztCAD_DetailRef* crtDetailRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                              const ztCAD_TmplDetail* source, ZTCAD_OUT(bool) nameIsFree);

// -------------------------------------------------------------------------------- properties

/// Reads a point's position. With a null point the outputs are unchanged. A point without a position is a
/// fatal error that ends the program with a message that names the point, since no value would be right. A
/// file may contain such points; `ztCAD_getCenter` returns false for them.
ZTCAD_API void getPointCoord(const ztCAD_Point* point, ZTCAD_OUT(double) x, ZTCAD_OUT(double) y,
                             ZTCAD_OUT(double) z);

/// Replaces comment, inform, colour and visibility of the element, and its coordinate system if one is given.
/// The name is unchanged. A null element: nothing happens.
/// @param comment null counts as empty
/// @param inform  null counts as empty
/// @param color   null clears the colour
/// @param visible positive: shown; 0: hidden; negative: cleared
/// @param lcs     null: the element keeps its coordinate system
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

/// Replaces comment and inform of a mass-inertia element, and its coordinate system if one is given. Colour
/// and visibility are unchanged. A null element: nothing happens.
/// @param comment null counts as empty
/// @param inform  null counts as empty
/// @param lcs     null: the element keeps its coordinate system
ZTCAD_API void setCommonPropertyElementMIP_nostl(const char* comment, const char* inform,
                                                 const ztCAD_LCS* lcs, ztCAD_ElementMIP* element);

/// Sets the mass-inertia data of the sphere. With a record of fewer than ten values, or null, nothing
/// happens.
ZTCAD_API void setMIP_nostl(const ztCAD_MIP* record, ztCAD_Sphere* sphere);

ZTCAD_C_END
