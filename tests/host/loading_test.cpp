// Loading the library has no side effects on the process beyond its own initialisation.

#include <gtest/gtest.h>
#include <filesystem>

#include "file_openings.h"
#include "loaded_library.h"
#include "mapped_files.h"
#include "plain_work.h"
#include "scratch_folder.h"

namespace {

std::ptrdiff_t openDescriptors() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                       std::filesystem::directory_iterator());
}

TEST(Loading, MapsSharedObjectsOnly) {
  const std::set<std::string> before = mappedFiles();
  permanentlyLoadedLibrary();
  for (const std::string& file : mappedFiles()) {
    if (before.count(file) != 0) continue;
    EXPECT_NE(file.find(".so"), std::string::npos) << file;
    for (const char* const loadedOnDemand : {"/gconv/", "/plugins/"})
      EXPECT_EQ(file.find(loadedOnDemand), std::string::npos) << file;
  }
}

TEST(Loading, OpensNoFile) {
  const ScratchFolder folder;
  const std::string fileName = folder.file("absent.xml");
  const auto descriptorsBefore = openDescriptors();
  const FileOpenings openings;

  const LoadedLibrary& library = permanentlyLoadedLibrary();
  EXPECT_EQ(openings.names(), std::vector<std::string>());
  EXPECT_EQ(openDescriptors(), descriptorsBefore);

  // checks the recording: a file that the library opens is recorded
  ztCAD_GMDDocument* const document = library.crtGMDDocument("");
  library.SaveGMDDocument(document, fileName);
  bool fault = false;
  std::int32_t code = -1;
  library.DeleteGMDDoc(library.crtGMDDocumentFromFile(fileName, code, fault));
  library.DeleteGMDDoc(document);
  EXPECT_EQ(code, 0);
  EXPECT_TRUE(openings.contain(fileName));
}

}  // namespace
