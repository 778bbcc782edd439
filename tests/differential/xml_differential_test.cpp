#include <gtest/gtest.h>
#include <algorithm>
#include <QDomDocument>
#include <QTextStream>
#include <string>
#include <vector>

#include "core/vocabulary.h"
#include "dice.h"
#include "qt_parser_comparison.h"
#include "xml/byte_sink.h"
#include "xml/dom_backend.h"
#include "xml/tree_of_xml.h"

// XML text against the calls of Qt 5.15 that define it; recorded_answers.h describes how a build with another
// Qt is tested. Where the library deliberately differs from Qt (order of
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
  checkRandomInputs("saved_elements", 4000, [](Dice& dice) {
    RandomElement root = randomElement(dice, 4);
    root.textPieces.clear();
    const std::string bytes = throughBytes(root);
    if (qtIsTheReference) {
      EXPECT_EQ(bytes, sorted(throughTree(root)));
    }
    return bytes;
  });
}

TEST(XmlDifferential, BytesOfASingleAttributeAreThoseOfQt) {
  checkRandomInputs("saved_attributes", 20000, [](Dice& dice) {
    const RandomElement root{"r", {{"a", randomText(dice, 60)}}, {}, {}};
    const std::string bytes = throughBytes(root);
    if (qtIsTheReference) {
      EXPECT_EQ(bytes, throughTree(root));
    }
    return bytes;
  });
}

TEST(XmlDifferential, EveryCharacterIsWrittenAsByQt) {
  checkEveryUnit("saved_characters", [](int code) {
    const bool isHighSurrogate = code >= 0xd800 && code <= 0xdbff;
    const bool isUndefined = code == 0x98;  // undefined in windows-1251; builds of Qt differ
    const RandomElement root{"r", {{"a", QString(QChar(code)) + 'x'}}, {}, {}};
    const std::string bytes = throughBytes(root);
    if (qtIsTheReference && code != 0 && !isHighSurrogate && !isUndefined) {
      EXPECT_EQ(bytes, throughTree(root));
    }
    return bytes;
  });
}

TEST(XmlDifferential, AnyValueSurvivesWritingAndReading) {
  Dice dice(randomSeed());
  for (int i = 0; i < 20000; ++i) {
    const QString value = randomAnything(dice);
    QDomDocument tree;
    const std::string bytes = throughBytes({"r", {{"a", value}}, {}, {}});
    ASSERT_TRUE(xml_tree::parseXml(QByteArray::fromStdString(bytes), tree).parsed) << bytes;
    ASSERT_TRUE(tree.documentElement().attribute("a") == value) << bytes;
    const std::string printed = ztcad::printXml(ztcad::XmlText(bytes, ztcad::XmlBytes::AsDeclared), 1);
    ASSERT_TRUE(xml_tree::parseXml(QString::fromStdString(printed), tree).parsed) << printed;
    ASSERT_TRUE(tree.documentElement().attribute("a") == value) << bytes;
  }
}

// -------------------------------------------------------------------------------------------------- printing

/// A random document as text. Names are ASCII.
class RandomDocument {
 public:
  RandomDocument(Dice& dice, const char* encoding) : m_dice(dice) {
    if (encoding) text += QString("<?xml version='1.0' encoding='%1'?>").arg(encoding);
    addMisc();
    addElement(4);
    addMisc();
  }

  QString text;

 private:
  void addMisc() {
    for (int i = m_dice.roll(3); i > 0; --i)
      m_dice.oneIn(2) ? addComment() : addInstruction();
  }

  void addElement(int depth) {
    const QString tag = randomName(m_dice);
    text += '<' + tag;
    for (int i = m_dice.roll(4); i > 0; --i) {
      text += ' ' + randomName(m_dice) + "=\"";
      addEscaped();
      text += '"';
    }
    text += '>';
    for (int i = m_dice.roll(7); i > 0; --i)
      addChild(depth);
    text += "</" + tag + '>';
  }

  void addChild(int depth) {
    switch (m_dice.roll(depth > 0 ? 7 : 5)) {
      case 0:
        addEscaped();
        break;
      case 1:
        text += "<![CDATA[" + anyText().remove("]]>") + "]]>";
        break;
      case 2:
        addComment();
        break;
      case 3:
        addInstruction();
        break;
      case 4:
        text += '&' + randomName(m_dice) + ';';
        break;
      default:
        addElement(depth - 1);
        break;
    }
  }

  // Qt writes an unpaired surrogate as a question mark in UTF-8
  QString anyText() { return randomText(m_dice).remove(QChar(0xdc00)).remove(QChar(0xdfff)); }

  void addEscaped() {
    for (const QChar unit : anyText()) {
      const bool isSpecial = QString("<&>\"\t\n\r").contains(unit);
      text += isSpecial ? QString("&#%1;").arg(unit.unicode()) : QString(unit);
    }
  }
  void addComment() { text += "<!--" + anyText().replace("-", "- ") + "-->"; }
  void addInstruction() {
    const QString target = randomName(m_dice);
    text += "<?" + target + ' ' + anyText().remove("?>") + "?>";
  }

  Dice& m_dice;
};

/// What Qt prints; nothing for an ill-formed text.
std::string printedByQt(const QString& xml, int indent) {
  QDomDocument document;
  return document.setContent(xml) ? sorted(document.toString(indent).toUtf8().toStdString()) : std::string();
}

TEST(XmlDifferential, PrintsWhatQtPrints) {
  int compared = 0;
  const int rounds = checkRandomInputs("printed", 5000, [&](Dice& dice) {
    const char* const encodings[] = {nullptr,  "windows-1251", "UTF-8",         "KOI8-R", "ISO-8859-1",
                                     "cp1251", "GB18030",      "no-such-thing", "",       "US-ASCII"};
    const char* const encoding = dice.pick(encodings);
    const QString xml = RandomDocument(dice, encoding).text;
    const int indent = dice.roll(4);
    QDomDocument tree;
    if (!xml_tree::parseXml(xml, tree).parsed) return std::string();
    ++compared;
    const std::string printed = xml_tree::printXml(text(xml), indent);
    const bool qtKnows = qtIsTheReference && (qtHasIcu() || encoding != encodings[9]);
    if (qtKnows) {
      EXPECT_EQ(printed, printedByQt(xml, indent));
    }
    return printed;
  });
  EXPECT_GT(compared, rounds / 2);
}

}  // namespace
