#include <gtest/gtest.h>
#include <array>
#include <string>

#include "boundary.h"
#include "samples.h"

namespace boundary {

namespace {

using TextGetter = std::int64_t (*)(const ztCAD_Base*, char*, std::int64_t);
using TextSetter = void (*)(ztCAD_Base*, const char*);

/// A text getter handles null, missing texts and every buffer size.
/// @param lacking an element that has no such text, or null
void checkTextGetter(TextGetter get, const ztCAD_Base* having, const ztCAD_Base* lacking) {
  char text[] = "earlier";
  EXPECT_EQ(get(nullptr, text, sizeof text), -1);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(get(nullptr, nullptr, INT64_MAX), -1);
  EXPECT_EQ(get(lacking, text, sizeof text), -1);
  const std::int64_t length = get(having, nullptr, 0);
  ASSERT_GE(length, 1);
  text[0] = 'e';
  EXPECT_EQ(get(having, text, 0), length);
  EXPECT_EQ(get(having, text, INT64_MIN), length);
  EXPECT_EQ(text[0], 'e');
  EXPECT_EQ(get(having, text, length), length);
  EXPECT_STREQ(text, "") << "no space for the terminator";
  std::string whole(length, '?');
  EXPECT_EQ(get(having, whole.data(), length + 1), length);
  EXPECT_EQ(whole.find('?'), std::string::npos);
}

void expectNullTextIsEmpty(TextSetter set, TextGetter get, ztCAD_Base* element) {
  set(nullptr, "a");
  set(nullptr, nullptr);
  set(element, "a\xFF");
  EXPECT_EQ(get(element, nullptr, 0), 3) << "windows-1251 is returned as UTF-8";
  set(element, nullptr);
  EXPECT_EQ(get(element, nullptr, 0), 0);
}

ztCAD_Base* point() { return pointNamed("P"); }
ztCAD_Base* sphere() { return make<ztCAD_Sphere>("S"); }
ztCAD_Base* solid() { return make<ztCAD_Triangle>("T"); }
ztCAD_Base* structure() { return make<ztCAD_Structure>("G"); }
ztCAD_Base* reference() { return make<ztCAD_PointRef>("R"); }

/// A getter of numbers handles null, elements without the field and every buffer size.
/// @param lacking an element without the field
void checkNumbersGetter(std::int32_t (*get)(const ztCAD_Base*, double*, std::int32_t),
                        const ztCAD_Base* having, const ztCAD_Base* lacking) {
  double values[2] = {5, 5};
  EXPECT_EQ(get(nullptr, values, 2), -1);
  EXPECT_EQ(get(lacking, values, 2), -1);
  const std::int32_t count = get(having, nullptr, INT32_MAX);
  EXPECT_GT(count, 2);
  EXPECT_EQ(get(having, values, 0), count);
  EXPECT_EQ(get(having, values, INT32_MIN), count);
  EXPECT_EQ(values[0], 5);
  EXPECT_EQ(get(having, values, 1), count);
  EXPECT_EQ(values[1], 5);
}

}  // namespace

std::vector<Row> fieldRows() {
  return {
      {"ztCAD_getKind", [] { EXPECT_EQ(ztCAD_getKind(nullptr), ztCAD_ElementNone); }},
      {"ztCAD_getName", [] { checkTextGetter(ztCAD_getName, point(), nullptr); }},
      {"ztCAD_setName", [] { expectNullTextIsEmpty(ztCAD_setName, ztCAD_getName, point()); }},
      {"ztCAD_getComment",
       [] {
         ztCAD_Base* const element = point();
         ztCAD_setComment(element, "c");
         checkTextGetter(ztCAD_getComment, element, nullptr);
       }},
      {"ztCAD_setComment", [] { expectNullTextIsEmpty(ztCAD_setComment, ztCAD_getComment, point()); }},
      {"ztCAD_getInform",
       [] {
         ztCAD_Base* const element = point();
         ztCAD_setInform(element, "i");
         checkTextGetter(ztCAD_getInform, element, nullptr);
       }},
      {"ztCAD_setInform", [] { expectNullTextIsEmpty(ztCAD_setInform, ztCAD_getInform, point()); }},
      {"ztCAD_getMethod", [] { checkTextGetter(ztCAD_getMethod, point(), structure()); }},
      {"ztCAD_setMethod",
       [] {
         ztCAD_setMethod(structure(), "a");
         expectNullTextIsEmpty(ztCAD_setMethod, ztCAD_getMethod, point());
       }},
      {"ztCAD_getTemplateName", [] { checkTextGetter(ztCAD_getTemplateName, reference(), point()); }},
      {"ztCAD_setTemplateName",
       [] {
         ztCAD_setTemplateName(point(), "a");
         expectNullTextIsEmpty(ztCAD_setTemplateName, ztCAD_getTemplateName, reference());
       }},
      {"ztCAD_getTemplateFile",
       [] {
         ztCAD_Base* const element = reference();
         ztCAD_setTemplateFile(element, "f");
         checkTextGetter(ztCAD_getTemplateFile, element, point());
       }},
      {"ztCAD_setTemplateFile",
       [] {
         ztCAD_setTemplateFile(point(), "a");
         expectNullTextIsEmpty(ztCAD_setTemplateFile, ztCAD_getTemplateFile, reference());
       }},
      {"ztCAD_getText",
       [] {
         const TextGetter debugForm = [](const ztCAD_Base* element, char* text, std::int64_t size) {
           return ztCAD_getText(element, true, text, size);
         };
         checkTextGetter(debugForm, point(), crtVertices());
         EXPECT_EQ(ztCAD_getText(point(), false, nullptr, 0), 8) << "0, 0, 0;";
       }},
      {"ztCAD_getColor",
       [] {
         std::array<std::uint32_t, 3> rgb = {5, 5, 5};
         EXPECT_FALSE(ztCAD_getColor(nullptr, rgb.data()));
         EXPECT_FALSE(ztCAD_getColor(point(), rgb.data()));
         EXPECT_EQ(rgb[0], 5u);
         ztCAD_Base* const element = point();
         ztCAD_setColor(element, rgb.data());
         EXPECT_TRUE(ztCAD_getColor(element, nullptr));
       }},
      {"ztCAD_setColor",
       [] {
         const std::uint32_t rgb[] = {1, 2, UINT32_MAX};
         ztCAD_setColor(nullptr, rgb);
         ztCAD_setColor(nullptr, nullptr);
         ztCAD_setColor(point(), nullptr);
       }},
      {"ztCAD_getVisible",
       [] {
         EXPECT_EQ(ztCAD_getVisible(nullptr), -1);
         EXPECT_EQ(ztCAD_getVisible(point()), -1);
       }},
      {"ztCAD_setVisible",
       [] {
         ztCAD_setVisible(nullptr, 1);
         ztCAD_Base* const element = point();
         ztCAD_setVisible(element, INT32_MAX);
         EXPECT_EQ(ztCAD_getVisible(element), 1);
         ztCAD_setVisible(element, INT32_MIN);
         EXPECT_EQ(ztCAD_getVisible(element), -1);
       }},
      {"ztCAD_getLCS", [] { checkNumbersGetter(ztCAD_getLCS, structure(), point()); }},
      {"ztCAD_setLCS",
       [] {
         ztCAD_setLCS(nullptr, crtLCS(twelveValues));
         ztCAD_setLCS(nullptr, nullptr);
         ztCAD_Base* const element = structure();
         ztCAD_setLCS(element, nullptr);
         EXPECT_EQ(ztCAD_getLCS(element, nullptr, 0), 12) << "a structure always has one";
       }},
      {"ztCAD_getReadOk",
       [] {
         EXPECT_EQ(ztCAD_getReadOk(nullptr), -1);
         EXPECT_EQ(ztCAD_getReadOk(point()), -1);
         EXPECT_EQ(ztCAD_getReadOk(reference()), -1);
       }},
      {"ztCAD_setReadOk",
       [] {
         ztCAD_setReadOk(nullptr, true);
         ztCAD_Base* const placed = reference();
         ztCAD_setReadOk(placed, false);
         EXPECT_EQ(ztCAD_getReadOk(placed), -1);
         ztCAD_Base* const element = point();
         ztCAD_setReadOk(element, false);
         EXPECT_EQ(ztCAD_getReadOk(element), 0);
       }},
      {"ztCAD_isSound", [] { EXPECT_FALSE(ztCAD_isSound(nullptr)); }},
      {"ztCAD_getCenter",
       [] {
         double xyz[3] = {5, 5, 5};
         EXPECT_FALSE(ztCAD_getCenter(nullptr, xyz));
         EXPECT_FALSE(ztCAD_getCenter(solid(), xyz));
         EXPECT_EQ(xyz[0], 5);
         EXPECT_TRUE(ztCAD_getCenter(point(), nullptr));
       }},
      {"ztCAD_setCenter",
       [] {
         const double xyz[3] = {1, 2, 3};
         ztCAD_setCenter(nullptr, xyz);
         ztCAD_setCenter(solid(), xyz);
         ztCAD_Base* const element = sphere();
         ztCAD_setCenter(element, nullptr);
         EXPECT_FALSE(ztCAD_getCenter(element, nullptr));
       }},
      {"ztCAD_getRadius",
       [] {
         double radius = 5;
         EXPECT_FALSE(ztCAD_getRadius(nullptr, &radius));
         EXPECT_FALSE(ztCAD_getRadius(point(), &radius));
         EXPECT_EQ(radius, 5);
         EXPECT_TRUE(ztCAD_getRadius(sphere(), nullptr));
       }},
      {"ztCAD_setRadius",
       [] {
         const double radius = 5;
         ztCAD_setRadius(nullptr, &radius);
         ztCAD_setRadius(point(), &radius);
         ztCAD_Base* const element = sphere();
         ztCAD_setRadius(element, nullptr);
         EXPECT_FALSE(ztCAD_getRadius(element, nullptr));
       }},
      {"ztCAD_getVertices",
       [] {
         EXPECT_EQ(ztCAD_getVertices(nullptr), null<ztCAD_Vertices>);
         EXPECT_EQ(ztCAD_getVertices(point()), null<ztCAD_Vertices>);
       }},
      {"ztCAD_setVertices",
       [] {
         ztCAD_setVertices(nullptr, tetrahedronVertices());
         ztCAD_setVertices(point(), tetrahedronVertices());
         ztCAD_Base* const element = solid();
         ztCAD_setVertices(element, nullptr);
         EXPECT_EQ(ztCAD_getVertexCount(ztCAD_getVertices(element)), 4);
         ztCAD_setVertices(element, ztCAD_getVertices(element));
         EXPECT_EQ(ztCAD_getVertexCount(ztCAD_getVertices(element)), 4) << "assigned from its own list";
       }},
      {"ztCAD_getFaces",
       [] {
         EXPECT_EQ(ztCAD_getFaces(nullptr), null<ztCAD_Faces>);
         EXPECT_EQ(ztCAD_getFaces(sphere()), null<ztCAD_Faces>);
       }},
      {"ztCAD_setFaces",
       [] {
         ztCAD_setFaces(nullptr, tetrahedronFaces());
         ztCAD_setFaces(sphere(), tetrahedronFaces());
         ztCAD_Base* const element = solid();
         ztCAD_setFaces(element, nullptr);
         EXPECT_EQ(ztCAD_getFacetCount(ztCAD_getFaces(element)), 4);
       }},
      {"ztCAD_getMIP", [] { checkNumbersGetter(ztCAD_getMIP, make<ztCAD_ElementMIP>("M"), sphere()); }},
      {"ztCAD_getMIPIntegers",
       [] {
         std::int32_t first = 5;
         EXPECT_FALSE(ztCAD_getMIPIntegers(nullptr, &first, nullptr));
         EXPECT_FALSE(ztCAD_getMIPIntegers(point(), &first, nullptr));
         EXPECT_FALSE(ztCAD_getMIPIntegers(sphere(), &first, &first));
         EXPECT_EQ(first, 5);
         EXPECT_TRUE(ztCAD_getMIPIntegers(make<ztCAD_ElementMIP>("M"), nullptr, nullptr));
       }},
      {"ztCAD_setMIP",
       [] {
         ztCAD_setMIP(nullptr, crtMIP(tenValues));
         ztCAD_setMIP(point(), crtMIP(tenValues));
         ztCAD_Base* const element = sphere();
         ztCAD_setMIP(element, nullptr);
         ztCAD_setMIP(element, crtMIP({1, 2, 3}));
         EXPECT_EQ(ztCAD_getMIP(element, nullptr, 0), -1);
         ztCAD_Base* const mass = make<ztCAD_ElementMIP>("M");
         ztCAD_setMIP(mass, crtMIP({1, 2, 3}));
         EXPECT_EQ(ztCAD_getMIP(mass, nullptr, 0), 10);
         ztCAD_setMIP(mass, nullptr);
         EXPECT_EQ(ztCAD_getMIP(mass, nullptr, 0), -1);
       }},
      {"ztCAD_getPlacement", [] { checkNumbersGetter(ztCAD_getPlacement, reference(), structure()); }},
      {"ztCAD_setPlacement",
       [] {
         ztCAD_setPlacement(nullptr, crtLCS(twelveValues));
         ztCAD_setPlacement(point(), crtLCS(twelveValues));
         ztCAD_Base* const element = reference();
         ztCAD_setPlacement(element, nullptr);
         EXPECT_EQ(ztCAD_getPlacement(element, nullptr, 0), 12);
       }},
      {"setMIP_nostl",
       [] {
         ztCAD_Sphere* const element = make<ztCAD_Sphere>("S");
         setMIP_nostl(nullptr, element);
         setMIP_nostl(crtMIP(tenValues), nullptr);
         EXPECT_FALSE(element->hasMIP());
       }},
      {"setCommonPropertyPoint_nostl",
       [] {
         setCommonPropertyPoint_nostl(nullptr, nullptr, nullptr, 1, nullptr, nullptr);
         ztCAD_Point* const element = make<ztCAD_Point>("A");
         setCommonPropertyPoint_nostl(nullptr, "\xFF", nullptr, INT32_MIN, nullptr, element);
         EXPECT_EQ(element->property().attributes().comment(), QString(""));
         EXPECT_FALSE(element->property().showable().visible().isSet());
       }},
      {"setCommonPropertyLine_nostl",
       [] {
         setCommonPropertyLine_nostl(nullptr, nullptr, nullptr, 1, nullptr, nullptr);
         ztCAD_Line* const element = make<ztCAD_Line>("A");
         setCommonPropertyLine_nostl(nullptr, "\xFF", nullptr, INT32_MIN, nullptr, element);
         EXPECT_EQ(element->property().attributes().comment(), QString(""));
         EXPECT_FALSE(element->property().showable().visible().isSet());
       }},
      {"setCommonPropertySphere_nostl",
       [] {
         setCommonPropertySphere_nostl(nullptr, nullptr, nullptr, 1, nullptr, nullptr);
         ztCAD_Sphere* const element = make<ztCAD_Sphere>("A");
         setCommonPropertySphere_nostl(nullptr, "\xFF", nullptr, INT32_MIN, nullptr, element);
         EXPECT_EQ(element->property().attributes().comment(), QString(""));
         EXPECT_FALSE(element->property().showable().visible().isSet());
       }},
      {"setCommonPropertyTriangle_nostl",
       [] {
         setCommonPropertyTriangle_nostl(nullptr, nullptr, nullptr, 1, nullptr, nullptr);
         ztCAD_Triangle* const element = make<ztCAD_Triangle>("A");
         setCommonPropertyTriangle_nostl(nullptr, "\xFF", nullptr, INT32_MIN, nullptr, element);
         EXPECT_EQ(element->property().attributes().comment(), QString(""));
         EXPECT_FALSE(element->property().showable().visible().isSet());
       }},
      {"setCommonPropertyStructure_nostl",
       [] {
         setCommonPropertyStructure_nostl(nullptr, nullptr, nullptr, 1, nullptr, nullptr);
         ztCAD_Structure* const element = make<ztCAD_Structure>("A");
         setCommonPropertyStructure_nostl(nullptr, "\xFF", nullptr, INT32_MIN, nullptr, element);
         EXPECT_EQ(element->property().attributes().comment(), QString(""));
         EXPECT_FALSE(element->property().showable().visible().isSet());
       }},
      {"setCommonPropertyTmplStructure_nostl",
       [] {
         setCommonPropertyTmplStructure_nostl(nullptr, nullptr, nullptr, 1, nullptr, nullptr);
         ztCAD_TmplStructure* const element = make<ztCAD_TmplStructure>("A");
         setCommonPropertyTmplStructure_nostl(nullptr, "\xFF", nullptr, INT32_MIN, nullptr, element);
         EXPECT_EQ(element->property().attributes().comment(), QString(""));
         EXPECT_FALSE(element->property().showable().visible().isSet());
       }},
      {"setCommonPropertyElementMIP_nostl",
       [] {
         setCommonPropertyElementMIP_nostl(nullptr, nullptr, nullptr, nullptr);
         ztCAD_ElementMIP* const element = make<ztCAD_ElementMIP>("A");
         setCommonPropertyElementMIP_nostl(nullptr, "\xFF", nullptr, element);
         EXPECT_EQ(element->property().attributes().comment(), QString(""));
       }},
  };
}

}  // namespace boundary
