#include "node_pool.h"

#include <algorithm>
#include <new>
#include <utility>

#include "../support/memory_pages.h"

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
};

struct ztCAD_NodePool::FreeNode {
  FreeNode* next;
};

void* ztCAD_NodePool::allocate(ztCAD_NodePool*& pool, std::size_t size) {
  if (!isPooled) return ::operator new(size);
  size = std::max(aligned(size), alignment);
  if (!pool) {
    // the pool and its first node are one allocation: most containers of small structures have one element
    constexpr std::size_t start = aligned(sizeof(ztCAD_NodePool));
    char* const bytes = static_cast<char*>(::operator new(start + size));
    pool = new (bytes) ztCAD_NodePool;
    pool->m_next = bytes + start;
    pool->m_end = pool->m_next + size;
  }
  if (!pool->m_free && pool->m_next == pool->m_end) pool->addBlock(size);
  ++pool->m_used;
  if (FreeNode* const node = pool->m_free) {
    pool->m_free = node->next;
    return node;
  }
  return std::exchange(pool->m_next, pool->m_next + size);
}

/// A quarter of the nodes that the list has, so that little is left unused, at most 64 KB. A list that is
/// long enough for the largest blocks is likely to fill them, so their pages are provided at once.
void ztCAD_NodePool::addBlock(std::size_t size) {
  constexpr std::size_t largest = 65536 - 64;  // with what an allocator adds, whole pages
  constexpr std::size_t start = aligned(sizeof(Block));
  const std::size_t wanted = 1 + m_used / 4;
  const std::size_t most = std::max<std::size_t>(1, (largest - start) / size);
  const std::size_t nodes = std::min(wanted, most);
  char* const bytes = static_cast<char*>(::operator new(start + nodes * size));
  if (wanted > most) ztcad::providePages(bytes, start + nodes * size);
  m_blocks = new (bytes) Block{m_blocks};
  m_next = bytes + start;
  m_end = m_next + nodes * size;
}

void ztCAD_NodePool::free(ztCAD_NodePool*& pool, void* node) noexcept {
  if (!isPooled) return ::operator delete(node);
  if (--pool->m_used > 0) {
    pool->m_free = new (node) FreeNode{pool->m_free};
    return;
  }
  for (Block* block = pool->m_blocks; block;)
    ::operator delete(std::exchange(block, block->next));
  ::operator delete(std::exchange(pool, nullptr));
}
