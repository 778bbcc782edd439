#include "trial.h"

namespace exhaustion {

namespace {

constexpr double numbers[] = {7, 8, 9, 1, 0, 0, 0, 1, 0, 0, 0, 1};
constexpr std::uint32_t indices[] = {7, 8, 9};

ztCAD_Base* point() { return pointNamed(longText()); }
ztCAD_Base* sphere() { return make<ztCAD_Sphere>("S"); }
ztCAD_Base* solid() { return make<ztCAD_Triangle>("T"); }
ztCAD_Base* reference() { return make<ztCAD_PointRef>("R"); }

template <typename Holder>
Trial appendsMany(bool (*append)(Holder*, std::int32_t, std::int32_t, ztCAD_Base**), Holder* holder,
                  std::int32_t kind) {
  return {[=] { return append(holder, kind, 3, nullptr) ? Report::Success : Report::Failure; },
          [=] { return print(holder); }};
}

template <typename Number, typename Flag>
Trial reads(std::int32_t (*get)(const ztCAD_Base* const*, std::int32_t, Number*, Flag*),
            const ztCAD_Base* element) {
  return answers([=] {
    Number values[12] = {};
    return get(&element, 1, values, nullptr);
  });
}

/// A function that returns how many elements it set.
template <typename Set>
Trial sets(ztCAD_Base* element, Set set) {
  return {[=] { return set(&element) == 1 ? Report::Success : Report::Failure; },
          [=] { return print(element); }};
}

/// A function that returns whether it filled a list.
template <typename Number>
Trial fills(bool (*fill)(ztCAD_Base*, const Number*, std::int32_t), const Number* triple) {
  ztCAD_Base* const element = solid();
  return {[=] { return fill(element, triple, 1) ? Report::Success : Report::Failure; },
          [=] { return print(element); }};
}

const Row rows[] = {
    {"ztCAD_appendManyToDoc", "",
     [] { return appendsMany(ztCAD_appendManyToDoc, crtGMDDocument(longText()), ztCAD_ElementPoint); }},
    {"ztCAD_appendManyToStructure", "of points",
     [] {
       ztCAD_commonStructure* const holder = make<ztCAD_Structure>("S");
       return appendsMany(ztCAD_appendManyToStructure, holder, ztCAD_ElementPoint);
     }},
    {"ztCAD_appendManyToStructure", "of structures",
     [] {
       ztCAD_commonStructure* const holder = make<ztCAD_Structure>("S");
       return appendsMany(ztCAD_appendManyToStructure, holder, ztCAD_ElementStructure);
     }},
    {"ztCAD_appendManyToDetail", "",
     [] {
       return appendsMany<ztCAD_cmnDetail>(ztCAD_appendManyToDetail, new ztCAD_Detail, ztCAD_ElementPoint);
     }},
    {"ztCAD_getCenters", "", [] { return reads(ztCAD_getCenters, point()); }},
    {"ztCAD_setCenters", "",
     [] {
       return sets(point(), [](auto* element) { return ztCAD_setCenters(element, 1, numbers, nullptr); });
     }},
    {"ztCAD_getRadii", "", [] { return reads(ztCAD_getRadii, sphere()); }},
    {"ztCAD_setRadii", "",
     [] {
       return sets(sphere(), [](auto* element) { return ztCAD_setRadii(element, 1, numbers, nullptr); });
     }},
    {"ztCAD_getColors", "", [] { return reads(ztCAD_getColors, point()); }},
    {"ztCAD_setColors", "",
     [] {
       return sets(point(), [](auto* element) { return ztCAD_setColors(element, 1, indices, nullptr); });
     }},
    {"ztCAD_getVisibilities", "",
     [] {
       return answers([=, element = static_cast<const ztCAD_Base*>(point())] {
         std::int8_t visible = 0;
         return ztCAD_getVisibilities(&element, 1, &visible);
       });
     }},
    {"ztCAD_setVisibilities", "",
     [] {
       return sets(point(), [](auto* element) {
         const std::int8_t visible = 1;
         return ztCAD_setVisibilities(element, 1, &visible);
       });
     }},
    {"ztCAD_getSystems", "", [] { return reads(ztCAD_getSystems, make<ztCAD_Structure>("S")); }},
    {"ztCAD_setSystems", "",
     [] {
       return sets(point(), [](auto* element) { return ztCAD_setSystems(element, 1, numbers, nullptr); });
     }},
    {"ztCAD_getPlacements", "", [] { return reads(ztCAD_getPlacements, reference()); }},
    {"ztCAD_setPlacements", "",
     [] {
       return sets(reference(),
                   [](auto* element) { return ztCAD_setPlacements(element, 1, numbers, nullptr); });
     }},
    {"ztCAD_getMIPs", "", [] { return reads(ztCAD_getMIPs, make<ztCAD_ElementMIP>("M")); }},
    {"ztCAD_setMIPs", "",
     [] { return sets(solid(), [](auto* element) { return ztCAD_setMIPs(element, 1, numbers, nullptr); }); }},
    {"ztCAD_getTexts", "",
     [] {
       return writes([element = static_cast<const ztCAD_Base*>(point())](char* buffer, std::int64_t size) {
         return ztCAD_getTexts(&element, 1, ztCAD_TextName, buffer, size, nullptr);
       });
     }},
    {"ztCAD_setTexts", "",
     [] {
       return sets(point(), [](auto* element) {
         const auto end = static_cast<std::int64_t>(longText().size());
         return ztCAD_setTexts(element, 1, ztCAD_TextComment, longText().c_str(), &end);
       });
     }},
    {"ztCAD_setVertexXYZ", "", [] { return fills(ztCAD_setVertexXYZ, numbers); }},
    {"ztCAD_addVertexXYZ", "", [] { return fills(ztCAD_addVertexXYZ, numbers); }},
    {"ztCAD_setFacetIJK", "", [] { return fills(ztCAD_setFacetIJK, indices); }},
    {"ztCAD_addFacetIJK", "", [] { return fills(ztCAD_addFacetIJK, indices); }},
};

}  // namespace

std::vector<Row> elementArrayRows() { return {std::begin(rows), std::end(rows)}; }

}  // namespace exhaustion
