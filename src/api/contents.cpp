#include "contents.h"

#include "element_kinds.h"
#include "guard.h"

using ztcad::guarded;

namespace {

template <typename Element>
using InDocument = ztCAD_Cont<Element> ztCAD_DocumentContent::*;
template <typename Element>
using InStructure = ztCAD_Cont<Element> ztCAD_StructureContent::*;

constexpr bool notAdded = true;

template <typename Element>
bool add(const Element* element, ztCAD_GMDDocument* document, InDocument<Element> container) noexcept {
  return guarded(notAdded,
                 [&] { return !element || !document || (document->content().*container).add(*element); });
}

template <typename Element>
bool add(const Element* element, ztCAD_commonStructure* structure, InStructure<Element> container) noexcept {
  return guarded(notAdded, [&] {
    return !element || !structure || !structure->hasRoomFor(ztcad::levelsOf<Element>) ||
           (structure->content().*container).add(*element);
  });
}

template <typename Element>
bool remove(const Element* element, ztCAD_GMDDocument* document, InDocument<Element> container) noexcept {
  return guarded(false,
                 [&] { return element && document && (document->content().*container).remove(element); });
}

template <typename Element>
ztCAD_Cont<Element>* get(ztCAD_GMDDocument* document, InDocument<Element> container) noexcept {
  return document ? &(document->content().*container) : nullptr;
}

using Document = ztCAD_DocumentContent;
using Structure = ztCAD_StructureContent;

}  // namespace

bool addPointToDoc(const ztCAD_Point* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::points);
}
bool addTmplPointToDoc(const ztCAD_TmplPoint* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::templatePoints);
}
bool addPointRefToDoc(const ztCAD_PointRef* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::pointReferences);
}
bool addPolylineToDoc(const ztCAD_Line* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::lines);
}
bool addTmplLineToDoc(const ztCAD_TmplLine* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::templateLines);
}
bool addLineRefToDoc(const ztCAD_LineRef* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::lineReferences);
}
bool addSphereToDoc(const ztCAD_Sphere* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::spheres);
}
bool addTriangleToDoc(const ztCAD_Triangle* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::triangles);
}
bool addTmplTriangleToDoc(const ztCAD_TmplTriangle* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::templateTriangles);
}
bool addTriangleRefToDoc(const ztCAD_TriangleRef* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::triangleReferences);
}
bool addMipElementToDoc(const ztCAD_ElementMIP* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::mipElements);
}
bool addTmplElementMipToDoc(const ztCAD_TmplElementMIP* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::templateMipElements);
}
bool addElementMipRefToDoc(const ztCAD_ElementMipRef* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::mipReferences);
}
bool addStructureToDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::structures);
}
bool addTmplStructureToDoc(const ztCAD_TmplStructure* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::templateStructures);
}
bool addStructureRefToDoc(const ztCAD_StructureRef* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::structureReferences);
}
bool addDetailRefToDoc(const ztCAD_DetailRef* element, ztCAD_GMDDocument* document) {
  return add(element, document, &Document::detailReferences);
}

bool addPointToStructure(const ztCAD_Point* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::points);
}
bool addPolylineToStructure(const ztCAD_Line* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::lines);
}
bool addSphereToStructure(const ztCAD_Sphere* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::spheres);
}
bool addTriangleToStructure(const ztCAD_Triangle* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::triangles);
}
bool addMipElementToStructure(const ztCAD_ElementMIP* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::mipElements);
}
bool addPointRefToStructure(const ztCAD_PointRef* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::pointReferences);
}
bool addLineRefToStructure(const ztCAD_LineRef* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::lineReferences);
}
bool addTriangleRefToStructure(const ztCAD_TriangleRef* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::triangleReferences);
}
bool addElementMipRefToStructure(const ztCAD_ElementMipRef* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::mipReferences);
}
bool addStructureRefToStructure(const ztCAD_StructureRef* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::structureReferences);
}
bool addDetailRefToStructure(const ztCAD_DetailRef* element, ztCAD_commonStructure* structure) {
  return add(element, structure, &Structure::detailReferences);
}

bool addStructureToStructure(const ztCAD_commonStructure* element, ztCAD_commonStructure* structure) {
  // const for the sake of the family: what is nested stays the host's to change, and names in it are made
  // unique
  return guarded(notAdded, [&] {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
    return !element || !structure || structure->addStructure(const_cast<ztCAD_commonStructure&>(*element));
  });
}

bool removePointFromDoc(const ztCAD_Point* element, ztCAD_GMDDocument* document) {
  return remove(element, document, &Document::points);
}
bool removePolylineFromDoc(const ztCAD_Line* element, ztCAD_GMDDocument* document) {
  return remove(element, document, &Document::lines);
}
bool removeTriangleFromDoc(const ztCAD_Triangle* element, ztCAD_GMDDocument* document) {
  return remove(element, document, &Document::triangles);
}
bool removeRefTriangleFromDoc(const ztCAD_TriangleRef* element, ztCAD_GMDDocument* document) {
  return remove(element, document, &Document::triangleReferences);
}
bool removeLineRefFromDoc(const ztCAD_LineRef* element, ztCAD_GMDDocument* document) {
  return remove(element, document, &Document::lineReferences);
}
bool removeMIPFromDoc(const ztCAD_ElementMIP* element, ztCAD_GMDDocument* document) {
  return remove(element, document, &Document::mipElements);
}
bool removeStructureFromDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document) {
  return remove(element, document, &Document::structures);
}

ztCAD_Cont<ztCAD_Structure>* ztCAD_getStructures(ztCAD_GMDDocument* document) {
  return get(document, &Document::structures);
}
ztCAD_Cont<ztCAD_StructureRef>* ztCAD_getStructuresRef(ztCAD_GMDDocument* document) {
  return get(document, &Document::structureReferences);
}
ztCAD_Cont<ztCAD_TmplStructure>* ztCAD_getTmplStructures(ztCAD_GMDDocument* document) {
  return get(document, &Document::templateStructures);
}
ztCAD_Cont<ztCAD_Point>* ztCAD_getPoints(ztCAD_GMDDocument* document) {
  return get(document, &Document::points);
}
ztCAD_Cont<ztCAD_Line>* ztCAD_getLines(ztCAD_GMDDocument* document) {
  return get(document, &Document::lines);
}
ztCAD_Cont<ztCAD_Sphere>* ztCAD_getSpheres(ztCAD_GMDDocument* document) {
  return get(document, &Document::spheres);
}
ztCAD_Cont<ztCAD_Triangle>* ztCAD_getTriangles(ztCAD_GMDDocument* document) {
  return get(document, &Document::triangles);
}
ztCAD_Cont<ztCAD_ElementMIP>* ztCAD_getMipElements(ztCAD_GMDDocument* document) {
  return get(document, &Document::mipElements);
}
ztCAD_Cont<ztCAD_Detail>* ztCAD_getDetails(ztCAD_GMDDocument* document) {
  return get(document, &Document::details);
}
ztCAD_Cont<ztCAD_DetailRef>* ztCAD_getDetailsRef(ztCAD_GMDDocument* document) {
  return get(document, &Document::detailReferences);
}
ztCAD_Cont<ztCAD_TmplDetail>* ztCAD_getTmplDetails(ztCAD_GMDDocument* document) {
  return get(document, &Document::templateDetails);
}
ztCAD_Cont<ztCAD_TmplPoint>* ztCAD_getTmplPoints(ztCAD_GMDDocument* document) {
  return get(document, &Document::templatePoints);
}
ztCAD_Cont<ztCAD_PointRef>* ztCAD_getPointsRef(ztCAD_GMDDocument* document) {
  return get(document, &Document::pointReferences);
}
ztCAD_Cont<ztCAD_TmplLine>* ztCAD_getTmplLines(ztCAD_GMDDocument* document) {
  return get(document, &Document::templateLines);
}
ztCAD_Cont<ztCAD_LineRef>* ztCAD_getLinesRef(ztCAD_GMDDocument* document) {
  return get(document, &Document::lineReferences);
}
ztCAD_Cont<ztCAD_TmplElementMIP>* ztCAD_getTmplElementMips(ztCAD_GMDDocument* document) {
  return get(document, &Document::templateMipElements);
}
ztCAD_Cont<ztCAD_ElementMipRef>* ztCAD_getElementMipsRef(ztCAD_GMDDocument* document) {
  return get(document, &Document::mipReferences);
}
ztCAD_Cont<ztCAD_TmplTriangle>* ztCAD_getTmplTriangles(ztCAD_GMDDocument* document) {
  return get(document, &Document::templateTriangles);
}
ztCAD_Cont<ztCAD_TriangleRef>* ztCAD_getTrianglesRef(ztCAD_GMDDocument* document) {
  return get(document, &Document::triangleReferences);
}
