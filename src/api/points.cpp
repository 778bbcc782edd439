#include "points.h"

#include <QtGlobal>

#include "../core/narrow_text.h"
#include "created_objects.h"
#include "guard.h"

using ztcad::guarded;

namespace {

template <typename Element, typename Source>
Element* createNamed(const std::string& name, const Source* source, bool& nameIsFree) {
  nameIsFree = true;
  if (!source) return nullptr;
  return ztcad::createElement<Element>(ztcad::fromNarrow(name), *source, nameIsFree);
}

}  // namespace

ztCAD_Point* crtPoint(const std::string& name, const ztCAD_Coord* center, bool& nameIsFree) {
  return guarded<ztCAD_Point*>(nullptr, [&] { return createNamed<ztCAD_Point>(name, center, nameIsFree); });
}

ztCAD_Point* crtPoint_nostl(const char* name, const ztCAD_Coord* center, bool& nameIsFree) {
  nameIsFree = true;  // also when there is no memory for the name
  return guarded<ztCAD_Point*>(
      nullptr, [&] { return createNamed<ztCAD_Point>(ztcad::textOf(name), center, nameIsFree); });
}

ztCAD_TmplPoint* crtTmplPoint(const std::string& name, const ztCAD_commonPoint* source, bool& nameIsFree) {
  return guarded<ztCAD_TmplPoint*>(nullptr,
                                   [&] { return createNamed<ztCAD_TmplPoint>(name, source, nameIsFree); });
}

bool addPointToDoc(const ztCAD_Point* point, ztCAD_GMDDocument* document) {
  return guarded(true, [&] { return !point || !document || document->content().points.add(*point); });
}

bool addTmplPointToDoc(const ztCAD_TmplPoint* point, ztCAD_GMDDocument* document) {
  return guarded(true, [&] { return !point || !document || document->content().templatePoints.add(*point); });
}

bool removePointFromDoc(const ztCAD_Point* point, ztCAD_GMDDocument* document) {
  return guarded(false, [&] { return point && document && document->content().points.remove(point); });
}

ztCAD_Cont<ztCAD_Point>* ztCAD_getPoints(ztCAD_GMDDocument* document) {
  return document ? &document->content().points : nullptr;
}

ztCAD_Cont<ztCAD_TmplPoint>* ztCAD_getTmplPoints(ztCAD_GMDDocument* document) {
  return document ? &document->content().templatePoints : nullptr;
}

void getPointCoord(const ztCAD_Point* point, double& x, double& y, double& z) {
  if (!point) return;
  const ztCAD_Coord& center = point->center();
  if (!center.isValid())
    qFatal("getPointCoord: the point \"%s\" has no coordinates", qUtf8Printable(point->name()));
  x = center.x();
  y = center.y();
  z = center.z();
}

void setCommonProperty(const CommonProperty& record, ztCAD_Point* point) {
  guarded([&] {
    if (point) ztcad::apply(record, *point);
  });
}
