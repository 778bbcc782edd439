#include "assertion_log.h"

#include <new>
#include <QtGlobal>
#include <utility>

#include "qt_thread.h"

namespace {

ztLogWriter* installedWriter = nullptr;

const char* orEmpty(const char* text) { return text ? text : ""; }

std::string messageText(const char* expression, const char* file, std::uint32_t line) {
  std::string text = "Assert occurred in FILE: ";
  text.append(orEmpty(file)).append("; LINE: ").append(std::to_string(line));
  return text.append("; EXPRESSION: ").append(orEmpty(expression)).append(".");
}

bool writeToInstalled(const std::string& message) {
  if (!installedWriter) return false;
  installedWriter->accept(message) += '\n';
  installedWriter->flush();
  return true;
}

}  // namespace

ztLogWriter::ztLogWriter(std::unique_ptr<std::ostream> stream)
    : m_stream(stream ? std::move(stream) : std::make_unique<std::ostream>(nullptr)) {}

ztLogWriter::~ztLogWriter() {
  if (installedWriter == this) installedWriter = nullptr;
}

std::string& ztLogWriter::accept(const std::string& message) {
  std::string line;
  line.reserve(message.size() +
               1);  // for the line feed: without memory for it, half a line would stay pending
  line = message;
  return m_pending.emplace_back(std::move(line));
}

void ztLogWriter::flush() {
  std::list<std::string> lines;
  lines.swap(m_pending);
  for (const std::string& line : lines)
    *m_stream << line;
  m_stream->flush();
}

ztBaseAsserter::~ztBaseAsserter() {
  try {
    if (installedWriter) installedWriter->flush();
  } catch (...) {  // a stream that throws must not end the process
  }
}

void ztBaseAsserter::report(const char* expression, const char* file, std::uint32_t line) noexcept {
  try {
    const std::string message = messageText(expression, file, line);
    if (writeToInstalled(message)) return;
    ztcad::makeQtThreadData();
    qWarning("%s", message.c_str());
  } catch (...) {  // losing a report harms less than ending the host's process
  }
}

ztBaseAsserter& ztBaseAsserter::instance() noexcept {
  // In static storage and never destroyed: nothing is left on the heap when the library is unloaded, and a
  // report from a late static destructor still finds it.
  alignas(ztBaseAsserter) static unsigned char storage[sizeof(ztBaseAsserter)];
  static auto* const reporter = new (storage) ztBaseAsserter;
  return *reporter;
}

void ztBaseAsserter::setWriter(ztLogWriter* writer) noexcept { installedWriter = writer; }

bool ztBaseAsserter::hasWriter() noexcept { return installedWriter != nullptr; }
