#include "solid_mass.h"

#include <ztCAD/inspect.h>

#include <array>
#include <memory>

#include "../info/contents.h"

namespace cli {

std::string setSolidMass(ztCAD_Base& solid, double density) {
  ztCADInspect_Options options;
  ztCADInspect_initOptions(&options, sizeof options);
  options.density = density;
  options.threads = 0;
  const std::unique_ptr<ztCADInspect_Mesh, decltype(&ztCADInspect_endMesh)> mesh(
      ztCADInspect_analyseElement(&solid, &options), &ztCADInspect_endMesh);
  ztCADInspect_MassProperties mass;
  const std::int32_t problem = ztCADInspect_meshMass(mesh.get(), &mass);
  std::array<double, 10> values{};
  if (problem != ztCADInspect_MassKnown ||
      !ztCADInspect_massToNumbers(&mass, &solid, &options, values.data()))
    return "solid \"" + nameOf(&solid) + "\": " + ztCADInspect_massProblemText(problem);
  static ztCAD_MIP* const record = crtMIP_nostl(values.data(), 10);
  ztCAD_fillMIP(record, values.data(), 10);
  ztCAD_setMIP(&solid, record);
  return {};
}

}  // namespace cli
