#include "failing_memory.h"

#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr long unlimited = -1;
std::atomic<long> grantsLeft{unlimited};  // 0: the next allocation fails
std::atomic<bool> failsPermanently{false};
std::atomic<bool> failed{false};

std::atomic<const char*> watchedDocument{nullptr};
std::atomic<const char*> watchedElement{nullptr};

bool isQt(const void* code) {
  Dl_info module = {};
  return dladdr(code, &module) != 0 && module.dli_fname && std::strstr(module.dli_fname, "/libQt");
}

bool mustFail(const void* caller) {
  if (grantsLeft == unlimited || isQt(caller)) return false;
  if (grantsLeft > 0) {
    --grantsLeft;
    return false;
  }
  if (!failsPermanently) grantsLeft = unlimited;
  failed = true;
  return true;
}

void* allocate(std::size_t size, const void* caller) noexcept {
  return mustFail(caller) ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size, const void* caller) {
  void* const memory = allocate(size, caller);
  if (!memory) throw std::bad_alloc();
  return memory;
}

void printIfInside(const char* begin, const char* end, const char* watched, const char* text,
                   std::size_t size) {
  if (watched && begin <= watched && watched < end && write(STDERR_FILENO, text, size) < 0) std::abort();
}

void release(void* memory) noexcept {
  const auto* begin = static_cast<const char*>(memory);
  const char* end = begin + (memory ? malloc_usable_size(memory) : 0);
  printIfInside(begin, end, watchedDocument, "document released\n", 18);
  printIfInside(begin, end, watchedElement, "element released\n", 17);
  std::free(memory);
}

}  // namespace

FailingMemory::FailingMemory(long granted, Mode mode) {
  failed = false;
  failsPermanently = mode == Mode::Permanently;
  grantsLeft = granted;
}

FailingMemory::~FailingMemory() { grantsLeft = unlimited; }

bool FailingMemory::hasFailed() const { return failed; }

void printWhenReleased(const void* document, const void* element) {
  watchedDocument = static_cast<const char*>(document);
  watchedElement = static_cast<const char*>(element);
}

void* operator new(std::size_t size) { return allocateOrThrow(size, __builtin_return_address(0)); }
void* operator new[](std::size_t size) { return allocateOrThrow(size, __builtin_return_address(0)); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size, __builtin_return_address(0));
}
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { release(memory); }
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept { release(memory); }
