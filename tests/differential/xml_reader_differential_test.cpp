#include <gtest/gtest.h>
#include <algorithm>
#include <QString>
#include <string>
#include <vector>

#include "mutated_xml.h"
#include "qt_parser_comparison.h"
#include "sample_texts.h"
#include "text/code_pages.h"
#include "xml/unicode_bytes.h"

// The parser of Qt 5.15 decides what is well-formed: the library's reader must accept the same texts, with
// the same content, and refuse the others with the same message at the same position. recorded_answers.h
// describes how a build with another Qt is tested.

namespace {

QByteArray utf16(const QString& text) {
  return QByteArray("\xff\xfe") + QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
}

/// Compares answers to many texts with the record, one by one.
class AnswersToTexts {
 public:
  explicit AnswersToTexts(const std::string& record) : m_recorded(record) {}

  void compare(const std::string& name, const QByteArray& bytes) {
    SCOPED_TRACE(name);
    m_recorded.expect(name, comparedAnswer(bytes, m_counts, qtHasIcu()));
  }
  const ParseCounts& finish() const {
    m_recorded.finish();
    return m_counts;
  }

 private:
  RecordedAnswers m_recorded;
  ParseCounts m_counts;
};

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

TEST(XmlReaderDifferential, StoredTextsAreReadAsQtReadsThem) {
  AnswersToTexts answers("stored_texts");
  for (const auto& samples :
       {sample_texts::wellFormednessRows(), sample_texts::filesIn(ZTCAD_TEST_GOLDEN_FOLDER),
        sample_texts::filesIn(ZTCAD_TEST_CORPUS_FOLDER)})
    for (const auto& [name, bytes] : samples)
      answers.compare(name, QByteArray::fromStdString(bytes));
  const ParseCounts counts = answers.finish();
  EXPECT_GT(counts.accepted, 100);
  EXPECT_GT(counts.illFormed, 100);
  EXPECT_GT(counts.refused, 10);
}

TEST(XmlReaderDifferential, MutatedDocumentsAreReadAsQtReadsThem) {
  ParseCounts counts;
  const std::vector<QByteArray> seeds = seedTexts();
  const int rounds = checkRandomInputs("mutated_documents", randomRounds(30000), [&](Dice& dice) {
    std::string bytes = dice.pick(seeds).toStdString();
    for (int mutations = dice.roll(4); mutations >= 0; --mutations)
      mutate(bytes, dice);
    return comparedAnswer(QByteArray::fromStdString(bytes), counts);
  });
  EXPECT_GT(counts.accepted, rounds / 30);
  EXPECT_GT(counts.illFormed, rounds / 30);
  EXPECT_GT(counts.refused, rounds / 60);
}

TEST(XmlReaderDifferential, RandomFragmentsAreReadAsQtReadsThem) {
  ParseCounts counts;
  const char* const openings[] = {"", "<r>", "<!DOCTYPE r [", "<r a='", "<?xml version='1.0'?>"};
  const char* const closings[] = {"", "</r>", "]><r/>", "'/>", "<r/>"};
  const int rounds = checkRandomInputs("random_fragments", 60000, [&](Dice& dice) {
    const int frame = dice.roll(5);
    QByteArray bytes = openings[frame];
    for (int pieces = dice.roll(8); pieces > 0; --pieces)
      bytes += dice.pick(xmlFragments);
    bytes += closings[frame];
    return comparedAnswer(bytes, counts);
  });
  EXPECT_GT(counts.accepted, rounds / 60);
  EXPECT_GT(counts.illFormed, rounds / 60);
  EXPECT_GT(counts.refused, rounds / 600);
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
  ParseCounts counts;
  const int rounds = checkRandomInputs("deep_tags", 1500, [&](Dice& dice) {
    QByteArray bytes = QByteArray("<a>").repeated(ztcad::maximalDepth - 3);
    for (int pieces = dice.roll(16); pieces > 0; --pieces)
      bytes += dice.oneIn(20) ? dice.pick(badTags) : dice.pick(goodTags);
    return comparedAnswer(bytes, counts);
  });
  EXPECT_GT(counts.illFormed, rounds / 15);
  EXPECT_GT(counts.refused, rounds / 15);
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
    withReferences += "</r>";
    withCharacters += "</r>";
    const xml_tree::DescribedXml content(withReferences.toStdString());
    ASSERT_TRUE(content.outcome().parsed);
    ASSERT_EQ(content.content(), xml_tree::DescribedXml(withCharacters.toStdString()).content());
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QDomDocument tree;
    QDomDocument byQt;
    ASSERT_TRUE(xml_tree::parseXml(withReferences, tree).parsed);
    ASSERT_TRUE(byQt.setContent(withCharacters));
    ASSERT_EQ(described(tree), described(byQt)) << withReferences.toStdString();
#endif
  }
}

// --------------------------------------------------------------------------------------- characters of names

/// Text in the form of the reader.
std::string wideUtf8(const QString& text) {
  std::string marked = "\xff\xfe";
  marked.append(reinterpret_cast<const char*>(text.utf16()), 2 * static_cast<std::size_t>(text.size()));
  return ztcad::decodeUnicode(marked, ztcad::UnicodeEncoding::Utf16);
}

void compareTextWithQt([[maybe_unused]] const QString& text, [[maybe_unused]] const std::string& wide) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
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
#endif
}

std::string comparedAnswerToText(const QString& text) {
  const std::string wide = wideUtf8(text);
  compareTextWithQt(text, wide);
  return answerOf(xml_tree::DescribedXml(wide));
}

TEST(XmlReaderDifferential, EveryCharacterIsPartOfANameWhereItIsInQt) {
  checkEveryUnit("characters_of_names", [](int unit) {
    std::string answers;
    for (const char* const frame :
         {"<%1/>", "<a%1/>", "<a %1=''/>", "<a b%1=''/>", "<?%1 ?><a/>", "<a>&%1;</a>"})
      if (unit > 0) answers += comparedAnswerToText(QString(frame).replace("%1", QChar(unit)));
    return answers;
  });
}

TEST(XmlReaderDifferential, NoPairOfUnitsIsPartOfAName) {
  RecordedAnswers recorded("pairs_in_names");
  Dice dice(2);
  for (int first = 0xd800; first < 0xdc00; first += 0x40) {
    Sum sum;
    for (int high = first; high < first + 0x40; ++high) {
      const QString pair = QString(QChar(high)) + QChar(0xdc00 + dice.roll(0x400));
      for (const char* const frame : {"<%1/>", "<a%1/>", "<a b%1=''/>", "<a>%1</a>", "<a b='%1'/>",
                                      "<!DOCTYPE a [<!ATTLIST a b (%1)]>"})
        sum.add(comparedAnswerToText(QString(frame).replace("%1", pair)));
    }
    recorded.expect(numbered("pairs from", first), sum.text());
  }
  recorded.finish();
}

TEST(XmlReaderDifferential, EveryCharacterIsWhitespaceWhereItIsInQt) {
  checkEveryUnit("whitespace", [](int unit) {
    std::string answers;
    for (const char* const frame :
         {"%1<a/>", "<a> %1 <b/></a>", "<a %1b=''/>", "<a b%1=''/>", "<a>&#%2;</a>"}) {
      const QString text = QString(frame).replace("%1", QChar(unit)).replace("%2", QString::number(unit));
      if (unit > 0) answers += comparedAnswerToText(text);
    }
    return answers;
  });
}

// ------------------------------------------------------------------------------------------------- encodings

/// A text in this encoding, with all bytes from 80 hex on, some of them outside ASCII on purpose.
QByteArray textWithAllBytes(const QByteArray& encoding) {
  QByteArray text = "<?xml version='1.0' encoding='" + encoding + "'?><r a='";
  for (int byte = 0x80; byte < 0x100; ++byte)
    text += static_cast<char>(byte);
  return text + "'/>";
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
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
    ASSERT_NO_FATAL_FAILURE(compareWithQt(text)) << name.constData();
  }
  EXPECT_GT(decoded, 250);
  EXPECT_GT(refused, 250);
}
#endif

/// The names of all encodings that Qt 5.15 with ICU knows.
std::vector<std::string> namesOfEncodings() {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  if (qtHasIcu()) {
    std::vector<std::string> names;
    for (const QByteArray& name : QTextCodec::availableCodecs())
      names.push_back(name.toStdString());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
  }
#endif
  return RecordedAnswers("encodings").questions();
}

TEST(XmlReaderDifferential, EncodingsAreDecodedAlikeByEveryBuild) {
  RecordedAnswers recorded("encodings");
  for (const std::string& name : namesOfEncodings()) {
    const QByteArray text = textWithAllBytes(QByteArray::fromStdString(name));
    recorded.expect(name,
                    answerOf(xml_tree::DescribedXml(xml_tree::view(text), ztcad::XmlBytes::AsDeclared)));
  }
  recorded.finish();
}

TEST(XmlReaderDifferential, NamesOfEncodingsAreComparedAsByQt) {
  AnswersToTexts answers("names_of_encodings");
  for (const char* const name : {"koi8-r",      "KOI8_R",        "koi8r",       "KOI 8 R", "iso-8859-05",
                                 "ISO_8859-5",  "iso8859-5",     "iso-8859-50", "latin02", "",
                                 "utf",         "UTF-8",         "utf8",        "u-t-f-8", "windows-1252",
                                 "windows1252", "no-such-thing", "1",           "utf-16",  "UTF-16LE"})
    answers.compare(std::string("name ") + name, textWithAllBytes(name));
  EXPECT_GT(answers.finish().accepted, 10);
}

TEST(XmlReaderDifferential, InvalidUtf8IsReplacedAsByQt) {
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
  const int rounds = checkRandomInputs("invalid_utf8", randomRounds(3000), [&](Dice& dice) {
    // around the end of Qt's first and second block
    const int blocks = dice.roll(3);
    QByteArray text = "<r a='" + QByteArray(1000 * blocks + dice.roll(40), 'x');
    for (int count = dice.roll(12); count > 0; --count)
      text += dice.pick(pieces);
    if (!dice.oneIn(4)) text += "'/>";
    for (int count = dice.roll(3); count > 0; --count)
      text += dice.pick(pieces);
    return comparedAnswer(text, counts);
  });
  EXPECT_GT(counts.accepted, rounds / 10);
}

/// Text in UTF-16 or UTF-32. Without "LE" or "BE", it starts with a byte order mark.
QByteArray encoded(const QString& text, const QByteArray& encoding) {
  const bool isBigEndian = encoding.endsWith("BE");
  const int width = encoding.startsWith("UTF-32") ? 4 : 2;
  QByteArray bytes;
  const auto append = [&](uint code) {
    for (int i = 0; i < width; ++i)
      bytes += static_cast<char>(code >> 8 * (isBigEndian ? width - 1 - i : i));
  };
  if (!isBigEndian && !encoding.endsWith("LE")) append(0xfeff);
  if (width == 4) {
    for (const uint code : text.toUcs4())
      append(code);
  } else {
    for (const QChar unit : text)
      append(unit.unicode());
  }
  return bytes;
}

TEST(XmlReaderDifferential, WideEncodingsAreReadAsByQt) {
  ParseCounts counts;
  const char* const encodings[] = {"UTF-16", "UTF-16BE", "UTF-16LE", "UTF-32", "UTF-32BE", "UTF-32LE"};
  const char* const declared[] = {"",         "utf-8",  "utf-16",       "UTF-16BE",
                                  "UTF-16LE", "utf-32", "windows-1251", "KOI8-R"};
  const int rounds = checkRandomInputs("wide_encodings", randomRounds(3000), [&](Dice& dice) {
    const QByteArray encoding = dice.pick(declared);
    QString text = encoding.isEmpty() ? "" : "<?xml version='1.0' encoding='" + encoding + "'?>";
    text += QString::fromUtf8("<r a='Я中\U0001f600'>t&#x42f;</r>");
    std::string bytes = encoded(text, dice.pick(encodings)).toStdString();
    const auto anywhere = [&] { return static_cast<std::size_t>(dice.roll(static_cast<int>(bytes.size()))); };
    for (int mutations = dice.roll(3); mutations > 0; --mutations) {
      const std::size_t at = anywhere();
      bytes[at] = static_cast<char>(dice.roll(256));
    }
    if (dice.oneIn(3)) bytes.resize(anywhere());
    return comparedAnswer(QByteArray::fromStdString(bytes), counts, qtHasIcu());
  });
  EXPECT_GT(counts.accepted, rounds / 30);
  EXPECT_GT(counts.illFormed, rounds / 30);
}

}  // namespace
