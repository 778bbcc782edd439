#include "vertex_joiner.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <unordered_map>

#include "../failure.h"

namespace cli {

namespace {

std::uint64_t mixed(std::uint64_t hash) {
  hash ^= hash >> 32U;
  hash *= 0x9E3779B97F4A7C15U;
  return hash ^ (hash >> 29U);
}

std::uint64_t hashOf(const std::array<std::uint64_t, 3>& words) {
  return mixed(words[0] + mixed(words[1] + mixed(words[2])));
}

/// The cells of a grid, each as wide as the distance: what is near a vertex is in its cell or next to it.
class Grid {
 public:
  explicit Grid(double width) : m_width(width) {}

  /// The first vertex that was added at most the width away; nothing if there is none.
  std::optional<std::uint32_t> near(const std::vector<double>& vertices, const double* xyz) const {
    std::optional<std::uint32_t> found;
    for (int i = 0; i < 27; ++i) {
      const auto cell = m_cells.find(keyOf(xyz, i % 3 - 1, i / 3 % 3 - 1, i / 9 - 1));
      if (cell == m_cells.end()) continue;
      for (const std::uint32_t index : cell->second) {
        const double* const other = vertices.data() + 3 * std::size_t{index};
        const double distance = std::hypot(other[0] - xyz[0], other[1] - xyz[1], other[2] - xyz[2]);
        if (distance <= m_width && (!found || index < *found)) found = index;
      }
    }
    return found;
  }

  void add(const double* xyz, std::uint32_t index) { m_cells[keyOf(xyz, 0, 0, 0)].push_back(index); }

 private:
  /// A cell by its number on each axis. Two cells of one key only cost time.
  std::uint64_t keyOf(const double* xyz, int x, int y, int z) const {
    const auto word = [this](double value, int step) {
      const double cell = std::floor(value / m_width) + step;
      std::uint64_t bits = 0;
      std::memcpy(&bits, &cell, sizeof bits);
      return cell == 0 ? 0 : bits;
    };
    return hashOf({word(xyz[0], x), word(xyz[1], y), word(xyz[2], z)});
  }

  double m_width;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> m_cells;
};

}  // namespace

std::uint32_t VertexJoiner::add(double x, double y, double z) {
  if (m_slots.size() < m_vertices.size() / 3 * 2 + 2) grow();
  const double xyz[3] = {x + 0.0, y + 0.0, z + 0.0};  // -0 becomes 0
  std::uint32_t& slot = m_slots[slotOf(xyz)];
  if (slot == 0) {
    const std::size_t count = m_vertices.size() / 3;
    if (count >= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
      throw Failure("a mesh has more vertices than a document can hold");
    m_vertices.insert(m_vertices.end(), xyz, xyz + 3);
    slot = static_cast<std::uint32_t>(count + 1);
  }
  return slot - 1;
}

/// The slot of the vertex at this position, or the free one where it belongs.
std::size_t VertexJoiner::slotOf(const double* xyz) const {
  std::array<std::uint64_t, 3> words{};
  std::memcpy(words.data(), xyz, sizeof words);
  const std::size_t mask = m_slots.size() - 1;
  for (std::size_t slot = hashOf(words) & mask;; slot = (slot + 1) & mask) {
    if (m_slots[slot] == 0) return slot;
    std::array<std::uint64_t, 3> others{};
    std::memcpy(others.data(), m_vertices.data() + 3 * (std::size_t{m_slots[slot]} - 1), sizeof others);
    if (others == words) return slot;
  }
}

void VertexJoiner::grow() {
  m_slots.assign(m_slots.empty() ? 1024 : 2 * m_slots.size(), 0);
  for (std::size_t i = 0; i < m_vertices.size() / 3; ++i)
    m_slots[slotOf(m_vertices.data() + 3 * i)] = static_cast<std::uint32_t>(i + 1);
}

std::size_t joinWithin(Mesh& mesh, double distance) {
  Grid grid(distance);
  std::vector<double> vertices;
  std::vector<std::uint32_t> indices(mesh.vertexCount);
  for (std::size_t i = 0; i < mesh.vertexCount; ++i) {
    const double* const xyz = mesh.vertex(i);
    const auto next = static_cast<std::uint32_t>(vertices.size() / 3);
    indices[i] = grid.near(vertices, xyz).value_or(next);
    if (indices[i] < next) continue;
    vertices.insert(vertices.end(), xyz, xyz + 3);
    grid.add(xyz, next);
  }
  std::vector<std::uint32_t> facets;
  for (std::size_t i = 0; i < mesh.facetCount; ++i) {
    const std::uint32_t* const corners = mesh.facet(i);
    const std::uint32_t a = indices.at(corners[0]);
    const std::uint32_t b = indices.at(corners[1]);
    const std::uint32_t c = indices.at(corners[2]);
    const bool wasWhole = corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0];
    if (wasWhole && (a == b || b == c || c == a)) continue;
    facets.insert(facets.end(), {a, b, c});
  }
  const std::size_t removed = mesh.facetCount - facets.size() / 3;
  mesh.own = {std::move(vertices), std::move(facets)};
  mesh.viewOwn();
  return removed;
}

}  // namespace cli
