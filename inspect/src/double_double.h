#pragma once

#include <cmath>

/// @file
/// Sums and products with 106 bits of precision, by the error-free transformations of Dekker and Knuth. They
/// need arithmetic without contraction (`-ffp-contract=off`) and use no `std::fma`: that of MinGW is wrong.

namespace ztcad::inspect {

/// A sum of two doubles, of which `low` is at most half a unit in the last place of `high`.
struct DoubleDouble {
  double high = 0;
  double low = 0;

  double rounded() const { return high + low; }
};

/// a + b exactly.
inline DoubleDouble exactSum(double a, double b) {
  const double sum = a + b;
  const double part = sum - a;
  return {sum, (a - (sum - part)) + (b - part)};
}

/// a + b exactly, if |a| >= |b| or a is 0.
inline DoubleDouble exactSumOfOrdered(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

/// The halves of a double: `high` has 26 bits.
inline DoubleDouble halves(double a) {
  const double spread = 134217729.0 * a;  // 2^27 + 1
  const double high = spread - (spread - a);
  return {high, a - high};
}

/// a * b exactly, if nothing overflows or underflows.
inline DoubleDouble exactProduct(double a, double b) {
  const double product = a * b;
  const DoubleDouble x = halves(a);
  const DoubleDouble y = halves(b);
  return {product, ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low};
}

inline DoubleDouble operator-(DoubleDouble a) { return {-a.high, -a.low}; }

inline DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
  DoubleDouble sum = exactSum(a.high, b.high);
  const DoubleDouble rest = exactSum(a.low, b.low);
  sum = exactSumOfOrdered(sum.high, sum.low + rest.high);
  return exactSumOfOrdered(sum.high, sum.low + rest.low);
}

inline DoubleDouble operator-(DoubleDouble a, DoubleDouble b) { return a + -b; }

inline DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
  const DoubleDouble product = exactProduct(a.high, b.high);
  return exactSumOfOrdered(product.high, product.low + (a.high * b.low + a.low * b.high));
}

inline DoubleDouble operator*(DoubleDouble a, double b) { return a * DoubleDouble{b, 0}; }

inline DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
  const double first = a.high / b.high;
  const DoubleDouble rest = a - b * first;
  const double second = rest.high / b.high;
  const double third = (rest - b * second).high / b.high;
  return exactSumOfOrdered(first, second) + DoubleDouble{third, 0};
}

inline DoubleDouble operator/(DoubleDouble a, double b) { return a / DoubleDouble{b, 0}; }

inline DoubleDouble& operator+=(DoubleDouble& a, DoubleDouble b) { return a = a + b; }

/// Adds doubles and keeps what the additions round away.
struct Sum {
  DoubleDouble total;

  void add(double term) {
    const DoubleDouble next = exactSum(total.high, term);
    total.high = next.high;
    total.low += next.low;
  }
};

}  // namespace ztcad::inspect
