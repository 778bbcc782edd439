#include <gtest/gtest.h>
#include <string>

#include "api/failing_memory.h"
#include "api/host.h"

// Whole documents of every kind while memory runs out: every single piece that a call asks for is refused in turn.

namespace {

using Mode = FailingMemory::Mode;

std::string golden(const std::string& name) { return bytesOf(ZTCAD_TEST_GOLDEN_FOLDER "/" + name + ".xml"); }

/// A solid whose lists grow in several steps.
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

struct Whole {
  const char* name;
  std::string xml;
};

void PrintTo(const Whole& whole, std::ostream* out) { *out << whole.name; }

class WholeDocuments : public testing::TestWithParam<Whole> {
 protected:
  const TemporaryFiles files;
  const std::string file = files.put("document.xml", GetParam().xml);
  const std::string expected = savedBytes(loadFile(file).document.get());

  /// Makes `call` with every piece refused once and with every piece refused for good. `call` is told whether one was, and has
  /// to check the outcome.
  template <typename Prepare, typename Call, typename Check>
  void refuseEach(Prepare&& prepare, Call&& call, Check&& check) {
    for (const Mode mode : {Mode::Once, Mode::ForGood}) {
      bool refused = true;
      for (long granted = 0; refused; ++granted) {
        prepare();
        {
          const FailingMemory memory(granted, mode);
          call();
          refused = memory.hasRefused();
        }
        check(refused);
        ASSERT_FALSE(HasFailure()) << "with the refusal of the piece after " << granted << " others";
      }
    }
  }
};

TEST_P(WholeDocuments, LoadWholeOrNotAtAll) {
  Loaded loaded;
  refuseEach([&] { loaded = Loaded(); },
             [&] { loaded.document.reset(crtGMDDocumentFromFile(file, loaded.code, loaded.fault)); },
             [&](bool refused) {
               EXPECT_EQ(loaded.code, refused ? 110 : 0);
               EXPECT_TRUE(refused || savedBytes(loaded.document.get()) == expected);
             });
}

TEST_P(WholeDocuments, UpdateWholeOrNotAtAll) {
  Document document;
  std::int32_t code = -1;
  bool fault = true;
  refuseEach(
      [&] {
        document = newDocument();
        addPointToDoc(pointNamed("old"), document.get());
      },
      [&] { UpdateGMDDoc(document.get(), file, code, fault); },
      [&](bool refused) {
        EXPECT_EQ(code, refused ? 110 : 0);
        if (refused) {
          EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"old"});
          EXPECT_TRUE(ztCAD_getStructures(document.get())->empty());
        } else {
          EXPECT_EQ(savedBytes(document.get()), expected);
        }
      });
}

TEST_P(WholeDocuments, AreSavedWholeOrNotAtAll) {
  const Loaded loaded = loadFile(file);
  const std::string target = files.path("saved.xml");
  refuseEach([&] { putBytes(target, "earlier"); }, [&] { SaveGMDDocument(loaded.document.get(), target); },
             [&](bool refused) { EXPECT_EQ(bytesOf(target), refused ? "earlier" : expected); });
  EXPECT_EQ(files.names(), (Names{"document.xml", "saved.xml"}));
}

// An instruction takes a document to Qt's parser and its tree.
INSTANTIATE_TEST_SUITE_P(Golden, WholeDocuments,
                         testing::Values(Whole{"EveryKind", golden("P_every_kind")},
                                         Whole{"EveryKindThroughATree", golden("P_every_kind") + "<?end?>"},
                                         Whole{"Structures", golden("P_structures_of_every_kind")},
                                         Whole{"LongLists", longLists()},
                                         Whole{"LongListsThroughATree", longLists() + "<?end?>"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
