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

constexpr long never = -1;
std::atomic<long> grantsLeft{never};  // 0: the next one is refused
std::atomic<bool> refusesForGood{false};
std::atomic<bool> refused{false};

std::atomic<const char*> watchedDocument{nullptr};
std::atomic<const char*> watchedElement{nullptr};

bool isQt(const void* code) {
  Dl_info module = {};
  return dladdr(code, &module) != 0 && module.dli_fname && std::strstr(module.dli_fname, "/libQt5");
}

bool isRefused(const void* caller) {
  if (grantsLeft == never || isQt(caller)) return false;
  if (grantsLeft > 0) {
    --grantsLeft;
    return false;
  }
  if (!refusesForGood) grantsLeft = never;
  refused = true;
  return true;
}

void* allocate(std::size_t size, const void* caller) noexcept {
  return isRefused(caller) ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size, const void* caller) {
  void* const memory = allocate(size, caller);
  if (!memory) throw std::bad_alloc();
  return memory;
}

void tellIfInside(const char* begin, const char* end, const char* watched, const char* text,
                  std::size_t size) {
  if (watched && begin <= watched && watched < end && write(STDERR_FILENO, text, size) < 0) std::abort();
}

void release(void* memory) noexcept {
  const auto* begin = static_cast<const char*>(memory);
  const char* end = begin + (memory ? malloc_usable_size(memory) : 0);
  tellIfInside(begin, end, watchedDocument, "document released\n", 18);
  tellIfInside(begin, end, watchedElement, "element released\n", 17);
  std::free(memory);
}

}  // namespace

FailingMemory::FailingMemory(long granted, Mode mode) {
  refused = false;
  refusesForGood = mode == Mode::ForGood;
  grantsLeft = granted;
}

FailingMemory::~FailingMemory() { grantsLeft = never; }

bool FailingMemory::hasRefused() const { return refused; }

void tellWhenReleased(const void* document, const void* element) {
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
