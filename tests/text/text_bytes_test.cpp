#include "text/text_bytes.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <utility>

namespace {

using ztcad::TextBytes;

TEST(TextBytes, AreACopy) {
  std::string source = "bytes";
  const TextBytes bytes{std::string_view(source)};
  source.clear();
  EXPECT_EQ(bytes.view(), "bytes");
  EXPECT_EQ(bytes.size(), 5U);
}

TEST(TextBytes, AreEmptyAtFirst) {
  EXPECT_EQ(TextBytes().view(), "");
  EXPECT_EQ(TextBytes(std::string_view()).view(), "");
}

TEST(TextBytes, KeepWhatTheyHoldWhenTheyGrowAndShrink) {
  TextBytes bytes{std::string_view("12345")};
  bytes.resize(100000);
  EXPECT_EQ(bytes.view().substr(0, 5), "12345");
  bytes.data()[99999] = 'x';
  bytes.resize(3);
  EXPECT_EQ(bytes.view(), "123");
  bytes.resize(0);
  EXPECT_EQ(bytes.view(), "");
  bytes.resize(1);
  bytes.data()[0] = 'y';
  EXPECT_EQ(bytes.view(), "y");
}

TEST(TextBytes, StayWhereTheyAreWhenTheyAreMoved) {
  TextBytes bytes{std::string_view("bytes")};
  const char* const address = bytes.data();
  const TextBytes moved = std::move(bytes);
  EXPECT_EQ(moved.view(), "bytes");
  EXPECT_EQ(moved.view().data(), address);
}

TEST(TextBytes, AreEmptyAfterTheyWereMoved) {
  TextBytes bytes{std::string_view("bytes")};
  TextBytes moved(std::move(bytes));
  EXPECT_EQ(bytes.view(), "");  // NOLINT(bugprone-use-after-move): what is tested
  bytes = std::move(moved);
  EXPECT_EQ(bytes.view(), "bytes");
  EXPECT_EQ(moved.view(), "");  // NOLINT(bugprone-use-after-move): what is tested
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)  // which end the program
TEST(TextBytes, AreUnchangedIfThereIsNoMemory) {
  TextBytes bytes{std::string_view("bytes")};
  volatile std::size_t tooMuch = std::numeric_limits<std::size_t>::max() / 2;
  EXPECT_THROW(bytes.resize(tooMuch), std::bad_alloc);
  EXPECT_EQ(bytes.view(), "bytes");
}
#endif

}  // namespace
