#pragma once

#include <ztCAD/inspect.h>

#include "element_list.h"
#include "json_writer.h"
#include "shape_list.h"

namespace cli {

/// Writes the members "bounds", "items" and "shapes" of a scene.
/// @param scene null: there is nothing in them
void writeScene(JsonWriter& json, const ztCADInspect_Scene* scene, const ElementList& elements,
                const ShapeList* shapes);

}  // namespace cli
