// How a process ends that opened the library and did not close it. Each test looks at the end of a child process.

#include <gtest/gtest.h>
#include <cstdio>
#include <cstdlib>

#include "late_calls.h"
#include "loaded_library.h"
#include "plain_work.h"
#if defined(_WIN32)
#include "late_part.h"
#endif

namespace {

#if defined(_WIN32)

// Static objects of a program go there before any library does, but libraries that came earlier go later: this is called
// by one.
class LateCaller {
 public:
  void prepare(const LateFunctions& functions) {
    static LateCalls calls;  // its memory stays to the end
    calls.prepare(functions);
    callWhenThisPartGoes([] { calls.run(); });
  }
};

#else

/// A static object of the host. It was there before the library was opened, so its end comes after the unload step.
class LateCaller {
 public:
  LateCaller() = default;
  ~LateCaller() {
    if (m_calls.isPrepared()) m_calls.run();
  }
  LateCaller(const LateCaller&) = delete;
  LateCaller& operator=(const LateCaller&) = delete;

  void prepare(const LateFunctions& functions) { m_calls.prepare(functions); }

 private:
  LateCalls m_calls;
};

#endif

LateCaller lateCaller;

[[noreturn]] void end(const char* lastWords) {
  std::fputs(lastWords, stderr);
  std::exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
}

TEST(ProcessEnd, ComesWithoutClosing) {
  const auto child = [] {
    workARound(libraryThatIsNeverClosed());
    end("worked");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "worked");
}

TEST(ProcessEnd, ComesWithDocumentsThatNobodyDeleted) {
  const auto child = [] {
    const LeakIsMeant whatADocumentOwnsIsLost;
    makeDocument(libraryThatIsNeverClosed());
    end("made");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "made");
}

TEST(ProcessEnd, AStaticObjectOfTheHostMayCallAfterTheUnloadStep) {
  const auto child = [] {
    const LoadedLibrary& library = libraryThatIsNeverClosed();
    lateCaller.prepare({&library.addPointToDoc, &library.checkGMDDocument, &library.ClearGMDDoc,
                        &library.crtCoord, &library.crtGMDDocument, &library.crtPoint, &library.DeleteGMDDoc,
                        &library.getPointCoord, &library.ztCAD_getPoints});
    end("main is through, ");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "main is through, late calls done");
}

}  // namespace
