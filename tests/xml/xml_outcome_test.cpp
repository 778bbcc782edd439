#include "xml/xml_outcome.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "xml/xml_cursor.h"

namespace {

TEST(XmlOutcome, CountsLinesAndColumns) {
  const std::string text = "a\r\nb\rc\n\xF0\x9F\x98\x80x";
  const ztcad::ParseOutcome outcome = ztcad::failedParse(text, {"message", text.size(), false});
  EXPECT_EQ(outcome.line, 4);
  EXPECT_EQ(outcome.column, 4);  // in UTF-16 units
  EXPECT_EQ(outcome.offset, text.size());
}

TEST(XmlOutcome, NumbersThatDoNotFitAreTheGreatest) {
  constexpr std::int64_t most = std::numeric_limits<int>::max();
  EXPECT_EQ(ztcad::placeNumber(1), 1);
  EXPECT_EQ(ztcad::placeNumber(most), most);
  EXPECT_EQ(ztcad::placeNumber(most + 1), most);
  EXPECT_EQ(ztcad::placeNumber(std::int64_t{1} << 62), most);
}

}  // namespace
