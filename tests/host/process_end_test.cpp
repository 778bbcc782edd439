// The end of a process that opened the library and did not close it. Each test observes the end of a child
// process.

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

// On Windows the static objects of a program are destroyed before those of any library, and libraries loaded
// earlier are destroyed later: the calls are made from such a library.
class LateCaller {
 public:
  void prepare(const LateFunctions& functions) {
    static LateCalls calls;  // static, so that its memory is valid until the end
    calls.prepare(functions);
    callOnDestruction([] { calls.run(); });
  }
};

#else

/// A static object of the host. It was created before the library was opened, so it is destroyed after the
/// unload step.
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

TEST(ProcessEnd, SucceedsWithoutClosingTheLibrary) {
  const auto child = [] {
    runWorkload(permanentlyLoadedLibrary());
    end("worked");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "worked");
}

TEST(ProcessEnd, SucceedsWithUndeletedDocuments) {
  const auto child = [] {
    const IntendedLeak ownedMemory;
    makeDocument(permanentlyLoadedLibrary());
    end("created");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "created");
}

TEST(ProcessEnd, AStaticObjectOfTheHostMayCallAfterTheUnloadStep) {
  const auto child = [] {
    const LoadedLibrary& library = permanentlyLoadedLibrary();
    lateCaller.prepare({&library.addPointToDoc, &library.checkGMDDocument, &library.ClearGMDDoc,
                        &library.crtCoord, &library.crtGMDDocument, &library.crtPoint, &library.DeleteGMDDoc,
                        &library.getPointCoord, &library.ztCAD_getPoints});
    end("main has ended, ");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "main has ended, late calls done");
}

}  // namespace
