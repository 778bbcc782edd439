#pragma once

#include <string>

#include "../property/property_record.h"
#include "../structure/structure.h"

/// Elements, templates, references and structures: made, and given their properties.
///
/// What is made here belongs to the library until it is unloaded; adding it to a document or to a structure
/// stores a copy (nested structures excepted). Names are UTF-8, else windows-1251, and kept as they are
/// given, duplicates included, until the document is saved or loaded; a null name counts as empty.
/// `nameIsFree` is an output and always true. A null object: nothing is made and null comes back, or nothing
/// is set. No exception comes out.

extern "C" {

// -------------------------------------------------------------------------------- elements

ZTCAD_API ztCAD_Point* crtPoint(const std::string& name, const ztCAD_Coord* center, bool& nameIsFree);
ZTCAD_API ztCAD_Point* crtPoint_nostl(const char* name, const ztCAD_Coord* center, bool& nameIsFree);

/// A polyline through the vertices in their order.
ZTCAD_API ztCAD_Line* crtPolyline(const char* name, const ztCAD_Vertices* vertices, bool& nameIsFree);

/// @param radius in the document's length unit; the file stores only that there is one
ZTCAD_API ztCAD_Sphere* crtSphere(const std::string& name, const ztCAD_Coord* center, double radius,
                                  bool& nameIsFree);

/// A triangulated solid. The indices of the facets are not compared with the number of vertices.
ZTCAD_API ztCAD_Triangle* crtTriangle(const std::string& name, const ztCAD_Vertices* vertices,
                                      const ztCAD_Faces* faces, bool& nameIsFree);
ZTCAD_API ztCAD_Triangle* crtTriangle_nostl(const char* name, const ztCAD_Vertices* vertices,
                                            const ztCAD_Faces* faces, bool& nameIsFree);

/// A mass-inertia element. From a record of fewer than ten values comes an element without one, which is not
/// written.
ZTCAD_API ztCAD_ElementMIP* crtMipElement(const std::string& name, const ztCAD_MIP* record);

/// @param lcs the structure's coordinate system
ZTCAD_API ztCAD_Structure* crtStructure(const std::string& name, const ztCAD_LCS* lcs, bool& nameIsFree);
ZTCAD_API ztCAD_Structure* crtStructure_nostl(const char* name, const ztCAD_LCS* lcs, bool& nameIsFree);

// -------------------------------------------------------------------------------- templates

/// Position and properties of `source` (a point or a template point) under a new name.
ZTCAD_API ztCAD_TmplPoint* crtTmplPoint(const std::string& name, const ztCAD_commonPoint* source,
                                        bool& nameIsFree);
/// The vertices of `source` (a line or a template line) under a new name; not its properties.
ZTCAD_API ztCAD_TmplLine* crtTmplLine(const std::string& name, const ztCAD_commonLine* source,
                                      bool& nameIsFree);
/// The lists of `source` (a solid or a template solid) under a new name; not its properties.
ZTCAD_API ztCAD_TmplTriangle* crtTmplTriangle(const std::string& name, const ztCAD_commonTriangle* source,
                                              bool& nameIsFree);
ZTCAD_API ztCAD_TmplElementMIP* crtTmplMipElement(const std::string& name, const ztCAD_MIP* record);
/// Properties and content of `source` (a structure or a template structure) under a new name. Nested
/// structures are shared with the source: a change inside one of them shows in both.
ZTCAD_API ztCAD_TmplStructure* crtTmplStructure(const std::string& name, const ztCAD_commonStructure* source,
                                                bool& nameIsFree);
ZTCAD_API ztCAD_TmplStructure* crtTmplStructure_nostl(const char* name, const ztCAD_commonStructure* source,
                                                      bool& nameIsFree);

// -------------------------------------------------------------------------------- references
// A reference places a template by its name. The placement becomes a model system, also when `lcs` is a local
// one.

ZTCAD_API ztCAD_PointRef* crtPointRef(const std::string& name, const ztCAD_LCS* lcs,
                                      const ztCAD_TmplPoint* source, bool& nameIsFree);
ZTCAD_API ztCAD_LineRef* crtLineRef(const std::string& name, const ztCAD_LCS* lcs,
                                    const ztCAD_TmplLine* source, bool& nameIsFree);
ZTCAD_API ztCAD_TriangleRef* crtTriangleRef(const std::string& name, const ztCAD_LCS* lcs,
                                            const ztCAD_TmplTriangle* source, bool& nameIsFree);
ZTCAD_API ztCAD_ElementMipRef* crtElementMipRef(const std::string& name, const ztCAD_LCS* lcs,
                                                const ztCAD_TmplElementMIP* source, bool& nameIsFree);
ZTCAD_API ztCAD_StructureRef* crtStructureRef(const std::string& name, const ztCAD_LCS* lcs,
                                              const ztCAD_TmplStructure* source, bool& nameIsFree);
ZTCAD_API ztCAD_StructureRef* crtStructureRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                                    const ztCAD_TmplStructure* source, bool& nameIsFree);
/// A new reference to a detail starts at the default placement, whatever `lcs` says.
ZTCAD_API ztCAD_DetailRef* crtDetailRef(const std::string& name, const ztCAD_LCS* lcs,
                                        const ztCAD_TmplDetail* source, bool& nameIsFree);
ZTCAD_API ztCAD_DetailRef* crtDetailRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                              const ztCAD_TmplDetail* source, bool& nameIsFree);

/// Reads a point's position. A null point: the outputs stay as they are. A point without a position is a
/// fatal error that ends the program with a message naming the point: there is no value that could be given
/// for it.
ZTCAD_API void getPointCoord(const ztCAD_Point* point, double& x, double& y, double& z);
}

/// Replaces comment, inform, colour and visibility of the element, and its coordinate system where the record
/// has one. The name stays.
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Point* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Line* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Sphere* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Structure* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_TmplStructure* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Triangle* element);
/// Replaces comment and inform, and the coordinate system where the record has one.
ZTCAD_API void setCommonProperty(const CommonPropertyForMIP& record, ztCAD_ElementMIP* element);

/// Gives the sphere mass-inertia data. A record of fewer than ten values: nothing happens.
ZTCAD_API void setMIP(const ztCAD_MIP* record, ztCAD_Sphere* sphere);
