#include "mesh_integral.h"

#include <algorithm>
#include <limits>

#include "parallel.h"

namespace ztcad::inspect {

namespace {

// Sums are formed in blocks of facets, which are merged in their order: the result does not depend on which
// thread adds up which block.
const std::size_t blockSize = 4096;
const std::size_t groupSize = 16;
const std::size_t batchSize = 1024;  // blocks

const double unit = std::numeric_limits<double>::epsilon() / 2;
// Rounding of a term, of the coordinates that it is made of, and of the plain sum of a group, in units of the
// sizes that go along with the sums: 8 + 3 + 15, and some.
const double roundingOfTerms = 32 * unit;
const double greatestError = 1e-12;

enum Quantity : std::size_t { Six, X, Y, Z, XX, YY, ZZ, XY, XZ, YZ, QuantityCount };

/// Where coordinates are measured from, and the power of two that they are multiplied by.
struct Frame {
  double origin[3];
  double scale;

  void toLocal(const double* v, double* local) const {
    local[0] = (v[0] - origin[0]) * scale;
    local[1] = (v[1] - origin[1]) * scale;
    local[2] = (v[2] - origin[2]) * scale;
  }
};

Frame frameOf(const Box& box) {
  Frame frame = {};
  double greatest = 0;
  for (int i = 0; i < 3; ++i) {
    frame.origin[i] = box.low[i] / 2 + box.high[i] / 2;
    greatest = std::max(greatest, box.high[i] / 2 - box.low[i] / 2);
  }
  int exponent = 0;
  if (greatest > 0) std::frexp(greatest, &exponent);
  frame.scale = std::ldexp(1.0, std::clamp(-exponent, -1000, 1000));
  return frame;
}

struct Block {
  Sum sums[QuantityCount];
  Sum area;
  double size = 0;        // sizes of the terms of Six
  double secondSize = 0;  // the same, by the square of the distance
  std::int64_t degenerate = 0;
  std::vector<std::int64_t> places;
};

struct Pass {
  const MeshView& mesh;
  const std::vector<bool>* isUsed;
  Frame frame;
  double leastHeight;  // in local units
  std::size_t placesKept;

  bool takes(std::size_t facet) const { return !isUsed || (*isUsed)[facet]; }

  void addBlock(std::size_t first, std::size_t end, Block& block) const;
};

/// A facet relative to its first corner: its sides, its normal of twice its area, and how much is rounded.
struct Sides {
  double e[3];
  double f[3];
  double n[3];
  double size;          // of the terms that six times the volume of the tetrahedron is the sum of
  double squaredReach;  // of the farthest corner, at most
  double squaredNormal;
  double squaredLongest;  // side
};

inline Sides sidesOf(const double* a, const double* b, const double* c) {
  Sides sides = {
      {b[0] - a[0], b[1] - a[1], b[2] - a[2]}, {c[0] - a[0], c[1] - a[1], c[2] - a[2]}, {}, 0, 0, 0, 0};
  const auto& e = sides.e;
  const auto& f = sides.f;
  // the parts of the normal, and the sizes of what they are differences of
  const double yz = e[1] * f[2];
  const double zy = e[2] * f[1];
  const double zx = e[2] * f[0];
  const double xz = e[0] * f[2];
  const double xy = e[0] * f[1];
  const double yx = e[1] * f[0];
  auto& n = sides.n;
  n[0] = yz - zy;
  n[1] = zx - xz;
  n[2] = xy - yx;
  const double p[3] = {std::abs(yz) + std::abs(zy), std::abs(zx) + std::abs(xz), std::abs(xy) + std::abs(yx)};
  const double reach[3] = {std::abs(a[0]) + std::abs(e[0]) + std::abs(f[0]),
                           std::abs(a[1]) + std::abs(e[1]) + std::abs(f[1]),
                           std::abs(a[2]) + std::abs(e[2]) + std::abs(f[2])};
  sides.size = reach[0] * p[0] + reach[1] * p[1] + reach[2] * p[2];
  sides.squaredReach = reach[0] * reach[0] + reach[1] * reach[1] + reach[2] * reach[2];
  sides.squaredNormal = n[0] * n[0] + n[1] * n[1] + n[2] * n[2];
  const double g[3] = {f[0] - e[0], f[1] - e[1], f[2] - e[2]};
  const double ee = e[0] * e[0] + e[1] * e[1] + e[2] * e[2];
  const double ff = f[0] * f[0] + f[1] * f[1] + f[2] * f[2];
  const double gg = g[0] * g[0] + g[1] * g[1] + g[2] * g[2];
  const double longer = ee > ff ? ee : ff;
  sides.squaredLongest = longer > gg ? longer : gg;
  return sides;
}

/// Adds a tetrahedron from the origin to the sums: its volume is six / 6, the integral of x six * s / 24, and
/// that of xy six * (sx * sy + ax * ay + bx * by + cx * cy) / 120.
template <class Number>
inline void addTetrahedron(const Number& six, const Number* a, const Number* b, const Number* c,
                           Number* sums) {
  const Number s[3] = {a[0] + b[0] + c[0], a[1] + b[1] + c[1], a[2] + b[2] + c[2]};
  const auto product = [&](int j, int k) { return s[j] * s[k] + a[j] * a[k] + b[j] * b[k] + c[j] * c[k]; };
  sums[Six] += six;
  sums[X] += six * s[0];
  sums[Y] += six * s[1];
  sums[Z] += six * s[2];
  sums[XX] += six * product(0, 0);
  sums[YY] += six * product(1, 1);
  sums[ZZ] += six * product(2, 2);
  sums[XY] += six * product(0, 1);
  sums[XZ] += six * product(0, 2);
  sums[YZ] += six * product(1, 2);
}

void Pass::addBlock(std::size_t first, std::size_t end, Block& block) const {
  // copies in registers: the compiler cannot know that nothing below writes to the members
  const Frame local = frame;
  const double* const vertices = mesh.vertices;
  const double squaredHeight = leastHeight * leastHeight;
  double sizes = 0;
  double secondSizes = 0;
  for (std::size_t group = first; group < end; group += groupSize) {
    double sums[QuantityCount] = {};
    double area = 0;
    const std::size_t groupEnd = std::min(end, group + groupSize);
    for (std::size_t i = group; i < groupEnd; ++i) {
      if (!takes(i)) continue;
      const std::uint32_t* const facet = mesh.facet(i);
      double a[3];
      double b[3];
      double c[3];
      local.toLocal(vertices + 3 * std::size_t{facet[0]}, a);
      local.toLocal(vertices + 3 * std::size_t{facet[1]}, b);
      local.toLocal(vertices + 3 * std::size_t{facet[2]}, c);
      const Sides sides = sidesOf(a, b, c);
      sizes += sides.size;
      secondSizes += sides.size * sides.squaredReach;
      area += std::sqrt(sides.squaredNormal);
      if (sides.squaredNormal <= squaredHeight * sides.squaredLongest) {
        ++block.degenerate;
        if (block.places.size() < placesKept) block.places.push_back(static_cast<std::int64_t>(i));
      }
      const double* const n = sides.n;
      addTetrahedron(a[0] * n[0] + a[1] * n[1] + a[2] * n[2], a, b, c, sums);
    }
    for (std::size_t q = 0; q < QuantityCount; ++q)
      block.sums[q].add(sums[q]);
    block.area.add(area);
  }
  block.size = sizes;
  block.secondSize = secondSizes;
}

using PreciseSums = DoubleDouble[QuantityCount];

/// The same sums with twice the precision, from exact differences of coordinates.
void addPreciseBlock(const Pass& pass, std::size_t first, std::size_t end, PreciseSums& sums) {
  using Vector = DoubleDouble[3];
  for (std::size_t i = first; i < end; ++i) {
    if (!pass.takes(i)) continue;
    const std::uint32_t* const facet = pass.mesh.facet(i);
    Vector v[3];
    for (int corner = 0; corner < 3; ++corner)
      for (int k = 0; k < 3; ++k) {
        const DoubleDouble local = exactSum(pass.mesh.vertex(facet[corner])[k], -pass.frame.origin[k]);
        v[corner][k] = {local.high * pass.frame.scale, local.low * pass.frame.scale};
      }
    Vector e;
    Vector f;
    for (int k = 0; k < 3; ++k) {
      e[k] = v[1][k] - v[0][k];
      f[k] = v[2][k] - v[0][k];
    }
    const DoubleDouble six = v[0][0] * (e[1] * f[2] - e[2] * f[1]) + v[0][1] * (e[2] * f[0] - e[0] * f[2]) +
                             v[0][2] * (e[0] * f[1] - e[1] * f[0]);
    addTetrahedron(six, v[0], v[1], v[2], sums);
  }
}

/// Volume, centre and central second moments from the sums; `size` and `secondSize` as they were added up,
/// and `rounding` in units of these.
SolidIntegrals integralsFrom(const PreciseSums& sums, double size, double secondSize, double rounding,
                             const Frame& frame, const Box& box) {
  SolidIntegrals result;
  const DoubleDouble volume = sums[Six] / 6.0;
  const double volumeDoubt = rounding * size / 6;
  const double magnitude = std::abs(volume.rounded());
  if (!(magnitude > volumeDoubt)) return result;
  result.hasVolume = true;

  DoubleDouble center[3];
  for (int i = 0; i < 3; ++i)
    center[i] = sums[X + i] / 24.0 / volume;
  static const int pairs[6][2] = {{0, 0}, {1, 1}, {2, 2}, {0, 1}, {0, 2}, {1, 2}};
  double second[6];
  for (int i = 0; i < 6; ++i)
    second[i] = (sums[XX + i] / 120.0 - volume * center[pairs[i][0]] * center[pairs[i][1]]).rounded();

  const double trace = std::abs(second[0] + second[1] + second[2]);
  const double secondDoubt = rounding * secondSize / 10;
  const double firstDoubt = std::sqrt(volumeDoubt * secondDoubt);
  const double distance = lengthOf(center[0].high, center[1].high, center[2].high);
  const double diagonal = box.diagonal() * frame.scale;
  const double inCentral = secondDoubt + 2 * distance * firstDoubt + distance * distance * volumeDoubt;
  result.error =
      std::max({volumeDoubt / magnitude, (firstDoubt + distance * volumeDoubt) / (magnitude * diagonal),
                inCentral / trace, 4 * unit});
  if (!(result.error < 1)) result.error = 1;  // nan: no trace

  const double back = 1 / frame.scale;  // a power of two: exact
  result.volume = volume.rounded() * back * back * back;
  for (int i = 0; i < 3; ++i) {
    const DoubleDouble local = {center[i].high * back, center[i].low * back};
    result.center[i] = (DoubleDouble{frame.origin[i], 0} + local).rounded();
  }
  for (int i = 0; i < 6; ++i)
    result.second[i] = second[i] * back * back * back * back * back;
  return result;
}

std::size_t blockCountOf(std::size_t facetCount) { return (facetCount + blockSize - 1) / blockSize; }

/// The blocks of a mesh, a bounded number at a time: memory does not grow with the mesh.
/// @param work  called with the index in the batch, the first facet and the end of a block, by any thread
/// @param merge called with the index in the batch, in the order of the blocks
template <class Work, class Merge>
void forEachBlock(std::size_t facetCount, int threads, const Work& work, const Merge& merge) {
  const std::size_t blockCount = blockCountOf(facetCount);
  for (std::size_t start = 0; start < blockCount; start += batchSize) {
    const std::size_t count = std::min(batchSize, blockCount - start);
    inParallel(count, threads, [&](std::size_t i) {
      const std::size_t first = (start + i) * blockSize;
      work(i, first, std::min(facetCount, first + blockSize));
    });
    for (std::size_t i = 0; i < count; ++i)
      merge(i);
  }
}

template <class Item>
std::vector<Item> batchOf(std::size_t facetCount) {
  return std::vector<Item>(std::min(batchSize, blockCountOf(facetCount)));
}

struct PreciseBlock {
  PreciseSums sums = {};
};

void sumPrecisely(const Pass& pass, int threads, PreciseSums& precise) {
  const std::size_t facetCount = pass.mesh.facetCount;
  auto blocks = batchOf<PreciseBlock>(facetCount);
  forEachBlock(
      facetCount, threads,
      [&](std::size_t i, std::size_t first, std::size_t end) {
        blocks[i] = PreciseBlock();
        addPreciseBlock(pass, first, end, blocks[i].sums);
      },
      [&](std::size_t i) {
        for (std::size_t q = 0; q < QuantityCount; ++q)
          precise[q] += blocks[i].sums[q];
      });
}

}  // namespace

FacetPass passOverFacets(const MeshView& mesh, const std::vector<bool>* isUsed, const Box& box,
                         double degenerateTolerance, std::size_t placesKept, bool wantsIntegrals,
                         int threads) {
  const Frame frame = frameOf(box);
  const Pass pass = {mesh, isUsed, frame, degenerateTolerance * box.diagonal() * frame.scale, placesKept};
  FacetPass result;
  PreciseSums sums = {};
  DoubleDouble area;
  double size = 0;
  double secondSize = 0;
  auto blocks = batchOf<Block>(mesh.facetCount);
  forEachBlock(
      mesh.facetCount, threads,
      [&](std::size_t i, std::size_t first, std::size_t end) {
        blocks[i] = Block();
        pass.addBlock(first, end, blocks[i]);
      },
      [&](std::size_t i) {
        const Block& block = blocks[i];
        for (std::size_t q = 0; q < QuantityCount; ++q)
          sums[q] += exactSum(block.sums[q].total.high, block.sums[q].total.low);
        area += exactSum(block.area.total.high, block.area.total.low);
        size += block.size;
        secondSize += block.secondSize;
        result.degenerate += block.degenerate;
        for (const std::int64_t place : block.places)
          if (result.degeneratePlaces.size() < placesKept) result.degeneratePlaces.push_back(place);
      });
  result.area = area.rounded() / 2 / frame.scale / frame.scale;
  if (!wantsIntegrals) return result;

  result.integrals = integralsFrom(sums, size, secondSize, roundingOfTerms, frame, box);
  if (result.integrals.hasVolume && result.integrals.error <= greatestError) return result;

  PreciseSums precise = {};
  sumPrecisely(pass, threads, precise);
  // products of double-doubles keep 2^-102, and every addition of a block and of the blocks 2^-104
  const auto additions = static_cast<double>(blockSize + blockCountOf(mesh.facetCount));
  const double rounding = (64 + additions) * 8 * unit * unit;
  result.integrals = integralsFrom(precise, size, secondSize, rounding, frame, box);
  result.integrals.wasPrecise = true;
  return result;
}

}  // namespace ztcad::inspect
