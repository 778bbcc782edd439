#pragma once

#include <algorithm>
#include <boost/multiprecision/cpp_int.hpp>
#include <cmath>

#include "meshes.h"

/// Volume, centre and central second moments of a closed mesh in rational arithmetic: without any rounding.
struct ExactIntegrals {
  using Integer = boost::multiprecision::cpp_int;
  using Rational = boost::multiprecision::cpp_rational;

  Rational volume;
  Rational center[3];
  Rational inertia[9];  // about the centre, for density 1

  explicit ExactIntegrals(const TestMesh& mesh) {
    // coordinates as integers, in units of the last place of the smallest one
    int least = 0;
    for (const double x : mesh.xyz) {
      int exponent = 0;
      if (x != 0) std::frexp(x, &exponent);
      least = std::min(least, x != 0 ? exponent - 53 : 0);
    }
    std::vector<Integer> whole;
    for (const double x : mesh.xyz) {
      int exponent = 0;
      const auto digits = static_cast<std::int64_t>(std::ldexp(std::frexp(x, &exponent), 53));
      whole.push_back(digits == 0 ? Integer(0)
                                  : Integer(digits) << static_cast<unsigned>(exponent - 53 - least));
    }
    Integer six;
    Integer first[3];
    Integer second[6];
    static const int pairs[6][2] = {{0, 0}, {1, 1}, {2, 2}, {0, 1}, {0, 2}, {1, 2}};
    for (std::size_t i = 0; i < mesh.ijk.size(); i += 3) {
      const Integer* const a = &whole[3 * std::size_t{mesh.ijk[i]}];
      const Integer* const b = &whole[3 * std::size_t{mesh.ijk[i + 1]}];
      const Integer* const c = &whole[3 * std::size_t{mesh.ijk[i + 2]}];
      const Integer determinant = a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
                                  a[2] * (b[0] * c[1] - b[1] * c[0]);
      six += determinant;
      Integer sum[3];
      for (int k = 0; k < 3; ++k) {
        sum[k] = a[k] + b[k] + c[k];
        first[k] += determinant * sum[k];
      }
      for (int k = 0; k < 6; ++k) {
        const int p = pairs[k][0];
        const int q = pairs[k][1];
        second[k] += determinant * (sum[p] * sum[q] + a[p] * a[q] + b[p] * b[q] + c[p] * c[q]);
      }
    }
    const Rational unit = Rational(1) / Rational(Integer(1) << static_cast<unsigned>(-least));
    volume = Rational(six) / 6 * unit * unit * unit;
    Rational moment[3][3];
    for (int k = 0; k < 3; ++k)
      center[k] = Rational(first[k]) / (4 * Rational(six)) * unit;
    for (int k = 0; k < 6; ++k) {
      const int p = pairs[k][0];
      const int q = pairs[k][1];
      moment[p][q] =
          Rational(second[k]) / 120 * unit * unit * unit * unit * unit - volume * center[p] * center[q];
      moment[q][p] = moment[p][q];
    }
    for (int p = 0; p < 3; ++p)
      for (int q = 0; q < 3; ++q)
        inertia[3 * p + q] = p == q ? moment[(p + 1) % 3][(p + 1) % 3] + moment[(p + 2) % 3][(p + 2) % 3]
                                    : Rational(-moment[p][q]);
  }

  /// The greatest relative error of `mass`: of the volume; of the centre to `size` and to its distance; of
  /// the inertia to its trace.
  double errorOf(const ztCADInspect_MassProperties& mass, double size) const {
    const auto difference = [](double value, const Rational& exact) {
      return std::abs((Rational(value) - exact).convert_to<double>());
    };
    double error = difference(mass.volume, volume) / std::abs(volume.convert_to<double>());
    double distance = size;
    for (const Rational& x : center)
      distance = std::max(distance, std::abs(x.convert_to<double>()));
    for (int k = 0; k < 3; ++k)
      error = std::max(error, difference(mass.center[k], center[k]) / distance);
    const double trace = Rational(inertia[0] + inertia[4] + inertia[8]).convert_to<double>();
    for (int k = 0; k < 9; ++k)
      error = std::max(error, difference(mass.inertia[k], inertia[k]) / trace);
    return error;
  }
};
