#include "mass_values.h"

#include "mass_printer.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

ordered_json toJson(const ztCADInspect_MassProperties& mass) {
  const double* const i = mass.inertia;
  ordered_json object = ordered_json::object();
  if (mass.hasMass != 0) object["mass"] = mass.mass;
  if (mass.hasVolume != 0) {
    object["volume"] = mass.volume;
    object["area"] = mass.area < 0 ? ordered_json() : ordered_json(mass.area);
  }
  object["center"] = {mass.center[0], mass.center[1], mass.center[2]};
  object["inertia"] = {{i[0], i[1], i[2]}, {i[3], i[4], i[5]}, {i[6], i[7], i[8]}};
  return object;
}

}  // namespace

ordered_json declaredJson(const ztCADInspect_MassRow& row) {
  return isDeclared(row) ? toJson(row.declared) : ordered_json();
}

ordered_json computedJson(const ztCADInspect_MassRow& row) {
  return isComputed(row) ? toJson(row.computed) : ordered_json();
}

}  // namespace cli
