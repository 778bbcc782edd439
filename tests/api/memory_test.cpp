#include <gtest/gtest.h>
#include <cstdint>
#include <QDomDocument>
#include <string>

#include "failing_memory.h"
#include "host.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

// When memory runs out, each function returns its failure value and no exception leaves the library. Every
// allocation of a call fails in turn.

namespace {

const std::string longName(100, 'n');  // too long for the small string optimisation

struct Row {
  const char* name;
  /// Prepares and makes a call in which the allocation after `granted` successful ones fails; returns whether
  /// an allocation failed. Expects the failure value if so, otherwise success.
  bool (*call)(long granted, FailingMemory::Mode mode);
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

/// Makes `call` with a failing allocation; returns whether an allocation failed.
template <typename Call>
bool failsDuring(long granted, FailingMemory::Mode mode, Call&& call) {
  const FailingMemory memory(granted, mode);
  call();
  return memory.hasFailed();
}

/// A row for a creation function: returns null if an allocation fails.
template <typename Create>
bool isRefused(long granted, FailingMemory::Mode mode, Create&& create) {
  const void* made = nullptr;
  const bool failed = failsDuring(granted, mode, [&] { made = create(); });
  EXPECT_EQ(made == nullptr, failed);
  return failed;
}

const Row rows[] = {
    {"crtGMDDocument",
     [](long granted, FailingMemory::Mode mode) {
       Document document;
       const bool failed = failsDuring(granted, mode, [&] { document.reset(crtGMDDocument(longName)); });
       EXPECT_EQ(document == nullptr, failed);
       return failed;
     }},
    {"crtGMDDocument_nostl",
     [](long granted, FailingMemory::Mode mode) {
       Document document;
       const char* inform = longName.c_str();
       const bool failed =
           failsDuring(granted, mode, [&] { document.reset(crtGMDDocument_nostl(inform)); });
       EXPECT_EQ(document == nullptr, failed);
       return failed;
     }},
    {"crtHeader",
     [](long granted, FailingMemory::Mode mode) {
       return isRefused(granted, mode, [] { return crtHeader(); });
     }},
    {"crtGMDDocumentFromFile",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "<GMD><header inform='i'/><point name='A'/></GMD>");
       Loaded loaded;
       const bool failed = failsDuring(granted, mode, [&] {
         loaded.document.reset(crtGMDDocumentFromFile(file, loaded.code, loaded.fault));
       });
       EXPECT_EQ(loaded.code, failed ? 110 : 0);
       EXPECT_EQ(loaded.fault, !failed);
       EXPECT_TRUE(failed || loaded.document);
       EXPECT_TRUE(!failed || !loaded.document || ztCAD_getPoints(loaded.document.get())->empty());
       return failed;
     }},
    {"crtGMDDocumentFromStdString",
     [](long granted, FailingMemory::Mode mode) {
       const std::string xml = "<GMD><header inform='i'/><point name='A'/></GMD>";
       Parsed parsed;
       const bool failed = failsDuring(granted, mode, [&] {
         parsed.document.reset(
             crtGMDDocumentFromStdString(xml, parsed.parsed, parsed.message, parsed.line, parsed.column));
       });
       EXPECT_EQ(parsed.parsed, !failed);
       EXPECT_EQ(parsed.message, "");
       EXPECT_EQ(parsed.line, 0);
       EXPECT_EQ(parsed.column, 0);
       EXPECT_TRUE(failed || parsed.document);
       return failed;
     }},
    {"GMDDocumentToString, text",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       addPointToDoc(pointNamed("A"), document.get());
       std::string text = "earlier";
       const bool failed =
           failsDuring(granted, mode, [&] { GMDDocumentToString(document.get(), text, true); });
       EXPECT_EQ(text.empty(), failed);
       return failed;
     }},
    {"GMDDocumentToString, XML",
     [](long granted, FailingMemory::Mode mode) {
       const Parsed parsed = parse("<GMD><point name='A' center='1'/></GMD>");
       std::string text = "earlier";
       const bool failed =
           failsDuring(granted, mode, [&] { GMDDocumentToString(parsed.document.get(), text, false); });
       EXPECT_EQ(text.empty(), failed);
       return failed;
     }},
    {"SaveGMDDocument",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "earlier");
       const Document document = newDocument();
       addPointToDoc(pointNamed("A"), document.get());
       const bool failed = failsDuring(granted, mode, [&] { SaveGMDDocument(document.get(), file); });
       EXPECT_EQ(bytesOf(file) == "earlier", failed);
       EXPECT_EQ(files.names(), Names{"a.xml"});
       return failed;
     }},
    {"SaveGMDDocument_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "earlier");
       const Document document = newDocument();
       const bool failed =
           failsDuring(granted, mode, [&] { SaveGMDDocument_nostl(document.get(), file.c_str()); });
       EXPECT_EQ(bytesOf(file) == "earlier", failed);
       EXPECT_EQ(files.names(), Names{"a.xml"});
       return failed;
     }},
    {"UpdateGMDDoc",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "<GMD><point name='new'/><point name='new'/></GMD>");
       const Document document = newDocument();
       addPointToDoc(pointNamed("old"), document.get());
       std::int32_t code = -1;
       bool fault = true;
       const bool failed =
           failsDuring(granted, mode, [&] { UpdateGMDDoc(document.get(), file, code, fault); });
       EXPECT_EQ(code, failed ? 110 : 0);
       EXPECT_EQ(fault, !failed);
       EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), failed ? Names{"old"} : (Names{"new", "new_$1"}));
       return failed;
     }},
    {"doCorrectName",
     [](long granted, FailingMemory::Mode mode) {
       std::string corrected = "earlier";
       bool differs = false;
       const std::string name = "1" + longName;
       std::string fallback;
       const bool failed = failsDuring(
           granted, mode, [&] { differs = doCorrectName(name, corrected, std::move(fallback)); });
       EXPECT_EQ(differs, !failed);
       EXPECT_EQ(corrected, failed ? "" : "_1" + longName);
       return failed;
     }},
    {"doCorrectName_nostl",
     [](long granted, FailingMemory::Mode mode) {
       char corrected[128] = "earlier";
       bool differs = false;
       const std::string name = "1" + longName;
       const bool failed =
           failsDuring(granted, mode, [&] { differs = doCorrectName_nostl(name.c_str(), corrected, ""); });
       EXPECT_EQ(differs, !failed);
       EXPECT_EQ(corrected, failed ? "" : "_1" + longName);
       return failed;
     }},
    {"crtPoint",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Coord* center = coord(0, 0, 0);
       bool nameIsFree = false;
       const bool failed = isRefused(granted, mode, [&] { return crtPoint(longName, center, nameIsFree); });
       EXPECT_TRUE(nameIsFree);
       return failed;
     }},
    {"crtPoint_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Coord* center = coord(0, 0, 0);
       bool nameIsFree = false;
       const bool failed =
           isRefused(granted, mode, [&] { return crtPoint_nostl(longName.c_str(), center, nameIsFree); });
       EXPECT_TRUE(nameIsFree);
       return failed;
     }},
    {"crtTmplPoint",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Point* source = pointNamed("A");
       bool nameIsFree = false;
       const bool failed =
           isRefused(granted, mode, [&] { return crtTmplPoint(longName, source, nameIsFree); });
       EXPECT_TRUE(nameIsFree);
       return failed;
     }},
    {"addPointToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const ztCAD_Point* point = pointNamed("A");
       bool notAdded = false;
       const bool failed =
           failsDuring(granted, mode, [&] { notAdded = addPointToDoc(point, document.get()); });
       EXPECT_EQ(notAdded, failed);
       EXPECT_EQ(ztCAD_getPoints(document.get())->empty(), failed);
       return failed;
     }},
    {"addTmplPointToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const ztCAD_TmplPoint* point = templatePointNamed("A");
       bool notAdded = false;
       const bool failed =
           failsDuring(granted, mode, [&] { notAdded = addTmplPointToDoc(point, document.get()); });
       EXPECT_EQ(notAdded, failed);
       EXPECT_EQ(ztCAD_getTmplPoints(document.get())->empty(), failed);
       return failed;
     }},
    {"setCommonProperty",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Point* point = pointNamed("A");
       CommonProperty record;
       record.lcs = ztCAD_LCS(true, std::vector<double>(12, 1));
       const bool failed = failsDuring(granted, mode, [&] { setCommonProperty(record, point); });
       EXPECT_EQ(point->property().hasLCS(), !failed);
       EXPECT_EQ(point->name(), QString("A"));
       return failed;
     }},
    {"crtVertices",
     [](long granted, FailingMemory::Mode mode) {
       return isRefused(granted, mode, [] { return crtVertices(); });
     }},
    {"crtFaces",
     [](long granted, FailingMemory::Mode mode) { return isRefused(granted, mode, crtFaces); }},
    {"crtCoord",
     [](long granted, FailingMemory::Mode mode) {
       return isRefused(granted, mode, [] { return coord(1, 2, 3); });
     }},
    {"crtVertex",
     [](long granted, FailingMemory::Mode mode) {
       const double one = 1;
       return isRefused(granted, mode, [&] { return crtVertex(&one, &one, &one); });
     }},
    {"crtVertexByCoord",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Coord* place = coord(1, 2, 3);
       return isRefused(granted, mode, [&] { return crtVertexByCoord(place); });
     }},
    {"crtVertexByPoint",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Point* point = pointNamed("A");
       return isRefused(granted, mode, [&] { return crtVertexByPoint(point); });
     }},
    {"crtFacet",
     [](long granted, FailingMemory::Mode mode) {
       const std::uint32_t one = 1;
       return isRefused(granted, mode, [&] { return crtFacet(&one, &one, &one); });
     }},
    {"crtColor",
     [](long granted, FailingMemory::Mode mode) {
       const std::uint32_t one = 1;
       return isRefused(granted, mode, [&] { return crtColor(&one, &one, &one); });
     }},
    {"crtLCS",
     [](long granted, FailingMemory::Mode mode) {
       const std::vector<double> values(12, 1);
       return isRefused(granted, mode, [&] { return crtLCS(values); });
     }},
    {"crtLCS_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const std::vector<double> values(12, 1);
       return isRefused(granted, mode, [&] { return crtLCS_nostl(values.data()); });
     }},
    {"addVertexN",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Vertices* vertices = crtVertices();
       ztCAD_Vertex* vertex = crtVertexByCoord(coord(1, 2, 3));
       const std::list<ztCAD_Vertex*> added = {vertex, vertex};
       const bool failed = failsDuring(granted, mode, [&] { addVertexN(added, vertices); });
       EXPECT_EQ(vertices->coordinates().size() == 6, !failed);
       EXPECT_EQ(vertices->coordinates().size() % 3, 0u);
       return failed;
     }},
    {"addVertexXYZ_nostl",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Vertices* const vertices = crtVertices();
       const double xyz[] = {1, 2, 3, 4, 5, 6};
       addVertexXYZ_nostl(xyz, 1, vertices);
       const bool failed = failsDuring(granted, mode, [&] { addVertexXYZ_nostl(xyz, 2, vertices); });
       EXPECT_EQ(ztCAD_getVertexCount(vertices), failed ? 1 : 3);
       return failed;
     }},
    {"addFacetIJK_nostl",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Faces* const faces = crtFaces();
       const std::uint32_t ijk[] = {1, 2, 3};
       addFacetIJK_nostl(ijk, 1, faces);
       const bool failed =
           failsDuring(granted, mode, [&] { addFacetIJK_nostl(ztCAD_getFacetData(faces), 1, faces); });
       EXPECT_EQ(ztCAD_getFacetCount(faces), failed ? 1 : 2);
       return failed;
     }},
    {"ztCAD_getName",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Base* const point = pointNamed(longName);
       char text[200] = "earlier";
       std::int64_t length = 0;
       const bool failed =
           failsDuring(granted, mode, [&] { length = ztCAD_getName(point, text, sizeof text); });
       EXPECT_EQ(length, failed ? -1 : 100);
       EXPECT_EQ(text, failed ? std::string() : longName);
       return failed;
     }},
    {"GMDDocumentToString_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument("i");
       char text[200] = "earlier";
       std::int64_t length = 0;
       const auto print = [&] {
         // the text form
         length = GMDDocumentToString_nostl(document.get(), true, text, sizeof text);
       };
       const bool failed = failsDuring(granted, mode, print);
       EXPECT_EQ(length == -1, failed);
       EXPECT_EQ(*text == '\0', failed);
       return failed;
     }},
    {"ztCAD_appendToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const bool failed =
           isRefused(granted, mode, [&] { return ztCAD_appendToDoc(document.get(), ztCAD_ElementDetail); });
       EXPECT_EQ(ztCAD_countInDoc(document.get(), ztCAD_ElementDetail), failed ? 0 : 1);
       return failed;
     }},
    {"ztCAD_appendToStructure",
     [](long granted, FailingMemory::Mode mode) {
       bool nameIsFree = false;
       ztCAD_Structure* const outer = crtStructure("S", crtLCS({}), nameIsFree);
       const bool failed =
           isRefused(granted, mode, [&] { return ztCAD_appendToStructure(outer, ztCAD_ElementStructure); });
       EXPECT_EQ(ztCAD_countInStructure(outer, ztCAD_ElementStructure), failed ? 0 : 1);
       return failed;
     }},
    {"ztCAD_addToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const ztCAD_Base* const point = pointNamed("A");
       bool notAdded = false;
       const bool failed =
           failsDuring(granted, mode, [&] { notAdded = ztCAD_addToDoc(point, document.get()); });
       EXPECT_EQ(notAdded, failed);
       EXPECT_EQ(ztCAD_countInDoc(document.get(), ztCAD_ElementPoint), failed ? 0 : 1);
       return failed;
     }},
    {"crtGMDDocumentFromFile_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "<GMD><point name='A' center='1'/></GMD>");
       Document document;
       std::int32_t code = -1;
       bool fault = true;
       const bool failed = failsDuring(granted, mode, [&] {
         document.reset(crtGMDDocumentFromFile_nostl(file.c_str(), code, fault));
       });
       EXPECT_EQ(code, failed ? 110 : 0);
       EXPECT_FALSE(fault);
       return failed;
     }},
    {"addFacetN_nostl",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Faces* faces = crtFaces();
       const std::uint32_t one = 1;
       const ztCAD_Facet* const added[] = {crtFacet(&one, &one, &one), crtFacet(&one, &one, &one)};
       const bool failed = failsDuring(granted, mode, [&] { addFacetN_nostl(added, 2, faces); });
       EXPECT_EQ(faces->indices().size() == 6, !failed);
       EXPECT_EQ(faces->indices().size() % 3, 0u);
       return failed;
     }},
};

class RunningOutOfMemory : public testing::TestWithParam<Row> {};

TEST_P(RunningOutOfMemory, YieldsTheFailureValueWhicheverAllocationFails) {
  constexpr long enough = 100000;
  for (const auto mode : {FailingMemory::Mode::Once, FailingMemory::Mode::Permanently}) {
    long granted = 0;
    while (granted < enough && GetParam().call(granted, mode)) {
      ASSERT_FALSE(HasFailure()) << "failing allocation after " << granted << " granted ones";
      ++granted;
    }
    EXPECT_LT(granted, enough);
    EXPECT_GT(granted, 0) << "the call allocates nothing, so this row tests nothing";
  }
}

std::string rowName(const testing::TestParamInfo<Row>& row) {
  std::string name;
  for (const char c : std::string(row.param.name))
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
  return name;
}

INSTANTIATE_TEST_SUITE_P(Calls, RunningOutOfMemory, testing::ValuesIn(rows), rowName);

// ---------------------------------------------------------------------------------------- end of the process

/// Allocations in the scope of this object leak by design and are not reported.
struct IntendedLeaks {
#if defined(__SANITIZE_ADDRESS__)
  IntendedLeaks() { __lsan_disable(); }
  ~IntendedLeaks() { __lsan_enable(); }
#endif
};

ztCAD_GMDDocument* documentWithAPoint() {
  [[maybe_unused]] const IntendedLeaks leaks;
  ztCAD_GMDDocument* document = crtGMDDocument("");
  addPointToDoc(pointNamed("A"), document);
  return document;
}

TEST(EndOfTheProcess, FreesAnUndeletedDocumentWithoutItsElements) {
  EXPECT_EXIT(
      {
        ztCAD_GMDDocument* document = documentWithAPoint();
        printWhenReleased(document, &ztCAD_getPoints(document)->front());
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^document released\n$");
}

TEST(EndOfTheProcess, DoesNotFreeADeletedDocumentAgain) {
  EXPECT_EXIT(
      {
        ztCAD_GMDDocument* document = documentWithAPoint();
        DeleteGMDDoc(document);
        printWhenReleased(document, document);
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^$");
}

TEST(DeletingADocument, FreesItsElementsAndTheDocument) {
  EXPECT_EXIT(
      {
        ztCAD_GMDDocument* document = documentWithAPoint();
        printWhenReleased(document, &ztCAD_getPoints(document)->front());
        DeleteGMDDoc(document);
        printWhenReleased(nullptr, nullptr);
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^element released\ndocument released\n$");
}

TEST(EndOfTheProcess, FreesCreatedElementsAndRecords) {
  EXPECT_EXIT(
      {
        printWhenReleased(coord(1, 2, 3), pointNamed("A"));
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^document released\nelement released\n$");
}

}  // namespace
