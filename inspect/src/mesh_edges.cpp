#include "mesh_edges.h"

#include <algorithm>
#include <numeric>

#include "parallel.h"

namespace ztcad::inspect {

namespace {

const std::size_t leastWorthThreads = 100000;

void sortFew(std::uint32_t* first, std::uint32_t* last) {
  if (last - first > 24) {
    std::sort(first, last);
    return;
  }
  for (std::uint32_t* i = first; i != last; ++i) {
    const std::uint32_t value = *i;
    std::uint32_t* at = i;
    for (; at != first && *(at - 1) > value; --at)
      *at = *(at - 1);
    *at = value;
  }
}

struct SortedFacet {
  std::uint32_t low;
  std::uint32_t middle;
  std::uint32_t high;

  explicit SortedFacet(const std::uint32_t* facet)
      : low(std::min({facet[0], facet[1], facet[2]})),
        middle(facet[0] ^ facet[1] ^ facet[2]),
        high(std::max({facet[0], facet[1], facet[2]})) {
    middle ^= low ^ high;
  }
  /// Compares facets of the same lowest vertex.
  bool operator<(const SortedFacet& other) const {
    return middle != other.middle ? middle < other.middle : high < other.high;
  }
};

class Matching {
 public:
  Matching(const MeshView& mesh, const std::vector<bool>* isUsed, std::size_t placesKept)
      : m_mesh(mesh), m_isUsed(isUsed), m_placesKept(placesKept) {}

  /// The edges whose smaller vertex is in [first, end).
  /// @tparam Offset counts all edges
  template <class Offset>
  Edges matchFrom(std::uint32_t first, std::uint32_t end) const {
    std::vector<Offset> ends(end - first + std::size_t{1});
    forEachEdge(first, end, [&](std::uint32_t low, std::uint32_t, std::uint32_t) { ++ends[low - first]; });
    Offset sum = 0;
    for (Offset& place : ends) {
      const Offset here = place;
      place = sum;
      sum += here;
    }
    // the greater vertex, and in the lowest bit whether the facet passes from greater to smaller
    std::vector<std::uint32_t> others(sum);
    forEachEdge(first, end, [&](std::uint32_t low, std::uint32_t high, std::uint32_t direction) {
      others[ends[low - first]++] = high << 1U | direction;
    });
    Edges edges;
    Offset start = 0;
    for (std::uint32_t low = first; low < end; ++low) {
      const Offset stop = ends[low - first];
      sortFew(others.data() + start, others.data() + stop);
      for (Offset i = start; i < stop;) {
        Offset next = i + 1;
        while (next < stop && others[next] >> 1U == others[i] >> 1U)
          ++next;
        ++edges.count;
        const Offset facets = next - i;
        if (facets == 1)
          add(edges.open, low, others[i] >> 1U);
        else if (facets > 2)
          add(edges.nonManifold, low, others[i] >> 1U);
        else if (others[i] == others[i + 1])
          add(edges.inconsistent, low, others[i] >> 1U);
        i = next;
      }
      start = stop;
    }
    return edges;
  }

  void add(EdgeList& list, std::int64_t low, std::int64_t high) const {
    ++list.count;
    if (list.places.size() >= 2 * m_placesKept) return;
    list.places.push_back(low);
    list.places.push_back(high);
  }

 private:
  template <class Function>
  void forEachEdge(std::uint32_t first, std::uint32_t end, const Function& function) const {
    const std::uint32_t width = end - first;
    for (std::size_t i = 0; i < m_mesh.facetCount; ++i) {
      if (m_isUsed && !(*m_isUsed)[i]) continue;
      const std::uint32_t* const facet = m_mesh.facet(i);
      const std::uint32_t a = facet[0];
      const std::uint32_t b = facet[1];
      const std::uint32_t c = facet[2];
      const auto edge = [&](std::uint32_t from, std::uint32_t to) {
        const std::uint32_t low = std::min(from, to);
        if (low - first < width) function(low, std::max(from, to), from < to ? 0U : 1U);
      };
      edge(a, b);
      edge(b, c);
      edge(c, a);
    }
  }

  const MeshView& m_mesh;
  const std::vector<bool>* m_isUsed;
  std::size_t m_placesKept;
};

void append(EdgeList& list, const EdgeList& more, std::size_t placesKept) {
  list.count += more.count;
  for (const std::int64_t place : more.places)
    if (list.places.size() < 2 * placesKept) list.places.push_back(place);
}

}  // namespace

Edges findEdges(const MeshView& mesh, const std::vector<bool>* isUsed, std::size_t placesKept, int threads) {
  const Matching matching(mesh, isUsed, placesKept);
  std::size_t parts = mesh.facetCount < leastWorthThreads ? 1 : static_cast<std::size_t>(threads);
  const std::size_t width = mesh.vertexCount / parts + 1;
  const bool is32Enough = mesh.facetCount <= 0xffffffffU / 3;
  std::vector<Edges> found(parts);
  inParallel(parts, threads, [&](std::size_t part) {
    const std::size_t first = std::min(mesh.vertexCount, part * width);
    const std::size_t end = std::min(mesh.vertexCount, first + width);
    if (first >= end) return;
    const auto low = static_cast<std::uint32_t>(first);
    const auto high = static_cast<std::uint32_t>(end);
    found[part] = is32Enough ? matching.matchFrom<std::uint32_t>(low, high)
                             : matching.matchFrom<std::uint64_t>(low, high);
  });
  Edges edges;
  for (const Edges& part : found) {
    edges.count += part.count;
    append(edges.open, part.open, placesKept);
    append(edges.nonManifold, part.nonManifold, placesKept);
    append(edges.inconsistent, part.inconsistent, placesKept);
  }
  return edges;
}

namespace {

/// Facets by their lowest vertices: those of vertex v end at ends[v], where those of v + 1 begin.
struct FacetsByVertex {
  std::vector<std::uint32_t> ends;
  std::vector<std::uint32_t> facets;
};

FacetsByVertex facetsByLowestVertex(const MeshView& mesh, const std::vector<bool>* isUsed) {
  FacetsByVertex result;
  std::vector<std::uint32_t>& ends = result.ends;
  ends.resize(mesh.vertexCount + 1);
  const auto forEach = [&](const auto& function) {
    for (std::size_t i = 0; i < mesh.facetCount; ++i) {
      if (isUsed && !(*isUsed)[i]) continue;
      const std::uint32_t* const facet = mesh.facet(i);
      function(i, std::min({facet[0], facet[1], facet[2]}));
    }
  };
  forEach([&](std::size_t, std::uint32_t low) { ++ends[low]; });
  std::uint32_t sum = 0;
  for (std::uint32_t& place : ends) {
    const std::uint32_t here = place;
    place = sum;
    sum += here;
  }
  result.facets.resize(sum);
  forEach(
      [&](std::size_t i, std::uint32_t low) { result.facets[ends[low]++] = static_cast<std::uint32_t>(i); });
  return result;
}

/// Appends those of a few facets with one lowest vertex that repeat an earlier one.
void compareEach(const MeshView& mesh, const std::uint32_t* first, const std::uint32_t* last,
                 std::vector<std::uint32_t>& repeats) {
  for (const std::uint32_t* i = first + 1; i < last; ++i) {
    const SortedFacet facet(mesh.facet(*i));
    const bool isRepeat = std::any_of(first, i, [&](std::uint32_t other) {
      const SortedFacet earlier(mesh.facet(other));
      return earlier.middle == facet.middle && earlier.high == facet.high;
    });
    if (isRepeat) repeats.push_back(*i);
  }
}

/// The same for many facets, in a time that does not grow with the square of their number.
void compareSorted(const MeshView& mesh, std::uint32_t* first, std::uint32_t* last,
                   std::vector<std::uint32_t>& repeats) {
  const auto less = [&](std::uint32_t a, std::uint32_t b) {
    return SortedFacet(mesh.facet(a)) < SortedFacet(mesh.facet(b));
  };
  std::sort(first, last,
            [&](std::uint32_t a, std::uint32_t b) { return less(a, b) || (!less(b, a) && a < b); });
  for (const std::uint32_t* i = first + 1; i != last; ++i)
    if (!less(*(i - 1), *i)) repeats.push_back(*i);
}

}  // namespace

std::vector<std::uint32_t> findDuplicateFacets(const MeshView& mesh, const std::vector<bool>* isUsed) {
  FacetsByVertex byVertex = facetsByLowestVertex(mesh, isUsed);
  std::vector<std::uint32_t> repeats;
  std::uint32_t start = 0;
  for (std::size_t low = 0; low < mesh.vertexCount; ++low) {
    std::uint32_t* const first = byVertex.facets.data() + start;
    start = byVertex.ends[low];
    std::uint32_t* const last = byVertex.facets.data() + start;
    if (last - first < 2) continue;
    if (last - first <= 8)
      compareEach(mesh, first, last, repeats);
    else
      compareSorted(mesh, first, last, repeats);
  }
  std::sort(repeats.begin(), repeats.end());
  return repeats;
}

std::int64_t countShells(const MeshView& mesh, const std::vector<bool>* isUsed) {
  std::vector<std::uint32_t> parents(mesh.vertexCount);
  std::iota(parents.begin(), parents.end(), 0U);
  const auto rootOf = [&](std::uint32_t vertex) {
    while (parents[vertex] != vertex) {
      parents[vertex] = parents[parents[vertex]];
      vertex = parents[vertex];
    }
    return vertex;
  };
  std::vector<bool> isInFacet(mesh.vertexCount);
  std::int64_t shells = 0;
  for (std::size_t i = 0; i < mesh.facetCount; ++i) {
    if (isUsed && !(*isUsed)[i]) continue;
    const std::uint32_t* const facet = mesh.facet(i);
    std::uint32_t root = facet[0];
    for (int corner = 0; corner < 3; ++corner) {
      if (!isInFacet[facet[corner]]) {
        isInFacet[facet[corner]] = true;
        ++shells;
      }
    }
    root = rootOf(root);
    for (int corner = 1; corner < 3; ++corner) {
      const std::uint32_t other = rootOf(facet[corner]);
      if (other == root) continue;
      // the smaller index becomes the root: neighbours in memory stay neighbours
      parents[std::max(root, other)] = std::min(root, other);
      root = std::min(root, other);
      --shells;
    }
  }
  return shells;
}

}  // namespace ztcad::inspect
