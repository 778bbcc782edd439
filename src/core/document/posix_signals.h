#pragma once

#include <array>
#include <csignal>

namespace ztcad {

/// Blocks, for this thread and a scope, the signals that a failing write raises and that end a process by
/// default: the failure is reported by the call instead.
class BlockedWriteSignals {
 public:
  BlockedWriteSignals() {
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : watched)
      sigaddset(&blocked, signal);
    sigpending(&m_pendingBefore);
    pthread_sigmask(SIG_BLOCK, &blocked, &m_mask);
  }
  BlockedWriteSignals(const BlockedWriteSignals&) = delete;
  BlockedWriteSignals& operator=(const BlockedWriteSignals&) = delete;
  /// Removes the signals that arrived in the meantime: whoever wrote has seen the error.
  ~BlockedWriteSignals() {
    for (const int signal : watched)
      if (sigismember(&m_pendingBefore, signal) == 0) remove(signal);
    pthread_sigmask(SIG_SETMASK, &m_mask, nullptr);
  }

 private:
  static constexpr std::array watched = {SIGPIPE, SIGXFSZ};

  static void remove(int signal) {
    sigset_t set;
    sigpending(&set);
    if (sigismember(&set, signal) == 0) return;
    sigemptyset(&set);
    sigaddset(&set, signal);
    int received = 0;
    sigwait(&set, &received);  // does not wait: the signal is pending
  }

  sigset_t m_mask = {};
  sigset_t m_pendingBefore = {};
};

}  // namespace ztcad
