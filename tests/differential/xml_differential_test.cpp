#include <gtest/gtest.h>
#include <algorithm>
#include <functional>
#include <QBuffer>
#include <QDomDocument>
#include <QRegularExpression>
#include <QTextCodec>
#include <QTextStream>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>
#include <string>
#include <vector>

#include "core/vocabulary.h"
#include "dice.h"
#include "mutated_xml.h"
#include "random_seed.h"
#include "xml/byte_sink.h"
#include "xml/dom_backend.h"
#include "xml/xml_parse.h"
#include "xml/xml_print.h"

// XML text against the Qt calls that define it. Where the library deliberately differs from Qt (order of
// attributes, characters beyond U+FFFF, hostile input), a comment states how the comparison allows for it.

namespace {

std::string text(const QString& text) { return text.toStdString(); }

// ----------------------------------------------------------------------------------------- attributes sorted

/// XML text with the attributes of each start tag sorted by name, for comparing texts of two writers. Names
/// must be ASCII; comments, CDATA sections and instructions must not contain their own terminators.
class SortedAttributes {
 public:
  explicit SortedAttributes(const std::string& xml) : m_xml(xml) {
    while (m_at < m_xml.size())
      step();
  }
  const std::string& result() const { return m_result; }

 private:
  void step() {
    if (copied("<!--", "-->") || copied("<![CDATA[", "]]>") || copied("<?", "?>") || copied("</", ">") ||
        copied("<!DOCTYPE", ">\n"))
      return;
    if (m_xml[m_at] == '<') return copyTag();
    m_result += m_xml[m_at++];
  }

  bool copied(const std::string& opening, const std::string& closing) {
    if (m_xml.compare(m_at, opening.size(), opening) != 0) return false;
    copyUpTo(m_xml.find(closing, m_at + opening.size()) + closing.size());
    return true;
  }

  void copyUpTo(std::size_t end) {
    m_result += m_xml.substr(m_at, end - m_at);
    m_at = end;
  }

  void copyTag() {
    copyUpTo(m_xml.find_first_of(" />", m_at));
    std::vector<std::string> attributes;
    while (m_xml[m_at] == ' ') {
      const std::size_t value = m_xml.find('"', m_at);
      const std::size_t end = m_xml.find('"', value + 1) + 1;
      attributes.push_back(m_xml.substr(m_at, end - m_at));
      m_at = end;
    }
    std::sort(attributes.begin(), attributes.end(), [](const std::string& a, const std::string& b) {
      return a.substr(0, a.find('=')) < b.substr(0, b.find('='));
    });
    for (const std::string& attribute : attributes)
      m_result += attribute;
    copyUpTo(m_xml.find('>', m_at) + 1);
  }

  const std::string& m_xml;
  std::size_t m_at = 0;
  std::string m_result;
};

std::string sorted(const std::string& xml) { return SortedAttributes(xml).result(); }

// --------------------------------------------------------------------------------------------- hostile texts

// U+0000 and high surrogates, which the library deliberately writes differently from Qt, occur in
// randomAnything only
const ushort oddUnits[] = {'<',    '>',    '&',    '"',    '\'',   ']',    ']',    '>',    '\t',
                           '\n',   '\r',   ' ',    0x01,   0x1f,   0x7f,   0x80,   0xa0,   0xe9,
                           0x401,  0x42f,  0x451,  0x44f,  0x490,  0x2116, 0x20ac, 0x4e2d, 0xac00,
                           0xdc00, 0xdfff, 0xe000, 0xfeff, 0xfffd, ';',    '#',    '-'};

QString randomText(Dice& dice, int maximalLength = 20) {
  QString result;
  for (int i = dice.roll(maximalLength + 1); i > 0; --i) {
    if (dice.oneIn(10)) result += "]]>";
    result += dice.oneIn(2) ? QChar(dice.pick(oddUnits)) : QChar('a' + dice.roll(26));
  }
  return result;
}

/// Any UTF-16 code units, including unpaired surrogates, surrogate pairs and units that end a parse.
QString randomAnything(Dice& dice) {
  const ushort worst[] = {0, 0xd800, 0xd83d, 0xdbff, 0xdc00, 0xde00, 0xdfff, 0xfffe, 0xffff};
  QString result;
  for (int i = dice.roll(20); i > 0; --i) {
    const int kind = dice.roll(4);
    if (kind == 0) result += QChar(dice.pick(worst));
    if (kind == 1) result += QString::fromUtf8("\U0001f600");
    if (kind == 2) result += QChar(dice.roll(0x10000));
    if (kind == 3) result += randomText(dice, 3);
  }
  return result;
}

QString randomName(Dice& dice) {
  static const char* const names[] = {"a", "b", "aa", "A", "name", "x1", "x-2", "_", "very.long", "ns"};
  return dice.pick(names);
}

// ---------------------------------------------------------------------------------- bytes against a DOM tree

struct RandomElement {
  QString tag;
  std::vector<std::pair<QString, QString>> attributes;  // names may repeat
  std::vector<std::string> textPieces;
  std::vector<RandomElement> children;
};

RandomElement randomElement(Dice& dice, int depth) {
  RandomElement element;
  element.tag = randomName(dice);
  for (int i = dice.roll(5); i > 0; --i)
    element.attributes.emplace_back(randomName(dice), randomText(dice));
  if (depth > 0 && dice.oneIn(2)) {
    for (int i = dice.roll(5); i > 0; --i)
      element.children.push_back(randomElement(dice, depth - 1));
  } else {
    for (int i = dice.roll(4); i > 0; --i)
      element.textPieces.emplace_back(dice.oneIn(3) ? "" : "1.5, -2e+10, ");
  }
  return element;
}

void write(const RandomElement& element, ztcad::ElementSink& sink) {
  for (const auto& [name, value] : element.attributes)
    sink.attribute(name, value);
  for (const std::string& piece : element.textPieces)
    sink.text(piece);
  for (const RandomElement& child : element.children)
    sink.element(child.tag, [&](ztcad::ElementSink& inner) { write(child, inner); });
}

class Bytes final : public ztcad::ByteOutput {
 public:
  void write(std::string_view bytes) override { all += bytes; }
  std::string all;
};

std::string throughBytes(const RandomElement& root) {
  Bytes bytes;
  const ztcad::Windows1251Encoder encoder;
  ztcad::XmlWriter writer(bytes, encoder, 3);
  writer.processingInstruction(ztcad::words().xml, ztcad::words().xmlDeclaration);
  ztcad::ByteSink sink(writer);
  sink.element(root.tag, [&](ztcad::ElementSink& inner) { write(root, inner); });
  writer.finish();
  return bytes.all;
}

std::string throughTree(const RandomElement& root) {
  QDomDocument document;
  document.appendChild(
      document.createProcessingInstruction(ztcad::words().xml, ztcad::words().xmlDeclaration));
  const QDomElement element = document.appendChild(document.createElement(root.tag)).toElement();
  ztcad::DomSink sink(element, document);
  // the sink adds an element's text when it closes the element, but it never opens or closes the root
  RandomElement content = root;
  content.textPieces.clear();
  write(content, sink);
  QByteArray bytes;
  QTextStream stream(&bytes);
  document.save(stream, 3);
  stream.flush();
  return bytes.toStdString();
}

TEST(XmlDifferential, BytesAreThoseThatQtSaves) {
  Dice dice(randomSeed());
  for (int i = 0; i < 4000; ++i) {
    RandomElement root = randomElement(dice, 4);
    root.textPieces.clear();
    ASSERT_EQ(throughBytes(root), sorted(throughTree(root))) << i;
  }
}

TEST(XmlDifferential, BytesOfASingleAttributeAreThoseOfQt) {
  Dice dice(randomSeed());
  for (int i = 0; i < 20000; ++i) {
    const RandomElement root{"r", {{"a", randomText(dice, 60)}}, {}, {}};
    ASSERT_EQ(throughBytes(root), throughTree(root)) << i;
  }
}

TEST(XmlDifferential, EveryCharacterIsWrittenAsByQt) {
  QString all;
  for (uint code = 1; code < 0x10000; ++code) {
    const bool isHighSurrogate = code >= 0xd800 && code <= 0xdbff;
    const bool isUndefined = code == 0x98;  // undefined in windows-1251; builds of Qt differ
    if (!isHighSurrogate && !isUndefined) all += QChar(code);
  }
  const RandomElement root{"r", {{"a", all}}, {}, {}};
  EXPECT_TRUE(throughBytes(root) == throughTree(root));
}

TEST(XmlDifferential, AnyValueSurvivesWritingAndReading) {
  Dice dice(randomSeed());
  for (int i = 0; i < 20000; ++i) {
    const QString value = randomAnything(dice);
    QDomDocument tree;
    const std::string bytes = throughBytes({"r", {{"a", value}}, {}, {}});
    ASSERT_TRUE(ztcad::parseXml(QByteArray::fromStdString(bytes), tree).parsed) << bytes;
    ASSERT_TRUE(tree.documentElement().attribute("a") == value) << bytes;
    ASSERT_TRUE(ztcad::parseXml(QString::fromStdString(ztcad::printXml(tree, 1)), tree).parsed) << bytes;
    ASSERT_TRUE(tree.documentElement().attribute("a") == value) << bytes;
  }
}

// -------------------------------------------------------------------------------------------------- printing

class RandomTree {
 public:
  RandomTree(Dice& dice, const QString& encoding) : m_dice(dice) {
    if (!encoding.isNull()) {
      const QString data = QString("version='1.0' encoding='%1'").arg(encoding);
      document.appendChild(document.createProcessingInstruction("xml", data));
    }
    addMisc();
    fill(document.appendChild(document.createElement(randomName(dice))), 4);
    addMisc();
  }

  QDomDocument document;

 private:
  void addMisc() {
    for (int i = m_dice.roll(3); i > 0; --i)
      document.appendChild(m_dice.oneIn(2) ? QDomNode(comment()) : QDomNode(instruction()));
  }

  void fill(const QDomNode& node, int depth) {
    QDomElement element = node.toElement();
    for (int i = m_dice.roll(4); i > 0; --i)
      element.setAttribute(randomName(m_dice), anyText());
    for (int i = m_dice.roll(7); i > 0; --i)
      addChild(element, depth);
  }

  void addChild(QDomElement& element, int depth) {
    switch (m_dice.roll(depth > 0 ? 7 : 5)) {
      case 0:
        element.appendChild(document.createTextNode(anyText()));
        break;
      case 1:
        element.appendChild(document.createCDATASection(anyText().remove("]]>")));
        break;
      case 2:
        element.appendChild(comment());
        break;
      case 3:
        element.appendChild(instruction());
        break;
      case 4:
        element.appendChild(document.createEntityReference(randomName(m_dice)));
        break;
      default:
        fill(element.appendChild(document.createElement(randomName(m_dice))), depth - 1);
        break;
    }
  }

  // Qt writes an unpaired surrogate as a question mark in UTF-8
  QString anyText() { return randomText(m_dice).remove(QChar(0xdc00)).remove(QChar(0xdfff)); }
  QDomComment comment() { return document.createComment(anyText().remove("-->")); }
  QDomProcessingInstruction instruction() {
    return document.createProcessingInstruction(randomName(m_dice), anyText().remove("?>"));
  }

  Dice& m_dice;
};

TEST(XmlDifferential, PrintsWhatQtPrints) {
  Dice dice(randomSeed());
  const QString encodings[] = {QString(), "windows-1251", "UTF-8",    "KOI8-R",        "ISO-8859-1",
                               "cp1251",  "GB18030",      "US-ASCII", "no-such-thing", ""};
  for (int i = 0; i < 5000; ++i) {
    const QDomDocument document = RandomTree(dice, dice.pick(encodings)).document;
    const int indent = dice.roll(4);
    const std::string byQt = document.toString(indent).toUtf8().toStdString();
    ASSERT_EQ(ztcad::printXml(document, indent), sorted(byQt)) << i;
  }
}

// --------------------------------------------------------------------------------------------------- parsing

void describe(const QDomNode& node, QString& out) {
  out += QString("(%1 %2 %3 ").arg(node.nodeType()).arg(node.nodeName(), node.nodeValue());
  QStringList attributes;
  for (int i = 0; i < node.attributes().count(); ++i)
    attributes += node.attributes().item(i).nodeName() + '=' + node.attributes().item(i).nodeValue();
  attributes.sort();
  out += attributes.join(' ');
  for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
    describe(child, out);
  out += ')';
}

/// Text form of a tree for comparing two trees; attributes are sorted by name.
std::string described(const QDomDocument& tree) {
  QString result = tree.doctype().name() + tree.doctype().publicId() + tree.doctype().systemId();
  describe(tree, result);
  return text(result);
}

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// Records whether Qt's SAX reader encounters entity declarations or too deep nesting in a text.
class ForbiddenContent final : public QXmlDefaultHandler {
 public:
  explicit ForbiddenContent(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    QXmlInputSource source(&buffer);
    QXmlSimpleReader reader;
    reader.setFeature("http://xml.org/sax/features/namespaces", false);
    reader.setContentHandler(this);
    reader.setDeclHandler(this);
    reader.setDTDHandler(this);
    reader.parse(&source);
  }

  bool declaresEntities = false;
  bool isTooDeep = false;

  bool startElement(const QString&, const QString&, const QString&, const QXmlAttributes&) override {
    isTooDeep = isTooDeep || ++m_depth > ztcad::maximalDepth;
    return !isTooDeep;
  }
  bool endElement(const QString&, const QString&, const QString&) override {
    --m_depth;
    return true;
  }
  bool internalEntityDecl(const QString&, const QString&) override { return !(declaresEntities = true); }
  bool externalEntityDecl(const QString&, const QString&, const QString&) override {
    return !(declaresEntities = true);
  }
  bool unparsedEntityDecl(const QString&, const QString&, const QString&, const QString&) override {
    return !(declaresEntities = true);
  }

 private:
  int m_depth = 0;
};

QT_WARNING_POP

bool mayHoldANul(const QByteArray& bytes) { return bytes.contains('\0'); }

/// Whether there may be a character reference that Qt truncates; the trees then differ on purpose.
bool mayHoldALongReference(const QByteArray& bytes) {
  static const QRegularExpression reference("&#(x[0-9a-fA-F]{5,}|[0-9]{5,});");
  return QString::fromLatin1(bytes).remove(QChar(0)).contains(reference);
}

struct Counts {
  int accepted = 0;
  int illFormed = 0;
  int refused = 0;
};

/// Whether the bytes contain 98 hex, which windows-1251 leaves undefined, and Qt, built without ICU, does not
/// read it.
bool holdsAnUnreadableByte(const QByteArray& bytes) {
  return bytes.contains('\x98') && QTextCodec::codecForName("windows-1251")->toUnicode("\x98") != QChar(0x98);
}

void compareWithQt(const QByteArray& bytes, Counts& counts) {
  const ForbiddenContent forbidden(bytes);
  QDomDocument tree;
  const ztcad::ParseOutcome outcome = ztcad::parseXml(bytes, tree);
  const std::string shown = "bytes: " + bytes.toPercentEncoding(" <>&;'\"=!?/[]").toStdString();
  if (forbidden.declaresEntities || forbidden.isTooDeep) {
    ++counts.refused;
    ASSERT_FALSE(outcome.parsed) << shown;
    ASSERT_TRUE(tree.firstChild().isNull()) << shown;
    return;
  }
  const bool mayBeRefused = mayHoldANul(bytes) || bytes.contains("<!ENTITY");
  QDomDocument byQt;
  QString message;
  int line = 0;
  int column = 0;
  const bool parsedByQt = byQt.setContent(bytes, &message, &line, &column);
  if (mayBeRefused && outcome.message == "NUL character") {
    ++counts.refused;
    return;
  }
  if (mayBeRefused && outcome.message == "entity declaration") {
    ++counts.refused;
    ASSERT_FALSE(parsedByQt) << "Qt's reader encountered no entity declaration in " << shown;
    return;
  }
  ASSERT_EQ(outcome.parsed, parsedByQt) << shown;
  ASSERT_EQ(text(outcome.message), text(message)) << shown;
  ASSERT_EQ(outcome.line, line) << shown;
  ASSERT_EQ(outcome.column, column) << shown;
  ++(outcome.parsed ? counts.accepted : counts.illFormed);
  if (mayHoldALongReference(bytes) || holdsAnUnreadableByte(bytes)) return;
  ASSERT_EQ(described(tree), described(byQt)) << shown;
}

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

TEST(XmlDifferential, MutatedDocumentsAreReadAsQtReadsThem) {
  Dice dice(randomSeed());
  Counts counts;
  const std::vector<QByteArray> seeds = seedTexts();
  for (int i = 0; i < 30000; ++i) {
    QByteArray bytes = dice.pick(seeds);
    for (int mutations = dice.roll(4); mutations >= 0; --mutations)
      mutate(bytes, dice);
    ASSERT_NO_FATAL_FAILURE(compareWithQt(bytes, counts)) << i;
  }
  EXPECT_GT(counts.accepted, 1000);
  EXPECT_GT(counts.illFormed, 1000);
  EXPECT_GT(counts.refused, 1000);
}

TEST(XmlDifferential, RandomFragmentsAreReadAsQtReadsThem) {
  Dice dice(randomSeed());
  Counts counts;
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

TEST(XmlDifferential, TagsAtMaximalDepthAreCountedAsQtCountsThem) {
  Dice dice(randomSeed());
  Counts counts;
  for (int i = 0; i < 1500; ++i) {
    QByteArray bytes = QByteArray("<a>").repeated(ztcad::maximalDepth - 3);
    for (int pieces = dice.roll(16); pieces > 0; --pieces)
      bytes += dice.oneIn(20) ? dice.pick(badTags) : dice.pick(goodTags);
    ASSERT_NO_FATAL_FAILURE(compareWithQt(bytes, counts)) << i;
  }
  EXPECT_GT(counts.illFormed, 100);
  EXPECT_GT(counts.refused, 100);
}

TEST(XmlDifferential, LongReferencesAreReadAsTheirCharacters) {
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
    ASSERT_TRUE(ztcad::parseXml(withReferences + "</r>", tree).parsed);
    ASSERT_TRUE(byQt.setContent(withCharacters + "</r>"));
    ASSERT_EQ(described(tree), described(byQt)) << text(withReferences);
  }
}

}  // namespace
