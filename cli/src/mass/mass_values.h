#pragma once

#include <ztCAD/inspect.h>

#include <nlohmann/json.hpp>

namespace cli {

/// What an element declares, as docs/mass.schema.json describes it; null if it declares nothing.
nlohmann::ordered_json declaredJson(const ztCADInspect_MassRow& row);
/// What was computed; null if nothing was.
nlohmann::ordered_json computedJson(const ztCADInspect_MassRow& row);

}  // namespace cli
