// The end of a process that is linked with the library. Each test observes the end of a child process.

#include <gtest/gtest.h>
#include <ztCAD/ztCAD.h>
#include <cstdio>
#include <cstdlib>

#include "late_calls.h"
#include "late_part.h"

namespace {

[[noreturn]] void end(const char* lastWords) {
  std::fputs(lastWords, stderr);
  std::exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
}

#if !defined(_WIN32)  // on Windows the shared object is destroyed before the library

LateCalls lateCalls;  // static, so that its memory is valid until the end

TEST(LinkedProcessEnd, ASharedObjectOfTheHostMayCallAfterTheUnloadStep) {
  const auto child = [] {
    lateCalls.prepare({addPointToDoc, checkGMDDocument, ClearGMDDoc, crtCoord, crtGMDDocument, crtPoint,
                       DeleteGMDDoc, getPointCoord, ztCAD_getPoints});
    callOnDestruction([] { lateCalls.run(); });
    end("main has ended, ");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "main has ended, late calls done");
}

#endif

/// A static object of the host that owns a document.
class DocumentOwner {
 public:
  DocumentOwner() = default;
  ~DocumentOwner() {
    DeleteGMDDoc(document);
    if (document) std::fputs("deleted by its owner", stderr);
  }
  DocumentOwner(const DocumentOwner&) = delete;
  DocumentOwner& operator=(const DocumentOwner&) = delete;

  ztCAD_GMDDocument* document = nullptr;
};

DocumentOwner owner;

TEST(LinkedProcessEnd, AStaticObjectOfTheHostCanOwnADocument) {
  const auto child = [] {
    const double at = 1;
    bool nameIsFree = false;
    owner.document = crtGMDDocument("owned");
    addPointToDoc(crtPoint("P", crtCoord(&at, &at, &at), nameIsFree), owner.document);
    end("main has ended, ");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "main has ended, deleted by its owner");
}

TEST(LinkedProcessEnd, SucceedsWithUndeletedDocuments) {
  const auto child = [] {
    const IntendedLeak ownedMemory;
    crtGMDDocument("never deleted");
    end("created");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "created");
}

}  // namespace
