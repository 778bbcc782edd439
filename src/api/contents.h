#pragma once

#include "../core/document/document.h"
#include "../structure/structure.h"

/// What is in documents and structures: added, removed, listed.
///
/// Adding appends a copy and answers false; true means that nothing was added: a null argument, no memory, or
/// no room because the element would lie deeper than a file may nest it. The pointer that a creation function
/// returned is therefore not in the document: take the one to remove from the document's container. No
/// exception comes out.

extern "C" {

ZTCAD_API bool addPointToDoc(const ztCAD_Point* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplPointToDoc(const ztCAD_TmplPoint* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addPointRefToDoc(const ztCAD_PointRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addPolylineToDoc(const ztCAD_Line* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplLineToDoc(const ztCAD_TmplLine* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addLineRefToDoc(const ztCAD_LineRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addSphereToDoc(const ztCAD_Sphere* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTriangleToDoc(const ztCAD_Triangle* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplTriangleToDoc(const ztCAD_TmplTriangle* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTriangleRefToDoc(const ztCAD_TriangleRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addMipElementToDoc(const ztCAD_ElementMIP* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplElementMipToDoc(const ztCAD_TmplElementMIP* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addElementMipRefToDoc(const ztCAD_ElementMipRef* element, ztCAD_GMDDocument* document);
/// The copy of a structure holds the same nested structures as its source; so does that of a template
/// structure.
ZTCAD_API bool addStructureToDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplStructureToDoc(const ztCAD_TmplStructure* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addStructureRefToDoc(const ztCAD_StructureRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addDetailRefToDoc(const ztCAD_DetailRef* element, ztCAD_GMDDocument* document);

ZTCAD_API bool addPointToStructure(const ztCAD_Point* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addPolylineToStructure(const ztCAD_Line* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addSphereToStructure(const ztCAD_Sphere* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addTriangleToStructure(const ztCAD_Triangle* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addMipElementToStructure(const ztCAD_ElementMIP* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addPointRefToStructure(const ztCAD_PointRef* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addLineRefToStructure(const ztCAD_LineRef* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addTriangleRefToStructure(const ztCAD_TriangleRef* element, ztCAD_commonStructure* structure);
ZTCAD_API bool addElementMipRefToStructure(const ztCAD_ElementMipRef* element,
                                           ztCAD_commonStructure* structure);
ZTCAD_API bool addStructureRefToStructure(const ztCAD_StructureRef* element,
                                          ztCAD_commonStructure* structure);
ZTCAD_API bool addDetailRefToStructure(const ztCAD_DetailRef* element, ztCAD_commonStructure* structure);
/// Nests `element` itself, not a copy: later changes to it show. Several structures may hold the same one; it
/// stays whose it was, and disappears from all of them when it is destroyed. Not added: a structure to
/// itself, and one that holds `structure` at any depth, for the ring would never end.
ZTCAD_API bool addStructureToStructure(const ztCAD_commonStructure* element,
                                       ztCAD_commonStructure* structure);

/// Removes the element at this address from the document; true when it was there.
ZTCAD_API bool removePointFromDoc(const ztCAD_Point* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removePolylineFromDoc(const ztCAD_Line* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeTriangleFromDoc(const ztCAD_Triangle* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeRefTriangleFromDoc(const ztCAD_TriangleRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeLineRefFromDoc(const ztCAD_LineRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeMIPFromDoc(const ztCAD_ElementMIP* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeStructureFromDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document);

/// The document's own containers, null for a null document. They live as long as the document; loading
/// replaces what is in them.
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
}
