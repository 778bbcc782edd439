// A host program built against the installed library: creates a document, saves it, loads it and compares.
// Argument: the file to write. Exit code 0 on success.

#include <cstdio>
#include <string>

#include <ztCAD/ztCAD.h>

namespace {

int failures = 0;

void expect(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "consumer: failed: %s\n", what);
  ++failures;
}

void save(const std::string& fileName) {
  const double x = 1.5;
  const double y = -2.0;
  const double z = 1e6;
  bool nameIsFree = false;
  ztCAD_GMDDocument* document = crtGMDDocument("created by a host");
  const ztCAD_Point* point = crtPoint("corner", crtCoord(&x, &y, &z), nameIsFree);
  expect(nameIsFree, "the name is free");
  expect(!addPointToDoc(point, document), "the point was added");
  expect(checkGMDDocument(document), "the created document passes the check");
  SaveGMDDocument(document, fileName);
  DeleteGMDDoc(document);
}

void expectCorner(const ztCAD_Point& point) {
  double x = 0;
  double y = 0;
  double z = 0;
  getPointCoord(&point, x, y, z);
  expect(x == 1.5 && y == -2.0 && z == 1e6, "the point has its coordinates");
  // inline functions of the headers must work in a host too
  expect(point.name() == QLatin1String("corner"), "the point has its name");
}

void load(const std::string& fileName) {
  std::int32_t resultCode = -1;
  bool fault = true;
  ztCAD_GMDDocument* document = crtGMDDocumentFromFile(fileName, resultCode, fault);
  expect(resultCode == 0, "the file loads");
  expect(!fault, "no element raised the fault flag");
  expect(checkGMDDocument(document), "the loaded document passes the check");
  const ztCAD_Cont<ztCAD_Point>* points = ztCAD_getPoints(document);
  expect(points->size() == 1, "there is one point");
  if (!points->empty()) expectCorner(points->front());
  DeleteGMDDoc(document);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: consumer <file to write>\n");
    return 2;
  }
  std::remove(arguments[1]);  // the file of an earlier run must not be loaded
  save(arguments[1]);
  load(arguments[1]);
  if (failures == 0) std::printf("consumer: ztCAD %s\n", ztCADVersion());
  return failures == 0 ? 0 : 1;
}
