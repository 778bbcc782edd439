#include <gtest/gtest.h>
#include <algorithm>
#include <QFileInfo>
#include <string>

#include "api/host.h"

// Documents of real parts. They are too large to lie here; where their folder is absent these tests pass over.

namespace {

struct Row {
  const char* file;
  const char* inform;
  std::size_t points;  ///< on the top level; those of structures and details are not counted
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.file; }

class RealDocument : public testing::TestWithParam<Row> {
 protected:
  void SetUp() override {
    if (!QFileInfo::exists(QString::fromStdString(path)))
      GTEST_SKIP() << path << " is not there; the CMake variable ZTCAD_REAL_DOCUMENTS names the folder";
  }
  const std::string path = std::string(ZTCAD_TEST_REAL_DOCUMENTS) + '/' + GetParam().file;
};

TEST_P(RealDocument, LoadsWithItsHeaderAndItsPoints) {
  const Loaded loaded = loadFile(path);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  EXPECT_EQ(loaded.document->header().inform(), QString(GetParam().inform));
  EXPECT_EQ(loaded.document->header().majorVersion(), 2u);
  EXPECT_EQ(ztCAD_getPoints(loaded.document.get())->size(), GetParam().points);
  EXPECT_TRUE(ztCAD_getTmplPoints(loaded.document.get())->empty());
}

TEST_P(RealDocument, IsSavedToBytesThatLoadAndSaveTheSame) {
  const std::string saved = savedBytes(loadFile(path).document.get());
  const TemporaryFiles files;
  const Loaded again = loadFile(files.put("saved.xml", saved));
  EXPECT_EQ(again.code, 0);
  EXPECT_EQ(savedBytes(again.document.get()), saved);
}

TEST_P(RealDocument, TreeHoldsEveryElementOfTheFile) {
  const Loaded loaded = loadFile(path);
  const std::string text = bytesOf(path);
  const std::string tree = textOf(loaded.document.get(), false);
  const auto count = [](const std::string& in, const std::string& what) {
    std::size_t found = 0;
    for (std::size_t at = in.find(what); at != std::string::npos; at = in.find(what, at + 1))
      ++found;
    return found;
  };
  for (const char* tag :
       {"<header ", "<structure ", "<detail ", "<solid ", "<vertices>", "<faces>", "<point "})
    EXPECT_EQ(count(tree, tag), count(text, tag)) << tag;
}

INSTANTIATE_TEST_SUITE_P(Files, RealDocument,
                         testing::Values(Row{"panda.xml", "panda", 0}, Row{"fandisk.xml", "fandisk", 0},
                                         Row{"rocker-arm.xml", "rocker-arm", 0}),
                         [](const auto& row) {
                           std::string name = row.param.inform;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
