#include "xml/xml_print.h"

#include <gtest/gtest.h>
#include <QTextCodec>
#include <string>

using ztcad::printXml;

namespace {

QDomDocument tree(const char* xml) {
  QDomDocument document;
  EXPECT_TRUE(document.setContent(QString::fromUtf8(xml)));
  return document;
}

std::string byQt(const QDomDocument& document, int indent) {
  return document.toString(indent).toUtf8().toStdString();
}

/// A root with one text child, after an XML declaration that names the encoding; no declaration for an empty
/// name.
QDomDocument withText(const char* encoding, const QString& text) {
  QDomDocument document;
  if (*encoding) {
    const QString data = QString("version=\"1.0\" encoding=\"%1\"").arg(encoding);
    document.appendChild(document.createProcessingInstruction("xml", data));
  }
  QDomElement root = document.createElement("r");
  root.appendChild(document.createTextNode(text));
  document.appendChild(root);
  return document;
}

std::string printedText(const char* encoding, const QString& text) {
  const std::string printed = printXml(withText(encoding, text), 1);
  const std::size_t start = printed.find("<r>") + 3;
  return printed.substr(start, printed.find("</r>") - start);
}

}  // namespace

// ----------------------------------------------------------------------------- compared with Qt's own output

struct PrintRow {
  const char* name;
  const char* xml;
};

void PrintTo(const PrintRow& row, std::ostream* out) { *out << row.name; }

class PrintXml : public testing::TestWithParam<PrintRow> {};

TEST_P(PrintXml, MatchesTheOutputOfQt) {
  const QDomDocument document = tree(GetParam().xml);
  for (const int indent : {0, 1, 3})
    EXPECT_EQ(printXml(document, indent), byQt(document, indent)) << indent;
}

// no row has an element with several attributes or several notations: Qt writes them in an unspecified order
const PrintRow printRows[] = {
    {"EmptyRoot", "<r/>"},
    {"Declaration", "<?xml version='1.0' encoding='windows-1251'?><r/>"},
    {"Nested", "<r><a><b/></a><c/></r>"},
    {"Attribute", "<r a='x &lt;&amp;&quot;&gt;]]&gt; &#9;&#10;&#13;'/>"},
    {"AttributeAndChild", "<r a='x'><b c='y'/></r>"},
    {"Text", "<r>x &lt;&amp;\"'&gt; ]]&gt; \t\n &#13;</r>"},
    {"MixedContent", "<r>t<a/>t<b>u<c/></b><d/>t</r>"},
    {"Cdata", "<r><![CDATA[<&>]]>t<![CDATA[x]]]]></r>"},
    {"CdataBetweenElements", "<r><a/><![CDATA[x]]><b/></r>"},
    {"Comments", "<!--1--><r><!--2-->t<!--3--><a/><!--4--></r><!--5-->"},
    {"ProcessingInstructions", "<?p?><r><?q x?><a/><?q y?>t<?q z?></r><?s?>"},
    {"EntityReferences", "<r>&x;<a/>&y;t&z;</r>"},
    {"Cyrillic", "<?xml version='1.0' encoding='windows-1251'?><r имя='Точка'>ёж №</r>"},
    {"OutsideTheEncoding",
     "<?xml version='1.0' encoding='windows-1251'?><r a='中é'>中<![CDATA[中]]><!--中--><?p 中?></r>"},
    {"DocumentType", "<!DOCTYPE r><r/>"},
    {"DocumentTypeAfterTheDeclaration", "<?xml version='1.0'?><!DOCTYPE r SYSTEM 'a\"b'><r/>"},
    {"DocumentTypeBeforeComments", "<?xml version='1.0'?><!--c--><!DOCTYPE r PUBLIC 'p' \"s'>[\"><r/>"},
    {"Notation", "<!DOCTYPE r [<!NOTATION n SYSTEM 'x'><!ELEMENT r ANY>]><r/>"},
    {"NotationWithBrackets", "<!DOCTYPE r [<!NOTATION n PUBLIC 'p' \"]>'[\">]><r/>"},
    {"Entities", "<!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;</r>"},
};

INSTANTIATE_TEST_SUITE_P(Rows, PrintXml, testing::ValuesIn(printRows),
                         [](const auto& row) { return row.param.name; });

TEST(PrintXml, ATreeWithoutNodesIsEmptyText) {
  EXPECT_EQ(printXml(QDomDocument(), 1), "");
  EXPECT_EQ(printXml(QDomDocument("type"), 1), byQt(QDomDocument("type"), 1));
}

TEST(PrintXml, ADeclarationAloneHasNoDocumentType) {
  QDomDocument document("type");
  document.appendChild(document.createProcessingInstruction("xml", "version=\"1.0\""));
  EXPECT_EQ(printXml(document, 1), byQt(document, 1));
}

TEST(PrintXml, EmptyTextKeepsItsNeighboursOnOneLine) {
  QDomDocument document = tree("<r><a/><b/></r>");
  document.documentElement().insertBefore(document.createTextNode(""), document.elementsByTagName("b").at(0));
  EXPECT_EQ(printXml(document, 1), "<r>\n <a/><b/>\n</r>\n");
  EXPECT_EQ(printXml(document, 1), byQt(document, 1));
}

// -------------------------------------------------------------------------------------------- order of names

TEST(PrintXml, AttributesAreSortedByName) {
  EXPECT_EQ(printXml(tree("<r b='1' a='2' B='3' я='4' aa='5'/>"), 1),
            "<r B=\"3\" a=\"2\" aa=\"5\" b=\"1\" я=\"4\"/>\n");
}

TEST(PrintXml, NotationsAreSortedByName) {
  EXPECT_EQ(
      printXml(
          tree("<!DOCTYPE r [<!NOTATION c SYSTEM '3'><!NOTATION a PUBLIC '1'><!NOTATION b SYSTEM '2'>]><r/>"),
          1),
      "<!DOCTYPE r [\n<!NOTATION a PUBLIC '1'>\n<!NOTATION b SYSTEM '2'>\n<!NOTATION c SYSTEM '3'>\n]>\n<r/>\n");
}

TEST(PrintXml, ManyAttributesAreSortedByName) {
  QDomDocument document;
  QDomElement root = document.createElement("r");
  document.appendChild(root);
  std::string expected = "<r";
  for (int i = 100000; i < 200000; ++i) {
    root.setAttribute(QString("a%1").arg(299999 - i), "=\" x=\"<&\n");
    expected += " a" + std::to_string(i) + "=\"=&quot; x=&quot;&lt;&amp;&#xa;\"";
  }
  root.appendChild(document.createTextNode("text"));
  EXPECT_TRUE(printXml(document, 1) == expected + ">text</r>\n");
}

TEST(PrintXml, AnyNumberOfAttributesIsPrintedTheSameWay) {
  for (const int count : {1, 99, 100, 101, 102}) {
    QDomDocument document;
    QDomElement root = document.createElement("r");
    document.appendChild(root);
    std::string expected = "<r";
    for (int i = 100; i < 100 + count; ++i) {
      root.setAttribute(QString("a%1").arg(i), i);
      expected += " a" + std::to_string(i) + "=\"" + std::to_string(i) + '"';
    }
    EXPECT_EQ(printXml(document, 1), expected + "/>\n");
  }
}

// ------------------------------------------------------------------------------------------------- encodings

struct EncodingRow {
  const char* name;
  const char* encoding;
  const char* expected;  // of "aЯ中é😀"
};

void PrintTo(const EncodingRow& row, std::ostream* out) { *out << row.name; }

class PrintEncoding : public testing::TestWithParam<EncodingRow> {};

TEST_P(PrintEncoding, DeterminesWhichCharactersBecomeReferences) {
  EXPECT_EQ(printedText(GetParam().encoding, "aЯ中é😀"), GetParam().expected);
}

const EncodingRow encodingRows[] = {
    {"None", "", "aЯ中é😀"},
    {"Unknown", "no-such-encoding", "aЯ中é😀"},
    {"NonAsciiName", "имя", "aЯ中é😀"},
    {"Utf8", "utf-8", "aЯ中é😀"},
    {"Utf16", "UTF-16", "aЯ中é😀"},
    {"Windows1251", "windows-1251", "aЯ&#x4e2d;&#xe9;&#x1f600;"},
    {"Windows1251InCapitals", "WINDOWS-1251", "aЯ&#x4e2d;&#xe9;&#x1f600;"},
    {"Latin1", "ISO-8859-1", "a&#x42f;&#x4e2d;é&#x1f600;"},
    {"Koi8", "KOI8-R", "aЯ&#x4e2d;&#xe9;&#x1f600;"},
};

INSTANTIATE_TEST_SUITE_P(Rows, PrintEncoding, testing::ValuesIn(encodingRows),
                         [](const auto& row) { return row.param.name; });

TEST(PrintXml, TheEnvironmentDoesNotChooseTheEncoding) {
  QTextCodec* const before = QTextCodec::codecForLocale();
  QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
  EXPECT_EQ(printedText("", "Я😀"), "Я😀");
  EXPECT_EQ(printedText("no-such-encoding", "Я😀"), "Я😀");
  EXPECT_EQ(printedText("windows-1251", "Я😀"), "Я&#x1f600;");
  QTextCodec::setCodecForLocale(before);
}

TEST(PrintXml, TheEncodingDeclarationMayUseEitherQuoteAndWhitespace) {
  for (const char* encoding :
       {"encoding='KOI8-R'", "encoding \t=\n\"KOI8-R\"", "x=\"y\" encoding='KOI8-R' z='w'"}) {
    QDomDocument document;
    document.appendChild(document.createProcessingInstruction("xml", encoding));
    document.appendChild(document.createElement("r")).toElement().setAttribute("a", "éЯ");
    EXPECT_EQ(printXml(document, 1), std::string("<?xml ") + encoding + "?>\n<r a=\"&#xe9;Я\"/>\n");
    EXPECT_EQ(printXml(document, 1), byQt(document, 1));
  }
}

TEST(PrintXml, OnlyTheXmlDeclarationNamesTheEncoding) {
  EXPECT_EQ(printXml(tree("<?pi encoding='KOI8-R'?><r a='é'/>"), 1),
            "<?pi encoding='KOI8-R'?>\n<r a=\"é\"/>\n");
}

TEST(PrintXml, CharactersAreUnchangedWhereReferencesAreNotAllowed) {
  EXPECT_EQ(printXml(tree("<?xml version='1.0' encoding='windows-1251'?><r><![CDATA[😀]]><!--中--></r>"), 1),
            "<?xml version='1.0' encoding='windows-1251'?>\n<r><![CDATA[😀]]><!--中-->\n</r>\n");
}

TEST(PrintXml, AnUnpairedSurrogateIsAReferenceInEveryEncoding) {
  const QString halves = QString(QChar(0xd83d)) + 'x' + QChar(0xde00);
  EXPECT_EQ(printedText("", halves), "&#xd83d;x&#xde00;");
  EXPECT_EQ(printedText("windows-1251", halves), "&#xd83d;x&#xde00;");
}

TEST(PrintXml, CharactersThatParsersRejectAreReferencesInEveryEncoding) {
  const QString stops = QString(QChar(0xfffe)) + QChar(0xffff) + QChar(0);
  EXPECT_EQ(printedText("", stops), "&#xfffe;&#xffff;&#x0;");
  EXPECT_EQ(printedText("windows-1251", stops), "&#xfffe;&#xffff;&#x0;");
}

// ----------------------------------------------------------------------------------------------------- depth

TEST(PrintXml, DeepTreesArePrintedWithoutRecursion) {
  constexpr int depth = 4000;
  QDomDocument document;
  QDomNode node = document.appendChild(document.createElement("e"));
  for (int i = 1; i < depth; ++i)
    node = node.appendChild(document.createElement("e"));
  const std::string printed = printXml(document, 0);
  EXPECT_EQ(printed.size(), (depth - 1) * std::string("<e>\n</e>\n").size() + std::string("<e/>\n").size());
}
