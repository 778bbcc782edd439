#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "../check/review_file.h"
#include "worker.h"

namespace cli {

/// Reviews files by several workers at the same time. The reviews come in the order of the files.
class ReviewQueue {
 public:
  /// @param jobs number of workers, at least 1; no more are started than there are files. Throws `Failure` if
  ///             the system starts no thread
  ReviewQueue(std::vector<ReviewRequest> requests, int jobs, std::chrono::seconds timeLimit);
  /// Ends the reviews that are under way.
  ~ReviewQueue();
  ReviewQueue(const ReviewQueue&) = delete;
  ReviewQueue& operator=(const ReviewQueue&) = delete;

  /// Waits for the review of the next file. Called once for each file.
  Review next();

 private:
  void work(Worker& worker);

  const std::vector<ReviewRequest> m_requests;
  std::atomic<std::size_t> m_nextToStart{0};
  std::size_t m_nextToReturn = 0;
  std::mutex m_mutex;
  std::condition_variable m_isReviewed;
  std::vector<std::optional<Review>> m_reviews;  // guarded by m_mutex
  std::vector<std::unique_ptr<Worker>> m_workers;
  std::vector<std::thread> m_threads;
};

}  // namespace cli
