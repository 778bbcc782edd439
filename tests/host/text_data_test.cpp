// Every text that a host can get as a QString: its characters lie on the heap and are counted, never in the library's
// own memory, which goes away under a copy when the library is unloaded.

#include <gtest/gtest.h>
#include <ztCAD/property/archetype.h>
#include <ztCAD/ztCAD.h>
#include <QDomDocument>
#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "mapped_files.h"

namespace {

using Texts = std::vector<std::pair<std::string, QString>>;

/// Both texts of an object. Appending to an empty text shares the characters that are appended.
template <typename Object>
void addTold(const std::string& what, const Object& object, Texts& texts) {
  QString storage;
  object.toText(storage, false);
  texts.emplace_back(what + ", storage form", storage);
  QString forPeople;
  object.toText(forPeople, true);
  texts.emplace_back(what + ", for people", forPeople);
}

void addTree(const std::string& what, const QDomElement& element, Texts& texts) {
  texts.emplace_back(what + ", tag", element.tagName());
  const QDomNamedNodeMap attributes = element.attributes();
  for (int i = 0; i < attributes.count(); ++i) {
    const QDomAttr attribute = attributes.item(i).toAttr();
    texts.emplace_back(what + ", attribute name", attribute.name());
    texts.emplace_back(what + ", value of " + attribute.name().toStdString(), attribute.value());
  }
}

template <typename Object>
void addWritten(const std::string& what, const Object& object, Texts& texts) {
  QDomDocument document;
  QDomElement root = document.createElement(QLatin1String("root"));
  object.writeXml(root, document);
  addTree(what + ", written to", root, texts);
  addTree(what + ", written", root.firstChildElement(), texts);
}

void addPoint(const std::string& what, const ztCAD_commonPoint& point, Texts& texts) {
  const ztCAD_gAttr& attributes = point.property().attributes();
  texts.emplace_back(what + ", name", point.name());
  texts.emplace_back(what + ", comment", attributes.comment());
  texts.emplace_back(what + ", inform", attributes.inform());
  texts.emplace_back(what + ", method", point.method().method());
  texts.emplace_back(what + ", elementName", point.elementName());
  texts.emplace_back(what + ", lcsWord", point.lcsWord());
  addTold(what, point, texts);
  addTold(what + ", attributes", attributes, texts);
  addTold(what + ", property", point.property(), texts);
  addTold(what + ", method", point.method(), texts);
  addWritten(what, point, texts);
}

void addPoints(Texts& texts) {
  bool nameIsFree = false;
  addPoint("default point", ztCAD_Point(), texts);
  addPoint("default template point", ztCAD_TmplPoint(), texts);
  ztCAD_Point point(QLatin1String("P"), ztCAD_Coord(1, 2, 3), nameIsFree);
  point.property().showable().setColor(ztCAD_Color(1, 2, 3));
  point.property().showable().setVisible(ztCAD_Visible(true));
  point.property().setLcs(ztCAD_LCS(true, std::vector<double>(12, 1.0)));
  addPoint("point", point, texts);
  addPoint("template point", ztCAD_TmplPoint(QLatin1String("T"), point, nameIsFree), texts);
}

void addHeader(const std::string& what, const ztCAD_HeaderNode& header, Texts& texts) {
  texts.emplace_back(what + ", inform", header.inform().value_or(QString()));
  texts.emplace_back(what + ", producerName", header.producerName().value_or(QString()));
  texts.emplace_back(what + ", producerVersion", header.producerVersion().value_or(QString()));
  texts.emplace_back(what + ", producerPlatform", header.producerPlatform().value_or(QString()));
  texts.emplace_back(what + ", for people", header.toText());
  addWritten(what, header, texts);
}

void addHeaders(Texts& texts) {
  addHeader("default header", ztCAD_HeaderNode(), texts);
  ztCAD_HeaderNode header(QLatin1String("inform"));
  header.setMajorVersion(1);
  header.setProducerName(QString(QLatin1String("producer")));
  addHeader("header", header, texts);
}

void addStates(Texts& texts) {
  texts.emplace_back("no state", ztCAD_State().toText());
  for (const std::uint32_t code : {0U, 1U, 2U, 3U, 9U})
    texts.emplace_back("state " + std::to_string(code), ztCAD_State{true, code}.toText());
}

void addProperties(Texts& texts) {
  ztCAD_gArche archetype;
  addTold("default archetype", archetype, texts);
  addWritten("default archetype", archetype, texts);
  texts.emplace_back("default archetype, template", archetype.templateName());
  texts.emplace_back("default archetype, file", archetype.file());
  addTold("colour", ztCAD_Color(1, 2, 3), texts);
  addWritten("colour", ztCAD_Color(1, 2, 3), texts);
  for (const bool visible : {false, true}) {
    addTold("visibility", ztCAD_Visible(visible), texts);
    addWritten("visibility", ztCAD_Visible(visible), texts);
  }
  addTold("showable", ztCAD_gShowable(), texts);
  for (const bool isLocal : {false, true}) {
    addTold("empty coordinate system", ztCAD_LCS(isLocal, {}), texts);
    addWritten("coordinate system", ztCAD_LCS(isLocal, std::vector<double>(12, 0.5)), texts);
  }
}

void addGeometry(Texts& texts) {
  addTold("coordinate without a value", ztCAD_Coord(), texts);
  addTold("coordinate", ztCAD_Coord(1, 2, 3), texts);
  addTold("vertex", ztCAD_Vertex(ztCAD_Coord(1, 2, 3)), texts);
  addTold("facet", ztCAD_Facet(0, 1, 2), texts);
  addTold("no faces", ztCAD_Faces(), texts);
  addTold("no vertices", ztCAD_Vertices(), texts);
  ztCAD_Vertices vertices;
  vertices.add(ztCAD_Vertex(ztCAD_Coord(1, 2, 3)));
  addTold("vertices", vertices, texts);
}

void addLoaded(Texts& texts) {
  bool parsed = false;
  std::string message;
  int line = 0;
  int column = 0;
  ztCAD_GMDDocument* const document = crtGMDDocumentFromStdString(
      R"(<GMD><header inform="i"/><point name="P"/><templatePoint/></GMD>)", parsed, message, line, column);
  addHeader("loaded header", document->header(), texts);
  addPoint("loaded point", ztCAD_getPoints(document)->front(), texts);
  addPoint("loaded template point", ztCAD_getTmplPoints(document)->front(), texts);
  addTold("document", *document, texts);
  DeleteGMDDoc(document);
}

bool isStatic(const QString& text) {
  QString copy = text;
  return copy.data_ptr()->ref.isStatic();
}

void expectOnTheHeap(const Texts& texts) {
  for (const auto& [what, text] : texts) {
    EXPECT_FALSE(liesInLibrary(text.constData())) << what << ": \"" << text.toStdString() << '"';
    // Qt's own empty text is static, and stays
    EXPECT_TRUE(text.isEmpty() || !isStatic(text)) << what << ": \"" << text.toStdString() << '"';
  }
}

struct Row {
  const char* name;
  void (*add)(Texts& texts);
};

class TextData : public testing::TestWithParam<Row> {};

TEST_P(TextData, LiesOnTheHeap) {
  Texts texts;
  GetParam().add(texts);
  std::size_t withCharacters = 0;
  for (const auto& row : texts)
    withCharacters += row.second.isEmpty() ? 0 : 1;
  EXPECT_GE(withCharacters, 5U) << "nothing to look at";
  expectOnTheHeap(texts);
}

INSTANTIATE_TEST_SUITE_P(Of, TextData,
                         testing::Values(Row{"Points", addPoints}, Row{"Headers", addHeaders},
                                         Row{"States", addStates}, Row{"Properties", addProperties},
                                         Row{"Geometry", addGeometry}, Row{"LoadedDocuments", addLoaded}),
                         [](const auto& row) { return std::string(row.param.name); });

// What the checks above look for is found where it is.
TEST(TextDataChecks, SeeStaticDataAndTheLibrarysMemory) {
  EXPECT_TRUE(liesInLibrary(ztCADVersion()));
  EXPECT_TRUE(liesInLibrary(getParallel_Morvik()));
  EXPECT_TRUE(isStatic(QStringLiteral("literal")));
  EXPECT_FALSE(isStatic(QString(QLatin1String("text"))));
  const std::string onTheHeap(100, 'x');
  EXPECT_FALSE(liesInLibrary(onTheHeap.data()));
}

}  // namespace
