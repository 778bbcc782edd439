#include "refused_allocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

// The allocator of glibc, under the names that it exports for replacements.
extern "C" {
void* __libc_malloc(std::size_t size);                           // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);        // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* memory, std::size_t size);            // NOLINT(bugprone-reserved-identifier)
void* __libc_memalign(std::size_t alignment, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
}

namespace {

// Atomic, because OpenMP may allocate in another thread. Constant-initialised: malloc runs before main.
std::atomic<bool> counts{false};
std::atomic<long> count{0};
std::atomic<long> refused{0};
std::atomic<bool> refusesLaterOnes{false};

bool mustRefuse() {
  if (!counts) return false;
  const long number = ++count;
  const bool refuse = refused > 0 && (number == refused || (refusesLaterOnes && number > refused));
  if (refuse) errno = ENOMEM;
  return refuse;
}

}  // namespace

void refused_allocations::start(long nth, Mode mode) {
  count = 0;
  refused = nth;
  refusesLaterOnes = mode == Mode::FromThereOn;
  counts = true;
}

long refused_allocations::stop() {
  counts = false;
  return count;
}

extern "C" {

void* malloc(std::size_t size) { return mustRefuse() ? nullptr : __libc_malloc(size); }

void* calloc(std::size_t number, std::size_t size) {
  return mustRefuse() ? nullptr : __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size) {
  return size > 0 && mustRefuse() ? nullptr : __libc_realloc(memory, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
  return mustRefuse() ? nullptr : __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return mustRefuse() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  void* const made = mustRefuse() ? nullptr : __libc_memalign(alignment, size);
  if (!made) return ENOMEM;
  *memory = made;
  return 0;
}

}  // extern "C"
