#include <gtest/gtest.h>
#include <cstdint>
#include <QDomDocument>
#include <string>

#include "failing_memory.h"
#include "host.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

// What leaves the library when memory runs out: no exception, but the failure value of each function. Every single
// piece of memory that a call asks for is refused in turn.

namespace {

const std::string longName(100, 'n');  // too long to be held without memory of its own

struct Row {
  const char* name;
  /// Prepares a call, makes it while `grant` pieces are given, and tells whether one was refused. With a refusal the
  /// failure value is expected, else the success.
  bool (*call)(long granted, FailingMemory::Mode mode);
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

/// Makes `call` with memory running out; whether a piece was refused.
template <typename Call>
bool refusedDuring(long granted, FailingMemory::Mode mode, Call&& call) {
  const FailingMemory memory(granted, mode);
  call();
  return memory.hasRefused();
}

/// A row for a function that creates something: null when memory is refused.
template <typename Create>
bool creates(long granted, FailingMemory::Mode mode, Create&& create) {
  const void* made = nullptr;
  const bool refused = refusedDuring(granted, mode, [&] { made = create(); });
  EXPECT_EQ(made == nullptr, refused);
  return refused;
}

const Row rows[] = {
    {"crtGMDDocument",
     [](long granted, FailingMemory::Mode mode) {
       Document document;
       const bool refused = refusedDuring(granted, mode, [&] { document.reset(crtGMDDocument(longName)); });
       EXPECT_EQ(document == nullptr, refused);
       return refused;
     }},
    {"crtGMDDocument_nostl",
     [](long granted, FailingMemory::Mode mode) {
       Document document;
       const char* inform = longName.c_str();
       const bool refused =
           refusedDuring(granted, mode, [&] { document.reset(crtGMDDocument_nostl(inform)); });
       EXPECT_EQ(document == nullptr, refused);
       return refused;
     }},
    {"crtHeader",
     [](long granted, FailingMemory::Mode mode) {
       return creates(granted, mode, [] { return crtHeader(); });
     }},
    {"crtGMDDocumentFromFile",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "<GMD><header inform='i'/><point name='A'/></GMD>");
       Loaded loaded;
       const bool refused = refusedDuring(granted, mode, [&] {
         loaded.document.reset(crtGMDDocumentFromFile(file, loaded.code, loaded.fault));
       });
       EXPECT_EQ(loaded.code, refused ? 110 : 0);
       EXPECT_EQ(loaded.fault, !refused);
       EXPECT_TRUE(refused || loaded.document);
       EXPECT_TRUE(!refused || !loaded.document || ztCAD_getPoints(loaded.document.get())->empty());
       return refused;
     }},
    {"crtGMDDocumentFromStdString",
     [](long granted, FailingMemory::Mode mode) {
       const std::string xml = "<GMD><header inform='i'/><point name='A'/></GMD>";
       Parsed parsed;
       const bool refused = refusedDuring(granted, mode, [&] {
         parsed.document.reset(
             crtGMDDocumentFromStdString(xml, parsed.parsed, parsed.message, parsed.line, parsed.column));
       });
       EXPECT_EQ(parsed.parsed, !refused);
       EXPECT_EQ(parsed.message, "");
       EXPECT_EQ(parsed.line, 0);
       EXPECT_EQ(parsed.column, 0);
       EXPECT_TRUE(refused || parsed.document);
       return refused;
     }},
    {"GMDDocumentToString, text",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       addPointToDoc(pointNamed("A"), document.get());
       std::string text = "earlier";
       const bool refused =
           refusedDuring(granted, mode, [&] { GMDDocumentToString(document.get(), text, true); });
       EXPECT_EQ(text.empty(), refused);
       return refused;
     }},
    {"GMDDocumentToString, XML",
     [](long granted, FailingMemory::Mode mode) {
       const Parsed parsed = parse("<GMD><point name='A' center='1'/></GMD>");
       std::string text = "earlier";
       const bool refused =
           refusedDuring(granted, mode, [&] { GMDDocumentToString(parsed.document.get(), text, false); });
       EXPECT_EQ(text.empty(), refused);
       return refused;
     }},
    {"SaveGMDDocument",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "earlier");
       const Document document = newDocument();
       addPointToDoc(pointNamed("A"), document.get());
       const bool refused = refusedDuring(granted, mode, [&] { SaveGMDDocument(document.get(), file); });
       EXPECT_EQ(bytesOf(file) == "earlier", refused);
       EXPECT_EQ(files.names(), Names{"a.xml"});
       return refused;
     }},
    {"SaveGMDDocument_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "earlier");
       const Document document = newDocument();
       const bool refused =
           refusedDuring(granted, mode, [&] { SaveGMDDocument_nostl(document.get(), file.c_str()); });
       EXPECT_EQ(bytesOf(file) == "earlier", refused);
       EXPECT_EQ(files.names(), Names{"a.xml"});
       return refused;
     }},
    {"UpdateGMDDoc",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "<GMD><point name='new'/><point name='new'/></GMD>");
       const Document document = newDocument();
       addPointToDoc(pointNamed("old"), document.get());
       std::int32_t code = -1;
       bool fault = true;
       const bool refused =
           refusedDuring(granted, mode, [&] { UpdateGMDDoc(document.get(), file, code, fault); });
       EXPECT_EQ(code, refused ? 110 : 0);
       EXPECT_EQ(fault, !refused);
       EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), refused ? Names{"old"} : (Names{"new", "new_$1"}));
       return refused;
     }},
    {"doCorrectName",
     [](long granted, FailingMemory::Mode mode) {
       std::string corrected = "earlier";
       bool differs = false;
       const std::string name = "1" + longName;
       std::string fallback;
       const bool refused = refusedDuring(
           granted, mode, [&] { differs = doCorrectName(name, corrected, std::move(fallback)); });
       EXPECT_EQ(differs, !refused);
       EXPECT_EQ(corrected, refused ? "" : "_1" + longName);
       return refused;
     }},
    {"doCorrectName_nostl",
     [](long granted, FailingMemory::Mode mode) {
       char corrected[128] = "earlier";
       bool differs = false;
       const std::string name = "1" + longName;
       const bool refused =
           refusedDuring(granted, mode, [&] { differs = doCorrectName_nostl(name.c_str(), corrected, ""); });
       EXPECT_EQ(differs, !refused);
       EXPECT_EQ(corrected, refused ? "" : "_1" + longName);
       return refused;
     }},
    {"crtPoint",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Coord* center = coord(0, 0, 0);
       bool nameIsFree = false;
       const bool refused = creates(granted, mode, [&] { return crtPoint(longName, center, nameIsFree); });
       EXPECT_TRUE(nameIsFree);
       return refused;
     }},
    {"crtPoint_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Coord* center = coord(0, 0, 0);
       bool nameIsFree = false;
       const bool refused =
           creates(granted, mode, [&] { return crtPoint_nostl(longName.c_str(), center, nameIsFree); });
       EXPECT_TRUE(nameIsFree);
       return refused;
     }},
    {"crtTmplPoint",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Point* source = pointNamed("A");
       bool nameIsFree = false;
       const bool refused =
           creates(granted, mode, [&] { return crtTmplPoint(longName, source, nameIsFree); });
       EXPECT_TRUE(nameIsFree);
       return refused;
     }},
    {"addPointToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const ztCAD_Point* point = pointNamed("A");
       bool notAdded = false;
       const bool refused =
           refusedDuring(granted, mode, [&] { notAdded = addPointToDoc(point, document.get()); });
       EXPECT_EQ(notAdded, refused);
       EXPECT_EQ(ztCAD_getPoints(document.get())->empty(), refused);
       return refused;
     }},
    {"addTmplPointToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const ztCAD_TmplPoint* point = templatePointNamed("A");
       bool notAdded = false;
       const bool refused =
           refusedDuring(granted, mode, [&] { notAdded = addTmplPointToDoc(point, document.get()); });
       EXPECT_EQ(notAdded, refused);
       EXPECT_EQ(ztCAD_getTmplPoints(document.get())->empty(), refused);
       return refused;
     }},
    {"setCommonProperty",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Point* point = pointNamed("A");
       CommonProperty record;
       record.lcs = ztCAD_LCS(true, std::vector<double>(12, 1));
       const bool refused = refusedDuring(granted, mode, [&] { setCommonProperty(record, point); });
       EXPECT_EQ(point->property().hasLCS(), !refused);
       EXPECT_EQ(point->name(), QString("A"));
       return refused;
     }},
    {"crtVertices",
     [](long granted, FailingMemory::Mode mode) {
       return creates(granted, mode, [] { return crtVertices(); });
     }},
    {"crtFaces", [](long granted,
                    FailingMemory::Mode mode) { return creates(granted, mode, [] { return crtFaces(); }); }},
    {"crtCoord",
     [](long granted, FailingMemory::Mode mode) {
       return creates(granted, mode, [] { return coord(1, 2, 3); });
     }},
    {"crtVertex",
     [](long granted, FailingMemory::Mode mode) {
       const double one = 1;
       return creates(granted, mode, [&] { return crtVertex(&one, &one, &one); });
     }},
    {"crtVertexByCoord",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Coord* place = coord(1, 2, 3);
       return creates(granted, mode, [&] { return crtVertexByCoord(place); });
     }},
    {"crtVertexByPoint",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Point* point = pointNamed("A");
       return creates(granted, mode, [&] { return crtVertexByPoint(point); });
     }},
    {"crtFacet",
     [](long granted, FailingMemory::Mode mode) {
       const std::uint32_t one = 1;
       return creates(granted, mode, [&] { return crtFacet(&one, &one, &one); });
     }},
    {"crtColor",
     [](long granted, FailingMemory::Mode mode) {
       const std::uint32_t one = 1;
       return creates(granted, mode, [&] { return crtColor(&one, &one, &one); });
     }},
    {"crtLCS",
     [](long granted, FailingMemory::Mode mode) {
       const std::vector<double> values(12, 1);
       return creates(granted, mode, [&] { return crtLCS(values); });
     }},
    {"crtLCS_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const std::vector<double> values(12, 1);
       return creates(granted, mode, [&] { return crtLCS_nostl(values.data()); });
     }},
    {"addVertexN",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Vertices* vertices = crtVertices();
       ztCAD_Vertex* vertex = crtVertexByCoord(coord(1, 2, 3));
       const std::list<ztCAD_Vertex*> added = {vertex, vertex};
       const bool refused = refusedDuring(granted, mode, [&] { addVertexN(added, vertices); });
       EXPECT_EQ(vertices->coordinates().size() == 6, !refused);
       EXPECT_EQ(vertices->coordinates().size() % 3, 0u);
       return refused;
     }},
    {"addVertexXYZ_nostl",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Vertices* const vertices = crtVertices();
       const double xyz[] = {1, 2, 3, 4, 5, 6};
       addVertexXYZ_nostl(xyz, 1, vertices);
       const bool refused = refusedDuring(granted, mode, [&] { addVertexXYZ_nostl(xyz, 2, vertices); });
       EXPECT_EQ(ztCAD_getVertexCount(vertices), refused ? 1 : 3);
       return refused;
     }},
    {"addFacetIJK_nostl",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Faces* const faces = crtFaces();
       const std::uint32_t ijk[] = {1, 2, 3};
       addFacetIJK_nostl(ijk, 1, faces);
       const bool refused =
           refusedDuring(granted, mode, [&] { addFacetIJK_nostl(ztCAD_getFacetData(faces), 1, faces); });
       EXPECT_EQ(ztCAD_getFacetCount(faces), refused ? 1 : 2);
       return refused;
     }},
    {"ztCAD_getName",
     [](long granted, FailingMemory::Mode mode) {
       const ztCAD_Base* const point = pointNamed(longName);
       char text[200] = "earlier";
       std::int64_t length = 0;
       const bool refused =
           refusedDuring(granted, mode, [&] { length = ztCAD_getName(point, text, sizeof text); });
       EXPECT_EQ(length, refused ? -1 : 100);
       EXPECT_EQ(text, refused ? std::string() : longName);
       return refused;
     }},
    {"GMDDocumentToString_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument("i");
       char text[200] = "earlier";
       std::int64_t length = 0;
       const bool refused = refusedDuring(
           granted, mode, [&] { length = GMDDocumentToString_nostl(document.get(), true, text, sizeof text); });
       EXPECT_EQ(length == -1, refused);
       EXPECT_EQ(*text == '\0', refused);
       return refused;
     }},
    {"ztCAD_appendToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const bool refused =
           creates(granted, mode, [&] { return ztCAD_appendToDoc(document.get(), ztCAD_ElementDetail); });
       EXPECT_EQ(ztCAD_countInDoc(document.get(), ztCAD_ElementDetail), refused ? 0 : 1);
       return refused;
     }},
    {"ztCAD_appendToStructure",
     [](long granted, FailingMemory::Mode mode) {
       bool nameIsFree = false;
       ztCAD_Structure* const outer = crtStructure("S", crtLCS({}), nameIsFree);
       const bool refused =
           creates(granted, mode, [&] { return ztCAD_appendToStructure(outer, ztCAD_ElementStructure); });
       EXPECT_EQ(ztCAD_countInStructure(outer, ztCAD_ElementStructure), refused ? 0 : 1);
       return refused;
     }},
    {"ztCAD_addToDoc",
     [](long granted, FailingMemory::Mode mode) {
       const Document document = newDocument();
       const ztCAD_Base* const point = pointNamed("A");
       bool notAdded = false;
       const bool refused =
           refusedDuring(granted, mode, [&] { notAdded = ztCAD_addToDoc(point, document.get()); });
       EXPECT_EQ(notAdded, refused);
       EXPECT_EQ(ztCAD_countInDoc(document.get(), ztCAD_ElementPoint), refused ? 0 : 1);
       return refused;
     }},
    {"crtGMDDocumentFromFile_nostl",
     [](long granted, FailingMemory::Mode mode) {
       const TemporaryFiles files;
       const std::string file = files.put("a.xml", "<GMD><point name='A' center='1'/></GMD>");
       Document document;
       std::int32_t code = -1;
       bool fault = true;
       const bool refused = refusedDuring(granted, mode, [&] {
         document.reset(crtGMDDocumentFromFile_nostl(file.c_str(), code, fault));
       });
       EXPECT_EQ(code, refused ? 110 : 0);
       EXPECT_FALSE(fault);
       return refused;
     }},
    {"addFacetN_nostl",
     [](long granted, FailingMemory::Mode mode) {
       ztCAD_Faces* faces = crtFaces();
       const std::uint32_t one = 1;
       const ztCAD_Facet* const added[] = {crtFacet(&one, &one, &one), crtFacet(&one, &one, &one)};
       const bool refused = refusedDuring(granted, mode, [&] { addFacetN_nostl(added, 2, faces); });
       EXPECT_EQ(faces->indices().size() == 6, !refused);
       EXPECT_EQ(faces->indices().size() % 3, 0u);
       return refused;
     }},
};

class RunningOutOfMemory : public testing::TestWithParam<Row> {};

TEST_P(RunningOutOfMemory, GivesTheFailureValueWhicheverPieceIsRefused) {
  constexpr long enough = 100000;
  for (const auto mode : {FailingMemory::Mode::Once, FailingMemory::Mode::ForGood}) {
    long granted = 0;
    while (granted < enough && GetParam().call(granted, mode)) {
      ASSERT_FALSE(HasFailure()) << "with the refusal of the piece after " << granted << " others";
      ++granted;
    }
    EXPECT_LT(granted, enough);
    EXPECT_GT(granted, 0) << "the call asks for no memory: this row tests nothing";
  }
}

std::string rowName(const testing::TestParamInfo<Row>& row) {
  std::string name;
  for (const char c : std::string(row.param.name))
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
  return name;
}

INSTANTIATE_TEST_SUITE_P(Calls, RunningOutOfMemory, testing::ValuesIn(rows), rowName);

// ------------------------------------------------------------------------------------------- end of the process

/// What is lost by design in the scope of this object is no leak.
struct LossesAreMeant {
#if defined(__SANITIZE_ADDRESS__)
  LossesAreMeant() { __lsan_disable(); }
  ~LossesAreMeant() { __lsan_enable(); }
#endif
};

ztCAD_GMDDocument* documentWithAPoint() {
  [[maybe_unused]] const LossesAreMeant losses;
  ztCAD_GMDDocument* document = crtGMDDocument("");
  addPointToDoc(pointNamed("A"), document);
  return document;
}

TEST(EndOfTheProcess, DocumentThatWasNotDeletedIsReleasedWithoutWhatItOwns) {
  EXPECT_EXIT(
      {
        ztCAD_GMDDocument* document = documentWithAPoint();
        tellWhenReleased(document, &ztCAD_getPoints(document)->front());
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^document released\n$");
}

TEST(EndOfTheProcess, DocumentThatWasDeletedIsNotReleasedAgain) {
  EXPECT_EXIT(
      {
        ztCAD_GMDDocument* document = documentWithAPoint();
        DeleteGMDDoc(document);
        tellWhenReleased(document, document);
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^$");
}

TEST(EndOfTheProcess, DeletingReleasesTheElementsAndTheDocument) {
  EXPECT_EXIT(
      {
        ztCAD_GMDDocument* document = documentWithAPoint();
        tellWhenReleased(document, &ztCAD_getPoints(document)->front());
        DeleteGMDDoc(document);
        tellWhenReleased(nullptr, nullptr);
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^element released\ndocument released\n$");
}

TEST(EndOfTheProcess, CreatedElementsAndRecordsAreReleased) {
  EXPECT_EXIT(
      {
        tellWhenReleased(coord(1, 2, 3), pointNamed("A"));
        std::exit(0);
      },
      testing::ExitedWithCode(0), "^document released\nelement released\n$");
}

}  // namespace
