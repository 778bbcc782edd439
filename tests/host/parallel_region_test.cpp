// A host that opens and closes the library inside its own parallel region.

#include <gtest/gtest.h>
#include <omp.h>
#include <memory>
#include <string>
#include <vector>

#include "loaded_library.h"
#include "mapped_files.h"
#include "support/captured_warnings.h"

namespace {

const std::vector<std::string> oneReport = {
    "Assert occurred in FILE: _Common/ztParallel; LINE: 267; EXPRESSION: "
    "( \"Primary\", _check_num_threads_curr() )."};

class ParallelRegion : public testing::Test {
 protected:
  ParallelRegion() { omp_set_dynamic(0); }

  /// Runs `body` on one thread of a parallel region with two threads.
  template <typename Body>
  void runInRegion(Body&& body) {
    int threads = 0;
#pragma omp parallel num_threads(2) default(none) shared(threads, body)
#pragma omp single
    {
      threads = omp_get_num_threads();
      body();
    }
    ASSERT_EQ(threads, 2) << "the host cannot start a second thread, so nothing is reported";
  }

  CapturedWarnings warnings;
};

TEST_F(ParallelRegion, LoadingInsideReportsToQtAndSucceeds) {
  std::size_t points = 0;
  runInRegion([&] {
    LoadedLibrary library;
    const double at = 1;
    bool nameIsFree = false;
    ztCAD_GMDDocument* const document = library.crtGMDDocument("");
    library.addPointToDoc(library.crtPoint("P", library.crtCoord(&at, &at, &at), nameIsFree), document);
    points = library.ztCAD_getPoints(document)->size();
    library.DeleteGMDDoc(document);
    library.close();
  });
  EXPECT_EQ(points, 1U);
  EXPECT_EQ(warnings.messages(), oneReport);
  EXPECT_FALSE(libraryIsMapped());
}

TEST_F(ParallelRegion, EveryLoadInsideReportsOnce) {
  runInRegion([] { LoadedLibrary(); });
  runInRegion([] { LoadedLibrary(); });
  EXPECT_EQ(warnings.messages(), (std::vector<std::string>{oneReport[0], oneReport[0]}));
}

TEST_F(ParallelRegion, ALibraryLoadedInsideWorksAndClosesOutside) {
  std::unique_ptr<LoadedLibrary> library;
  runInRegion([&] { library = std::make_unique<LoadedLibrary>(); });
  EXPECT_EQ(warnings.messages(), oneReport);
  EXPECT_EQ(library->getParallel_Morvik()->mode, 1);
  EXPECT_EQ(library->getParallel_Morvik()->logicalThreads, 1U);
  EXPECT_EQ(library->getParallel_Morvik()->physicalThreads, 1U);
  library->close();
  EXPECT_FALSE(libraryIsMapped());
}

TEST_F(ParallelRegion, ALibraryLoadedOutsideClosesInsideWithoutReport) {
  auto library = std::make_unique<LoadedLibrary>();
  runInRegion([&] { library->close(); });
  EXPECT_EQ(warnings.messages(), std::vector<std::string>());
  EXPECT_FALSE(libraryIsMapped());
}

}  // namespace
