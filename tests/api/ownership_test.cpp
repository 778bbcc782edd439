// Loads, saves and ends that report, and whom the nested structures belong to.

#include <gtest/gtest.h>
#include <cstring>
#include <string>

#include "host.h"

namespace {

const std::string nestedXml =
    R"(<GMD><header/><structure name="outer"><structure name="inner"><point name="P" center="1, 2, 3;"/>)"
    R"(</structure></structure></GMD>)";

struct LoneEnd {
  void operator()(ztCAD_GMDDocument* document) const { ztCAD_endDocument(document); }
};
using LoneDocument = std::unique_ptr<ztCAD_GMDDocument, LoneEnd>;

LoneDocument load(const std::string& fileName, ztCAD_Outcome* outcome = nullptr) {
  return LoneDocument(ztCAD_loadDocument(fileName.c_str(), outcome));
}

LoneDocument loadText(const std::string& text, ztCAD_Outcome* outcome = nullptr) {
  return LoneDocument(
      ztCAD_loadDocumentFromText(text.data(), static_cast<std::int64_t>(text.size()), outcome));
}

std::size_t nestedIn(ztCAD_GMDDocument* document) {
  return ztCAD_getStructures(document)->front().structures().size();
}

class Ownership : public testing::Test {
 protected:
  Ownership() { std::memset(&outcome, 0x55, sizeof outcome); }

  const TemporaryFiles files;
  const std::string file = files.put("nested.xml", nestedXml);
  const std::string broken = files.put("broken.xml", "<GMD>\n <point");
  ztCAD_Outcome outcome;
};

TEST_F(Ownership, LoadGivesTheDocumentAndACleanOutcome) {
  const LoneDocument document = load(file, &outcome);
  ASSERT_TRUE(document);
  EXPECT_EQ(nestedIn(document.get()), 1u);
  EXPECT_EQ(outcome.code, ztCAD_ResultLoaded);
  EXPECT_FALSE(outcome.fault);
  EXPECT_EQ(outcome.line, 0);
  EXPECT_EQ(outcome.column, 0);
  EXPECT_STREQ(outcome.message, "");
}

TEST_F(Ownership, LoadOfAMissingFileGivesNullAndAMessage) {
  EXPECT_FALSE(load(files.path("absent.xml"), &outcome));
  EXPECT_EQ(outcome.code, ztCAD_ResultFileMissing);
  EXPECT_STREQ(outcome.message, "no such file");
}

TEST_F(Ownership, LoadOfAFolderGivesTheCodeOfTheFileError) {
  EXPECT_FALSE(load(files.folder(), &outcome));
  EXPECT_GT(outcome.code, 0);
  EXPECT_LT(outcome.code, ztCAD_ResultFileMissing);
  EXPECT_STRNE(outcome.message, "");
}

TEST_F(Ownership, LoadOfAnIllFormedFileGivesTheParsersMessageAndPosition) {
  EXPECT_FALSE(load(broken, &outcome));
  EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
  EXPECT_STREQ(outcome.message, "unexpected end of file");
  EXPECT_EQ(outcome.line, 2);
  EXPECT_EQ(outcome.column, 8);
}

TEST_F(Ownership, LoadOfAnotherRootGivesNull) {
  EXPECT_FALSE(loadText("<other/>", &outcome));
  EXPECT_EQ(outcome.code, ztCAD_ResultNotADocument);
  EXPECT_STREQ(outcome.message, "the root element is not \"GMD\"");
}

TEST_F(Ownership, LoadThatFailsTheCheckGivesTheDocumentAllTheSame) {
  const LoneDocument document =
      loadText(R"(<GMD><structure name="S"><point name="P"/></structure></GMD>)", &outcome);
  ASSERT_TRUE(document);
  EXPECT_EQ(outcome.code, ztCAD_ResultNotADocument);
  EXPECT_TRUE(outcome.fault);
  EXPECT_STREQ(outcome.message, "the document check failed");
}

TEST_F(Ownership, TextMayEndAtItsFirstZero) {
  const LoneDocument document(ztCAD_loadDocumentFromText(nestedXml.c_str(), -1, &outcome));
  EXPECT_TRUE(document);
  EXPECT_EQ(outcome.code, ztCAD_ResultLoaded);
}

TEST_F(Ownership, TextWithAZeroInsideIsRefused) {
  EXPECT_FALSE(loadText(nestedXml + std::string(1, '\0'), &outcome));
  EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
  EXPECT_STREQ(outcome.message, "NUL character");
}

TEST_F(Ownership, NullsGiveNoDocumentAndAnOutcome) {
  EXPECT_FALSE(load(""));
  EXPECT_EQ(ztCAD_loadDocument(nullptr, &outcome), nullptr);
  EXPECT_EQ(outcome.code, ztCAD_ResultFileMissing);
  EXPECT_EQ(ztCAD_loadDocumentFromText(nullptr, 0, &outcome), nullptr);
  EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
  EXPECT_FALSE(ztCAD_reloadDocument(nullptr, file.c_str(), &outcome));
  EXPECT_EQ(outcome.code, ztCAD_ResultNotParsed);
  EXPECT_FALSE(ztCAD_saveDocument(nullptr, file.c_str(), &outcome));
  EXPECT_NE(outcome.code, 0);
  EXPECT_STREQ(outcome.message, "no document was given");
  ztCAD_endDocument(nullptr);
}

TEST_F(Ownership, NestedStructuresOutliveTheDeletionOfAnotherDocument) {
  const LoneDocument document = load(file);
  DeleteGMDDoc(crtGMDDocument(""));
  ClearGMDDoc();
  EXPECT_EQ(nestedIn(document.get()), 1u);
}

TEST_F(Ownership, NestedStructuresOutliveTheUpdateOfAnotherDocument) {
  const LoneDocument document = load(file);
  const Document other = newDocument();
  std::int32_t code = -1;
  bool fault = true;
  UpdateGMDDoc(other.get(), file, code, fault);
  EXPECT_EQ(nestedIn(document.get()), 1u);
}

TEST_F(Ownership, EndingADocumentLeavesTheNestedStructuresOfOthers) {
  const Loaded older = loadFile(file);
  load(file).reset();
  EXPECT_EQ(nestedIn(older.document.get()), 1u);
}

TEST_F(Ownership, FailedReloadChangesNothing) {
  const LoneDocument document = load(file);
  const std::string before = textOf(document.get());
  for (const std::string& bad : {broken, files.path("absent.xml"), files.put("other.xml", "<other/>")}) {
    EXPECT_FALSE(ztCAD_reloadDocument(document.get(), bad.c_str(), &outcome));
    EXPECT_NE(outcome.code, 0);
    EXPECT_STRNE(outcome.message, "");
    EXPECT_EQ(textOf(document.get()), before);
    EXPECT_EQ(nestedIn(document.get()), 1u);
  }
}

TEST_F(Ownership, ReloadReplacesContentAndNestedStructures) {
  const LoneDocument document = load(file);
  const std::string other =
      files.put("other.xml",
                R"(<GMD><structure name="A"><structure name="B"/><structure name="C"/></structure></GMD>)");
  EXPECT_TRUE(ztCAD_reloadDocument(document.get(), other.c_str(), &outcome));
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(nestedIn(document.get()), 2u);
  ClearGMDDoc();
  EXPECT_EQ(nestedIn(document.get()), 2u);
}

TEST_F(Ownership, ReloadOfADocumentOfTheOlderCallsFreesItFromThem) {
  const Loaded older = loadFile(file);
  EXPECT_TRUE(ztCAD_reloadDocument(older.document.get(), file.c_str(), nullptr));
  ClearGMDDoc();
  EXPECT_EQ(nestedIn(older.document.get()), 1u);
}

TEST_F(Ownership, OlderUpdateOfADocumentThatOwnsItsStructuresReplacesThem) {
  const LoneDocument document = load(file);
  std::int32_t code = -1;
  bool fault = true;
  UpdateGMDDoc(document.get(), file, code, fault);
  EXPECT_EQ(code, 0);
  EXPECT_EQ(nestedIn(document.get()), 1u);
  ClearGMDDoc();
  EXPECT_EQ(nestedIn(document.get()), 0u);
}

TEST_F(Ownership, HoldersOfANestedStructureLoseItWithItsDocument) {
  LoneDocument document = load(file);
  bool nameIsFree = false;
  ztCAD_Structure* const holder = crtStructure("holder", crtLCS({}), nameIsFree);
  EXPECT_FALSE(
      addStructureToStructure(ztCAD_getStructures(document.get())->front().structures().front(), holder));
  document.reset();
  EXPECT_TRUE(holder->structures().empty());
}

TEST_F(Ownership, SaveReportsSuccess) {
  const LoneDocument document = load(file);
  const std::string target = files.path("saved.xml");
  EXPECT_TRUE(ztCAD_saveDocument(document.get(), target.c_str(), &outcome));
  EXPECT_EQ(outcome.code, 0);
  EXPECT_STREQ(outcome.message, "");
  EXPECT_EQ(textBytesOf(target), savedBytes(document.get()));
}

TEST_F(Ownership, SaveIntoAFolderThatIsNotThereReportsWhy) {
  const LoneDocument document = load(file);
  EXPECT_FALSE(ztCAD_saveDocument(document.get(), files.path("absent/saved.xml").c_str(), &outcome));
  EXPECT_GT(outcome.code, 0);
  EXPECT_STRNE(outcome.message, "");
}

TEST_F(Ownership, EndingTwiceDoesNothing) {
  ztCAD_GMDDocument* const document = load(file).release();
  ztCAD_endDocument(document);
  ztCAD_endDocument(document);
  DeleteGMDDoc(document);
}

TEST_F(Ownership, SavingAnUnchangedDocumentOfSharedStructuresAgainChangesNothing) {
  const Document document = newDocument();
  bool nameIsFree = false;
  ztCAD_Structure* const shared = crtStructure("S", crtLCS({}), nameIsFree);
  for (const char* const name : {"A", "B"}) {
    ztCAD_Structure* const holder = crtStructure(name, crtLCS({}), nameIsFree);
    EXPECT_FALSE(addStructureToStructure(crtStructure("S", crtLCS({}), nameIsFree), holder));
    EXPECT_FALSE(addStructureToStructure(shared, holder));
    EXPECT_FALSE(addStructureToStructure(shared, holder));
    EXPECT_FALSE(addStructureToDoc(holder, document.get()));
  }
  const std::string first = savedBytes(document.get());
  EXPECT_EQ(savedBytes(document.get()), first);
  EXPECT_NE(first.find("S_$1"), std::string::npos);
}

TEST_F(Ownership, BuiltDetailIsSoundOnceItIsMarkedRead) {
  const Document document = newDocument();
  ztCAD_Base* const detail = ztCAD_appendToDoc(document.get(), ztCAD_ElementDetail);
  EXPECT_EQ(ztCAD_getReadOk(detail), -1);
  EXPECT_FALSE(ztCAD_isSound(detail));
  ztCAD_setReadOk(detail, true);
  EXPECT_EQ(ztCAD_getReadOk(detail), 1);
  EXPECT_TRUE(ztCAD_isSound(detail));
  ztCAD_setReadOk(nullptr, true);
}

TEST_F(Ownership, MassInertiaDataOfADetailCanBeCleared) {
  const Document document = newDocument();
  ztCAD_Base* const detail = ztCAD_appendToDoc(document.get(), ztCAD_ElementDetail);
  ztCAD_setMIP(detail, crtMIP(std::vector<double>(10, 1)));
  EXPECT_EQ(ztCAD_getMIP(detail, nullptr, 0), 10);
  ztCAD_setMIP(detail, nullptr);
  EXPECT_EQ(ztCAD_getMIP(detail, nullptr, 0), -1);
}

TEST_F(Ownership, VersionOfTheHeadersIsThatOfTheLibrary) {
  const std::string version = std::to_string(ZTCAD_VERSION_MAJOR) + '.' +
                              std::to_string(ZTCAD_VERSION_MINOR) + '.' + std::to_string(ZTCAD_VERSION_PATCH);
  EXPECT_EQ(version, ztCADVersion());
  EXPECT_STREQ(ZTCAD_VERSION_STRING, ztCADVersion());
}

}  // namespace
