#include <gtest/gtest.h>
#include <QString>
#include <string>
#include <vector>

#include "dice.h"
#include "mutated_xml.h"
#include "qt_parser_comparison.h"
#include "random_seed.h"
#include "text/code_pages.h"
#include "xml/unicode_bytes.h"

// Qt's parser decides what is well-formed: the library's reader must accept the same texts, with the same
// content, and refuse the others with the same message at the same position.

namespace {

QByteArray utf16(const QString& text) {
  return QByteArray("\xff\xfe") + QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
}

std::vector<QByteArray> seedTexts() {
  const QByteArray document =
      "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n   <header majorVersion=\"1\"/>\n"
      "   <point center=\"1, 2, 3\" name='\xcf\xf0\xe8\xec\xe5\xf0'/>\n   <line><vertices>1,2,3</vertices></line>\n</GMD>\n";
  const QByteArray mixed =
      "<r>t&lt;u&amp;&#65;&#x42f;<a x='1' x=\"2\"/>v<![CDATA[<b>]]]>w<!--c - d--><?p q?>&e;</r><!--end-->";
  const QByteArray typed =
      "<?xml version='1.0'?><!DOCTYPE r PUBLIC 'p' \"s\" [<!ELEMENT r (a|(b,c?)*)+><!ATTLIST r a CDATA 'd' b (x|y) "
      "#IMPLIED>\r\n<!NOTATION n SYSTEM 'x'><!-- ]> --><?p ]>?>%u;]>\r<r a='1'>\r\n</r>";
  const QByteArray nested = QByteArray("<a>").repeated(254) + "t" + QByteArray("</a>").repeated(254);
  const QByteArray large = "<r a='" + QByteArray("1.25, ").repeated(400) + "'>" +
                           QByteArray("\xd0\xaf").repeated(900) + "<b/></r>";
  return {document,
          mixed,
          typed,
          nested,
          large,
          "<!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;</r>",
          utf16(QString::fromUtf8("<r a='Я'>&#x41;</r>")),
          "<r>&#x1f600;<!--&#x1f600;--></r>"};
}

TEST(XmlReaderDifferential, MutatedDocumentsAreReadAsQtReadsThem) {
  Dice dice(randomSeed());
  ParseCounts counts;
  const std::vector<QByteArray> seeds = seedTexts();
  const int rounds = randomRounds(30000);
  for (int i = 0; i < rounds; ++i) {
    QByteArray bytes = dice.pick(seeds);
    for (int mutations = dice.roll(4); mutations >= 0; --mutations)
      mutate(bytes, dice);
    ASSERT_NO_FATAL_FAILURE(compareWithQt(bytes, counts)) << i;
  }
  EXPECT_GT(counts.accepted, rounds / 30);
  EXPECT_GT(counts.illFormed, rounds / 30);
  EXPECT_GT(counts.refused, rounds / 60);
}

TEST(XmlReaderDifferential, RandomFragmentsAreReadAsQtReadsThem) {
  Dice dice(randomSeed());
  ParseCounts counts;
  const char* const openings[] = {"", "<r>", "<!DOCTYPE r [", "<r a='", "<?xml version='1.0'?>"};
  const char* const closings[] = {"", "</r>", "]><r/>", "'/>", "<r/>"};
  for (int i = 0; i < 60000; ++i) {
    const int frame = dice.roll(5);
    QByteArray bytes = openings[frame];
    for (int pieces = dice.roll(8); pieces > 0; --pieces)
      bytes += dice.pick(xmlFragments);
    bytes += closings[frame];
    ASSERT_NO_FATAL_FAILURE(compareWithQt(bytes, counts)) << i;
  }
  EXPECT_GT(counts.accepted, 1000);
  EXPECT_GT(counts.illFormed, 1000);
  EXPECT_GT(counts.refused, 100);
}

const char* const goodTags[] = {"<a>",
                                "<a>",
                                "<a\n>",
                                "<a b='>'>",
                                "<a b='/>'>",
                                "<a b=\"'>\">",
                                "</a>",
                                "</a>",
                                "</a \n>",
                                "<a/>",
                                "<a b='x'/>",
                                "t > ' \" / /> ",
                                "<?p?>",
                                "<?p <a> ?>",
                                "<!---->",
                                "<!--></a></a>-->",
                                "<!--'<a b=\"-->",
                                "<?p ></a></a>?>",
                                "<![CDATA[></a></a>]]>"};
const char* const badTags[] = {"<a b='",      "<a b='</a>'>",  "'",   "\"", "/", ">", "<",
                               "<a b=\"</a>", "<![CDATA[</a>", "]]>", "-->"};

TEST(XmlReaderDifferential, TagsAtMaximalDepthAreCountedAsQtCountsThem) {
  Dice dice(randomSeed());
  ParseCounts counts;
  for (int i = 0; i < 1500; ++i) {
    QByteArray bytes = QByteArray("<a>").repeated(ztcad::maximalDepth - 3);
    for (int pieces = dice.roll(16); pieces > 0; --pieces)
      bytes += dice.oneIn(20) ? dice.pick(badTags) : dice.pick(goodTags);
    ASSERT_NO_FATAL_FAILURE(compareWithQt(bytes, counts)) << i;
  }
  EXPECT_GT(counts.illFormed, 100);
  EXPECT_GT(counts.refused, 100);
}

TEST(XmlReaderDifferential, LongReferencesAreReadAsTheirCharacters) {
  Dice dice(randomSeed());
  const QString references[] = {"&#x1f600;", "&#128512;", "&#x0001F600;"};
  const QString smiley = QString::fromUtf8("\U0001f600");
  const QString frames[] = {"%1", "<a x='%1'/>", "<a>%1</a>", "t&lt;", "<b y=\"z%1%1\">%1</b>"};
  const QString opaque[] = {"<!--%1-->", "<![CDATA[%1]]>", "<?p %1?>", "<!--'<a x=\"-->", "<![CDATA[<!--]]>"};
  for (int i = 0; i < 5000; ++i) {
    QString withReferences = "<!DOCTYPE r SYSTEM '&#x1f600;>'><r>";
    QString withCharacters = withReferences;
    for (int pieces = dice.roll(8); pieces > 0; --pieces) {
      const QString reference = dice.pick(references);
      const bool isOpaque = dice.oneIn(2);
      const QString frame = isOpaque ? dice.pick(opaque) : dice.pick(frames);
      withReferences += QString(frame).replace("%1", reference);
      withCharacters += QString(frame).replace("%1", isOpaque ? reference : smiley);
    }
    QDomDocument tree;
    QDomDocument byQt;
    ASSERT_TRUE(xml_tree::parseXml(withReferences + "</r>", tree).parsed);
    ASSERT_TRUE(byQt.setContent(withCharacters + "</r>"));
    ASSERT_EQ(described(tree), described(byQt)) << withReferences.toStdString();
  }
}

// --------------------------------------------------------------------------------------- characters of names

/// Text in the form of the reader.
std::string wideUtf8(const QString& text) {
  std::string marked = "\xff\xfe";
  marked.append(reinterpret_cast<const char*>(text.utf16()), 2 * static_cast<std::size_t>(text.size()));
  return ztcad::decodeUnicode(marked, ztcad::UnicodeEncoding::Utf16);
}

void compareTextWithQt(const QString& text) {
  const std::string wide = wideUtf8(text);
  const xml_tree::TreeBuilder builder(wide);
  QDomDocument byQt;
  QString message;
  int line = 0;
  int column = 0;
  const bool parsedByQt = byQt.setContent(text, &message, &line, &column);
  ASSERT_EQ(builder.outcome().parsed, parsedByQt) << wide;
  ASSERT_EQ(builder.outcome().message.toStdString(), message.toStdString()) << wide;
  ASSERT_EQ(builder.outcome().line, line) << wide;
  ASSERT_EQ(builder.outcome().column, column) << wide;
  ASSERT_EQ(described(builder.tree()), described(byQt)) << wide;
}

TEST(XmlReaderDifferential, EveryCharacterIsPartOfANameWhereItIsInQt) {
  for (int unit = 1; unit < 0x10000; ++unit) {
    const QString character = QChar(unit);
    for (const char* const frame :
         {"<%1/>", "<a%1/>", "<a %1=''/>", "<a b%1=''/>", "<?%1 ?><a/>", "<a>&%1;</a>"})
      ASSERT_NO_FATAL_FAILURE(compareTextWithQt(QString(frame).replace("%1", character))) << unit;
  }
}

TEST(XmlReaderDifferential, NoPairOfUnitsIsPartOfAName) {
  Dice dice(randomSeed());
  for (int high = 0xd800; high < 0xdc00; ++high) {
    const QString pair = QString(QChar(high)) + QChar(0xdc00 + dice.roll(0x400));
    for (const char* const frame :
         {"<%1/>", "<a%1/>", "<a b%1=''/>", "<a>%1</a>", "<a b='%1'/>", "<!DOCTYPE a [<!ATTLIST a b (%1)]>"})
      ASSERT_NO_FATAL_FAILURE(compareTextWithQt(QString(frame).replace("%1", pair))) << high;
  }
}

TEST(XmlReaderDifferential, EveryCharacterIsWhitespaceWhereItIsInQt) {
  for (int unit = 1; unit < 0x10000; ++unit)
    for (const char* const frame :
         {"%1<a/>", "<a> %1 <b/></a>", "<a %1b=''/>", "<a b%1=''/>", "<a>&#%2;</a>"})
      ASSERT_NO_FATAL_FAILURE(
          compareTextWithQt(QString(frame).replace("%1", QChar(unit)).replace("%2", QString::number(unit))))
          << unit;
}

// ------------------------------------------------------------------------------------------------- encodings

/// A text in this encoding, with all bytes from 80 hex on, some of them outside ASCII on purpose.
QByteArray textWithAllBytes(const QByteArray& encoding) {
  QByteArray text = "<?xml version='1.0' encoding='" + encoding + "'?><r a='";
  for (int byte = 0x80; byte < 0x100; ++byte)
    text += static_cast<char>(byte);
  return text + "'/>";
}

TEST(XmlReaderDifferential, EveryEncodingThatQtKnowsIsDecodedAsByQtOrRefusedByName) {
  if (!qtHasIcu()) GTEST_SKIP() << "this Qt has no ICU";
  int decoded = 0;
  int refused = 0;
  for (const QByteArray& name : QTextCodec::availableCodecs()) {
    const QByteArray text = textWithAllBytes(name);
    QDomDocument tree;
    const ztcad::ParseOutcome outcome = xml_tree::parseXml(text, tree);
    if (ztcad::isForeignEncoding(ztcad::encodingName(name.toStdString()))) {
      EXPECT_EQ(outcome.message, "encoding not supported: " + name);
      EXPECT_EQ(outcome.column, 31);
      ++refused;
      continue;
    }
    ++decoded;
    ParseCounts counts;
    ASSERT_NO_FATAL_FAILURE(compareWithQt(text, counts)) << name.constData();
  }
  EXPECT_GT(decoded, 250);
  EXPECT_GT(refused, 250);
}

TEST(XmlReaderDifferential, NamesOfEncodingsAreComparedAsByQt) {
  if (!qtHasIcu()) GTEST_SKIP() << "this Qt has no ICU";
  ParseCounts counts;
  for (const char* const name : {"koi8-r",      "KOI8_R",        "koi8r",       "KOI 8 R", "iso-8859-05",
                                 "ISO_8859-5",  "iso8859-5",     "iso-8859-50", "latin02", "",
                                 "utf",         "UTF-8",         "utf8",        "u-t-f-8", "windows-1252",
                                 "windows1252", "no-such-thing", "1",           "utf-16",  "UTF-16LE"})
    ASSERT_NO_FATAL_FAILURE(compareWithQt(textWithAllBytes(name), counts)) << name;
  EXPECT_GT(counts.accepted, 10);
}

TEST(XmlReaderDifferential, InvalidUtf8IsReplacedAsByQt) {
  Dice dice(randomSeed());
  ParseCounts counts;
  // no byte order mark: Qt drops one at the start of a block if all earlier blocks are ASCII
  const char* const pieces[] = {"a",
                                "\xd0",
                                "\xaf",
                                "\xd0\xaf",
                                "\xe0",
                                "\x80",
                                "\xe4\xb8\xad",
                                "\xed",
                                "\xa0",
                                "\xf0\x9f\x98\x80",
                                "\xf0",
                                "\x9f",
                                "\xf4\x90\x80\x80",
                                "\xff",
                                "\xc0\x80"};
  const int rounds = randomRounds(3000);
  for (int i = 0; i < rounds; ++i) {
    // around the end of Qt's first and second block
    QByteArray text = "<r a='" + QByteArray(1000 * dice.roll(3) + dice.roll(40), 'x');
    for (int count = dice.roll(12); count > 0; --count)
      text += dice.pick(pieces);
    if (!dice.oneIn(4)) text += "'/>";
    for (int count = dice.roll(3); count > 0; --count)
      text += dice.pick(pieces);
    ASSERT_NO_FATAL_FAILURE(compareWithQt(text, counts)) << i;
  }
  EXPECT_GT(counts.accepted, rounds / 10);
}

QByteArray encoded(const QString& text, const char* codec) {
  return QTextCodec::codecForName(codec)->fromUnicode(text);
}

TEST(XmlReaderDifferential, WideEncodingsAreReadAsByQt) {
  if (!qtHasIcu()) GTEST_SKIP() << "this Qt has no ICU";
  Dice dice(randomSeed());
  ParseCounts counts;
  const char* const codecs[] = {"UTF-16", "UTF-16BE", "UTF-16LE", "UTF-32", "UTF-32BE", "UTF-32LE"};
  const char* const declared[] = {"",         "utf-8",  "utf-16",       "UTF-16BE",
                                  "UTF-16LE", "utf-32", "windows-1251", "KOI8-R"};
  const int rounds = randomRounds(3000);
  for (int i = 0; i < rounds; ++i) {
    const QByteArray encoding = dice.pick(declared);
    QString text = encoding.isEmpty() ? "" : "<?xml version='1.0' encoding='" + encoding + "'?>";
    text += QString::fromUtf8("<r a='Я中\U0001f600'>t&#x42f;</r>");
    QByteArray bytes = encoded(text, dice.pick(codecs));
    for (int mutations = dice.roll(3); mutations > 0; --mutations)
      bytes[dice.roll(bytes.size())] = static_cast<char>(dice.roll(256));
    if (dice.oneIn(3)) bytes.truncate(dice.roll(bytes.size()));
    ASSERT_NO_FATAL_FAILURE(compareWithQt(bytes, counts)) << i;
  }
  EXPECT_GT(counts.accepted, rounds / 30);
  EXPECT_GT(counts.illFormed, rounds / 30);
}

}  // namespace
