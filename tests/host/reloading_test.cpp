// A host that knows the library by its file name and its functions by theirs, and is linked with nothing of it: neither
// with Qt nor with OpenMP. Each test has a process of its own, in which nobody opened the library before.

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

/// Loads all that the library needs, and for good, as for a host that works with Qt and OpenMP itself. Without it Qt,
/// ICU and OpenMP go with the library and come again, and lose some memory of their own each time.
void keepWhatTheLibraryNeeds() {
  const std::set<std::string> before = mappedFiles();
  const LoadedLibrary library;
  for (const MappedPart& part : mappedParts())
    if (before.count(part.file) == 0 && !part.isOfTheLibrary())
      dlopen(part.file.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

#endif

class Reloading : public testing::Test {
 protected:
  Reloading() {
    setEnvironment("OMP_NUM_THREADS", "3");  // what OpenMP would take if the library did not set it
#if defined(__SANITIZE_ADDRESS__)
    keepWhatTheLibraryNeeds();  // the leak check would tell what those lose
#endif
  }
};

void expectGone() {
  EXPECT_FALSE(LoadedLibrary::isLoaded());
  EXPECT_FALSE(libraryIsMapped());
}

PlainResults openWorkAndClose() {
  LoadedLibrary library;
  EXPECT_TRUE(LoadedLibrary::isLoaded());
  EXPECT_TRUE(libraryIsMapped());
  PlainResults results = workARound(library);
  library.close();
  return results;
}

TEST(PlainHost, StartsWithNothingOfTheLibrary) {
  expectGone();
  for (const std::string& file : mappedFiles()) {
    for (const char* const needed : {"Qt5Core", "Qt5Xml", "libgomp"})
      EXPECT_EQ(file.find(needed), std::string::npos) << file;
  }
}

TEST_F(Reloading, AClosedLibraryLeavesTheProcess) {
  openWorkAndClose();
  expectGone();
}

TEST_F(Reloading, TextsThatWereCopiedOutStay) {
  const PlainResults results = openWorkAndClose();
  expectGone();
  EXPECT_EQ(results.version, ZTCAD_EXPECTED_VERSION);
  EXPECT_EQ(results.correctedName, "_1_hole");
  EXPECT_EQ(results.forPeople.substr(0, 11), "ztCAD_GMD H");
  EXPECT_NE(results.savedBytes.find("name=\"P_$299\""), std::string::npos);
  EXPECT_NE(results.xml.find("inform=\"made by a plain host\""), std::string::npos);
  EXPECT_EQ(results.farthest, pointsOfARound);
}

TEST_F(Reloading, EveryOpeningStartsFromTheBeginning) {
  const PlainResults first = openWorkAndClose();
  for (int round = 0; round < 3; ++round) {
    expectGone();
    EXPECT_TRUE(openWorkAndClose() == first) << "round " << round;
  }
  expectGone();
}

#if !defined(_WIN32)  // what each library leaves behind on the system's heap is Windows' own affair there

[[noreturn]] void goThroughRoundsAndTellWhatIsLost() {
  constexpr int roundsToSettle = 5;
  constexpr int rounds = 40;
  keepWhatTheLibraryNeeds();
  for (int round = 0; round < roundsToSettle; ++round)
    openWorkAndClose();
  const std::size_t before = heapInUse();
  for (int round = 0; round < rounds; ++round)
    openWorkAndClose();
  const std::size_t after = heapInUse();
  std::fprintf(stderr, "%zu bytes, then %zu bytes", before, after);
#if defined(__SANITIZE_ADDRESS__)
  // its runtime notes each load for the end of the process; lost blocks are for the leak check to find
  constexpr std::size_t lostPerRoundAtMost = 80;
#else
  constexpr std::size_t lostPerRoundAtMost = 16;  // less than the smallest block
#endif
  const bool isLost = after > before + rounds * lostPerRoundAtMost;
  std::exit(isLost || testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
}

TEST_F(Reloading, RoundsDoNotAddUpInMemory) {
  // Blocks that malloc holds ready for a thread count as used and blur the figures. It reads this when a process
  // starts, so the rounds run in a new one.
  setEnvironment("GLIBC_TUNABLES", "glibc.malloc.tcache_count=0");
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EXIT(goThroughRoundsAndTellWhatIsLost(), testing::ExitedWithCode(EXIT_SUCCESS), "bytes");
}

#endif

TEST_F(Reloading, ASecondHandleKeepsTheLibraryWithAllThatWasMade) {
  LoadedLibrary first;
  ztCAD_GMDDocument* const document = makeDocument(first);
  {
    LoadedLibrary second;
    EXPECT_EQ(&second.crtPoint, &first.crtPoint);
  }
  EXPECT_TRUE(LoadedLibrary::isLoaded());
  EXPECT_EQ(first.ztCAD_getPoints(document)->size(), static_cast<std::size_t>(pointsOfARound));
  first.DeleteGMDDoc(document);
  first.close();
  expectGone();
}

TEST_F(Reloading, DocumentsThatNobodyDeletedDoNotHoldTheLibrary) {
  for (int round = 0; round < 3; ++round) {
    LoadedLibrary library;
    {
      const LeakIsMeant whatSuchADocumentOwnsIsLost;
      for (int i = 0; i < 3; ++i)
        EXPECT_NE(makeDocument(library), nullptr);
    }
    library.close();
    expectGone();
  }
  openWorkAndClose();
}

/// Structures that were made and structures that were read, some held by others of either sort, by a document and by
/// each other's copies.
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

TEST_F(Reloading, StructuresThatHoldOneAnotherGoWithTheLibrary) {
  for (int round = 0; round < 3; ++round) {
    LoadedLibrary library;
    {
      const LeakIsMeant whatADocumentOwnsIsLost;
      makeStructures(library);
      makeStructures(library);
    }
    library.close();
    expectGone();
  }
}

TEST_F(Reloading, AThreadThatEndsMayOpenWorkAndClose) {
  const PlainResults expected = openWorkAndClose();
  for (int round = 0; round < 3; ++round) {
    std::thread([&] { EXPECT_TRUE(openWorkAndClose() == expected); }).join();
    expectGone();
  }
}

TEST_F(Reloading, OneThreadMayOpenAndAnotherWorkAndClose) {
  auto library = std::make_unique<LoadedLibrary>();
  std::thread([&] {
    workARound(*library);
    library->close();
  }).join();
  expectGone();
}

// ------------------------------------------------------------------------------------------ parallel settings at load
TEST_F(Reloading, AfterEachLoadEveryCountIsOne) {
  for (int round = 0; round < 3; ++round) {
    LoadedLibrary library;
    ztParallel* const settings = library.getParallel_Morvik();
    EXPECT_EQ(settings->mode, 1);
    EXPECT_EQ(settings->logicalThreads, 1U);
    EXPECT_EQ(settings->physicalThreads, 1U);
#if !defined(_WIN32)  // only here are the functions of OpenMP found through the library
    int (&omp_get_max_threads)() = library.at("omp_get_max_threads");
    EXPECT_EQ(omp_get_max_threads(), 1);
#endif
    *settings = ztParallel{0, 7, 5};  // the next load does not see this
    library.close();
  }
}

}  // namespace
