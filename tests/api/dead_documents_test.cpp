#include <gtest/gtest.h>
#include <cstdint>
#include <optional>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <set>
#include <string>

#include "samples.h"

// Every exported function that takes a document, with a document that was deleted and with an object that is
// none: nothing is read or written there, and each function returns its failure value.

namespace {

using Doc = ztCAD_GMDDocument;

struct Row {
  const char* name;  ///< name of the exported function
  void (*call)(Doc* document);
};

template <typename Element>
void expectNotAdded(bool (*add)(const Element*, Doc*), Doc* document) {
  EXPECT_TRUE(add(make<Element>("A"), document));
}

template <typename Element>
void expectNotRemoved(bool (*remove)(const Element*, Doc*), Doc* document) {
  EXPECT_FALSE(remove(make<Element>("A"), document));
}

template <typename FileName>
void expectNoUpdate(void (*update)(Doc*, FileName, std::int32_t&, bool&), Doc* document) {
  const TemporaryFiles files;
  const std::string file = files.put("a.xml", "<GMD/>");
  std::int32_t code = -1;
  bool fault = true;
  update(document, file.c_str(), code, fault);
  EXPECT_EQ(code, 110);
  EXPECT_FALSE(fault);
}

const Row rows[] = {
    {"ztCAD_reloadDocument",
     [](Doc* document) {
       const TemporaryFiles files;
       ztCAD_Outcome outcome = {0, true, -1, -1, ""};
       EXPECT_FALSE(ztCAD_reloadDocument(document, files.put("a.xml", "<GMD/>").c_str(), &outcome));
       EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
       EXPECT_STREQ(outcome.message, "no document was given");
     }},
    {"ztCAD_saveDocument",
     [](Doc* document) {
       const TemporaryFiles files;
       ztCAD_Outcome outcome = {0, true, -1, -1, ""};
       EXPECT_FALSE(ztCAD_saveDocument(document, files.path("a.xml").c_str(), &outcome));
       EXPECT_GT(outcome.code, 0);
       EXPECT_STREQ(outcome.message, "no document was given");
       EXPECT_EQ(files.names(), Names{});
     }},
    {"ztCAD_saveDocumentTo",
     [](Doc* document) {
       ztCAD_Outcome outcome = {0, true, -1, -1, ""};
       const auto neverCalled = [](const char*, std::int64_t, void*) { return false; };
       EXPECT_FALSE(ztCAD_saveDocumentTo(document, neverCalled, nullptr, &outcome));
       EXPECT_GT(outcome.code, 0);
       EXPECT_STREQ(outcome.message, "no document was given");
     }},
    {"SaveGMDDocument",
     [](Doc* document) {
       const TemporaryFiles files;
       SaveGMDDocument(document, files.path("a.xml"));
       EXPECT_EQ(files.names(), Names{});
     }},
    {"SaveGMDDocument_nostl",
     [](Doc* document) {
       const TemporaryFiles files;
       SaveGMDDocument_nostl(document, files.path("a.xml").c_str());
       EXPECT_EQ(files.names(), Names{});
     }},
    {"UpdateGMDDoc", [](Doc* document) { expectNoUpdate(UpdateGMDDoc, document); }},
    {"UpdateGMDDoc_nostl", [](Doc* document) { expectNoUpdate(UpdateGMDDoc_nostl, document); }},
    {"GMDDocumentToString",
     [](Doc* document) { EXPECT_EQ(textOf(document, true) + textOf(document, false), ""); }},
    {"GMDDocumentToString_nostl",
     [](Doc* document) { EXPECT_EQ(GMDDocumentToString_nostl(document, true, nullptr, 0), -1); }},
    {"checkGMDDocument", [](Doc* document) { EXPECT_FALSE(checkGMDDocument(document)); }},
    {"DeleteGMDDoc", [](Doc* document) { DeleteGMDDoc(document); }},
    {"ztCAD_endDocument", [](Doc* document) { ztCAD_endDocument(document); }},
    {"setHeader", [](Doc* document) { setHeader(crtHeader(), document); }},
    {"ztCAD_getHeader", [](Doc* document) { EXPECT_EQ(ztCAD_getHeader(document), nullptr); }},
    {"ztCAD_countInDoc", [](Doc* document) { EXPECT_EQ(ztCAD_countInDoc(document, ztCAD_ElementPoint), 0); }},
    {"ztCAD_getFromDoc",
     [](Doc* document) { EXPECT_EQ(ztCAD_getFromDoc(document, ztCAD_ElementPoint, 0), nullptr); }},
    {"ztCAD_listDoc",
     [](Doc* document) {
       ztCAD_Base* element = nullptr;
       EXPECT_EQ(ztCAD_listDoc(document, ztCAD_ElementPoint, &element, 1), 0);
       EXPECT_EQ(element, nullptr);
     }},
    {"ztCAD_addToDoc", [](Doc* document) { EXPECT_TRUE(ztCAD_addToDoc(pointNamed("A"), document)); }},
    {"ztCAD_appendToDoc",
     [](Doc* document) { EXPECT_EQ(ztCAD_appendToDoc(document, ztCAD_ElementPoint), nullptr); }},
    {"ztCAD_appendManyToDoc",
     [](Doc* document) { EXPECT_FALSE(ztCAD_appendManyToDoc(document, ztCAD_ElementPoint, 1, nullptr)); }},
    {"ztCAD_removeFromDoc",
     [](Doc* document) { EXPECT_FALSE(ztCAD_removeFromDoc(pointNamed("A"), document, ztCAD_ElementPoint)); }},
    {"addPointToDoc", [](Doc* document) { expectNotAdded(addPointToDoc, document); }},
    {"addTmplPointToDoc", [](Doc* document) { expectNotAdded(addTmplPointToDoc, document); }},
    {"addPointRefToDoc", [](Doc* document) { expectNotAdded(addPointRefToDoc, document); }},
    {"addPolylineToDoc", [](Doc* document) { expectNotAdded(addPolylineToDoc, document); }},
    {"addTmplLineToDoc", [](Doc* document) { expectNotAdded(addTmplLineToDoc, document); }},
    {"addLineRefToDoc", [](Doc* document) { expectNotAdded(addLineRefToDoc, document); }},
    {"addSphereToDoc", [](Doc* document) { expectNotAdded(addSphereToDoc, document); }},
    {"addTriangleToDoc", [](Doc* document) { expectNotAdded(addTriangleToDoc, document); }},
    {"addTmplTriangleToDoc", [](Doc* document) { expectNotAdded(addTmplTriangleToDoc, document); }},
    {"addTriangleRefToDoc", [](Doc* document) { expectNotAdded(addTriangleRefToDoc, document); }},
    {"addMipElementToDoc", [](Doc* document) { expectNotAdded(addMipElementToDoc, document); }},
    {"addTmplElementMipToDoc", [](Doc* document) { expectNotAdded(addTmplElementMipToDoc, document); }},
    {"addElementMipRefToDoc", [](Doc* document) { expectNotAdded(addElementMipRefToDoc, document); }},
    {"addStructureToDoc", [](Doc* document) { expectNotAdded(addStructureToDoc, document); }},
    {"addTmplStructureToDoc", [](Doc* document) { expectNotAdded(addTmplStructureToDoc, document); }},
    {"addStructureRefToDoc", [](Doc* document) { expectNotAdded(addStructureRefToDoc, document); }},
    {"addDetailRefToDoc", [](Doc* document) { expectNotAdded(addDetailRefToDoc, document); }},
    {"removePointFromDoc", [](Doc* document) { expectNotRemoved(removePointFromDoc, document); }},
    {"removePolylineFromDoc", [](Doc* document) { expectNotRemoved(removePolylineFromDoc, document); }},
    {"removeTriangleFromDoc", [](Doc* document) { expectNotRemoved(removeTriangleFromDoc, document); }},
    {"removeRefTriangleFromDoc", [](Doc* document) { expectNotRemoved(removeRefTriangleFromDoc, document); }},
    {"removeLineRefFromDoc", [](Doc* document) { expectNotRemoved(removeLineRefFromDoc, document); }},
    {"removeMIPFromDoc", [](Doc* document) { expectNotRemoved(removeMIPFromDoc, document); }},
    {"removeStructureFromDoc", [](Doc* document) { expectNotRemoved(removeStructureFromDoc, document); }},
    {"ztCAD_getStructures", [](Doc* document) { EXPECT_EQ(ztCAD_getStructures(document), nullptr); }},
    {"ztCAD_getStructuresRef", [](Doc* document) { EXPECT_EQ(ztCAD_getStructuresRef(document), nullptr); }},
    {"ztCAD_getTmplStructures", [](Doc* document) { EXPECT_EQ(ztCAD_getTmplStructures(document), nullptr); }},
    {"ztCAD_getPoints", [](Doc* document) { EXPECT_EQ(ztCAD_getPoints(document), nullptr); }},
    {"ztCAD_getLines", [](Doc* document) { EXPECT_EQ(ztCAD_getLines(document), nullptr); }},
    {"ztCAD_getSpheres", [](Doc* document) { EXPECT_EQ(ztCAD_getSpheres(document), nullptr); }},
    {"ztCAD_getTriangles", [](Doc* document) { EXPECT_EQ(ztCAD_getTriangles(document), nullptr); }},
    {"ztCAD_getMipElements", [](Doc* document) { EXPECT_EQ(ztCAD_getMipElements(document), nullptr); }},
    {"ztCAD_getDetails", [](Doc* document) { EXPECT_EQ(ztCAD_getDetails(document), nullptr); }},
    {"ztCAD_getDetailsRef", [](Doc* document) { EXPECT_EQ(ztCAD_getDetailsRef(document), nullptr); }},
    {"ztCAD_getTmplDetails", [](Doc* document) { EXPECT_EQ(ztCAD_getTmplDetails(document), nullptr); }},
    {"ztCAD_getTmplPoints", [](Doc* document) { EXPECT_EQ(ztCAD_getTmplPoints(document), nullptr); }},
    {"ztCAD_getPointsRef", [](Doc* document) { EXPECT_EQ(ztCAD_getPointsRef(document), nullptr); }},
    {"ztCAD_getTmplLines", [](Doc* document) { EXPECT_EQ(ztCAD_getTmplLines(document), nullptr); }},
    {"ztCAD_getLinesRef", [](Doc* document) { EXPECT_EQ(ztCAD_getLinesRef(document), nullptr); }},
    {"ztCAD_getTmplElementMips",
     [](Doc* document) { EXPECT_EQ(ztCAD_getTmplElementMips(document), nullptr); }},
    {"ztCAD_getElementMipsRef", [](Doc* document) { EXPECT_EQ(ztCAD_getElementMipsRef(document), nullptr); }},
    {"ztCAD_getTmplTriangles", [](Doc* document) { EXPECT_EQ(ztCAD_getTmplTriangles(document), nullptr); }},
    {"ztCAD_getTrianglesRef", [](Doc* document) { EXPECT_EQ(ztCAD_getTrianglesRef(document), nullptr); }},
};

class DeadDocument : public testing::TestWithParam<Row> {};

TEST_P(DeadDocument, IsRefusedAfterItWasDeleted) {
  Doc* const deleted = crtGMDDocument("");
  addPointToDoc(pointNamed("A"), deleted);
  DeleteGMDDoc(deleted);
  GetParam().call(deleted);
}

TEST_P(DeadDocument, IsRefusedAfterItsHostDestroyedIt) {
  std::optional<Doc> hosts("");
  Doc* const destroyed = &*hosts;
  hosts.reset();
  GetParam().call(destroyed);
}

TEST_P(DeadDocument, MayBeAnotherObject) {
  ztCAD_Point* const point = pointNamed("P");
  GetParam().call(reinterpret_cast<Doc*>(point));
  EXPECT_EQ(point->name(), QString("P"));
  GetParam().call(reinterpret_cast<Doc*>(std::uintptr_t{1}));
}

INSTANTIATE_TEST_SUITE_P(Functions, DeadDocument, testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DeadDocuments, EveryFunctionThatTakesADocumentIsTested) {
  std::set<std::string> declared;
  const QRegularExpression function(R"(ZTCAD_API[^();]*?\b(\w+)\(([^;]*?)\);)");
  for (QDirIterator headers(ZTCAD_TEST_API_HEADERS, {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
       headers.hasNext();) {
    QFile header(headers.next());
    ASSERT_TRUE(header.open(QIODevice::ReadOnly));
    for (auto matches = function.globalMatch(QString::fromUtf8(header.readAll())); matches.hasNext();) {
      const QRegularExpressionMatch match = matches.next();
      if (match.captured(2).contains("ztCAD_GMDDocument*")) declared.insert(match.captured(1).toStdString());
    }
  }
  std::set<std::string> tested;
  for (const Row& row : rows)
    tested.insert(row.name);
  EXPECT_GT(declared.size(), 50U);
  EXPECT_EQ(declared, tested);
}

TEST(DeadDocuments, ADocumentOfTheHostIsAlive) {
  Doc hosts("");
  EXPECT_FALSE(addPointToDoc(pointNamed("A"), &hosts));
  EXPECT_EQ(namesIn(ztCAD_getPoints(&hosts)), Names{"A"});
}

}  // namespace
