#include "plain_work.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <tuple>

#include "loaded_library.h"
#include "scratch_folder.h"

namespace {

std::string bytesOf(const std::string& fileName) {
  std::ifstream file(fileName, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void expectPassesCheck(const LoadedLibrary& library, const ztCAD_GMDDocument* document) {
  EXPECT_TRUE(library.checkGMDDocument(document));
}

void loadAgain(const LoadedLibrary& library, const std::string& fileName, PlainResults& results) {
  std::int32_t code = -1;
  bool fault = true;
  ztCAD_GMDDocument* const document = library.crtGMDDocumentFromFile(fileName, code, fault);
  EXPECT_EQ(code, 0);
  EXPECT_FALSE(fault);
  expectPassesCheck(library, document);
  const auto& points = *library.ztCAD_getPoints(document);
  EXPECT_EQ(points.size(), static_cast<std::size_t>(pointsPerRun));
  for (const ztCAD_Point& point : points) {
    double x = 0;
    double y = 0;
    double z = 0;
    library.getPointCoord(&point, x, y, z);
    results.farthest = std::max(results.farthest, x);
  }
  library.GMDDocumentToString(document, results.xml, false);
  library.DeleteGMDDoc(document);
}

void loadFromText(const LoadedLibrary& library, const std::string& xml) {
  bool parsed = false;
  std::string message = "earlier";
  int line = -1;
  int column = -1;
  ztCAD_GMDDocument* const document = library.crtGMDDocumentFromStdString(xml, parsed, message, line, column);
  EXPECT_TRUE(parsed);
  EXPECT_EQ(std::tie(message, line, column), std::make_tuple(std::string(), 0, 0));
  EXPECT_EQ(library.ztCAD_getPoints(document)->size(), static_cast<std::size_t>(pointsPerRun));
  library.DeleteGMDDoc(document);
}

}  // namespace

bool PlainResults::operator==(const PlainResults& other) const {
  const auto all = [](const PlainResults& r) {
    return std::tie(r.version, r.correctedName, r.debugText, r.xml, r.savedBytes, r.farthest);
  };
  return all(*this) == all(other);
}

ztCAD_GMDDocument* makeDocument(const LoadedLibrary& library) {
  ztCAD_GMDDocument* const document = library.crtGMDDocument("created by a plain host");
  for (int i = 1; i <= pointsPerRun; ++i) {
    const double x = i;
    const double y = -0.5 * i;
    const double z = 1e-3 * i;
    bool nameIsFree = false;
    const ztCAD_Point* const point = library.crtPoint("P", library.crtCoord(&x, &y, &z), nameIsFree);
    EXPECT_TRUE(nameIsFree);
    EXPECT_FALSE(library.addPointToDoc(point, document)) << "the point was not added";
  }
  return document;
}

PlainResults runWorkload(const LoadedLibrary& library) {
  const ScratchFolder folder;
  const std::string fileName = folder.file("points.xml");
  PlainResults results;
  results.version = library.ztCADVersion();
  EXPECT_TRUE(library.doCorrectName("1 hole", results.correctedName, "no name"));

  ztCAD_GMDDocument* const document = makeDocument(library);
  expectPassesCheck(library, document);
  library.SaveGMDDocument(document, fileName);
  library.GMDDocumentToString(document, results.debugText, true);
  library.DeleteGMDDoc(document);

  results.savedBytes = bytesOf(fileName);
  loadAgain(library, fileName, results);
  loadFromText(library, results.savedBytes);
  return results;
}
