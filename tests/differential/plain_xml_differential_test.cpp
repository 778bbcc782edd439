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
      "<r><a/><b>1;2,3;4, 5, 6;</b></r>",
      "<?xml version='1.0'?><?a?><r><?b c?><a/><?d e = \"f\" <g> -- ]]> ?>\r\n<b>1</b><?h\t\xd0\xaf ?></r><?i \n?>"};
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
  const QByteArray instructions = "<?b?><r><?b c ?><a/></r><?d?>";
  const QByteArray inWindows1251 = "<?xml version='1.0' encoding='windows-1251'?><r a='1'>2</r>";
  for (const QByteArray& original : {text, instructions, inWindows1251}) {
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

struct InstructionRow {
  const char* xml;
  bool isPlain;  // at every place
};

const InstructionRow instructionRows[] = {
    {"<?a?>", true},
    {"<?a ?>", true},
    {"<?a  \t\n?>", true},
    {"<?a b?>", true},
    {"<?a\tb?>", true},
    {"<?a\r\nb\r?>", true},
    {"<?_?>", true},
    {"<?a.b-c_1 d?>", true},
    {"<?xm b?>", true},
    {"<?axml b?>", true},
    {"<?a \xd0\xaf?>", true},
    {"<?a &lt;&x;&?>", true},
    {"<?a <b></c>?>", true},
    {"<?a <!-- ?>", true},
    {"<?a <?b ?>", false},
    {"<?a ]]> -- > /> '\"?>", true},
    {"<?a <?xml version='1.0' ?>", false},
    {"<?\?>", false},
    {"<? ?>", false},
    {"<? a?>", false},
    {"<?a", false},
    {"<?a?", false},
    {"<?a b", false},
    {"<?a>", false},
    {"<?a b>", false},
    {"<?a? >", false},
    {"<?a b? >", false},
    {"<?a ? >?>", false},
    {"<?a?\?>", false},
    {"<?a ?\?>", false},
    {"<?a b?\?>", false},
    {"<?a ?b?>", false},
    {"<?xml?>", false},
    {"<?xml ?>", false},
    {"<?xml version='1.0'?>", false},
    {"<?XML version='1.0'?>", false},
    {"<?xMl b?>", false},
    {"<?xml-stylesheet a?>", false},
    {"<?xmls b?>", false},
    {"<?a:b c?>", false},
    {"<?1a b?>", false},
    {"<?-a b?>", false},
    {"<?.a b?>", false},
    {"<?a(b)?>", false},
    {"<?a/?>", false},
    {"<?a=b?>", false},
    {"<?\xd1\x8f b?>", false},
    {"<?a\xd1\x8f b?>", false},
    {"<?a \x01?>", false},
    {"<?a \x7f?>", true},
    {"<?a \xff?>", false},
    {"<?a \xd0?>", false},
    {"<?a \xef\xbf\xbf?>", false},
};

TEST(PlainXmlDifferential, InstructionsAreReadOrRefusedWhereverTheyStand) {
  const char* const places[] = {"%1<r/>",
                                "\xef\xbb\xbf%1<r/>",
                                "\n%1<r/>",
                                "<?xml version='1.0'?>%1<r/>",
                                "<!--c-->%1<!--c--><r/>",
                                "<r>%1</r>",
                                "<r>%1<a x='1'/><a x='2'/></r>",
                                "<r><a x='1'/>%1<a x='2'/></r>",
                                "<r><a x='1'/><a x='2'/>\n%1\n</r>",
                                "<r/>%1",
                                "<r/>\n%1\n",
                                "<r/>%1%1"};
  for (const char* const place : places) {
    for (const InstructionRow& row : instructionRows) {
      const QByteArray bytes = QByteArray(place).replace("%1", row.xml);
      // at the start it is the declaration
      const bool isDeclaration =
          bytes.startsWith("<?xml version='1.0'?><r") || bytes.startsWith("\xef\xbb\xbf<?xml version");
      EXPECT_EQ(isPlainAndMatchesTree(bytes), row.isPlain || isDeclaration) << bytes.toStdString();
    }
  }
}

TEST(PlainXmlDifferential, InstructionsInTextMatchTheTree) {
  for (const InstructionRow& row : instructionRows)
    for (const char* const place :
         {"<r>1%1</r>", "<r>%11</r>", "<r><a>1%1,2</a></r>", "<r><a>%1</a>t</r>", "<r a='%1'/>"})
      isPlainAndMatchesTree(QByteArray(place).replace("%1", row.xml));
}

}  // namespace
