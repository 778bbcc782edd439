#include "host_log.h"

#include <memory>
#include <ostream>
#include <sstream>

#include "../support/assertion_log.h"
#include "../support/process_object.h"
#include "c/library.h"
#include "guard.h"

namespace {

/// The host's function, which may replace itself, or throw, while it is called.
struct HostFunction {
  void (*write)(const char* line, void* context) = nullptr;
  void* context = nullptr;

  void call(const std::string& line) const {
    if (write && !line.empty()) write(line.c_str(), context);
  }
};

HostFunction hostFunction;

/// Hands what is written to the host's function whenever the stream is flushed.
class HostBuffer : public std::stringbuf {
 protected:
  int sync() override {
    try {
      const std::string line = str();
      str(std::string());
      const HostFunction function = hostFunction;
      function.call(line);
    } catch (...) {  // not reported: the report would come back here
    }
    return 0;  // a lost line must not close the stream for later ones
  }
};

/// A stream that owns its buffer.
class HostStream : public std::ostream {
 public:
  HostStream() : std::ostream(nullptr) { rdbuf(&m_buffer); }

 private:
  HostBuffer m_buffer;
};

/// Made once: a function that removes itself is called from inside it.
struct HostLog {
  ztLogWriter writer{std::make_unique<HostStream>()};
};

ztcad::ProcessObject<HostLog> hostLog;

}  // namespace

void ztcad::releaseHostLog() {
  hostFunction = {};
  hostLog.release();
}

void ztCAD_setAssertionWriter(void (*write)(const char* line, void* context), void* context) {
  ztcad::guarded([&] {
    if (write) ztBaseAsserter::setWriter(&hostLog.get().writer);
    hostFunction = {write, context};
    if (!write) ztBaseAsserter::setWriter(nullptr);
  });
}

void ztCAD_report(const char* expression, const char* file, std::uint32_t line) {
  ztBaseAsserter::instance().report(expression, file, line);
}
