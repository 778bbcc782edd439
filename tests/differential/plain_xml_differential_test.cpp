#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <string>
#include <vector>

#include "mutated_xml.h"
#include "plain_xml_comparison.h"
#include "random_seed.h"

// The plain XML reader against the tree that Qt builds from the same bytes.

namespace {

/// Whether the plain reader accepted the bytes. A difference from the tree fails the test.
bool isPlainAndMatchesTree(const QByteArray& bytes) {
  const PlainXmlComparison comparison =
      compareWithTree({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  EXPECT_TRUE(comparison.differences.isEmpty())
      << comparison.differences.join('\n').toStdString()
      << "\nbytes: " << bytes.toPercentEncoding(" <>&;'\"=!?/[]").toStdString();
  return comparison.isPlain;
}

QByteArray readFile(const QString& fileName) {
  QFile file(fileName);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << fileName.toStdString();
  return file.readAll();
}

std::vector<QByteArray> seedTexts() {
  std::vector<QByteArray> texts = {
      "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n   <header majorVersion=\"1\"/>\n"
      "   <point center=\"1, 2, 3\" name='\xcf\xf0\xe8\xec\xe5\xf0'/>\n   <line><vertices>1,2,3</vertices></line>\n</GMD>\n",
      "<?xml version='1.0' standalone='yes'?><!-- c - d --><r a='&lt;&amp;&gt;&quot;&apos;&#65;&#x1f600;' b=\"]]>\">\r\n"
      "<x\ta='1'\n a='2' /> <!----> <y.z-1 _='\xd0\xaf'>1, 2; \r\n</y.z-1>t</r><!--end--> ",
      "<r><a/><b>1;2,3;4, 5, 6;</b></r>"};
  const QDir folder(ZTCAD_TEST_GOLDEN_FOLDER);
  for (const QString& name : folder.entryList({"*.xml"}, QDir::Files, QDir::Name)) {
    const QByteArray text = readFile(folder.filePath(name));
    if (text.size() < 20000) texts.push_back(text);
  }
  return texts;
}

TEST(PlainXmlDifferential, WholeDocumentsMatchTheTree) {
  int plain = 0;
  const std::vector<QByteArray> texts = seedTexts();
  for (const QByteArray& text : texts)
    plain += isPlainAndMatchesTree(text) ? 1 : 0;
  EXPECT_GT(plain, 40) << "documents as programs write them should be plain";
}

TEST(PlainXmlDifferential, MutatedDocumentsMatchTheTree) {
  Dice dice(randomSeed());
  const std::vector<QByteArray> texts = seedTexts();
  const int rounds = randomRounds(20000);
  int plain = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFailure(); ++i) {
    std::string bytes = dice.pick(texts).toStdString();
    for (int mutations = dice.roll(3); mutations >= 0; --mutations)
      mutate(bytes, dice);
    plain += isPlainAndMatchesTree(QByteArray::fromStdString(bytes)) ? 1 : 0;
  }
  EXPECT_GT(plain, rounds / 100);
}

TEST(PlainXmlDifferential, EveryByteAtEveryPositionMatchesTheTree) {
  const QByteArray text = "<?xml version='1.0'?><r a='1'>2<!--c--></r>";
  const QByteArray inWindows1251 = "<?xml version='1.0' encoding='windows-1251'?><r a='1'>2</r>";
  for (const QByteArray& original : {text, inWindows1251}) {
    for (int at = 0; at < original.size(); ++at) {
      for (int byte = 0; byte < 256; ++byte) {
        QByteArray replaced = original;
        replaced[at] = static_cast<char>(byte);
        isPlainAndMatchesTree(replaced);
        QByteArray inserted = original;
        inserted.insert(at, static_cast<char>(byte));
        isPlainAndMatchesTree(inserted);
      }
    }
  }
}

}  // namespace
