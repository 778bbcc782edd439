#pragma once

#include "types.h"

/// @file
/// Adds elements to documents and structures, and removes them.
///
/// Adding appends a copy and returns false. True means that nothing was added: an argument is null, memory
/// ran out, or the element would be nested deeper than a file may nest it. The pointer that a creation
/// function returned is not an element of the document: to remove an element, take its address from the
/// document's container. No function throws.

ZTCAD_C_BEGIN

/// Appends a copy of `element`.
///
/// @return false: added. True: nothing changed, because either argument is null or memory ran out
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

/// Appends a copy of `element`. The copy holds the same nested structures as its source: they are shared, not
/// copied.
///
/// @return false: added. True: nothing changed, because either argument is null or memory ran out
/// @{
ZTCAD_API bool addStructureToDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addTmplStructureToDoc(const ztCAD_TmplStructure* element, ztCAD_GMDDocument* document);
/// @}

/// Appends a copy of `element`.
///
/// @return false: added. True: nothing changed, because either argument is null or memory ran out
/// @{
ZTCAD_API bool addStructureRefToDoc(const ztCAD_StructureRef* element, ztCAD_GMDDocument* document);
ZTCAD_API bool addDetailRefToDoc(const ztCAD_DetailRef* element, ztCAD_GMDDocument* document);
/// @}

/// Appends a copy of `element` to a structure or a template structure.
///
/// @return false: added. True: nothing changed, because either argument is null, memory ran out, or the
///         element would be nested deeper than a file may nest it
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

/// Nests `element` itself, not a copy, so later changes to it show. Several structures may hold the same one.
/// It keeps its owner, and disappears from all of them when it is destroyed. A structure is not added to
/// itself, nor to a structure that it holds at any depth: that would close a ring.
///
/// @return false: added. True: nothing changed, because either argument is null, memory ran out, a ring would
///         be closed, or elements would be nested deeper than a file may nest them
ZTCAD_API bool addStructureToStructure(const ztCAD_commonStructure* element,
                                       ztCAD_commonStructure* structure);

/// Removes the element at this address from the document and destroys it.
///
/// @param element address of an element in the document's container
/// @return whether it was there; false for null
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
