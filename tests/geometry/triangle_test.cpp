#include "geometry/triangle.h"

#include <gtest/gtest.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "geometry/sample_solids.h"
#include "node_text.h"

namespace {

// A downcast with static_cast compiles only if the base is not virtual.
template <typename From, typename To, typename = void>
struct CanDowncast : std::false_type {};
template <typename From, typename To>
struct CanDowncast<From, To, std::void_t<decltype(static_cast<To*>(std::declval<From*>()))>>
    : std::true_type {};

using SelectorOfTriangles = ztCAD_cmnSelector2<ztCAD_KindTriangle>;
using SelectorOfTemplates = ztCAD_cmnSelector2<ztCAD_KindTmplTriangle>;

static_assert(std::is_abstract_v<ztCAD_commonTriangle>, "the common base cannot be instantiated");
static_assert(std::is_convertible_v<ztCAD_Triangle*, ztCAD_Solid*>);
static_assert(std::is_convertible_v<ztCAD_Triangle*, ztCAD_INameLCS_Selector*>);
static_assert(CanDowncast<SelectorOfTriangles, ztCAD_Triangle>::value);
static_assert(std::is_convertible_v<ztCAD_TmplTriangle*, SelectorOfTemplates*>);
static_assert(!CanDowncast<SelectorOfTemplates, ztCAD_TmplTriangle>::value,
              "only the template solid has its selector as a virtual base");

// ---------------------------------------------------------------------------------------------- construction

TEST(TriangulatedSolid, IsEmptyByDefault) {
  const ztCAD_Triangle solid;
  EXPECT_TRUE(solid.vertices().coordinates().empty());
  EXPECT_TRUE(solid.faces().indices().empty());
  EXPECT_FALSE(solid.hasMIP());
  EXPECT_FALSE(solid.readOk());
  EXPECT_FALSE(solid.wasRead());
}

TEST(TriangulatedSolid, HasTheNameAndListsPassedToItsConstructor) {
  ztCAD_Vertices list = vertices({1, 2, 3});
  list.setName("list");
  bool nameIsFree = false;
  const ztCAD_Triangle solid("Тело", list, faces({0, 0, 0}), nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(solid.name().toStdString(), "Тело");
  EXPECT_EQ(solid.vertices().coordinates(), (Reals{1, 2, 3}));
  EXPECT_EQ(solid.vertices().name().toStdString(), "") << "only the coordinates are copied";
  EXPECT_EQ(solid.faces().indices(), (Indices{0, 0, 0}));
  EXPECT_FALSE(solid.hasMIP());
  EXPECT_FALSE(solid.wasRead());
}

TEST(TriangulatedSolid, EveryNameIsReportedFree) {
  for (int i = 0; i < 2; ++i) {
    bool nameIsFree = false;
    const ztCAD_Triangle solid("S1", ztCAD_Vertices(), ztCAD_Faces(), nameIsFree);
    EXPECT_TRUE(nameIsFree);
  }
}

TEST(TriangulatedSolid, ReturnsItsElementNameAndCoordinateSystemAttribute) {
  EXPECT_EQ(ztCAD_Triangle().elementName().toStdString(), "solid");
  EXPECT_EQ(ztCAD_Triangle().lcsWord().toStdString(), "LCS");
  EXPECT_EQ(ztCAD_TmplTriangle().elementName().toStdString(), "templateSolid");
  EXPECT_EQ(ztCAD_TmplTriangle().lcsWord().toStdString(), "MCS");
}

// ----------------------------------------------------------------------------------------------------- texts

TEST(TriangulatedSolid, StorageTextContainsMethodPropertiesAndBothLists) {
  EXPECT_EQ(
      text(oneFacet(), false),
      "\ntriangulation(method=pointXYZprop=attr=(name=S1, comment=, inform=) ,color=visible=\n0, 0, 0;\n1, 0, 0;\n0, 1, 0;\n ,\n0, 1, 2;\n);");
  EXPECT_EQ(text(ztCAD_Triangle(), false),
            "\ntriangulation(method=pointXYZprop=attr=(name=, comment=, inform=) ,color=visible=\n ,\n);");
}

TEST(TriangulatedSolid, DebugTextContainsTheDebugTextsOfBothLists) {
  EXPECT_EQ(
      text(oneFacet(), true),
      "\ntriangulation(method=pointXYZprop=attr=(name=S1, comment=, inform=) ,color=visible=\nvertices(\ncoord(0, 0, 0;)\ncoord(1, 0, 0;)\ncoord(0, 1, 0;)\n) ,\nfaces(\nfacet(I1=0, I2=1, I3=2)\n));");
  EXPECT_EQ(
      text(ztCAD_Triangle(), true),
      "\ntriangulation(method=pointXYZprop=attr=(name=, comment=, inform=) ,color=visible=\nvertices() ,\nfaces());");
}

TEST(TriangulatedSolid, TextsHaveTheMassInertiaDataBeforeTheLists) {
  ztCAD_Triangle solid;
  solid.setMip(ztCAD_MIP({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  const std::string beginning =
      "\ntriangulation(method=pointXYZprop=attr=(name=, comment=, inform=) ,color=visible=MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10";
  EXPECT_EQ(text(solid, false), beginning + "\n ,\n);");
  EXPECT_EQ(text(solid, true), beginning + "\nvertices() ,\nfaces());");
}

// Existing programs that parse these texts expect this word; writing the solid's own method would break them.
TEST(TriangulatedSolid, TextAlwaysNamesTheMethodPointXyz) {
  ztCAD_Triangle solid;
  solid.setName("%1");
  solid.method().setMethod("triangulation");
  EXPECT_EQ(text(solid, false),
            "\ntriangulation(method=pointXYZprop=attr=(name=%1, comment=, inform=) ,color=visible=\n ,\n);");
}

// --------------------------------------------------------------------------------------------------- writing

TEST(TriangulatedSolid, ADefaultSolidWritesTwoListsOfALineFeed) {
  EXPECT_EQ(
      written(ztCAD_Triangle()),
      "<solid color=\"\" comment=\"\" inform=\"\" method=\"triangulation\" name=\"\"><vertices>\n</vertices>"
      "<faces>\n</faces></solid>");
  EXPECT_EQ(
      written(ztCAD_TmplTriangle()),
      "<templateSolid color=\"\" comment=\"\" inform=\"\" method=\"triangulation\" name=\"\"><vertices>\n</vertices>"
      "<faces>\n</faces></templateSolid>");
}

TEST(TriangulatedSolid, WritesVerticesThenFacets) { EXPECT_EQ(written(fullSolid()), fullSolidXml); }

TEST(TriangulatedSolid, AlwaysWritesTheMethodTriangulation) {
  for (const char* method : {"", "sphere", "сфера"}) {
    ztCAD_Triangle solid = fullSolid();
    solid.method().setMethod(method);
    EXPECT_EQ(written(solid), fullSolidXml) << method;
    EXPECT_EQ(solid.method().method().toStdString(), method) << "writing must not change the object";
  }
}

TEST(TriangulatedSolid, IndicesOutOfRangeAreWrittenAndRead) {
  const auto copy = readFrom<ztCAD_Triangle>(written(triangle("S1", {}, {0, 1, 4294967295})));
  EXPECT_TRUE(copy.readOk());
  EXPECT_EQ(copy.faces().indices(), (Indices{0, 1, 4294967295}));
}

TEST(TriangulatedSolid, IsAppendedAfterTheChildrenOfItsParent) {
  ParsedXml xml("<GMD><header/></GMD>");
  triangle("A", {}, {}).writeXml(xml.root, xml.document);
  triangle("B", {}, {}).writeXml(xml.root, xml.document);
  const QDomElement first = xml.root.firstChildElement("solid");
  EXPECT_EQ(xml.root.firstChildElement().tagName().toStdString(), "header");
  EXPECT_EQ(first.attribute("name").toStdString(), "A");
  EXPECT_EQ(first.nextSiblingElement().attribute("name").toStdString(), "B");
}

// ----------------------------------------------------------------------------- self-check, copies, templates

TEST(TriangulatedSolid, SelfCheckOfASolidThatWasNotReadRequiresCompleteTriples) {
  EXPECT_TRUE(ztCAD_Triangle().passesCheck()) << "empty lists consist of complete triples";
  EXPECT_TRUE(oneFacet().passesCheck());
  EXPECT_TRUE(triangle("S1", {}, {7, 8, 9}).passesCheck()) << "indices are not compared with the vertices";
  for (const std::size_t count : {1u, 2u, 4u, 5u}) {
    EXPECT_FALSE(triangle("S1", Reals(count, 1.0), {}).passesCheck()) << count;
    EXPECT_FALSE(triangle("S1", {}, Indices(count, 1)).passesCheck()) << count;
  }
}

TEST(TriangulatedSolid, ChangingACopyKeepsTheSource) {
  const ztCAD_Triangle source = fullSolid();
  ztCAD_Triangle copy = source;
  ztCAD_Triangle assigned;
  assigned = source;
  for (ztCAD_Triangle* other : {&copy, &assigned}) {
    EXPECT_EQ(written(*other), fullSolidXml);
    other->setName("other");
    other->property().attributes().setComment("other");
    other->method().setMethod("other");
    other->setVertices(ztCAD_Vertices());
    other->setFaces(ztCAD_Faces());
    other->setReadOk(true);
  }
  EXPECT_EQ(written(source), fullSolidXml);
  EXPECT_EQ(source.method().method().toStdString(), "");
  EXPECT_FALSE(source.wasRead());
}

TEST(TriangulatedSolid, CopiesKeepTheReadState) {
  const auto source = readFrom<ztCAD_Triangle>(fullSolidXml);
  const ztCAD_Triangle copy = source;
  EXPECT_TRUE(copy.readOk());
  EXPECT_TRUE(copy.wasRead());
}

// A template point copies the property block of its source; a template solid does not, and hosts rely on
// that.
TEST(TemplateSolid, CopiesOnlyTheGeometryOfItsSource) {
  ztCAD_TmplTriangle source;
  ASSERT_TRUE(read(source, fullSolidXml));
  bool nameIsFree = false;
  const ztCAD_TmplTriangle solid("T1", source, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(
      written(solid),
      "<templateSolid color=\"\" comment=\"\" inform=\"\" method=\"triangulation\" name=\"T1\"><vertices>\n0, 0, 0;\n"
      "1, 0, 0;\n0, 1, 0;\n</vertices><faces>\n0, 1, 2;\n</faces></templateSolid>");
  EXPECT_FALSE(solid.hasMIP()) << "mass-inertia data is not geometry";
  EXPECT_FALSE(solid.wasRead()) << "the state is not copied either";
  EXPECT_EQ(solid.method().method().toStdString(), "");
  EXPECT_EQ(source.name().toStdString(), "S1");
}

TEST(TemplateSolid, CanBeCreatedFromASolidAndCopied) {
  bool nameIsFree = false;
  const ztCAD_TmplTriangle solid("T1", fullSolid(), nameIsFree);
  ztCAD_TmplTriangle copy = solid;
  ztCAD_TmplTriangle assigned;
  assigned = solid;
  copy.setFaces(ztCAD_Faces());
  EXPECT_EQ(assigned.faces().indices(), (Indices{0, 1, 2}));
  EXPECT_EQ(solid.faces().indices(), (Indices{0, 1, 2}));
  EXPECT_EQ(assigned.name().toStdString(), "T1");
}

}  // namespace
