#include "support/swallowed_exception.h"

#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>

#include "captured_debug_output.h"
#include "support/assertion_log.h"

namespace {

template <typename Exception>
void swallow(const Exception& exception) {
  try {
    throw exception;
  } catch (...) {
    ztcad::reportSwallowedException("someFunction", 12);
  }
}

class SwallowedException : public testing::Test {
 protected:
  SwallowedException() { ztBaseAsserter::setWriter(&m_writer); }
  ~SwallowedException() override { ztBaseAsserter::setWriter(nullptr); }

  std::string log() const { return dynamic_cast<const std::ostringstream&>(*m_stream).str(); }

 private:
  ztLogWriter m_writer{std::make_unique<std::ostringstream>()};
  std::ostream* m_stream = &m_writer.stream();
};

TEST_F(SwallowedException, IsReportedWithItsText) {
  swallow(std::runtime_error("no room"));
  EXPECT_EQ(log(), "Assert occurred in FILE: someFunction; LINE: 12; EXPRESSION: no room.\n");
}

TEST_F(SwallowedException, OfAnyOtherTypeIsReportedToo) {
  swallow(7);
  EXPECT_EQ(log(), "Assert occurred in FILE: someFunction; LINE: 12; EXPRESSION: unknown exception.\n");
}

TEST_F(SwallowedException, OfMemoryIsReportedToAWriter) {
  swallow(std::bad_alloc());
  EXPECT_EQ(log(), "Assert occurred in FILE: someFunction; LINE: 12; EXPRESSION: out of memory.\n");
}

TEST_F(SwallowedException, OfMemoryIsNotReportedToQt) {
  ztBaseAsserter::setWriter(nullptr);
  const CapturedDebugOutput output;
  swallow(std::bad_alloc());
  EXPECT_TRUE(output.messages().empty());
  swallow(std::runtime_error("no room"));
  EXPECT_FALSE(output.messages().empty());
}

}  // namespace
