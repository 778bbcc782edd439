#include <gtest/gtest.h>
#include <QRegularExpression>
#include <string>
#include <vector>

#include "api/host.h"

// The page that describes the format for people who write documents: each of its examples loads with the result that
// stands above it.

namespace {

struct Example {
  int line;           ///< of the page
  std::string claim;  ///< the code that is told above, empty when there is none
  std::string text;
};

/// Every example of the page, whether something is told above it or not.
std::vector<Example> examples() {
  static const QRegularExpression block(R"((?:<!-- loads with (\d+) -->\n)?```xml\n(.*?)\n```)",
                                        QRegularExpression::DotMatchesEverythingOption);
  const QString page = QString::fromStdString(bytesOf(ZTCAD_TEST_FORMAT_PAGE));
  std::vector<Example> found;
  for (auto match = block.globalMatch(page); match.hasNext();) {
    const QRegularExpressionMatch one = match.next();
    found.push_back({page.left(one.capturedStart()).count('\n') + 1, one.captured(1).toStdString(),
                     one.captured(2).toStdString()});
  }
  return found;
}

TEST(FormatExamples, AreThereAndEachTellsItsResult) {
  const std::vector<Example> all = examples();
  EXPECT_FALSE(all.empty());
  const std::string page = bytesOf(ZTCAD_TEST_FORMAT_PAGE);
  EXPECT_EQ(static_cast<int>(all.size()), QString::fromStdString(page).count("```xml"))
      << "one was not understood";
  EXPECT_EQ(static_cast<int>(all.size()), QString::fromStdString(page).count("<!-- loads with "));
  for (const Example& example : all)
    EXPECT_NE(example.claim, "") << ZTCAD_TEST_FORMAT_PAGE << ":" << example.line;
}

TEST(FormatExamples, LoadWithTheResultAboveThem) {
  for (const Example& example : examples()) {
    const TemporaryFiles files;
    const Loaded loaded = loadFile(files.put("example.xml", example.text));
    EXPECT_EQ(std::to_string(loaded.code), example.claim) << ZTCAD_TEST_FORMAT_PAGE << ":" << example.line;
    EXPECT_FALSE(loaded.code == 0 && loaded.fault) << ZTCAD_TEST_FORMAT_PAGE << ":" << example.line;
  }
}

}  // namespace
