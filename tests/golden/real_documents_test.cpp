#include <gtest/gtest.h>
#include <algorithm>
#include <QDomDocument>
#include <QFileInfo>
#include <QList>
#include <QMap>
#include <QRegularExpression>
#include <string>

#include "api/host.h"

// Documents of real parts. They are too large to lie here; where their folder is absent these tests pass over.

namespace {

struct Row {
  const char* file;
  const char* inform;
  std::size_t points;  ///< on the top level; those of structures and details are not counted
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.file; }

class RealDocument : public testing::TestWithParam<Row> {
 protected:
  void SetUp() override {
    if (!QFileInfo::exists(QString::fromStdString(path)))
      GTEST_SKIP() << path << " is not there; the CMake variable ZTCAD_REAL_DOCUMENTS names the folder";
  }
  const std::string path = std::string(ZTCAD_TEST_REAL_DOCUMENTS) + '/' + GetParam().file;
};

TEST_P(RealDocument, LoadsWithItsHeaderAndItsPoints) {
  const Loaded loaded = loadFile(path);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  EXPECT_EQ(loaded.document->header().inform(), QString(GetParam().inform));
  EXPECT_EQ(loaded.document->header().majorVersion(), 2u);
  EXPECT_EQ(ztCAD_getPoints(loaded.document.get())->size(), GetParam().points);
  EXPECT_TRUE(ztCAD_getTmplPoints(loaded.document.get())->empty());
}

TEST_P(RealDocument, IsSavedToBytesThatLoadAndSaveTheSame) {
  const std::string saved = savedBytes(loadFile(path).document.get());
  const TemporaryFiles files;
  const Loaded again = loadFile(files.put("saved.xml", saved));
  EXPECT_EQ(again.code, 0);
  EXPECT_EQ(savedBytes(again.document.get()), saved);
}

TEST_P(RealDocument, TreeHoldsEveryElementOfTheFile) {
  const Loaded loaded = loadFile(path);
  const std::string text = bytesOf(path);
  const std::string tree = textOf(loaded.document.get(), false);
  const auto count = [](const std::string& in, const std::string& what) {
    std::size_t found = 0;
    for (std::size_t at = in.find(what); at != std::string::npos; at = in.find(what, at + 1))
      ++found;
    return found;
  };
  for (const char* tag :
       {"<header ", "<structure ", "<detail ", "<solid ", "<vertices>", "<faces>", "<point "})
    EXPECT_EQ(count(tree, tag), count(text, tag)) << tag;
}

QDomDocument treeOf(const std::string& bytes) {
  QDomDocument tree;
  EXPECT_TRUE(tree.setContent(QByteArray::fromStdString(bytes)));
  return tree;
}

QString pathTo(const QDomElement& element) {
  const QDomElement parent = element.parentNode().toElement();
  return (parent.isNull() ? QString() : pathTo(parent) + '/') + element.tagName() + '[' +
         element.attribute("name") + ']';
}

/// Whether two words tell the same, numbers to the six digits that a file carries; "-0" counts as "0".
bool isSameWord(const QString& before, const QString& after) {
  if (before == after) return true;
  bool isNumber = false;
  const double number = before.toDouble(&isNumber);
  return isNumber && after == QString("%1").arg(number, 0, 'g', -1, ' ');
}

/// Splits at commas, semicolons and white space, and drops what is empty.
QStringList wordsOf(const QString& text) {
  return text.split(QRegularExpression("[,;\\s]+"), Qt::SkipEmptyParts);
}

void expectSameText(const QString& before, const QString& after, const QString& where) {
  const QStringList old = wordsOf(before);
  const QStringList now = wordsOf(after);
  ASSERT_EQ(old.size(), now.size()) << where.toStdString();
  for (int i = 0; i < old.size(); ++i)
    ASSERT_TRUE(isSameWord(old[i], now[i]))
        << where.toStdString() << ": " << old[i].toStdString() << " became " << now[i].toStdString();
}

/// What a save may leave out: the producer is written but never read, for the next writer is another one.
bool mayGo(const QString& tag, const QString& attribute) {
  return tag == "header" && attribute.startsWith("producer");
}

/// What a save adds, each to be justified here: none of these documents needs one, for they carry "color", "comment" and
/// "inform" (which are always written), structures carry "LCS", and points, solids and mass-inertia elements "method".
QStringList added(const QDomElement& before, const QDomElement& after) {
  QStringList names;
  const QDomNamedNodeMap attributes = after.attributes();
  for (int i = 0; i < attributes.count(); ++i)
    if (!before.hasAttribute(attributes.item(i).nodeName())) names += attributes.item(i).nodeName();
  return names;
}

void expectSameAttributes(const QDomElement& before, const QDomElement& after) {
  const QString where = pathTo(before);
  const QDomNamedNodeMap attributes = before.attributes();
  for (int i = 0; i < attributes.count(); ++i) {
    const QString name = attributes.item(i).nodeName();
    if (mayGo(before.tagName(), name)) {
      EXPECT_FALSE(after.hasAttribute(name)) << where.toStdString() << " " << name.toStdString();
      continue;
    }
    ASSERT_TRUE(after.hasAttribute(name)) << where.toStdString() << " " << name.toStdString();
    expectSameText(before.attribute(name), after.attribute(name), where + ' ' + name);
  }
  EXPECT_EQ(added(before, after), QStringList()) << where.toStdString();
}

/// Children of an element, one list per kind: a file holds the kinds in an order of its own, and keeps the order within
/// each.
QMap<QString, QList<QDomElement>> childrenByKind(const QDomElement& element) {
  QMap<QString, QList<QDomElement>> kinds;
  for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
    kinds[child.tagName() == "solid" ? "solid " + child.attribute("method") : child.tagName()] += child;
  return kinds;
}

int compare(const QDomElement& before, const QDomElement& after) {
  int elements = 1;
  EXPECT_EQ(before.tagName(), after.tagName());
  expectSameAttributes(before, after);
  const auto old = childrenByKind(before);
  const auto now = childrenByKind(after);
  EXPECT_EQ(old.keys(), now.keys()) << pathTo(before).toStdString();
  if (old.isEmpty()) expectSameText(before.text(), after.text(), pathTo(before));
  for (const QString& kind : old.keys()) {
    const auto& ours = old[kind];
    const auto theirs = now.value(kind);
    EXPECT_EQ(ours.size(), theirs.size()) << pathTo(before).toStdString() << " " << kind.toStdString();
    for (int i = 0; i < std::min(ours.size(), theirs.size()); ++i)
      elements += compare(ours[i], theirs[i]);
  }
  return elements;
}

int elementsIn(const QDomElement& element) {
  int elements = 1;
  for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
    elements += elementsIn(child);
  return elements;
}

TEST_P(RealDocument, ComesBackFromARoundTripWithNothingLost) {
  const QDomDocument before = treeOf(bytesOf(path));
  const QDomDocument after = treeOf(savedBytes(loadFile(path).document.get()));
  EXPECT_EQ(compare(before.documentElement(), after.documentElement()), elementsIn(before.documentElement()));
}

TEST(RealDocuments, RobotArmKeepsItsDetailsAndTheirMasses) {
  const std::string path = std::string(ZTCAD_TEST_REAL_DOCUMENTS) + "/panda.xml";
  if (!QFileInfo::exists(QString::fromStdString(path))) GTEST_SKIP() << path << " is not there";
  const Loaded first = loadFile(path);
  const TemporaryFiles files;
  const Loaded again = loadFile(files.put("saved.xml", savedBytes(first.document.get())));
  for (const Loaded* loaded : {&first, &again}) {
    ASSERT_EQ(ztCAD_getStructures(loaded->document.get())->size(), 1u);
    const auto& content = ztCAD_getStructures(loaded->document.get())->front().content();
    EXPECT_EQ(namesIn(&content.details),
              (Names{"panda_link0", "panda_link1", "panda_link2", "panda_link3", "panda_link4", "panda_link5",
                     "panda_link6", "panda_link7", "panda_hand"}));
    EXPECT_EQ(content.points.size(), 12u);
    EXPECT_EQ(content.mipElements.size(), 4u);
    std::vector<double> masses;
    for (const ztCAD_Detail& detail : content.details) {
      EXPECT_TRUE(detail.passesCheck()) << detail.name().toStdString();
      ASSERT_TRUE(detail.mip()) << detail.name().toStdString();
      masses.push_back(detail.mip()->values().front());
      EXPECT_EQ(detail.content().triangles.size(), 1u) << detail.name().toStdString();
    }
    EXPECT_EQ(masses, (std::vector<double>{0.629769, 4.97068, 0.646926, 3.2286, 3.5879, 1.22595, 1.66656,
                                           0.735522, 0.73}));
    EXPECT_EQ(content.details.front().mip()->values(),
              (std::vector<double>{0.629769, -0.041018, -0.00014, 0.049974, 0.00315, 0.00388, 0.004285,
                                   8.2904e-07, 0.00015, 8.2299e-06}));
  }
}

INSTANTIATE_TEST_SUITE_P(Files, RealDocument,
                         testing::Values(Row{"panda.xml", "panda", 0}, Row{"fandisk.xml", "fandisk", 0},
                                         Row{"rocker-arm.xml", "rocker-arm", 0}),
                         [](const auto& row) {
                           std::string name = row.param.inform;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
