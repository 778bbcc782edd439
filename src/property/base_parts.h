#pragma once

#include "base.h"

namespace ztcad {

/// Writes the attributes common to all geometric elements: property block, then display method.
void writeBaseParts(const ztCAD_Base& base, const ztCAD_baseElement& element, ElementSink& sink);

/// Reads both. The result is that of the property block: an absent "method" leaves the method unchanged and
/// is no failure.
/// @param fault output, always false
bool readBaseParts(ztCAD_Base& base, ztCAD_baseElement& element, const ElementView& view, bool& fault);

}  // namespace ztcad
