// How a process ends that is linked with the library. Each test looks at the end of a child process.

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

#if !defined(_WIN32)  // there the part goes first

LateCalls lateCalls;  // its memory stays to the end

TEST(LinkedProcessEnd, APartOfTheHostMayCallAfterTheUnloadStep) {
  const auto child = [] {
    lateCalls.prepare({addPointToDoc, checkGMDDocument, ClearGMDDoc, crtCoord, crtGMDDocument, crtPoint,
                       DeleteGMDDoc, getPointCoord, ztCAD_getPoints});
    callWhenThisPartGoes([] { lateCalls.run(); });
    end("main is through, ");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "main is through, late calls done");
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

TEST(LinkedProcessEnd, AStaticObjectOfTheHostMayOwnADocument) {
  const auto child = [] {
    const double at = 1;
    bool nameIsFree = false;
    owner.document = crtGMDDocument("owned");
    addPointToDoc(crtPoint("P", crtCoord(&at, &at, &at), nameIsFree), owner.document);
    end("main is through, ");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "main is through, deleted by its owner");
}

TEST(LinkedProcessEnd, ComesWithDocumentsThatNobodyDeleted) {
  const auto child = [] {
    const LeakIsMeant whatADocumentOwnsIsLost;
    crtGMDDocument("never deleted");
    end("made");
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(EXIT_SUCCESS), "made");
}

}  // namespace
