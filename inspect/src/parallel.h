#pragma once

#include <atomic>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace ztcad::inspect {

/// The number of threads for options: as many as the machine runs at once for 0 or less. At most 64.
inline int threadCount(int wanted) {
  const int most = 64;
  if (wanted <= 0) wanted = static_cast<int>(std::thread::hardware_concurrency());
  return wanted < 1 ? 1 : (wanted > most ? most : wanted);
}

/// Calls `task(0)` to `task(count - 1)`, each once, on up to `threads` threads, the calling one included. The
/// tasks must not depend on each other; results have the same bits if each task writes only its own. Threads
/// that the system does not grant are done without. The first exception is thrown again at the end.
template <class Task>
void inParallel(std::size_t count, int threads, const Task& task) {
  if (threads <= 1 || count <= 1) {
    for (std::size_t i = 0; i < count; ++i)
      task(i);
    return;
  }
  std::atomic<std::size_t> next{0};
  std::exception_ptr thrown;
  std::mutex guard;
  const auto work = [&] {
    try {
      for (std::size_t i = next++; i < count; i = next++)
        task(i);
    } catch (...) {
      const std::lock_guard<std::mutex> lock(guard);
      if (!thrown) thrown = std::current_exception();
      next = count;
    }
  };
  std::vector<std::thread> others;
  others.reserve(static_cast<std::size_t>(threads) - 1);
  try {
    while (others.size() + 1 < static_cast<std::size_t>(threads) && others.size() + 1 < count)
      others.emplace_back(work);
  } catch (const std::system_error&) {
    // fewer threads
  }
  work();
  for (std::thread& other : others)
    other.join();
  if (thrown) std::rethrow_exception(thrown);
}

}  // namespace ztcad::inspect
