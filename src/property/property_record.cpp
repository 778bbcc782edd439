#include "property_record.h"

#include "../text/narrow_text.h"
#include "apply_record.h"
#include "base.h"
#include "display_values.h"

namespace {
template <typename Record>
void applyDescription(const Record& record, ztCAD_cmnProperty& property) {
  // whatever allocates comes first, so that the change is all or nothing
  const QString comment = ztcad::fromNarrow(record.comment);
  const QString inform = ztcad::fromNarrow(record.inform);
  if (record.lcs) property.setLcs(record.lcs);
  property.setComment(comment);
  property.setInform(inform);
}
}  // namespace

void ztcad::apply(const CommonProperty& record, ztCAD_Base& element) {
  ztCAD_cmnProperty& property = element.property();
  if (!ztcad::fitsBytes(record.color)) property.showable();  // allocates what the colour needs
  applyDescription(record, property);
  property.setColor(record.color);
  property.setVisible(record.visible);
}

void ztcad::apply(const CommonPropertyForMIP& record, ztCAD_Base& element) {
  applyDescription(record, element.property());
}
