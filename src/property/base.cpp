#include "base.h"

#include "../core/name_registry.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "base_parts.h"

ztCAD_Base::~ztCAD_Base() = default;

ztCAD_Base::ztCAD_Base(const QString& name, bool& nameIsFree) {
  nameIsFree = ztcad::nameIsFree(name);
  setName(name);
}

ztCAD_baseElement::~ztCAD_baseElement() = default;

void ztcad::writeBaseParts(const ztCAD_Base& base, const ztCAD_baseElement& element, ElementSink& sink) {
  base.property().write(sink);
  element.method().write(sink);
}

bool ztcad::readBaseParts(ztCAD_Base& base, ztCAD_baseElement& element, const ElementView& view,
                          bool& fault) {
  bool methodFault = false;
  element.method().read(view, methodFault);
  return base.property().read(view, fault);
}
