#include "node_pool.h"

#include <algorithm>
#include <new>
#include <utility>

#include "../support/memory_pages.h"
#include "node_slabs.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)  // GCC
constexpr bool isPooled = false;
#elif defined(__has_feature)
constexpr bool isPooled = !__has_feature(address_sanitizer);  // Clang
#else
constexpr bool isPooled = true;
#endif

constexpr std::size_t alignment = alignof(std::max_align_t);
constexpr std::size_t aligned(std::size_t size) { return (size + alignment - 1) / alignment * alignment; }

}  // namespace

struct ztCAD_NodePool::Block {
  Block* next;
  ztcad::NodeSlab* slab;  // where it lies; null: in memory of its own
};

namespace {

/// Memory in a slab, or of its own if nothing is being read or the slab would be too small.
char* takeMemory(std::size_t size, ztcad::NodeSlab*& slab) {
  auto* const scope = ztcad::NodeSlabScope::innermost();
  slab = nullptr;
  char* const taken = scope ? scope->take(size, slab) : nullptr;
  return taken ? taken : static_cast<char*>(::operator new(size));
}

void giveBack(void* memory, ztcad::NodeSlab* slab) noexcept {
  if (slab)
    slab->release();
  else
    ::operator delete(memory);
}

}  // namespace

ztCAD_NodePool::ztCAD_NodePool(std::size_t size, char* firstNode, ztcad::NodeSlab* slab)
    : m_size(size), m_next(firstNode), m_end(firstNode + size), m_ownSlab(slab), m_lastSlab(slab) {}

/// The pool and its first node are one piece of memory: most containers of small structures have one element.
ztCAD_NodePool* ztCAD_NodePool::make(std::size_t size) {
  constexpr std::size_t start = aligned(sizeof(ztCAD_NodePool));
  ztcad::NodeSlab* slab = nullptr;
  char* const bytes = takeMemory(start + size, slab);
  return new (bytes) ztCAD_NodePool(size, bytes + start, slab);
}

void* ztCAD_NodePool::allocate(ztCAD_NodePool*& pool, std::size_t size) {
  if (!isPooled) return ::operator new(size);
  size = std::max(aligned(size), alignment);
  if (!pool) pool = make(size);
  if (!pool->m_free && pool->m_next == pool->m_end) pool->addNodes();
  ++pool->m_used;
  if (FreeNodes* const nodes = pool->m_free) {
    nodes->end -= size;
    if (nodes->end == reinterpret_cast<char*>(nodes)) pool->m_free = nodes->next;
    return nodes->end;
  }
  return std::exchange(pool->m_next, pool->m_next + size);
}

/// One node in a slab, where the next one is likely to follow it. Otherwise a quarter of the nodes that the
/// list has, so that little is left unused, at most 64 KB. A list that is long enough for the largest blocks
/// is likely to fill them, so their pages are provided at once.
void ztCAD_NodePool::addNodes() {
  if (m_lastSlab && m_lastSlab->extend(m_end, m_size)) {
    m_end += m_size;
    return;
  }
  constexpr std::size_t largest = 65536 - 64;  // with what an allocator adds, whole pages
  constexpr std::size_t start = aligned(sizeof(Block));
  const std::size_t wanted = 1 + m_used / 4;
  const std::size_t most = std::max<std::size_t>(1, (largest - start) / m_size);
  const bool isRead = ztcad::NodeSlabScope::innermost() != nullptr;
  const std::size_t nodes = isRead ? 1 : std::min(wanted, most);
  ztcad::NodeSlab* slab = nullptr;
  char* const bytes = takeMemory(start + nodes * m_size, slab);
  if (!slab && wanted > most) ztcad::providePages(bytes, start + nodes * m_size);
  m_blocks = new (bytes) Block{m_blocks, slab};
  m_lastSlab = slab;
  m_next = bytes + start;
  m_end = m_next + nodes * m_size;
}

void ztCAD_NodePool::freeAny(ztCAD_NodePool*& pool, void* node) noexcept {
  if (!isPooled) return ::operator delete(node);
  if (--pool->m_used > 0) {
    if (pool->m_free && pool->m_free->end == node)
      pool->m_free->end += pool->m_size;
    else
      pool->m_free = new (node) FreeNodes{pool->m_free, static_cast<char*>(node) + pool->m_size};
    return;
  }
  Block* oldest = nullptr;
  for (Block* block = pool->m_blocks; block;)
    oldest = std::exchange(block, std::exchange(block->next, oldest));
  // the oldest first: an allocator that gives the end of its memory back to the system does so once
  giveBack(pool, pool->m_ownSlab);
  pool = nullptr;
  for (Block* block = oldest; block;) {
    Block* const next = block->next;
    giveBack(block, block->slab);
    block = next;
  }
}
