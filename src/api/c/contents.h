#pragma once

#include "types.h"

/// @file
/// What is in documents and structures: added and removed.
///
/// Adding appends a copy and answers false; true means that nothing was added: a null argument, no memory, or
/// no room because the element would lie deeper than a file may nest it. The pointer that a creation function
/// returned is therefore not in the document: take the one to remove from the document's container. No
/// exception comes out.

ZTCAD_C_BEGIN

/// Appends a copy of `element`.
///
/// @return false when it was added; true, and nothing changed, when either is null or there is no memory
/// @{
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
/// @}

/// Appends a copy of `element`. It holds the same nested structures as its source.
///
/// @return false when it was added; true, and nothing changed, when either is null or there is no memory
/// @{
ZTCAD_API bool addStructureToDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplStructureToDoc(const ztCAD_TmplStructure* element, ztCAD_GMDDocument* document);
/// @}

/// Appends a copy of `element`.
///
/// @return false when it was added; true, and nothing changed, when either is null or there is no memory
/// @{
ZTCAD_API bool addStructureRefToDoc(const ztCAD_StructureRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addDetailRefToDoc(const ztCAD_DetailRef* element, ztCAD_GMDDocument* document);
/// @}

/// Appends a copy of `element` to a structure or a template structure.
///
/// @return false when it was added; true, and nothing changed, when either is null, there is no memory, or the element
///         would lie deeper than a file may nest it
/// @{
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
/// @}

/// Nests `element` itself, not a copy: later changes to it show. Several structures may hold the same one; it
/// stays whose it was, and disappears from all of them when it is destroyed. Not added: a structure to
/// itself, and one that holds `structure` at any depth, for the ring would never end.
///
/// @return false when it was added; true, and nothing changed, when either is null, there is no memory, or its elements
///         would lie deeper than a file may nest them
ZTCAD_API bool addStructureToStructure(const ztCAD_commonStructure* element,
                                       ztCAD_commonStructure* structure);

/// Removes the element at this address from the document; true when it was there. False for null.
///
/// @param element one that lies in the document's container; afterwards it is gone
/// @{
ZTCAD_API bool removePointFromDoc(const ztCAD_Point* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removePolylineFromDoc(const ztCAD_Line* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeTriangleFromDoc(const ztCAD_Triangle* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeRefTriangleFromDoc(const ztCAD_TriangleRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeLineRefFromDoc(const ztCAD_LineRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeMIPFromDoc(const ztCAD_ElementMIP* element, ztCAD_GMDDocument* document);
ZTCAD_API bool removeStructureFromDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document);
/// @}

ZTCAD_C_END
