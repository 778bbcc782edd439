#include <gtest/gtest.h>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <string>
#include <vector>

#include "xml/dom_backend.h"
#include "xml/plain_xml.h"
#include "xml/xml_parse.h"
#include "mutated_xml.h"
#include "random_seed.h"

// The reader of plain XML beside the tree that Qt makes of the same bytes. It may give up whenever it likes; what it
// takes, Qt has to take too, and both have to show the same elements, attributes and texts.

namespace {

using ztcad::ElementView;

/// What a carrier shows. The plain reader cannot tell beforehand whether an element holds children or text, so the tree
/// is told first and its way is followed.
class Told {
 public:
  void tell(const ElementView& element, const QDomElement& guide) {
    text += '<' + element.tag().toStdString();
    for (const QString& name : namesToAskFor(guide)) {
      const auto value = element.attribute(name);
      EXPECT_EQ(element.hasAttribute(name), value.has_value());
      const auto asText = element.attributeText(name);
      EXPECT_EQ(asText.has_value(), value.has_value());
      if (!value) continue;
      EXPECT_EQ(asText->toString(), *value);
      text += ' ' + name.toStdString() + '=' + value->toStdString();
    }
    text += '>';
    if (guide.firstChildElement().isNull()) {
      QString inside = element.text().toString();
      // between the numbers of a list every blank is as good as any other
      text += inside.replace("\r\n", "\n").replace('\r', '\n').toStdString();
    } else {
      QDomElement child = guide.firstChildElement();
      element.forEachChild([&](const ElementView& view) {
        tell(view, child);
        child = child.nextSiblingElement();
      });
    }
    text += "</>";
  }

  std::string text;

 private:
  static QStringList namesToAskFor(const QDomElement& guide) {
    QStringList names = {"a", "b", "x", "name", "center", "encoding", "version"};
    for (int i = 0; i < guide.attributes().count(); ++i)
      names += guide.attributes().item(i).nodeName();
    names.sort();
    names.removeDuplicates();
    return names;
  }
};

/// True when the plain reader took the text. Whatever does not agree with the tree is a failure of the test.
bool compareWithTree(const QByteArray& bytes) {
  const std::string shown = "bytes: " + bytes.toPercentEncoding(" <>&;'\"=!?/[]").toStdString();
  const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  if (!ztcad::readPlainXml(view, ztcad::XmlBytes::AsDeclared, [](const ElementView&) {})) return false;

  QDomDocument tree;
  const ztcad::ParseOutcome outcome = ztcad::parseXml(bytes, tree);
  EXPECT_TRUE(outcome.parsed) << outcome.message.toStdString() << ' ' << shown;
  if (!outcome.parsed) return true;
  Told byTree;
  byTree.tell(ztcad::DomView(tree.documentElement()), tree.documentElement());
  Told byBytes;
  const bool isStillPlain =
      ztcad::readPlainXml(view, ztcad::XmlBytes::AsDeclared,
                          [&](const ElementView& root) { byBytes.tell(root, tree.documentElement()); });
  // looking into an element may show more than passing it over: a comment beside a text, say
  if (isStillPlain) {
    EXPECT_EQ(byBytes.text, byTree.text) << shown;
  }
  return true;
}

QByteArray contentOf(const QString& fileName) {
  QFile file(fileName);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << fileName.toStdString();
  return file.readAll();
}

std::vector<QByteArray> startingPoints() {
  std::vector<QByteArray> texts = {
      "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n   <header majorVersion=\"1\"/>\n"
      "   <point center=\"1, 2, 3\" name='\xcf\xf0\xe8\xec\xe5\xf0'/>\n   <line><vertices>1,2,3</vertices></line>\n</GMD>\n",
      "<?xml version='1.0' standalone='yes'?><!-- c - d --><r a='&lt;&amp;&gt;&quot;&apos;&#65;&#x1f600;' b=\"]]>\">\r\n"
      "<x\ta='1'\n a='2' /> <!----> <y.z-1 _='\xd0\xaf'>1, 2; \r\n</y.z-1>t</r><!--end--> ",
      "<r><a/><b>1;2,3;4, 5, 6;</b></r>"};
  const QDir folder(ZTCAD_TEST_GOLDEN_FOLDER);
  for (const QString& name : folder.entryList({"*.xml"}, QDir::Files, QDir::Name)) {
    const QByteArray text = contentOf(folder.filePath(name));
    if (text.size() < 20000) texts.push_back(text);
  }
  return texts;
}

TEST(PlainXmlDifferential, WholeDocumentsShowTheSame) {
  int plain = 0;
  const std::vector<QByteArray> texts = startingPoints();
  for (const QByteArray& text : texts)
    plain += compareWithTree(text) ? 1 : 0;
  EXPECT_GT(plain, 40) << "most documents that programs write are of the plain kind";
}

TEST(PlainXmlDifferential, MutatedDocumentsShowTheSame) {
  Dice dice(randomSeed());
  const std::vector<QByteArray> texts = startingPoints();
  const int rounds = randomRounds(20000);
  int plain = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    QByteArray bytes = dice.pick(texts);
    for (int mutations = dice.roll(3); mutations >= 0; --mutations)
      mutate(bytes, dice);
    plain += compareWithTree(bytes) ? 1 : 0;
  }
  EXPECT_GT(plain, rounds / 100);
}

TEST(PlainXmlDifferential, EveryByteInEveryPlaceShowsTheSame) {
  const QByteArray text = "<?xml version='1.0'?><r a='1'>2<!--c--></r>";
  const QByteArray inWindows1251 = "<?xml version='1.0' encoding='windows-1251'?><r a='1'>2</r>";
  for (const QByteArray& original : {text, inWindows1251}) {
    for (int at = 0; at < original.size(); ++at) {
      for (int byte = 0; byte < 256; ++byte) {
        QByteArray replaced = original;
        replaced[at] = static_cast<char>(byte);
        compareWithTree(replaced);
        QByteArray inserted = original;
        inserted.insert(at, static_cast<char>(byte));
        compareWithTree(inserted);
      }
    }
  }
}

}  // namespace
