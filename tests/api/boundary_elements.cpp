#include <gtest/gtest.h>
#include <string>

#include "boundary.h"
#include "samples.h"

namespace boundary {

namespace {

/// A creation function takes its parts by pointer after the name; if one is null, nothing is created.
template <typename Element, typename Name, typename A, typename B>
void expectBothPartsNeeded(Element* (*create)(Name, const A*, const B*, bool&), const A* a, const B* b) {
  for (const bool withFirst : {false, true})
    for (const bool withSecond : {false, true}) {
      bool nameIsFree = false;
      const Element* made = create("A", withFirst ? a : nullptr, withSecond ? b : nullptr, nameIsFree);
      EXPECT_EQ(made != nullptr, withFirst && withSecond);
      EXPECT_TRUE(nameIsFree);
    }
}

template <typename Element, typename Name, typename Part>
void expectPartNeeded(Element* (*create)(Name, const Part*, bool&), const Part* part) {
  bool nameIsFree = false;
  EXPECT_EQ(create("A", nullptr, nameIsFree), null<Element>);
  EXPECT_TRUE(nameIsFree);
  nameIsFree = false;
  EXPECT_NE(create("A", part, nameIsFree), null<Element>);
  EXPECT_TRUE(nameIsFree);
}

/// A null name is an empty name.
template <typename Create, typename... Parts>
void expectNullNameIsEmpty(Create create, const Parts*... parts) {
  bool nameIsFree = false;
  const auto* made = create(nullptr, parts..., nameIsFree);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->name(), QString(""));
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(create(nullptr, static_cast<const Parts*>(nullptr)..., nameIsFree), nullptr);
}

template <typename Reference, typename Name, typename Template>
void expectReferenceNeedsItsParts(Reference* (*create)(Name, const ztCAD_LCS*, const Template*, bool&),
                                  const Template* source) {
  expectBothPartsNeeded(create, static_cast<const ztCAD_LCS*>(crtLCS(twelveValues)), source);
}

template <typename Element, typename Name>
void expectRecordNeeded(Element* (*create)(Name, const ztCAD_MIP*)) {
  EXPECT_EQ(create("A", nullptr), null<Element>);
  const Element* made = create("\xFF", crtMIP({}));
  ASSERT_NE(made, nullptr);
  EXPECT_FALSE(made->hasMIP());
}

const ztCAD_Vertices* vertices() { return tetrahedronVertices(); }
const ztCAD_Faces* faces() { return tetrahedronFaces(); }
const ztCAD_LCS* lcs() { return crtLCS(twelveValues); }

template <typename Element>
const Element* sample() {
  return make<Element>("source");
}

}  // namespace

std::vector<Row> elementRows() {
  return {
      {"crtPolyline",
       [] {
         expectPartNeeded(crtPolyline, vertices());
         expectNullNameIsEmpty(crtPolyline, vertices());
       }},
      {"crtSphere",
       [] {
         bool nameIsFree = false;
         EXPECT_EQ(crtSphere("A", nullptr, 1, nameIsFree), null<ztCAD_Sphere>);
         EXPECT_TRUE(nameIsFree);
       }},
      {"crtTriangle", [] { expectBothPartsNeeded(crtTriangle, vertices(), faces()); }},
      {"crtTriangle_nostl",
       [] {
         expectBothPartsNeeded(crtTriangle_nostl, vertices(), faces());
         expectNullNameIsEmpty(crtTriangle_nostl, vertices(), faces());
       }},
      {"crtMipElement", [] { expectRecordNeeded(crtMipElement); }},
      {"crtStructure", [] { expectPartNeeded(crtStructure, lcs()); }},
      {"crtStructure_nostl",
       [] {
         expectPartNeeded(crtStructure_nostl, lcs());
         expectNullNameIsEmpty(crtStructure_nostl, lcs());
       }},
      {"crtTmplLine",
       [] {
         expectPartNeeded<ztCAD_TmplLine>(crtTmplLine,
                                          static_cast<const ztCAD_commonLine*>(sample<ztCAD_Line>()));
       }},
      {"crtTmplTriangle",
       [] {
         expectPartNeeded<ztCAD_TmplTriangle>(
             crtTmplTriangle, static_cast<const ztCAD_commonTriangle*>(sample<ztCAD_Triangle>()));
       }},
      {"crtTmplMipElement", [] { expectRecordNeeded(crtTmplMipElement); }},
      {"crtTmplStructure",
       [] {
         const ztCAD_commonStructure* source = sample<ztCAD_Structure>();
         expectPartNeeded(crtTmplStructure, source);
       }},
      {"crtTmplStructure_nostl",
       [] {
         const ztCAD_commonStructure* source = sample<ztCAD_Structure>();
         expectPartNeeded(crtTmplStructure_nostl, source);
         expectNullNameIsEmpty(crtTmplStructure_nostl, source);
       }},
      {"crtPointRef", [] { expectReferenceNeedsItsParts(crtPointRef, sample<ztCAD_TmplPoint>()); }},
      {"crtLineRef", [] { expectReferenceNeedsItsParts(crtLineRef, sample<ztCAD_TmplLine>()); }},
      {"crtTriangleRef", [] { expectReferenceNeedsItsParts(crtTriangleRef, sample<ztCAD_TmplTriangle>()); }},
      {"crtElementMipRef",
       [] { expectReferenceNeedsItsParts(crtElementMipRef, sample<ztCAD_TmplElementMIP>()); }},
      {"crtStructureRef",
       [] { expectReferenceNeedsItsParts(crtStructureRef, sample<ztCAD_TmplStructure>()); }},
      {"crtStructureRef_nostl",
       [] {
         expectReferenceNeedsItsParts(crtStructureRef_nostl, sample<ztCAD_TmplStructure>());
         expectNullNameIsEmpty(crtStructureRef_nostl, lcs(), sample<ztCAD_TmplStructure>());
       }},
      {"crtSphere_nostl",
       [] {
         bool nameIsFree = false;
         EXPECT_EQ(crtSphere_nostl("A", nullptr, 1, nameIsFree), null<ztCAD_Sphere>);
         EXPECT_TRUE(nameIsFree);
         const ztCAD_Sphere* const made = crtSphere_nostl(nullptr, coord(0, 0, 0), 1, nameIsFree);
         ASSERT_NE(made, nullptr);
         EXPECT_EQ(made->name(), QString(""));
       }},
      {"crtMipElement_nostl",
       [] {
         expectRecordNeeded(crtMipElement_nostl);
         EXPECT_EQ(crtMipElement_nostl(nullptr, crtMIP(tenValues))->name(), QString(""));
       }},
      {"crtTmplMipElement_nostl",
       [] {
         expectRecordNeeded(crtTmplMipElement_nostl);
         EXPECT_EQ(crtTmplMipElement_nostl(nullptr, crtMIP(tenValues))->name(), QString(""));
       }},
      {"crtTmplPoint_nostl",
       [] {
         const ztCAD_commonPoint* source = sample<ztCAD_Point>();
         expectPartNeeded(crtTmplPoint_nostl, source);
         expectNullNameIsEmpty(crtTmplPoint_nostl, source);
       }},
      {"crtTmplLine_nostl",
       [] {
         const ztCAD_commonLine* source = sample<ztCAD_Line>();
         expectPartNeeded(crtTmplLine_nostl, source);
         expectNullNameIsEmpty(crtTmplLine_nostl, source);
       }},
      {"crtTmplTriangle_nostl",
       [] {
         const ztCAD_commonTriangle* source = sample<ztCAD_Triangle>();
         expectPartNeeded(crtTmplTriangle_nostl, source);
         expectNullNameIsEmpty(crtTmplTriangle_nostl, source);
       }},
      {"crtPointRef_nostl",
       [] {
         expectReferenceNeedsItsParts(crtPointRef_nostl, sample<ztCAD_TmplPoint>());
         expectNullNameIsEmpty(crtPointRef_nostl, lcs(), sample<ztCAD_TmplPoint>());
       }},
      {"crtLineRef_nostl",
       [] {
         expectReferenceNeedsItsParts(crtLineRef_nostl, sample<ztCAD_TmplLine>());
         expectNullNameIsEmpty(crtLineRef_nostl, lcs(), sample<ztCAD_TmplLine>());
       }},
      {"crtTriangleRef_nostl",
       [] {
         expectReferenceNeedsItsParts(crtTriangleRef_nostl, sample<ztCAD_TmplTriangle>());
         expectNullNameIsEmpty(crtTriangleRef_nostl, lcs(), sample<ztCAD_TmplTriangle>());
       }},
      {"crtElementMipRef_nostl",
       [] {
         expectReferenceNeedsItsParts(crtElementMipRef_nostl, sample<ztCAD_TmplElementMIP>());
         expectNullNameIsEmpty(crtElementMipRef_nostl, lcs(), sample<ztCAD_TmplElementMIP>());
       }},
      {"crtDetailRef",
       [] {
         const ztCAD_TmplDetail source;
         expectReferenceNeedsItsParts(crtDetailRef, &source);
       }},
      {"crtDetailRef_nostl",
       [] {
         const ztCAD_TmplDetail source;
         expectReferenceNeedsItsParts(crtDetailRef_nostl, &source);
         expectNullNameIsEmpty(crtDetailRef_nostl, lcs(), &source);
       }},
      {"setCommonProperty",
       [] {
         setCommonProperty(CommonProperty(), null<ztCAD_Point>);
         setCommonProperty(CommonProperty(), null<ztCAD_Line>);
         setCommonProperty(CommonProperty(), null<ztCAD_Sphere>);
         setCommonProperty(CommonProperty(), null<ztCAD_Structure>);
         setCommonProperty(CommonProperty(), null<ztCAD_TmplStructure>);
         setCommonProperty(CommonProperty(), null<ztCAD_Triangle>);
         setCommonProperty(CommonPropertyForMIP(), null<ztCAD_ElementMIP>);
       }},
      {"setMIP",
       [] {
         ztCAD_Sphere* sphere = make<ztCAD_Sphere>("A");
         setMIP(nullptr, sphere);
         setMIP(crtMIP(tenValues), nullptr);
         setMIP(nullptr, nullptr);
         setMIP(crtMIP({}), sphere);
         EXPECT_FALSE(sphere->hasMIP());
       }},
      {"crtMIP", [] { EXPECT_NE(crtMIP({}), nullptr); }},
      {"crtMIP_nostl",
       [] {
         EXPECT_EQ(crtMIP_nostl(nullptr, 10), null<ztCAD_MIP>);
         EXPECT_EQ(crtMIP_nostl(nullptr, 0), null<ztCAD_MIP>);
         EXPECT_EQ(crtMIP_nostl(tenValues.data(), -1), null<ztCAD_MIP>);
         EXPECT_EQ(crtMIP_nostl(tenValues.data(), INT32_MIN), null<ztCAD_MIP>);
         EXPECT_NE(crtMIP_nostl(tenValues.data(), 0), null<ztCAD_MIP>);
       }},
  };
}

}  // namespace boundary
