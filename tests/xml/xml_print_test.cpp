#include "xml/xml_print.h"

#include <gtest/gtest.h>
#include <QDomDocument>
#include <string>

#include "recorded_answers.h"
#include "tree_of_xml.h"

using xml_tree::printXml;

namespace {

QDomDocument tree(const char* xml) {
  QDomDocument document;
  EXPECT_TRUE(document.setContent(QString::fromUtf8(xml)));
  return document;
}

std::string byQt(const QDomDocument& document, int indent) {
  return document.toString(indent).toUtf8().toStdString();
}

/// Prints a root with this content, after an XML declaration that names the encoding; no declaration for an
/// empty name. Returns what is between the tags of the root.
std::string printedText(const std::string& encoding, const std::string& content) {
  const std::string declaration = encoding.empty() ? "" : "<?xml version='1.0' encoding='" + encoding + "'?>";
  const std::string printed = printXml(declaration + "<r>" + content + "</r>", 1);
  const std::size_t start = printed.find("<r>") + 3;
  return printed.substr(start, printed.find("</r>") - start);
}

}  // namespace

// ---------------------------------------------------------------------- compared with the output of Qt 5.15

struct PrintRow {
  const char* name;
  const char* xml;
};

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
};

TEST(PrintXml, MatchesTheOutputOfQt) {
  RecordedAnswers recorded("printed_rows");
  for (const PrintRow& row : printRows) {
    for (const int indent : {0, 1, 3}) {
      const std::string printed = printXml(row.xml, indent);
      if (qtIsTheReference) {
        EXPECT_EQ(printed, byQt(tree(row.xml), indent)) << row.name << ", " << indent;
      }
      recorded.expect(numbered(row.name, indent), printed);
    }
  }
  recorded.finish();
}

TEST(PrintXml, AnEmptyTextIsPrintedAsNothing) { EXPECT_EQ(printXml("", 1), ""); }

TEST(PrintXml, OfAnIllFormedTextWhatComesBeforeTheErrorIsPrinted) {
  RecordedAnswers recorded("printed_before_an_error");
  for (const char* const xml :
       {"<?xml version='1.0'?>", "<!--1--><!DOCTYPE r [<!NOTATION n SYSTEM 's'><?p q?>", "<r><a b='1'/>t<c>u",
        "<r><a></b></r>", "<r/>t", "<r a='1' a='2'>&x;", "<r"}) {
    const std::string printed = printXml(xml, 1);
    if (qtIsTheReference) {
      QDomDocument document;
      EXPECT_FALSE(document.setContent(QString(xml))) << xml;
      EXPECT_EQ(printed, byQt(document, 1)) << xml;
    }
    recorded.expect(xml, printed);
  }
  recorded.finish();
}

TEST(PrintXml, OfARefusedTextNothingIsPrinted) {
  for (const std::string& xml :
       {std::string("<r>t<a/>\0</r>", 13), std::string("<!DOCTYPE r [<!ENTITY e 'x'>]><r/>")})
    EXPECT_EQ(printXml(xml, 1), "");
}

// -------------------------------------------------------------------------------------------- order of names

TEST(PrintXml, AttributesAreSortedByName) {
  EXPECT_EQ(printXml("<r b='1' a='2' B='3' я='4' aa='5'/>", 1),
            "<r B=\"3\" a=\"2\" aa=\"5\" b=\"1\" я=\"4\"/>\n");
}

TEST(PrintXml, NotationsAreSortedByName) {
  EXPECT_EQ(
      printXml("<!DOCTYPE r [<!NOTATION c SYSTEM '3'><!NOTATION a PUBLIC '1'><!NOTATION b SYSTEM '2'>]><r/>",
               1),
      "<!DOCTYPE r [\n<!NOTATION a PUBLIC '1'>\n<!NOTATION b SYSTEM '2'>\n<!NOTATION c SYSTEM '3'>\n]>\n<r/>\n");
}

TEST(PrintXml, ManyAttributesAreSortedByName) {
  std::string xml = "<r";
  std::string expected = "<r";
  for (int i = 100000; i < 200000; ++i) {
    xml += " a" + std::to_string(299999 - i) + "='=\" x=\"&lt;&amp;&#10;'";
    expected += " a" + std::to_string(i) + "=\"=&quot; x=&quot;&lt;&amp;&#xa;\"";
  }
  EXPECT_TRUE(printXml(xml + ">text</r>", 1) == expected + ">text</r>\n");
}

TEST(PrintXml, OfAnAttributeThatOccursTwiceTheLastValueIsPrinted) {
  EXPECT_EQ(printXml("<r a='1' b='2' a='3'/>", 1), "<r a=\"3\" b=\"2\"/>\n");
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

TEST(PrintXml, TheEncodingOfADeclarationMayHaveOtherQuotesInside) {
  RecordedAnswers recorded("printed_declarations");
  for (const char* const declaration :
       {"version='1.0' encoding=\"KOI8-R\"", "version=\"x encoding='KOI8-R'\" encoding='UTF-8'",
        "version='1.0' encoding=\"a'b\""}) {
    const std::string xml = std::string("<?xml ") + declaration + "?><r a='éЯ'/>";
    const std::string printed = printXml(xml, 1);
    if (qtIsTheReference) {
      EXPECT_EQ(printed, byQt(tree(xml.c_str()), 1));
    }
    recorded.expect(xml, printed);
  }
  recorded.finish();
}

TEST(PrintXml, OnlyTheXmlDeclarationNamesTheEncoding) {
  EXPECT_EQ(printXml("<?pi encoding='KOI8-R'?><r a='é'/>", 1), "<?pi encoding='KOI8-R'?>\n<r a=\"é\"/>\n");
}

TEST(PrintXml, CharactersAreUnchangedWhereReferencesAreNotAllowed) {
  EXPECT_EQ(printXml("<?xml version='1.0' encoding='windows-1251'?><r><![CDATA[😀]]><!--中--></r>", 1),
            "<?xml version='1.0' encoding='windows-1251'?>\n<r><![CDATA[😀]]><!--中-->\n</r>\n");
}

TEST(PrintXml, AnUnpairedSurrogateIsAReferenceInEveryEncoding) {
  EXPECT_EQ(printedText("", "&#xd83d;x&#xde00;"), "&#xd83d;x&#xde00;");
  EXPECT_EQ(printedText("windows-1251", "&#xd83d;x&#xde00;"), "&#xd83d;x&#xde00;");
}

TEST(PrintXml, CharactersThatParsersRejectAreReferencesInEveryEncoding) {
  EXPECT_EQ(printedText("", "&#xfffe;&#xffff;&#0;"), "&#xfffe;&#xffff;&#x0;");
  EXPECT_EQ(printedText("windows-1251", "&#xfffe;&#xffff;&#0;"), "&#xfffe;&#xffff;&#x0;");
}
