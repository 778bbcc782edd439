#include <gtest/gtest.h>

#include "boundary.h"
#include "samples.h"

namespace boundary {

namespace {

constexpr std::int32_t invalidKinds[] = {INT32_MIN, -1, ztCAD_ElementNone, 7, 99, INT32_MAX};

// One owner of each type, with one point in it.

ztCAD_GMDDocument* document() {
  static const Document kept = [] {
    Document made = newDocument();
    addPointToDoc(pointNamed("P"), made.get());
    return made;
  }();
  return kept.get();
}
ztCAD_commonStructure* structure() {
  ztCAD_Structure* const made = make<ztCAD_Structure>("S");
  addPointToStructure(pointNamed("P"), made);
  return made;
}
ztCAD_Detail* detail() {
  static ztCAD_Detail made;
  if (made.content().points.empty()) made.content().points.add(*pointNamed("P"));
  return &made;
}

template <typename Holder>
void expectNoCount(std::int32_t (*count)(const Holder*, std::int32_t), const Holder* holder) {
  EXPECT_EQ(count(nullptr, ztCAD_ElementPoint), 0);
  for (const std::int32_t kind : invalidKinds)
    EXPECT_EQ(count(holder, kind), 0) << kind;
  EXPECT_EQ(count(holder, ztCAD_ElementPoint), 1);
}

template <typename Holder>
void expectNoElement(ztCAD_Base* (*get)(Holder*, std::int32_t, std::int32_t), Holder* holder) {
  EXPECT_EQ(get(nullptr, ztCAD_ElementPoint, 0), null<ztCAD_Base>);
  for (const std::int32_t kind : invalidKinds)
    EXPECT_EQ(get(holder, kind, 0), null<ztCAD_Base>) << kind;
  for (const std::int32_t index : {INT32_MIN, -1, 1, INT32_MAX})
    EXPECT_EQ(get(holder, ztCAD_ElementPoint, index), null<ztCAD_Base>) << index;
  EXPECT_NE(get(holder, ztCAD_ElementPoint, 0), null<ztCAD_Base>);
}

template <typename Holder>
void expectNoList(std::int32_t (*list)(Holder*, std::int32_t, ztCAD_Base**, std::int32_t), Holder* holder) {
  ztCAD_Base* const before = pointNamed("before");
  ztCAD_Base* elements[2] = {before, before};
  EXPECT_EQ(list(nullptr, ztCAD_ElementPoint, elements, 2), 0);
  for (const std::int32_t kind : invalidKinds)
    EXPECT_EQ(list(holder, kind, elements, 2), 0) << kind;
  EXPECT_EQ(list(holder, ztCAD_ElementPoint, nullptr, 2), 1);
  EXPECT_EQ(list(holder, ztCAD_ElementPoint, elements, 0), 1);
  EXPECT_EQ(list(holder, ztCAD_ElementPoint, elements, INT32_MIN), 1);
  EXPECT_EQ(elements[0], before);
  EXPECT_EQ(list(holder, ztCAD_ElementPoint, elements, 2), 1);
  EXPECT_NE(elements[0], before);
  EXPECT_EQ(elements[1], before);
}

template <typename Holder>
void expectNotAdded(bool (*add)(const ztCAD_Base*, Holder*), Holder* holder, const ztCAD_Base* foreign) {
  EXPECT_TRUE(add(nullptr, holder));
  EXPECT_TRUE(add(pointNamed("A"), nullptr));
  EXPECT_TRUE(add(nullptr, nullptr));
  EXPECT_TRUE(add(crtVertices(), holder)) << "has a name, but is not an element";
  if (foreign) {
    EXPECT_TRUE(add(foreign, holder));
  }
}

template <typename Holder>
void expectNotAppended(ztCAD_Base* (*append)(Holder*, std::int32_t), Holder* holder) {
  EXPECT_EQ(append(nullptr, ztCAD_ElementPoint), null<ztCAD_Base>);
  for (const std::int32_t kind : invalidKinds)
    EXPECT_EQ(append(holder, kind), null<ztCAD_Base>) << kind;
}

template <typename Holder>
void expectNotRemoved(bool (*remove)(const ztCAD_Base*, Holder*, std::int32_t), Holder* holder,
                      ztCAD_Base* (*get)(Holder*, std::int32_t, std::int32_t)) {
  const ztCAD_Base* const element = get(holder, ztCAD_ElementPoint, 0);
  EXPECT_FALSE(remove(nullptr, holder, ztCAD_ElementPoint));
  EXPECT_FALSE(remove(element, nullptr, ztCAD_ElementPoint));
  EXPECT_FALSE(remove(element, holder, ztCAD_ElementSphere));
  for (const std::int32_t kind : invalidKinds)
    EXPECT_FALSE(remove(element, holder, kind)) << kind;
  EXPECT_FALSE(remove(reinterpret_cast<const ztCAD_Base*>(std::uintptr_t{1}), holder, ztCAD_ElementPoint));
  EXPECT_EQ(get(holder, ztCAD_ElementPoint, 0), element);
}

}  // namespace

std::vector<Row> countedRows() {
  return {
      {"ztCAD_countInDoc",
       [] { expectNoCount(ztCAD_countInDoc, static_cast<const ztCAD_GMDDocument*>(document())); }},
      {"ztCAD_countInStructure",
       [] { expectNoCount(ztCAD_countInStructure, static_cast<const ztCAD_commonStructure*>(structure())); }},
      {"ztCAD_countInDetail",
       [] { expectNoCount(ztCAD_countInDetail, static_cast<const ztCAD_cmnDetail*>(detail())); }},
      {"ztCAD_getFromDoc", [] { expectNoElement(ztCAD_getFromDoc, document()); }},
      {"ztCAD_getFromStructure", [] { expectNoElement(ztCAD_getFromStructure, structure()); }},
      {"ztCAD_getFromDetail",
       [] { expectNoElement(ztCAD_getFromDetail, static_cast<ztCAD_cmnDetail*>(detail())); }},
      {"ztCAD_listDoc", [] { expectNoList(ztCAD_listDoc, document()); }},
      {"ztCAD_listStructure", [] { expectNoList(ztCAD_listStructure, structure()); }},
      {"ztCAD_listDetail", [] { expectNoList(ztCAD_listDetail, static_cast<ztCAD_cmnDetail*>(detail())); }},
      {"ztCAD_addToDoc", [] { expectNotAdded(ztCAD_addToDoc, document(), nullptr); }},
      {"ztCAD_addToStructure",
       [] { expectNotAdded(ztCAD_addToStructure, structure(), templatePointNamed("T")); }},
      {"ztCAD_addToDetail",
       [] {
         expectNotAdded(ztCAD_addToDetail, static_cast<ztCAD_cmnDetail*>(detail()),
                        make<ztCAD_Structure>("S"));
       }},
      {"ztCAD_appendToDoc", [] { expectNotAppended(ztCAD_appendToDoc, document()); }},
      {"ztCAD_appendToStructure",
       [] {
         expectNotAppended(ztCAD_appendToStructure, structure());
         EXPECT_EQ(ztCAD_appendToStructure(nullptr, ztCAD_ElementStructure), null<ztCAD_Base>);
         EXPECT_EQ(ztCAD_appendToStructure(structure(), ztCAD_ElementTmplStructure), null<ztCAD_Base>);
       }},
      {"ztCAD_appendToDetail",
       [] {
         expectNotAppended(ztCAD_appendToDetail, static_cast<ztCAD_cmnDetail*>(detail()));
         EXPECT_EQ(ztCAD_appendToDetail(detail(), ztCAD_ElementDetail), null<ztCAD_Base>);
       }},
      {"ztCAD_removeFromDoc", [] { expectNotRemoved(ztCAD_removeFromDoc, document(), ztCAD_getFromDoc); }},
      {"ztCAD_removeFromStructure",
       [] {
         expectNotRemoved(ztCAD_removeFromStructure, structure(), ztCAD_getFromStructure);
         EXPECT_FALSE(ztCAD_removeFromStructure(nullptr, structure(), ztCAD_ElementStructure));
         EXPECT_FALSE(ztCAD_removeFromStructure(structure(), structure(), ztCAD_ElementStructure));
         EXPECT_FALSE(ztCAD_removeFromStructure(structure(), nullptr, ztCAD_ElementStructure));
       }},
      {"ztCAD_cloneStructure", [] { EXPECT_EQ(ztCAD_cloneStructure(nullptr), null<ztCAD_commonStructure>); }},
      {"ztCAD_unifyNames", [] { ztCAD_unifyNames(nullptr); }},
      {"ztCAD_removeFromDetail",
       [] {
         expectNotRemoved(ztCAD_removeFromDetail, static_cast<ztCAD_cmnDetail*>(detail()),
                          ztCAD_getFromDetail);
       }},
  };
}

std::vector<Row> flatRows() {
  static const double xyz[3] = {1, 2, 3};
  static const std::uint32_t ijk[3] = {1, 2, 3};
  return {
      {"ztCAD_fillMIP",
       [] {
         ztCAD_fillMIP(nullptr, xyz, 3);
         ztCAD_MIP* const record = crtMIP(tenValues);
         ztCAD_fillMIP(record, nullptr, 3);
         ztCAD_fillMIP(record, xyz, -1);
         EXPECT_EQ(record->values(), tenValues);
         ztCAD_fillMIP(record, xyz, 3);
         EXPECT_EQ(record->values(), (std::vector<double>{1, 2, 3}));
       }},
      {"ztCAD_fillLCS",
       [] {
         ztCAD_fillLCS(nullptr, xyz, 3, true);
         ztCAD_LCS* const lcs = crtLCS(twelveValues);
         ztCAD_fillLCS(lcs, nullptr, 3, false);
         ztCAD_fillLCS(lcs, xyz, INT32_MIN, false);
         EXPECT_EQ(lcs->values(), twelveValues);
         EXPECT_TRUE(lcs->isLocal());
         ztCAD_fillLCS(lcs, nullptr, 0, false);
         EXPECT_TRUE(lcs->values().empty());
         EXPECT_FALSE(lcs->isLocal());
       }},
      {"ztCAD_fillCoord",
       [] {
         ztCAD_fillCoord(nullptr, xyz);
         ztCAD_Coord* const position = coord(4, 5, 6);
         ztCAD_fillCoord(position, xyz);
         EXPECT_EQ(position->z(), 3);
         ztCAD_fillCoord(position, nullptr);
         EXPECT_FALSE(position->isValid());
       }},
      {"ztCAD_setMIPIntegers", [] { ztCAD_setMIPIntegers(nullptr, 1, 2); }},
      {"addVertexXYZ_nostl",
       [] {
         ztCAD_Vertices* const vertices = crtVertices();
         addVertexXYZ_nostl(xyz, 1, nullptr);
         addVertexXYZ_nostl(nullptr, INT32_MAX, vertices);
         addVertexXYZ_nostl(xyz, 0, vertices);
         addVertexXYZ_nostl(xyz, INT32_MIN, vertices);
         EXPECT_EQ(ztCAD_getVertexCount(vertices), 0);
       }},
      {"addFacetIJK_nostl",
       [] {
         ztCAD_Faces* const faces = crtFaces();
         addFacetIJK_nostl(ijk, 1, nullptr);
         addFacetIJK_nostl(nullptr, INT32_MAX, faces);
         addFacetIJK_nostl(ijk, 0, faces);
         addFacetIJK_nostl(ijk, INT32_MIN, faces);
         EXPECT_EQ(ztCAD_getFacetCount(faces), 0);
       }},
      {"ztCAD_getVertexCount", [] { EXPECT_EQ(ztCAD_getVertexCount(nullptr), 0); }},
      {"ztCAD_getFacetCount", [] { EXPECT_EQ(ztCAD_getFacetCount(nullptr), 0); }},
      {"getVertexXYZ_nostl",
       [] {
         double out[3] = {5, 5, 5};
         EXPECT_EQ(getVertexXYZ_nostl(nullptr, 0, 1, out), 0);
         for (const std::int32_t first : {INT32_MIN, -1, 4, INT32_MAX})
           EXPECT_EQ(getVertexXYZ_nostl(tetrahedronVertices(), first, 1, out), 0) << first;
         for (const std::int32_t count : {INT32_MIN, -1, 0})
           EXPECT_EQ(getVertexXYZ_nostl(tetrahedronVertices(), 0, count, out), 0) << count;
         EXPECT_EQ(getVertexXYZ_nostl(tetrahedronVertices(), 0, 1, nullptr), 0);
         EXPECT_EQ(out[0], 5);
         EXPECT_EQ(getVertexXYZ_nostl(tetrahedronVertices(), 3, INT32_MAX, out), 1);
         EXPECT_EQ(out[2], 1);
       }},
      {"getFacetIJK_nostl",
       [] {
         std::uint32_t out[3] = {5, 5, 5};
         EXPECT_EQ(getFacetIJK_nostl(nullptr, 0, 1, out), 0);
         for (const std::int32_t first : {INT32_MIN, -1, 4, INT32_MAX})
           EXPECT_EQ(getFacetIJK_nostl(tetrahedronFaces(), first, 1, out), 0) << first;
         for (const std::int32_t count : {INT32_MIN, -1, 0})
           EXPECT_EQ(getFacetIJK_nostl(tetrahedronFaces(), 0, count, out), 0) << count;
         EXPECT_EQ(getFacetIJK_nostl(tetrahedronFaces(), 0, 1, nullptr), 0);
         EXPECT_EQ(out[0], 5u);
         EXPECT_EQ(getFacetIJK_nostl(tetrahedronFaces(), 3, INT32_MAX, out), 1);
         EXPECT_EQ(out[0], 2u);
       }},
      {"ztCAD_getVertexData",
       [] {
         EXPECT_EQ(ztCAD_getVertexData(nullptr), null<double>);
         EXPECT_EQ(ztCAD_getVertexData(crtVertices()), null<double>);
       }},
      {"ztCAD_getFacetData",
       [] {
         EXPECT_EQ(ztCAD_getFacetData(nullptr), null<std::uint32_t>);
         EXPECT_EQ(ztCAD_getFacetData(crtFaces()), null<std::uint32_t>);
       }},
      {"ztCAD_clearVertices", [] { ztCAD_clearVertices(nullptr); }},
      {"ztCAD_clearFaces", [] { ztCAD_clearFaces(nullptr); }},
  };
}

}  // namespace boundary
