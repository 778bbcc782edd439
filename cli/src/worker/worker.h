#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <string>

#include "../check/review_file.h"
#include "../platform/child_process.h"

namespace cli {

/// Reviews files in a child process, which is started when it is needed. A file whose review ends the process
/// or takes too long gets a problem instead of findings; the next file gets a new process.
class Worker {
 public:
  explicit Worker(std::chrono::seconds timeLimit) : m_timeLimit(timeLimit) {}
  /// Ends the process.
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  Review review(const ReviewRequest& request);
  /// Ends the review that is under way, if any, and all that follow. May be called by any thread.
  void stop();

 private:
  void start();
  /// Reads a number of bytes. On failure sets the problem and ends the process.
  bool read(std::string& bytes, std::uint64_t size, ChildProcess::Clock::time_point deadline, Review& review);
  void giveUp(Review& review, bool inTime);

  std::chrono::seconds m_timeLimit;
  std::unique_ptr<ChildProcess> m_process;
  std::mutex m_mutex;  // guards m_isStopped, and changes of m_process
  bool m_isStopped = false;
};

}  // namespace cli
