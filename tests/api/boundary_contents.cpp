#include <gtest/gtest.h>
#include <cstdint>

#include "boundary.h"
#include "samples.h"

namespace boundary {

namespace {

template <typename Element>
void expectNothingAdded(bool (*add)(const Element*, ztCAD_GMDDocument*)) {
  const Document document = newDocument();
  const std::string before = savedBytes(document.get());
  EXPECT_TRUE(add(nullptr, document.get()));
  EXPECT_TRUE(add(make<Element>("A"), nullptr));
  EXPECT_TRUE(add(nullptr, nullptr));
  EXPECT_EQ(savedBytes(document.get()), before);
}

template <typename Element>
void expectNothingAdded(bool (*add)(const Element*, ztCAD_commonStructure*)) {
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
void expectNothingRemoved(bool (*remove)(const Element*, ztCAD_GMDDocument*),
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
void expectNullContainer(Container* (*get)(ztCAD_GMDDocument*)) {
  EXPECT_EQ(get(nullptr), null<Container>);
}

}  // namespace

std::vector<Row> contentRows() {
  return {
      {"addPointRefToDoc", [] { expectNothingAdded(addPointRefToDoc); }},
      {"addPolylineToDoc", [] { expectNothingAdded(addPolylineToDoc); }},
      {"addTmplLineToDoc", [] { expectNothingAdded(addTmplLineToDoc); }},
      {"addLineRefToDoc", [] { expectNothingAdded(addLineRefToDoc); }},
      {"addSphereToDoc", [] { expectNothingAdded(addSphereToDoc); }},
      {"addTriangleToDoc", [] { expectNothingAdded(addTriangleToDoc); }},
      {"addTmplTriangleToDoc", [] { expectNothingAdded(addTmplTriangleToDoc); }},
      {"addTriangleRefToDoc", [] { expectNothingAdded(addTriangleRefToDoc); }},
      {"addMipElementToDoc", [] { expectNothingAdded(addMipElementToDoc); }},
      {"addTmplElementMipToDoc", [] { expectNothingAdded(addTmplElementMipToDoc); }},
      {"addElementMipRefToDoc", [] { expectNothingAdded(addElementMipRefToDoc); }},
      {"addStructureToDoc", [] { expectNothingAdded(addStructureToDoc); }},
      {"addTmplStructureToDoc", [] { expectNothingAdded(addTmplStructureToDoc); }},
      {"addStructureRefToDoc", [] { expectNothingAdded(addStructureRefToDoc); }},
      {"addDetailRefToDoc", [] { expectNothingAdded(addDetailRefToDoc); }},

      {"addPointToStructure", [] { expectNothingAdded(addPointToStructure); }},
      {"addPolylineToStructure", [] { expectNothingAdded(addPolylineToStructure); }},
      {"addSphereToStructure", [] { expectNothingAdded(addSphereToStructure); }},
      {"addTriangleToStructure", [] { expectNothingAdded(addTriangleToStructure); }},
      {"addMipElementToStructure", [] { expectNothingAdded(addMipElementToStructure); }},
      {"addPointRefToStructure", [] { expectNothingAdded(addPointRefToStructure); }},
      {"addLineRefToStructure", [] { expectNothingAdded(addLineRefToStructure); }},
      {"addTriangleRefToStructure", [] { expectNothingAdded(addTriangleRefToStructure); }},
      {"addElementMipRefToStructure", [] { expectNothingAdded(addElementMipRefToStructure); }},
      {"addStructureRefToStructure", [] { expectNothingAdded(addStructureRefToStructure); }},
      {"addDetailRefToStructure", [] { expectNothingAdded(addDetailRefToStructure); }},
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
       [] { expectNothingRemoved(removePolylineFromDoc, addPolylineToDoc, ztCAD_getLines); }},
      {"removeTriangleFromDoc",
       [] { expectNothingRemoved(removeTriangleFromDoc, addTriangleToDoc, ztCAD_getTriangles); }},
      {"removeRefTriangleFromDoc",
       [] { expectNothingRemoved(removeRefTriangleFromDoc, addTriangleRefToDoc, ztCAD_getTrianglesRef); }},
      {"removeLineRefFromDoc",
       [] { expectNothingRemoved(removeLineRefFromDoc, addLineRefToDoc, ztCAD_getLinesRef); }},
      {"removeMIPFromDoc",
       [] { expectNothingRemoved(removeMIPFromDoc, addMipElementToDoc, ztCAD_getMipElements); }},
      {"removeStructureFromDoc",
       [] { expectNothingRemoved(removeStructureFromDoc, addStructureToDoc, ztCAD_getStructures); }},

      {"ztCAD_getStructures", [] { expectNullContainer(ztCAD_getStructures); }},
      {"ztCAD_getStructuresRef", [] { expectNullContainer(ztCAD_getStructuresRef); }},
      {"ztCAD_getTmplStructures", [] { expectNullContainer(ztCAD_getTmplStructures); }},
      {"ztCAD_getLines", [] { expectNullContainer(ztCAD_getLines); }},
      {"ztCAD_getSpheres", [] { expectNullContainer(ztCAD_getSpheres); }},
      {"ztCAD_getTriangles", [] { expectNullContainer(ztCAD_getTriangles); }},
      {"ztCAD_getMipElements", [] { expectNullContainer(ztCAD_getMipElements); }},
      {"ztCAD_getDetails", [] { expectNullContainer(ztCAD_getDetails); }},
      {"ztCAD_getDetailsRef", [] { expectNullContainer(ztCAD_getDetailsRef); }},
      {"ztCAD_getTmplDetails", [] { expectNullContainer(ztCAD_getTmplDetails); }},
      {"ztCAD_getPointsRef", [] { expectNullContainer(ztCAD_getPointsRef); }},
      {"ztCAD_getTmplLines", [] { expectNullContainer(ztCAD_getTmplLines); }},
      {"ztCAD_getLinesRef", [] { expectNullContainer(ztCAD_getLinesRef); }},
      {"ztCAD_getTmplElementMips", [] { expectNullContainer(ztCAD_getTmplElementMips); }},
      {"ztCAD_getElementMipsRef", [] { expectNullContainer(ztCAD_getElementMipsRef); }},
      {"ztCAD_getTmplTriangles", [] { expectNullContainer(ztCAD_getTmplTriangles); }},
      {"ztCAD_getTrianglesRef", [] { expectNullContainer(ztCAD_getTrianglesRef); }},
  };
}

}  // namespace boundary
