#include <gtest/gtest.h>
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "documents.h"
#include "temporary_files.h"

// The pages docs/rules/*.md of this library. Each has a block that reports exactly its rule, at the place
// that the block states, and one that reports nothing. A block "part=<file>" is a file that references name.
// A block without a root element is the content of one.

namespace {

const std::filesystem::path pages = ZTCAD_TEST_RULE_PAGES;

// about documents that a program builds: checks_test.cpp
const std::set<std::string> notFromText = {"system-size"};

struct Block {
  std::map<std::string, std::string> options;  // "clean", "reports", "part"; members of the options
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

/// Where each element is in a text whose elements are in the order of a save: by path, offsets of "<".
std::map<std::string, std::size_t> placesOf(const std::string& text) {
  std::map<std::string, std::size_t> places;
  std::vector<std::string> open = {""};
  std::vector<std::map<std::string, int>> numbers(1);
  for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
    if (text[at + 1] == '/') {
      open.pop_back();
      numbers.pop_back();
      continue;
    }
    const std::string tag = text.substr(at + 1, text.find_first_of(" />\n", at) - at - 1);
    const int number = ++numbers.back()[tag];
    const std::string path =
        open.back() + '/' + tag + (open.size() == 1 ? "" : '[' + std::to_string(number) + ']');
    places[path] = at;
    if (text[text.find('>', at) - 1] == '/') continue;
    open.push_back(path);
    numbers.emplace_back();
  }
  return places;
}

/// "line:column rule" of a finding in a text.
std::string located(const ztCADInspect_Finding& finding, const std::string& text) {
  std::string path = finding.path;
  std::size_t at = std::string::npos;
  if (finding.attribute) {
    path.resize(path.rfind("/@"));
    at = text.find(std::string(" ") + finding.attribute + "=", placesOf(text).at(path)) + 1;
  } else {
    at = placesOf(text).at(path);
  }
  const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
  const std::size_t start = text.rfind('\n', at) + 1;
  return std::to_string(line) + ':' + std::to_string(at - start + 1) + ' ' + finding.rule;
}

std::vector<std::string> findingsIn(const Block& block, const TemporaryFiles& files) {
  const std::string text = "<GMD>\n" + block.text + "</GMD>\n";
  ztCAD_Review* const review =
      ztCAD_reviewText(text.data(), static_cast<std::int64_t>(text.size()), -1, nullptr);
  for (std::int64_t i = 0; i < ztCAD_findingCount(review); ++i)
    ADD_FAILURE() << "a finding of the reader: " << ztCAD_findingAt(review, i)->message;
  const DocumentHandle document(ztCAD_takeReviewedDocument(review));
  ztCAD_endReview(review);

  ztCADInspect_Options options = defaultOptions();
  for (const auto& [name, value] : block.options) {
    if (name == "greatestFileSize") options.greatestFileSize = std::stoll(value);
    if (name == "greatestItemCount") options.greatestItemCount = std::stoll(value);
    if (name == "greatestDepth") options.greatestDepth = std::stoi(value);
  }
  const SceneHandle scene = sceneOf(document, &options, files.folder());
  const FindingsHandle findings(ztCADInspect_check(scene.get(), ztCADInspect_CheckAll));
  std::vector<std::string> found;
  for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings.get()); ++i)
    found.push_back(located(*ztCADInspect_findingAt(findings.get(), i), text));
  return found;
}

std::vector<std::string> ruleNames() {
  std::vector<std::string> names;
  for (std::int32_t i = 0; i < ztCADInspect_ruleCount(); ++i)
    names.emplace_back(ztCADInspect_ruleAt(i)->name);
  return names;
}

class RulePage : public testing::TestWithParam<std::string> {};

TEST_P(RulePage, ReportsWhatItShows) {
  const TemporaryFiles files;
  const std::vector<Block> blocks = blocksOf(bytesOf((pages / (GetParam() + ".md")).string()));
  int reporting = 0;
  int clean = 0;
  for (const Block& block : blocks) {
    SCOPED_TRACE(block.text);
    ASSERT_EQ(int(block.has("reports")) + int(block.has("clean")) + int(block.has("part")), 1);
    if (block.has("part")) {
      files.put(block.options.at("part"), block.text);
    } else if (block.has("clean")) {
      ++clean;
      EXPECT_EQ(findingsIn(block, files), std::vector<std::string>());
    } else {
      ++reporting;
      EXPECT_EQ(findingsIn(block, files),
                std::vector<std::string>{block.options.at("reports") + ' ' + GetParam()});
    }
  }
  const int expected = notFromText.count(GetParam()) > 0 ? 0 : 1;
  EXPECT_EQ(reporting, expected);
  EXPECT_EQ(clean, expected);
}

TEST_P(RulePage, StartsWithTheDeclarationOfTheRule) {
  const char* const severities[] = {"note", "warning", "error"};
  for (std::int32_t i = 0; i < ztCADInspect_ruleCount(); ++i) {
    const ztCAD_Rule& rule = *ztCADInspect_ruleAt(i);
    if (rule.name != GetParam()) continue;
    const std::string start = "# " + GetParam() + "\n\n" + severities[rule.severity] + ", since " +
                              rule.since + ". " + rule.sentence + "\n\n";
    EXPECT_EQ(bytesOf((pages / (GetParam() + ".md")).string()).substr(0, start.size()), start);
  }
}

INSTANTIATE_TEST_SUITE_P(Rules, RulePage, testing::ValuesIn(ruleNames()), [](const auto& rule) {
  std::string name = rule.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
});

TEST(Rules, AreInAlphabeticalOrderAndNoneIsARuleOfTheReader) {
  const std::vector<std::string> names = ruleNames();
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  for (std::int32_t i = 0; i < ztCAD_ruleCount(); ++i)
    EXPECT_EQ(std::count(names.begin(), names.end(), ztCAD_ruleAt(i)->name), 0);
  EXPECT_EQ(ztCADInspect_ruleAt(-1), nullptr);
  EXPECT_EQ(ztCADInspect_ruleAt(ztCADInspect_ruleCount()), nullptr);
}

}  // namespace
