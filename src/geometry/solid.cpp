#include "solid.h"

#include "../xml/element_sink.h"
#include "../xml/element_view.h"

void ztCAD_cmnSolid::setMip(const ztCAD_MIP& mip) {
  if (!mip.isComplete()) return;
  m_mip = mip;
  m_hasMip = true;
}

void ztCAD_cmnSolid::writeMip(ztcad::ElementSink& element) const {
  if (m_hasMip) m_mip.write(element);
}

void ztCAD_cmnSolid::readMip(const ztcad::ElementView& element) {
  ztCAD_MIP fresh;
  bool fault = false;
  if (fresh.read(element, fault)) setMip(fresh);
}

void ztCAD_cmnSolid::appendMipText(QString& out, bool debugForm) const {
  if (m_hasMip) m_mip.toText(out, debugForm);
}
