#include "node_slabs.h"

#include <algorithm>
#include <new>
#include <utility>

#include "../support/memory_pages.h"

namespace ztcad {

namespace {

constexpr std::size_t alignment = alignof(std::max_align_t);
constexpr std::size_t headSize = (sizeof(NodeSlab) + alignment - 1) / alignment * alignment;
constexpr std::size_t largestSlab = 32768 - 64;  // with what an allocator adds, whole pages
constexpr std::size_t smallestSlab = 1024;
constexpr std::size_t largestBlock = largestSlab / 16;

thread_local NodeSlabScope* innermostScope = nullptr;

}  // namespace

NodeSlab* NodeSlab::make(std::size_t size) {
  char* const bytes = static_cast<char*>(::operator new(size));
  auto* const slab = new (bytes) NodeSlab;
  slab->m_next = bytes + headSize;
  slab->m_end = bytes + size;
  return slab;
}

void NodeSlab::release() noexcept {
  if (m_users.fetch_sub(1, std::memory_order_acq_rel) > 1) return;
  this->~NodeSlab();
  ::operator delete(this);
}

char* NodeSlab::take(std::size_t size) {
  if (static_cast<std::size_t>(m_end - m_next) < size) return nullptr;
  m_users.fetch_add(1, std::memory_order_relaxed);
  return std::exchange(m_next, m_next + size);
}

NodeSlabScope::NodeSlabScope() : m_outer(std::exchange(innermostScope, this)) {}

NodeSlabScope::~NodeSlabScope() {
  leaveSlab();
  innermostScope = m_outer;
}

NodeSlabScope* NodeSlabScope::innermost() { return innermostScope; }

char* NodeSlabScope::take(std::size_t size, NodeSlab*& slab) {
  slab = nullptr;
  if (size > largestBlock) return nullptr;
  char* block = m_slab ? m_slab->take(size) : nullptr;
  if (!block) {
    addSlab(headSize + size);
    block = m_slab->take(size);
  }
  slab = m_slab;
  return block;
}

/// A quarter of all slabs, so that little is left unused. A document that is large enough for the largest
/// ones is likely to fill them, so their pages are provided at once.
void NodeSlabScope::addSlab(std::size_t leastSize) {
  const std::size_t size = std::clamp(m_total / 4, std::max(smallestSlab, leastSize), largestSlab);
  NodeSlab* const slab = NodeSlab::make(size);
  if (size == largestSlab) providePages(slab, size);
  leaveSlab();
  m_slab = slab;
  m_total += size;
}

void NodeSlabScope::leaveSlab() {
  if (!m_slab) return;
  m_slab->close();
  m_slab->release();
  m_slab = nullptr;
}

}  // namespace ztcad
