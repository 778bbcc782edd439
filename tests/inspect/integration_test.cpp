#include <gtest/gtest.h>
#include <cmath>
#include <cstring>
#include <random>

#include "exact_integrals.h"
#include "meshes.h"
#include "random_seed.h"

namespace {

const double pi = 3.141592653589793;

double relative(double value, double expected) { return std::abs(value - expected) / std::abs(expected); }

TEST(Integration, OfABoxIsWhatBooksSay) {
  TestMesh mesh = boxMesh(2, 3, 4);
  mesh.moveBy(10, 20, 30);
  ztCADInspect_Options options = defaultOptions();
  options.density = 0.5;
  const ztCADInspect_MassProperties mass = massOf(mesh, &options);
  EXPECT_EQ(mass.hasMass, 1);
  EXPECT_EQ(mass.hasVolume, 1);
  EXPECT_DOUBLE_EQ(mass.volume, 24);
  EXPECT_DOUBLE_EQ(mass.area, 52);
  EXPECT_DOUBLE_EQ(mass.mass, 12);
  EXPECT_DOUBLE_EQ(mass.center[0], 11);
  EXPECT_DOUBLE_EQ(mass.center[1], 21.5);
  EXPECT_DOUBLE_EQ(mass.center[2], 32);
  EXPECT_DOUBLE_EQ(mass.inertia[0], 12.0 / 12 * (9 + 16));
  EXPECT_DOUBLE_EQ(mass.inertia[4], 12.0 / 12 * (4 + 16));
  EXPECT_DOUBLE_EQ(mass.inertia[8], 12.0 / 12 * (4 + 9));
  for (const int i : {1, 2, 3, 5, 6, 7})
    EXPECT_NEAR(mass.inertia[i], 0, 1e-13) << i;
  EXPECT_LE(mass.error, 1e-12);
}

TEST(Integration, OfATetrahedronIsWhatBooksSay) {
  const ztCADInspect_MassProperties mass = massOf(tetrahedronMesh());
  EXPECT_EQ(mass.hasMass, 0);
  EXPECT_DOUBLE_EQ(mass.volume, 1.0 / 6);
  EXPECT_DOUBLE_EQ(mass.mass, mass.volume) << "the mass for density 1";
  EXPECT_DOUBLE_EQ(mass.area, 1.5 + std::sqrt(3.0) / 2);
  for (const double center : mass.center)
    EXPECT_DOUBLE_EQ(center, 0.25);
  EXPECT_NEAR(mass.inertia[0], 1.0 / 80, 1e-16);
  EXPECT_NEAR(mass.inertia[1], 1.0 / 480, 1e-16) << "an entry of the matrix: -integral of xy";
}

TEST(Integration, OfFinerSpheresApproachesTheBall) {
  ztCADInspect_MassProperties ball;
  const double center[3] = {0, 0, 0};
  ASSERT_EQ(ztCADInspect_sphereMass(center, 1, nullptr, &ball), ztCADInspect_MassKnown);
  EXPECT_DOUBLE_EQ(ball.volume, 4 * pi / 3);
  EXPECT_DOUBLE_EQ(ball.area, 4 * pi);
  EXPECT_DOUBLE_EQ(ball.inertia[4], ball.volume * 2 / 5);
  double last = 1;
  for (int times = 2; times <= 6; ++times) {
    const ztCADInspect_MassProperties mass = massOf(sphereMesh(times));
    const double error = relative(mass.volume, ball.volume);
    EXPECT_LT(error, last / 3.5) << times;
    last = error;
  }
  EXPECT_LT(last, 1e-3);
}

TEST(Integration, OfATorusConvergesToTheFormula) {
  const double great = 5;
  const double small = 2;
  const ztCADInspect_MassProperties mass = massOf(torusMesh(400, 400, great, small));
  EXPECT_LT(relative(mass.volume, 2 * pi * pi * great * small * small), 2e-4);
  EXPECT_LT(relative(mass.area, 4 * pi * pi * great * small), 2e-4);
  EXPECT_LT(relative(mass.inertia[8], mass.volume * (great * great + 0.75 * small * small)), 2e-4);
}

struct Body {
  const char* name;
  TestMesh mesh;
  double size;
};

std::vector<Body> bodies(std::mt19937_64& random) {
  std::vector<Body> all;
  all.push_back({"bumpy sphere", randomMesh(random, 3), 2});
  all.push_back({"thin shell", hollow(sphereMesh(3), 1 - 1e-6), 2});
  all.push_back({"thinner bumpy shell", hollow(randomMesh(random, 3), 1 - 1e-9), 2});
  all.push_back({"plate", boxMesh(1, 1, 1e-6), 1});
  all.push_back({"rod", boxMesh(1e-6, 1e-6, 1), 1});
  all.push_back({"skewed rod", boxMesh(1e-6, 1e-6, 1), 1});
  for (std::size_t i = 0; i < all.back().mesh.xyz.size(); i += 3) {
    all.back().mesh.xyz[i] += 0.3 * all.back().mesh.xyz[i + 2];
    all.back().mesh.xyz[i + 1] += 0.7 * all.back().mesh.xyz[i + 2];
  }
  TestMesh pair = randomMesh(random, 2);
  TestMesh far = randomMesh(random, 2);
  far.scaleBy(1e-3, 1e-3, 1e-3);
  far.moveBy(1000, 0, 0);
  pair.append(far);
  all.push_back({"a body and a speck far away", pair, 1000});
  return all;
}

TEST(Integration, IsWithin1e12OfExactArithmetic) {
  std::mt19937_64 random(randomSeed());
  std::uniform_real_distribution<double> turn(-1, 1);
  for (int round = 0; round < 3; ++round)
    for (Body& body : bodies(random))
      for (const double distance : {0.0, 1.0, 1e3, 1e6}) {
        TestMesh mesh = body.mesh;
        mesh.moveBy(distance * turn(random), distance * turn(random), distance);
        SCOPED_TRACE(body.name);
        SCOPED_TRACE(distance);
        const ExactIntegrals exact(mesh);
        ztCADInspect_MassProperties mass = {};
        const int problem = massProblem(mesh, mass);
        if (exact.volume < 0) {  // the thinnest walls, rounded to the coordinates far away
          EXPECT_EQ(problem, ztCADInspect_MassInsideOut);
          continue;
        }
        ASSERT_EQ(problem, ztCADInspect_MassKnown);
        EXPECT_LE(exact.errorOf(mass, body.size), 1e-12);
        EXPECT_LE(mass.error, 1e-12);
      }
}

// An estimate that is below the error would keep the more precise sum from being used.
TEST(Integration, EstimatesItsErrorFromAbove) {
  std::mt19937_64 random(randomSeed());
  for (int round = 0; round < 20; ++round) {
    TestMesh mesh = randomMesh(random, 3);
    std::uniform_real_distribution<double> thickness(-4, -1);
    mesh = hollow(mesh, 1 - std::pow(10, thickness(random)));
    mesh.moveBy(100, 200, 300);
    const ztCADInspect_MassProperties mass = massOf(mesh);
    EXPECT_LE(ExactIntegrals(mesh).errorOf(mass, 2), mass.error);
  }
}

TEST(Integration, WorksForEverySizeOfNumbers) {
  for (const double scale : {1e-90, 1e-30, 1e-9, 1.0, 1e9, 1e30, 1e60}) {
    TestMesh mesh = boxMesh(scale, scale, scale);
    const ztCADInspect_MassProperties mass = massOf(mesh);
    EXPECT_LT(relative(mass.volume, scale * scale * scale), 1e-14) << scale;
    EXPECT_LT(relative(mass.area, 6 * scale * scale), 1e-14) << scale;
  }
  ztCADInspect_MassProperties mass;
  EXPECT_EQ(massProblem(boxMesh(1e120, 1e120, 1e120), mass), ztCADInspect_MassNoValue)
      << "a volume beyond the range of doubles is none";
}

TEST(Integration, HasTheSameBitsForAnyNumberOfThreads) {
  std::mt19937_64 random(randomSeed());
  const TestMesh plain = randomMesh(random, 6);  // 32768 facets
  for (const TestMesh& mesh : {plain, hollow(plain, 1 - 1e-6)}) {
    ztCADInspect_Options options = defaultOptions();
    const ztCADInspect_MassProperties once = massOf(mesh, &options);
    for (const int threads : {2, 3, 8, 0}) {
      options.threads = threads;
      const ztCADInspect_MassProperties mass = massOf(mesh, &options);
      EXPECT_EQ(std::memcmp(&mass, &once, sizeof mass), 0) << threads;
    }
  }
}

// The bits of fixed bodies: the same on every system and with every compiler.
TEST(Integration, HasTheSameBitsOnEverySystem) {
  TestMesh mesh;
  std::uint64_t state = 1;
  const auto next = [&] {
    state = state * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(state >> 11U) * 0x1p-53;
  };
  for (int k = 0; k < 100; ++k) {
    TestMesh box = boxMesh(0.5 + next(), 0.5 + next(), k % 2 == 0 ? 1e-7 : next());
    box.moveBy(3 * k + next(), next(), next());
    mesh.append(box);
  }
  const ztCADInspect_MassProperties mass = massOf(mesh);
  const double found[] = {mass.volume,     mass.area,       mass.center[0],  mass.center[1],
                          mass.center[2],  mass.inertia[0], mass.inertia[1], mass.inertia[2],
                          mass.inertia[4], mass.inertia[5], mass.inertia[8]};
  const std::uint64_t expected[] = {0x4038b3bf350980ec, 0x407301c66501d88f, 0x4064b1dade69275d,
                                    0x3ff116730ef41d02, 0x3feae4820573e992, 0x4021c6ad398d3b9c,
                                    0x4056334a928ad287, 0xc06a46d47a3d82dc, 0x410316c55c6cc2c0,
                                    0x3fe5a9ba439f902c, 0x410316d4919a3d11};
  static_assert(std::size(expected) == std::size(found));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &found[i], sizeof bits);
    EXPECT_EQ(bits, expected[i]) << i << ": 0x" << std::hex << bits;
  }
}

// ------------------------------------------------------------------------------------- transforms

ztCADInspect_MassProperties expectedAfter(const ztCADInspect_MassProperties& mass, const double (&t)[12]) {
  ztCADInspect_MassProperties result = {};
  EXPECT_TRUE(ztCADInspect_transformMass(&mass, t, nullptr, &result));
  return result;
}

TestMesh mapped(TestMesh mesh, const double (&t)[12]) {
  for (std::size_t i = 0; i < mesh.xyz.size(); i += 3) {
    const double x = mesh.xyz[i];
    const double y = mesh.xyz[i + 1];
    const double z = mesh.xyz[i + 2];
    for (std::size_t k = 0; k < 3; ++k)
      mesh.xyz[i + k] = t[4 * k] * x + t[4 * k + 1] * y + t[4 * k + 2] * z + t[4 * k + 3];
  }
  return mesh;
}

void expectNear(const ztCADInspect_MassProperties& a, const ztCADInspect_MassProperties& b,
                double tolerance) {
  EXPECT_LT(relative(a.volume, b.volume), tolerance);
  EXPECT_LT(relative(a.mass, b.mass), tolerance);
  const double trace = b.inertia[0] + b.inertia[4] + b.inertia[8];
  for (int k = 0; k < 3; ++k)
    EXPECT_NEAR(a.center[k], b.center[k], tolerance * 100);
  for (int k = 0; k < 9; ++k)
    EXPECT_NEAR(a.inertia[k], b.inertia[k], tolerance * trace) << k;
}

TEST(Transforms, ChangeTheResultAsTheyMust) {
  std::mt19937_64 random(randomSeed());
  std::uniform_real_distribution<double> number(-1, 1);
  for (int round = 0; round < 100; ++round) {
    const TestMesh mesh = randomMesh(random, 2);
    const ztCADInspect_MassProperties mass = massOf(mesh);
    // a rotation about a random axis, by the half angle
    double q[4];
    double length = 0;
    for (double& x : q) {
      x = number(random);
      length += x * x;
    }
    for (double& x : q)
      x /= std::sqrt(length);
    const double scale = round % 2 == 0 ? 1 : 1.5 + number(random);
    const double r[9] = {1 - 2 * (q[2] * q[2] + q[3] * q[3]), 2 * (q[1] * q[2] - q[0] * q[3]),
                         2 * (q[1] * q[3] + q[0] * q[2]),     2 * (q[1] * q[2] + q[0] * q[3]),
                         1 - 2 * (q[1] * q[1] + q[3] * q[3]), 2 * (q[2] * q[3] - q[0] * q[1]),
                         2 * (q[1] * q[3] - q[0] * q[2]),     2 * (q[2] * q[3] + q[0] * q[1]),
                         1 - 2 * (q[1] * q[1] + q[2] * q[2])};
    double t[12];
    for (int k = 0; k < 3; ++k) {
      for (int j = 0; j < 3; ++j)
        t[4 * k + j] = scale * r[3 * k + j];
      t[4 * k + 3] = 10 * number(random);
    }
    const ztCADInspect_MassProperties seen = expectedAfter(mass, t);
    const ztCADInspect_MassProperties moved = massOf(mapped(mesh, t));
    expectNear(moved, seen, 1e-12);
    EXPECT_LT(relative(moved.area, seen.area), 1e-12);
    EXPECT_LT(relative(moved.area, mass.area * scale * scale), 1e-12);
    EXPECT_LT(relative(moved.volume, mass.volume * scale * scale * scale), 1e-12);

    // and any affine map, mirrors included
    for (double& x : t)
      x = number(random);
    TestMesh bent = mapped(mesh, t);
    const double determinant = t[0] * (t[5] * t[10] - t[6] * t[9]) - t[1] * (t[4] * t[10] - t[6] * t[8]) +
                               t[2] * (t[4] * t[9] - t[5] * t[8]);
    if (std::abs(determinant) < 1e-3) continue;
    if (determinant < 0) {
      ztCADInspect_MassProperties none = {};
      EXPECT_EQ(massProblem(bent, none), ztCADInspect_MassInsideOut);
      bent.reverse();
    }
    expectNear(massOf(bent), expectedAfter(mass, t), 1e-10);
    EXPECT_EQ(expectedAfter(mass, t).area, -1) << "a map that stretches unevenly";
  }
}

TEST(Transforms, ReversalTurnsAMeshInsideOut) {
  std::mt19937_64 random(randomSeed());
  TestMesh mesh = randomMesh(random, 2);
  mesh.reverse();
  ztCADInspect_MassProperties mass = {};
  EXPECT_EQ(massProblem(mesh, mass), ztCADInspect_MassInsideOut);
  EXPECT_EQ(ztCADInspect_meshState(analysed(mesh).get())->isInsideOut, 1);
}

TEST(Sums, OfPartsAreTheWhole) {
  std::mt19937_64 random(randomSeed());
  std::vector<ztCADInspect_MassProperties> parts;
  TestMesh whole;
  for (int i = 0; i < 20; ++i) {
    TestMesh part = randomMesh(random, 1);
    part.moveBy(3 * i, i % 3, 1e4);
    parts.push_back(massOf(part));
    whole.append(part);
  }
  ztCADInspect_MassProperties sum = {};
  ASSERT_TRUE(ztCADInspect_sumMass(parts.data(), 20, &sum));
  expectNear(sum, massOf(whole), 1e-12);
  EXPECT_LT(relative(sum.area, massOf(whole).area), 1e-12);
}

}  // namespace
