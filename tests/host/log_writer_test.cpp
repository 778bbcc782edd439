// A host that installs its own log writer and runs a parallel region.

#include <gtest/gtest.h>
#include <omp.h>
#include <ztCAD/ztCAD.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/captured_warnings.h"

namespace {

const std::string report =
    "Assert occurred in FILE: _Common/ztParallel; LINE: 267; EXPRESSION: "
    "( \"Primary\", _check_num_threads_curr() ).";

/// Makes the library report that its thread count differs from the configured one.
void provokeReport() {
  omp_set_dynamic(0);
  int threads = 0;
#pragma omp parallel num_threads(2) default(none) shared(threads)
#pragma omp single
  {
    threads = omp_get_num_threads();
    getParallel_Morvik()->initialise(1);
  }
  ASSERT_EQ(threads, 2) << "the host cannot start a second thread, so nothing is reported";
}

struct WriterToText {
  std::ostringstream* text = nullptr;
  ztLogWriter writer{[this] {
    auto stream = std::make_unique<std::ostringstream>();
    text = stream.get();
    return stream;
  }()};
};

TEST(LogWriter, ReceivesTheReportInItsStream) {
  const CapturedWarnings warnings;
  WriterToText log;
  ztBaseAsserter::setWriter(&log.writer);
  provokeReport();
  EXPECT_EQ(log.text->str(), report + '\n');
  provokeReport();
  EXPECT_EQ(log.text->str(), report + '\n' + report + '\n');
  EXPECT_EQ(warnings.messages(), std::vector<std::string>());
  ztBaseAsserter::setWriter(nullptr);
}

TEST(LogWriter, AfterItsDestructionReportsGoToQt) {
  const CapturedWarnings warnings;
  {
    WriterToText log;
    ztBaseAsserter::setWriter(&log.writer);
  }
  provokeReport();
  EXPECT_EQ(warnings.messages(), std::vector<std::string>{report});
}

/// A writer class of a host; the library calls its override.
class CountingWriter : public ztLogWriter {
 public:
  using ztLogWriter::ztLogWriter;
  std::string& accept(const std::string& message) override {
    ++count;
    return ztLogWriter::accept(message);
  }
  int count = 0;
};

TEST(LogWriter, CanBeAClassOfTheHost) {
  CountingWriter writer(nullptr);
  ztBaseAsserter::setWriter(&writer);
  provokeReport();
  ztBaseAsserter::setWriter(nullptr);
  EXPECT_EQ(writer.count, 1);
}

// -------------------------------------------------------------------- a function, as installed by hosts in C

void append(const char* line, void* context) {
  static_cast<std::vector<std::string>*>(context)->emplace_back(line);
}

TEST(LogFunction, ReceivesEachReportAsALine) {
  const CapturedWarnings warnings;
  std::vector<std::string> lines;
  ztCAD_setAssertionWriter(append, &lines);
  provokeReport();
  provokeReport();
  EXPECT_EQ(lines, (std::vector<std::string>{report + '\n', report + '\n'}));
  EXPECT_EQ(warnings.messages(), std::vector<std::string>());

  std::vector<std::string> others;
  ztCAD_setAssertionWriter(append, &others);
  provokeReport();
  EXPECT_EQ(lines.size(), 2u);
  EXPECT_EQ(others.size(), 1u);

  ztCAD_setAssertionWriter(nullptr, nullptr);
  provokeReport();
  EXPECT_EQ(others.size(), 1u);
  EXPECT_EQ(warnings.messages(), std::vector<std::string>{report});
}

int calls = 0;

TEST(LogFunction, CanRemoveItselfWhileItIsCalled) {
  const CapturedWarnings warnings;
  calls = 0;
  ztCAD_setAssertionWriter(
      [](const char* /*line*/, void* /*context*/) {
        ++calls;
        ztCAD_setAssertionWriter(nullptr, nullptr);
      },
      nullptr);
  ztCAD_report("first", "file", 1);
  ztCAD_report("second", "file", 2);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(warnings.messages().size(), 1u);
}

TEST(LogFunction, IsCalledAgainAfterAnException) {
  calls = 0;
  ztCAD_setAssertionWriter(
      [](const char* /*line*/, void* /*context*/) {
        ++calls;
        throw 1;
      },
      nullptr);
  ztCAD_report("first", "file", 1);
  ztCAD_report("second", "file", 2);
  ztCAD_setAssertionWriter(nullptr, nullptr);
  EXPECT_EQ(calls, 2);
}

}  // namespace
