// A host that opens the library by its file name and looks up functions by name. It is linked neither with
// the library nor with Qt or OpenMP. Each test runs in its own process, in which the library has not been
// opened before.

#include <gtest/gtest.h>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "heap.h"
#include "loaded_library.h"
#include "mapped_files.h"
#include "plain_work.h"

namespace {

#if defined(_WIN32)

void setEnvironment(const char* name, const char* value) { _putenv_s(name, value); }

#else

void setEnvironment(const char* name, const char* value) { setenv(name, value, 1); }

/// Loads the library's dependencies permanently, as in a host that uses Qt and OpenMP itself. Otherwise Qt,
/// ICU and OpenMP are unloaded and reloaded with the library, and leak some of their own memory each time.
void keepDependenciesLoaded() {
  const std::set<std::string> before = mappedFiles();
  const LoadedLibrary library;
  for (const MappedPart& part : mappedParts())
    if (before.count(part.file) == 0 && !part.isOfLibrary())
      dlopen(part.file.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

#endif

class Reloading : public testing::Test {
 protected:
  Reloading() {
    setEnvironment("OMP_NUM_THREADS", "3");  // OpenMP's thread count if the library did not set one
#if defined(__SANITIZE_ADDRESS__)
    keepDependenciesLoaded();  // otherwise the leak sanitizer reports the leaks of the dependencies
#endif
  }
};

void expectUnloaded() {
  EXPECT_FALSE(LoadedLibrary::isLoaded());
  EXPECT_FALSE(libraryIsMapped());
}

PlainResults openRunAndClose() {
  LoadedLibrary library;
  EXPECT_TRUE(LoadedLibrary::isLoaded());
  EXPECT_TRUE(libraryIsMapped());
  PlainResults results = runWorkload(library);
  library.close();
  return results;
}

TEST(PlainHost, StartsWithoutTheLibraryAndItsDependencies) {
  expectUnloaded();
  for (const std::string& file : mappedFiles()) {
    for (const char* const needed : {"Qt5Core", "Qt5Xml", "Qt6Core", "Qt6Xml", "libgomp"})
      EXPECT_EQ(file.find(needed), std::string::npos) << file;
  }
}

TEST_F(Reloading, AClosedLibraryIsUnloaded) {
  openRunAndClose();
  expectUnloaded();
}

TEST_F(Reloading, CopiedTextsStayValid) {
  const PlainResults results = openRunAndClose();
  expectUnloaded();
  EXPECT_EQ(results.version, ZTCAD_EXPECTED_VERSION);
  EXPECT_EQ(results.correctedName, "_1_hole");
  EXPECT_EQ(results.debugText.substr(0, 11), "ztCAD_GMD H");
  EXPECT_NE(results.savedBytes.find("name=\"P_$299\""), std::string::npos);
  EXPECT_NE(results.xml.find("inform=\"created by a plain host\""), std::string::npos);
  EXPECT_EQ(results.farthest, pointsPerRun);
}

TEST_F(Reloading, EveryOpeningStartsInTheInitialState) {
  const PlainResults first = openRunAndClose();
  for (int round = 0; round < 3; ++round) {
    expectUnloaded();
    EXPECT_TRUE(openRunAndClose() == first) << "round " << round;
  }
  expectUnloaded();
}

#if !defined(_WIN32)  // on Windows other libraries leave varying amounts of memory on the process heap

[[noreturn]] void reloadAndMeasureLeaks() {
  constexpr int roundsToSettle = 5;
  constexpr int rounds = 40;
  keepDependenciesLoaded();
  for (int round = 0; round < roundsToSettle; ++round)
    openRunAndClose();
  const std::size_t before = heapInUse();
  for (int round = 0; round < rounds; ++round)
    openRunAndClose();
  const std::size_t after = heapInUse();
  std::fprintf(stderr, "%zu bytes, then %zu bytes", before, after);
#if defined(__SANITIZE_ADDRESS__)
  // the sanitizer's runtime records each load until the process ends; it reports lost blocks itself
  constexpr std::size_t maxLeakPerRound = 80;
#else
  constexpr std::size_t maxLeakPerRound = 16;  // less than the smallest block
#endif
  const bool leaks = after > before + rounds * maxLeakPerRound;
  std::exit(leaks || testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
}

TEST_F(Reloading, RepeatedReloadingDoesNotLeak) {
  // Blocks in malloc's per-thread cache count as used and would distort the figures. malloc reads this
  // variable when a process starts, so the rounds run in a new process.
  setEnvironment("GLIBC_TUNABLES", "glibc.malloc.tcache_count=0");
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EXIT(reloadAndMeasureLeaks(), testing::ExitedWithCode(EXIT_SUCCESS), "bytes");
}

#endif

TEST_F(Reloading, ClosingASecondHandleKeepsTheLibraryAndItsObjects) {
  LoadedLibrary first;
  ztCAD_GMDDocument* const document = makeDocument(first);
  {
    LoadedLibrary second;
    EXPECT_EQ(&second.crtPoint, &first.crtPoint);
  }
  EXPECT_TRUE(LoadedLibrary::isLoaded());
  EXPECT_EQ(first.ztCAD_getPoints(document)->size(), static_cast<std::size_t>(pointsPerRun));
  first.DeleteGMDDoc(document);
  first.close();
  expectUnloaded();
}

TEST_F(Reloading, UndeletedDocumentsDoNotKeepTheLibraryLoaded) {
  for (int round = 0; round < 3; ++round) {
    LoadedLibrary library;
    {
      const IntendedLeak ownedMemory;
      for (int i = 0; i < 3; ++i)
        EXPECT_NE(makeDocument(library), nullptr);
    }
    library.close();
    expectUnloaded();
  }
  openRunAndClose();
}

/// Created structures and read structures, held by structures of both origins, by a document and by copies of
/// each other.
void makeStructures(const LoadedLibrary& library) {
  const double values[ztCAD_LCS::valueCount] = {};
  const ztCAD_LCS* const lcs = library.crtLCS_nostl(values);
  bool parsed = false;
  bool nameIsFree = false;
  std::string message;
  int line = 0;
  int column = 0;
  const char* const xml =
      R"(<GMD><structure name="A"><structure name="B"><structure name="C"/></structure></structure></GMD>)";
  ztCAD_GMDDocument* const document = library.crtGMDDocumentFromStdString(xml, parsed, message, line, column);
  ztCAD_Structure& ofTheDocument = library.ztCAD_getStructures(document)->front();
  ztCAD_commonStructure* const wasRead = ofTheDocument.structures().front();
  ztCAD_Structure* const inner = library.crtStructure("inner", lcs, nameIsFree);
  ztCAD_Structure* const outer = library.crtStructure("outer", lcs, nameIsFree);
  EXPECT_FALSE(library.addStructureToStructure(wasRead, outer));
  EXPECT_FALSE(library.addStructureToStructure(inner, outer));
  EXPECT_FALSE(library.addStructureToStructure(inner, wasRead));
  EXPECT_FALSE(library.addStructureToStructure(outer, &ofTheDocument));
  EXPECT_NE(library.crtTmplStructure("copy", outer, nameIsFree), nullptr);
  EXPECT_FALSE(library.addStructureToDoc(outer, document));
}

TEST_F(Reloading, StructuresThatHoldEachOtherAreDestroyedWithTheLibrary) {
  for (int round = 0; round < 3; ++round) {
    LoadedLibrary library;
    {
      const IntendedLeak ownedMemory;
      makeStructures(library);
      makeStructures(library);
    }
    library.close();
    expectUnloaded();
  }
}

TEST_F(Reloading, AThreadCanOpenUseAndCloseTheLibrary) {
  const PlainResults expected = openRunAndClose();
  for (int round = 0; round < 3; ++round) {
    std::thread([&] { EXPECT_TRUE(openRunAndClose() == expected); }).join();
    expectUnloaded();
  }
}

TEST_F(Reloading, OneThreadCanOpenAndAnotherUseAndCloseTheLibrary) {
  auto library = std::make_unique<LoadedLibrary>();
  std::thread([&] {
    runWorkload(*library);
    library->close();
  }).join();
  expectUnloaded();
}

// --------------------------------------------------------------------------------- parallel settings at load
TEST_F(Reloading, EveryLoadSetsTheThreadCountsToOne) {
  for (int round = 0; round < 3; ++round) {
    LoadedLibrary library;
    ztParallel* const settings = library.getParallel_Morvik();
    EXPECT_EQ(settings->mode, 1);
    EXPECT_EQ(settings->logicalThreads, 1U);
    EXPECT_EQ(settings->physicalThreads, 1U);
#if !defined(_WIN32)  // on Windows a lookup in the library does not search its dependencies
    int (&omp_get_max_threads)() = library.at("omp_get_max_threads");
    EXPECT_EQ(omp_get_max_threads(), 1);
#endif
    *settings = ztParallel{0, 7, 5};  // must not affect the next load
    library.close();
  }
}

}  // namespace
