#include "xml/plain_xml.h"

#include <gtest/gtest.h>
#include <optional>
#include <QDomDocument>
#include <string>
#include <vector>

#include "number/number_list.h"
#include "tree_of_xml.h"
#include "xml/dom_backend.h"

using namespace std::string_literals;
using ztcad::ElementView;
using ztcad::readPlainXml;
using ztcad::XmlBytes;

namespace {

bool isPlain(const std::string& xml, XmlBytes kind = XmlBytes::AsDeclared) {
  return readPlainXml(xml, kind, [](const ElementView&) {});
}

// ----------------------------------------------------------------------------- what the plain reader accepts

struct Row {
  const char* name;
  std::string xml;
};
void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
std::string rowName(const testing::TestParamInfo<Row>& info) { return info.param.name; }

class PlainXml : public testing::TestWithParam<Row> {};
TEST_P(PlainXml, IsRead) { EXPECT_TRUE(isPlain(GetParam().xml)) << GetParam().xml; }

const std::string windows1251 = "<?xml version=\"1.0\" encoding=\"windows-1251\"?>";

const Row plainRows[] = {
    {"OneElement", "<a/>"},
    {"OpenAndClosed", "<a></a>"},
    {"Nested", "<a><b><c/></b>\n<b/></a>"},
    {"Attributes", "<a b=\"1\" c='2' />"},
    {"AttributeTwice", "<a b='1' b='2'/>"},
    {"Text", "<a>1, 2; 3</a>"},
    {"Declaration", "<?xml version=\"1.0\"?><a/>"},
    {"DeclarationInWindows1251", windows1251 + "\n<a b='\xCF\x98'/>"},
    {"DeclarationInUtf8", "<?xml version='1.0' encoding='UTF-8' standalone='yes' ?><a b='Я'/>"},
    {"ByteOrderMark", "\xEF\xBB\xBF<a/>"},
    {"Comments", "<!--a--> <a><!-- b - c --></a>\r\n<!---->"},
    {"Instructions", "<?a?> <a><?b c = \"d\" <e> ?></a>\r\n<?f ?>"},
    {"Cdata", "<a><![CDATA[x]]></a>"},
    {"CdataBetweenElements", "<a>\n<![CDATA[<&]]]><b/><![CDATA[]]>\n</a>"},
    {"Entities", "<a b='&lt;&gt;&amp;&quot;&apos;&#65;&#x42f;&#x1f600;'/>"},
    {"SurroundingWhitespace", "\n\t <a/> \r\n"},
    {"CarriageReturnsBetween", "<a>\r\n<b/>\r\n</a>\r\n"},
};
INSTANTIATE_TEST_SUITE_P(Rows, PlainXml, testing::ValuesIn(plainRows), rowName);

class RejectedXml : public testing::TestWithParam<Row> {};
TEST_P(RejectedXml, IsRejected) { EXPECT_FALSE(isPlain(GetParam().xml)) << GetParam().xml; }

const Row rejectedRows[] = {
    {"Empty", ""},
    {"OnlyWhitespace", " \n"},
    {"OnlyByteOrderMark", "\xEF\xBB\xBF"},
    {"Truncated", "<a><b/>"},
    {"TruncatedInATag", "<a b='1"},
    {"TruncatedAfterLessThan", "<a/><"},
    {"OnlyGreaterThan", ">"},
    {"NoName", "<>"},
    {"EndTagWithoutName", "<a></>"},
    {"NoValue", "<a b>"},
    {"NoQuote", "<a b=>"},
    {"TruncatedInAValue", "<a b='1>"},
    {"TruncatedInAComment", "<a/><!-->"},
    {"TruncatedInTheDeclaration", "<?xml version='1.0'>"},
    {"MismatchedEndTag", "<a></b>"},
    {"EndTagOfALongerName", "<a></ab>"},
    {"TwoRoots", "<a/><b/>"},
    {"TextAfterTheRoot", "<a/>x"},
    {"CdataBeforeTheRoot", "<![CDATA[x]]><a/>"},
    {"CdataAfterTheRoot", "<a/><![CDATA[x]]>"},
    {"CdataWithAControlCharacter", "<a><![CDATA[\x01]]></a>"},
    {"CdataWithInvalidUtf8", "<a><![CDATA[\xFF]]></a>"},
    {"TruncatedInCdata", "<a><![CDATA[x]></a>"},
    {"InstructionNamedXml", "<a/><?XmL c?>"},
    {"InstructionOfXml", "<?xml-stylesheet href='a'?><a/>"},
    {"InstructionWithoutAName", "<a/><? b?>"},
    {"InstructionWithoutWhitespace", "<a/><?b(c)?>"},
    {"InstructionWithAQuestionMark", "<a/><?b c?d?>"},
    {"InstructionWithAControlCharacter", "<a/><?b \x01?>"},
    {"TruncatedInAnInstruction", "<a/><?b >"},
    {"DeclarationAfterTheRoot", "<a/><?xml version='1.0'?>"},
    {"DocumentType", "<!DOCTYPE a><a/>"},
    {"UnknownEntity", "<a b='&c;'/>"},
    {"ReferenceInText", "<a>&#65;</a>"},
    {"ReferenceToNul", "<a b='&#0;'/>"},
    {"ReferenceToASurrogate", "<a b='&#xd800;'/>"},
    {"ReferenceToANonCharacter", "<a b='&#xffff;'/>"},
    {"ReferenceBeyondUnicode", "<a b='&#x110000;'/>"},
    {"ReferenceOutOfRange", "<a b='&#99999999999;'/>"},
    {"BareAmpersand", "<a b='&'/>"},
    {"LessThanInAValue", "<a b='<'/>"},
    {"LineFeedInAValue", "<a b='\n'/>"},
    {"TabInAValue", "<a b='\t'/>"},
    {"ControlInAValue", "<a b='\x01'/>"},
    {"NoWhitespaceBetweenAttributes", "<a b='1'c='2'/>"},
    {"NoQuotes", "<a b=1/>"},
    {"Prefix", "<a:b/>"},
    {"NonAsciiTag", "<я/>"},
    {"Nul", "<a/>\0"s},
    {"NulInText", "<a>\0</a>"s},
    {"BracketInText", "<a>]]></a>"},
    {"TwoHyphensInAComment", "<!--a--b--><a/>"},
    {"InvalidUtf8", "<a b='\xFF'/>"},
    {"NonCharacter", "<a b='\xEF\xBF\xBF'/>"},
    {"OtherEncoding", "<?xml version='1.0' encoding='koi8-r'?><a/>"},
    {"ByteOrderMarkAndOtherEncoding", "\xEF\xBB\xBF" + windows1251 + "<a/>"},
    {"OtherVersion", "<?xml version='1.1'?><a/>"},
    {"DeclarationWithoutVersion", "<?xml encoding='UTF-8'?><a/>"},
    {"EmptyDeclaration", "<?xml ?><a/>"},
    {"DeclarationInAnotherOrder", "<?xml encoding='UTF-8' version='1.0'?><a/>"},
    {"WhitespaceBeforeTheDeclaration", " <?xml version='1.0'?><a/>"},
};
INSTANTIATE_TEST_SUITE_P(Rows, RejectedXml, testing::ValuesIn(rejectedRows), rowName);

std::string nested(int depth) {
  std::string xml;
  for (int i = 0; i < depth; ++i)
    xml += "<a>";
  for (int i = 0; i < depth; ++i)
    xml += "</a>";
  return xml;
}

TEST(PlainXmlDepth, IsLimitedAsInTheDomParser) {
  EXPECT_TRUE(isPlain(nested(ztcad::maximalDepth)));
  EXPECT_FALSE(isPlain(nested(ztcad::maximalDepth + 1)));
  EXPECT_FALSE(isPlain(nested(1000000)));
}

TEST(PlainXmlKind, TextOfAHostIsUtf8RegardlessOfItsDeclaration) {
  std::string seen;
  EXPECT_TRUE(readPlainXml(windows1251 + "<a b='Я'/>", XmlBytes::Utf8, [&](const ElementView& root) {
    seen = root.attribute(QLatin1String("b"))->toStdString();
  }));
  EXPECT_EQ(seen, "Я");
}

TEST(PlainXmlEnd, NoByteAfterTheEndIsRead) {
  for (const Row& row : plainRows) {
    for (std::size_t size = 0; size <= row.xml.size(); ++size) {
      for (const char* const end : {"", ">", " >"}) {
        const std::string xml = row.xml.substr(0, size) + end;
        // exactly sized and without a final NUL: the sanitizers detect any read past the end
        const std::vector<char> bytes(xml.begin(), xml.end());
        const bool isRead =
            readPlainXml({bytes.data(), bytes.size()}, XmlBytes::AsDeclared, [](const ElementView&) {});
        QDomDocument tree;
        EXPECT_TRUE(!isRead || xml_tree::parseXml(QByteArray::fromStdString(xml), tree).parsed) << xml;
        EXPECT_TRUE(isRead || size < row.xml.size() || *end != '\0') << xml;
      }
    }
  }
}

// --------------------------------------------------------------------------------------------- element views

TEST(PlainXmlView, ACdataSectionIsTextWhereItIsAllThatAnElementHolds) {
  const auto textOf = [](const std::string& xml) {
    std::optional<std::string> seen;
    const bool isRead = readPlainXml(xml, XmlBytes::AsDeclared, [&seen](const ElementView& root) {
      seen = root.text().toString().toStdString();
    });
    return isRead ? seen : std::nullopt;
  };
  EXPECT_EQ(textOf("<a><![CDATA[1, 2;]]></a>"), "1, 2;");
  EXPECT_EQ(textOf("<a><![CDATA[]]></a>"), "");
  for (const char* const other :
       {"<a>x<![CDATA[y]]></a>", "<a> <![CDATA[y]]></a>", "<a><![CDATA[y]]>x</a>", "<a><![CDATA[y]]> </a>",
        "<a><![CDATA[y]]><b/></a>", "<a><![CDATA[&]]></a>", "<a><![CDATA[y]]><![CDATA[z]]></a>"})
    EXPECT_EQ(textOf(other), std::nullopt) << other;
}

TEST(PlainXmlView, DecodedTextHasNoByteOrderMark) {
  const auto isRead = [](const std::string& xml) {
    return readPlainXml(xml, XmlBytes::Decoded, [](const ElementView&) {});
  };
  EXPECT_TRUE(isRead("<?xml version='1.0' encoding='UTF-16'?><a/>"));
  EXPECT_FALSE(isRead("\xEF\xBB\xBF<a/>"));
}

TEST(PlainXmlView, ValuesAreCompleteWhereverASpecialCharacterOccurs) {
  struct Part {
    const char* written;
    const char* read;
  };
  for (const Part& part :
       {Part{"&quot;", "\""}, Part{"Я", "Я"}, Part{"'", "'"}, Part{">", ">"}, Part{"]", "]"}}) {
    for (std::size_t size = 0; size < 50; ++size) {
      for (std::size_t place = 0; place <= size; ++place) {
        const std::string before(place, 'b'), after(size - place, '~');
        const std::string xml = "<r a=\"" + before + part.written + after + "\"/>";
        QString seen;
        EXPECT_TRUE(readPlainXml(xml, XmlBytes::AsDeclared, [&seen](const ElementView& root) {
          seen = root.attribute(QLatin1String("a")).value();
        })) << xml;
        EXPECT_EQ(seen.toStdString(), before + part.read + after);
      }
    }
  }
}

/// The attribute values of an element and its descendants, formatted as text. Even orders query the
/// attributes forwards, odd ones backwards. From 2 on the order alternates among siblings, and the attributes
/// are queried again after the children.
std::string queriedValues(const ElementView& element, int order) {
  static const QString queriedNames[] = {QLatin1String("a"), QLatin1String("b"), QLatin1String("c"),
                                         QLatin1String("thickness"), QLatin1String("a")};
  const auto query = [&] {
    std::string text;
    for (int i = 0; i < 5; ++i) {
      const QString& name = queriedNames[order % 2 == 0 ? i : 4 - i];
      const auto value = element.attribute(name);
      text += value ? '"' + value->toStdString() + '"' : element.hasAttribute(name) ? "?" : "-";
    }
    return text;
  };
  std::string text = element.tag().toStdString() + '(' + query();
  int place = 0;
  element.forEachChild(
      [&](const ElementView& child) { text += queriedValues(child, order + (order > 1 ? place++ : 0)); });
  return text + (order > 1 ? query() : "") + ')';
}

TEST(PlainXmlView, SeriesOfElementsMatchTheirDomTree) {
  struct Element {
    std::string xml;
    bool isPlain = true;
  };
  const Element elements[] = {
      {R"(<p a="1" b="2"/>)"},
      {R"(<p a="3" b="4"/>)"},
      {R"(<p a='5' b="6"/>)"},
      {R"(<p a="7"  b="8"/>)"},
      {R"(<p b="9" a="10"/>)"},
      {R"(<p a="11"/>)"},
      {R"(<p a="" b="13" c="14"/>)"},
      {R"(<p a="15" a="16"/>)"},
      {R"(<p a="&amp;Я" b=""/>)"},
      {R"(<p a="it's" b=">"/>)"},
      {R"(<q a="17" b="18"/>)"},
      {R"(<pp a="19" b="20"/>)"},
      {R"(<p a="21" b="22"></p>)"},
      {R"(<p a="1" b="2"><p a="25" b="26"/></p>)"},
      {R"(<p a="28" thickness="29"/>)"},
      {R"(<p a="30" thicknest="31"/>)"},
      {R"(<p/>)"},
      {R"(<p><p/></p>)"},
      {R"(<p a="27" b="28" />)"},
      {"<p a=\"\x01\" b=\"2\"/>", false},
      {R"(<p a="1" b="<"/>)", false},
      {R"(<p a="1"b="2"/>)", false},
      {R"(<p a="1" b="2>)", false},
      {R"(<p a="&x;" b="2"/>)", false},
  };
  const auto check = [](const std::string& xml, bool isPlain) {
    QDomDocument tree;
    ASSERT_TRUE(xml_tree::parseXml(QByteArray::fromStdString(xml), tree).parsed || !isPlain) << xml;
    for (int order = 0; order < 4; ++order) {
      std::string seen;
      ASSERT_EQ(readPlainXml(xml, XmlBytes::AsDeclared,
                             [&](const ElementView& root) { seen = queriedValues(root, order); }),
                isPlain)
          << xml;
      ASSERT_TRUE(!isPlain || seen == queriedValues(ztcad::DomView(tree.documentElement()), order))
          << xml << seen;
    }
  };
  for (const Element& first : elements)
    for (const Element& second : elements)
      for (const Element& third : elements)
        check("<r>" + first.xml + second.xml + third.xml + second.xml + "</r>",
              first.isPlain && second.isPlain && third.isPlain);
}

TEST(PlainXmlView, DistinguishesAttributesWithSimilarNames) {
  EXPECT_TRUE(readPlainXml("<r name='1' nune='2' nme='3' name2='4' n='5' inform='6'/>", XmlBytes::AsDeclared,
                           [](const ElementView& root) {
                             const char* const names[] = {"name", "nune", "nme", "name2", "n", "inform"};
                             for (int i = 0; i < 6; ++i)
                               EXPECT_EQ(root.attribute(QLatin1String(names[i])), QString::number(i + 1));
                             for (const char* const other : {"nome", "nae", "name3", "", "m", "infarm"})
                               EXPECT_EQ(root.attribute(QLatin1String(other)), std::nullopt) << other;
                             const QString cyrillic(QChar(0x430));
                             EXPECT_EQ(root.attribute(cyrillic), std::nullopt);
                           }));
}

TEST(PlainXmlView, PresentsTagsAttributesTextAndChildrenInOrder) {
  std::string seen;
  EXPECT_TRUE(readPlainXml("<r a='1' b=''><x>one</x><y c='&lt;2' c='3'/><x>\n</x></r>", XmlBytes::AsDeclared,
                           [&](const ElementView& root) {
                             seen +=
                                 root.tag().toStdString() + root.attribute(QLatin1String("a"))->toStdString();
                             EXPECT_EQ(root.attribute(QLatin1String("b")), QString());
                             EXPECT_EQ(root.attribute(QLatin1String("c")), std::nullopt);
                             EXPECT_TRUE(root.hasAttribute(QLatin1String("b")));
                             root.forEachChild([&](const ElementView& child) {
                               seen += ' ' + child.tag().toStdString();
                               if (child.hasAttribute(QLatin1String("c")))
                                 seen += child.attribute(QLatin1String("c"))->toStdString();
                               seen += '(' + child.text().toString().toStdString() + ')';
                             });
                             EXPECT_EQ(root.attribute(QLatin1String("a")), QLatin1String("1"))
                                 << "attributes must stay readable after the children";
                           }));
  EXPECT_EQ(seen, "r1 x(one) y3() x()");
}

TEST(PlainXmlView, ElementsThatAreNotReadAreStillValidated) {
  const auto readNothing = [](const std::string& xml) {
    return readPlainXml(xml, XmlBytes::AsDeclared, [](const ElementView&) {});
  };
  EXPECT_TRUE(readNothing("<r><a><b/></a></r>"));
  EXPECT_FALSE(readNothing("<r><a><b></a></r>"));
  EXPECT_FALSE(readNothing("<r><a b='&x;'/></r>"));
}

TEST(PlainXmlView, WhitespaceTextContainsNoNumbers) {
  for (const char* const xml :
       {"<r></r>", "<r> </r>", "<r>\n                  </r>", "<r/>", "<r a=''></r>"}) {
    int count = -1;
    EXPECT_TRUE(readPlainXml(xml, XmlBytes::AsDeclared, [&count](const ElementView& root) {
      double values[3] = {};
      count = ztcad::parseShortList(root.text(), values, 3) +
              ztcad::parseShortList(root.attributeText(QLatin1String("a")).value_or(root.text()), values, 3);
    })) << xml;
    EXPECT_EQ(count, 0) << xml;
  }
}

TEST(PlainXmlView, TextThatContainsMarkupIsRejectedWhenRead) {
  const auto readText = [](const std::string& xml) {
    return readPlainXml(xml, XmlBytes::AsDeclared, [](const ElementView& root) { root.text().toString(); });
  };
  EXPECT_TRUE(readText("<r>1</r>"));
  EXPECT_FALSE(readText("<r>1<!--c--></r>"));
  EXPECT_FALSE(readText("<r>1<b/></r>"));
  EXPECT_FALSE(readText("<r>&lt;</r>"));
  EXPECT_FALSE(readText("<r>\xC2\xA0</r>")) << "Qt drops a text node of only a no-break space";
}

}  // namespace
