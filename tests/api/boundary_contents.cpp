#include <gtest/gtest.h>
#include <cstdint>

#include "boundary.h"
#include "samples.h"

namespace boundary {

namespace {

template <typename Element>
void addsNothing(bool (*add)(const Element*, ztCAD_GMDDocument*)) {
  const Document document = newDocument();
  const std::string before = savedBytes(document.get());
  EXPECT_TRUE(add(nullptr, document.get()));
  EXPECT_TRUE(add(make<Element>("A"), nullptr));
  EXPECT_TRUE(add(nullptr, nullptr));
  EXPECT_EQ(savedBytes(document.get()), before);
}

template <typename Element>
void addsNothing(bool (*add)(const Element*, ztCAD_commonStructure*)) {
  ztCAD_Structure* structure = make<ztCAD_Structure>("S");
  QString before;
  QString after;
  structure->toText(before, true);
  EXPECT_TRUE(add(nullptr, structure));
  EXPECT_TRUE(add(make<Element>("A"), nullptr));
  EXPECT_TRUE(add(nullptr, nullptr));
  EXPECT_EQ(structure->toText(after, true), before);
}

template <typename Element>
void removesNothing(bool (*remove)(const Element*, ztCAD_GMDDocument*),
                    bool (*add)(const Element*, ztCAD_GMDDocument*),
                    ztCAD_Cont<Element>* (*get)(ztCAD_GMDDocument*)) {
  const Document document = newDocument();
  add(make<Element>("A"), document.get());
  EXPECT_FALSE(remove(nullptr, document.get()));
  EXPECT_FALSE(remove(&get(document.get())->front(), nullptr));
  EXPECT_FALSE(remove(nullptr, nullptr));
  EXPECT_FALSE(remove(reinterpret_cast<Element*>(std::uintptr_t{1}), document.get()));
  EXPECT_FALSE(remove(reinterpret_cast<Element*>(document.get()), document.get()));
  EXPECT_EQ(get(document.get())->size(), 1u);
}

template <typename Container>
void givesNull(Container* (*get)(ztCAD_GMDDocument*)) {
  EXPECT_EQ(get(nullptr), null<Container>);
}

}  // namespace

std::vector<Row> contentRows() {
  return {
      {"addPointRefToDoc", [] { addsNothing(addPointRefToDoc); }},
      {"addPolylineToDoc", [] { addsNothing(addPolylineToDoc); }},
      {"addTmplLineToDoc", [] { addsNothing(addTmplLineToDoc); }},
      {"addLineRefToDoc", [] { addsNothing(addLineRefToDoc); }},
      {"addSphereToDoc", [] { addsNothing(addSphereToDoc); }},
      {"addTriangleToDoc", [] { addsNothing(addTriangleToDoc); }},
      {"addTmplTriangleToDoc", [] { addsNothing(addTmplTriangleToDoc); }},
      {"addTriangleRefToDoc", [] { addsNothing(addTriangleRefToDoc); }},
      {"addMipElementToDoc", [] { addsNothing(addMipElementToDoc); }},
      {"addTmplElementMipToDoc", [] { addsNothing(addTmplElementMipToDoc); }},
      {"addElementMipRefToDoc", [] { addsNothing(addElementMipRefToDoc); }},
      {"addStructureToDoc", [] { addsNothing(addStructureToDoc); }},
      {"addTmplStructureToDoc", [] { addsNothing(addTmplStructureToDoc); }},
      {"addStructureRefToDoc", [] { addsNothing(addStructureRefToDoc); }},
      {"addDetailRefToDoc", [] { addsNothing(addDetailRefToDoc); }},

      {"addPointToStructure", [] { addsNothing(addPointToStructure); }},
      {"addPolylineToStructure", [] { addsNothing(addPolylineToStructure); }},
      {"addSphereToStructure", [] { addsNothing(addSphereToStructure); }},
      {"addTriangleToStructure", [] { addsNothing(addTriangleToStructure); }},
      {"addMipElementToStructure", [] { addsNothing(addMipElementToStructure); }},
      {"addPointRefToStructure", [] { addsNothing(addPointRefToStructure); }},
      {"addLineRefToStructure", [] { addsNothing(addLineRefToStructure); }},
      {"addTriangleRefToStructure", [] { addsNothing(addTriangleRefToStructure); }},
      {"addElementMipRefToStructure", [] { addsNothing(addElementMipRefToStructure); }},
      {"addStructureRefToStructure", [] { addsNothing(addStructureRefToStructure); }},
      {"addDetailRefToStructure", [] { addsNothing(addDetailRefToStructure); }},
      {"addStructureToStructure",
       [] {
         ztCAD_Structure* structure = make<ztCAD_Structure>("S");
         EXPECT_TRUE(addStructureToStructure(nullptr, structure));
         EXPECT_TRUE(addStructureToStructure(structure, nullptr));
         EXPECT_TRUE(addStructureToStructure(nullptr, nullptr));
         EXPECT_TRUE(addStructureToStructure(structure, structure));
         EXPECT_TRUE(structure->structures().empty());
       }},

      {"removePolylineFromDoc",
       [] { removesNothing(removePolylineFromDoc, addPolylineToDoc, ztCAD_getLines); }},
      {"removeTriangleFromDoc",
       [] { removesNothing(removeTriangleFromDoc, addTriangleToDoc, ztCAD_getTriangles); }},
      {"removeRefTriangleFromDoc",
       [] { removesNothing(removeRefTriangleFromDoc, addTriangleRefToDoc, ztCAD_getTrianglesRef); }},
      {"removeLineRefFromDoc",
       [] { removesNothing(removeLineRefFromDoc, addLineRefToDoc, ztCAD_getLinesRef); }},
      {"removeMIPFromDoc",
       [] { removesNothing(removeMIPFromDoc, addMipElementToDoc, ztCAD_getMipElements); }},
      {"removeStructureFromDoc",
       [] { removesNothing(removeStructureFromDoc, addStructureToDoc, ztCAD_getStructures); }},

      {"ztCAD_getStructures", [] { givesNull(ztCAD_getStructures); }},
      {"ztCAD_getStructuresRef", [] { givesNull(ztCAD_getStructuresRef); }},
      {"ztCAD_getTmplStructures", [] { givesNull(ztCAD_getTmplStructures); }},
      {"ztCAD_getLines", [] { givesNull(ztCAD_getLines); }},
      {"ztCAD_getSpheres", [] { givesNull(ztCAD_getSpheres); }},
      {"ztCAD_getTriangles", [] { givesNull(ztCAD_getTriangles); }},
      {"ztCAD_getMipElements", [] { givesNull(ztCAD_getMipElements); }},
      {"ztCAD_getDetails", [] { givesNull(ztCAD_getDetails); }},
      {"ztCAD_getDetailsRef", [] { givesNull(ztCAD_getDetailsRef); }},
      {"ztCAD_getTmplDetails", [] { givesNull(ztCAD_getTmplDetails); }},
      {"ztCAD_getPointsRef", [] { givesNull(ztCAD_getPointsRef); }},
      {"ztCAD_getTmplLines", [] { givesNull(ztCAD_getTmplLines); }},
      {"ztCAD_getLinesRef", [] { givesNull(ztCAD_getLinesRef); }},
      {"ztCAD_getTmplElementMips", [] { givesNull(ztCAD_getTmplElementMips); }},
      {"ztCAD_getElementMipsRef", [] { givesNull(ztCAD_getElementMipsRef); }},
      {"ztCAD_getTmplTriangles", [] { givesNull(ztCAD_getTmplTriangles); }},
      {"ztCAD_getTrianglesRef", [] { givesNull(ztCAD_getTrianglesRef); }},
  };
}

}  // namespace boundary
