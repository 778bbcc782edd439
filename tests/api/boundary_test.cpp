#include <gtest/gtest.h>
#include <algorithm>
#include <cstdint>
#include <QDirIterator>
#include <QRegularExpression>
#include <string>
#include <vector>

#include "boundary.h"
#include "host.h"

// Every exported function with null and invalid arguments: nothing crashes, each returns its failure value,
// and each output flag, code and text is written.

namespace {

using boundary::null;
using boundary::Row;

const std::vector<double> twelve = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};

const Row rows[] = {
    // documents
    {"crtGMDDocument", [] { EXPECT_NE(newDocument(std::string("\xFF\0\xFE", 3)), nullptr); }},
    {"crtGMDDocument_nostl", [] { EXPECT_NE(Document(crtGMDDocument_nostl(nullptr)), nullptr); }},
    {"crtHeader", [] { EXPECT_NE(crtHeader(), nullptr); }},
    {"setHeader",
     [] {
       const Document document = newDocument("kept");
       setHeader(nullptr, document.get());
       setHeader(crtHeader(), nullptr);
       setHeader(nullptr, nullptr);
       EXPECT_EQ(document->header().inform(), QString("kept"));
     }},
    {"crtGMDDocumentFromFile",
     [] {
       const Loaded loaded = loadFile(std::string("\xFF\0/\xFE", 4));
       EXPECT_NE(loaded.document, nullptr);
       EXPECT_EQ(loaded.code, 100);
       EXPECT_FALSE(loaded.fault);
     }},
    {"crtGMDDocumentFromStdString",
     [] {
       const Parsed parsed = parse(std::string("\xFF\0\xFE", 3));
       EXPECT_NE(parsed.document, nullptr);
       EXPECT_FALSE(parsed.parsed);
       EXPECT_NE(parsed.message, "");
       EXPECT_NE(parsed.message, "earlier");
       EXPECT_NE(parsed.line, -1);
       EXPECT_NE(parsed.column, -1);
     }},
    {"crtGMDDocumentFromFile_nostl",
     [] {
       std::int32_t code = -1;
       bool fault = true;
       EXPECT_NE(Document(crtGMDDocumentFromFile_nostl(nullptr, code, fault)), nullptr);
       EXPECT_EQ(code, 100);
       EXPECT_FALSE(fault);
     }},
    {"crtGMDDocumentFromStdString_nostl",
     [] {
       bool parsed = true;
       int line = -1;
       int column = -1;
       char message[4] = "abc";
       EXPECT_NE(Document(crtGMDDocumentFromStdString_nostl(nullptr, parsed, nullptr, 0, line, column)),
                 nullptr);
       EXPECT_FALSE(parsed);
       EXPECT_NE(line, -1);
       EXPECT_NE(column, -1);
       EXPECT_NE(Document(crtGMDDocumentFromStdString_nostl("<", parsed, message, -1, line, column)),
                 nullptr);
       EXPECT_STREQ(message, "abc");
       EXPECT_NE(Document(crtGMDDocumentFromStdString_nostl("<", parsed, message, 1, line, column)), nullptr);
       EXPECT_STREQ(message, "");
     }},
    {"GMDDocumentToString_nostl",
     [] {
       char text[] = "earlier";
       EXPECT_EQ(GMDDocumentToString_nostl(nullptr, true, text, sizeof text), -1);
       EXPECT_STREQ(text, "");
       EXPECT_EQ(GMDDocumentToString_nostl(nullptr, false, nullptr, 5), -1);
       EXPECT_GT(GMDDocumentToString_nostl(newDocument().get(), true, nullptr, 5), 0);
       EXPECT_GT(GMDDocumentToString_nostl(newDocument().get(), false, text, INT64_MIN), 0);
     }},
    {"UpdateGMDDoc_nostl",
     [] {
       std::int32_t code = -1;
       bool fault = true;
       UpdateGMDDoc_nostl(nullptr, nullptr, code, fault);
       EXPECT_EQ(code, 110);
       EXPECT_FALSE(fault);
       UpdateGMDDoc_nostl(newDocument().get(), nullptr, code, fault);
       EXPECT_EQ(code, 100);
     }},
    {"ztCAD_loadDocument",
     [] {
       EXPECT_EQ(ztCAD_loadDocument(nullptr, nullptr), null<ztCAD_GMDDocument>);
       ztCAD_Outcome outcome = {-1, true, -1, -1, "earlier"};
       EXPECT_EQ(ztCAD_loadDocument("\xFF", &outcome), null<ztCAD_GMDDocument>);
       EXPECT_EQ(outcome.code, ztCAD_ResultFileMissing);
       EXPECT_FALSE(outcome.fault);
       EXPECT_EQ(outcome.line, 0);
       EXPECT_EQ(outcome.column, 0);
       EXPECT_STREQ(outcome.message, "no such file");
     }},
    {"ztCAD_loadDocumentFromText",
     [] {
       EXPECT_EQ(ztCAD_loadDocumentFromText(nullptr, 0, nullptr), null<ztCAD_GMDDocument>);
       EXPECT_EQ(ztCAD_loadDocumentFromText(nullptr, INT64_MAX, nullptr), null<ztCAD_GMDDocument>);
       ztCAD_Outcome outcome = {-1, true, -1, -1, ""};
       EXPECT_EQ(ztCAD_loadDocumentFromText("\xFF\0\xFE", 3, &outcome), null<ztCAD_GMDDocument>);
       EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
       EXPECT_FALSE(outcome.fault);
       EXPECT_STRNE(outcome.message, "");
       EXPECT_EQ(ztCAD_loadDocumentFromText("<", INT64_MIN, &outcome), null<ztCAD_GMDDocument>);
       EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
     }},
    {"ztCAD_reloadDocument",
     [] {
       ztCAD_Outcome outcome = {-1, true, -1, -1, ""};
       EXPECT_FALSE(ztCAD_reloadDocument(nullptr, nullptr, nullptr));
       EXPECT_FALSE(ztCAD_reloadDocument(nullptr, "a.xml", &outcome));
       EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
       EXPECT_FALSE(outcome.fault);
       const Document document = newDocument("kept");
       EXPECT_FALSE(ztCAD_reloadDocument(document.get(), nullptr, &outcome));
       EXPECT_EQ(outcome.code, ztCAD_ResultFileMissing);
       EXPECT_EQ(document->header().inform(), QString("kept"));
     }},
    {"ztCAD_saveDocument",
     [] {
       const TemporaryFiles files;
       ztCAD_Outcome outcome = {0, true, -1, -1, ""};
       EXPECT_FALSE(ztCAD_saveDocument(nullptr, files.path("a.xml").c_str(), nullptr));
       EXPECT_FALSE(ztCAD_saveDocument(nullptr, nullptr, &outcome));
       EXPECT_GT(outcome.code, 0);
       EXPECT_FALSE(outcome.fault);
       EXPECT_EQ(outcome.line, 0);
       outcome.code = 0;
       EXPECT_FALSE(ztCAD_saveDocument(newDocument().get(), nullptr, &outcome));
       EXPECT_GT(outcome.code, 0);
       EXPECT_STRNE(outcome.message, "");
       EXPECT_EQ(files.names(), Names{});
     }},
    {"ztCAD_endDocument",
     [] {
       ztCAD_endDocument(nullptr);
       ztCAD_GMDDocument* const ended = crtGMDDocument("");
       ztCAD_endDocument(ended);
       ztCAD_endDocument(ended);
       ztCAD_endDocument(reinterpret_cast<ztCAD_GMDDocument*>(crtHeader()));
       ztCAD_endDocument(reinterpret_cast<ztCAD_GMDDocument*>(std::uintptr_t{1}));
       ztCAD_GMDDocument hosts("the host's own");
       ztCAD_endDocument(&hosts);
       EXPECT_EQ(hosts.header().inform(), QString("the host's own"));
     }},
    {"ztCAD_getHeader", [] { EXPECT_EQ(ztCAD_getHeader(nullptr), null<ztCAD_HeaderNode>); }},
    {"ztCAD_getHeaderNumber",
     [] {
       std::uint32_t number = 5;
       EXPECT_FALSE(ztCAD_getHeaderNumber(nullptr, ztCAD_HeaderMajorVersion, &number));
       EXPECT_FALSE(ztCAD_getHeaderNumber(crtHeader(), ztCAD_HeaderMajorVersion, &number));
       EXPECT_FALSE(ztCAD_getHeaderNumber(crtHeader(), INT32_MIN, &number));
       EXPECT_EQ(number, 5u);
     }},
    {"ztCAD_setHeaderNumber",
     [] {
       const std::uint32_t number = 5;
       ztCAD_HeaderNode* const header = crtHeader();
       ztCAD_setHeaderNumber(nullptr, ztCAD_HeaderMajorVersion, &number);
       ztCAD_setHeaderNumber(header, 99, &number);
       ztCAD_setHeaderNumber(header, ztCAD_HeaderMajorVersion, &number);
       EXPECT_TRUE(ztCAD_getHeaderNumber(header, ztCAD_HeaderMajorVersion, nullptr));
       ztCAD_setHeaderNumber(header, ztCAD_HeaderMajorVersion, nullptr);
       EXPECT_FALSE(header->majorVersion());
     }},
    {"ztCAD_getHeaderText",
     [] {
       char text[] = "earlier";
       EXPECT_EQ(ztCAD_getHeaderText(nullptr, ztCAD_HeaderInform, text, sizeof text), -1);
       EXPECT_STREQ(text, "");
       EXPECT_EQ(ztCAD_getHeaderText(crtHeader(), ztCAD_HeaderInform, nullptr, 0), -1);
       EXPECT_EQ(ztCAD_getHeaderText(crtHeader(), 99, nullptr, 0), -1);
     }},
    {"ztCAD_setHeaderText",
     [] {
       ztCAD_HeaderNode* const header = crtHeader();
       ztCAD_setHeaderText(nullptr, ztCAD_HeaderInform, "a");
       ztCAD_setHeaderText(header, -1, "a");
       ztCAD_setHeaderText(header, ztCAD_HeaderInform, "a");
       EXPECT_TRUE(header->inform());
       ztCAD_setHeaderText(header, ztCAD_HeaderInform, nullptr);
       EXPECT_FALSE(header->inform());
     }},
    {"GMDDocumentToString",
     [] {
       EXPECT_EQ(textOf(nullptr, true), "");
       EXPECT_EQ(textOf(nullptr, false), "");
     }},
    {"SaveGMDDocument",
     [] {
       const TemporaryFiles files;
       SaveGMDDocument(nullptr, files.path("a.xml"));
       SaveGMDDocument(nullptr, "");
       const Document document = newDocument();
       SaveGMDDocument(document.get(), "");
       SaveGMDDocument(document.get(), files.folder());
       SaveGMDDocument(document.get(), files.path("absent/a.xml"));
       SaveGMDDocument(document.get(), files.path(std::string("a\0b", 3)));
       EXPECT_EQ(files.names(), Names{});
     }},
    {"SaveGMDDocument_nostl",
     [] {
       const TemporaryFiles files;
       SaveGMDDocument_nostl(nullptr, files.path("a.xml").c_str());
       SaveGMDDocument_nostl(nullptr, nullptr);
       SaveGMDDocument_nostl(newDocument().get(), nullptr);
       EXPECT_EQ(files.names(), Names{});
     }},
    {"UpdateGMDDoc",
     [] {
       const TemporaryFiles files;
       std::int32_t code = -1;
       bool fault = true;
       UpdateGMDDoc(nullptr, files.put("a.xml", "<GMD/>"), code, fault);
       EXPECT_EQ(code, 110);
       EXPECT_FALSE(fault);
       code = -1;
       fault = true;
       UpdateGMDDoc(newDocument().get(), "", code, fault);
       EXPECT_EQ(code, 100);
       EXPECT_FALSE(fault);
     }},
    {"ClearGMDDoc", [] { ClearGMDDoc(); }},
    {"DeleteGMDDoc",
     [] {
       DeleteGMDDoc(nullptr);
       const Document living = newDocument("living");
       ztCAD_GMDDocument* deleted = crtGMDDocument("");
       DeleteGMDDoc(deleted);
       DeleteGMDDoc(deleted);
       DeleteGMDDoc(reinterpret_cast<ztCAD_GMDDocument*>(pointNamed("no document")));
       DeleteGMDDoc(reinterpret_cast<ztCAD_GMDDocument*>(crtHeader()));
       DeleteGMDDoc(reinterpret_cast<ztCAD_GMDDocument*>(reinterpret_cast<char*>(living.get()) + 1));
       DeleteGMDDoc(reinterpret_cast<ztCAD_GMDDocument*>(std::uintptr_t{1}));
       ztCAD_GMDDocument foreign("created by the host");
       DeleteGMDDoc(&foreign);
       EXPECT_EQ(foreign.header().inform(), QString("created by the host"));
       EXPECT_EQ(living->header().inform(), QString("living"));
     }},
    {"checkGMDDocument", [] { EXPECT_FALSE(checkGMDDocument(nullptr)); }},
    // names and library
    {"doCorrectName",
     [] {
       std::string corrected = "earlier";
       EXPECT_TRUE(doCorrectName(std::string("\0\0", 2), corrected, std::string("\0", 1)));
       EXPECT_EQ(corrected, "_");
     }},
    {"doCorrectName_nostl",
     [] {
       char corrected[8] = "earlier";
       EXPECT_TRUE(doCorrectName_nostl(nullptr, corrected, nullptr));
       EXPECT_STREQ(corrected, "_");
       EXPECT_FALSE(doCorrectName_nostl("1 a", nullptr, "b"));
       EXPECT_FALSE(doCorrectName_nostl(nullptr, nullptr, nullptr));
     }},
    {"crtUniqueName_nostl",
     [] {
       crtUniqueName_nostl(nullptr);
       char name[] = "\xFF";
       crtUniqueName_nostl(name);
       EXPECT_STREQ(name, "");
     }},
    {"crtUniqueName",
     [] {
       std::string name(1000000, '\xFF');
       crtUniqueName(name);
       EXPECT_EQ(name, "");
     }},
    {"ztCAD_getParallelMode", [] { EXPECT_EQ(ztCAD_getParallelMode(), getParallel_Morvik()->mode); }},
    {"ztCAD_setParallelMode",
     [] {
       EXPECT_EQ(ztCAD_setParallelMode(INT32_MIN), 1);
       EXPECT_EQ(ztCAD_setParallelMode(1), INT32_MIN);
     }},
    {"ztCAD_getPhysicalCoreCount", [] { EXPECT_GE(ztCAD_getPhysicalCoreCount(), 1u); }},
    {"ztCAD_report",
     [] {
       std::string line;
       ztCAD_setAssertionWriter(
           [](const char* written, void* context) { *static_cast<std::string*>(context) = written; }, &line);
       ztCAD_report(nullptr, nullptr, 0);
       ztCAD_setAssertionWriter(nullptr, nullptr);
       EXPECT_EQ(line, "Assert occurred in FILE: ; LINE: 0; EXPRESSION: .\n");
     }},
    {"ztCAD_getThreadCounts", [] { ztCAD_getThreadCounts(nullptr, nullptr); }},
    {"ztCAD_setThreadCounts",
     [] {
       ztCAD_setThreadCounts(UINT32_MAX);
       std::uint32_t logical = 0;
       ztCAD_getThreadCounts(&logical, nullptr);
       EXPECT_GE(logical, 1u);
       EXPECT_LT(logical, UINT32_MAX);
       ztCAD_setThreadCounts(1);
     }},
    {"ztCAD_setAssertionWriter", [] { ztCAD_setAssertionWriter(nullptr, nullptr); }},
    {"getParallel_Morvik", [] { EXPECT_NE(getParallel_Morvik(), nullptr); }},
    {"ztCADVersion", [] { EXPECT_NE(ztCADVersion(), nullptr); }},
    // points
    {"crtPoint",
     [] {
       bool nameIsFree = false;
       EXPECT_EQ(crtPoint("P", nullptr, nameIsFree), null<ztCAD_Point>);
       EXPECT_TRUE(nameIsFree);
     }},
    {"crtPoint_nostl",
     [] {
       bool nameIsFree = false;
       EXPECT_EQ(crtPoint_nostl("P", nullptr, nameIsFree), null<ztCAD_Point>);
       EXPECT_TRUE(nameIsFree);
       EXPECT_EQ(crtPoint_nostl(nullptr, nullptr, nameIsFree), null<ztCAD_Point>);
       EXPECT_NE(crtPoint_nostl(nullptr, coord(0, 0, 0), nameIsFree), null<ztCAD_Point>);
     }},
    {"crtTmplPoint",
     [] {
       bool nameIsFree = false;
       EXPECT_EQ(crtTmplPoint("P", nullptr, nameIsFree), null<ztCAD_TmplPoint>);
       EXPECT_TRUE(nameIsFree);
     }},
    {"addPointToDoc",
     [] {
       const Document document = newDocument();
       EXPECT_TRUE(addPointToDoc(nullptr, document.get()));
       EXPECT_TRUE(addPointToDoc(pointNamed("A"), nullptr));
       EXPECT_TRUE(addPointToDoc(nullptr, nullptr));
       EXPECT_TRUE(ztCAD_getPoints(document.get())->empty());
     }},
    {"addTmplPointToDoc",
     [] {
       const Document document = newDocument();
       EXPECT_TRUE(addTmplPointToDoc(nullptr, document.get()));
       EXPECT_TRUE(addTmplPointToDoc(templatePointNamed("A"), nullptr));
       EXPECT_TRUE(addTmplPointToDoc(nullptr, nullptr));
       EXPECT_TRUE(ztCAD_getTmplPoints(document.get())->empty());
     }},
    {"removePointFromDoc",
     [] {
       const Document document = newDocument();
       addPointToDoc(pointNamed("A"), document.get());
       EXPECT_FALSE(removePointFromDoc(nullptr, document.get()));
       EXPECT_FALSE(removePointFromDoc(&ztCAD_getPoints(document.get())->front(), nullptr));
       EXPECT_FALSE(removePointFromDoc(nullptr, nullptr));
       EXPECT_FALSE(removePointFromDoc(reinterpret_cast<ztCAD_Point*>(std::uintptr_t{1}), document.get()));
       EXPECT_FALSE(removePointFromDoc(reinterpret_cast<ztCAD_Point*>(document.get()), document.get()));
       EXPECT_EQ(ztCAD_getPoints(document.get())->size(), 1u);
     }},
    {"ztCAD_getPoints", [] { EXPECT_EQ(ztCAD_getPoints(nullptr), null<ztCAD_Cont<ztCAD_Point>>); }},
    {"ztCAD_getTmplPoints",
     [] { EXPECT_EQ(ztCAD_getTmplPoints(nullptr), null<ztCAD_Cont<ztCAD_TmplPoint>>); }},
    {"getPointCoord",
     [] {
       double x = 1;
       double y = 2;
       double z = 3;
       getPointCoord(nullptr, x, y, z);
       EXPECT_EQ(x + y + z, 6);
     }},
    // records and lists
    {"crtVertices", [] { EXPECT_NE(crtVertices(), nullptr); }},
    {"crtFaces", [] { EXPECT_NE(crtFaces(), nullptr); }},
    {"crtCoord",
     [] {
       const double one = 1;
       EXPECT_EQ(crtCoord(nullptr, &one, &one), null<ztCAD_Coord>);
       EXPECT_EQ(crtCoord(&one, nullptr, &one), null<ztCAD_Coord>);
       EXPECT_EQ(crtCoord(&one, &one, nullptr), null<ztCAD_Coord>);
     }},
    {"crtVertex",
     [] {
       const double one = 1;
       EXPECT_EQ(crtVertex(nullptr, &one, &one), null<ztCAD_Vertex>);
       EXPECT_EQ(crtVertex(&one, nullptr, &one), null<ztCAD_Vertex>);
       EXPECT_EQ(crtVertex(&one, &one, nullptr), null<ztCAD_Vertex>);
     }},
    {"crtVertexByCoord", [] { EXPECT_EQ(crtVertexByCoord(nullptr), null<ztCAD_Vertex>); }},
    {"crtVertexByPoint", [] { EXPECT_EQ(crtVertexByPoint(nullptr), null<ztCAD_Vertex>); }},
    {"crtFacet",
     [] {
       const std::uint32_t one = 1;
       EXPECT_EQ(crtFacet(nullptr, &one, &one), null<ztCAD_Facet>);
       EXPECT_EQ(crtFacet(&one, nullptr, &one), null<ztCAD_Facet>);
       EXPECT_EQ(crtFacet(&one, &one, nullptr), null<ztCAD_Facet>);
     }},
    {"crtColor",
     [] {
       const std::uint32_t one = 1;
       EXPECT_EQ(crtColor(nullptr, &one, &one), null<ztCAD_Color>);
       EXPECT_EQ(crtColor(&one, nullptr, &one), null<ztCAD_Color>);
       EXPECT_EQ(crtColor(&one, &one, nullptr), null<ztCAD_Color>);
     }},
    {"crtLCS", [] { EXPECT_NE(crtLCS({}), nullptr); }},
    {"crtLCS_nostl", [] { EXPECT_EQ(crtLCS_nostl(nullptr), null<ztCAD_LCS>); }},
    {"addVertex",
     [] {
       ztCAD_Vertices* vertices = crtVertices();
       addVertex(nullptr, vertices);
       addVertex(crtVertexByCoord(coord(1, 2, 3)), nullptr);
       addVertex(nullptr, nullptr);
       EXPECT_TRUE(vertices->coordinates().empty());
     }},
    {"addVertexN",
     [] {
       ztCAD_Vertices* vertices = crtVertices();
       addVertexN({nullptr, nullptr}, vertices);
       addVertexN({}, vertices);
       addVertexN({crtVertexByCoord(coord(1, 2, 3))}, nullptr);
       EXPECT_TRUE(vertices->coordinates().empty());
     }},
    {"addVertexN_nostl",
     [] {
       ztCAD_Vertices* vertices = crtVertices();
       const ztCAD_Vertex* const array[] = {crtVertexByCoord(coord(1, 2, 3))};
       addVertexN_nostl(array, 0, vertices);
       addVertexN_nostl(array, -1, vertices);
       addVertexN_nostl(array, INT32_MIN, vertices);
       addVertexN_nostl(nullptr, 0, vertices);
       addVertexN_nostl(nullptr, 5, vertices);
       addVertexN_nostl(array, 1, nullptr);
       EXPECT_TRUE(vertices->coordinates().empty());
     }},
    {"addFacet",
     [] {
       const std::uint32_t one = 1;
       ztCAD_Faces* faces = crtFaces();
       addFacet(nullptr, faces);
       addFacet(crtFacet(&one, &one, &one), nullptr);
       addFacet(nullptr, nullptr);
       EXPECT_TRUE(faces->indices().empty());
     }},
    {"addFacetN",
     [] {
       const std::uint32_t one = 1;
       ztCAD_Faces* faces = crtFaces();
       addFacetN({nullptr, nullptr}, faces);
       addFacetN({}, faces);
       addFacetN({crtFacet(&one, &one, &one)}, nullptr);
       EXPECT_TRUE(faces->indices().empty());
     }},
    {"addFacetN_nostl",
     [] {
       const std::uint32_t one = 1;
       ztCAD_Faces* faces = crtFaces();
       const ztCAD_Facet* const array[] = {crtFacet(&one, &one, &one)};
       addFacetN_nostl(array, 0, faces);
       addFacetN_nostl(array, -1, faces);
       addFacetN_nostl(array, INT32_MIN, faces);
       addFacetN_nostl(nullptr, 0, faces);
       addFacetN_nostl(nullptr, 5, faces);
       addFacetN_nostl(array, 1, nullptr);
       EXPECT_TRUE(faces->indices().empty());
     }},
    {"isEqual",
     [] {
       EXPECT_FALSE(isEqual(nullptr, nullptr));
       EXPECT_FALSE(isEqual(crtLCS(twelve), nullptr));
       EXPECT_FALSE(isEqual(nullptr, crtLCS(twelve)));
     }},
};

std::vector<Row> allRows() {
  std::vector<Row> all(std::begin(rows), std::end(rows));
  for (const std::vector<Row>& more :
       {boundary::elementRows(), boundary::elementArrayRows(), boundary::contentRows(), boundary::fieldRows(),
        boundary::countedRows(), boundary::reviewRows(), boundary::flatRows()})
    all.insert(all.end(), more.begin(), more.end());
  return all;
}

TEST(Boundary, NullAndInvalidArgumentsYieldFailureValues) {
  for (const Row& row : allRows()) {
    SCOPED_TRACE(row.name);
    row.call();
  }
}

/// Sorted names of the functions exported by the headers in src/api; overloads appear once.
Names exportedFunctions() {
  const QRegularExpression function(R"(ZTCAD_API[^;(]*?(\w+)\()");
  Names names;
  QDirIterator headers(ZTCAD_TEST_API_HEADERS, {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
  while (headers.hasNext()) {
    const std::string text = bytesOf(headers.next().toStdString());
    for (auto found = function.globalMatch(QString::fromStdString(text)); found.hasNext();)
      names.push_back(found.next().captured(1).toStdString());
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

TEST(Boundary, EveryExportedFunctionHasARow) {
  Names tested;
  for (const Row& row : allRows())
    tested.push_back(row.name);
  std::sort(tested.begin(), tested.end());
  EXPECT_EQ(tested, exportedFunctions());
}

}  // namespace
