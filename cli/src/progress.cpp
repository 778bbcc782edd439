#include "progress.h"

#include <cstdio>

#include "platform/standard_streams.h"

namespace cli {

Progress::Progress(std::size_t total)
    : m_total(total),
      m_isTerminal(isTerminal(stderr)),
      m_nextUpdate(Clock::now() + std::chrono::seconds(1)) {}

void Progress::advance() {
  ++m_done;
  if (!m_isTerminal || m_done == m_total || Clock::now() < m_nextUpdate) return;
  std::fprintf(stderr, "\r%zu of %zu documents", m_done, m_total);
  std::fflush(stderr);
  m_isShown = true;
}

void Progress::hide() {
  if (!m_isShown) return;
  std::fputs("\r\x1b[K", stderr);
  m_isShown = false;
}

}  // namespace cli
