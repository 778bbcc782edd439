#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <algorithm>
#include <memory>
#include <QDomDocument>
#include <QRegularExpression>
#include <set>

#include "api/host.h"
#include "well_formedness_rows.h"

// Which texts are well-formed: Qt 5.15 is the reference, and a second parser is compared with it. Where the
// two differ, the page for hosts must list the difference.

namespace {

using well_formedness::Acceptance;
using well_formedness::Row;

bool isOneOf(Acceptance acceptance, std::initializer_list<Acceptance> all) {
  return std::find(all.begin(), all.end(), acceptance) != all.end();
}

[[maybe_unused]] bool isAcceptedByQt(Acceptance acceptance) {
  return isOneOf(acceptance, {Acceptance::ByAll, Acceptance::ByQtOnly, Acceptance::RefusedHere,
                              Acceptance::RefusedHereAndByLibxml});
}
bool isAcceptedHere(Acceptance acceptance) {
  return isOneOf(acceptance, {Acceptance::ByAll, Acceptance::ByQtOnly});
}
bool isAcceptedByLibxml(Acceptance acceptance) {
  return isOneOf(acceptance, {Acceptance::ByAll, Acceptance::ByLibxmlOnly, Acceptance::RefusedHere});
}

bool libxmlAccepts(const std::string& bytes) {
  constexpr int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
  const std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> document(
      xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, options), xmlFreeDoc);
  return document != nullptr;
}

class WellFormedness : public testing::TestWithParam<Row> {};

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)  // Qt 6 has another parser
TEST_P(WellFormedness, IsDecidedByQt) {
  const std::string& xml = GetParam().xml;
  EXPECT_EQ(QDomDocument().setContent(QByteArray(xml.data(), static_cast<int>(xml.size()))),
            isAcceptedByQt(GetParam().acceptance));
}
#endif

TEST_P(WellFormedness, DeterminesTheResultCode) {
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("document.xml", GetParam().xml));
  // 120: well-formed, but the root is not that of a document
  EXPECT_EQ(loaded.code, isAcceptedHere(GetParam().acceptance) ? 120 : 110);
}

TEST_P(WellFormedness, IsTheSameForTheSecondParserExceptAsListed) {
  EXPECT_EQ(libxmlAccepts(GetParam().xml), isAcceptedByLibxml(GetParam().acceptance));
}

INSTANTIATE_TEST_SUITE_P(Rows, WellFormedness, testing::ValuesIn(well_formedness::rows()),
                         [](const auto& row) { return std::string(row.param.name); });

/// The names in backticks in the first column of the page's table.
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

TEST(WellFormednessPage, ListsExactlyTheDifferences) {
  std::multiset<std::string> differences;
  for (const Row& row : well_formedness::rows())
    if (isAcceptedHere(row.acceptance) != isAcceptedByLibxml(row.acceptance)) differences.insert(row.name);
  EXPECT_GT(differences.size(), 20U);
  EXPECT_EQ(namesOnThePage(), differences);
}

}  // namespace
