#pragma once

#include "property_record.h"

namespace ztcad {

/// Sets the record's properties on the element; the implementation of `setCommonProperty`.
/// @{
void apply(const CommonProperty& record, ztCAD_Base& element);
void apply(const CommonPropertyForMIP& record, ztCAD_Base& element);
/// @}

}  // namespace ztcad
