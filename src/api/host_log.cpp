#include "host_log.h"

#include <memory>
#include <ostream>
#include <sstream>

#include "../core/process_object.h"
#include "../support/assertion_log.h"
#include "c/library.h"
#include "guard.h"

namespace {

/// Hands what is written to a function of the host whenever the stream is flushed.
class HostBuffer : public std::stringbuf {
 public:
  HostBuffer(void (*function)(const char* line, void* context), void* context)
      : m_function(function), m_context(context) {}

 protected:
  int sync() override {
    const std::string line = str();
    str(std::string());
    if (!line.empty()) m_function(line.c_str(), m_context);
    return 0;
  }

 private:
  void (*m_function)(const char* line, void* context);
  void* m_context;
};

/// A stream that owns its buffer.
class HostStream : public std::ostream {
 public:
  HostStream(void (*function)(const char* line, void* context), void* context)
      : std::ostream(nullptr), m_buffer(function, context) {
    rdbuf(&m_buffer);
  }

 private:
  HostBuffer m_buffer;
};

ztcad::ProcessObject<std::unique_ptr<ztLogWriter>> hostLog;

}  // namespace

void ztcad::releaseHostLog() { hostLog.release(); }

void ztCAD_setAssertionWriter(void (*write)(const char* line, void* context), void* context) {
  ztcad::guarded([&] {
    std::unique_ptr<ztLogWriter> writer;
    if (write) writer = std::make_unique<ztLogWriter>(std::make_unique<HostStream>(write, context));
    ztBaseAsserter::setWriter(writer.get());
    hostLog.get() = std::move(writer);
  });
}
