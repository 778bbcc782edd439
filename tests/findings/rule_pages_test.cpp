#include <gtest/gtest.h>
#include <algorithm>
#include <filesystem>
#include <map>
#include <QString>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "reviewed.h"

// The pages docs/rules/*.md of the reader's rules. Each has a block that reports exactly its rule, at the
// place that the block states, and one that reports nothing. A block without a root element is the content of
// one.

namespace {

const std::filesystem::path folder = ZTCAD_TEST_RULE_PAGES;

struct Block {
  std::map<std::string, std::string> options;  // "clean", "reports" with a place, "bytes" with an encoding
  std::string text;

  bool has(const std::string& option) const { return options.count(option) > 0; }
};

std::vector<Block> blocksOf(const std::string& page) {
  std::vector<Block> blocks;
  std::istringstream lines(page);
  bool isInside = false;
  for (std::string line; std::getline(lines, line);) {
    if (line == "```") {
      isInside = false;
    } else if (line.rfind("```xml ", 0) == 0) {
      isInside = true;
      blocks.emplace_back();
      std::istringstream words(line.substr(7));
      for (std::string word; words >> word;) {
        const std::size_t equals = std::min(word.find('='), word.size());
        blocks.back().options[word.substr(0, equals)] = word.substr(std::min(equals + 1, word.size()));
      }
    } else if (isInside) {
      blocks.back().text += line + '\n';
    }
  }
  return blocks;
}

bool isWholeDocument(const std::string& text) {
  return text.find("<GMD") != std::string::npos || text.find("<gmd") != std::string::npos;
}

/// "line:column" of each finding in a block, with its rule.
std::vector<std::string> findingsIn(const Block& block) {
  const bool isWhole = isWholeDocument(block.text);
  std::string bytes = isWhole ? block.text : "<GMD>\n" + block.text + "</GMD>\n";
  if (block.has("bytes")) {
    EXPECT_EQ(block.options.at("bytes"), "windows-1251");
    std::string encoded;
    for (const QChar c : QString::fromStdString(bytes)) {
      // the letters of the Russian alphabet but one are in order
      const char16_t unit = c.unicode();
      encoded += static_cast<char>(unit < 0x80 ? unit : unit - 0x410 + 0xc0);
    }
    bytes = encoded;
  }
  std::vector<std::string> found;
  const Reviewed reviewed = reviewBytes(bytes);
  EXPECT_TRUE(reviewed.keepsTheLaw());
  for (const CopiedFinding& finding : reviewed.findings)
    found.push_back(std::to_string(finding.place.line - (isWhole ? 0 : 1)) + ':' +
                    std::to_string(finding.place.column) + ' ' + finding.rule);
  return found;
}

std::vector<std::string> ruleNames() {
  std::vector<std::string> names;
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i)
    names.emplace_back(ztCAD_ruleAt(i)->name);
  return names;
}

class RulePage : public testing::TestWithParam<std::string> {};

TEST_P(RulePage, ReportsWhatItShows) {
  const std::vector<Block> blocks = blocksOf(bytesOf((folder / (GetParam() + ".md")).string()));
  int reporting = 0;
  int clean = 0;
  for (const Block& block : blocks) {
    SCOPED_TRACE(block.text);
    ASSERT_NE(block.has("reports"), block.has("clean"));
    if (block.has("clean")) {
      ++clean;
      EXPECT_EQ(findingsIn(block), std::vector<std::string>());
    } else {
      ++reporting;
      EXPECT_EQ(findingsIn(block), std::vector<std::string>{block.options.at("reports") + ' ' + GetParam()});
    }
  }
  EXPECT_GE(reporting, 1);
  EXPECT_GE(clean, 1);
}

TEST_P(RulePage, StartsWithTheDeclarationOfTheRule) {
  const char* const severities[] = {"note", "warning", "error"};
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i) {
    const ztCAD_Rule& rule = *ztCAD_ruleAt(i);
    if (rule.name != GetParam()) continue;
    const std::string start = "# " + GetParam() + "\n\n" + severities[rule.severity] + ", since " +
                              rule.since + ". " + rule.sentence + "\n\n";
    EXPECT_EQ(bytesOf((folder / (GetParam() + ".md")).string()).substr(0, start.size()), start);
  }
}

INSTANTIATE_TEST_SUITE_P(Rules, RulePage, testing::ValuesIn(ruleNames()), [](const auto& rule) {
  std::string name = rule.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
});

/// The rules of the library ztCADInspect, whose pages are in the same folder.
std::vector<std::string> ruleNamesOfInspect() {
  const std::string start = "ZTCAD_INSPECT_RULE(";
  std::istringstream lines(bytesOf(ZTCAD_TEST_INSPECT_RULES));
  std::vector<std::string> names;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(start, 0) != 0) continue;
    names.push_back(line.substr(start.size(), line.find(',') - start.size()));
    std::replace(names.back().begin(), names.back().end(), '_', '-');
  }
  return names;
}

TEST(Rules, HaveOnePageEach) {
  std::set<std::string> pages;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    pages.insert(entry.path().filename().string());
  std::set<std::string> expected;
  for (const std::string& name : ruleNames())
    expected.insert(name + ".md");
  const std::vector<std::string> others = ruleNamesOfInspect();
  EXPECT_GE(others.size(), 20U);
  for (const std::string& name : others)
    EXPECT_TRUE(expected.insert(name + ".md").second) << name;
  EXPECT_EQ(pages, expected);
}

TEST(Rules, AreInAlphabeticalOrder) {
  const std::vector<std::string> names = ruleNames();
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
}

TEST(Rules, HaveNoIndexOutOfRange) {
  EXPECT_EQ(ztCAD_ruleAt(-1), nullptr);
  EXPECT_EQ(ztCAD_ruleAt(ztCAD_ruleCount()), nullptr);
}

}  // namespace
