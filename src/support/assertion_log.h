#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <ostream>
#include <string>

#include "export.h"

/// @file
/// The assertion log: reports of internal consistency checks that failed.

/// Names and formats of the assertion log. The library neither opens a log nor writes any of these: that is
/// left to the host that installs a writer. Formats are those of `QDateTime::toString`.
struct ztAssertionLog {
  /// Name of the log file.
  static constexpr char fileName[] = "Nodra_assert.log";
  /// 80 slashes, a line feed, and the prefix of the project's name.
  static constexpr char projectBanner[] =
      "////////////////////////////////////////////////////////////////////////////////\nNEW PROJECT: ";
  /// Starts the lines of a new calculation.
  static constexpr char calculationBanner[] = "NEW CALCULATION";
  /// Formats of dates, of times of day, and of both together.
  /// @{
  static constexpr char dateFormat[] = "dd.MM.yyyy";
  static constexpr char timeFormat[] = "hh:mm:ss";
  static constexpr char timeStampFormat[] = "dd.MM.yyyy hh:mm:ss";
  /// @}
};

/// Collects the lines of the assertion log and writes them to a stream. Created, installed and destroyed by
/// the host.
class ZTCAD_API ztLogWriter {
 public:
  /// @param stream receives the lines; the writer takes ownership. Null: the lines are discarded
  explicit ztLogWriter(std::unique_ptr<std::ostream> stream);

  /// Appends `message` to the pending lines. The caller can complete the line through the returned string,
  /// which stays valid until the next flush; the reporter appends the line feed there. Must stay the first
  /// virtual function.
  virtual std::string& accept(const std::string& message);

  /// Uninstalls the writer if it is installed. Pending lines are lost.
  virtual ~ztLogWriter();

  ztLogWriter(const ztLogWriter&) = delete;
  ztLogWriter& operator=(const ztLogWriter&) = delete;

  /// Writes the pending lines in order, each by one insertion (width and fill of the stream apply), and
  /// flushes the stream. The list is empty afterwards even if the stream fails or, where the host enabled its
  /// exceptions, throws.
  void flush();

  /// The stream that receives the lines, owned by the writer; one that discards everything if none was given.
  std::ostream& stream() { return *m_stream; }
  /// Lines that were accepted and not flushed yet, in order.
  const std::list<std::string>& pendingLines() const { return m_pending; }

 private:
  std::unique_ptr<std::ostream> m_stream;
  std::list<std::string> m_pending;
};

/// Receives the reports of the library's own consistency checks. A report never stops the process: the check
/// continues.
///
/// No function of this class throws. Reports are expected from one thread at a time; a writer may itself
/// report.
class ZTCAD_API ztBaseAsserter {
 public:
  /// Flushes the installed writer. The process-wide reporter is never destroyed; this serves derived classes.
  virtual ~ztBaseAsserter();

  /// Logs one line, "Assert occurred in FILE: ...; LINE: ...; EXPRESSION: ...." and a line feed, which is on
  /// the writer's stream when the call returns. Without a writer the line goes to Qt's warning output (which
  /// ends the process only where the host asked Qt for fatal warnings).
  ///
  /// @param expression what did not hold; null is empty text
  /// @param file       source file of the check; null is empty text
  /// @param line       its line there
  ///
  /// A report that fails (memory, a stream or message handler that throws) is dropped. May be called while an
  /// exception is being handled.
  virtual void report(const char* expression, const char* file, std::uint32_t line) noexcept;

  /// The process-wide reporter, created by the first call; valid as long as the library is loaded.
  static ztBaseAsserter& instance() noexcept;

  /// Installs a log writer for the process and replaces the previous one; null removes it. The host keeps
  /// ownership and must keep the writer alive while it is installed. Waits for a report in progress.
  static void setWriter(ztLogWriter* writer) noexcept;
  /// Whether a log writer is installed.
  static bool hasWriter() noexcept;

  ztBaseAsserter(const ztBaseAsserter&) = delete;
  ztBaseAsserter& operator=(const ztBaseAsserter&) = delete;

 protected:
  ztBaseAsserter() = default;
};
