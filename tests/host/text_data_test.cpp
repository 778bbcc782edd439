// Every text that a host can get as a QString: its characters are reference-counted on the heap and never in
// the library's static memory, which becomes invalid under a copy when the library is unloaded.

#include <gtest/gtest.h>
#include <ztCAD/ztCAD.h>
#include <QDomDocument>
#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "mapped_files.h"

namespace {

using Texts = std::vector<std::pair<std::string, QString>>;

/// Both text forms of an object. Appending to an empty QString shares the characters of the appended text.
template <typename Object>
void addTexts(const std::string& what, const Object& object, Texts& texts) {
  QString storage;
  object.toText(storage, false);
  texts.emplace_back(what + ", storage form", storage);
  QString debugText;
  object.toText(debugText, true);
  texts.emplace_back(what + ", debug form", debugText);
}

void addTree(const std::string& what, const QDomElement& element, Texts& texts) {
  texts.emplace_back(what + ", tag", element.tagName());
  const QDomNamedNodeMap attributes = element.attributes();
  for (int i = 0; i < attributes.count(); ++i) {
    const QDomAttr attribute = attributes.item(i).toAttr();
    texts.emplace_back(what + ", attribute name", attribute.name());
    texts.emplace_back(what + ", value of " + attribute.name().toStdString(), attribute.value());
  }
  for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
    texts.emplace_back(what + ", text inside", child.nodeValue());
    addTree(what + ", inside", child.toElement(), texts);
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

/// The texts that all named objects have.
template <typename Named>
void addNamed(const std::string& what, const Named& object, Texts& texts) {
  const ztCAD_gAttr& attributes = object.property().attributes();
  texts.emplace_back(what + ", name", object.name());
  texts.emplace_back(what + ", comment", attributes.comment());
  texts.emplace_back(what + ", inform", attributes.inform());
  texts.emplace_back(what + ", elementName", object.elementName());
  addTexts(what, object, texts);
  addTexts(what + ", attributes", attributes, texts);
  addTexts(what + ", property", object.property(), texts);
  addWritten(what, object, texts);
}

template <typename Element>
void addElement(const std::string& what, const Element& element, Texts& texts) {
  addNamed(what, element, texts);
  texts.emplace_back(what + ", lcsWord", element.lcsWord());
  texts.emplace_back(what + ", method", element.method().method());
  addTexts(what + ", method", element.method(), texts);
}

/// Values and elements shared by the functions below.
struct Samples {
  bool nameIsFree = false;
  QString name = QLatin1String("N");
  ztCAD_LCS lcs{true, std::vector<double>(ztCAD_LCS::valueCount, 1.0)};
  ztCAD_MIP mip{std::vector<double>(ztCAD_MIP::valueCount, 1.0)};
  ztCAD_Vertices vertices;
  ztCAD_Faces faces;
  ztCAD_Point point{name, ztCAD_Coord(1, 2, 3), nameIsFree};
  ztCAD_Sphere sphere{name, ztCAD_Coord(1, 2, 3), 2, nameIsFree};
  ztCAD_Structure structure{name, lcs, nameIsFree};

  Samples() {
    for (int i = 0; i < 3; ++i)
      vertices.add(ztCAD_Vertex(ztCAD_Coord(i, i, i)));
    faces.add(ztCAD_Facet(0, 1, 2));
    point.property().showable().setColor(ztCAD_Color(1, 2, 3));
    point.property().showable().setVisible(ztCAD_Visible(true));
    point.property().setLcs(lcs);
    sphere.setMip(mip);
    structure.content().points.add(point);
  }
};

void addPoints(Texts& texts) {
  Samples of;
  addElement("default point", ztCAD_Point(), texts);
  addElement("default template point", ztCAD_TmplPoint(), texts);
  addElement("point", of.point, texts);
  addElement("template point", ztCAD_TmplPoint(of.name, of.point, of.nameIsFree), texts);
}

void addLines(Texts& texts) {
  Samples of;
  addElement("default line", ztCAD_Line(), texts);
  const ztCAD_Line line(of.name, of.vertices, of.nameIsFree);
  addElement("line", line, texts);
  addElement("template line", ztCAD_TmplLine(of.name, line, of.nameIsFree), texts);
}

void addSolids(Texts& texts) {
  Samples of;
  addElement("default sphere", ztCAD_Sphere(), texts);
  addElement("sphere", of.sphere, texts);
  addElement("default triangle", ztCAD_Triangle(), texts);
  const ztCAD_Triangle triangle(of.name, of.vertices, of.faces, of.nameIsFree);
  addElement("triangle", triangle, texts);
  addElement("template triangle", ztCAD_TmplTriangle(of.name, triangle, of.nameIsFree), texts);
}

void addMassInertia(Texts& texts) {
  const Samples of;
  addElement("default mass-inertia element", ztCAD_ElementMIP(), texts);
  addElement("mass-inertia element", ztCAD_ElementMIP("N", of.mip), texts);
  addElement("template mass-inertia element", ztCAD_TmplElementMIP("N", of.mip), texts);
  addTexts("record", of.mip, texts);
}

void addDetails(Texts& texts) {
  const Samples of;
  addNamed("default detail", ztCAD_Detail(), texts);
  ztCAD_TmplDetail detail;
  detail.setName(of.name);
  detail.setMip(of.mip);
  detail.content().spheres.add(of.sphere);
  addNamed("template detail", detail, texts);
  texts.emplace_back("detail, lcsWord", ztCAD_Detail().lcsWord());
  texts.emplace_back("template detail, lcsWord", detail.lcsWord());
}

void addReferences(Texts& texts) {
  bool nameIsFree = false;
  const Samples of;
  addNamed("default point reference", ztCAD_PointRef(), texts);
  addNamed("line reference", ztCAD_LineRef(of.name, of.lcs, ztCAD_TmplLine(), nameIsFree), texts);
  addNamed("triangle reference", ztCAD_TriangleRef(of.name, of.lcs, ztCAD_TmplTriangle(), nameIsFree), texts);
  addNamed("mass-inertia reference", ztCAD_ElementMipRef(of.name, of.lcs, ztCAD_TmplElementMIP(), nameIsFree),
           texts);
  addNamed("detail reference", ztCAD_DetailRef(of.name, of.lcs, ztCAD_TmplDetail(), nameIsFree), texts);
  addNamed("structure reference", ztCAD_StructureRef(of.name, of.lcs, ztCAD_TmplStructure(), nameIsFree),
           texts);
  const ztCAD_PointRef reference(of.name, of.lcs, ztCAD_TmplPoint(of.name, of.point, nameIsFree), nameIsFree);
  addNamed("point reference", reference, texts);
  texts.emplace_back("point reference, template", reference.archetype().templateName());
  texts.emplace_back("point reference, file", reference.archetype().file());
}

void addStructures(Texts& texts) {
  Samples of;
  addNamed("default structure", ztCAD_Structure(), texts);
  addNamed("default template structure", ztCAD_TmplStructure(), texts);
  ztCAD_Structure outer(of.name, of.lcs, of.nameIsFree);
  outer.addStructure(of.structure);
  addNamed("structure", outer, texts);
  addNamed("template structure", ztCAD_TmplStructure(of.name, outer, of.nameIsFree), texts);
  texts.emplace_back("structure, lcsWord", outer.lcsWord());
  QString header;
  texts.emplace_back("structure, text header", outer.textHeader(header));
}

void addHeader(const std::string& what, const ztCAD_HeaderNode& header, Texts& texts) {
  texts.emplace_back(what + ", inform", header.inform().value_or(QString()));
  texts.emplace_back(what + ", producerName", header.producerName().value_or(QString()));
  texts.emplace_back(what + ", producerVersion", header.producerVersion().value_or(QString()));
  texts.emplace_back(what + ", producerPlatform", header.producerPlatform().value_or(QString()));
  texts.emplace_back(what + ", text", header.toText());
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
  addTexts("default archetype", archetype, texts);
  addWritten("default archetype", archetype, texts);
  texts.emplace_back("default archetype, template", archetype.templateName());
  texts.emplace_back("default archetype, file", archetype.file());
  addTexts("colour", ztCAD_Color(1, 2, 3), texts);
  addWritten("colour", ztCAD_Color(1, 2, 3), texts);
  for (const bool visible : {false, true}) {
    addTexts("visibility", ztCAD_Visible(visible), texts);
    addWritten("visibility", ztCAD_Visible(visible), texts);
  }
  addTexts("showable", ztCAD_gShowable(), texts);
  for (const bool isLocal : {false, true}) {
    addTexts("empty coordinate system", ztCAD_LCS(isLocal, {}), texts);
    addWritten("coordinate system", ztCAD_LCS(isLocal, std::vector<double>(12, 0.5)), texts);
  }
}

void addGeometry(Texts& texts) {
  addTexts("coordinate without a value", ztCAD_Coord(), texts);
  addTexts("coordinate", ztCAD_Coord(1, 2, 3), texts);
  addTexts("vertex", ztCAD_Vertex(ztCAD_Coord(1, 2, 3)), texts);
  addTexts("facet", ztCAD_Facet(0, 1, 2), texts);
  addTexts("no faces", ztCAD_Faces(), texts);
  addTexts("no vertices", ztCAD_Vertices(), texts);
  ztCAD_Vertices vertices;
  vertices.add(ztCAD_Vertex(ztCAD_Coord(1, 2, 3)));
  addTexts("vertices", vertices, texts);
}

const char* const everyKind = R"(<GMD><header inform="i"/><point name="P" center="1, 2, 3;"/><templatePoint/>
  <line method="polyline" name="L"><vertices>0, 0, 0;</vertices></line>
  <solid method="sphere" name="S" center="1, 2, 3;" radius="1"/>
  <structure name="A"><structure name="B"><pointRef template="T"/></structure></structure></GMD>)";

void addLoaded(Texts& texts) {
  bool parsed = false;
  std::string message;
  int line = 0;
  int column = 0;
  ztCAD_GMDDocument* const document = crtGMDDocumentFromStdString(everyKind, parsed, message, line, column);
  addHeader("loaded header", document->header(), texts);
  addElement("loaded point", ztCAD_getPoints(document)->front(), texts);
  addElement("loaded template point", ztCAD_getTmplPoints(document)->front(), texts);
  addElement("loaded line", ztCAD_getLines(document)->front(), texts);
  addElement("loaded sphere", ztCAD_getSpheres(document)->front(), texts);
  addNamed("loaded structure", ztCAD_getStructures(document)->front(), texts);
  addTexts("document", *document, texts);
  DeleteGMDDoc(document);
}

bool isStatic(const QString& text) {
  QString copy = text;
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  return copy.data_ptr()->ref.isStatic();
#else
  return !copy.isNull() && !copy.data_ptr().d_ptr();
#endif
}

void expectOnTheHeap(const Texts& texts) {
  for (const auto& [what, text] : texts) {
    EXPECT_FALSE(liesInLibrary(text.constData())) << what << ": \"" << text.toStdString() << '"';
    // Qt's empty text is static data of Qt, which stays loaded
    EXPECT_TRUE(text.isEmpty() || !isStatic(text)) << what << ": \"" << text.toStdString() << '"';
  }
}

struct Row {
  const char* name;
  void (*add)(Texts& texts);
};

class TextData : public testing::TestWithParam<Row> {};

TEST_P(TextData, IsOnTheHeap) {
  Texts texts;
  GetParam().add(texts);
  std::size_t withCharacters = 0;
  for (const auto& row : texts)
    withCharacters += row.second.isEmpty() ? 0 : 1;
  EXPECT_GE(withCharacters, 5U) << "hardly any text to check";
  expectOnTheHeap(texts);
}

INSTANTIATE_TEST_SUITE_P(Of, TextData,
                         testing::Values(Row{"Points", addPoints}, Row{"Lines", addLines},
                                         Row{"Solids", addSolids}, Row{"MassInertia", addMassInertia},
                                         Row{"Details", addDetails}, Row{"References", addReferences},
                                         Row{"Structures", addStructures}, Row{"Headers", addHeaders},
                                         Row{"States", addStates}, Row{"Properties", addProperties},
                                         Row{"Geometry", addGeometry}, Row{"LoadedDocuments", addLoaded}),
                         [](const auto& row) { return std::string(row.param.name); });

// The checks above detect static data and the library's memory.
TEST(TextDataChecks, DetectStaticDataAndTheLibrarysMemory) {
  EXPECT_TRUE(liesInLibrary(ztCADVersion()));
  EXPECT_TRUE(liesInLibrary(getParallel_Morvik()));
  EXPECT_TRUE(isStatic(QStringLiteral("literal")));
  EXPECT_FALSE(isStatic(QString(QLatin1String("text"))));
  const std::string onTheHeap(100, 'x');
  EXPECT_FALSE(liesInLibrary(onTheHeap.data()));
}

}  // namespace
