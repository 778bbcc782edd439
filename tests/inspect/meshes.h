#pragma once

#include <ztCAD/inspect.h>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// A mesh that a test builds.
struct TestMesh {
  std::vector<double> xyz;
  std::vector<std::uint32_t> ijk;

  std::size_t vertexCount() const { return xyz.size() / 3; }
  std::size_t facetCount() const { return ijk.size() / 3; }

  void moveBy(double x, double y, double z) {
    for (std::size_t i = 0; i < xyz.size(); i += 3) {
      xyz[i] += x;
      xyz[i + 1] += y;
      xyz[i + 2] += z;
    }
  }
  void scaleBy(double x, double y, double z) {
    for (std::size_t i = 0; i < xyz.size(); i += 3) {
      xyz[i] *= x;
      xyz[i + 1] *= y;
      xyz[i + 2] *= z;
    }
  }
  void reverse() {
    for (std::size_t i = 0; i < ijk.size(); i += 3)
      std::swap(ijk[i + 1], ijk[i + 2]);
  }
  void append(const TestMesh& other) {
    const auto first = static_cast<std::uint32_t>(vertexCount());
    xyz.insert(xyz.end(), other.xyz.begin(), other.xyz.end());
    for (const std::uint32_t index : other.ijk)
      ijk.push_back(first + index);
  }
};

inline TestMesh boxMesh(double x, double y, double z) {
  TestMesh mesh;
  for (int i = 0; i < 8; ++i)
    mesh.xyz.insert(mesh.xyz.end(), {(i & 1) != 0 ? x : 0, (i & 2) != 0 ? y : 0, (i & 4) != 0 ? z : 0});
  mesh.ijk = {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
              2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
  return mesh;
}

inline TestMesh tetrahedronMesh() {
  return {{0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3}};
}

/// A sphere of radius 1: an octahedron whose facets were divided `times` times.
inline TestMesh sphereMesh(int times) {
  TestMesh mesh{{1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1},
                {0, 2, 4, 2, 1, 4, 1, 3, 4, 3, 0, 4, 2, 0, 5, 1, 2, 5, 3, 1, 5, 0, 3, 5}};
  for (; times > 0; --times) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> middles;
    const auto middle = [&](std::uint32_t a, std::uint32_t b) {
      const auto [found, isNew] =
          middles.emplace(std::minmax(a, b), static_cast<std::uint32_t>(mesh.vertexCount()));
      if (isNew) {
        double m[3];
        for (std::size_t k = 0; k < 3; ++k)
          m[k] = mesh.xyz[3 * std::size_t{a} + k] + mesh.xyz[3 * std::size_t{b} + k];
        const double length = std::sqrt(m[0] * m[0] + m[1] * m[1] + m[2] * m[2]);
        mesh.xyz.insert(mesh.xyz.end(), {m[0] / length, m[1] / length, m[2] / length});
      }
      return found->second;
    };
    std::vector<std::uint32_t> finer;
    for (std::size_t i = 0; i < mesh.ijk.size(); i += 3) {
      const std::uint32_t a = mesh.ijk[i];
      const std::uint32_t b = mesh.ijk[i + 1];
      const std::uint32_t c = mesh.ijk[i + 2];
      const std::uint32_t ab = middle(a, b);
      const std::uint32_t bc = middle(b, c);
      const std::uint32_t ca = middle(c, a);
      finer.insert(finer.end(), {a, ab, ca, ab, b, bc, ca, bc, c, ab, bc, ca});
    }
    mesh.ijk = std::move(finer);
  }
  return mesh;
}

/// A sphere with bumps.
inline TestMesh randomMesh(std::mt19937_64& random, int times) {
  TestMesh mesh = sphereMesh(times);
  std::uniform_real_distribution<double> radius(0.7, 1.3);
  for (std::size_t i = 0; i < mesh.xyz.size(); i += 3) {
    const double r = radius(random);
    for (std::size_t k = 0; k < 3; ++k)
      mesh.xyz[i + k] *= r;
  }
  return mesh;
}

/// A ring around the z axis, of 2 * n * m facets.
inline TestMesh torusMesh(int n, int m, double great = 10, double small = 3) {
  const double turn = 6.283185307179586;
  TestMesh mesh;
  mesh.xyz.reserve(static_cast<std::size_t>(n) * static_cast<std::size_t>(m) * 3);
  mesh.ijk.reserve(static_cast<std::size_t>(n) * static_cast<std::size_t>(m) * 6);
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < m; ++j) {
      const double a = turn * i / n;
      const double b = turn * j / m;
      const double r = great + small * std::cos(b);
      mesh.xyz.insert(mesh.xyz.end(), {r * std::cos(a), r * std::sin(a), small * std::sin(b)});
    }
  const auto at = [&](int i, int j) { return static_cast<std::uint32_t>((i % n) * m + j % m); };
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < m; ++j)
      mesh.ijk.insert(mesh.ijk.end(),
                      {at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j), at(i + 1, j + 1), at(i, j + 1)});
  return mesh;
}

/// A shell: `mesh` without itself, scaled about the origin.
inline TestMesh hollow(const TestMesh& mesh, double inner) {
  TestMesh shell = mesh;
  TestMesh cavity = mesh;
  cavity.scaleBy(inner, inner, inner);
  cavity.reverse();
  shell.append(cavity);
  return shell;
}

struct EndInspected {
  void operator()(ztCADInspect_Mesh* mesh) const { ztCADInspect_endMesh(mesh); }
  void operator()(ztCADInspect_Scene* scene) const { ztCADInspect_endScene(scene); }
  void operator()(ztCADInspect_MassTable* table) const { ztCADInspect_endMassTable(table); }
  void operator()(ztCADInspect_Findings* findings) const { ztCADInspect_endFindings(findings); }
  void operator()(ztCADInspect_Index* index) const { ztCADInspect_endIndex(index); }
  void operator()(ztCAD_GMDDocument* document) const { ztCAD_endDocument(document); }
};
using MeshHandle = std::unique_ptr<ztCADInspect_Mesh, EndInspected>;
using SceneHandle = std::unique_ptr<ztCADInspect_Scene, EndInspected>;
using TableHandle = std::unique_ptr<ztCADInspect_MassTable, EndInspected>;
using FindingsHandle = std::unique_ptr<ztCADInspect_Findings, EndInspected>;
using IndexHandle = std::unique_ptr<ztCADInspect_Index, EndInspected>;
using DocumentHandle = std::unique_ptr<ztCAD_GMDDocument, EndInspected>;

inline ztCADInspect_Options defaultOptions() {
  ztCADInspect_Options options;
  ztCADInspect_initOptions(&options, sizeof options);
  return options;
}

inline MeshHandle analysed(const TestMesh& mesh, const ztCADInspect_Options* options = nullptr) {
  return MeshHandle(ztCADInspect_analyseMesh(mesh.xyz.data(), static_cast<std::int64_t>(mesh.vertexCount()),
                                             mesh.ijk.data(), static_cast<std::int64_t>(mesh.facetCount()),
                                             options));
}

inline int massProblem(const TestMesh& mesh, ztCADInspect_MassProperties& mass,
                       const ztCADInspect_Options* options = nullptr) {
  return ztCADInspect_meshMass(analysed(mesh, options).get(), &mass);
}

/// Mass properties of a mesh that has some.
inline ztCADInspect_MassProperties massOf(const TestMesh& mesh,
                                          const ztCADInspect_Options* options = nullptr) {
  ztCADInspect_MassProperties mass = {};
  const int problem = massProblem(mesh, mass, options);
  if (problem != ztCADInspect_MassKnown) mass.mass = std::nan("");
  return mass;
}

/// "rule xcount: places" of each finding.
inline std::vector<std::string> shortened(const ztCADInspect_Findings* findings) {
  std::vector<std::string> result;
  for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings); ++i) {
    const ztCADInspect_Finding& finding = *ztCADInspect_findingAt(findings, i);
    std::string text = finding.rule;
    text += " x" + std::to_string(finding.count);
    const int numbers = finding.placeCount * (finding.placeKind == ztCADInspect_PlaceEdge ? 2 : 1);
    if (numbers > 0) text += ':';
    for (int k = 0; k < numbers; ++k)
      text += ' ' + std::to_string(finding.places[k]);
    result.push_back(text);
  }
  return result;
}
