#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// A process that runs this program again. The parent writes to its standard input and reads its standard
/// output; its standard error is the parent's. Objects may be used in different threads, each in one.
class ChildProcess {
 public:
  using Clock = std::chrono::steady_clock;
  enum class Read { Data, End, TimedOut };

  /// Starts the program with these arguments. Throws `Failure` if that is not possible.
  static std::unique_ptr<ChildProcess> start(const std::vector<std::string>& arguments);

  /// Kills the process if it still runs.
  virtual ~ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// False if the process does not read any more.
  virtual bool write(std::string_view bytes) = 0;
  /// Reads at least one byte, unless the output has ended or nothing came until the deadline.
  /// @param size capacity of the buffer; output: number of bytes that were read
  virtual Read read(char* buffer, std::size_t& size, Clock::time_point deadline) = 0;
  /// Ends the input of the process, which it reads as the end of its work.
  virtual void closeInput() = 0;
  /// Kills the process if it still runs. May be called by any thread.
  virtual void kill() = 0;
  /// Waits for the end of the process.
  /// @return how it ended, such as "signal 11 (Segmentation fault)" or "exit code 3"
  virtual std::string waitForEnd() = 0;

 protected:
  ChildProcess() = default;
};

}  // namespace cli
