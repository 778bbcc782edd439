#pragma once

#include <ztCAD/ztCAD_c.h>
#include <Eigen/Core>
#include <optional>

#include "settings.h"

namespace ztcad::inspect {

/// An affine map: x goes to axes * x + origin.
struct Transform {
  Eigen::Matrix3d axes = Eigen::Matrix3d::Identity();
  Eigen::Vector3d origin = Eigen::Vector3d::Zero();

  /// The map that applies `inner` first.
  Transform operator*(const Transform& inner) const {
    Transform product;
    product.axes.noalias() = axes * inner.axes;
    product.origin.noalias() = axes * inner.origin;
    product.origin += origin;
    return product;
  }
  bool isFinite() const { return axes.allFinite() && origin.allFinite(); }
  /// The twelve reals of the C interface.
  void write(double* twelve) const;
  static Transform read(const double* twelve);
};

/// What is wrong with a system.
struct SystemProblem {
  enum Kind { Size, NoValue, NotOrthonormal, LeftHanded };
  Kind kind;
  int size = 0;      // number of values
  double value = 0;  // determinant, or the greatest deviation of a scalar product
};

/// A coordinate system as the options understand it.
struct System {
  Transform transform;  // identity if there is none, or if it cannot be used
  std::optional<SystemProblem> problem;
};

/// The own system of an element, in the frame of its holder.
System ownSystem(const ztCAD_Base* element, int kind, const Settings& settings);
/// The placement of a reference.
System placement(const ztCAD_Base* reference, const Settings& settings);
/// The values of an own system for a kind that the options leave in the frame of its holder are not looked
/// at.
bool hasOwnSystem(int kind, const Settings& settings);

/// How a map treats lengths.
struct Stretch {
  bool isRigid = false;  // keeps lengths, within the tolerance of systems
  bool isEven = false;   // stretches all lengths by `scale`
  double scale = 1;
  double determinant = 1;    // of the axes; +1 or -1 for rigid maps
  Eigen::Matrix3d rotation;  // of rigid maps: the orthonormal axes nearest to those given
};
Stretch stretchOf(const Eigen::Matrix3d& axes, double tolerance);

}  // namespace ztcad::inspect
