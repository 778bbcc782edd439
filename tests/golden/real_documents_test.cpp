#include <gtest/gtest.h>
#include <algorithm>
#include <QDomDocument>
#include <QFileInfo>
#include <QList>
#include <QMap>
#include <QRegularExpression>
#include <string>

#include "api/host.h"

// Documents of real parts. They are too large for this folder; where theirs is absent, these tests are
// skipped.

namespace {

struct Row {
  const char* file;
  const char* inform;
  std::size_t points;  ///< top-level points; those inside structures and details are not counted
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.file; }

std::string pathOf(const std::string& file) { return std::string(ZTCAD_TEST_REAL_DOCUMENTS) + '/' + file; }

/// Why a test of this document cannot run; empty if it can.
std::string reasonToSkip(const std::string& path) {
  if (QFileInfo::exists(QString::fromStdString(path))) return {};
  return path + " does not exist; set the CMake variable ZTCAD_REAL_DOCUMENTS to the folder of the documents";
}

class RealDocument : public testing::TestWithParam<Row> {
 protected:
  void SetUp() override {
    const std::string reason = reasonToSkip(path);
    if (!reason.empty()) GTEST_SKIP() << reason;
  }
  const std::string path = pathOf(GetParam().file);
};

TEST_P(RealDocument, LoadsWithItsHeaderAndPoints) {
  const Loaded loaded = loadFile(path);
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  EXPECT_EQ(loaded.document->header().inform(), QString(GetParam().inform));
  EXPECT_EQ(loaded.document->header().majorVersion(), 2u);
  EXPECT_EQ(ztCAD_getPoints(loaded.document.get())->size(), GetParam().points);
  EXPECT_TRUE(ztCAD_getTmplPoints(loaded.document.get())->empty());
}

TEST_P(RealDocument, SavedBytesLoadAndSaveToTheSameBytes) {
  const std::string saved = savedBytes(loadFile(path).document.get());
  const TemporaryFiles files;
  const Loaded again = loadFile(files.put("saved.xml", saved));
  EXPECT_EQ(again.code, 0);
  EXPECT_EQ(savedBytes(again.document.get()), saved);
}

TEST_P(RealDocument, XmlTextHoldsEveryElementOfTheFile) {
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

/// Whether two tokens are equal; numbers are compared with the six digits that a file stores, and "-0" equals
/// "0".
bool isSameToken(const QString& before, const QString& after) {
  if (before == after) return true;
  bool isNumber = false;
  const double number = before.toDouble(&isNumber);
  return isNumber && after == QString("%1").arg(number, 0, 'g', -1, ' ');
}

/// Splits at commas, semicolons and whitespace; empty tokens are dropped.
QStringList tokensOf(const QString& text) {
  return text.split(QRegularExpression("[,;\\s]+"), Qt::SkipEmptyParts);
}

void expectSameText(const QString& before, const QString& after, const QString& where) {
  const QStringList old = tokensOf(before);
  const QStringList now = tokensOf(after);
  ASSERT_EQ(old.size(), now.size()) << where.toStdString();
  for (int i = 0; i < old.size(); ++i)
    ASSERT_TRUE(isSameToken(old[i], now[i]))
        << where.toStdString() << ": " << old[i].toStdString() << " became " << now[i].toStdString();
}

/// Attributes that a save may drop: the header's producer is written but not read, because it names the
/// program that wrote the file, and the next writer is another program.
bool mayBeDropped(const QString& tag, const QString& attribute) {
  return tag == "header" && attribute.startsWith("producer");
}

/// Attributes that a save adds. None is expected: these documents already have "color", "comment" and
/// "inform", which are always written, their structures have "LCS", and their points, solids and mass-inertia
/// elements have "method".
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
    if (mayBeDropped(before.tagName(), name)) {
      EXPECT_FALSE(after.hasAttribute(name)) << where.toStdString() << " " << name.toStdString();
      continue;
    }
    ASSERT_TRUE(after.hasAttribute(name)) << where.toStdString() << " " << name.toStdString();
    expectSameText(before.attribute(name), after.attribute(name), where + ' ' + name);
  }
  EXPECT_EQ(added(before, after), QStringList()) << where.toStdString();
}

/// Children of an element, one list per kind: a saved file orders the kinds in its own way and keeps the
/// order within each kind.
QMap<QString, QList<QDomElement>> childrenByKind(const QDomElement& element) {
  QMap<QString, QList<QDomElement>> kinds;
  for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
    kinds[child.tagName() == "solid" ? "solid " + child.attribute("method") : child.tagName()] += child;
  return kinds;
}

/// Compares an element and its descendants with their saved form; returns how many elements were compared.
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

int countElements(const QDomElement& element) {
  int elements = 1;
  for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
    elements += countElements(child);
  return elements;
}

TEST_P(RealDocument, RoundTripLosesNothing) {
  const QDomDocument before = treeOf(bytesOf(path));
  const QDomDocument after = treeOf(savedBytes(loadFile(path).document.get()));
  EXPECT_EQ(compare(before.documentElement(), after.documentElement()),
            countElements(before.documentElement()));
}

TEST(RealDocuments, RobotArmKeepsItsDetailsAndTheirMasses) {
  const std::string path = pathOf("panda.xml");
  const std::string reason = reasonToSkip(path);
  if (!reason.empty()) GTEST_SKIP() << reason;
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
