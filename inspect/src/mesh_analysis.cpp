#include "mesh_analysis.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "mesh_edges.h"
#include "mesh_integral.h"
#include "parallel.h"
#include "repeats.h"

namespace ztcad::inspect {

namespace {

std::uint64_t bitsOf(double value) {
  value += 0.0;  // -0 is where 0 is
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

std::uint64_t turned(std::uint64_t bits, unsigned by) { return bits << by | bits >> (64 - by); }

std::vector<std::uint32_t> coincidentVertices(const MeshView& mesh, bool haveAllValues) {
  const Repeats repeats(
      mesh.vertexCount, [&](std::size_t i) { return haveAllValues || mesh.hasValue(i); },
      [&](std::size_t i) {
        const double* const v = mesh.vertex(i);
        // turned, or the signs of mirrored positions would cancel
        return mixed(bitsOf(v[0]) * 0x9e3779b97f4a7c15U ^ turned(bitsOf(v[1]) * 0xc2b2ae3d27d4eb4fU, 21) ^
                     turned(bitsOf(v[2]) * 0x165667b19e3779f9U, 42));
      },
      [&](std::size_t a, std::size_t b) {
        const double* const v = mesh.vertex(a);
        const double* const w = mesh.vertex(b);
        if (v[0] != w[0]) return v[0] < w[0];
        return v[1] != w[1] ? v[1] < w[1] : v[2] < w[2];
      });
  return repeats.find();
}

/// A list of which only the first places are kept.
struct Places {
  std::int64_t count = 0;
  FindingPlaces first;

  explicit Places(int kind) { first.kind = kind; }
  void add(std::size_t index) {
    ++count;
    if (first.indices.size() < placesKept) first.indices.push_back(static_cast<std::int64_t>(index));
  }
  template <class Index>
  void addAll(const std::vector<Index>& indices) {
    for (const Index index : indices)
      add(static_cast<std::size_t>(index));
  }
};

/// What is wrong with single vertices and facets.
struct Parts {
  Box box;
  Places valueless{ztCADInspect_PlaceVertex};
  Places outOfRange{ztCADInspect_PlaceFacet};
  Places repeatedIndex{ztCADInspect_PlaceFacet};
  Places unused{ztCADInspect_PlaceVertex};
  std::optional<std::vector<bool>> isUsed;  // facets of the surface; none: all

  const std::vector<bool>* used() const { return isUsed ? &*isUsed : nullptr; }
};

Parts partsOf(const MeshView& mesh) {
  Parts parts;
  for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
    if (mesh.hasValue(i))
      parts.box.add(mesh.vertex(i));
    else
      parts.valueless.add(i);
  }
  Bits isInFacet(mesh.vertexCount + 1);
  const auto leaveOut = [&](std::size_t facet) {
    if (!parts.isUsed) parts.isUsed.emplace(mesh.facetCount, true);
    (*parts.isUsed)[facet] = false;
  };
  for (std::size_t i = 0; i < mesh.facetCount; ++i) {
    const std::uint32_t* const facet = mesh.facet(i);
    if (!mesh.isInRange(i)) {
      parts.outOfRange.add(i);
      leaveOut(i);
      continue;
    }
    for (int corner = 0; corner < 3; ++corner)
      isInFacet.set(facet[corner]);
    if (facet[0] == facet[1] || facet[1] == facet[2] || facet[2] == facet[0]) {
      parts.repeatedIndex.add(i);
      leaveOut(i);
    } else if (parts.valueless.count > 0 &&
               !(mesh.hasValue(facet[0]) && mesh.hasValue(facet[1]) && mesh.hasValue(facet[2]))) {
      leaveOut(i);
    }
  }
  for (std::size_t i = 0; i < mesh.vertexCount; ++i)
    if (!isInFacet.test(i)) parts.unused.add(i);
  return parts;
}

int problemOf(const ztCADInspect_MeshState& state, const SolidIntegrals& integrals) {
  if (state.facetCount == 0) return ztCADInspect_MassNoFacets;
  if (state.outOfRangeFacets > 0) return ztCADInspect_MassBadIndex;
  if (state.valuelessVertices > 0) return ztCADInspect_MassNoValue;
  if (state.openEdges > 0) return ztCADInspect_MassOpen;
  if (state.nonManifoldEdges > 0) return ztCADInspect_MassNonManifold;
  if (state.inconsistentEdges > 0) return ztCADInspect_MassWinding;
  if (!integrals.hasVolume) return ztCADInspect_MassNoVolume;
  return integrals.volume < 0 ? ztCADInspect_MassInsideOut : ztCADInspect_MassKnown;
}

void report(MeshAnalysis& analysis, Parts& parts, Places& degenerate, Places& duplicates, Places& coincident,
            Edges& edges, double volume, const Subject& subject) {
  FindingList& list = analysis.findings;
  const auto addPlaces = [&](Rule rule, Places& places, const std::string& more = {}) {
    if (places.count > 0)
      list.add(rule, subject, nullptr, {numberText(places.count), more}, places.count,
               std::move(places.first));
  };
  const auto addEdges = [&](Rule rule, EdgeList& found) {
    if (found.count > 0)
      list.add(rule, subject, nullptr, {numberText(found.count), numberText(edges.count)}, found.count,
               {ztCADInspect_PlaceEdge, std::move(found.places)});
  };
  if (parts.valueless.count > 0)
    list.add(Rule::no_value, subject, nullptr, {"list of vertices", numberText(parts.valueless.count)},
             parts.valueless.count, std::move(parts.valueless.first));
  addPlaces(Rule::index_out_of_range, parts.outOfRange, numberText(analysis.state.vertexCount));
  addPlaces(Rule::degenerate_facet, degenerate);
  addPlaces(Rule::duplicate_facet, duplicates);
  addEdges(Rule::open_edge, edges.open);
  addEdges(Rule::non_manifold_edge, edges.nonManifold);
  addEdges(Rule::inconsistent_winding, edges.inconsistent);
  if (analysis.state.isInsideOut != 0) list.add(Rule::inside_out, subject, nullptr, {numberText(volume)});
  addPlaces(Rule::coincident_vertices, coincident);
  addPlaces(Rule::unused_vertex, parts.unused);
  if (analysis.state.shells > 1)
    list.add(Rule::several_shells, subject, nullptr, {numberText(analysis.state.shells)});
}

}  // namespace

MeshView viewOf(const ztCAD_Base* solid) {
  MeshView view;
  const ztCAD_Vertices* const vertices = ztCAD_getVertices(solid);
  const ztCAD_Faces* const faces = ztCAD_getFaces(solid);
  view.vertices = ztCAD_getVertexData(vertices);
  view.vertexCount = static_cast<std::size_t>(ztCAD_getVertexCount(vertices));
  view.facets = ztCAD_getFacetData(faces);
  view.facetCount = static_cast<std::size_t>(ztCAD_getFacetCount(faces));
  return view;
}

namespace {

/// What is known before the pass over the facets.
ztCADInspect_MeshState stateOf(const MeshView& mesh, const Parts& parts, const Edges& edges) {
  ztCADInspect_MeshState state = {};
  state.vertexCount = static_cast<std::int64_t>(mesh.vertexCount);
  state.facetCount = static_cast<std::int64_t>(mesh.facetCount);
  state.valuelessVertices = parts.valueless.count;
  state.outOfRangeFacets = parts.outOfRange.count;
  state.unusedVertices = parts.unused.count;
  state.edges = edges.count;
  state.openEdges = edges.open.count;
  state.nonManifoldEdges = edges.nonManifold.count;
  state.inconsistentEdges = edges.inconsistent.count;
  std::copy(parts.box.low, parts.box.low + 3, state.boxLow);
  std::copy(parts.box.high, parts.box.high + 3, state.boxHigh);
  state.isClosed = edges.count > 0 && edges.open.count == 0 && edges.nonManifold.count == 0 &&
                           edges.inconsistent.count == 0 && parts.outOfRange.count == 0 &&
                           parts.valueless.count == 0
                       ? 1
                       : 0;
  return state;
}

/// Facets without an area. Those with an index twice are not on the surface, but degenerate too.
Places degenerateFacets(const FacetPass& pass, const Parts& parts) {
  std::vector<std::int64_t> places = pass.degeneratePlaces;
  places.insert(places.end(), parts.repeatedIndex.first.indices.begin(),
                parts.repeatedIndex.first.indices.end());
  std::sort(places.begin(), places.end());
  Places degenerate(ztCADInspect_PlaceFacet);
  degenerate.addAll(places);
  degenerate.count = pass.degenerate + parts.repeatedIndex.count;
  return degenerate;
}

}  // namespace

MeshAnalysis analyse(const MeshView& mesh, const Subject& subject, const Settings& settings) {
  MeshAnalysis analysis;
  const int threads = threadCount(settings.values.threads);
  Parts parts = partsOf(mesh);

  Places coincident(ztCADInspect_PlaceVertex);
  Places duplicates(ztCADInspect_PlaceFacet);
  inParallel(2, threads, [&](std::size_t task) {
    if (task == 0)
      coincident.addAll(coincidentVertices(mesh, parts.valueless.count == 0));
    else
      duplicates.addAll(findDuplicateFacets(mesh, parts.used()));
  });
  Edges edges = findEdges(mesh, parts.used(), placesKept, threads);

  ztCADInspect_MeshState& state = analysis.state;
  state = stateOf(mesh, parts, edges);
  state.duplicateFacets = duplicates.count;
  state.coincidentVertices = coincident.count;

  FacetPass pass;
  inParallel(2, threads, [&](std::size_t task) {
    if (task == 0)
      state.shells = countShells(mesh, parts.used());
    else
      pass = passOverFacets(mesh, parts.used(), parts.box, settings.values.degenerateTolerance, placesKept,
                            state.isClosed != 0, std::max(1, threads - 1));
  });
  Places degenerate = degenerateFacets(pass, parts);
  state.degenerateFacets = degenerate.count;

  const SolidIntegrals& integrals = pass.integrals;
  state.isInsideOut = state.isClosed != 0 && integrals.hasVolume && integrals.volume < 0 ? 1 : 0;
  analysis.massProblem = problemOf(state, integrals);
  if (analysis.massProblem == ztCADInspect_MassKnown) {
    analysis.mass = massOf(integrals, pass.area, settings);
    if (!isFinite(analysis.mass)) analysis.massProblem = ztCADInspect_MassNoValue;
  }
  report(analysis, parts, degenerate, duplicates, coincident, edges, integrals.volume, subject);
  return analysis;
}

}  // namespace ztcad::inspect
