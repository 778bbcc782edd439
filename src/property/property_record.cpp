#include "property_record.h"

#include "../text/narrow_text.h"
#include "apply_record.h"
#include "base.h"

namespace {
template <typename Record>
void applyDescription(const Record& record, ztCAD_cmnProperty& property) {
  // whatever allocates comes first, so that the change is all or nothing
  const QString comment = ztcad::fromNarrow(record.comment);
  const QString inform = ztcad::fromNarrow(record.inform);
  if (record.lcs) property.setLcs(record.lcs);
  property.attributes().setComment(comment);
  property.attributes().setInform(inform);
}
}  // namespace

void ztcad::apply(const CommonProperty& record, ztCAD_Base& element) {
  applyDescription(record, element.property());
  element.property().showable().setColor(record.color);
  element.property().showable().setVisible(record.visible);
}

void ztcad::apply(const CommonPropertyForMIP& record, ztCAD_Base& element) {
  applyDescription(record, element.property());
}
