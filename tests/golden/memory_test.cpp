#include <gtest/gtest.h>
#include <string>

#include "api/failing_memory.h"
#include "api/host.h"

// Loading, updating and saving whole documents when memory runs out: every allocation of a call fails in
// turn.

namespace {

using Mode = FailingMemory::Mode;

std::string golden(const std::string& name) { return bytesOf(ZTCAD_TEST_GOLDEN_FOLDER "/" + name + ".xml"); }

/// A solid whose lists reallocate several times while they are read.
std::string longLists() {
  std::string vertices;
  std::string facets;
  for (int i = 0; i < 3000; ++i) {
    vertices += std::to_string(i) + ", 0.5, -1;\n";
    facets += std::to_string(i) + ", 0, 1;\n";
  }
  return "<GMD><solid name='S' method='triangulation'><vertices>" + vertices + "</vertices><faces>" + facets +
         "</faces></solid></GMD>";
}

struct Input {
  const char* name;
  std::string xml;
};

void PrintTo(const Input& input, std::ostream* out) { *out << input.name; }

class WholeDocuments : public testing::TestWithParam<Input> {
 protected:
  const TemporaryFiles files;
  const std::string file = files.put("document.xml", GetParam().xml);
  const std::string expected = savedBytes(loadFile(file).document.get());

  /// Repeats `call` until none of its allocations fails: each allocation in turn fails, first alone and then
  /// with all that follow it. `check` receives whether an allocation failed and checks the outcome.
  template <typename Prepare, typename Call, typename Check>
  void failEach(Prepare&& prepare, Call&& call, Check&& check) {
    for (const Mode mode : {Mode::Once, Mode::Permanently}) {
      bool failed = true;
      for (long granted = 0; failed; ++granted) {
        prepare();
        {
          const FailingMemory memory(granted, mode);
          call();
          failed = memory.hasFailed();
        }
        check(failed);
        ASSERT_FALSE(HasFailure()) << "failing allocation after " << granted << " granted ones";
      }
    }
  }
};

TEST_P(WholeDocuments, LoadCompletelyOrNotAtAll) {
  Loaded loaded;
  failEach([&] { loaded = Loaded(); },
           [&] { loaded.document.reset(crtGMDDocumentFromFile(file, loaded.code, loaded.fault)); },
           [&](bool failed) {
             EXPECT_EQ(loaded.code, failed ? 110 : 0);
             EXPECT_TRUE(failed || savedBytes(loaded.document.get()) == expected);
           });
}

TEST_P(WholeDocuments, UpdateCompletelyOrNotAtAll) {
  Document document;
  std::int32_t code = -1;
  bool fault = true;
  failEach(
      [&] {
        document = newDocument();
        addPointToDoc(pointNamed("old"), document.get());
      },
      [&] { UpdateGMDDoc(document.get(), file, code, fault); },
      [&](bool failed) {
        EXPECT_EQ(code, failed ? 110 : 0);
        if (failed) {
          EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"old"});
          EXPECT_TRUE(ztCAD_getStructures(document.get())->empty());
        } else {
          EXPECT_EQ(savedBytes(document.get()), expected);
        }
      });
}

TEST_P(WholeDocuments, AreSavedCompletelyOrNotAtAll) {
  const Loaded loaded = loadFile(file);
  const std::string target = files.path("saved.xml");
  failEach([&] { putBytes(target, "earlier"); }, [&] { SaveGMDDocument(loaded.document.get(), target); },
           [&](bool failed) { EXPECT_EQ(bytesOf(target), failed ? "earlier" : expected); });
  EXPECT_EQ(files.names(), (Names{"document.xml", "saved.xml"}));
}

// A question mark inside an instruction is not plain XML, so the general reader reads the document.
INSTANTIATE_TEST_SUITE_P(Golden, WholeDocuments,
                         testing::Values(Input{"EveryKind", golden("P_every_kind")},
                                         Input{"EveryKindThroughDom", golden("P_every_kind") + "<?end a?b?>"},
                                         Input{"Structures", golden("P_structures_of_every_kind")},
                                         Input{"LongLists", longLists()},
                                         Input{"LongListsThroughDom", longLists() + "<?end a?b?>"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
