#include "number/number_list.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "lowered_limits.h"

namespace {

class NoDecoder final : public ztcad::TextDecoder {
 public:
  QString decoded(std::string_view part) const override {
    return QString::fromLatin1(part.data(), static_cast<int>(part.size()));
  }
};

template <typename Number>
std::vector<Number> parsed(const std::string& text) {
  const NoDecoder decoder;
  std::vector<Number> values;
  EXPECT_TRUE(ztcad::parseTriples(ztcad::ElementText(text, decoder), values));
  return values;
}

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i)
    all += text;
  return all;
}

/// Memory beyond the numbers, in parts of them.
template <typename Number>
double unused(const std::vector<Number>& values) {
  return static_cast<double>(values.capacity()) / static_cast<double>(values.size()) - 1;
}

// A document of gigabytes must not take much more memory than its numbers.
TEST(NumberList, LongListsReserveWhatTheyNeedWhateverTheirStartIsLike) {
  const std::string brief = "1, 2, 3;\n";
  const std::string full = "10000001, 10000002, 10000003;\n";
  constexpr int few = 1000;
  constexpr int many = 400000;
  for (const std::string& text :
       {repeated(brief, few) + repeated(full, many), repeated(full, few) + repeated(brief, many),
        repeated(full, many / 2) + repeated(brief, many)}) {
    const auto indices = parsed<std::uint32_t>(text);
    EXPECT_LT(unused(indices), 0.05);
    EXPECT_EQ(indices[0] % 10000000, 1U);
    EXPECT_LT(unused(parsed<double>(text)), 0.05);
  }
}

TEST(NumberList, ManyEmptyPiecesReserveNoMoreThanTriplesWould) {
  const std::string text = repeated("1, 2, 3;\n", 1000) + std::string(2000000, ';');
  EXPECT_LT(parsed<double>(text).capacity(), text.size());
}

TEST(NumberList, ShortListsReserveByTheirFirstTriples) {
  EXPECT_LT(unused(parsed<double>(repeated("1.5, 2, 3;\n", 10000))), 0.05);
}

TEST(NumberList, MoreTriplesThanHostsCanCountThrow) {
  const LoweredLimits lowered(LoweredLimits::list(1000));
  EXPECT_EQ(parsed<double>(repeated("1, 2, 3;", 1000)).size(), 3000U);
  for (const char* const triple : {"1, 2, 3;", "+1, 2, 3;"}) {
    const std::string text = repeated(triple, 1001);
    const NoDecoder decoder;
    std::vector<double> values;
    try {
      static_cast<void>(ztcad::parseTriples(ztcad::ElementText(text, decoder), values));
      ADD_FAILURE() << triple;
    } catch (const ztcad::TooLong& error) {
      EXPECT_STREQ(error.message(), "list too long");
      EXPECT_EQ(error.position(), text.data());
    }
  }
}

}  // namespace
