#pragma once

#include <atomic>
#include <cstddef>

namespace ztcad {

/// Memory for the nodes of several lists. It is freed when the last block in it is given back, which any
/// thread may do.
class NodeSlab {
 public:
  /// With one user, whoever makes it. Throws `std::bad_alloc`.
  static NodeSlab* make(std::size_t size);
  NodeSlab(const NodeSlab&) = delete;
  NodeSlab& operator=(const NodeSlab&) = delete;
  /// The user no longer needs it. The last one frees it.
  void release() noexcept;

  /// A block, whose owner becomes a user; null if there is no room.
  char* take(std::size_t size);
  /// Makes the last block longer.
  /// @param end of the block
  /// @return false, with nothing changed, for any other block, and if there is no room
  bool extend(const char* end, std::size_t size) {
    if (end != m_next || static_cast<std::size_t>(m_end - m_next) < size) return false;
    m_next += size;
    return true;
  }
  /// Nothing more is taken.
  void close() { m_end = m_next; }

 private:
  NodeSlab() = default;
  ~NodeSlab() = default;

  std::atomic<std::size_t> m_users{1};
  char* m_next = nullptr;
  char* m_end = nullptr;
};

/// While it exists, the lists that this thread fills take their nodes from slabs. Reading fills one list
/// after the other, so the nodes of each lie side by side, without gaps and without a call of the allocator
/// for every few of them. Scopes nest.
class NodeSlabScope {
 public:
  NodeSlabScope();
  NodeSlabScope(const NodeSlabScope&) = delete;
  NodeSlabScope& operator=(const NodeSlabScope&) = delete;
  ~NodeSlabScope();

  /// The innermost one of this thread; null if there is none.
  static NodeSlabScope* innermost();

  /// A block. Throws `std::bad_alloc`.
  /// @param slab output: where the block lies; null if it is too large, with nothing taken
  char* take(std::size_t size, NodeSlab*& slab);

 private:
  void addSlab(std::size_t leastSize);
  void leaveSlab();

  NodeSlabScope* const m_outer;
  NodeSlab* m_slab = nullptr;  // of the last block; null: there is none
  std::size_t m_total = 0;     // of all slabs, in bytes
};

}  // namespace ztcad
