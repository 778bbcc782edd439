#include "solid.h"

#include "../core/review.h"

void ztCAD_cmnSolid::readMip(const ztcad::ElementView& element) {
  const ztcad::Tolerated tolerated(element);
  m_mip.read(element);
}
