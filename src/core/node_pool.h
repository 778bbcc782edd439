#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "../support/export.h"
#include "elements_ahead.h"

/// @file
/// Memory of the containers' nodes.

namespace ztcad {
class NodeSlab;
}

/// The nodes of one list, in blocks that grow from one node to 64 KB: a node costs no memory but its own.
/// Removed nodes are used again; all memory is freed with the last node.
///
/// The blocks of lists that are read from a file lie side by side in slabs of up to 32 KB. Each slab is freed
/// with the last of the lists in it.
///
/// In a build with the address sanitizer each node is an allocation of its own, so that the use of a
/// destroyed element is found.
class ZTCAD_API ztCAD_NodePool {
 public:
  /// Memory for one node, of the same size in all calls for a pool. Throws `std::bad_alloc`.
  /// @param pool null makes a pool, which is returned here
  static void* allocate(ztCAD_NodePool*& pool, std::size_t size);
  /// Releases a node; the last one destroys the pool and sets `pool` to null.
  static void free(ztCAD_NodePool*& pool, void* node) noexcept {
    // inline: deleting a long list takes little more than these lines for each node
    if (pool && pool->m_free && pool->m_free->end == node && pool->m_used > 1) {
      --pool->m_used;
      pool->m_free->end += pool->m_size;
    } else {
      freeAny(pool, node);
    }
  }

  ztCAD_NodePool(const ztCAD_NodePool&) = delete;
  ztCAD_NodePool& operator=(const ztCAD_NodePool&) = delete;

 private:
  struct Block;
  /// Free nodes side by side; lies in the first one. The nodes of a list that is cleared are not written to,
  /// but for a few: that would take longer than all else.
  struct FreeNodes {
    FreeNodes* next;
    char* end;
  };

  ztCAD_NodePool(std::size_t size, char* firstNode, ztcad::NodeSlab* slab);
  static ztCAD_NodePool* make(std::size_t size);
  void addNodes();
  static void freeAny(ztCAD_NodePool*& pool, void* node) noexcept;

  std::size_t m_size;           // of a node
  std::size_t m_used = 0;       // nodes that the list has
  FreeNodes* m_free = nullptr;  // nodes that were given back
  char* m_next = nullptr;       // the part of the last block that was never used
  char* m_end = nullptr;
  Block* m_blocks = nullptr;         // the last one first; the pool lies before them, with the first node
  ztcad::NodeSlab* const m_ownSlab;  // where the pool lies; null: in memory of its own
  ztcad::NodeSlab* m_lastSlab;       // where the last block lies
};

/// The allocator of a list whose nodes lie in a pool of its own. A copy has no pool, so it is no allocator as
/// the standard describes one; the lists of libstdc++ are written for it (they allocate and free by the one
/// allocator that they hold), and no other list uses it.
template <typename T>
class ztCAD_PoolAllocator {
 public:
  /// What the standard asks of an allocator.
  /// @{
  using value_type = T;
  using is_always_equal = std::false_type;
  using propagate_on_container_swap = std::true_type;
  using propagate_on_container_move_assignment = std::true_type;
  using propagate_on_container_copy_assignment = std::false_type;
  /// @}

  ztCAD_PoolAllocator() noexcept = default;
  /// Copies belong to other lists and get pools of their own.
  /// @{
  template <typename Other>
  explicit ztCAD_PoolAllocator(const ztCAD_PoolAllocator<Other>& /*other*/) noexcept {}
  ztCAD_PoolAllocator(const ztCAD_PoolAllocator& /*other*/) noexcept {}
  ztCAD_PoolAllocator& operator=(const ztCAD_PoolAllocator& other) = delete;
  /// @}
  /// Takes the pool of `other`, which has none afterwards.
  /// @{
  ztCAD_PoolAllocator(ztCAD_PoolAllocator&& other) noexcept : m_pool(std::exchange(other.m_pool, nullptr)) {}
  ztCAD_PoolAllocator& operator=(ztCAD_PoolAllocator&& other) noexcept {
    m_pool = std::exchange(other.m_pool, nullptr);
    return *this;
  }
  /// @}
  ~ztCAD_PoolAllocator() = default;  // the list has released all nodes, which destroyed the pool

  /// Memory for one node. Throws `std::bad_alloc`, also if `count` is not 1.
  T* allocate(std::size_t count) {
    static_assert(alignof(T) <= alignof(std::max_align_t));
    if (count != 1) throw std::bad_alloc();
    return static_cast<T*>(ztCAD_NodePool::allocate(m_pool, sizeof(T)));
  }
  /// Destroys a node, or its element. An element that says that it owns nothing is left as it is: its
  /// destructors would only write to memory that is about to be freed.
  template <typename Object>
  void destroy(Object* object) noexcept {
    if constexpr (HasOwnsNothing<Object>::value) {
      ztcad::prefetchElementAfter(*object);
      if (object->ownsNothing()) return;
    }
    object->~Object();
  }
  /// Gives the memory of a node back.
  void deallocate(T* node, std::size_t /*one*/) noexcept { ztCAD_NodePool::free(m_pool, node); }

  /// Whether one may free the nodes of the other: they have one pool, or none.
  /// @{
  friend bool operator==(const ztCAD_PoolAllocator& a, const ztCAD_PoolAllocator& b) {
    return a.m_pool == b.m_pool;
  }
  friend bool operator!=(const ztCAD_PoolAllocator& a, const ztCAD_PoolAllocator& b) { return !(a == b); }
  /// @}

 private:
  template <typename Object, typename = bool>
  struct HasOwnsNothing : std::false_type {};
  template <typename Object>
  struct HasOwnsNothing<Object, decltype(std::declval<const Object&>().ownsNothing())> : std::true_type {};

  ztCAD_NodePool* m_pool = nullptr;  // null: the list has no nodes
};

/// The allocator of the containers' lists.
/// @{
#if defined(__GLIBCXX__)
template <typename T>
using ztCAD_NodeAllocator = ztCAD_PoolAllocator<T>;
#else
template <typename T>
using ztCAD_NodeAllocator = std::allocator<T>;
#endif
/// @}
