#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <ostream>
#include <string>

#include "export.h"

/// @file
/// The assertion log: where the library tells that something which always holds did not.

/// Names and formats of the assertion log. The library opens no log and writes none of these: that is left to
/// the host that installs a writer. Formats are those of `QDateTime::toString`.
struct ztAssertionLog {
  /// What such a log is called.
  static constexpr char fileName[] = "Nodra_assert.log";
  /// 80 slashes, a line feed, and what comes before the project's name.
  static constexpr char projectBanner[] =
      "////////////////////////////////////////////////////////////////////////////////\nNEW PROJECT: ";
  /// Opens the lines of a new calculation.
  static constexpr char calculationBanner[] = "NEW CALCULATION";
  /// How a log tells days, times of day, and both together.
  /// @{
  static constexpr char dateFormat[] = "dd.MM.yyyy";
  static constexpr char timeFormat[] = "hh:mm:ss";
  static constexpr char timeStampFormat[] = "dd.MM.yyyy hh:mm:ss";
  /// @}
};

/// Collects the lines of the assertion log and writes them to a stream. Made, installed and destroyed by the
/// host.
class ZTCAD_API ztLogWriter {
 public:
  /// @param stream where the lines go, owned from now on; null: they go nowhere
  explicit ztLogWriter(std::unique_ptr<std::ostream> stream);

  /// Makes `message` the last of the pending lines. The line can be completed through the returned string,
  /// which stays good until the next flush; the reporter adds the line feed there. Stays the first virtual
  /// operation.
  virtual std::string& accept(const std::string& message);

  /// An installed writer is removed first. Lines that are still pending are lost.
  virtual ~ztLogWriter();

  ztLogWriter(const ztLogWriter&) = delete;
  ztLogWriter& operator=(const ztLogWriter&) = delete;

  /// Writes the pending lines in order, each by one insertion (width and fill of the stream hold), and
  /// flushes the stream. The list is empty afterwards even if the stream fails or, where the host told it to,
  /// throws.
  void flush();

  /// The stream that the lines go to, the writer's own; one that drops everything where none was given.
  std::ostream& stream() { return *m_stream; }
  /// Lines that were accepted and not flushed yet, in order.
  const std::list<std::string>& pendingLines() const { return m_pending; }

 private:
  std::unique_ptr<std::ostream> m_stream;
  std::list<std::string> m_pending;
};

/// Where the library's own consistency checks report. A report never stops the process: the check carries on.
/// Reports are expected from one thread at a time.
class ZTCAD_API ztBaseAsserter {
 public:
  /// Flushes the installed writer. The reporter of the process never ends; this is for classes built on it.
  virtual ~ztBaseAsserter();

  /// Logs one line, "Assert occurred in FILE: ...; LINE: ...; EXPRESSION: ...." and a line feed, which is on
  /// the writer's stream when the call returns. Without a writer the line goes to Qt's warning output.
  ///
  /// @param expression what did not hold; null is empty text
  /// @param file       source file of the check; null is empty text
  /// @param line       its line there
  ///
  /// A report that fails (memory, a stream or message handler that throws) is dropped.
  virtual void report(const char* expression, const char* file, std::uint32_t line) noexcept;

  /// The reporter of this process, made on the first call; stays good as long as the library is loaded.
  static ztBaseAsserter& instance() noexcept;

  /// Installs the log writer of this process in place of the one before; null removes it. It stays the
  /// host's, who keeps it alive while it is installed.
  static void setWriter(ztLogWriter* writer) noexcept;
  /// Whether a log writer is installed.
  static bool hasWriter() noexcept;

  ztBaseAsserter(const ztBaseAsserter&) = delete;
  ztBaseAsserter& operator=(const ztBaseAsserter&) = delete;

 protected:
  ztBaseAsserter() = default;
};
