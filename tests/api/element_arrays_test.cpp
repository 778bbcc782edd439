#include <gtest/gtest.h>
#include <cmath>
#include <string>
#include <vector>

#include "samples.h"

// Fields of many elements by one call, compared with the functions for one element.

namespace {

class ElementArrays : public testing::Test {
 protected:
  std::vector<ztCAD_Base*> append(std::int32_t kind, std::int32_t count) {
    std::vector<ztCAD_Base*> elements(static_cast<std::size_t>(count));
    EXPECT_TRUE(ztCAD_appendManyToDoc(document.get(), kind, count, elements.data()));
    return elements;
  }

  Document document = newDocument();
};

TEST_F(ElementArrays, ManyAreAppendedInOrder) {
  const std::vector<ztCAD_Base*> appended = append(ztCAD_ElementSphere, 3);
  std::vector<ztCAD_Base*> listed(3);
  EXPECT_EQ(ztCAD_listDoc(document.get(), ztCAD_ElementSphere, listed.data(), 3), 3);
  EXPECT_EQ(appended, listed);
}

TEST_F(ElementArrays, AllAreAppendedToAStructureOrNone) {
  // as many levels as a file may nest, so that a detail, which takes three, has no room
  ztCAD_commonStructure* innermost = make<ztCAD_Structure>("outermost");
  while (ztCAD_Base* nested = ztCAD_appendToStructure(innermost, ztCAD_ElementStructure))
    innermost = dynamic_cast<ztCAD_commonStructure*>(nested);
  EXPECT_FALSE(ztCAD_appendManyToStructure(innermost, ztCAD_ElementDetail, 2, nullptr));
  EXPECT_EQ(ztCAD_countInStructure(innermost, ztCAD_ElementDetail), 0);

  ztCAD_Base* nested[2] = {};
  ztCAD_Structure* const wide = make<ztCAD_Structure>("wide");
  EXPECT_TRUE(ztCAD_appendManyToStructure(wide, ztCAD_ElementStructure, 2, nested));
  EXPECT_EQ(ztCAD_getFromStructure(wide, ztCAD_ElementStructure, 1), nested[1]);
}

TEST_F(ElementArrays, CentersAreReadAndSetWhereThereAreAny) {
  std::vector<ztCAD_Base*> elements = append(ztCAD_ElementPoint, 2);
  elements.push_back(append(ztCAD_ElementSphere, 1)[0]);
  elements.push_back(nullptr);
  elements.push_back(append(ztCAD_ElementLine, 1)[0]);  // has no centre
  const double centers[] = {1, 2, 3, 0, 0, 0, 7, 8, 9, 0, 0, 0, 0, 0, 0};
  const std::uint8_t set[] = {1, 0, 1, 1, 1};
  EXPECT_EQ(ztCAD_setCenters(elements.data(), 5, centers, set), 3);
  double xyz[15] = {};
  std::uint8_t present[5] = {};
  EXPECT_EQ(ztCAD_getCenters(elements.data(), 5, xyz, present), 2);
  EXPECT_EQ(std::vector<std::uint8_t>(present, present + 5), (std::vector<std::uint8_t>{1, 0, 1, 0, 0}));
  EXPECT_EQ(std::vector<double>(xyz, xyz + 3), (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(std::vector<double>(xyz + 6, xyz + 9), (std::vector<double>{7, 8, 9}));
  for (const int absent : {3, 4, 5, 9, 14})
    EXPECT_TRUE(std::isnan(xyz[absent])) << absent;
  EXPECT_EQ(ztCAD_setCenters(elements.data(), 2, centers, nullptr), 2);
  EXPECT_TRUE(ztCAD_getCenter(elements[1], nullptr)) << "without flags all are set";
}

TEST_F(ElementArrays, RadiiColorsAndVisibilitiesComeBack) {
  const std::vector<ztCAD_Base*> elements = append(ztCAD_ElementSphere, 2);
  const std::uint8_t first[] = {1, 0};
  std::uint8_t present[2] = {};

  const double radii[] = {2.5, 9};
  double foundRadii[2] = {};
  EXPECT_EQ(ztCAD_setRadii(elements.data(), 2, radii, first), 2);
  EXPECT_EQ(ztCAD_getRadii(elements.data(), 2, foundRadii, present), 1);
  EXPECT_EQ(foundRadii[0], 2.5);
  EXPECT_TRUE(std::isnan(foundRadii[1]));
  EXPECT_EQ(present[1], 0);

  const std::uint32_t rgb[] = {1, 2, UINT32_MAX, 4, 5, 6};
  std::uint32_t foundRgb[6] = {};
  EXPECT_EQ(ztCAD_setColors(elements.data(), 2, rgb, first), 2);
  EXPECT_EQ(ztCAD_getColors(elements.data(), 2, foundRgb, present), 1);
  EXPECT_EQ(std::vector<std::uint32_t>(foundRgb, foundRgb + 6),
            (std::vector<std::uint32_t>{1, 2, UINT32_MAX, 0, 0, 0}));

  const std::int8_t visible[] = {0, -7};
  std::int8_t foundVisible[2] = {};
  EXPECT_EQ(ztCAD_setVisibilities(elements.data(), 2, visible), 2);
  EXPECT_EQ(ztCAD_getVisibilities(elements.data(), 2, foundVisible), 1);
  EXPECT_EQ(foundVisible[0], 0);
  EXPECT_EQ(foundVisible[1], -1);
}

TEST_F(ElementArrays, SystemsOfOtherSizesAreReportedBySize) {
  std::vector<ztCAD_Base*> elements = append(ztCAD_ElementPoint, 3);
  elements.push_back(append(ztCAD_ElementStructure, 1)[0]);
  std::vector<double> values;
  for (int i = 0; i < 4; ++i)
    values.insert(values.end(), twelveValues.begin(), twelveValues.end());
  const std::int32_t sizes[] = {12, 0, -1, -1};
  EXPECT_EQ(ztCAD_setSystems(elements.data(), 4, values.data(), sizes), 3) << "a structure keeps its system";
  std::vector<double> found(48);
  std::int32_t foundSizes[4] = {};
  EXPECT_EQ(ztCAD_getSystems(elements.data(), 4, found.data(), foundSizes), 1);
  EXPECT_EQ(std::vector<double>(found.begin(), found.begin() + 12), twelveValues);
  EXPECT_EQ(std::vector<std::int32_t>(foundSizes, foundSizes + 4), (std::vector<std::int32_t>{12, 0, -1, 0}));
  EXPECT_TRUE(std::isnan(found[12]) && std::isnan(found[47]));
  const std::int32_t unknown[] = {11, 13, -2, INT32_MAX};
  EXPECT_EQ(ztCAD_setSystems(elements.data(), 4, values.data(), unknown), 0);
}

TEST_F(ElementArrays, PlacementsAreThoseOfReferences) {
  std::vector<ztCAD_Base*> elements = append(ztCAD_ElementPointRef, 2);
  elements.push_back(append(ztCAD_ElementPoint, 1)[0]);
  std::vector<double> values;
  for (int i = 0; i < 3; ++i)
    values.insert(values.end(), twelveValues.begin(), twelveValues.end());
  const std::int32_t sizes[] = {12, -1, 12};
  EXPECT_EQ(ztCAD_setPlacements(elements.data(), 3, values.data(), sizes), 1);
  std::vector<double> found(36);
  std::int32_t foundSizes[3] = {};
  EXPECT_EQ(ztCAD_getPlacements(elements.data(), 3, found.data(), foundSizes), 1);
  EXPECT_EQ(std::vector<std::int32_t>(foundSizes, foundSizes + 3), (std::vector<std::int32_t>{12, 0, -1}));
  EXPECT_EQ(std::vector<double>(found.begin(), found.begin() + 12), twelveValues);
}

TEST_F(ElementArrays, MassDataIsSetAndCleared) {
  std::vector<ztCAD_Base*> elements = append(ztCAD_ElementElementMIP, 1);
  elements.push_back(append(ztCAD_ElementTriangle, 1)[0]);
  std::vector<double> values(tenValues);
  values.insert(values.end(), tenValues.begin(), tenValues.end());
  const std::uint8_t first[] = {1, 0};
  EXPECT_EQ(ztCAD_setMIPs(elements.data(), 2, values.data(), nullptr), 2);
  EXPECT_EQ(ztCAD_setMIPs(elements.data(), 2, values.data(), first), 2);
  std::vector<double> found(20);
  std::uint8_t present[2] = {};
  EXPECT_EQ(ztCAD_getMIPs(elements.data(), 2, found.data(), present), 1);
  EXPECT_EQ(std::vector<double>(found.begin(), found.begin() + 10), tenValues);
  EXPECT_EQ(present[1], 0);
}

struct Field {
  std::int32_t number;
  std::int64_t (*get)(const ztCAD_Base*, char*, std::int64_t);
  std::int32_t kind;
};

TEST_F(ElementArrays, TextsComeBackInOrderWithTheirEnds) {
  const Field fields[] = {{ztCAD_TextName, ztCAD_getName, ztCAD_ElementPoint},
                          {ztCAD_TextComment, ztCAD_getComment, ztCAD_ElementPoint},
                          {ztCAD_TextInform, ztCAD_getInform, ztCAD_ElementPoint},
                          {ztCAD_TextMethod, ztCAD_getMethod, ztCAD_ElementPoint},
                          {ztCAD_TextTemplateName, ztCAD_getTemplateName, ztCAD_ElementPointRef},
                          {ztCAD_TextTemplateFile, ztCAD_getTemplateFile, ztCAD_ElementPointRef}};
  const std::string text = "oneточка\xEF\xF0";  // the last one is windows-1251
  const std::int64_t ends[] = {3, 13, 13, 15};
  for (const Field& field : fields) {
    SCOPED_TRACE(field.number);
    const std::vector<ztCAD_Base*> elements = append(field.kind, 4);
    EXPECT_EQ(ztCAD_setTexts(elements.data(), 4, field.number, text.c_str(), ends), 4);
    char one[32] = "";
    field.get(elements[1], one, sizeof one);
    EXPECT_STREQ(one, "точка");
    const std::string whole = "oneточкапр";
    std::vector<char> found(64, '.');
    std::int64_t foundEnds[4] = {};
    EXPECT_EQ(ztCAD_getTexts(elements.data(), 4, field.number, found.data(), 64, foundEnds), 17);
    EXPECT_EQ(std::string(found.data(), 18), whole + ".");
    EXPECT_EQ(std::vector<std::int64_t>(foundEnds, foundEnds + 4),
              (std::vector<std::int64_t>{3, 13, 13, 17}));
  }
}

TEST_F(ElementArrays, TextsThatDoNotFitAreNotWritten) {
  const std::vector<ztCAD_Base*> elements = append(ztCAD_ElementPoint, 3);
  const std::int64_t ends[] = {2, 5, 6};
  ztCAD_setTexts(elements.data(), 3, ztCAD_TextName, "abcdef", ends);
  std::string found(6, '.');
  EXPECT_EQ(ztCAD_getTexts(elements.data(), 3, ztCAD_TextName, found.data(), 4, nullptr), 6);
  EXPECT_EQ(found, "ab....") << "not even a later one that would fit";
}

TEST_F(ElementArrays, EndsThatGoBackGiveEmptyTexts) {
  const std::vector<ztCAD_Base*> elements = append(ztCAD_ElementPoint, 4);
  const std::int64_t ends[] = {-3, 2, 1, 3};
  EXPECT_EQ(ztCAD_setTexts(elements.data(), 4, ztCAD_TextName, "abc", ends), 4);
  std::string found(3, '.');
  std::int64_t foundEnds[4] = {};
  ztCAD_getTexts(elements.data(), 4, ztCAD_TextName, found.data(), 3, foundEnds);
  EXPECT_EQ(found, "abc");
  EXPECT_EQ(std::vector<std::int64_t>(foundEnds, foundEnds + 4), (std::vector<std::int64_t>{0, 2, 2, 3}));
}

TEST_F(ElementArrays, ListsAreReplacedAndExtended) {
  ztCAD_Base* const solid = append(ztCAD_ElementTriangle, 1)[0];
  const double xyz[] = {1, 2, 3, 4, 5, 6};
  EXPECT_TRUE(ztCAD_setVertexXYZ(solid, xyz, 2));
  EXPECT_TRUE(ztCAD_addVertexXYZ(solid, xyz, 1));
  EXPECT_EQ(ztCAD_getVertexCount(ztCAD_getVertices(solid)), 3);
  const double* own = ztCAD_getVertexData(ztCAD_getVertices(solid));
  EXPECT_TRUE(ztCAD_addVertexXYZ(solid, own, 3)) << "from the list itself";
  EXPECT_EQ(ztCAD_getVertexCount(ztCAD_getVertices(solid)), 6);
  own = ztCAD_getVertexData(ztCAD_getVertices(solid));
  EXPECT_TRUE(ztCAD_setVertexXYZ(solid, own + 3, 1));
  own = ztCAD_getVertexData(ztCAD_getVertices(solid));
  EXPECT_EQ(std::vector<double>(own, own + 3), (std::vector<double>{4, 5, 6}));

  const std::uint32_t ijk[] = {0, 1, 2, 3, 4, UINT32_MAX};
  EXPECT_TRUE(ztCAD_setFacetIJK(solid, ijk, 2));
  EXPECT_TRUE(ztCAD_addFacetIJK(solid, ijk + 3, 1));
  const std::uint32_t* const facets = ztCAD_getFacetData(ztCAD_getFaces(solid));
  EXPECT_EQ(std::vector<std::uint32_t>(facets, facets + 9),
            (std::vector<std::uint32_t>{0, 1, 2, 3, 4, UINT32_MAX, 3, 4, UINT32_MAX}));
  EXPECT_TRUE(ztCAD_setFacetIJK(solid, nullptr, 0));
  EXPECT_EQ(ztCAD_getFacetCount(ztCAD_getFaces(solid)), 0);
}

}  // namespace
