// File names passed by hosts are UTF-8 on Windows and bytes elsewhere, whatever the locale.

#include <gtest/gtest.h>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "loaded_library.h"
#include "plain_work.h"
#include "scratch_folder.h"

namespace {

std::string bytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::size_t pointsIn(const LoadedLibrary& library, const std::string& fileName) {
  std::int32_t code = -1;
  bool fault = true;
  ztCAD_GMDDocument* const document = library.crtGMDDocumentFromFile(fileName, code, fault);
  EXPECT_EQ(code, 0) << fileName;
  EXPECT_FALSE(fault) << fileName;
  const std::size_t count = library.ztCAD_getPoints(document)->size();
  library.DeleteGMDDoc(document);
  return count;
}

TEST(FileNames, CanContainCyrillicLettersAndSpaces) {
  const LoadedLibrary& library = permanentlyLoadedLibrary();
  const ScratchFolder folder;
  ztCAD_GMDDocument* const document = makeDocument(library);
  for (const char* const name : {"Деталь.xml", "узел подвески № 5.xml", "a b.xml", "零件.xml"}) {
    const std::string fileName = folder.file(name);
    library.SaveGMDDocument(document, fileName);
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::u8path(fileName))) << name;
    EXPECT_EQ(pointsIn(library, fileName), static_cast<std::size_t>(pointsPerRun)) << name;
  }
  library.DeleteGMDDoc(document);
}

TEST(FileNames, FoldersCanHaveCyrillicNames) {
  const LoadedLibrary& library = permanentlyLoadedLibrary();
  const ScratchFolder folder;
  const auto inner = std::filesystem::u8path(folder.file("Мои документы"));
  std::filesystem::create_directory(inner);
  ztCAD_GMDDocument* const document = makeDocument(library);
  library.SaveGMDDocument(document, (inner / "a.xml").u8string());
  EXPECT_EQ(pointsIn(library, (inner / "a.xml").u8string()), static_cast<std::size_t>(pointsPerRun));
  library.DeleteGMDDoc(document);
}

#if !defined(_WIN32)
// Names that are no UTF-8: two names of three letters each in windows-1251.
TEST(FileNames, AreBytesThatGoToTheSystemUnchanged) {
  const LoadedLibrary& library = permanentlyLoadedLibrary();
  const ScratchFolder folder;
  const std::string one = folder.file("\xec\xe8\xf0.xml");
  const std::string other = folder.file("\xe4\xee\xec.xml");
  ztCAD_GMDDocument* const full = makeDocument(library);
  ztCAD_GMDDocument* const empty = library.crtGMDDocument("");
  library.SaveGMDDocument(full, one);
  library.SaveGMDDocument(empty, other);
  EXPECT_TRUE(std::filesystem::is_regular_file(one));
  EXPECT_TRUE(std::filesystem::is_regular_file(other));
  EXPECT_EQ(pointsIn(library, one), static_cast<std::size_t>(pointsPerRun));
  EXPECT_EQ(pointsIn(library, other), 0U);
  library.DeleteGMDDoc(full);
  library.DeleteGMDDoc(empty);
}
#endif

TEST(SavedFiles, HaveTheSystemsLineEndsAndAreReadWithEither) {
  const LoadedLibrary& library = permanentlyLoadedLibrary();
  const ScratchFolder folder;
  ztCAD_GMDDocument* const document = makeDocument(library);
  library.SaveGMDDocument(document, folder.file("saved.xml"));
  library.DeleteGMDDoc(document);

  const std::string saved = bytesOf(std::filesystem::u8path(folder.file("saved.xml")));
  std::string withLf;
  std::string withCrLf;
  for (const char byte : saved) {
    if (byte == '\r') continue;
    if (byte == '\n') withCrLf += '\r';
    withLf += byte;
    withCrLf += byte;
  }
#if defined(_WIN32)
  EXPECT_EQ(saved, withCrLf);
#else
  EXPECT_EQ(saved, withLf);
#endif
  for (const std::string& text : {withLf, withCrLf}) {
    std::ofstream(std::filesystem::u8path(folder.file("other.xml")), std::ios::binary) << text;
    EXPECT_EQ(pointsIn(library, folder.file("other.xml")), static_cast<std::size_t>(pointsPerRun));
  }
}

}  // namespace
