#include <check/documents.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "temporary_files.h"

namespace {

/// The documents as "name" or "name: problem", one a line, without the name of the folder before them.
std::string found(const TemporaryFiles& files, const std::vector<std::string>& paths) {
  std::string text;
  for (const cli::DocumentName& document : cli::findDocuments(paths)) {
    std::string name = document.name;
    if (name.compare(0, files.folder().size(), files.folder()) == 0)
      name = name.substr(files.folder().size());
    text += name + (document.problem.empty() ? "" : ": " + document.problem) + "\n";
  }
  return text;
}

void makeFolder(const TemporaryFiles& files, const std::string& name) {
  std::filesystem::create_directories(std::filesystem::u8path(files.path(name)));
}

}  // namespace

TEST(Documents, OfAFolderAreInTheOrderOfTheirNames) {
  const TemporaryFiles files;
  makeFolder(files, "b/deep");
  for (const char* name : {"c.xml", "a.xml", "b/2.xml", "b/deep/1.xml", "b.xml", "Z.XML", "notes.txt", "xml"})
    files.put(name, "");
  EXPECT_EQ(found(files, {files.folder()}), "/Z.XML\n/a.xml\n/b.xml\n/b/2.xml\n/b/deep/1.xml\n/c.xml\n");
}

TEST(Documents, AreInTheOrderOfTheArgumentsEachOnce) {
  const TemporaryFiles files;
  makeFolder(files, "folder");
  const std::string a = files.put("folder/a.xml", "");
  const std::string b = files.put("folder/b.txt", "");
  EXPECT_EQ(found(files, {b, files.path("folder"), a, "-", b}), "/folder/b.txt\n/folder/a.xml\n-\n");
}

TEST(Documents, ThatAreNotThereAreNamedAllTheSame) {
  const TemporaryFiles files;
  EXPECT_EQ(found(files, {files.path("missing.xml")}), "/missing.xml\n");
}

TEST(Documents, OfAFolderWithoutAnyAreAProblem) {
  const TemporaryFiles files;
  makeFolder(files, "empty/deep");
  EXPECT_EQ(found(files, {files.path("empty")}), "/empty: the folder has no documents (*.xml)\n");
}

TEST(Documents, HaveNoDotBeforeThem) {
  EXPECT_EQ(cli::findDocuments({"./a.xml"}).at(0).name, "a.xml");
  EXPECT_EQ(cli::findDocuments({".//a.xml"}).at(0).name, "a.xml");
  EXPECT_EQ(cli::findDocuments({"./-"}).at(0).name, "./-");
  EXPECT_EQ(cli::findDocuments({"../a.xml"}).at(0).name, "../a.xml");
}
