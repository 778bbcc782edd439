#include "support/assertion_log.h"

#include <gtest/gtest.h>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <list>
#include <memory>
#include <new>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <type_traits>
#include <vector>

#include "support/captured_warnings.h"

namespace {

using Lines = std::vector<std::string>;

/// A stream buffer that separates flushed text from text that is still buffered.
class FlushedText : public std::stringbuf {
 public:
  std::string flushed;
  int flushes = 0;

 protected:
  int sync() override {
    flushed = str();
    ++flushes;
    return 0;
  }
};

class FlushedStream : public std::ostream {
 public:
  FlushedStream() : std::ostream(&buffer) {}
  FlushedText buffer;
};

/// A stream buffer that fails on every write.
class BrokenBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type) override { throw std::runtime_error("device is full"); }
};

class ThrowingStream : public std::ostream {
 public:
  ThrowingStream() : std::ostream(&m_buffer) { exceptions(std::ios::badbit); }

 private:
  BrokenBuffer m_buffer;
};

class AssertionLog : public testing::Test {
 protected:
  AssertionLog() { ztBaseAsserter::setWriter(&m_writer); }
  ~AssertionLog() override { ztBaseAsserter::setWriter(nullptr); }

  const std::string& logged() const { return m_stream->buffer.flushed; }
  int flushes() const { return m_stream->buffer.flushes; }

  FlushedStream* m_stream = new FlushedStream;
  ztLogWriter m_writer{std::unique_ptr<std::ostream>(m_stream)};
  ztBaseAsserter& m_reporter = ztBaseAsserter::instance();
};

// ------------------------------------------------------------------------------------------------ the report
TEST_F(AssertionLog, AReportIsOneLineInAFixedFormat) {
  m_reporter.report(R"(( "Primary", _check_num_threads_curr() ))", "_Common/ztParallel", 267);
  EXPECT_EQ(logged(),
            "Assert occurred in FILE: _Common/ztParallel; LINE: 267; EXPRESSION: "
            "( \"Primary\", _check_num_threads_curr() ).\n");
}

TEST_F(AssertionLog, EachReportIsFlushedAsALineBeforeTheCallReturns) {
  m_reporter.report("first", "a.cpp", 1);
  const std::string first = "Assert occurred in FILE: a.cpp; LINE: 1; EXPRESSION: first.\n";
  EXPECT_EQ(logged(), first);
  EXPECT_TRUE(m_writer.pendingLines().empty());

  m_reporter.report("second", "b.cpp", 2);
  EXPECT_EQ(logged(), first + "Assert occurred in FILE: b.cpp; LINE: 2; EXPRESSION: second.\n");
  EXPECT_TRUE(m_writer.pendingLines().empty());
  EXPECT_EQ(flushes(), 2);
}

struct ReportRow {
  const char* name;
  const char* expression;
  const char* file;
  std::uint32_t line;
  const char* text;
};

const ReportRow reportRows[] = {
    {"empty", "", "", 1, "FILE: ; LINE: 1; EXPRESSION: .\n"},
    {"null expression", nullptr, "f", 1, "FILE: f; LINE: 1; EXPRESSION: .\n"},
    {"null file", "e", nullptr, 1, "FILE: ; LINE: 1; EXPRESSION: e.\n"},
    {"both null", nullptr, nullptr, 1, "FILE: ; LINE: 1; EXPRESSION: .\n"},
    {"line 0", "e", "f", 0, "FILE: f; LINE: 0; EXPRESSION: e.\n"},
    {"largest line", "e", "f", 4294967295U, "FILE: f; LINE: 4294967295; EXPRESSION: e.\n"},
    {"formatting characters", "%s%n %1", "%d", 5, "FILE: %d; LINE: 5; EXPRESSION: %s%n %1.\n"},
    {"non-ASCII", "\xD0\xB0 > 0", "\xD1\x84.cpp", 5,
     "FILE: \xD1\x84.cpp; LINE: 5; EXPRESSION: \xD0\xB0 > 0.\n"},
    {"invalid UTF-8", "\xE0\xFF", "f", 5, "FILE: f; LINE: 5; EXPRESSION: \xE0\xFF.\n"},
};

TEST_F(AssertionLog, TextsAndLineNumberAreUsedVerbatim) {
  for (const ReportRow& row : reportRows) {
    SCOPED_TRACE(row.name);
    m_stream->buffer.str({});
    m_reporter.report(row.expression, row.file, row.line);
    EXPECT_EQ(logged(), std::string("Assert occurred in ") + row.text);
  }
}

TEST_F(AssertionLog, VeryLongTextsAreNotTruncated) {
  const std::string expression(100000, 'x');
  m_reporter.report(expression.c_str(), "f", 1);
  EXPECT_EQ(logged(), "Assert occurred in FILE: f; LINE: 1; EXPRESSION: " + expression + ".\n");
}

TEST_F(AssertionLog, WidthAndFillOfTheStreamApplyAsForAnyString) {
  const std::string line = "Assert occurred in FILE: f; LINE: 1; EXPRESSION: e.\n";
  *m_stream << std::setfill('*') << std::setw(static_cast<int>(line.size()) + 3);
  m_reporter.report("e", "f", 1);
  EXPECT_EQ(logged(), "***" + line);

  m_reporter.report("e", "f", 1);  // the insertion reset the width
  EXPECT_EQ(logged(), "***" + line + line);

  *m_stream << std::left << std::setw(static_cast<int>(line.size()) + 2);
  m_reporter.report("e", "f", 1);
  EXPECT_EQ(logged(), "***" + line + line + line + "**");
}

TEST_F(AssertionLog, QtReceivesNoWarningWhileAWriterIsInstalled) {
  const CapturedWarnings warnings;
  m_reporter.report("e", "f", 1);
  EXPECT_TRUE(warnings.messages().empty());
}

// ------------------------------------------------------------------------------------------------- no writer
struct WarningRow {
  const char* name;
  const char* expression;
  const char* file;
  std::uint32_t line;
  const char* warning;
};

const WarningRow warningRows[] = {
    {"null", nullptr, nullptr, 0, "Assert occurred in FILE: ; LINE: 0; EXPRESSION: ."},
    {"quotes and backslashes are kept", R"(a == "b\n")", R"(c:\d.cpp)", 7,
     R"(Assert occurred in FILE: c:\d.cpp; LINE: 7; EXPRESSION: a == "b\n".)"},
    {"formatting characters", "%s%n %1", "f", 7, "Assert occurred in FILE: f; LINE: 7; EXPRESSION: %s%n %1."},
    {"non-ASCII", "\xD0\xB0", "f", 7, "Assert occurred in FILE: f; LINE: 7; EXPRESSION: \xD0\xB0."},
};

TEST(AssertionLogWithoutWriter, AReportIsOneUnquotedQtWarning) {
  for (const WarningRow& row : warningRows) {
    SCOPED_TRACE(row.name);
    const CapturedWarnings warnings;
    ztBaseAsserter::instance().report(row.expression, row.file, row.line);
    EXPECT_EQ(warnings.messages(), Lines{row.warning});
  }
}

TEST(AssertionLogWithoutWriter, NullRemovesTheWriter) {
  auto* stream = new FlushedStream;
  ztLogWriter writer{std::unique_ptr<std::ostream>(stream)};
  ztBaseAsserter::setWriter(&writer);
  ztBaseAsserter::setWriter(nullptr);
  const CapturedWarnings warnings;
  ztBaseAsserter::instance().report("e", "f", 1);
  EXPECT_EQ(stream->buffer.flushed, "");
  EXPECT_EQ(warnings.messages().size(), 1U);
}

TEST(AssertionLogWithoutWriter, ADestroyedWriterIsNoLongerInstalled) {
  {
    ztLogWriter writer{std::make_unique<std::ostringstream>()};
    ztBaseAsserter::setWriter(&writer);
  }
  const CapturedWarnings warnings;
  ztBaseAsserter::instance().report("e", "f", 1);
  EXPECT_EQ(warnings.messages().size(), 1U);
}

TEST_F(AssertionLog, DestroyingAnotherWriterKeepsTheInstalledOne) {
  { ztLogWriter other{std::make_unique<std::ostringstream>()}; }
  m_reporter.report("e", "f", 1);
  EXPECT_NE(logged(), "");
}

TEST_F(AssertionLog, ANewWriterReplacesThePreviousOne) {
  auto* stream = new FlushedStream;
  ztLogWriter other{std::unique_ptr<std::ostream>(stream)};
  ztBaseAsserter::setWriter(&other);
  m_reporter.report("e", "f", 1);
  EXPECT_EQ(logged(), "");
  EXPECT_NE(stream->buffer.flushed, "");
}

// -------------------------------------------------------------------------------------------------- failures
TEST(AssertionLogFailure, AnExceptionOfTheStreamIsCaughtAndTheLinesAreDropped) {
  ztLogWriter writer(std::make_unique<ThrowingStream>());
  EXPECT_THROW(writer.stream() << "x", std::exception) << "the test needs a stream that throws";
  writer.stream().clear();

  ztBaseAsserter::setWriter(&writer);
  EXPECT_NO_THROW(ztBaseAsserter::instance().report("e", "f", 1));
  EXPECT_TRUE(writer.pendingLines().empty());
}

TEST(AssertionLogFailure, AWriterWithoutAStreamAcceptsReports) {
  ztLogWriter writer(nullptr);
  ztBaseAsserter::setWriter(&writer);
  ztBaseAsserter::instance().report("e", "f", 1);
  EXPECT_TRUE(writer.pendingLines().empty());
  EXPECT_TRUE(writer.stream().bad());
}

class RefusingWriter : public ztLogWriter {
 public:
  RefusingWriter() : ztLogWriter(std::make_unique<std::ostringstream>()) {}
  std::string& accept(const std::string&) override { throw std::bad_alloc(); }
};

TEST(AssertionLogFailure, AnExceptionOfTheWriterDoesNotLeaveReport) {
  RefusingWriter writer;
  ztBaseAsserter::setWriter(&writer);
  EXPECT_NO_THROW(ztBaseAsserter::instance().report("e", "f", 1));
}

// ------------------------------------------------------------------------------------------------ the writer
/// Prefixes each line with a time stamp, as a host may want.
class StampingWriter : public ztLogWriter {
 public:
  using ztLogWriter::ztLogWriter;
  std::string& accept(const std::string& message) override {
    messages.push_back(message);
    return ztLogWriter::accept("01.02.2003 04:05:06 " + message);
  }
  Lines messages;
};

TEST(LogWriter, AcceptReceivesTheMessageWithoutItsLineFeed) {
  auto* stream = new FlushedStream;
  StampingWriter writer{std::unique_ptr<std::ostream>(stream)};
  ztBaseAsserter::setWriter(&writer);
  ztBaseAsserter::instance().report("e", "f", 1);
  const std::string message = "Assert occurred in FILE: f; LINE: 1; EXPRESSION: e.";
  EXPECT_EQ(writer.messages, Lines{message});
  EXPECT_EQ(stream->buffer.flushed, "01.02.2003 04:05:06 " + message + "\n");
}

TEST(LogWriter, LinesStayPendingUntilFlushAndKeepTheirOrder) {
  auto* stream = new FlushedStream;
  ztLogWriter writer{std::unique_ptr<std::ostream>(stream)};
  std::string& first = writer.accept("one");
  writer.accept("two\n");
  first += '\n';  // the reference stays valid after another accept()
  EXPECT_EQ(stream->buffer.str(), "");
  EXPECT_EQ(writer.pendingLines(), (std::list<std::string>{"one\n", "two\n"}));

  writer.flush();
  EXPECT_EQ(stream->buffer.flushed, "one\ntwo\n");
  EXPECT_TRUE(writer.pendingLines().empty());
}

TEST(LogWriter, FlushWithoutPendingLinesFlushesTheStream) {
  auto* stream = new FlushedStream;
  ztLogWriter writer{std::unique_ptr<std::ostream>(stream)};
  writer.flush();
  EXPECT_EQ(stream->buffer.flushed, "");
  EXPECT_EQ(stream->buffer.flushes, 1);
}

TEST(LogWriter, OwnsItsStream) {
  struct Counted : std::ostringstream {
    explicit Counted(int& destroyed) : m_destroyed(destroyed) {}
    ~Counted() override { ++m_destroyed; }
    int& m_destroyed;
  };
  int destroyed = 0;
  { const ztLogWriter writer(std::make_unique<Counted>(destroyed)); }
  EXPECT_EQ(destroyed, 1);
}

TEST(AssertionLogWriter, MayReport) {
  class Reporting : public ztLogWriter {
   public:
    using ztLogWriter::ztLogWriter;
    std::string& accept(const std::string& message) override {
      if (message.find("outer") != std::string::npos) ztBaseAsserter::instance().report("inner", "f", 2);
      return ztLogWriter::accept(message);
    }
  };
  auto* const stream = new FlushedStream;
  Reporting writer{std::unique_ptr<std::ostream>(stream)};
  ztBaseAsserter::setWriter(&writer);
  ztBaseAsserter::instance().report("outer", "f", 1);
  EXPECT_EQ(stream->buffer.flushed,
            "Assert occurred in FILE: f; LINE: 2; EXPRESSION: inner.\n"
            "Assert occurred in FILE: f; LINE: 1; EXPRESSION: outer.\n");
}

TEST_F(AssertionLog, PendingLinesOfTheHostAreWrittenBeforeTheReport) {
  m_writer.accept("host\n");
  m_reporter.report("e", "f", 1);
  EXPECT_EQ(logged(), "host\nAssert occurred in FILE: f; LINE: 1; EXPRESSION: e.\n");
}

// ---------------------------------------------------------------------------------------------- the reporter
struct LocalReporter : ztBaseAsserter {};

TEST_F(AssertionLog, DestroyingAReporterFlushesTheWriter) {
  {
    const LocalReporter reporter;
    m_writer.accept("pending\n");
    EXPECT_EQ(logged(), "");
  }
  EXPECT_EQ(logged(), "pending\n");
}

TEST(Reporter, CanBeDestroyedWithAThrowingStreamAndWithoutAWriter) {
  { const LocalReporter withoutWriter; }
  ztLogWriter writer(std::make_unique<ThrowingStream>());
  ztBaseAsserter::setWriter(&writer);
  {
    const LocalReporter reporter;
    writer.accept("line");
  }
  EXPECT_TRUE(writer.pendingLines().empty());
}

TEST(Reporter, TheProcessHasOneInstance) {
  EXPECT_EQ(&ztBaseAsserter::instance(), &ztBaseAsserter::instance());
}

TEST(Reporter, HasNoDataMembers) {
  EXPECT_TRUE(std::is_polymorphic_v<ztBaseAsserter>);
  EXPECT_EQ(sizeof(ztBaseAsserter), sizeof(void*));
}

#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
/// Index of a virtual function in the virtual table, decoded from the member pointer of this platform's ABI.
template <typename Member>
std::ptrdiff_t slotOf(Member member) {
  std::ptrdiff_t encoded = 0;
  static_assert(sizeof member >= sizeof encoded);
  std::memcpy(&encoded, &member, sizeof encoded);
  return (encoded - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(Reporter, ReportFollowsTheDestructorInTheVirtualTable) {
  EXPECT_EQ(slotOf(&ztBaseAsserter::report), 2) << "a destructor occupies two slots on this platform";
}

TEST(LogWriter, AcceptIsItsFirstVirtualFunction) { EXPECT_EQ(slotOf(&ztLogWriter::accept), 0); }
#endif

// --------------------------------------------------------------------------------------------- the constants
TEST(AssertionLogConstants, HaveTheDocumentedValues) {
  EXPECT_STREQ(ztAssertionLog::fileName, "Nodra_assert.log");
  EXPECT_EQ(ztAssertionLog::projectBanner, std::string(80, '/') + "\nNEW PROJECT: ");
  EXPECT_STREQ(ztAssertionLog::calculationBanner, "NEW CALCULATION");
  EXPECT_STREQ(ztAssertionLog::dateFormat, "dd.MM.yyyy");
  EXPECT_STREQ(ztAssertionLog::timeFormat, "hh:mm:ss");
  EXPECT_EQ(ztAssertionLog::timeStampFormat,
            std::string(ztAssertionLog::dateFormat) + " " + ztAssertionLog::timeFormat);
}

}  // namespace
