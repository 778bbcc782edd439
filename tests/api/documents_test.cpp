#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "host.h"
#include "time_growth.h"

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n";
const std::string headerText = "Header( inform=no Value , majorVersion=0 , minorVersion=0 ) state=no Value";

TEST(CreatingDocuments, CreatesAnEmptyDocumentWithInform) {
  const Document document = newDocument("Корпус");
  ASSERT_TRUE(document);
  EXPECT_TRUE(ztCAD_getPoints(document.get())->empty());
  EXPECT_TRUE(ztCAD_getTmplPoints(document.get())->empty());
  EXPECT_EQ(document->header().inform(), QString("Корпус"));
}

TEST(CreatingDocuments, AcceptsNullTerminatedText) {
  const Document named(crtGMDDocument_nostl("note"));
  const Document unnamed(crtGMDDocument_nostl(nullptr));
  EXPECT_EQ(named->header().inform(), QString("note"));
  EXPECT_EQ(unnamed->header().inform(), QString(""));
}

TEST(CreatingDocuments, DocumentsAreIndependent) {
  const Document one = newDocument();
  const Document other = newDocument();
  EXPECT_NE(one, other);
  addPointToDoc(pointNamed("A"), one.get());
  EXPECT_TRUE(ztCAD_getPoints(other.get())->empty());
}

TEST(CreatingDocuments, ANewHeaderHasNoFieldSet) {
  const ztCAD_HeaderNode* header = crtHeader();
  ASSERT_NE(header, nullptr);
  EXPECT_EQ(header->toText().toStdString(), headerText);
  EXPECT_NE(crtHeader(), header);
}

TEST(Header, IsCopiedIntoTheDocumentWithItsUnsetFields) {
  const Document document = newDocument("earlier");
  ztCAD_HeaderNode* header = crtHeader();
  header->setMajorVersion(1);
  header->setProducerName(QString("producer"));
  setHeader(header, document.get());
  EXPECT_EQ(document->header().majorVersion(), 1u);
  EXPECT_EQ(document->header().producerName(), QString("producer"));
  EXPECT_FALSE(document->header().inform());
  header->setProducerName(std::nullopt);
  EXPECT_EQ(document->header().producerName(), QString("producer"));
}

TEST(Header, CanBeThatOfTheDocumentItself) {
  const Document document = newDocument("note");
  setHeader(&document->header(), document.get());
  EXPECT_EQ(document->header().inform(), QString("note"));
}

TEST(LoadingFiles, ReturnsTheDocumentAndTheResultCode) {
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("a.xml", "<GMD><point name='A' center='1'/></GMD>"));
  ASSERT_TRUE(loaded.document);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  EXPECT_EQ(namesIn(ztCAD_getPoints(loaded.document.get())), Names{"A"});
  EXPECT_EQ(loaded.document->header().inform(), QString(""));
}

TEST(LoadingFiles, ReturnsAnEmptyDocumentIfLoadingFails) {
  const TemporaryFiles files;
  struct Row {
    const char* name;
    std::string file;
    std::int32_t code;
  };
  const Row rows[] = {
      {"missing", files.path("absent.xml"), 100},
      {"no name", "", 100},
      {"not well-formed", files.put("malformed.xml", "<GMD>"), 110},
      {"wrong root", files.put("root.xml", "<other/>"), 120},
      {"folder", files.folder(), QFileDevice::OpenError},
  };
  for (const Row& row : rows) {
    const Loaded loaded = loadFile(row.file);
    ASSERT_TRUE(loaded.document) << row.name;
    EXPECT_EQ(loaded.code, row.code) << row.name;
    EXPECT_FALSE(loaded.fault) << row.name;
    EXPECT_EQ(textOf(loaded.document.get()),
              "ztCAD_GMD Header( inform= , majorVersion=0 , minorVersion=0 ) state=no Value\n")
        << row.name;
  }
}

TEST(LoadingFiles, APointThatCannotBeReadRaisesTheFault) {
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("a.xml", "<GMD><point name='A'/></GMD>"));
  EXPECT_EQ(loaded.code, 0);
  EXPECT_TRUE(loaded.fault);
}

TEST(LoadingStrings, ReturnsTheDocumentAndTheResultOfParsing) {
  const Parsed good = parse("<GMD><point name='A' center='1'/></GMD>");
  EXPECT_TRUE(good.parsed);
  EXPECT_EQ(good.message, "");
  EXPECT_EQ(good.line, 0);
  EXPECT_EQ(good.column, 0);
  EXPECT_EQ(namesIn(ztCAD_getPoints(good.document.get())), Names{"A"});

  const Parsed bad = parse("<GMD>\n<point name='A' center='1'/>");
  EXPECT_FALSE(bad.parsed);
  EXPECT_EQ(bad.message, "unexpected end of file");
  EXPECT_EQ(bad.line, 2);
  EXPECT_EQ(bad.column, 29);
  EXPECT_EQ(namesIn(ztCAD_getPoints(bad.document.get())), Names{"A"});
}

TEST(LoadingStrings, MessageCanBeTheTextItself) {
  std::string text = "<GMD><point name='A' center='1'/>";
  bool parsed = true;
  int position = 0;
  const Document document(crtGMDDocumentFromStdString(text, parsed, text, position, position));
  EXPECT_FALSE(parsed);
  EXPECT_EQ(text, parse("<GMD><point name='A' center='1'/>").message);
  EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"A"});

  std::string good = "<GMD><point name='A' center='1'/></GMD>";
  const Document other(crtGMDDocumentFromStdString(good, parsed, good, position, position));
  EXPECT_TRUE(parsed);
  EXPECT_EQ(good, "");
  EXPECT_EQ(namesIn(ztCAD_getPoints(other.get())), Names{"A"});
}

TEST(DocumentsToString, TextFormHasTheElementsAndXmlFormTheLoadedTree) {
  const Parsed loaded = parse("<GMD><point name='A' center='1'/></GMD>");
  setHeader(crtHeader(), loaded.document.get());
  addPointToDoc(pointNamed("Ё"), loaded.document.get());
  EXPECT_EQ(
      textOf(loaded.document.get(), true),
      "ztCAD_GMD " + headerText +
          "\n"
          "method==pointXYZ prop=attr=(name=A, comment=, inform=) ,color=visible=\nCenter=coord(1, 0, 0;), \n"
          "method==pointXYZ prop=attr=(name=Ё, comment=, inform=) ,color=visible=\nCenter=coord(0, 0, 0;), \n");
  EXPECT_EQ(textOf(loaded.document.get(), false),
            "<GMD>\n <point center=\"1\" name=\"A\"/>\n</GMD>\n header state=" + headerText);
}

TEST(SavingDocuments, WritesTheFileAndRenamesDuplicatesInTheDocument) {
  const Document document = newDocument("note");
  addPointToDoc(pointNamed("A"), document.get());
  addTmplPointToDoc(templatePointNamed("A"), document.get());
  const auto line = [](const std::string& tag, const std::string& name) {
    return "   <" + tag +
           " center=\"0, 0, 0;\" color=\"\" comment=\"\" inform=\"\" method=\"pointXYZ\" name=\"" + name +
           "\"/>\n";
  };
  EXPECT_EQ(savedBytes(document.get()), declaration + "<GMD>\n   <header inform=\"note\"/>\n" +
                                            line("templatePoint", "A_$1") + line("point", "A") + "</GMD>\n");
  EXPECT_EQ(namesIn(ztCAD_getTmplPoints(document.get())), Names{"A_$1"});
}

TEST(SavingDocuments, AcceptsANullTerminatedFileName) {
  const TemporaryFiles files;
  const Document document = newDocument();
  SaveGMDDocument(document.get(), files.path("a.xml"));
  SaveGMDDocument_nostl(document.get(), files.path("деталь.xml").c_str());
  EXPECT_EQ(files.names(), (Names{"a.xml", "деталь.xml"}));
  EXPECT_EQ(bytesOf(files.path("деталь.xml")), bytesOf(files.path("a.xml")));
  SaveGMDDocument_nostl(document.get(), nullptr);
  EXPECT_EQ(files.names().size(), 2u);
}

TEST(UpdatingDocuments, LoadsTheFileIntoTheSameDocument) {
  const TemporaryFiles files;
  const Document document = newDocument("kept");
  addPointToDoc(pointNamed("old"), document.get());
  std::int32_t code = -1;
  bool fault = true;
  UpdateGMDDoc(document.get(), files.put("a.xml", "<GMD><point name='new' center='1'/></GMD>"), code, fault);
  EXPECT_EQ(code, 0);
  EXPECT_FALSE(fault);
  EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"new"});
  EXPECT_EQ(document->header().inform(), QString("kept"));
}

TEST(UpdatingDocuments, AFileThatDoesNotLoadLeavesTheElements) {
  const TemporaryFiles files;
  const Document document = newDocument();
  addPointToDoc(pointNamed("old"), document.get());
  struct Row {
    std::string file;
    std::int32_t code;
  };
  const Row rows[] = {{files.path("absent.xml"), 100},
                      {files.put("malformed.xml", "<GMD>"), 110},
                      {files.put("root.xml", "<other/>"), 120}};
  for (const Row& row : rows) {
    std::int32_t code = -1;
    bool fault = true;
    UpdateGMDDoc(document.get(), row.file, code, fault);
    EXPECT_EQ(code, row.code) << row.file;
    EXPECT_FALSE(fault) << row.file;
    EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"old"}) << row.file;
  }
}

TEST(UpdatingDocuments, ContainersStayTheSameObjects) {
  const TemporaryFiles files;
  const Document document = newDocument();
  const auto* points = ztCAD_getPoints(document.get());
  std::int32_t code = -1;
  bool fault = true;
  UpdateGMDDoc(document.get(), files.put("a.xml", "<GMD><point name='A' center='1'/></GMD>"), code, fault);
  EXPECT_EQ(ztCAD_getPoints(document.get()), points);
  EXPECT_EQ(namesIn(points), Names{"A"});
}

TEST(CheckingDocuments, DuplicateTemplatePointNamesFail) {
  const Document document = newDocument();
  EXPECT_TRUE(checkGMDDocument(document.get()));
  addPointToDoc(pointNamed("A"), document.get());
  addPointToDoc(pointNamed("A"), document.get());
  addTmplPointToDoc(templatePointNamed("A"), document.get());
  EXPECT_TRUE(checkGMDDocument(document.get()));
  addTmplPointToDoc(templatePointNamed("A"), document.get());
  EXPECT_FALSE(checkGMDDocument(document.get()));
  savedBytes(document.get());  // makes names unique
  EXPECT_TRUE(checkGMDDocument(document.get()));
}

TEST(DeletingDocuments, ClearingKeepsDocumentsAndTheirElements) {
  const Document document = newDocument();
  addPointToDoc(pointNamed("A"), document.get());
  ClearGMDDoc();
  ClearGMDDoc();
  EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"A"});
}

TEST(DeletingDocuments, CreatedElementsOutliveTheDocumentsThatCopiedThem) {
  ztCAD_Point* point = pointNamed("A");
  {
    const Document document = newDocument();
    addPointToDoc(point, document.get());
  }
  EXPECT_EQ(point->name(), QString("A"));
  const Document other = newDocument();
  EXPECT_FALSE(addPointToDoc(point, other.get()));
}

TEST(DeletingDocuments, TimeIsLinearInTheirNumberInAnyOrder) {
  const double growth = timeGrowth(8000, [](int count) {
    std::vector<ztCAD_GMDDocument*> documents;
    for (int i = 0; i < count; ++i)
      documents.push_back(crtGMDDocument(""));
    for (std::size_t i = 0; i < documents.size(); i += 2)
      DeleteGMDDoc(documents[i]);
    for (std::size_t i = documents.size(); i-- > 0;)
      if (i % 2 == 1) DeleteGMDDoc(documents[i]);
  });
  EXPECT_LT(growth, linearTimeGrowth);
}

}  // namespace
