#include <ztCAD/ztCAD.h>

#include <cstdio>

int main() {
  ztCAD_GMDDocument* document = crtGMDDocument("my first document");
  const double x = 0.5;
  const double y = 0;
  const double z = -2;
  bool nameIsFree = false;
  addPointToDoc(crtPoint("origin", crtCoord(&x, &y, &z), nameIsFree), document);
  SaveGMDDocument(document, "first.xml");

  std::int32_t code = 0;
  bool fault = false;
  UpdateGMDDoc(document, "first.xml", code, fault);
  for (const ztCAD_Point& point : *ztCAD_getPoints(document))
    std::printf("%s: x = %g\n", qUtf8Printable(point.name()), point.center().x());
  const bool fine = code == 0 && checkGMDDocument(document);
  DeleteGMDDoc(document);
  return fine ? 0 : 1;
}
