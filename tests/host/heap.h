#pragma once

#include <cstddef>

#if defined(_WIN32)
#include <malloc.h>
#elif defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // GCC does not install its header
#else
#include <malloc.h>
#endif

/// Bytes currently allocated on the heap of this process.
inline std::size_t heapInUse() {
#if defined(_WIN32)
  std::size_t inUse = 0;
  _HEAPINFO block{};
  while (_heapwalk(&block) == _HEAPOK)
    if (block._useflag == _USEDENTRY) inUse += block._size;
  return inUse;
#elif defined(__SANITIZE_ADDRESS__)
  return __sanitizer_get_current_allocated_bytes();
#else
  const auto heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
#endif
}

/// Allocations made while the object lives leak by design, and the leak sanitizer does not report them.
class IntendedLeak {
 public:
  IntendedLeak() {
#if defined(__SANITIZE_ADDRESS__)
    __lsan_disable();
#endif
  }
  ~IntendedLeak() {
#if defined(__SANITIZE_ADDRESS__)
    __lsan_enable();
#endif
  }
  IntendedLeak(const IntendedLeak&) = delete;
  IntendedLeak& operator=(const IntendedLeak&) = delete;
};
