#include <gtest/gtest.h>
#include <output.h>

TEST(OnOneLine, EscapesControlCharacters) {
  const struct Row {
    const char* text;
    const char* line;
  } rows[] = {
      {"", ""},           {"plain", "plain"},
      {"имя", "имя"},     {"two\nlines", "two\\nlines"},
      {"\r\t", "\\r\\t"}, {"\x1b[31mred", "\\x1b[31mred"},
      {"\x7f", "\\x7f"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(cli::onOneLine(row.text), row.line);
}
