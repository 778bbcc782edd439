#include "geometry/solid.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

#include "geometry/sphere.h"
#include "geometry/triangle.h"
#include "node_text.h"

namespace {

static_assert(std::is_abstract_v<ztCAD_Solid>);
static_assert(std::is_convertible_v<ztCAD_Solid*, ztCAD_Base*>);
static_assert(std::is_convertible_v<ztCAD_Solid*, ztCAD_baseElement*>);
static_assert(std::is_convertible_v<ztCAD_Solid*, ztCAD_ISerialize*>);
static_assert(std::is_convertible_v<ztCAD_Solid*, ztCAD_INode*>);
static_assert(std::is_convertible_v<ztCAD_Solid*, ztCAD_IBaseChecker*>);
static_assert(std::is_convertible_v<ztCAD_Solid*, ztCAD_StateCorrect*>);
static_assert(std::is_convertible_v<ztCAD_Solid*, ztCAD_cmnSolid*>);

using Reals = std::vector<double>;

const Reals oneToTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};

// Rules for the mass-inertia data of every solid, regardless of its geometry.
template <typename T>
class MassInertiaOfSolid : public testing::Test {
 public:
  static std::string xml(const std::string& attributes) {
    return "<solid name='S' center='1,2,3' radius='1' " + attributes +
           "><vertices>1,2,3;</vertices><faces>0,1,2;</faces></solid>";
  }
};
using Solids = testing::Types<ztCAD_Triangle, ztCAD_TmplTriangle, ztCAD_Sphere>;
TYPED_TEST_SUITE(MassInertiaOfSolid, Solids);

TYPED_TEST(MassInertiaOfSolid, IsAbsentByDefault) {
  const TypeParam solid;
  EXPECT_FALSE(solid.hasMIP());
  EXPECT_FALSE(solid.mip().has_value());
  EXPECT_EQ(written(solid).find("MIP"), std::string::npos);
}

TYPED_TEST(MassInertiaOfSolid, SettingCopiesTheRecordWithItsIntegers) {
  ztCAD_MIP record(oneToTen);
  record.setFirstInteger(3);
  record.setSecondInteger(4);
  TypeParam solid;
  solid.setMip(record);
  EXPECT_TRUE(solid.hasMIP());
  ASSERT_TRUE(solid.mip().has_value());
  EXPECT_EQ(solid.mip()->values(), oneToTen);
  EXPECT_EQ(solid.mip()->firstInteger(), 3);
  EXPECT_EQ(solid.mip()->secondInteger(), 4);
  EXPECT_NE(written(solid).find(R"( MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" )"), std::string::npos);
}

TYPED_TEST(MassInertiaOfSolid, ARecordOfFewerThanTenValuesIsRefused) {
  for (const ztCAD_MIP& record : {ztCAD_MIP(), ztCAD_MIP(Reals()), ztCAD_MIP(Reals(9, 1.0))}) {
    TypeParam solid;
    solid.setMip(record);
    EXPECT_FALSE(solid.hasMIP()) << record.values().size();
    solid.setMip(ztCAD_MIP(oneToTen));
    solid.setMip(record);
    ASSERT_TRUE(solid.hasMIP()) << "a refused record must not change anything";
    EXPECT_EQ(solid.mip()->values(), oneToTen);
  }
}

TYPED_TEST(MassInertiaOfSolid, IsClearedByNullopt) {
  TypeParam solid;
  solid.setMip(ztCAD_MIP(oneToTen));
  solid.setMip(std::nullopt);
  EXPECT_FALSE(solid.hasMIP());
  EXPECT_FALSE(solid.mip().has_value());
  EXPECT_EQ(written(solid).find("MIP"), std::string::npos);
}

TYPED_TEST(MassInertiaOfSolid, IsReadFromTheAttribute) {
  TypeParam solid;
  EXPECT_TRUE(read(solid, this->xml("MIP='MIP,1,2,3,4,5,6,7,8,9,10'")));
  ASSERT_TRUE(solid.hasMIP());
  EXPECT_EQ(solid.mip()->values(), oneToTen);
}

TYPED_TEST(MassInertiaOfSolid, IsAbsentWithoutTheAttribute) {
  TypeParam solid;
  EXPECT_TRUE(read(solid, this->xml("")));
  EXPECT_FALSE(solid.hasMIP());
  EXPECT_FALSE(solid.mip().has_value());
}

const char* const invalidAttributes[] = {"",
                                         "MIP=''",
                                         "MIP='MIP'",
                                         "MIP='MIP,1,2,3,4,5,6,7,8,9'",
                                         "MIP='MIP,1,2,3,4,5,6,7,8,9,10,11'",
                                         "MIP='mip,1,2,3,4,5,6,7,8,9,10'",
                                         "MIP='MIP,1,2,x,4,5,6,7,8,9,10'",
                                         "MIP='MIP,1,2,три,4,5,6,7,8,9,10'"};

TYPED_TEST(MassInertiaOfSolid, AnInvalidAttributeIsNotAFailureAndSetsNothing) {
  for (const char* attribute : invalidAttributes) {
    TypeParam solid;
    EXPECT_TRUE(read(solid, this->xml(attribute))) << attribute;
    EXPECT_TRUE(solid.readOk());
    EXPECT_FALSE(solid.hasMIP()) << attribute;
  }
}

TYPED_TEST(MassInertiaOfSolid, AnInvalidAttributeKeepsThePreviousRecord) {
  for (const char* attribute : invalidAttributes) {
    ztCAD_MIP record(oneToTen);
    record.setFirstInteger(3);
    TypeParam solid;
    solid.setMip(record);
    EXPECT_TRUE(read(solid, this->xml(attribute))) << attribute;
    ASSERT_TRUE(solid.hasMIP()) << attribute;
    EXPECT_EQ(solid.mip()->values(), oneToTen);
    EXPECT_EQ(solid.mip()->firstInteger(), 3);
  }
}

TYPED_TEST(MassInertiaOfSolid, AValidAttributeReplacesThePreviousRecord) {
  TypeParam solid;
  solid.setMip(ztCAD_MIP(Reals(12, 5.0)));
  EXPECT_TRUE(read(solid, this->xml("MIP='MIP,1,2,3,4,5,6,7,8,9,10'")));
  EXPECT_EQ(solid.mip()->values(), oneToTen);
}

TYPED_TEST(MassInertiaOfSolid, IsReadEvenIfTheSolidFails) {
  TypeParam solid;
  EXPECT_FALSE(read(solid, "<solid MIP='MIP,1,2,3,4,5,6,7,8,9,10'/>"));
  ASSERT_TRUE(solid.hasMIP());
  EXPECT_EQ(solid.mip()->values(), oneToTen);
}

TYPED_TEST(MassInertiaOfSolid, SixDigitsSurviveARoundTrip) {
  TypeParam solid;
  solid.setMip(ztCAD_MIP({0.3333333, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(readFrom<TypeParam>(written(solid)).mip()->values()[0], 0.333333);
}

TYPED_TEST(MassInertiaOfSolid, CopiesHaveTheirOwnRecord) {
  TypeParam source;
  source.setMip(ztCAD_MIP(oneToTen));
  TypeParam copy = source;
  TypeParam assigned;
  assigned = source;
  for (TypeParam* other : {&copy, &assigned}) {
    ASSERT_TRUE(other->hasMIP());
    EXPECT_EQ(other->mip()->values(), oneToTen);
    other->setMip(ztCAD_MIP(Reals(10, 0.0)));
  }
  EXPECT_EQ(source.mip()->values(), oneToTen);
}

}  // namespace
