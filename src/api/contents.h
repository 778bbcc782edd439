#pragma once

#include "../core/document/document.h"
#include "../structure/structure.h"
#include "c/contents.h"
#include "c/counted_contents.h"
#include "c/element_arrays.h"
#include "c/fields.h"

/// @file
/// The containers of documents. c/contents.h declares the functions that add and remove elements,
/// c/counted_contents.h access by index and kind, c/element_arrays.h fields of many elements.

extern "C" {

/// The document's own container; null for a null document. Valid as long as the document; loading replaces
/// its elements.
/// @{
ZTCAD_API ztCAD_Cont<ztCAD_Structure>* ztCAD_getStructures(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_StructureRef>* ztCAD_getStructuresRef(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TmplStructure>* ztCAD_getTmplStructures(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_Point>* ztCAD_getPoints(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_Line>* ztCAD_getLines(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_Sphere>* ztCAD_getSpheres(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_Triangle>* ztCAD_getTriangles(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_ElementMIP>* ztCAD_getMipElements(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_Detail>* ztCAD_getDetails(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_DetailRef>* ztCAD_getDetailsRef(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TmplDetail>* ztCAD_getTmplDetails(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TmplPoint>* ztCAD_getTmplPoints(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_PointRef>* ztCAD_getPointsRef(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TmplLine>* ztCAD_getTmplLines(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_LineRef>* ztCAD_getLinesRef(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TmplElementMIP>* ztCAD_getTmplElementMips(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_ElementMipRef>* ztCAD_getElementMipsRef(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TmplTriangle>* ztCAD_getTmplTriangles(ztCAD_GMDDocument* document);
ZTCAD_API ztCAD_Cont<ztCAD_TriangleRef>* ztCAD_getTrianglesRef(ztCAD_GMDDocument* document);
/// @}
}
