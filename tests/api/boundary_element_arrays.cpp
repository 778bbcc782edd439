#include <gtest/gtest.h>
#include <cmath>

#include "boundary.h"
#include "samples.h"

namespace boundary {

namespace {

ztCAD_Base* point() { return pointNamed("P"); }
ztCAD_Base* solid() { return make<ztCAD_Triangle>("T"); }

/// A getter without elements, without values, and of elements that lack the field.
template <typename Number, typename Flag>
void expectNoValues(std::int32_t (*get)(const ztCAD_Base* const*, std::int32_t, Number*, Flag*), int width,
                    const ztCAD_Base* lacking) {
  const ztCAD_Base* const elements[] = {nullptr, lacking};
  std::vector<Number> values(2 * static_cast<std::size_t>(width), Number{5});
  Flag flags[2] = {5, 5};
  EXPECT_EQ(get(nullptr, 2, values.data(), flags), 0);
  EXPECT_EQ(get(elements, 2, nullptr, flags), 0);
  for (const std::int32_t count : {INT32_MIN, -1, 0})
    EXPECT_EQ(get(elements, count, values.data(), flags), 0) << count;
  EXPECT_EQ(values[0], Number{5});
  EXPECT_EQ(int{flags[0]}, 5);
  EXPECT_EQ(get(elements, 2, values.data(), nullptr), 0);
  EXPECT_EQ(get(elements, 2, values.data(), flags), 0);
  for (const Number value : values)
    EXPECT_TRUE(std::isnan(static_cast<double>(value)) || value == Number{0});
  for (const Flag flag : flags)
    EXPECT_LE(int{flag}, 0);
}

/// A setter likewise.
template <typename Number, typename Flag>
void expectNoneSet(std::int32_t (*set)(ztCAD_Base* const*, std::int32_t, const Number*, const Flag*),
                   ztCAD_Base* lacking) {
  ztCAD_Base* const elements[] = {nullptr, lacking};
  const std::vector<Number> values(24);
  EXPECT_EQ(set(nullptr, 2, values.data(), nullptr), 0);
  EXPECT_EQ(set(elements, 2, nullptr, nullptr), 0);
  for (const std::int32_t count : {INT32_MIN, -1, 0})
    EXPECT_EQ(set(elements, count, values.data(), nullptr), 0) << count;
  EXPECT_EQ(set(elements, lacking ? 2 : 1, values.data(), nullptr), 0);
}

template <typename Holder>
void expectNoneAppended(bool (*append)(Holder*, std::int32_t, std::int32_t, ztCAD_Base**), Holder* holder,
                        std::int32_t (*count)(const Holder*, std::int32_t)) {
  ztCAD_Base* const before = point();
  ztCAD_Base* elements[2] = {before, before};
  EXPECT_FALSE(append(nullptr, ztCAD_ElementPoint, 2, elements));
  for (const std::int32_t number : {INT32_MIN, -1})
    EXPECT_FALSE(append(holder, ztCAD_ElementPoint, number, elements)) << number;
  for (const std::int32_t kind : {INT32_MIN, -1, 0, 7, 99, INT32_MAX})
    EXPECT_FALSE(append(holder, kind, 2, elements)) << kind;
  EXPECT_EQ(elements[0], before);
  EXPECT_EQ(count(holder, ztCAD_ElementPoint), 0);
  EXPECT_TRUE(append(holder, ztCAD_ElementPoint, 0, nullptr));
  EXPECT_TRUE(append(holder, ztCAD_ElementPoint, 2, nullptr));
  EXPECT_EQ(count(holder, ztCAD_ElementPoint), 2);
}

/// A function that fills a list from a flat array, and one that returns its length.
template <typename Number, typename Count>
void checkListFiller(bool (*fill)(ztCAD_Base*, const Number*, std::int32_t), Count count) {
  const Number triple[] = {1, 2, 3};
  ztCAD_Base* const element = solid();
  const std::int32_t before = count(element);
  EXPECT_FALSE(fill(nullptr, triple, 1));
  EXPECT_FALSE(fill(point(), triple, 1));
  EXPECT_FALSE(fill(element, nullptr, 1));
  EXPECT_FALSE(fill(element, triple, -1));
  EXPECT_FALSE(fill(element, triple, INT32_MIN));
  EXPECT_EQ(count(element), before);
  EXPECT_TRUE(fill(element, nullptr, 0));
}

std::int32_t vertexCount(const ztCAD_Base* element) {
  return ztCAD_getVertexCount(ztCAD_getVertices(element));
}
std::int32_t facetCount(const ztCAD_Base* element) { return ztCAD_getFacetCount(ztCAD_getFaces(element)); }

}  // namespace

std::vector<Row> elementArrayRows() {
  return {
      {"ztCAD_appendManyToDoc",
       [] {
         const Document document = newDocument();
         expectNoneAppended(ztCAD_appendManyToDoc, document.get(), ztCAD_countInDoc);
       }},
      {"ztCAD_appendManyToStructure",
       [] {
         ztCAD_commonStructure* const structure = make<ztCAD_Structure>("S");
         expectNoneAppended(ztCAD_appendManyToStructure, structure, ztCAD_countInStructure);
       }},
      {"ztCAD_appendManyToDetail",
       [] {
         ztCAD_Detail detail;
         expectNoneAppended<ztCAD_cmnDetail>(ztCAD_appendManyToDetail, &detail, ztCAD_countInDetail);
       }},
      {"ztCAD_getCenters", [] { expectNoValues(ztCAD_getCenters, 3, solid()); }},
      {"ztCAD_setCenters", [] { expectNoneSet(ztCAD_setCenters, solid()); }},
      {"ztCAD_getRadii", [] { expectNoValues(ztCAD_getRadii, 1, point()); }},
      {"ztCAD_setRadii", [] { expectNoneSet(ztCAD_setRadii, point()); }},
      {"ztCAD_getColors", [] { expectNoValues(ztCAD_getColors, 3, point()); }},
      {"ztCAD_setColors", [] { expectNoneSet<std::uint32_t, std::uint8_t>(ztCAD_setColors, nullptr); }},
      {"ztCAD_getVisibilities",
       [] {
         const ztCAD_Base* const elements[] = {nullptr, point()};
         std::int8_t visible[2] = {5, 5};
         EXPECT_EQ(ztCAD_getVisibilities(nullptr, 2, visible), 0);
         EXPECT_EQ(ztCAD_getVisibilities(elements, 2, nullptr), 0);
         EXPECT_EQ(ztCAD_getVisibilities(elements, -1, visible), 0);
         EXPECT_EQ(visible[0], 5);
         EXPECT_EQ(ztCAD_getVisibilities(elements, 2, visible), 0);
         EXPECT_EQ(visible[0], -1);
         EXPECT_EQ(visible[1], -1);
       }},
      {"ztCAD_setVisibilities",
       [] {
         ztCAD_Base* const elements[] = {nullptr, point()};
         const std::int8_t visible[2] = {1, INT8_MAX};
         EXPECT_EQ(ztCAD_setVisibilities(nullptr, 2, visible), 0);
         EXPECT_EQ(ztCAD_setVisibilities(elements, 2, nullptr), 0);
         EXPECT_EQ(ztCAD_setVisibilities(elements, -1, visible), 0);
         EXPECT_EQ(ztCAD_setVisibilities(elements, 2, visible), 1);
         EXPECT_EQ(ztCAD_getVisible(elements[1]), 1);
       }},
      {"ztCAD_getSystems", [] { expectNoValues(ztCAD_getSystems, 12, point()); }},
      {"ztCAD_setSystems", [] { expectNoneSet<double, std::int32_t>(ztCAD_setSystems, nullptr); }},
      {"ztCAD_getPlacements", [] { expectNoValues(ztCAD_getPlacements, 12, point()); }},
      {"ztCAD_setPlacements", [] { expectNoneSet(ztCAD_setPlacements, point()); }},
      {"ztCAD_getMIPs", [] { expectNoValues(ztCAD_getMIPs, 10, point()); }},
      {"ztCAD_setMIPs", [] { expectNoneSet(ztCAD_setMIPs, point()); }},
      {"ztCAD_getTexts",
       [] {
         const ztCAD_Base* const elements[] = {nullptr, point()};
         char text[4] = "abc";
         std::int64_t ends[2] = {5, 5};
         for (const std::int32_t field : {INT32_MIN, -1, ztCAD_TextTemplateFile + 1, INT32_MAX})
           EXPECT_EQ(ztCAD_getTexts(elements, 2, field, text, 4, ends), -1) << field;
         EXPECT_EQ(ztCAD_getTexts(nullptr, 2, ztCAD_TextName, text, 4, ends), 0);
         EXPECT_EQ(ztCAD_getTexts(elements, -1, ztCAD_TextName, text, 4, ends), 0);
         EXPECT_EQ(ends[0], 5);
         EXPECT_EQ(ztCAD_getTexts(elements, 2, ztCAD_TextTemplateName, text, 4, ends), 0);
         EXPECT_EQ(ztCAD_getTexts(elements, 2, ztCAD_TextName, text, INT64_MIN, ends), 1);
         EXPECT_EQ(ztCAD_getTexts(elements, 2, ztCAD_TextName, nullptr, 4, nullptr), 1);
         EXPECT_STREQ(text, "abc");
         EXPECT_EQ(ends[0], 0);
         EXPECT_EQ(ends[1], 1);
       }},
      {"ztCAD_setTexts",
       [] {
         ztCAD_Base* const elements[] = {nullptr, point()};
         const std::int64_t ends[2] = {1, 2};
         for (const std::int32_t field : {INT32_MIN, -1, ztCAD_TextTemplateFile + 1, INT32_MAX})
           EXPECT_EQ(ztCAD_setTexts(elements, 2, field, "ab", ends), 0) << field;
         EXPECT_EQ(ztCAD_setTexts(nullptr, 2, ztCAD_TextName, "ab", ends), 0);
         EXPECT_EQ(ztCAD_setTexts(elements, 2, ztCAD_TextName, "ab", nullptr), 0);
         EXPECT_EQ(ztCAD_setTexts(elements, -1, ztCAD_TextName, "ab", ends), 0);
         EXPECT_EQ(ztCAD_setTexts(elements, 2, ztCAD_TextTemplateName, "ab", ends), 0);
         EXPECT_EQ(ztCAD_getName(elements[1], nullptr, 0), 1);
         EXPECT_EQ(ztCAD_setTexts(elements, 2, ztCAD_TextName, nullptr, ends), 1);
         EXPECT_EQ(ztCAD_getName(elements[1], nullptr, 0), 0);
       }},
      {"ztCAD_setVertexXYZ", [] { checkListFiller(ztCAD_setVertexXYZ, vertexCount); }},
      {"ztCAD_addVertexXYZ", [] { checkListFiller(ztCAD_addVertexXYZ, vertexCount); }},
      {"ztCAD_setFacetIJK", [] { checkListFiller(ztCAD_setFacetIJK, facetCount); }},
      {"ztCAD_addFacetIJK", [] { checkListFiller(ztCAD_addFacetIJK, facetCount); }},
  };
}

}  // namespace boundary
