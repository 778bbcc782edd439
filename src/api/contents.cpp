#include "contents.h"

#include "../core/document/live_documents.h"
#include "element_kinds.h"
#include "guard.h"

using ztcad::guarded;
using ztcad::isLive;

namespace {

namespace kinds = ztcad::kinds;

constexpr bool notAdded = true;

template <typename Kind>
bool add(const typename Kind::Element* element, ztCAD_GMDDocument* document) noexcept {
  return guarded(
      notAdded, [&] { return !element || !isLive(document) || Kind::in(document->content()).add(*element); });
}

template <typename Kind>
bool add(const typename Kind::Element* element, ztCAD_commonStructure* structure) noexcept {
  return guarded(notAdded, [&] {
    return !element || !structure || !structure->hasRoomFor(Kind::levels) ||
           Kind::in(structure->content()).add(*element);
  });
}

template <typename Kind>
bool remove(const typename Kind::Element* element, ztCAD_GMDDocument* document) noexcept {
  return guarded(
      false, [&] { return element && isLive(document) && Kind::in(document->content()).remove(element); });
}

template <typename Kind>
ztCAD_Cont<typename Kind::Element>* get(ztCAD_GMDDocument* document) noexcept {
  return isLive(document) ? &Kind::in(document->content()) : nullptr;
}

}  // namespace

bool addPointToDoc(const ztCAD_Point* element, ztCAD_GMDDocument* document) {
  return add<kinds::points>(element, document);
}
bool addTmplPointToDoc(const ztCAD_TmplPoint* element, ztCAD_GMDDocument* document) {
  return add<kinds::templatePoints>(element, document);
}
bool addPointRefToDoc(const ztCAD_PointRef* element, ztCAD_GMDDocument* document) {
  return add<kinds::pointReferences>(element, document);
}
bool addPolylineToDoc(const ztCAD_Line* element, ztCAD_GMDDocument* document) {
  return add<kinds::lines>(element, document);
}
bool addTmplLineToDoc(const ztCAD_TmplLine* element, ztCAD_GMDDocument* document) {
  return add<kinds::templateLines>(element, document);
}
bool addLineRefToDoc(const ztCAD_LineRef* element, ztCAD_GMDDocument* document) {
  return add<kinds::lineReferences>(element, document);
}
bool addSphereToDoc(const ztCAD_Sphere* element, ztCAD_GMDDocument* document) {
  return add<kinds::spheres>(element, document);
}
bool addTriangleToDoc(const ztCAD_Triangle* element, ztCAD_GMDDocument* document) {
  return add<kinds::triangles>(element, document);
}
bool addTmplTriangleToDoc(const ztCAD_TmplTriangle* element, ztCAD_GMDDocument* document) {
  return add<kinds::templateTriangles>(element, document);
}
bool addTriangleRefToDoc(const ztCAD_TriangleRef* element, ztCAD_GMDDocument* document) {
  return add<kinds::triangleReferences>(element, document);
}
bool addMipElementToDoc(const ztCAD_ElementMIP* element, ztCAD_GMDDocument* document) {
  return add<kinds::mipElements>(element, document);
}
bool addTmplElementMipToDoc(const ztCAD_TmplElementMIP* element, ztCAD_GMDDocument* document) {
  return add<kinds::templateMipElements>(element, document);
}
bool addElementMipRefToDoc(const ztCAD_ElementMipRef* element, ztCAD_GMDDocument* document) {
  return add<kinds::mipReferences>(element, document);
}
bool addStructureToDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document) {
  return add<kinds::structures>(element, document);
}
bool addTmplStructureToDoc(const ztCAD_TmplStructure* element, ztCAD_GMDDocument* document) {
  return add<kinds::templateStructures>(element, document);
}
bool addStructureRefToDoc(const ztCAD_StructureRef* element, ztCAD_GMDDocument* document) {
  return add<kinds::structureReferences>(element, document);
}
bool addDetailRefToDoc(const ztCAD_DetailRef* element, ztCAD_GMDDocument* document) {
  return add<kinds::detailReferences>(element, document);
}

bool addPointToStructure(const ztCAD_Point* element, ztCAD_commonStructure* structure) {
  return add<kinds::points>(element, structure);
}
bool addPolylineToStructure(const ztCAD_Line* element, ztCAD_commonStructure* structure) {
  return add<kinds::lines>(element, structure);
}
bool addSphereToStructure(const ztCAD_Sphere* element, ztCAD_commonStructure* structure) {
  return add<kinds::spheres>(element, structure);
}
bool addTriangleToStructure(const ztCAD_Triangle* element, ztCAD_commonStructure* structure) {
  return add<kinds::triangles>(element, structure);
}
bool addMipElementToStructure(const ztCAD_ElementMIP* element, ztCAD_commonStructure* structure) {
  return add<kinds::mipElements>(element, structure);
}
bool addPointRefToStructure(const ztCAD_PointRef* element, ztCAD_commonStructure* structure) {
  return add<kinds::pointReferences>(element, structure);
}
bool addLineRefToStructure(const ztCAD_LineRef* element, ztCAD_commonStructure* structure) {
  return add<kinds::lineReferences>(element, structure);
}
bool addTriangleRefToStructure(const ztCAD_TriangleRef* element, ztCAD_commonStructure* structure) {
  return add<kinds::triangleReferences>(element, structure);
}
bool addElementMipRefToStructure(const ztCAD_ElementMipRef* element, ztCAD_commonStructure* structure) {
  return add<kinds::mipReferences>(element, structure);
}
bool addStructureRefToStructure(const ztCAD_StructureRef* element, ztCAD_commonStructure* structure) {
  return add<kinds::structureReferences>(element, structure);
}
bool addDetailRefToStructure(const ztCAD_DetailRef* element, ztCAD_commonStructure* structure) {
  return add<kinds::detailReferences>(element, structure);
}

bool addStructureToStructure(const ztCAD_commonStructure* element, ztCAD_commonStructure* structure) {
  // The parameter is const like that of the other add functions, but the host and the unification of names
  // may change the nested structure.
  return guarded(notAdded, [&] {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
    return !element || !structure || structure->addStructure(const_cast<ztCAD_commonStructure&>(*element));
  });
}

bool removePointFromDoc(const ztCAD_Point* element, ztCAD_GMDDocument* document) {
  return remove<kinds::points>(element, document);
}
bool removePolylineFromDoc(const ztCAD_Line* element, ztCAD_GMDDocument* document) {
  return remove<kinds::lines>(element, document);
}
bool removeTriangleFromDoc(const ztCAD_Triangle* element, ztCAD_GMDDocument* document) {
  return remove<kinds::triangles>(element, document);
}
bool removeRefTriangleFromDoc(const ztCAD_TriangleRef* element, ztCAD_GMDDocument* document) {
  return remove<kinds::triangleReferences>(element, document);
}
bool removeLineRefFromDoc(const ztCAD_LineRef* element, ztCAD_GMDDocument* document) {
  return remove<kinds::lineReferences>(element, document);
}
bool removeMIPFromDoc(const ztCAD_ElementMIP* element, ztCAD_GMDDocument* document) {
  return remove<kinds::mipElements>(element, document);
}
bool removeStructureFromDoc(const ztCAD_Structure* element, ztCAD_GMDDocument* document) {
  return remove<kinds::structures>(element, document);
}

ztCAD_Cont<ztCAD_Structure>* ztCAD_getStructures(ztCAD_GMDDocument* document) {
  return get<kinds::structures>(document);
}
ztCAD_Cont<ztCAD_StructureRef>* ztCAD_getStructuresRef(ztCAD_GMDDocument* document) {
  return get<kinds::structureReferences>(document);
}
ztCAD_Cont<ztCAD_TmplStructure>* ztCAD_getTmplStructures(ztCAD_GMDDocument* document) {
  return get<kinds::templateStructures>(document);
}
ztCAD_Cont<ztCAD_Point>* ztCAD_getPoints(ztCAD_GMDDocument* document) { return get<kinds::points>(document); }
ztCAD_Cont<ztCAD_Line>* ztCAD_getLines(ztCAD_GMDDocument* document) { return get<kinds::lines>(document); }
ztCAD_Cont<ztCAD_Sphere>* ztCAD_getSpheres(ztCAD_GMDDocument* document) {
  return get<kinds::spheres>(document);
}
ztCAD_Cont<ztCAD_Triangle>* ztCAD_getTriangles(ztCAD_GMDDocument* document) {
  return get<kinds::triangles>(document);
}
ztCAD_Cont<ztCAD_ElementMIP>* ztCAD_getMipElements(ztCAD_GMDDocument* document) {
  return get<kinds::mipElements>(document);
}
ztCAD_Cont<ztCAD_Detail>* ztCAD_getDetails(ztCAD_GMDDocument* document) {
  return get<kinds::details>(document);
}
ztCAD_Cont<ztCAD_DetailRef>* ztCAD_getDetailsRef(ztCAD_GMDDocument* document) {
  return get<kinds::detailReferences>(document);
}
ztCAD_Cont<ztCAD_TmplDetail>* ztCAD_getTmplDetails(ztCAD_GMDDocument* document) {
  return get<kinds::templateDetails>(document);
}
ztCAD_Cont<ztCAD_TmplPoint>* ztCAD_getTmplPoints(ztCAD_GMDDocument* document) {
  return get<kinds::templatePoints>(document);
}
ztCAD_Cont<ztCAD_PointRef>* ztCAD_getPointsRef(ztCAD_GMDDocument* document) {
  return get<kinds::pointReferences>(document);
}
ztCAD_Cont<ztCAD_TmplLine>* ztCAD_getTmplLines(ztCAD_GMDDocument* document) {
  return get<kinds::templateLines>(document);
}
ztCAD_Cont<ztCAD_LineRef>* ztCAD_getLinesRef(ztCAD_GMDDocument* document) {
  return get<kinds::lineReferences>(document);
}
ztCAD_Cont<ztCAD_TmplElementMIP>* ztCAD_getTmplElementMips(ztCAD_GMDDocument* document) {
  return get<kinds::templateMipElements>(document);
}
ztCAD_Cont<ztCAD_ElementMipRef>* ztCAD_getElementMipsRef(ztCAD_GMDDocument* document) {
  return get<kinds::mipReferences>(document);
}
ztCAD_Cont<ztCAD_TmplTriangle>* ztCAD_getTmplTriangles(ztCAD_GMDDocument* document) {
  return get<kinds::templateTriangles>(document);
}
ztCAD_Cont<ztCAD_TriangleRef>* ztCAD_getTrianglesRef(ztCAD_GMDDocument* document) {
  return get<kinds::triangleReferences>(document);
}
