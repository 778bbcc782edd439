#include "host_log.h"

#include <memory>
#include <ostream>
#include <sstream>

#include "../support/assertion_log.h"
#include "../support/process_object.h"
#include "c/library.h"
#include "guard.h"

namespace {

/// The host's function. While it runs it may replace itself or throw.
struct HostFunction {
  void (*write)(const char* line, void* context) = nullptr;
  void* context = nullptr;

  void call(const std::string& line) const {
    if (write && !line.empty()) write(line.c_str(), context);
  }
};

HostFunction hostFunction;

/// Passes what was written to the host's function whenever the stream is flushed.
class HostBuffer : public std::stringbuf {
 protected:
  int sync() override {
    try {
      const std::string line = str();
      str(std::string());
      const HostFunction function = hostFunction;
      function.call(line);
    } catch (...) {  // not reported: the report would arrive here again
    }
    return 0;  // a failure here would close the stream for later lines
  }
};

/// A stream that owns its buffer.
class HostStream : public std::ostream {
 public:
  HostStream() : std::ostream(nullptr) { rdbuf(&m_buffer); }

 private:
  HostBuffer m_buffer;
};

/// Created once and kept, because the host's function may remove itself while the writer calls it.
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
