// A host that uses Qt and copies texts and trees out of the library's objects through the inline accessors of
// the public headers. The copies stay valid after the library is unloaded.

#include <gtest/gtest.h>
#include <QDomDocument>
#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "heap.h"
#include "loaded_library.h"
#include "mapped_files.h"

namespace {

struct CopiedText {
  std::string what;
  QString text;
  std::string expected;
};

using CopiedTexts = std::vector<CopiedText>;

void copyPoint(const ztCAD_commonPoint& point, const std::string& word, const std::string& lcsWord,
               const std::string& prefix, CopiedTexts& copies) {
  const ztCAD_gAttr& attributes = point.property().attributes();
  copies.push_back({word + " name", point.name(), prefix + "name"});
  copies.push_back({word + " comment", attributes.comment(), prefix + "comment"});
  copies.push_back({word + " inform", attributes.inform(), prefix + "inform"});
  copies.push_back({word + " method", point.method().method(), "pointXYZ"});
  copies.push_back({word + " elementName", point.elementName(), word});
  copies.push_back({word + " lcsWord", point.lcsWord(), lcsWord});
  QString storage;
  copies.push_back({word + " storage form", point.toText(storage, false), "1, 2, 3;"});
  QString debugText;
  point.toText(debugText, true);
  copies.push_back({word + " debug form", debugText, debugText.toStdString()});
}

void copyHeader(const ztCAD_HeaderNode& header, CopiedTexts& copies) {
  copies.push_back({"header inform", header.inform().value_or(QString()), "of the document"});
  copies.push_back({"producer name", header.producerName().value_or(QString()), "producer"});
  copies.push_back({"producer version", header.producerVersion().value_or(QString()), "1.2"});
  copies.push_back({"producer platform", header.producerPlatform().value_or(QString()), "none"});
}

const char* const loadedXml = R"(<GMD>
  <header majorVersion="1" minorVersion="0" inform="of the document"/>
  <point name="p_name" comment="p_comment" inform="p_inform" method="pointXYZ" center="1, 2, 3;" color=""/>
  <templatePoint name="t_name" comment="t_comment" inform="t_inform" method="pointXYZ" center="1, 2, 3;" color=""/>
</GMD>)";

ztCAD_GMDDocument* loadDocument(const LoadedLibrary& library) {
  bool parsed = false;
  std::string message;
  int line = 0;
  int column = 0;
  ztCAD_GMDDocument* const document =
      library.crtGMDDocumentFromStdString(loadedXml, parsed, message, line, column);
  EXPECT_TRUE(parsed) << message;
  return document;
}

void expectValidAfterUnloading(const CopiedTexts& copies) {
  ASSERT_FALSE(libraryIsMapped());
  for (const CopiedText& copy : copies)
    EXPECT_EQ(copy.text.toStdString(), copy.expected) << copy.what;
}

TEST(CopiedTexts, OfLoadedElementsOutliveTheLibrary) {
  CopiedTexts copies;
  {
    LoadedLibrary library;
    ztCAD_GMDDocument* const document = loadDocument(library);
    copyPoint(library.ztCAD_getPoints(document)->front(), "point", "LCS", "p_", copies);
    copyPoint(library.ztCAD_getTmplPoints(document)->front(), "templatePoint", "MCS", "t_", copies);
    library.DeleteGMDDoc(document);
    library.close();
  }
  EXPECT_EQ(copies.size(), 16U);
  expectValidAfterUnloading(copies);
}

TEST(CopiedTexts, OfCreatedElementsOutliveTheLibrary) {
  CopiedTexts copies;
  {
    LoadedLibrary library;
    const double xyz[] = {1, 2, 3};
    bool nameIsFree = false;
    ztCAD_Point* const point =
        library.crtPoint("p_name", library.crtCoord(&xyz[0], &xyz[1], &xyz[2]), nameIsFree);
    point->property().attributes().setComment(QLatin1String("p_comment"));
    point->property().attributes().setInform(QLatin1String("p_inform"));
    copyPoint(*point, "point", "LCS", "p_", copies);
    ztCAD_TmplPoint* const tmpl = library.crtTmplPoint("p_name", point, nameIsFree);
    copyPoint(*tmpl, "templatePoint", "MCS", "p_", copies);
    library.close();
  }
  expectValidAfterUnloading(copies);
}

TEST(CopiedTexts, OfTheHeaderOutliveTheLibrary) {
  CopiedTexts copies;
  {
    LoadedLibrary library;
    ztCAD_GMDDocument* const document = loadDocument(library);
    copyHeader(document->header(), copies);
    EXPECT_EQ(copies.back().text, QString()) << "the producer is not read";
    copies.resize(1);
    {
      const IntendedLeak ownedMemory;
      ztCAD_HeaderNode* const header = library.crtHeader();
      header->setInform(QLatin1String("of the document"));
      header->setProducerName(QLatin1String("producer"));
      header->setProducerVersion(QLatin1String("1.2"));
      header->setProducerPlatform(QLatin1String("none"));
      library.setHeader(header, document);
    }
    copyHeader(document->header(), copies);
    library.DeleteGMDDoc(document);
    library.close();
  }
  EXPECT_EQ(copies.size(), 5U);
  expectValidAfterUnloading(copies);
}

TEST(CopiedTexts, InATreeOutliveTheLibrary) {
  QDomDocument tree;
  {
    LoadedLibrary library;
    ztCAD_GMDDocument* const document = loadDocument(library);
    QDomElement root = tree.createElement(QLatin1String("root"));
    tree.appendChild(root);
    library.ztCAD_getPoints(document)->front().writeXml(root, tree);
    document->header().writeXml(root, tree);
    library.DeleteGMDDoc(document);
    library.close();
  }
  ASSERT_FALSE(libraryIsMapped());
  const QDomElement point = tree.documentElement().firstChildElement();
  EXPECT_EQ(point.tagName(), QLatin1String("point"));
  EXPECT_EQ(point.attribute(QLatin1String("comment")), QLatin1String("p_comment"));
  EXPECT_EQ(point.attribute(QLatin1String("center")), QLatin1String("1, 2, 3;"));
  EXPECT_EQ(point.nextSiblingElement().attribute(QLatin1String("inform")), QLatin1String("of the document"));
  EXPECT_NE(tree.toString().indexOf(QLatin1String("method=\"pointXYZ\"")), -1);
}

}  // namespace
