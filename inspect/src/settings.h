#pragma once

#include <ztCAD/inspect.h>
#include <optional>
#include <string>

namespace ztcad::inspect {

/// Options that are complete and right.
struct Settings {
  ztCADInspect_Options values = {};
  std::optional<std::string> allowedFolder;

  double density() const { return values.density > 0 ? values.density : 0; }
};

ztCADInspect_Options defaultOptions();
/// The options of a host, with defaults for what is missing or wrong; null: all defaults.
Settings settingsFrom(const ztCADInspect_Options* options);
/// The first thing that is wrong with them; null: nothing.
const char* problemOf(const ztCADInspect_Options& options);
/// As much of them as the host's struct has; the rest are defaults.
ztCADInspect_Options completed(const ztCADInspect_Options& options);

}  // namespace ztcad::inspect
