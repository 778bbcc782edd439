#include "elements.h"

#include <QtGlobal>

#include "../property/apply_record.h"
#include "../text/narrow_text.h"
#include "created_objects.h"
#include "guard.h"

using ztcad::guarded;

namespace {

/// Creates a named element from its parts; null if one of them is null.
template <typename Element, typename... Parts>
Element* createNamed(const std::string& name, bool& nameIsFree, const Parts*... parts) {
  if (!(parts && ...)) return nullptr;
  return ztcad::createElement<Element>(ztcad::fromNarrow(name), *parts..., nameIsFree);
}

/// The same for an exported function: the name may be null, and no exception passes.
template <typename Element, typename Name, typename... Parts>
Element* create(const Name& name, bool& nameIsFree, const Parts*... parts) noexcept {
  nameIsFree = true;
  return guarded<Element*>(nullptr,
                           [&] { return createNamed<Element>(ztcad::textOf(name), nameIsFree, parts...); });
}

template <typename Element, typename Name>
Element* createFromRecord(const Name& name, const ztCAD_MIP* record) noexcept {
  return guarded<Element*>(nullptr, [&] {
    return record ? ztcad::createElement<Element>(ztcad::textOf(name), *record) : nullptr;
  });
}

template <typename Record, typename Element>
void setProperties(const Record& record, Element* element) noexcept {
  guarded([&] {
    if (element) ztcad::apply(record, *element);
  });
}

/// Ends the program, even if there is no memory to print the point's name.
void stopForMissingCoordinates(const ztCAD_Point& point) noexcept {
  guarded(
      [&] { qFatal("getPointCoord: the point \"%s\" has no coordinates", qUtf8Printable(point.name())); });
  qFatal("getPointCoord: a point has no coordinates");
}

}  // namespace

ztCAD_Point* crtPoint(const std::string& name, const ztCAD_Coord* center, bool& nameIsFree) {
  return create<ztCAD_Point>(name, nameIsFree, center);
}

ztCAD_Point* crtPoint_nostl(const char* name, const ztCAD_Coord* center, bool& nameIsFree) {
  return create<ztCAD_Point>(name, nameIsFree, center);
}

ztCAD_Line* crtPolyline(const char* name, const ztCAD_Vertices* vertices, bool& nameIsFree) {
  return create<ztCAD_Line>(name, nameIsFree, vertices);
}

ztCAD_Sphere* crtSphere(const std::string& name, const ztCAD_Coord* center, double radius, bool& nameIsFree) {
  return create<ztCAD_Sphere>(name, nameIsFree, center, &radius);
}

ztCAD_Sphere* crtSphere_nostl(const char* name, const ztCAD_Coord* center, double radius, bool& nameIsFree) {
  return create<ztCAD_Sphere>(name, nameIsFree, center, &radius);
}

ztCAD_Triangle* crtTriangle(const std::string& name, const ztCAD_Vertices* vertices, const ztCAD_Faces* faces,
                            bool& nameIsFree) {
  return create<ztCAD_Triangle>(name, nameIsFree, vertices, faces);
}

ztCAD_Triangle* crtTriangle_nostl(const char* name, const ztCAD_Vertices* vertices, const ztCAD_Faces* faces,
                                  bool& nameIsFree) {
  return create<ztCAD_Triangle>(name, nameIsFree, vertices, faces);
}

ztCAD_ElementMIP* crtMipElement(const std::string& name, const ztCAD_MIP* record) {
  return createFromRecord<ztCAD_ElementMIP>(name, record);
}

ztCAD_ElementMIP* crtMipElement_nostl(const char* name, const ztCAD_MIP* record) {
  return createFromRecord<ztCAD_ElementMIP>(name, record);
}

ztCAD_Structure* crtStructure(const std::string& name, const ztCAD_LCS* lcs, bool& nameIsFree) {
  return create<ztCAD_Structure>(name, nameIsFree, lcs);
}

ztCAD_Structure* crtStructure_nostl(const char* name, const ztCAD_LCS* lcs, bool& nameIsFree) {
  return create<ztCAD_Structure>(name, nameIsFree, lcs);
}

ztCAD_TmplPoint* crtTmplPoint(const std::string& name, const ztCAD_commonPoint* source, bool& nameIsFree) {
  return create<ztCAD_TmplPoint>(name, nameIsFree, source);
}

ztCAD_TmplPoint* crtTmplPoint_nostl(const char* name, const ztCAD_commonPoint* source, bool& nameIsFree) {
  return create<ztCAD_TmplPoint>(name, nameIsFree, source);
}

ztCAD_TmplLine* crtTmplLine(const std::string& name, const ztCAD_commonLine* source, bool& nameIsFree) {
  return create<ztCAD_TmplLine>(name, nameIsFree, source);
}

ztCAD_TmplLine* crtTmplLine_nostl(const char* name, const ztCAD_commonLine* source, bool& nameIsFree) {
  return create<ztCAD_TmplLine>(name, nameIsFree, source);
}

ztCAD_TmplTriangle* crtTmplTriangle(const std::string& name, const ztCAD_commonTriangle* source,
                                    bool& nameIsFree) {
  return create<ztCAD_TmplTriangle>(name, nameIsFree, source);
}

ztCAD_TmplTriangle* crtTmplTriangle_nostl(const char* name, const ztCAD_commonTriangle* source,
                                          bool& nameIsFree) {
  return create<ztCAD_TmplTriangle>(name, nameIsFree, source);
}

ztCAD_TmplElementMIP* crtTmplMipElement(const std::string& name, const ztCAD_MIP* record) {
  return createFromRecord<ztCAD_TmplElementMIP>(name, record);
}

ztCAD_TmplElementMIP* crtTmplMipElement_nostl(const char* name, const ztCAD_MIP* record) {
  return createFromRecord<ztCAD_TmplElementMIP>(name, record);
}

ztCAD_TmplStructure* crtTmplStructure(const std::string& name, const ztCAD_commonStructure* source,
                                      bool& nameIsFree) {
  return create<ztCAD_TmplStructure>(name, nameIsFree, source);
}

ztCAD_TmplStructure* crtTmplStructure_nostl(const char* name, const ztCAD_commonStructure* source,
                                            bool& nameIsFree) {
  return create<ztCAD_TmplStructure>(name, nameIsFree, source);
}

ztCAD_PointRef* crtPointRef(const std::string& name, const ztCAD_LCS* lcs, const ztCAD_TmplPoint* source,
                            bool& nameIsFree) {
  return create<ztCAD_PointRef>(name, nameIsFree, lcs, source);
}

ztCAD_PointRef* crtPointRef_nostl(const char* name, const ztCAD_LCS* lcs, const ztCAD_TmplPoint* source,
                                  bool& nameIsFree) {
  return create<ztCAD_PointRef>(name, nameIsFree, lcs, source);
}

ztCAD_LineRef* crtLineRef(const std::string& name, const ztCAD_LCS* lcs, const ztCAD_TmplLine* source,
                          bool& nameIsFree) {
  return create<ztCAD_LineRef>(name, nameIsFree, lcs, source);
}

ztCAD_LineRef* crtLineRef_nostl(const char* name, const ztCAD_LCS* lcs, const ztCAD_TmplLine* source,
                                bool& nameIsFree) {
  return create<ztCAD_LineRef>(name, nameIsFree, lcs, source);
}

ztCAD_TriangleRef* crtTriangleRef(const std::string& name, const ztCAD_LCS* lcs,
                                  const ztCAD_TmplTriangle* source, bool& nameIsFree) {
  return create<ztCAD_TriangleRef>(name, nameIsFree, lcs, source);
}

ztCAD_TriangleRef* crtTriangleRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                        const ztCAD_TmplTriangle* source, bool& nameIsFree) {
  return create<ztCAD_TriangleRef>(name, nameIsFree, lcs, source);
}

ztCAD_ElementMipRef* crtElementMipRef(const std::string& name, const ztCAD_LCS* lcs,
                                      const ztCAD_TmplElementMIP* source, bool& nameIsFree) {
  return create<ztCAD_ElementMipRef>(name, nameIsFree, lcs, source);
}

ztCAD_ElementMipRef* crtElementMipRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                            const ztCAD_TmplElementMIP* source, bool& nameIsFree) {
  return create<ztCAD_ElementMipRef>(name, nameIsFree, lcs, source);
}

ztCAD_StructureRef* crtStructureRef(const std::string& name, const ztCAD_LCS* lcs,
                                    const ztCAD_TmplStructure* source, bool& nameIsFree) {
  return create<ztCAD_StructureRef>(name, nameIsFree, lcs, source);
}

ztCAD_StructureRef* crtStructureRef_nostl(const char* name, const ztCAD_LCS* lcs,
                                          const ztCAD_TmplStructure* source, bool& nameIsFree) {
  return create<ztCAD_StructureRef>(name, nameIsFree, lcs, source);
}

ztCAD_DetailRef* crtDetailRef(const std::string& name, const ztCAD_LCS* lcs, const ztCAD_TmplDetail* source,
                              bool& nameIsFree) {
  return create<ztCAD_DetailRef>(name, nameIsFree, lcs, source);
}

ztCAD_DetailRef* crtDetailRef_nostl(const char* name, const ztCAD_LCS* lcs, const ztCAD_TmplDetail* source,
                                    bool& nameIsFree) {
  return create<ztCAD_DetailRef>(name, nameIsFree, lcs, source);
}

void getPointCoord(const ztCAD_Point* point, double& x, double& y, double& z) {
  if (!point) return;
  const ztCAD_Coord& center = point->center();
  if (!center.isValid()) stopForMissingCoordinates(*point);
  x = center.x();
  y = center.y();
  z = center.z();
}

void setCommonProperty(const CommonProperty& record, ztCAD_Point* element) { setProperties(record, element); }
void setCommonProperty(const CommonProperty& record, ztCAD_Line* element) { setProperties(record, element); }
void setCommonProperty(const CommonProperty& record, ztCAD_Sphere* element) {
  setProperties(record, element);
}
void setCommonProperty(const CommonProperty& record, ztCAD_Structure* element) {
  setProperties(record, element);
}
void setCommonProperty(const CommonProperty& record, ztCAD_TmplStructure* element) {
  setProperties(record, element);
}
void setCommonProperty(const CommonProperty& record, ztCAD_Triangle* element) {
  setProperties(record, element);
}
void setCommonProperty(const CommonPropertyForMIP& record, ztCAD_ElementMIP* element) {
  setProperties(record, element);
}

void setMIP(const ztCAD_MIP* record, ztCAD_Sphere* sphere) {
  guarded([&] {
    if (record && sphere) sphere->setMip(*record);
  });
}

void setMIP_nostl(const ztCAD_MIP* record, ztCAD_Sphere* sphere) { setMIP(record, sphere); }

namespace {

/// The fields that both records have, from the arguments of a C host.
template <typename Record>
Record describedBy(const char* comment, const char* inform, const ztCAD_LCS* lcs) {
  Record record;
  record.comment = ztcad::textOf(comment);
  record.inform = ztcad::textOf(inform);
  if (lcs) record.lcs = *lcs;
  return record;
}

template <typename Element>
void setCommon(const char* comment, const char* inform, const ztCAD_Color* color, std::int32_t visible,
               const ztCAD_LCS* lcs, Element* element) noexcept {
  guarded([&] {
    auto record = describedBy<CommonProperty>(comment, inform, lcs);
    if (color) record.color = *color;
    if (visible >= 0) record.visible = ztCAD_Visible(visible > 0);
    setProperties(record, element);
  });
}

}  // namespace

void setCommonPropertyPoint_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                  std::int32_t visible, const ztCAD_LCS* lcs, ztCAD_Point* element) {
  setCommon(comment, inform, color, visible, lcs, element);
}
void setCommonPropertyLine_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                 std::int32_t visible, const ztCAD_LCS* lcs, ztCAD_Line* element) {
  setCommon(comment, inform, color, visible, lcs, element);
}
void setCommonPropertySphere_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                   std::int32_t visible, const ztCAD_LCS* lcs, ztCAD_Sphere* element) {
  setCommon(comment, inform, color, visible, lcs, element);
}
void setCommonPropertyTriangle_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                     std::int32_t visible, const ztCAD_LCS* lcs, ztCAD_Triangle* element) {
  setCommon(comment, inform, color, visible, lcs, element);
}
void setCommonPropertyStructure_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                      std::int32_t visible, const ztCAD_LCS* lcs, ztCAD_Structure* element) {
  setCommon(comment, inform, color, visible, lcs, element);
}
void setCommonPropertyTmplStructure_nostl(const char* comment, const char* inform, const ztCAD_Color* color,
                                          std::int32_t visible, const ztCAD_LCS* lcs,
                                          ztCAD_TmplStructure* element) {
  setCommon(comment, inform, color, visible, lcs, element);
}

void setCommonPropertyElementMIP_nostl(const char* comment, const char* inform, const ztCAD_LCS* lcs,
                                       ztCAD_ElementMIP* element) {
  guarded([&] { setProperties(describedBy<CommonPropertyForMIP>(comment, inform, lcs), element); });
}
