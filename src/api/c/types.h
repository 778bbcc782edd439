#pragma once

/// @file
/// What the headers of this folder share. They are plain C11 and valid C++: hosts in both languages see the
/// same declarations.
///
/// An output that C++ passes by reference is an address in C (`ZTCAD_OUT`), which must not be null. Classes
/// are opaque here; C++ hosts built by the compiler of the library get them from `<ztCAD/ztCAD.h>`.
///
/// Each element is a `ztCAD_Base` at the same address. Points, lines, triangulated solids, structures and
/// details are also objects of the class that they share with their templates (`ztCAD_commonPoint`, ...), at
/// the same address too: cast the pointer to pass it as one of these.

#include <stdint.h>  // NOLINT(modernize-deprecated-headers): C has no other

#include "../../support/export.h"

#if defined(__cplusplus)
/// Enclose declarations that have C linkage.
/// @{
#define ZTCAD_C_BEGIN extern "C" {
#define ZTCAD_C_END }
/// @}

/// An output: a reference in C++, an address that must not be null in C.
#define ZTCAD_OUT(type) type&
/// Declares an opaque class that both languages refer to by its name alone.
/// @{
#define ZTCAD_CLASS(name) class name
#define ZTCAD_STRUCT(name) struct name
/// @}
#else
#include <stdbool.h>
#define ZTCAD_C_BEGIN
#define ZTCAD_C_END
#define ZTCAD_OUT(type) type*
#define ZTCAD_CLASS(name) typedef struct name name
#define ZTCAD_STRUCT(name) typedef struct name name
#endif

ZTCAD_CLASS(ztCAD_GMDDocument);
ZTCAD_CLASS(ztCAD_HeaderNode);

// elements
ZTCAD_CLASS(ztCAD_Base);
ZTCAD_CLASS(ztCAD_commonPoint);      // points and template points
ZTCAD_CLASS(ztCAD_commonLine);       // lines and template lines
ZTCAD_CLASS(ztCAD_commonTriangle);   // solids and template solids
ZTCAD_CLASS(ztCAD_commonStructure);  // structures and template structures
ZTCAD_CLASS(ztCAD_cmnDetail);        // details and template details

ZTCAD_CLASS(ztCAD_Structure);
ZTCAD_CLASS(ztCAD_StructureRef);
ZTCAD_CLASS(ztCAD_TmplStructure);
ZTCAD_CLASS(ztCAD_Point);
ZTCAD_CLASS(ztCAD_Line);
ZTCAD_CLASS(ztCAD_Sphere);
ZTCAD_CLASS(ztCAD_Triangle);
ZTCAD_CLASS(ztCAD_ElementMIP);
ZTCAD_CLASS(ztCAD_Detail);
ZTCAD_CLASS(ztCAD_DetailRef);
ZTCAD_CLASS(ztCAD_TmplDetail);
ZTCAD_CLASS(ztCAD_TmplPoint);
ZTCAD_CLASS(ztCAD_PointRef);
ZTCAD_CLASS(ztCAD_TmplLine);
ZTCAD_CLASS(ztCAD_LineRef);
ZTCAD_CLASS(ztCAD_TmplElementMIP);
ZTCAD_CLASS(ztCAD_ElementMipRef);
ZTCAD_CLASS(ztCAD_TmplTriangle);
ZTCAD_CLASS(ztCAD_TriangleRef);

// records and lists
ZTCAD_CLASS(ztCAD_Coord);
ZTCAD_CLASS(ztCAD_Vertex);
ZTCAD_CLASS(ztCAD_Vertices);
ZTCAD_CLASS(ztCAD_Facet);
ZTCAD_CLASS(ztCAD_Faces);
ZTCAD_CLASS(ztCAD_Color);
ZTCAD_CLASS(ztCAD_LCS);
ZTCAD_CLASS(ztCAD_MIP);

ZTCAD_STRUCT(ztParallel);

/// The kinds of elements; functions pass them as `int32_t`.
enum ztCAD_ElementKind {
  ztCAD_ElementNone = 0,             ///< no element, or a class that is not one of the library's
  ztCAD_ElementDetail = 1,           ///< a detail: a rigid part
  ztCAD_ElementTmplDetail = 2,       ///< a detail kept as a template
  ztCAD_ElementStructure = 3,        ///< a structure: a placed group
  ztCAD_ElementTmplStructure = 4,    ///< a structure kept as a template
  ztCAD_ElementDetailRef = 5,        ///< a placed template detail
  ztCAD_ElementStructureRef = 6,     ///< a placed template structure
  ztCAD_ElementPoint = 10,           ///< a point
  ztCAD_ElementTmplPoint = 11,       ///< a point kept as a template
  ztCAD_ElementPointRef = 12,        ///< a placed template point
  ztCAD_ElementLine = 13,            ///< a polyline
  ztCAD_ElementTmplLine = 14,        ///< a polyline kept as a template
  ztCAD_ElementLineRef = 15,         ///< a placed template line
  ztCAD_ElementElementMIP = 16,      ///< a mass-inertia element
  ztCAD_ElementTmplElementMIP = 17,  ///< one kept as a template
  ztCAD_ElementElementMipRef = 18,   ///< a placed template mass-inertia element
  ztCAD_ElementTriangle = 19,        ///< a triangulated solid
  ztCAD_ElementTmplTriangle = 20,    ///< a solid kept as a template
  ztCAD_ElementTriangleRef = 21,     ///< a placed template solid
  ztCAD_ElementSphere = 22           ///< a sphere; there are no templates of spheres
};
