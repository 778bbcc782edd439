#include "trial.h"

namespace exhaustion {

namespace {

using TextGetter = std::int64_t (*)(const ztCAD_Base*, char*, std::int64_t);
using TextSetter = void (*)(ztCAD_Base*, const char*);

constexpr double xyz[] = {7, 8, 9};
constexpr std::uint32_t rgb[] = {7, 8, 9};

ztCAD_Base* point() { return pointNamed(longText()); }
ztCAD_Base* sphere() { return make<ztCAD_Sphere>("S"); }
ztCAD_Base* solid() { return make<ztCAD_Triangle>("T"); }
ztCAD_Base* structure() { return make<ztCAD_Structure>("G"); }
ztCAD_Base* reference() { return make<ztCAD_PointRef>("R"); }
ztCAD_Base* mass() { return make<ztCAD_ElementMIP>("M"); }

Trial setsText(TextSetter set, ztCAD_Base* element) {
  return changes(element, [=](ztCAD_Base* changed) { set(changed, longText().c_str()); });
}

/// @param set gives the element the text; null: it has one
Trial getsText(TextGetter get, ztCAD_Base* element, TextSetter set) {
  if (set) set(element, longText().c_str());
  return writes([=](char* buffer, std::int64_t size) { return get(element, buffer, size); });
}

/// A function that copies numbers of an element and returns how many there are.
Trial getsNumbers(std::int32_t (*get)(const ztCAD_Base*, double*, std::int32_t), const ztCAD_Base* element) {
  return answers(
      [=] {
        double values[20] = {};
        return get(element, values, 20);
      },
      std::int32_t{-1});
}

const Row common[] = {
    {"ztCAD_getKind", "", [] { return answers([element = point()] { return ztCAD_getKind(element); }); }},
    {"ztCAD_getName", "", [] { return getsText(ztCAD_getName, point(), nullptr); }},
    {"ztCAD_setName", "", [] { return setsText(ztCAD_setName, point()); }},
    {"ztCAD_getComment", "", [] { return getsText(ztCAD_getComment, point(), ztCAD_setComment); }},
    {"ztCAD_setComment", "", [] { return setsText(ztCAD_setComment, point()); }},
    {"ztCAD_getInform", "", [] { return getsText(ztCAD_getInform, point(), ztCAD_setInform); }},
    {"ztCAD_setInform", "", [] { return setsText(ztCAD_setInform, point()); }},
    {"ztCAD_getColor", "",
     [] {
       ztCAD_Base* const element = point();
       ztCAD_setColor(element, rgb);
       return answers([=] {
         std::uint32_t color[3] = {};
         return ztCAD_getColor(element, color) ? color[2] : 0;
       });
     }},
    {"ztCAD_setColor", "",
     [] { return changes(point(), [](ztCAD_Base* element) { ztCAD_setColor(element, rgb); }); }},
    {"ztCAD_getVisible", "",
     [] {
       ztCAD_Base* const element = point();
       ztCAD_setVisible(element, 1);
       return answers([=] { return ztCAD_getVisible(element); });
     }},
    {"ztCAD_setVisible", "",
     [] { return changes(point(), [](ztCAD_Base* element) { ztCAD_setVisible(element, 1); }); }},
    {"ztCAD_getLCS", "", [] { return getsNumbers(ztCAD_getLCS, structure()); }},
    {"ztCAD_setLCS", "",
     [] {
       return changes(
           point(), [system = crtLCS(twelveValues)](ztCAD_Base* element) { ztCAD_setLCS(element, system); });
     }},
    {"ztCAD_getText", "in the storage form",
     [] {
       return writes([element = solid()](char* buffer, std::int64_t size) {
         return ztCAD_getText(element, false, buffer, size);
       });
     }},
    {"ztCAD_getText", "in the diagnostic form",
     [] {
       return writes([element = solid()](char* buffer, std::int64_t size) {
         return ztCAD_getText(element, true, buffer, size);
       });
     }},
    {"ztCAD_getReadOk", "", [] { return answers([element = point()] { return ztCAD_getReadOk(element); }); }},
    {"ztCAD_setReadOk", "",
     [] { return changes(point(), [](ztCAD_Base* element) { ztCAD_setReadOk(element, false); }); }},
    {"ztCAD_isSound", "of a solid",
     [] { return answers([element = solid()] { return ztCAD_isSound(element); }); }},
    {"ztCAD_isSound", "of a structure",
     [] {
       ztCAD_Structure* const holder = make<ztCAD_Structure>("S");
       addStructureToStructure(make<ztCAD_Structure>("N"), holder);
       return answers([=] { return ztCAD_isSound(holder); });
     }},
};

const Row ofSomeKinds[] = {
    {"ztCAD_getMethod", "", [] { return getsText(ztCAD_getMethod, point(), ztCAD_setMethod); }},
    {"ztCAD_setMethod", "", [] { return setsText(ztCAD_setMethod, point()); }},
    {"ztCAD_getCenter", "",
     [] {
       return answers([element = point()] {
         double center[3] = {};
         return ztCAD_getCenter(element, center);
       });
     }},
    {"ztCAD_setCenter", "",
     [] { return changes(sphere(), [](ztCAD_Base* element) { ztCAD_setCenter(element, xyz); }); }},
    {"ztCAD_getRadius", "",
     [] {
       return answers([element = sphere()] {
         double radius = 0;
         return ztCAD_getRadius(element, &radius) ? radius : 0;
       });
     }},
    {"ztCAD_setRadius", "",
     [] { return changes(sphere(), [](ztCAD_Base* element) { ztCAD_setRadius(element, xyz); }); }},
    {"ztCAD_getVertices", "",
     [] { return points([element = solid()] { return ztCAD_getVertices(element); }); }},
    {"ztCAD_setVertices", "",
     [] {
       ztCAD_Vertices* const longer = tetrahedronVertices();
       addVertexXYZ_nostl(xyz, 1, longer);
       return changes(solid(), [=](ztCAD_Base* element) { ztCAD_setVertices(element, longer); });
     }},
    {"ztCAD_getFaces", "", [] { return points([element = solid()] { return ztCAD_getFaces(element); }); }},
    {"ztCAD_setFaces", "",
     [] {
       ztCAD_Faces* const longer = tetrahedronFaces();
       addFacetIJK_nostl(rgb, 1, longer);
       return changes(solid(), [=](ztCAD_Base* element) { ztCAD_setFaces(element, longer); });
     }},
    {"ztCAD_getMIP", "", [] { return getsNumbers(ztCAD_getMIP, mass()); }},
    {"ztCAD_getMIPIntegers", "",
     [] {
       return answers([element = mass()] {
         std::int32_t first = 0;
         return ztCAD_getMIPIntegers(element, &first, nullptr);
       });
     }},
    {"ztCAD_setMIP", "",
     [] {
       return changes(solid(),
                      [record = crtMIP(tenValues)](ztCAD_Base* element) { ztCAD_setMIP(element, record); });
     }},
    {"ztCAD_getPlacement", "", [] { return getsNumbers(ztCAD_getPlacement, reference()); }},
    {"ztCAD_setPlacement", "",
     [] {
       return changes(reference(), [system = crtLCS(std::vector<double>(30, 1))](ztCAD_Base* element) {
         ztCAD_setPlacement(element, system);
       });
     }},
    {"ztCAD_getTemplateName", "",
     [] { return getsText(ztCAD_getTemplateName, reference(), ztCAD_setTemplateName); }},
    {"ztCAD_setTemplateName", "", [] { return setsText(ztCAD_setTemplateName, reference()); }},
    {"ztCAD_getTemplateFile", "",
     [] { return getsText(ztCAD_getTemplateFile, reference(), ztCAD_setTemplateFile); }},
    {"ztCAD_setTemplateFile", "", [] { return setsText(ztCAD_setTemplateFile, reference()); }},
};

}  // namespace

std::vector<Row> fieldRows() {
  std::vector<Row> rows(std::begin(common), std::end(common));
  rows.insert(rows.end(), std::begin(ofSomeKinds), std::end(ofSomeKinds));
  return rows;
}

}  // namespace exhaustion
