#include "core/document/document.h"

#include <gtest/gtest.h>
#include <QDomDocument>
#include <string>
#include <type_traits>

#include "recorded_answers.h"
#include "sample_documents.h"

namespace {

const std::string emptyHeaderText =
    "Header( inform=no Value , majorVersion=0 , minorVersion=0 ) state=no Value";

TEST(Document, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<ztCAD_GMDDocument>);
  EXPECT_FALSE(std::is_copy_assignable_v<ztCAD_GMDDocument>);
}

TEST(Document, IsCreatedEmptyWithInform) {
  const ztCAD_GMDDocument document("note");
  EXPECT_TRUE(document.content().points.empty());
  EXPECT_TRUE(document.content().templatePoints.empty());
  EXPECT_TRUE(document.content().stubs.empty());
  EXPECT_EQ(document.header().inform(), QString("note"));
  EXPECT_FALSE(document.header().majorVersion());
  EXPECT_FALSE(document.header().producerName());
  EXPECT_FALSE(document.header().state().isSet);
}

TEST(Document, InformIsUtf8OrWindows1251) {
  EXPECT_EQ(ztCAD_GMDDocument("Ёж").header().inform(), QString("Ёж"));
  EXPECT_EQ(ztCAD_GMDDocument("\xA8\xE6").header().inform(), QString("Ёж"));
  EXPECT_EQ(ztCAD_GMDDocument(std::string("a\0b", 3)).header().inform()->size(), 3);
}

TEST(Document, SwapKeepsTheAddressesOfElements) {
  ztCAD_DocumentContent one;
  ztCAD_DocumentContent other;
  one.points.add(pointNamed("A"));
  other.templatePoints.add(templatePointNamed("T"));
  const ztCAD_Point* point = &one.points.front();
  one.swap(other);
  EXPECT_TRUE(one.points.empty());
  EXPECT_EQ(namesIn(one.templatePoints), Names{"T"});
  EXPECT_EQ(&other.points.front(), point);
  EXPECT_TRUE(other.templatePoints.empty());
}

TEST(DocumentText, OfAnEmptyDocumentIsTheHeader) {
  ztCAD_GMDDocument document("note");
  EXPECT_EQ(textOf(document),
            "ztCAD_GMD Header( inform=note , majorVersion=0 , minorVersion=0 ) state=no Value\n");
  document.setHeader({});
  EXPECT_EQ(textOf(document), "ztCAD_GMD " + emptyHeaderText + "\n");
}

TEST(DocumentText, ListsPointsBeforeTemplatePoints) {
  ztCAD_GMDDocument document("");
  document.setHeader({});
  addTemplatePoints(document, {"T"});
  addPoints(document, {"B", "A"});
  const auto line = [](const std::string& name, const std::string& center) {
    return "method==pointXYZ prop=attr=(name=" + name + ", comment=, inform=) ,color=visible=\nCenter=coord" +
           center + ", \n";
  };
  EXPECT_EQ(textOf(document), "ztCAD_GMD " + emptyHeaderText + "\n" + line("B", "(0, 0, 0;)") +
                                  line("A", "(0, 0, 0;)") + line("T", ""));
}

TEST(DocumentText, HasOneFormAndIsAppended) {
  const ztCAD_GMDDocument document("note");
  QString text = "before ";
  EXPECT_EQ(&document.toText(text, false), &text);
  EXPECT_EQ(text.toStdString(), "before " + textOf(document));
}

TEST(DocumentText, DoesNotUnifyNames) {
  ztCAD_GMDDocument document("");
  addPoints(document, {"A", "A"});
  const std::string text = textOf(document);
  EXPECT_EQ(text.find("_$1"), std::string::npos);
  EXPECT_EQ(namesIn(document.content().points), (Names{"A", "A"}));
}

// ------------------------------------------------------------------------------------------- the loaded tree

TEST(DocumentXmlText, OfADocumentThatLoadedNothingIsTheHeaderText) {
  ztCAD_GMDDocument document("");
  document.setHeader({});
  addPoints(document, {"A"});
  EXPECT_EQ(document.xmlText(), " header state=" + emptyHeaderText);
}

TEST(DocumentXmlText, IsTheLoadedTreeNotTheElements) {
  ztCAD_GMDDocument document("");
  document.setHeader({});
  loadString(document, "<GMD><point name='A'/><other><!--kept--></other></GMD>");
  addPoints(document, {"B"});
  document.content().points.front().setName("changed");
  EXPECT_EQ(document.xmlText(),
            "<GMD>\n <point name=\"A\"/>\n <other>\n  <!--kept-->\n </other>\n</GMD>\n header state=" +
                emptyHeaderText);
}

TEST(DocumentXmlText, EndsWithTheCurrentHeader) {
  ztCAD_GMDDocument document("");
  loadString(document, "<GMD><header majorVersion='1' minorVersion='2' inform='read'/></GMD>");
  const std::string tree =
      "<GMD>\n <header inform=\"read\" majorVersion=\"1\" minorVersion=\"2\"/>\n</GMD>\n header state=";
  EXPECT_EQ(document.xmlText(),
            tree + "Header( inform=read , majorVersion=1 , minorVersion=1 ) state=no Value");
  document.setHeader({});
  EXPECT_EQ(document.xmlText(), tree + emptyHeaderText);
}

TEST(DocumentXmlText, KeepsTheNamesOfTheFile) {
  ztCAD_GMDDocument document("");
  document.setHeader({});
  loadString(document, "<GMD><point name='A'/><point name='A'/></GMD>");
  EXPECT_EQ(namesIn(document.content().points), (Names{"A", "A_$1"}));
  EXPECT_EQ(document.xmlText(),
            "<GMD>\n <point name=\"A\"/>\n <point name=\"A\"/>\n</GMD>\n header state=" + emptyHeaderText);
}

TEST(DocumentXmlText, AttributesAreSortedByName) {
  ztCAD_GMDDocument document("");
  document.setHeader({});
  loadString(document, "<GMD><x b='2' B='1' a='3' &#x20; /></GMD>");  // not well-formed
  loadString(document, "<GMD><x b='2' B='1' a='3'/></GMD>");
  EXPECT_EQ(document.xmlText(),
            "<GMD>\n <x B=\"1\" a=\"3\" b=\"2\"/>\n</GMD>\n header state=" + emptyHeaderText);
}

TEST(DocumentXmlText, LineBreaksAndIndentationAreThoseOfQt) {
  RecordedAnswers recorded("xml_texts");
  const QString texts[] = {
      "<GMD/>",
      "<GMD>text</GMD>",
      "<GMD><a><b c='d'/></a><e>text</e><f>text<g/></f></GMD>",
      "<?xml version='1.0'?><!--c--><GMD><![CDATA[a<b]]><?p data?></GMD>",
      QString::fromUtf8("<?xml version='1.0' encoding='UTF-8'?><GMD a='Ё零'>零</GMD>"),
  };
  for (const QString& text : texts) {
    ztCAD_GMDDocument document("");
    document.setHeader({});
    loadString(document, text.toStdString());
    if (qtIsTheReference) {
      QDomDocument tree;
      ASSERT_TRUE(tree.setContent(text)) << text.toStdString();
      EXPECT_EQ(document.xmlText(), tree.toString(1).toStdString() + " header state=" + emptyHeaderText)
          << text.toStdString();
    }
    recorded.expect(text.toStdString(), document.xmlText());
  }
  recorded.finish();
}

TEST(DocumentXmlText, IsUtf8AndReproducible) {
  ztCAD_GMDDocument document("");
  loadString(document, "<GMD a='Ё' b='零' c='😀' d='x' e='y'>Ё</GMD>");
  const std::string text = document.xmlText();
  EXPECT_NE(text.find("<GMD a=\"Ё\" b=\"零\" c=\"😀\" d=\"x\" e=\"y\">Ё</GMD>"), std::string::npos) << text;
  EXPECT_EQ(document.xmlText(), text);
}

}  // namespace
