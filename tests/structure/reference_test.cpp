#include "structure/reference.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

#include "node_text.h"
#include "structure/detail.h"
#include "structure/sample_elements.h"
#include "structure/structure.h"

namespace {

template <typename R, typename T>
struct Kind {
  using Reference = R;
  using Template = T;
};

template <typename KindOfReference>
class Reference : public testing::Test {
 protected:
  using Ref = typename KindOfReference::Reference;
  using Template = typename KindOfReference::Template;

  static Ref placed(const char* name, bool isLocal) {
    bool nameIsFree = false;
    Ref made(QString::fromUtf8(name), ztCAD_LCS(isLocal, twelveValues()), named<Template>("Шаблон"),
             nameIsFree);
    EXPECT_TRUE(nameIsFree);
    return made;
  }
  static std::string element(const std::string& attributes) {
    return '<' + Ref().elementName().toStdString() + ' ' + attributes + "/>";
  }
  static constexpr bool isDetail = std::is_same_v<Ref, ztCAD_DetailRef>;
};

using Kinds =
    testing::Types<Kind<ztCAD_PointRef, ztCAD_TmplPoint>, Kind<ztCAD_LineRef, ztCAD_TmplLine>,
                   Kind<ztCAD_TriangleRef, ztCAD_TmplTriangle>,
                   Kind<ztCAD_ElementMipRef, ztCAD_TmplElementMIP>, Kind<ztCAD_DetailRef, ztCAD_TmplDetail>,
                   Kind<ztCAD_StructureRef, ztCAD_TmplStructure>>;
TYPED_TEST_SUITE(Reference, Kinds);

const std::string placement = std::string("MCS=\"") + twelveText + '"';

TYPED_TEST(Reference, IsCreatedEmptyWithADefaultPlacement) {
  const typename TestFixture::Ref made;
  EXPECT_EQ(made.name().toStdString(), "");
  EXPECT_TRUE(made.lcs().values().empty());
  EXPECT_FALSE(made.lcs().isLocal());
  EXPECT_EQ(written(made),
            this->element(R"(MCS="" color="" comment="" file="" inform="" name="" template="")"));
}

TYPED_TEST(Reference, StoresTheNameOfItsTemplate) {
  const auto made = this->placed("R", true);
  EXPECT_EQ(made.name().toStdString(), "R");
  EXPECT_EQ(made.archetype().templateName().toStdString(), "Шаблон");
  EXPECT_EQ(made.archetype().file().toStdString(), "");
}

TYPED_TEST(Reference, DoesNotFollowARenamedTemplate) {
  bool nameIsFree = false;
  auto source = named<typename TestFixture::Template>("T");
  const typename TestFixture::Ref made("R", ztCAD_LCS(), source, nameIsFree);
  source.setName("other");
  EXPECT_EQ(made.archetype().templateName().toStdString(), "T");
}

// In a file only the model system places a template; "LCS" on a reference belongs to its properties.
TYPED_TEST(Reference, WritesItsPlacementAsModelSystemEvenIfGivenALocalOne) {
  for (const bool isLocal : {true, false}) {
    auto made = this->placed("R", isLocal);
    made.setLcs(ztCAD_LCS(isLocal, twelveValues()));
    EXPECT_FALSE(made.lcs().isLocal());
    EXPECT_EQ(
        written(made),
        this->element(placement + R"( color="" comment="" file="" inform="" name="R" template="Шаблон")"));
  }
}

// A new detail reference always has the default placement; the caller sets another one afterwards.
TYPED_TEST(Reference, KeepsTheGivenPlacementUnlessItIsADetailReference) {
  for (const bool isLocal : {true, false}) {
    const auto made = this->placed("R", isLocal);
    EXPECT_EQ(made.lcs().values(), this->isDetail ? std::vector<double>() : twelveValues());
    EXPECT_FALSE(made.lcs().isLocal());
  }
}

TYPED_TEST(Reference, ADuplicateNameIsAccepted) {
  // no function adds names to the registry, so a duplicate name is reported as free
  EXPECT_EQ(this->placed("R", true).name(), this->placed("R", true).name());
}

TYPED_TEST(Reference, WithoutModelSystemKeepsItsPlacement) {
  for (const std::string& attributes :
       {std::string(), std::string("LCS=\"") + twelveText + '"', std::string(R"(MCS="")"),
        std::string(R"(MCS="CS, 1, 2")"), std::string(R"(MCS="1,2,3,4,5,6,7,8,9,10,11,12,13")")}) {
    typename TestFixture::Ref made;
    made.setLcs(ztCAD_LCS(true, std::vector<double>(12, 7)));
    EXPECT_TRUE(read(made, this->element(attributes)));
    EXPECT_EQ(made.lcs().values(), std::vector<double>(12, 7)) << attributes;
    EXPECT_FALSE(made.lcs().isLocal());
  }
}

TYPED_TEST(Reference, ReadingReplacesThePlacement) {
  typename TestFixture::Ref made;
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(read(made, this->element(placement)));
    EXPECT_EQ(made.lcs().values(), twelveValues());
  }
}

TYPED_TEST(Reference, ReadsWhatItWrites) {
  const std::string xml = this->element(
      "LCS=\"" + std::string(twelveText) + "\" " + placement +
      R"( color="RGB, 1, 2, 3" comment="к" file="f.xml" inform="i" name="R" template="%1" visible="true")");
  EXPECT_EQ(roundTrip<typename TestFixture::Ref>(xml), xml);
}

TYPED_TEST(Reference, ReadingNeverFails) {
  for (const char* attributes : {"", R"(color="red")", R"(name="")", R"(MCS="x" template="")"}) {
    typename TestFixture::Ref made;
    EXPECT_TRUE(read(made, this->element(attributes))) << attributes;
    EXPECT_FALSE(faultAfterReading(made, this->element(attributes), true));
  }
  typename TestFixture::Ref made;
  EXPECT_TRUE(read(made, "<other><point/></other>"));
}

TYPED_TEST(Reference, AMissingTemplateIsReadAsEmpty) {
  auto made = this->placed("R", true);
  made.archetype().setFile("f");
  EXPECT_TRUE(read(made, this->element(R"(name="R")")));
  EXPECT_EQ(made.archetype().templateName().toStdString(), "");
  EXPECT_EQ(made.archetype().file().toStdString(), "");
}

TYPED_TEST(Reference, TextHasPlacementPropertiesAndArchetype) {
  auto made = this->placed("%1", true);
  made.setLcs(ztCAD_LCS(true, twelveValues()));
  EXPECT_EQ(onlyText(made), made.elementName().toStdString() + "( MCS=(" + twelveText +
                                "), attr=(name=%1, comment=, inform=) ,color=visible=, "
                                "arche(template=Шаблон, file=)");
}

TYPED_TEST(Reference, CopiesAreDeep) {
  const auto source = this->placed("R", true);
  const std::string before = written(source);
  auto copy = source;
  typename TestFixture::Ref assigned;
  assigned = source;
  for (auto* one : {&copy, &assigned}) {
    EXPECT_EQ(written(*one), before);
    one->archetype().setTemplateName("other");
    one->setName("other");
    one->setLcs(ztCAD_LCS());
  }
  const auto& itself = assigned;
  assigned = itself;
  EXPECT_EQ(assigned.archetype().templateName().toStdString(), "other");
  EXPECT_EQ(written(source), before);
}

TEST(ReferenceNames, AreTheElementNames) {
  EXPECT_EQ(ztCAD_PointRef().elementName().toStdString(), "pointRef");
  EXPECT_EQ(ztCAD_LineRef().elementName().toStdString(), "lineRef");
  EXPECT_EQ(ztCAD_TriangleRef().elementName().toStdString(), "solidRef") << "not triangleRef";
  EXPECT_EQ(ztCAD_ElementMipRef().elementName().toStdString(), "elementMipRef");
  EXPECT_EQ(ztCAD_DetailRef().elementName().toStdString(), "detailRef");
  EXPECT_EQ(ztCAD_StructureRef().elementName().toStdString(), "structureRef");
}

TEST(TriangleReference, IsWrittenAsSolidReference) {
  EXPECT_EQ(written(ztCAD_TriangleRef()).substr(0, 9), "<solidRef");
}

}  // namespace
