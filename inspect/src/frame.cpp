#include "frame.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <Eigen/LU>

#include "element.h"

namespace ztcad::inspect {

namespace {

double deviation(const Eigen::Matrix3d& axes) {
  return (axes.transpose() * axes - Eigen::Matrix3d::Identity()).cwiseAbs().maxCoeff();
}

template <class Getter>
System systemFrom(const Getter& getter, const ztCAD_Base* element, const Settings& settings) {
  double values[12];
  const std::int32_t size = getter(element, values, 12);
  System system;
  if (size <= 0) return system;
  if (size != 12) {
    system.problem = SystemProblem{SystemProblem::Size, size};
    return system;
  }
  Transform transform;
  for (int part = 0; part < 4; ++part) {
    const Eigen::Map<const Eigen::Vector3d> triple(values + std::ptrdiff_t{3} * part);
    const std::int32_t meaning = settings.values.systemOrder[part];
    if (meaning == ztCADInspect_SystemOrigin)
      transform.origin = triple;
    else
      transform.axes.col(meaning - ztCADInspect_SystemX) = triple;
  }
  if (settings.values.systemIsTransposed != 0) transform.axes.transposeInPlace();
  if (!transform.isFinite()) {
    const auto bad = std::count_if(values, values + 12, [](double value) { return !std::isfinite(value); });
    system.problem = SystemProblem{SystemProblem::NoValue, static_cast<int>(bad)};
    return system;
  }
  system.transform = transform;
  const double determinant = transform.axes.determinant();
  const double far = deviation(transform.axes);
  if (!(far <= settings.values.systemTolerance))
    system.problem = SystemProblem{SystemProblem::NotOrthonormal, 12, far};
  else if (determinant < 0)
    system.problem = SystemProblem{SystemProblem::LeftHanded, 12, determinant};
  return system;
}

}  // namespace

void Transform::write(double* twelve) const {
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column)
      twelve[4 * row + column] = axes(row, column);
    twelve[4 * row + 3] = origin[row];
  }
}

Transform Transform::read(const double* twelve) {
  Transform transform;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column)
      transform.axes(row, column) = twelve[4 * row + column];
    transform.origin[row] = twelve[4 * row + 3];
  }
  return transform;
}

bool hasOwnSystem(int kind, const Settings& settings) {
  if (isReference(kind)) return false;
  return isHolder(kind) || settings.values.ownSystems != 0;
}

System ownSystem(const ztCAD_Base* element, int kind, const Settings& settings) {
  if (!hasOwnSystem(kind, settings)) return {};
  return systemFrom(ztCAD_getLCS, element, settings);
}

System placement(const ztCAD_Base* reference, const Settings& settings) {
  return systemFrom(ztCAD_getPlacement, reference, settings);
}

Stretch stretchOf(const Eigen::Matrix3d& axes, double tolerance) {
  Stretch stretch;
  stretch.rotation = axes;
  stretch.determinant = axes.determinant();
  if (deviation(axes) <= std::min(tolerance, 0.5)) {
    // the polar factor, by Newton's iteration, which converges quadratically
    Eigen::Matrix3d rotation = axes;
    for (int i = 0; i < 8; ++i)
      rotation = (rotation + rotation.inverse().transpose()).eval() / 2;
    stretch.isRigid = true;
    stretch.isEven = true;
    stretch.rotation = rotation;
    stretch.determinant = stretch.determinant < 0 ? -1 : 1;
    return stretch;
  }
  const double square = axes.col(0).squaredNorm();
  stretch.scale = std::sqrt(square);
  stretch.isEven = square > 0 && deviation(axes / stretch.scale) <= 1e-12;
  return stretch;
}

}  // namespace ztcad::inspect
