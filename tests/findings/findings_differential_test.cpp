#include <gtest/gtest.h>
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "differential/mutated_xml.h"
#include "random_seed.h"
#include "reviewed.h"

// Findings of many texts: golden documents, inputs of the fuzzers and mutated documents.

namespace {

std::vector<std::string> filesBelow(const std::filesystem::path& folder) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files.push_back(entry.path().string());
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> seedTexts() {
  std::vector<std::string> texts;
  for (const std::string& file : filesBelow(ZTCAD_TEST_GOLDEN_FOLDER))
    if (bytesOf(file).size() < 20000) texts.push_back(bytesOf(file));
  return texts;
}

/// Words of the format in wrong places, which the fragments of XML lack.
const char* const modelFragments[] = {"name",
                                      " name=''",
                                      " center='1'",
                                      "method='sphere'",
                                      "<header/>",
                                      "RGB",
                                      "CS",
                                      "1e9,",
                                      ";",
                                      "<vertices>1,2;</vertices>",
                                      "<solid method='x'/>",
                                      "<structure>",
                                      "</structure>",
                                      "<point name='A'/>",
                                      "<detail name='D'/>",
                                      "1.23456789",
                                      "MIP",
                                      "<pointRef/>"};

void mutateModel(std::string& bytes, Dice& dice) {
  if (dice.oneIn(3)) return mutate(bytes, dice);
  bytes.insert(static_cast<std::size_t>(dice.roll(static_cast<int>(bytes.size()) + 1)),
               dice.pick(modelFragments));
}

bool isInstruction(const CopiedFinding& finding) { return finding.rule == "instruction-not-kept"; }

std::vector<CopiedFinding> withoutInstructions(std::vector<CopiedFinding> findings) {
  findings.erase(std::remove_if(findings.begin(), findings.end(), isInstruction), findings.end());
  return findings;
}

void expectSensiblePlaces(const Reviewed& reviewed, std::size_t size) {
  std::int64_t last = 0;
  for (const CopiedFinding& finding : reviewed.findings) {
    EXPECT_GE(finding.place.line, 1);
    EXPECT_GE(finding.place.column, 1);
    EXPECT_GE(finding.place.offset, last) << "not in the order of the text";
    EXPECT_LE(finding.place.offset, static_cast<std::int64_t>(size));
    last = finding.place.offset;
  }
}

/// The result of a load alone agrees with the review's, and the review with itself.
/// @return whether the text was read, by both readers
bool check(const std::string& bytes, const TemporaryFiles& files) {
  const std::string file = files.put("reviewed.xml", bytes);
  const Reviewed reviewed = reviewFile(file);
  EXPECT_TRUE(reviewed.keepsTheLaw());
  expectSensiblePlaces(reviewed, bytes.size());
  ztCAD_Outcome outcome;
  ztCAD_GMDDocument* const document = ztCAD_loadDocument(file.c_str(), &outcome);
  EXPECT_EQ(reviewed.outcome.code, outcome.code);
  EXPECT_EQ(reviewed.outcome.fault, outcome.fault);
  EXPECT_STREQ(reviewed.outcome.message, outcome.message);
  ztCAD_endDocument(document);
  if (!document) {
    EXPECT_EQ(reviewed.findings.size(), 1u);
    return false;
  }
  // with such an instruction after the root element, the text is not plain, and the other reader reads it
  const Reviewed other = reviewFile(files.put("other.xml", bytes + "<?p a?b?>"));
  if (other.outcome.code == ztCAD_ResultNotParsed) return false;  // UTF-16, or incomplete bytes before it
  EXPECT_EQ(withoutInstructions(reviewed.findings), withoutInstructions(other.findings));
  return true;
}

TEST(FindingsOfManyTexts, KeepTheLawForGoldenDocuments) {
  const TemporaryFiles files;
  for (const std::string& file : filesBelow(ZTCAD_TEST_GOLDEN_FOLDER)) {
    SCOPED_TRACE(file);
    check(bytesOf(file), files);
  }
}

TEST(FindingsOfManyTexts, KeepTheLawForInputsOfTheFuzzers) {
  const TemporaryFiles files;
  const std::vector<std::string> inputs = filesBelow(ZTCAD_TEST_CORPUS);
  EXPECT_GT(inputs.size(), 100u);
  for (const std::string& file : inputs) {
    SCOPED_TRACE(file);
    check(bytesOf(file), files);
  }
}

TEST(FindingsOfManyTexts, AreTheSameWithBothReaders) {
  const TemporaryFiles files;
  Dice dice(randomSeed());
  const std::vector<std::string> texts = seedTexts();
  const int rounds = randomRounds(4000);
  int read = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    std::string bytes = dice.pick(texts);
    for (int mutations = dice.roll(3); mutations >= 0; --mutations)
      mutateModel(bytes, dice);
    SCOPED_TRACE(bytes);
    read += check(bytes, files) ? 1 : 0;
  }
  EXPECT_GT(read, rounds / 20);
}

}  // namespace
