#include "review_queue.h"

#include <algorithm>
#include <system_error>

#include "../failure.h"

namespace cli {

ReviewQueue::ReviewQueue(std::vector<ReviewRequest> requests, int jobs, std::chrono::seconds timeLimit)
    : m_requests(std::move(requests)), m_reviews(m_requests.size()) {
  const std::size_t threads = std::min(m_requests.size(), static_cast<std::size_t>(std::max(jobs, 1)));
  try {
    while (m_threads.size() < threads) {
      Worker& worker = *m_workers.emplace_back(std::make_unique<Worker>(timeLimit));
      m_threads.emplace_back([this, &worker] { work(worker); });
    }
  } catch (const std::system_error& error) {
    // those that were started do the work
    if (m_threads.empty()) throw Failure(std::string("Cannot start a thread: ") + error.what());
  }
}

ReviewQueue::~ReviewQueue() {
  if (m_nextToReturn < m_requests.size()) {
    m_nextToStart = m_requests.size();
    for (const std::unique_ptr<Worker>& worker : m_workers)
      worker->stop();
  }
  for (std::thread& thread : m_threads)
    thread.join();
}

Review ReviewQueue::next() {
  std::unique_lock<std::mutex> lock(m_mutex);
  std::optional<Review>& review = m_reviews.at(m_nextToReturn++);
  m_isReviewed.wait(lock, [&] { return review.has_value(); });
  Review result = std::move(*review);
  review.reset();
  return result;
}

void ReviewQueue::work(Worker& worker) {
  for (std::size_t index = m_nextToStart++; index < m_requests.size(); index = m_nextToStart++) {
    Review review;
    try {
      review = worker.review(m_requests[index]);
    } catch (const std::bad_alloc&) {
      review.problem = "memory ran out";
    }
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      m_reviews[index] = std::move(review);
    }
    m_isReviewed.notify_one();
  }
}

}  // namespace cli
