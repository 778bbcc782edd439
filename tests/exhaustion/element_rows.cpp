#include "trial.h"

namespace exhaustion {

namespace {

const ztCAD_LCS* lcs() { return crtLCS(twelveValues); }
const ztCAD_MIP* mip() { return crtMIP(tenValues); }
const ztCAD_Coord* center() { return coord(1, 2, 3); }

/// An element as the type that a function takes.
template <typename Base, typename Element>
const Base* sample() {
  return make<Element>("source");
}

const ztCAD_TmplDetail* templateDetail() {
  auto* const made = new ztCAD_TmplDetail;
  made->setName(QString::fromStdString(longText()));
  return made;
}

template <typename Record>
Record record() {
  Record made;
  made.comment = longText();
  made.inform = longText();
  made.lcs = *crtLCS(twelveValues);
  return made;
}

/// An overload of setCommonProperty.
template <typename Record, typename Element>
Trial setsProperties() {
  const auto* const given = new Record(record<Record>());
  return changes(make<Element>("A"), [=](Element* element) { setCommonProperty(*given, element); });
}

/// A counterpart of setCommonProperty for C.
template <typename Element>
Trial setsProperties(void (*set)(const char*, const char*, const ztCAD_Color*, std::int32_t, const ztCAD_LCS*,
                                 Element*)) {
  const std::uint32_t red = 255;
  const ztCAD_Color* const color = crtColor(&red, &red, &red);
  const char* const text = longText().c_str();
  const ztCAD_LCS* const system = lcs();
  return changes(make<Element>("A"), [=](Element* element) { set(text, text, color, 1, system, element); });
}

const Row rows[] = {
    {"crtPoint", "", [] { return creates(crtPoint, center()); }},
    {"crtPoint_nostl", "", [] { return creates(crtPoint_nostl, center()); }},
    {"crtPolyline", "", [] { return creates(crtPolyline, tetrahedronVertices()); }},
    {"crtSphere", "", [] { return creates(crtSphere, center(), 4.0); }},
    {"crtSphere_nostl", "", [] { return creates(crtSphere_nostl, center(), 4.0); }},
    {"crtTriangle", "", [] { return creates(crtTriangle, tetrahedronVertices(), tetrahedronFaces()); }},
    {"crtTriangle_nostl", "",
     [] { return creates(crtTriangle_nostl, tetrahedronVertices(), tetrahedronFaces()); }},
    {"crtMipElement", "", [] { return creates(crtMipElement, mip()); }},
    {"crtMipElement_nostl", "", [] { return creates(crtMipElement_nostl, mip()); }},
    {"crtStructure", "", [] { return creates(crtStructure, lcs()); }},
    {"crtStructure_nostl", "", [] { return creates(crtStructure_nostl, lcs()); }},
    // templates
    {"crtTmplPoint", "", [] { return creates(crtTmplPoint, sample<ztCAD_commonPoint, ztCAD_Point>()); }},
    {"crtTmplPoint_nostl", "",
     [] { return creates(crtTmplPoint_nostl, sample<ztCAD_commonPoint, ztCAD_Point>()); }},
    {"crtTmplLine", "", [] { return creates(crtTmplLine, sample<ztCAD_commonLine, ztCAD_Line>()); }},
    {"crtTmplLine_nostl", "",
     [] { return creates(crtTmplLine_nostl, sample<ztCAD_commonLine, ztCAD_Line>()); }},
    {"crtTmplTriangle", "",
     [] { return creates(crtTmplTriangle, sample<ztCAD_commonTriangle, ztCAD_Triangle>()); }},
    {"crtTmplTriangle_nostl", "",
     [] { return creates(crtTmplTriangle_nostl, sample<ztCAD_commonTriangle, ztCAD_Triangle>()); }},
    {"crtTmplMipElement", "", [] { return creates(crtTmplMipElement, mip()); }},
    {"crtTmplMipElement_nostl", "", [] { return creates(crtTmplMipElement_nostl, mip()); }},
    {"crtTmplStructure", "",
     [] { return creates(crtTmplStructure, sample<ztCAD_commonStructure, ztCAD_Structure>()); }},
    {"crtTmplStructure_nostl", "",
     [] { return creates(crtTmplStructure_nostl, sample<ztCAD_commonStructure, ztCAD_Structure>()); }},
    // references
    {"crtPointRef", "", [] { return creates(crtPointRef, lcs(), make<ztCAD_TmplPoint>(longText())); }},
    {"crtPointRef_nostl", "",
     [] { return creates(crtPointRef_nostl, lcs(), make<ztCAD_TmplPoint>(longText())); }},
    {"crtLineRef", "", [] { return creates(crtLineRef, lcs(), make<ztCAD_TmplLine>(longText())); }},
    {"crtLineRef_nostl", "",
     [] { return creates(crtLineRef_nostl, lcs(), make<ztCAD_TmplLine>(longText())); }},
    {"crtTriangleRef", "",
     [] { return creates(crtTriangleRef, lcs(), make<ztCAD_TmplTriangle>(longText())); }},
    {"crtTriangleRef_nostl", "",
     [] { return creates(crtTriangleRef_nostl, lcs(), make<ztCAD_TmplTriangle>(longText())); }},
    {"crtElementMipRef", "",
     [] { return creates(crtElementMipRef, lcs(), make<ztCAD_TmplElementMIP>(longText())); }},
    {"crtElementMipRef_nostl", "",
     [] { return creates(crtElementMipRef_nostl, lcs(), make<ztCAD_TmplElementMIP>(longText())); }},
    {"crtStructureRef", "",
     [] { return creates(crtStructureRef, lcs(), make<ztCAD_TmplStructure>(longText())); }},
    {"crtStructureRef_nostl", "",
     [] { return creates(crtStructureRef_nostl, lcs(), make<ztCAD_TmplStructure>(longText())); }},
    {"crtDetailRef", "", [] { return creates(crtDetailRef, lcs(), templateDetail()); }},
    {"crtDetailRef_nostl", "", [] { return creates(crtDetailRef_nostl, lcs(), templateDetail()); }},
    // properties
    {"getPointCoord", "",
     [] {
       const ztCAD_Point* const point = pointNamed("A");
       return answers([=] {
         double x = 0;
         double y = 0;
         double z = 0;
         getPointCoord(point, x, y, z);
         return x + y + z;
       });
     }},
    {"setCommonProperty(CommonProperty const&, ztCAD_Point*)", "",
     setsProperties<CommonProperty, ztCAD_Point>},
    {"setCommonProperty(CommonProperty const&, ztCAD_Line*)", "", setsProperties<CommonProperty, ztCAD_Line>},
    {"setCommonProperty(CommonProperty const&, ztCAD_Sphere*)", "",
     setsProperties<CommonProperty, ztCAD_Sphere>},
    {"setCommonProperty(CommonProperty const&, ztCAD_Structure*)", "",
     setsProperties<CommonProperty, ztCAD_Structure>},
    {"setCommonProperty(CommonProperty const&, ztCAD_TmplStructure*)", "",
     setsProperties<CommonProperty, ztCAD_TmplStructure>},
    {"setCommonProperty(CommonProperty const&, ztCAD_Triangle*)", "",
     setsProperties<CommonProperty, ztCAD_Triangle>},
    {"setCommonProperty(CommonPropertyForMIP const&, ztCAD_ElementMIP*)", "",
     setsProperties<CommonPropertyForMIP, ztCAD_ElementMIP>},
    {"setCommonPropertyPoint_nostl", "", [] { return setsProperties(setCommonPropertyPoint_nostl); }},
    {"setCommonPropertyLine_nostl", "", [] { return setsProperties(setCommonPropertyLine_nostl); }},
    {"setCommonPropertySphere_nostl", "", [] { return setsProperties(setCommonPropertySphere_nostl); }},
    {"setCommonPropertyTriangle_nostl", "", [] { return setsProperties(setCommonPropertyTriangle_nostl); }},
    {"setCommonPropertyStructure_nostl", "", [] { return setsProperties(setCommonPropertyStructure_nostl); }},
    {"setCommonPropertyTmplStructure_nostl", "",
     [] { return setsProperties(setCommonPropertyTmplStructure_nostl); }},
    {"setCommonPropertyElementMIP_nostl", "",
     [] {
       const char* const text = longText().c_str();
       const ztCAD_LCS* const system = lcs();
       return changes(make<ztCAD_ElementMIP>("A"), [=](ztCAD_ElementMIP* element) {
         setCommonPropertyElementMIP_nostl(text, text, system, element);
       });
     }},
    {"setMIP(ztCAD_MIP const*, ztCAD_Sphere*)", "",
     [] {
       return changes(make<ztCAD_Sphere>("A"),
                      [given = mip()](ztCAD_Sphere* sphere) { setMIP(given, sphere); });
     }},
    {"setMIP_nostl", "",
     [] {
       return changes(make<ztCAD_Sphere>("A"),
                      [given = mip()](ztCAD_Sphere* sphere) { setMIP_nostl(given, sphere); });
     }},
};

}  // namespace

std::vector<Row> elementRows() { return {std::begin(rows), std::end(rows)}; }

}  // namespace exhaustion
