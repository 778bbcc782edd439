// What the boundary stops is in the assertion log.

#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "host.h"

namespace {

TEST(SwallowedExceptions, LeaveALineInTheAssertionLog) {
  bool nameIsFree = false;
  ztCAD_Structure* const structure = crtStructure("S", crtLCS({}), nameIsFree);
  structure->property().setLcs(std::nullopt);
  std::string log;
  const auto append = [](const char* line, void* context) { *static_cast<std::string*>(context) += line; };
  ztCAD_setAssertionWriter(append, &log);
  const std::int64_t length = ztCAD_getText(structure, true, nullptr, 0);
  ztCAD_setAssertionWriter(nullptr, nullptr);
  EXPECT_EQ(length, -1);
  EXPECT_NE(log.find("EXPRESSION: a structure has lost its coordinate system."), std::string::npos) << log;
}

}  // namespace
