#include <gtest/gtest.h>
#include <QRegularExpression>
#include <string>
#include <vector>

#include "api/host.h"

// The page that describes the format for authors of documents: every example on it loads with the result code
// stated above it.

namespace {

struct Example {
  int line;           ///< line number on the page
  std::string claim;  ///< the result code stated above the example; empty if there is none
  std::string text;
};

/// Every example of the page, with or without a stated code.
std::vector<Example> examples() {
  static const QRegularExpression block(R"((?:<!-- loads with (\d+) -->\n)?```xml\n(.*?)\n```)",
                                        QRegularExpression::DotMatchesEverythingOption);
  const QString page = QString::fromStdString(bytesOf(ZTCAD_TEST_FORMAT_PAGE));
  std::vector<Example> found;
  for (auto match = block.globalMatch(page); match.hasNext();) {
    const QRegularExpressionMatch one = match.next();
    const auto line = static_cast<int>(page.left(one.capturedStart()).count('\n')) + 1;
    found.push_back({line, one.captured(1).toStdString(), one.captured(2).toStdString()});
  }
  return found;
}

TEST(FormatExamples, EachStatesItsResultCode) {
  const std::vector<Example> all = examples();
  EXPECT_FALSE(all.empty());
  const std::string page = bytesOf(ZTCAD_TEST_FORMAT_PAGE);
  EXPECT_EQ(static_cast<int>(all.size()), QString::fromStdString(page).count("```xml"))
      << "an XML block was not recognised as an example";
  EXPECT_EQ(static_cast<int>(all.size()), QString::fromStdString(page).count("<!-- loads with "));
  for (const Example& example : all)
    EXPECT_NE(example.claim, "") << ZTCAD_TEST_FORMAT_PAGE << ":" << example.line;
}

TEST(FormatExamples, LoadWithTheStatedResultCode) {
  for (const Example& example : examples()) {
    const TemporaryFiles files;
    const Loaded loaded = loadFile(files.put("example.xml", example.text));
    EXPECT_EQ(std::to_string(loaded.code), example.claim) << ZTCAD_TEST_FORMAT_PAGE << ":" << example.line;
    EXPECT_FALSE(loaded.code == 0 && loaded.fault) << ZTCAD_TEST_FORMAT_PAGE << ":" << example.line;
  }
}

}  // namespace
