#include "host_log.h"

#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>

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

/// Passes what was written to the host's function whenever the stream is flushed. Nothing here throws, which
/// would close the stream for later lines: a line for which there is no memory is dropped.
class HostBuffer : public std::streambuf {
 protected:
  std::streamsize xsputn(const char* text, std::streamsize count) override {
    try {
      m_written.append(text, static_cast<std::size_t>(count));
    } catch (...) {
      m_written.clear();
    }
    return count;
  }

  int_type overflow(int_type character) override {
    const char written = traits_type::to_char_type(character);
    if (!traits_type::eq_int_type(character, traits_type::eof())) xsputn(&written, 1);
    return traits_type::not_eof(character);
  }

  int sync() override {
    const std::string lines = std::exchange(m_written, {});
    const HostFunction function = hostFunction;
    try {
      function.call(lines);
    } catch (...) {  // not reported: the report would arrive here again
    }
    return 0;
  }

 private:
  std::string m_written;
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
