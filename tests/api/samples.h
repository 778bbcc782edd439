#pragma once

#include <string>
#include <vector>

#include "host.h"

// One element of each kind, created as a host creates it, and the functions that add it to documents and
// structures.

inline const std::vector<double> twelveValues = {1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1};
inline const std::vector<double> tenValues = {0.8, 0, 0, 0.5, 0.01, 0.02, 0.03, 0, 0, 0};

inline ztCAD_Vertices* tetrahedronVertices() {
  ztCAD_Vertices* vertices = crtVertices();
  for (const ztCAD_Coord* corner : {coord(0, 0, 0), coord(1, 0, 0), coord(0, 1, 0), coord(0, 0, 1)})
    addVertex(crtVertexByCoord(corner), vertices);
  return vertices;
}

inline ztCAD_Faces* tetrahedronFaces() {
  ztCAD_Faces* faces = crtFaces();
  const std::uint32_t corners[][3] = {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}};
  for (const auto& corner : corners)
    addFacet(crtFacet(&corner[0], &corner[1], &corner[2]), faces);
  return faces;
}

/// A complete element of this kind.
template <typename Element>
Element* make(const std::string& name);

template <>
inline ztCAD_Point* make(const std::string& name) {
  return pointNamed(name);
}
template <>
inline ztCAD_TmplPoint* make(const std::string& name) {
  return templatePointNamed(name);
}
template <>
inline ztCAD_Line* make(const std::string& name) {
  bool nameIsFree = false;
  return crtPolyline(name.c_str(), tetrahedronVertices(), nameIsFree);
}
template <>
inline ztCAD_TmplLine* make(const std::string& name) {
  bool nameIsFree = false;
  return crtTmplLine(name, make<ztCAD_Line>("source"), nameIsFree);
}
template <>
inline ztCAD_Sphere* make(const std::string& name) {
  bool nameIsFree = false;
  return crtSphere(name, coord(1, 2, 3), 4, nameIsFree);
}
template <>
inline ztCAD_Triangle* make(const std::string& name) {
  bool nameIsFree = false;
  return crtTriangle(name, tetrahedronVertices(), tetrahedronFaces(), nameIsFree);
}
template <>
inline ztCAD_TmplTriangle* make(const std::string& name) {
  bool nameIsFree = false;
  return crtTmplTriangle(name, make<ztCAD_Triangle>("source"), nameIsFree);
}
template <>
inline ztCAD_ElementMIP* make(const std::string& name) {
  return crtMipElement(name, crtMIP(tenValues));
}
template <>
inline ztCAD_TmplElementMIP* make(const std::string& name) {
  return crtTmplMipElement(name, crtMIP(tenValues));
}
template <>
inline ztCAD_Structure* make(const std::string& name) {
  bool nameIsFree = false;
  return crtStructure(name, crtLCS(twelveValues), nameIsFree);
}
template <>
inline ztCAD_TmplStructure* make(const std::string& name) {
  bool nameIsFree = false;
  return crtTmplStructure(name, make<ztCAD_Structure>("source"), nameIsFree);
}

template <typename Reference, typename Template>
Reference* makeReference(Reference* (*create)(const std::string&, const ztCAD_LCS*, const Template*, bool&),
                         const std::string& name, const Template* source) {
  bool nameIsFree = false;
  return create(name, crtLCS(twelveValues), source, nameIsFree);
}

template <>
inline ztCAD_PointRef* make(const std::string& name) {
  return makeReference(crtPointRef, name, make<ztCAD_TmplPoint>("T"));
}
template <>
inline ztCAD_LineRef* make(const std::string& name) {
  return makeReference(crtLineRef, name, make<ztCAD_TmplLine>("T"));
}
template <>
inline ztCAD_TriangleRef* make(const std::string& name) {
  return makeReference(crtTriangleRef, name, make<ztCAD_TmplTriangle>("T"));
}
template <>
inline ztCAD_ElementMipRef* make(const std::string& name) {
  return makeReference(crtElementMipRef, name, make<ztCAD_TmplElementMIP>("T"));
}
template <>
inline ztCAD_StructureRef* make(const std::string& name) {
  return makeReference(crtStructureRef, name, make<ztCAD_TmplStructure>("T"));
}
template <>
inline ztCAD_DetailRef* make(const std::string& name) {
  ztCAD_TmplDetail source;  // no function creates one; the reference stores its name only
  source.setName("T");
  return makeReference(crtDetailRef, name, &source);
}

/// The functions of one kind for documents. `remove` is null for a kind without a removal function.
template <typename Type>
struct DocumentKind {
  using Element = Type;
  const char* name;
  bool (*add)(const Element*, ztCAD_GMDDocument*);
  ztCAD_Cont<Element>* (*get)(ztCAD_GMDDocument*);
  bool (*remove)(const Element*, ztCAD_GMDDocument*) = nullptr;
};

template <typename Visit>
void forEachDocumentKind(Visit&& visit) {
  visit(DocumentKind<ztCAD_Point>{"point", addPointToDoc, ztCAD_getPoints, removePointFromDoc});
  visit(DocumentKind<ztCAD_TmplPoint>{"template point", addTmplPointToDoc, ztCAD_getTmplPoints});
  visit(DocumentKind<ztCAD_PointRef>{"point reference", addPointRefToDoc, ztCAD_getPointsRef});
  visit(DocumentKind<ztCAD_Line>{"line", addPolylineToDoc, ztCAD_getLines, removePolylineFromDoc});
  visit(DocumentKind<ztCAD_TmplLine>{"template line", addTmplLineToDoc, ztCAD_getTmplLines});
  visit(DocumentKind<ztCAD_LineRef>{"line reference", addLineRefToDoc, ztCAD_getLinesRef,
                                    removeLineRefFromDoc});
  visit(DocumentKind<ztCAD_Sphere>{"sphere", addSphereToDoc, ztCAD_getSpheres});
  visit(DocumentKind<ztCAD_Triangle>{"solid", addTriangleToDoc, ztCAD_getTriangles, removeTriangleFromDoc});
  visit(DocumentKind<ztCAD_TmplTriangle>{"template solid", addTmplTriangleToDoc, ztCAD_getTmplTriangles});
  visit(DocumentKind<ztCAD_TriangleRef>{"solid reference", addTriangleRefToDoc, ztCAD_getTrianglesRef,
                                        removeRefTriangleFromDoc});
  visit(DocumentKind<ztCAD_ElementMIP>{"mass-inertia element", addMipElementToDoc, ztCAD_getMipElements,
                                       removeMIPFromDoc});
  visit(DocumentKind<ztCAD_TmplElementMIP>{"template mass-inertia element", addTmplElementMipToDoc,
                                           ztCAD_getTmplElementMips});
  visit(DocumentKind<ztCAD_ElementMipRef>{"mass-inertia reference", addElementMipRefToDoc,
                                          ztCAD_getElementMipsRef});
  visit(DocumentKind<ztCAD_Structure>{"structure", addStructureToDoc, ztCAD_getStructures,
                                      removeStructureFromDoc});
  visit(DocumentKind<ztCAD_TmplStructure>{"template structure", addTmplStructureToDoc,
                                          ztCAD_getTmplStructures});
  visit(
      DocumentKind<ztCAD_StructureRef>{"structure reference", addStructureRefToDoc, ztCAD_getStructuresRef});
  visit(DocumentKind<ztCAD_DetailRef>{"detail reference", addDetailRefToDoc, ztCAD_getDetailsRef});
}

/// The functions of one kind for structures.
template <typename Type>
struct StructureKind {
  using Element = Type;
  const char* name;
  bool (*add)(const Element*, ztCAD_commonStructure*);
  ztCAD_Cont<Element> ztCAD_StructureContent::*container;
};

template <typename Visit>
void forEachStructureKind(Visit&& visit) {
  using Content = ztCAD_StructureContent;
  visit(StructureKind<ztCAD_Point>{"point", addPointToStructure, &Content::points});
  visit(StructureKind<ztCAD_Line>{"line", addPolylineToStructure, &Content::lines});
  visit(StructureKind<ztCAD_Sphere>{"sphere", addSphereToStructure, &Content::spheres});
  visit(StructureKind<ztCAD_Triangle>{"solid", addTriangleToStructure, &Content::triangles});
  visit(StructureKind<ztCAD_ElementMIP>{"mass-inertia element", addMipElementToStructure,
                                        &Content::mipElements});
  visit(StructureKind<ztCAD_PointRef>{"point reference", addPointRefToStructure, &Content::pointReferences});
  visit(StructureKind<ztCAD_LineRef>{"line reference", addLineRefToStructure, &Content::lineReferences});
  visit(StructureKind<ztCAD_TriangleRef>{"solid reference", addTriangleRefToStructure,
                                         &Content::triangleReferences});
  visit(StructureKind<ztCAD_ElementMipRef>{"mass-inertia reference", addElementMipRefToStructure,
                                           &Content::mipReferences});
  visit(StructureKind<ztCAD_StructureRef>{"structure reference", addStructureRefToStructure,
                                          &Content::structureReferences});
  visit(StructureKind<ztCAD_DetailRef>{"detail reference", addDetailRefToStructure,
                                       &Content::detailReferences});
}
