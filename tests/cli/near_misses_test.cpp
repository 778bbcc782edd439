#include <gtest/gtest.h>
#include <near_misses.h>

using Words = std::vector<std::string>;

namespace {

const Words rules{"duplicate-attribute", "missing-centre", "missing-name", "missing-radius",
                  "unknown-element"};

}  // namespace

TEST(NearMisses, AreTheWordsThatDifferLittle) {
  EXPECT_EQ(cli::nearMisses("missing-center", rules), Words{"missing-centre"});
  EXPECT_EQ(cli::nearMisses("misisng-name", rules), Words{"missing-name"});
  EXPECT_EQ(cli::nearMisses("unknown-elements", rules), Words{"unknown-element"});
}

TEST(NearMisses, AreAlsoTheWordsThatContainIt) {
  EXPECT_EQ(cli::nearMisses("attribute", rules), Words{"duplicate-attribute"});
}

TEST(NearMisses, AreAtMostThree) {
  EXPECT_EQ(cli::nearMisses("missing", {"missing-1", "missing-2", "missing-3", "missing-4"}).size(), 3U);
}

TEST(NearMisses, AreNoneForAnotherWord) {
  EXPECT_TRUE(cli::nearMisses("colour", rules).empty());
  EXPECT_TRUE(cli::nearMisses("", rules).empty());
}

TEST(NearMisses, AreNamedInASuggestion) {
  EXPECT_EQ(cli::suggestion({}), "");
  EXPECT_EQ(cli::suggestion({"a"}), " (did you mean \"a\"?)");
  EXPECT_EQ(cli::suggestion({"a", "b", "c"}), " (did you mean \"a\", \"b\" or \"c\"?)");
}
