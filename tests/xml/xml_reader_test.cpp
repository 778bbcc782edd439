#include "xml/xml_reader.h"

#include <gtest/gtest.h>
#include <functional>
#include <QThread>
#include <string>

#include "described_xml.h"
#include "recorded_answers.h"
#include "tree_of_xml.h"

using xml_tree::parseXml;
using xml_tree::printTree;
using ztcad::maximalDepth;
using ztcad::ParseOutcome;

namespace {

QByteArray repeated(const char* text, int count) { return QByteArray(text).repeated(count); }

QByteArray nested(int depth) { return repeated("<a>", depth) + repeated("</a>", depth); }

QByteArray bytes(const std::string& text) { return QByteArray(text.data(), static_cast<int>(text.size())); }

/// Calls `body` in a thread with a stack of 1 MiB, the default on Windows.
void runOnSmallStack(const std::function<void()>& body) {
  class Thread final : public QThread {
   public:
    explicit Thread(const std::function<void()>& run) : m_run(run) {}
    void run() override { m_run(); }

   private:
    const std::function<void()>& m_run;
  };
  Thread thread(body);
  thread.setStackSize(1024 * 1024);
  thread.start();
  thread.wait();
}

/// The attribute "a" of the root, as UTF-16 units.
QString valueOf(const char* xml) {
  QDomDocument tree;
  EXPECT_TRUE(parseXml(QByteArray(xml), tree).parsed) << xml;
  return tree.documentElement().attribute("a");
}

/// The serialized content of the root.
std::string contentOf(const char* xml) {
  const std::string printed = xml_tree::printXml(xml, 0);
  const std::size_t start = printed.find("<r>") + 3;
  return printed.substr(start, printed.rfind("</r>") - start);
}

/// Compares message, position and partial tree of an ill-formed text with those of Qt, if it can be asked,
/// and returns them for the record.
std::string comparedFailure(const QByteArray& xml) {
  QDomDocument tree;
  const ParseOutcome outcome = parseXml(xml, tree);
  EXPECT_FALSE(outcome.parsed);
  if (qtIsTheReference) {
    QDomDocument byQt;
    QString message;
    int line = 0;
    int column = 0;
    EXPECT_FALSE(byQt.setContent(xml, &message, &line, &column));
    EXPECT_EQ(outcome.message.toStdString(), message.toStdString());
    EXPECT_EQ(outcome.line, line);
    EXPECT_EQ(outcome.column, column);
    // plain Qt truncates references beyond U+FFFF
    if (!xml.contains("&#x1f600;")) {
      EXPECT_EQ(tree.toString().toStdString(), byQt.toString().toStdString());
    }
  }
  const xml_tree::DescribedXml described(xml_tree::view(xml), ztcad::XmlBytes::AsDeclared);
  return outcome.message.toStdString() + ' ' + std::to_string(outcome.line) + ':' +
         std::to_string(outcome.column) + ' ' + sumOf(described.content());
}

QString smiley() { return QString::fromUtf8("😀"); }

}  // namespace

TEST(XmlReader, SuccessLeavesNoMessageOrPosition) {
  QDomDocument tree;
  const ParseOutcome outcome = parseXml(QByteArray("<r>\n<a/>\n</r>"), tree);
  EXPECT_TRUE(outcome.parsed);
  EXPECT_TRUE(outcome.message.isEmpty());
  EXPECT_EQ(outcome.line, 0);
  EXPECT_EQ(outcome.column, 0);
  EXPECT_EQ(printTree(tree, 1), "<r>\n <a/>\n</r>\n");
}

TEST(XmlReader, IllFormedTextKeepsQtsMessageAndThePartialTree) {
  const QByteArray xml("<r>\n<a/><b></r>");
  RecordedAnswers recorded("partial_tree");
  recorded.expect("wrong end tag", comparedFailure(xml));
  recorded.finish();
  QDomDocument tree;
  parseXml(xml, tree);
  EXPECT_EQ(tree.documentElement().tagName(), "r");
  EXPECT_EQ(tree.documentElement().firstChildElement().tagName(), "a");
}

TEST(XmlReader, EmptyTextIsIllFormed) {
  QDomDocument tree;
  EXPECT_FALSE(parseXml(QByteArray(), tree).parsed);
  EXPECT_FALSE(parseXml(QString(), tree).parsed);
  EXPECT_TRUE(tree.documentElement().isNull());
}

TEST(XmlReader, TheTreeIsReplacedAndOtherHandlesKeepTheOldOne) {
  QDomDocument tree;
  parseXml(QByteArray("<old/>"), tree);
  const QDomDocument other = tree;
  parseXml(QByteArray("<new/>"), tree);
  EXPECT_EQ(tree.documentElement().tagName(), "new");
  EXPECT_EQ(other.documentElement().tagName(), "old");
}

TEST(XmlReader, BytesAreDecodedAsDeclared) {
  QDomDocument tree;
  ASSERT_TRUE(
      parseXml(QByteArray("<?xml version='1.0' encoding='windows-1251'?><r a='\xdf\x98'/>"), tree).parsed);
  EXPECT_EQ(tree.documentElement().attribute("a"), QString(QChar(0x42f)) + QChar(0x98));
  ASSERT_TRUE(parseXml(bytes(std::string("\xff\xfe<\0r\0/\0>\0", 10)), tree).parsed);
  EXPECT_EQ(tree.documentElement().tagName(), "r");
  ASSERT_TRUE(parseXml(QByteArray("\xef\xbb\xbf<r a='Я'/>"), tree).parsed);
  EXPECT_EQ(tree.documentElement().attribute("a"), QString(QChar(0x42f)));
}

TEST(XmlReader, Byte98HexOfDeclaredWindows1251IsKept) {
  for (const char* const declaration :
       {"<?xml version='1.0' encoding='windows-1251'?>", "<?xml version=\"1.0\" encoding=\"Windows-1251\"?>",
        "<?xml version='1.0' encoding = 'CP1251' standalone=\"yes\"?>"}) {
    QDomDocument tree;
    parseXml(QByteArray(declaration) + "<r a='\x98 x\x98'/>", tree);
    EXPECT_EQ(tree.documentElement().attribute("a"), QString(QChar(0x98)) + " x" + QChar(0x98))
        << declaration;
  }
}

TEST(XmlReader, Byte98HexOfAnotherEncodingIsDecodedAsQtDoes) {
  RecordedAnswers recorded("byte_98");
  for (const char* const declaration :
       {"", "<?xml version='1.0' encoding='UTF-8'?>",
        "<?xml version='1.0' encoding='KOI8-R' note='windows-1251'?>", "<!-- encoding='windows-1251' -->"}) {
    const QByteArray text = QByteArray(declaration) + "<r a='\x98'/>";
    QDomDocument tree;
    parseXml(text, tree);
    const QString value = tree.documentElement().attribute("a");
    if (qtIsTheReference) {
      QDomDocument byQt;
      byQt.setContent(text);
      EXPECT_EQ(value, byQt.documentElement().attribute("a")) << declaration;
    }
    recorded.expect(std::string("declared ") + declaration, value.toStdString());
  }
  recorded.finish();
}

TEST(XmlReader, TextIsNotDecodedAgainWhateverItDeclares) {
  QDomDocument tree;
  const QString text = QString::fromUtf8("<?xml version='1.0' encoding='windows-1251'?><r a='Я中'/>");
  ASSERT_TRUE(parseXml(text, tree).parsed);
  EXPECT_EQ(tree.documentElement().attribute("a"), QString::fromUtf8("Я中"));
}

TEST(XmlReader, ValuesAreDecodedAcrossTheParsersBlockBoundaries) {
  for (const int filling : {1010, 1015, 1016, 1017, 1018, 1019, 1020, 1024, 5000}) {
    const QString value = QString(filling, 'x') + QString::fromUtf8("Я中😀") + QString(filling, 'y');
    QDomDocument tree;
    ASSERT_TRUE(parseXml("<r a='" + value.toUtf8() + "'/>", tree).parsed);
    EXPECT_EQ(tree.documentElement().attribute("a"), value) << filling;
  }
}

// -------------------------------------------------------------------------------------------------- refusals

struct RefusalRow {
  const char* name;
  QByteArray xml;
  const char* message;
  int line;
  int column;
};

void PrintTo(const RefusalRow& row, std::ostream* out) { *out << row.name; }

class RefusedXml : public testing::TestWithParam<RefusalRow> {};

TEST_P(RefusedXml, LeavesNoTreeAndReportsTheFirstPosition) {
  QDomDocument tree;
  parseXml(QByteArray("<old/>"), tree);
  const ParseOutcome outcome = parseXml(GetParam().xml, tree);
  EXPECT_FALSE(outcome.parsed);
  EXPECT_EQ(outcome.message.toStdString(), GetParam().message);
  EXPECT_EQ(outcome.line, GetParam().line);
  EXPECT_EQ(outcome.column, GetParam().column);
  EXPECT_TRUE(tree.firstChild().isNull());
}

TEST_P(RefusedXml, IsAlsoRefusedAsText) {
  QDomDocument tree;
  const ParseOutcome outcome =
      parseXml(QString::fromUtf8(GetParam().xml.constData(), GetParam().xml.size()), tree);
  EXPECT_FALSE(outcome.parsed);
  EXPECT_EQ(outcome.message.toStdString(), GetParam().message);
  EXPECT_EQ(outcome.line, GetParam().line);
  EXPECT_EQ(outcome.column, GetParam().column);
}

const char depthMessage[] = "elements nested deeper than 256";
const char parenthesesMessage[] = "parentheses nested too deep";
const char entityMessage[] = "entity declaration";
const char nulMessage[] = "NUL character";

std::vector<RefusalRow> refusalRows() {
  const std::string billionLaughs =
      "<!DOCTYPE r [\n<!ENTITY a 'aaaaaaaaaa'>\n<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;'>\n]><r>&b;</r>";
  const int deepColumn = 3 * maximalDepth + 3;  // the `>` of the first element that is nested too deep
  return {
      {"OneElementTooDeep", nested(maximalDepth + 1), depthMessage, 1, deepColumn},
      {"AMillionElements", repeated("<a>", 1000000), depthMessage, 1, deepColumn},
      {"EmptyElementTooDeep", repeated("<a>", maximalDepth) + "<b/>" + repeated("</a>", maximalDepth),
       depthMessage, 1, deepColumn},
      {"DeepOnManyLines", repeated("<a\n>", 1000), depthMessage, maximalDepth + 2, 1},
      {"DeepThenIllFormed", repeated("<a>", 300) + "</b>", depthMessage, 1, deepColumn},

      {"InternalEntity", "<!DOCTYPE r [<!ENTITY e 'x'>]><r/>", entityMessage, 1, 14},
      {"ExternalEntity", "<!DOCTYPE r [<!ENTITY e SYSTEM 'x'>]><r/>", entityMessage, 1, 14},
      {"UnparsedEntity", "<!DOCTYPE r [<!ENTITY e SYSTEM 'x' NDATA n>]><r/>", entityMessage, 1, 14},
      {"ParameterEntity", "<!DOCTYPE r [<!ENTITY % e 'x'>]><r/>", entityMessage, 1, 14},
      {"PredefinedEntity", "<!DOCTYPE r [<!ENTITY lt '&#38;#60;'>]><r/>", entityMessage, 1, 14},
      {"ManyExpansions", bytes(billionLaughs), entityMessage, 2, 1},
      {"EntityAfterOtherDeclarations",
       "<?xml version='1.0'?>\n<!--x--><!DOCTYPE r SYSTEM '[' [\r\n<!ELEMENT r (a|b)*><!-- ]> -->\r"
       "<!ATTLIST r a CDATA ']>'><?p ]> ?> <!ENTITY e 'x'>]><r/>",
       entityMessage, 4, 36},
      // XML allows one document type, but Qt reads any number of them, with their entities
      {"EntityInTheSecondDocumentType", "<!DOCTYPE r []><!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;</r>",
       entityMessage, 1, 29},
      {"EntityInTheThirdDocumentType",
       "<!DOCTYPE r><!DOCTYPE r>\n<!---->\n<!DOCTYPE r [<!ENTITY e 'x'>]><r/>", entityMessage, 3, 14},
      {"EntityThenDeepElements", "<!DOCTYPE r [<!ENTITY e 'x'>]>" + repeated("<a>", 300), entityMessage, 1,
       14},

      {"DeepContentModel",
       "<!DOCTYPE r [<!ELEMENT r " + repeated("(", 257) + "a" + repeated(")", 257) + ">]><r/>",
       parenthesesMessage, 1, 282},
      {"AMillionParentheses", "<!DOCTYPE r [<!ELEMENT r " + repeated("(", 1000000), parenthesesMessage, 1,
       282},

      {"NulInText", bytes(std::string("<r>\nx\0</r>", 10)), nulMessage, 2, 2},
      {"NulInAttribute", bytes(std::string("<r a='\0'/>", 10)), nulMessage, 1, 7},
      {"NulInComment", bytes(std::string("<!--\0--><r/>", 12)), nulMessage, 1, 5},
      {"NulAfterTheRoot", bytes(std::string("<r/>\r\n\r\0", 8)), nulMessage, 3, 1},
      {"NulThenDeepElements", bytes(std::string("<r>\0", 4)) + repeated("<a>", 300), nulMessage, 1, 4},
      {"NulThenIllFormed", bytes(std::string("<r>\0</s>", 8)), nulMessage, 1, 4},
      {"NulThenEntity", bytes(std::string("<!DOCTYPE r [\0<!ENTITY e 'x'>]><r/>", 35)), nulMessage, 1, 14},
  };
}

INSTANTIATE_TEST_SUITE_P(Rows, RefusedXml, testing::ValuesIn(refusalRows()),
                         [](const auto& row) { return row.param.name; });

TEST(XmlReader, RefusesANulThatResultsFromDecoding) {
  QDomDocument tree;
  const ParseOutcome outcome = parseXml(bytes(std::string("\xff\xfe<\0r\0>\0\0\0<\0/\0r\0>\0", 18)), tree);
  EXPECT_EQ(outcome.message.toStdString(), nulMessage);
  EXPECT_EQ(outcome.column, 4);
}

TEST(XmlReader, ElementsAtTheMaximalDepthAreRead) {
  QDomDocument tree;
  EXPECT_TRUE(parseXml(nested(maximalDepth), tree).parsed);
  const QByteArray wide = "<a>" + repeated("<b/><c></c>", 1000) + "</a>";
  EXPECT_TRUE(parseXml(wide, tree).parsed);
  EXPECT_EQ(tree.documentElement().childNodes().count(), 2000);
}

TEST(XmlReader, ParenthesesAtTheMaximalDepthAreRead) {
  QDomDocument tree;
  const QByteArray model = repeated("(", 256) + "a" + repeated(")", 256);
  EXPECT_TRUE(
      parseXml("<!DOCTYPE r [<!ELEMENT r " + model + "><!ELEMENT s " + model + ">]><r/>", tree).parsed);
}

struct MessageRow {
  const char* name;
  QByteArray xml;
};

void PrintTo(const MessageRow& row, std::ostream* out) { *out << row.name; }

const MessageRow messageRows[] = {
    {"ThenDeepElements", "<r></s>" + repeated("<a>", 300)},
    {"ThenNul", bytes(std::string("<r></s>\0", 8))},
    {"ThenEntity", "<!DOCTYPE r [<!ELEMENT r EVERY><!ENTITY e 'x'>]><r/>"},
    {"ThenParentheses", "<!DOCTYPE r [<!ELEMENT r ANYTHING" + repeated("(", 300) + ">]><r/>"},
    {"ThenEntityInALaterDocumentType", "<r/><!DOCTYPE r [<!ENTITY e 'x'>]>"},
};

TEST(XmlReader, IllFormedBeforeRefusedContentKeepsQtsMessage) {
  RecordedAnswers recorded("ill_formed_before_refused");
  for (const MessageRow& row : messageRows) {
    SCOPED_TRACE(row.name);
    recorded.expect(row.name, comparedFailure(row.xml));
  }
  recorded.finish();
}

class AcceptedXml : public testing::TestWithParam<MessageRow> {};

TEST_P(AcceptedXml, IsParsedAlthoughItResemblesRefusedXml) {
  QDomDocument tree;
  const ParseOutcome outcome = parseXml(GetParam().xml, tree);
  EXPECT_TRUE(outcome.parsed) << outcome.message.toStdString();
  EXPECT_FALSE(tree.documentElement().isNull());
}

const MessageRow acceptedRows[] = {
    {"EntityInAComment", "<!-- <!DOCTYPE r [<!ENTITY e 'x'>]> --><r/>"},
    {"EntityInACommentOfTheDocumentType", "<!DOCTYPE r [<!-- <!ENTITY e 'x'> -->]><r/>"},
    {"EntityInAProcessingInstruction", "<?p <!DOCTYPE r [<!ENTITY e 'x'>]> ?><r/>"},
    {"EntityInAnIdentifier", "<!DOCTYPE r SYSTEM \"<!ENTITY e 'x'>\"><r/>"},
    {"EntityInCdata", "<r><![CDATA[<!DOCTYPE r [<!ENTITY e 'x'>]>]]></r>"},
    {"ElementsInAComment", "<r><!-- " + repeated("<a>", 1000) + " --></r>"},
    {"ElementsInCdata", "<r><![CDATA[" + repeated("<a>", 1000) + "]]></r>"},
    {"ParenthesesInText", "<!DOCTYPE r><r>" + repeated("(", 1000) + "</r>"},
    {"ParenthesesInADefault", "<!DOCTYPE r [<!ATTLIST r a CDATA '" + repeated("(", 1000) + "'>]><r/>"},
    {"UndeclaredEntities", "<r>&x;&y;</r>"},
    {"NulAsAReference", "<r>&#0;</r>"},
};

INSTANTIATE_TEST_SUITE_P(Rows, AcceptedXml, testing::ValuesIn(acceptedRows),
                         [](const auto& row) { return row.param.name; });

TEST(XmlReader, ASmallStackIsSufficient) {
  runOnSmallStack([] {
    QDomDocument tree;
    EXPECT_FALSE(parseXml(repeated("<a>", 1000000), tree).parsed);
    EXPECT_FALSE(parseXml("<!DOCTYPE r [<!ELEMENT r " + repeated("(", 1000000), tree).parsed);
    const QByteArray model = repeated("(", maximalDepth) + "a" + repeated(")", maximalDepth);
    EXPECT_TRUE(parseXml("<!DOCTYPE r [<!ELEMENT r " + model + ">]><r/>", tree).parsed);
    EXPECT_TRUE(parseXml(nested(maximalDepth), tree).parsed);
    EXPECT_FALSE(printTree(tree, 1).empty());
    EXPECT_FALSE(tree.toString().isEmpty());
    tree = QDomDocument();  // frees the deep tree
  });
}

// ---------------------------------------------------------------------------------------- numeric references

struct ReferenceRow {
  const char* name;
  const char* reference;
  QString expected;
};

void PrintTo(const ReferenceRow& row, std::ostream* out) { *out << row.name; }

class NumericReference : public testing::TestWithParam<ReferenceRow> {};

TEST_P(NumericReference, IsReadInAttributes) {
  const std::string xml = std::string("<r a='x") + GetParam().reference + "y'/>";
  EXPECT_EQ(valueOf(xml.c_str()), 'x' + GetParam().expected + 'y');
}

TEST_P(NumericReference, IsReadInText) {
  const std::string xml = std::string("<r>x") + GetParam().reference + "y</r>";
  QDomDocument tree;
  EXPECT_TRUE(parseXml(QByteArray(xml.c_str()), tree).parsed);
  EXPECT_EQ(tree.documentElement().text(), 'x' + GetParam().expected + 'y');
}

std::vector<ReferenceRow> referenceRows() {
  const auto unit = [](ushort code) { return QString(QChar(code)); };
  return {
      {"Ascii", "&#x41;", "A"},
      {"Decimal", "&#65;", "A"},
      {"Cyrillic", "&#x42f;", unit(0x42f)},
      {"LastOfSixteenBits", "&#xffff;", unit(0xffff)},
      {"FirstAboveSixteenBits", "&#x10000;", QString::fromUtf8("\U00010000")},
      {"Smiley", "&#x1f600;", smiley()},
      {"SmileyInCapitals", "&#x1F600;", smiley()},
      {"SmileyInDecimal", "&#128512;", smiley()},
      {"LeadingZeros", "&#x00000000001f600;", smiley()},
      {"LeadingZerosInDecimal", "&#000000000128512;", smiley()},
      {"LastCharacter", "&#x10ffff;", QString::fromUtf8("\U0010ffff")},
      {"LastCharacterInDecimal", "&#1114111;", QString::fromUtf8("\U0010ffff")},
      {"LowHalfIsWhitespace", "&#x10020;", QString::fromUtf8("\U00010020")},
      {"LowHalfIsMarkup", "&#x1003c;", QString::fromUtf8("\U0001003c")},
      // not characters: truncated to 16 bits, as Qt does
      {"AboveTheLastCharacter", "&#x110041;", "A"},
      {"LargestThatQtReads", "&#4294967295;", unit(0xffff)},
      {"Nul", "&#0;", unit(0)},
      {"SurrogatePair", "&#xd83d;&#xde00;", smiley()},
      {"HighSurrogate", "&#xd83d;", unit(0xd83d)},
      {"LowSurrogate", "&#xde00;", unit(0xde00)},
  };
}

INSTANTIATE_TEST_SUITE_P(Rows, NumericReference, testing::ValuesIn(referenceRows()),
                         [](const auto& row) { return row.param.name; });

TEST(XmlReader, EachOfSeveralLongReferencesIsRead) {
  EXPECT_EQ(contentOf("<r>&#x1f600;a&#x1f601;&#65;&#x1f602;</r>"), "😀a😁A😂");
}

TEST(XmlReader, ALongReferenceWhoseLowHalfIsWhitespaceIsKept) {
  EXPECT_EQ(contentOf("<r> &#x10020; </r>"), " \U00010020 ");
}

TEST(XmlReader, CommentsCdataAndInstructionsContainNoReferences) {
  EXPECT_EQ(contentOf("<r>&#x1f600;<!--&#x1f600;--><![CDATA[&#x1f600;]]><?p &#x1f600;?>&#x1f600;</r>"),
            "😀<!--&#x1f600;--><![CDATA[&#x1f600;]]><?p &#x1f600;?>\n😀");
  const char* const xml =
      "<!DOCTYPE r SYSTEM '&#x1f600;' [<!NOTATION n SYSTEM '&#x1f600;'>]><r a='&#x1f600;'/>";
  EXPECT_EQ(xml_tree::printXml(xml, 1),
            "<!DOCTYPE r SYSTEM '&#x1f600;' [\n<!NOTATION n SYSTEM '&#x1f600;'>\n]>\n<r a=\"😀\"/>\n");
  EXPECT_EQ(valueOf(xml), smiley());
}

TEST(XmlReader, AnEscapedReferenceStaysText) {
  EXPECT_EQ(contentOf("<r>&amp;#x1f600;</r>"), "&amp;#x1f600;");
}

TEST(XmlReader, MessageAndPositionReferToTheOriginalText) {
  const QByteArray xml("<r>&#x1f600;&#x1f600;<a/></s>");
  RecordedAnswers recorded("position_after_references");
  recorded.expect("wrong end tag", comparedFailure(xml));
  recorded.finish();
  QDomDocument tree;
  parseXml(xml, tree);
  EXPECT_EQ(tree.documentElement().text(), smiley() + smiley());
}

struct InvalidReferenceRow {
  const char* name;
  const char* reference;
};

const InvalidReferenceRow invalidReferenceRows[] = {
    {"Empty", "&#;"},
    {"EmptyHex", "&#x;"},
    {"CapitalX", "&#X1f600;"},
    {"Unterminated", "&#x1f600"},
    {"UnterminatedBeforeMarkup", "&#x1f600<a/>"},
    {"Letters", "&#1f600;"},
    {"Whitespace", "&# 128512;"},
    {"Negative", "&#-1;"},
    {"Overflow", "&#x1000000000000000000;"},
    {"AfterAValidOne", "&#x1f600;&#x;"},
};

TEST(XmlReader, AnInvalidReferenceIsRefusedAsInQt) {
  RecordedAnswers recorded("invalid_references");
  for (const InvalidReferenceRow& row : invalidReferenceRows) {
    SCOPED_TRACE(row.name);
    recorded.expect(row.name, comparedFailure(QByteArray("<r a='x'>") + row.reference + "</r>"));
  }
  recorded.finish();
}
