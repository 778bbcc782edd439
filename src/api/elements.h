#pragma once

#include <string>

#include "../property/property_record.h"
#include "../structure/structure.h"
#include "c/elements.h"

/// @file
/// Elements, templates and references with names as `std::string`, and their properties from records.
/// c/elements.h documents each function under the same name with the suffix `_nostl`, and states the rules
/// that apply to all.

extern "C" {

/// An element, with its name as `std::string`; otherwise like the function with the suffix `_nostl`.
/// @{
ZTCAD_API ztCAD_Point* crtPoint(const std::string& name, const ztCAD_Coord* center, bool& nameIsFree);
ZTCAD_API ztCAD_Sphere* crtSphere(const std::string& name, const ztCAD_Coord* center, double radius,
                                  bool& nameIsFree);
ZTCAD_API ztCAD_Triangle* crtTriangle(const std::string& name, const ztCAD_Vertices* vertices,
                                      const ztCAD_Faces* faces, bool& nameIsFree);
ZTCAD_API ztCAD_ElementMIP* crtMipElement(const std::string& name, const ztCAD_MIP* record);
ZTCAD_API ztCAD_Structure* crtStructure(const std::string& name, const ztCAD_LCS* lcs, bool& nameIsFree);
/// @}

/// A template, with its name as `std::string`; otherwise like the function with the suffix `_nostl`.
/// @{
ZTCAD_API ztCAD_TmplPoint* crtTmplPoint(const std::string& name, const ztCAD_commonPoint* source,
                                        bool& nameIsFree);
ZTCAD_API ztCAD_TmplLine* crtTmplLine(const std::string& name, const ztCAD_commonLine* source,
                                      bool& nameIsFree);
ZTCAD_API ztCAD_TmplTriangle* crtTmplTriangle(const std::string& name, const ztCAD_commonTriangle* source,
                                              bool& nameIsFree);
ZTCAD_API ztCAD_TmplElementMIP* crtTmplMipElement(const std::string& name, const ztCAD_MIP* record);
ZTCAD_API ztCAD_TmplStructure* crtTmplStructure(const std::string& name, const ztCAD_commonStructure* source,
                                                bool& nameIsFree);
/// @}

/// A reference, with its name as `std::string`; otherwise like the function with the suffix `_nostl`.
/// @{
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
ZTCAD_API ztCAD_DetailRef* crtDetailRef(const std::string& name, const ztCAD_LCS* lcs,
                                        const ztCAD_TmplDetail* source, bool& nameIsFree);
/// @}
}

/// Replaces comment, inform, colour and visibility of the element (of a mass-inertia element: comment and
/// inform), and its coordinate system if the record has one. The name is unchanged. A null element: nothing
/// happens.
/// @{
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Point* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Line* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Sphere* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Structure* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_TmplStructure* element);
ZTCAD_API void setCommonProperty(const CommonProperty& record, ztCAD_Triangle* element);
ZTCAD_API void setCommonProperty(const CommonPropertyForMIP& record, ztCAD_ElementMIP* element);
/// @}

/// Sets the mass-inertia data of the sphere. With a record of fewer than ten values, or null, nothing
/// happens.
ZTCAD_API void setMIP(const ztCAD_MIP* record, ztCAD_Sphere* sphere);
