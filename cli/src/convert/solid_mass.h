#pragma once

#include <ztCAD/ztCAD_c.h>

#include <string>

namespace cli {

/// Gives a closed solid the mass-inertia data that follow from its shape and a density.
/// @return why it has none, as a sentence; empty if it has
std::string setSolidMass(ztCAD_Base& solid, double density);

}  // namespace cli
