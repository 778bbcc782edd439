#include "worker.h"

#include <algorithm>

#include "../failure.h"
#include "message.h"
#include "serve.h"

namespace cli {

Worker::~Worker() {
  if (!m_process) return;
  m_process->closeInput();
  char byte = 0;
  std::size_t size = 1;
  constexpr std::chrono::seconds grace(10);
  m_process->read(&byte, size, ChildProcess::Clock::now() + grace);
}

void Worker::stop() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_isStopped = true;
  if (m_process) m_process->kill();
}

void Worker::start() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_isStopped) throw Failure("the program ends");
  if (!m_process) m_process = ChildProcess::start({workerCommand});
}

Review Worker::review(const ReviewRequest& request) {
  Review result;
  try {
    start();
  } catch (const Failure& failure) {
    result.problem = failure.what();
    return result;
  }
  const auto deadline = ChildProcess::Clock::now() + m_timeLimit;
  std::string header;
  std::string message;
  m_process->write(
      framed(toMessage(request)));  // a process that does not read any more does not answer either
  if (!read(header, frameHeaderSize, deadline, result)) return result;
  if (!read(message, lengthIn(header.data()), deadline, result)) return result;
  if (auto review = reviewFrom(message)) return std::move(*review);
  giveUp(result, true);
  return result;
}

bool Worker::read(std::string& bytes, std::uint64_t size, ChildProcess::Clock::time_point deadline,
                  Review& review) {
  constexpr std::uint64_t piece = 1 << 20;
  while (bytes.size() < size) {
    const std::size_t before = bytes.size();
    std::size_t count = std::min(piece, size - before);
    bytes.resize(before + count);
    const ChildProcess::Read result = m_process->read(bytes.data() + before, count, deadline);
    if (result != ChildProcess::Read::Data) {
      giveUp(review, result == ChildProcess::Read::End);
      return false;
    }
    bytes.resize(before + count);
  }
  return true;
}

void Worker::giveUp(Review& review, bool inTime) {
  if (!inTime) {
    review.problem = "the check took more than " + std::to_string(m_timeLimit.count()) + " s";
    m_process->kill();
  } else {
    m_process->closeInput();
    review.problem = "the check ended its process: " + m_process->waitForEnd();
  }
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_process.reset();
}

}  // namespace cli
