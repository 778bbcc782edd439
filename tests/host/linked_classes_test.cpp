// The classes of the public headers in a linked host: the library exports every symbol that the compiler
// needs.

#include <gtest/gtest.h>
#include <ztCAD/ztCAD.h>
#include <typeinfo>
#include <utility>

namespace {

template <typename Class>
class PublicClass : public testing::Test {};

using Classes =
    testing::Types<ztCAD_Point, ztCAD_TmplPoint, ztCAD_Line, ztCAD_TmplLine, ztCAD_Triangle,
                   ztCAD_TmplTriangle, ztCAD_Sphere, ztCAD_ElementMIP, ztCAD_TmplElementMIP, ztCAD_Detail,
                   ztCAD_TmplDetail, ztCAD_Structure, ztCAD_TmplStructure, ztCAD_PointRef, ztCAD_LineRef,
                   ztCAD_TriangleRef, ztCAD_ElementMipRef, ztCAD_DetailRef, ztCAD_StructureRef, ztCAD_Coord,
                   ztCAD_Vertex, ztCAD_Vertices, ztCAD_Facet, ztCAD_Faces, ztCAD_MIP, ztCAD_LCS, ztCAD_Color,
                   ztCAD_Visible, ztCAD_gShowable, ztCAD_gAttr, ztCAD_gMethod, ztCAD_gArche,
                   ztCAD_cmnProperty, ztCAD_HeaderNode, ztCAD_State, CommonProperty, CommonPropertyForMIP,
                   ztParallel>;
TYPED_TEST_SUITE(PublicClass, Classes);

TYPED_TEST(PublicClass, CanBeCreatedCopiedAndMoved) {
  TypeParam made;
  TypeParam copied(made);
  TypeParam moved(std::move(copied));
  made = moved;
  moved = std::move(made);
  EXPECT_EQ(typeid(moved), typeid(TypeParam));
}

TYPED_TEST(PublicClass, CanBeABaseClassInTheHost) {
  class Own : public TypeParam {};
  const Own own;
  const TypeParam& base = own;
  EXPECT_EQ(typeid(base) == typeid(Own), std::is_polymorphic_v<TypeParam>);
}

// dynamic_cast in the host works on objects of the library: the type information of both sides is shared or
// equal.
TEST(PublicClasses, OfLibraryObjectsAreRecognisedByTheHost) {
  const double at = 1;
  bool nameIsFree = false;
  ztCAD_Base* const point = crtPoint("P", crtCoord(&at, &at, &at), nameIsFree);
  EXPECT_NE(dynamic_cast<ztCAD_Point*>(point), nullptr);
  EXPECT_NE(dynamic_cast<ztCAD_commonPoint*>(point), nullptr);
  EXPECT_NE(dynamic_cast<ztCAD_INode*>(point), nullptr);
  EXPECT_NE(dynamic_cast<ztCAD_cmnSelector2<ztCAD_KindPoint>*>(point), nullptr);
  EXPECT_EQ(dynamic_cast<ztCAD_cmnSelector2<ztCAD_KindLine>*>(point), nullptr);
  EXPECT_EQ(dynamic_cast<ztCAD_TmplPoint*>(point), nullptr);

  const ztCAD_TmplDetail detail;
  ztCAD_Base* const reference = crtDetailRef("R", crtLCS({}), &detail, nameIsFree);
  EXPECT_NE(dynamic_cast<ztCAD_DetailRef*>(reference), nullptr);
  EXPECT_NE(dynamic_cast<ztCAD_commonRef<ztCAD_TmplDetail>*>(reference), nullptr);
  EXPECT_EQ(dynamic_cast<ztCAD_commonRef<ztCAD_TmplStructure>*>(reference), nullptr);
}

}  // namespace
