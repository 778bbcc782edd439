#include "mass.h"

#include <algorithm>
#include <cmath>
#include <Eigen/LU>

#include "double_double.h"
#include "element.h"

namespace ztcad::inspect {

namespace {

const double pi = 3.14159265358979323846;

/// m * (d.d * 1 - d * d'): what a point mass at `d` adds to the inertia about the origin.
Eigen::Matrix3d pointInertia(double mass, const Eigen::Vector3d& d) {
  return mass * (d.squaredNorm() * Eigen::Matrix3d::Identity() - d * d.transpose());
}

/// Inertia matrix from the integrals of x*x dm, ..., and back: tr * 1 - C both ways, but for a factor.
Eigen::Matrix3d inertiaFromMoments(const Eigen::Matrix3d& moments) {
  return moments.trace() * Eigen::Matrix3d::Identity() - moments;
}
Eigen::Matrix3d momentsFromInertia(const Eigen::Matrix3d& inertia) {
  return inertia.trace() / 2 * Eigen::Matrix3d::Identity() - inertia;
}

void setDensity(Mass& mass, const Settings& settings) {
  const double density = settings.density();
  mass.hasMass = density > 0 ? 1 : 0;
  mass.mass = density > 0 ? density * mass.volume : mass.volume;
  if (density > 0)
    for (double& value : mass.inertia)
      value *= density;
}

Mass transformedRigidly(const Mass& mass, const Eigen::Matrix3d& rotation, const Eigen::Vector3d& origin) {
  Mass result = mass;
  setCenter(result, rotation * centerOf(mass) + origin);
  setInertia(result, rotation * inertiaOf(mass) * rotation.transpose());
  return result;
}

}  // namespace

Eigen::Matrix3d inertiaOf(const Mass& mass) {
  return Eigen::Map<const Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(mass.inertia);
}
Eigen::Vector3d centerOf(const Mass& mass) { return Eigen::Map<const Eigen::Vector3d>(mass.center); }

void setInertia(Mass& mass, const Eigen::Matrix3d& inertia) {
  // symmetric to the last bit
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) {
      const int entry = 3 * row + column;
      mass.inertia[entry] = (inertia(row, column) + inertia.transpose()(row, column)) / 2;
    }
}
void setCenter(Mass& mass, const Eigen::Vector3d& center) {
  std::copy(center.data(), center.data() + 3, mass.center);
}

bool isFinite(const Mass& mass) {
  const auto isNumber = [](double value) { return std::isfinite(value); };
  return isNumber(mass.mass) && isNumber(mass.volume) && isNumber(mass.area) &&
         std::all_of(mass.center, mass.center + 3, isNumber) &&
         std::all_of(mass.inertia, mass.inertia + 9, isNumber);
}

Mass massOf(const SolidIntegrals& integrals, double area, const Settings& settings) {
  Mass mass = {};
  mass.hasVolume = 1;
  mass.volume = integrals.volume;
  mass.area = area;
  mass.error = integrals.error;
  std::copy(integrals.center, integrals.center + 3, mass.center);
  const double* const s = integrals.second;
  Eigen::Matrix3d inertia;
  inertia << s[1] + s[2], -s[3], -s[4],  //
      -s[3], s[0] + s[2], -s[5],         //
      -s[4], -s[5], s[0] + s[1];
  setInertia(mass, inertia);
  setDensity(mass, settings);
  return mass;
}

int sphereMass(const double* center, double radius, const Settings& settings, Mass& mass) {
  if (!std::isfinite(radius) || !std::all_of(center, center + 3, [](double x) { return std::isfinite(x); }))
    return ztCADInspect_MassNoValue;
  if (radius <= 0) return ztCADInspect_MassNoRadius;
  mass = {};
  mass.hasVolume = 1;
  mass.volume = 4 * pi / 3 * radius * radius * radius;
  mass.area = 4 * pi * radius * radius;
  mass.error = 8 * 1.2e-16;
  std::copy(center, center + 3, mass.center);
  for (int i = 0; i < 3; ++i)
    mass.inertia[std::size_t{4} * static_cast<std::size_t>(i)] = mass.volume * radius * radius * 2 / 5;
  setDensity(mass, settings);
  if (!isFinite(mass)) return ztCADInspect_MassNoValue;
  return mass.volume > 0 ? ztCADInspect_MassKnown : ztCADInspect_MassNoVolume;
}

int declaredMass(const ztCAD_Base* element, int kind, const Settings& settings, Mass& mass) {
  double values[10];
  if (ztCAD_getMIP(element, values, 10) < 10) return ztCADInspect_MassNotDeclared;
  double parts[10];
  for (int i = 0; i < 10; ++i)
    parts[settings.values.massOrder[i]] = values[i];
  if (!std::all_of(parts, parts + 10, [](double value) { return std::isfinite(value); }))
    return ztCADInspect_MassNoValue;
  mass = {};
  mass.hasMass = 1;
  mass.mass = parts[ztCADInspect_MassMass];
  std::copy_n(parts + ztCADInspect_MassCenterX, 3, mass.center);
  const double sign = settings.values.productsAreIntegrals != 0 ? -1 : 1;
  const double xy = sign * parts[ztCADInspect_MassXY];
  const double xz = sign * parts[ztCADInspect_MassXZ];
  const double yz = sign * parts[ztCADInspect_MassYZ];
  Eigen::Matrix3d inertia;
  inertia << parts[ztCADInspect_MassXX], xy, xz,  //
      xy, parts[ztCADInspect_MassYY], yz,         //
      xz, yz, parts[ztCADInspect_MassZZ];
  if (settings.values.momentsAboutOrigin != 0) inertia -= pointInertia(mass.mass, centerOf(mass));
  setInertia(mass, inertia);
  if (settings.values.massInHolderFrame != 0) {
    const Transform system = ownSystem(element, kind, settings).transform;
    Transform back;
    back.axes = system.axes.inverse();
    if (back.axes.allFinite()) {
      back.origin = -(back.axes * system.origin);
      mass = transformed(mass, back, settings);
    }
  }
  return ztCADInspect_MassKnown;
}

void massToNumbers(const Mass& mass, const ztCAD_Base* element, const Settings& settings, double* values) {
  Mass shown = mass;
  if (settings.values.massInHolderFrame != 0 && element)
    shown = transformed(mass, ownSystem(element, ztCAD_getKind(element), settings).transform, settings);
  Eigen::Matrix3d inertia = inertiaOf(shown);
  if (settings.values.momentsAboutOrigin != 0) inertia += pointInertia(shown.mass, centerOf(shown));
  const double sign = settings.values.productsAreIntegrals != 0 ? -1 : 1;
  const double parts[10] = {shown.mass,           shown.center[0],     shown.center[1], shown.center[2],
                            inertia(0, 0),        inertia(1, 1),       inertia(2, 2),   sign * inertia(0, 1),
                            sign * inertia(0, 2), sign * inertia(1, 2)};
  for (int i = 0; i < 10; ++i)
    values[i] = parts[settings.values.massOrder[i]];
}

Mass transformed(const Mass& mass, const Transform& transform, const Settings& settings) {
  const Stretch stretch = stretchOf(transform.axes, settings.values.systemTolerance);
  if (stretch.isRigid) return transformedRigidly(mass, stretch.rotation, transform.origin);
  Mass result = mass;
  setCenter(result, transform.axes * centerOf(mass) + transform.origin);
  const double growth = std::abs(stretch.determinant);
  Eigen::Matrix3d moments = transform.axes * momentsFromInertia(inertiaOf(mass)) * transform.axes.transpose();
  if (mass.hasVolume != 0) {
    // geometry grows; a mass that was declared stays
    result.volume *= growth;
    result.mass *= growth;
    moments *= growth;
    result.area = stretch.isEven && mass.area >= 0 ? mass.area * stretch.scale * stretch.scale : -1;
  }
  setInertia(result, inertiaFromMoments(moments));
  return result;
}

namespace {

/// The sums that do not need the common centre; centres relative to that of the first body.
struct PlainSums {
  Sum mass;
  Sum volume;
  Sum area;
  Sum moments[3];

  void add(const Mass& body, const Eigen::Vector3d& distance) {
    mass.add(body.mass);
    volume.add(body.volume);
    area.add(body.area);
    for (int k = 0; k < 3; ++k)
      moments[k].add(body.mass * distance[k]);
  }
};

Eigen::Matrix3d sumOfInertias(const Mass* bodies, std::size_t count, const Eigen::Vector3d& start,
                              const Eigen::Vector3d& center) {
  Sum entries[9];
  for (std::size_t i = 0; i < count; ++i) {
    const Eigen::Vector3d distance = centerOf(bodies[i]) - start - center;
    const Eigen::Matrix3d inertia = inertiaOf(bodies[i]) + pointInertia(bodies[i].mass, distance);
    for (int k = 0; k < 9; ++k)
      entries[k].add(inertia(k / 3, k % 3));
  }
  Eigen::Matrix3d sum;
  for (int k = 0; k < 9; ++k)
    sum(k / 3, k % 3) = entries[k].total.rounded();
  return sum;
}

}  // namespace

Mass sumOf(const Mass* bodies, std::size_t count) {
  if (count == 1) return bodies[0];
  Mass result = {};
  result.hasMass = 1;
  result.hasVolume = 1;
  bool hasArea = true;
  const Eigen::Vector3d start = centerOf(bodies[0]);
  PlainSums sums;
  for (std::size_t i = 0; i < count; ++i) {
    const Mass& body = bodies[i];
    sums.add(body, centerOf(body) - start);
    if (body.hasMass == 0) result.hasMass = 0;
    if (body.hasVolume == 0) result.hasVolume = 0;
    if (body.area < 0) hasArea = false;
    result.error = std::max(result.error, body.error);
  }
  result.mass = sums.mass.total.rounded();
  if (result.hasVolume != 0) {
    result.volume = sums.volume.total.rounded();
    result.area = hasArea ? sums.area.total.rounded() : -1;
  }
  Eigen::Vector3d center = Eigen::Vector3d::Zero();
  if (result.mass != 0)
    for (int k = 0; k < 3; ++k)
      center[k] = sums.moments[k].total.rounded() / result.mass;
  setCenter(result, start + center);
  setInertia(result, sumOfInertias(bodies, count, start, center));
  return result;
}

const char* massProblemText(int problem) {
  switch (problem) {
    case ztCADInspect_MassNoGeometry:
      return "It has neither data nor a surface.";
    case ztCADInspect_MassNoFacets:
      return "The mesh has no facets.";
    case ztCADInspect_MassBadIndex:
      return "A facet has an index beyond the vertices.";
    case ztCADInspect_MassNoValue:
      return "A number is nan or infinite.";
    case ztCADInspect_MassOpen:
      return "The mesh is not closed: an edge has only one facet.";
    case ztCADInspect_MassNonManifold:
      return "An edge of the mesh has more than two facets.";
    case ztCADInspect_MassWinding:
      return "The mesh is not wound consistently: two facets pass their edge in the same direction.";
    case ztCADInspect_MassInsideOut:
      return "The mesh is inside out: its volume is negative.";
    case ztCADInspect_MassNoVolume:
      return "The mesh has no volume.";
    case ztCADInspect_MassNoRadius:
      return "The sphere has no centre or no positive radius.";
    case ztCADInspect_MassNoDensity:
      return "Nothing is declared, and no density is given.";
    case ztCADInspect_MassContent:
      return "Something in it has no mass properties.";
    case ztCADInspect_MassNoTemplate:
      return "The reference places nothing.";
    case ztCADInspect_MassNoMemory:
      return "Memory ran out.";
    case ztCADInspect_MassNotDeclared:
      return "Nothing is declared.";
    case ztCADInspect_MassBadArgument:
      return "An argument is null.";
    default:
      return "";
  }
}

}  // namespace ztcad::inspect
