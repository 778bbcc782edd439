#pragma once

#include <cstddef>

#if defined(_WIN32)
#include <malloc.h>
#elif defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // GCC installs no header for it
#else
#include <malloc.h>
#endif

/// Bytes that this process has on the heap at the moment.
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

/// What is allocated while one of these lives is lost by agreement and is no finding of the leak check.
class LeakIsMeant {
 public:
  LeakIsMeant() {
#if defined(__SANITIZE_ADDRESS__)
    __lsan_disable();
#endif
  }
  ~LeakIsMeant() {
#if defined(__SANITIZE_ADDRESS__)
    __lsan_enable();
#endif
  }
  LeakIsMeant(const LeakIsMeant&) = delete;
  LeakIsMeant& operator=(const LeakIsMeant&) = delete;
};
