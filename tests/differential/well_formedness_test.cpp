#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <algorithm>
#include <memory>
#include <QDomDocument>
#include <QRegularExpression>
#include <set>

#include "api/host.h"
#include "well_formedness_rows.h"

// What is well-formed: Qt's word is the one that counts, and a second parser's stands beside it. Where both differ, the page
// for hosts says so.

namespace {

using well_formedness::Row;
using well_formedness::Taken;

bool isOneOf(Taken taken, std::initializer_list<Taken> all) {
  return std::find(all.begin(), all.end(), taken) != all.end();
}

bool isTakenByQt(Taken taken) {
  return isOneOf(taken, {Taken::ByAll, Taken::ByQtOnly, Taken::RefusedHere, Taken::RefusedHereAndByLibxml});
}
bool isTakenHere(Taken taken) { return isOneOf(taken, {Taken::ByAll, Taken::ByQtOnly}); }
bool isTakenByLibxml(Taken taken) {
  return isOneOf(taken, {Taken::ByAll, Taken::ByLibxmlOnly, Taken::RefusedHere});
}

bool libxmlTakes(const std::string& bytes) {
  constexpr int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
  const std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> document(
      xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, options), xmlFreeDoc);
  return document != nullptr;
}

class WellFormedness : public testing::TestWithParam<Row> {};

TEST_P(WellFormedness, IsWhatThePlainParserSays) {
  const std::string& xml = GetParam().xml;
  EXPECT_EQ(QDomDocument().setContent(QByteArray(xml.data(), static_cast<int>(xml.size()))),
            isTakenByQt(GetParam().taken));
}

TEST_P(WellFormedness, DecidesWhatLoads) {
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("document.xml", GetParam().xml));
  // 120: well-formed, but no document
  EXPECT_EQ(loaded.code, isTakenHere(GetParam().taken) ? 120 : 110);
}

TEST_P(WellFormedness, IsWhatTheSecondParserSaysOrThePageNamesIt) {
  EXPECT_EQ(libxmlTakes(GetParam().xml), isTakenByLibxml(GetParam().taken));
}

INSTANTIATE_TEST_SUITE_P(Rows, WellFormedness, testing::ValuesIn(well_formedness::rows()),
                         [](const auto& row) { return std::string(row.param.name); });

/// What stands in backticks in the first cells of the page's table.
std::multiset<std::string> namesOnThePage() {
  std::multiset<std::string> names;
  const QString page = QString::fromStdString(bytesOf(ZTCAD_TEST_WELL_FORMEDNESS_PAGE));
  for (const QString& line : page.split('\n')) {
    if (!line.startsWith("| `")) continue;
    auto name = QRegularExpression("`(\\w+)`").globalMatch(line.section('|', 1, 1));
    while (name.hasNext())
      names.insert(name.next().captured(1).toStdString());
  }
  return names;
}

TEST(WellFormednessPage, NamesEveryDifferenceOnceAndNoOther) {
  std::multiset<std::string> differences;
  for (const Row& row : well_formedness::rows())
    if (isTakenHere(row.taken) != isTakenByLibxml(row.taken)) differences.insert(row.name);
  EXPECT_GT(differences.size(), 20U);
  EXPECT_EQ(namesOnThePage(), differences);
}

}  // namespace
