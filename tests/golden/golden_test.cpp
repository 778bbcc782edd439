#include <gtest/gtest.h>
#include <algorithm>
#include <cstdlib>
#include <QDir>
#include <string>
#include <vector>

#include "api/host.h"

// Whole documents. Each P_*.xml in this folder must load with code 0, and saving it must produce exactly the
// bytes of its P_*.saved.xml. Each N_<code>_*.xml must fail with the code in its name. A file added to the
// folder becomes a test.
//
// After an intended change of the saved bytes, rewrite the *.saved.xml files with
//
//     ZTCAD_REFRESH_GOLDEN=1 build/debug/tests/golden_tests
//
// and review the difference like any other change before committing it.

namespace {

const std::string folder = ZTCAD_TEST_GOLDEN_FOLDER;
const std::string xml = ".xml";
const std::string savedXml = ".saved.xml";

bool endsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

std::string withoutEnd(const std::string& text, const std::string& end) {
  return text.substr(0, text.size() - end.size());
}

/// Names of the files that match the pattern, without ".xml"; saved documents are left out.
std::vector<std::string> documents(const char* pattern) {
  std::vector<std::string> names;
  for (const QString& file :
       QDir(QString::fromStdString(folder)).entryList({pattern}, QDir::Files, QDir::Name)) {
    const std::string name = file.toStdString();
    if (!endsWith(name, savedXml)) names.push_back(withoutEnd(name, xml));
  }
  return names;
}

std::string pathOf(const std::string& name, const std::string& ending = xml) {
  return folder + '/' + name + ending;
}

std::string parameterName(const testing::TestParamInfo<std::string>& info) { return info.param; }

bool refreshes() { return std::getenv("ZTCAD_REFRESH_GOLDEN") != nullptr; }

void compareWithExpected(const std::string& name, const std::string& saved) {
  const std::string expected = pathOf(name, savedXml);
  if (refreshes()) {
    putBytes(expected, saved);
    GTEST_SKIP() << "wrote " << expected;
  }
  EXPECT_EQ(saved, bytesOf(expected))
      << "If the new bytes are intended, run this program with ZTCAD_REFRESH_GOLDEN=1 and review the difference.";
}

class GoodDocument : public testing::TestWithParam<std::string> {};

TEST_P(GoodDocument, LoadsAndIsSavedAsExpected) {
  const Loaded loaded = loadFile(pathOf(GetParam()));
  ASSERT_EQ(loaded.code, 0);
  compareWithExpected(GetParam(), savedBytes(loaded.document.get()));
}

TEST_P(GoodDocument, LoadsFromAStringAsFromAFile) {
  const Loaded fromFile = loadFile(pathOf(GetParam()));
  const Parsed fromString = parse(bytesOf(pathOf(GetParam())));
  EXPECT_TRUE(fromString.parsed) << fromString.message;
  EXPECT_EQ(savedBytes(fromString.document.get()), savedBytes(fromFile.document.get()));
  EXPECT_EQ(textOf(fromString.document.get(), true), textOf(fromFile.document.get(), true));
  EXPECT_EQ(textOf(fromString.document.get(), false), textOf(fromFile.document.get(), false));
}

TEST_P(GoodDocument, SavingTheSavedDocumentYieldsTheSameBytes) {
  const std::string saved = savedBytes(loadFile(pathOf(GetParam())).document.get());
  const TemporaryFiles files;
  const Loaded again = loadFile(files.put("saved.xml", saved));
  EXPECT_EQ(again.code, 0);
  EXPECT_EQ(savedBytes(again.document.get()), saved);
}

INSTANTIATE_TEST_SUITE_P(Golden, GoodDocument, testing::ValuesIn(documents("P_*.xml")), parameterName);

class BadDocument : public testing::TestWithParam<std::string> {};

TEST_P(BadDocument, FailsWithTheCodeInItsName) {
  const std::size_t digits = GetParam().find_first_of("0123456789");
  ASSERT_EQ(digits, 2u) << "a bad document must be named N_<code>_<description>.xml";
  const Loaded loaded = loadFile(pathOf(GetParam()));
  ASSERT_NE(loaded.document, nullptr);
  EXPECT_EQ(loaded.code, std::stoi(GetParam().substr(digits)));
}

INSTANTIATE_TEST_SUITE_P(Golden, BadDocument, testing::ValuesIn(documents("N_*.xml")), parameterName);

TEST(GoldenFolder, HoldsNoFileThatIsNotTested) {
  std::vector<std::string> known;
  for (const std::string& name : documents("P_*.xml")) {
    known.push_back(name + xml);
    known.push_back(name + savedXml);
  }
  for (const std::string& name : documents("N_*.xml"))
    known.push_back(name + xml);
  std::sort(known.begin(), known.end());
  std::vector<std::string> present;
  for (const QString& file : QDir(QString::fromStdString(folder)).entryList({"*.xml"}, QDir::Files))
    present.push_back(file.toStdString());
  std::sort(present.begin(), present.end());
  EXPECT_EQ(present, known);
}

}  // namespace
