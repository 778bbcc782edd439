#pragma once

#include <ztCAD/inspect.h>
#include <cstddef>
#include <Eigen/Core>

#include "frame.h"
#include "mesh_integral.h"
#include "settings.h"

namespace ztcad::inspect {

using Mass = ztCADInspect_MassProperties;

/// The inertia matrix, and the centre.
Eigen::Matrix3d inertiaOf(const Mass& mass);
Eigen::Vector3d centerOf(const Mass& mass);
void setInertia(Mass& mass, const Eigen::Matrix3d& inertia);
void setCenter(Mass& mass, const Eigen::Vector3d& center);
/// Whether all numbers are finite.
bool isFinite(const Mass& mass);

/// Mass properties of what a mesh encloses.
Mass massOf(const SolidIntegrals& integrals, double area, const Settings& settings);
/// Mass properties of a ball; a `ztCADInspect_MassProblem`.
int sphereMass(const double* center, double radius, const Settings& settings, Mass& mass);
/// What an element declares, in its own frame; a `ztCADInspect_MassProblem`.
int declaredMass(const ztCAD_Base* element, int kind, const Settings& settings, Mass& mass);
/// The reverse.
void massToNumbers(const Mass& mass, const ztCAD_Base* element, const Settings& settings, double* values);

/// The same body seen from the frame that `transform` leads to.
Mass transformed(const Mass& mass, const Transform& transform, const Settings& settings);

/// Sum of bodies in one frame. Rounding does not grow with their number.
/// @param bodies `count` of them, at least one
Mass sumOf(const Mass* bodies, std::size_t count);

/// The sentence for a `ztCADInspect_MassProblem`.
const char* massProblemText(int problem);

}  // namespace ztcad::inspect
