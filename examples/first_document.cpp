#include <ztCAD/ztCAD.h>

#include <cstdio>

int fail(const char* what, const ztCAD_Outcome& outcome) {
  std::fprintf(stderr, "%s: %s (code %d)\n", what, outcome.message, outcome.code);
  return 1;
}

int main() {
  ztCAD_GMDDocument* document = crtGMDDocument("my first document");
  const double x = 0.5;
  const double y = 0;
  const double z = -2;
  bool nameIsFree = false;
  addPointToDoc(crtPoint("origin", crtCoord(&x, &y, &z), nameIsFree), document);

  ztCAD_Outcome outcome;
  const bool saved = ztCAD_saveDocument(document, "first.xml", &outcome);
  ztCAD_endDocument(document);
  if (!saved) return fail("cannot save", outcome);

  document = ztCAD_loadDocument("first.xml", &outcome);
  if (!document) return fail("cannot load", outcome);
  for (const ztCAD_Point& point : document->content().points)
    std::printf("%s: x = %g\n", qUtf8Printable(point.name()), point.center().x());
  ztCAD_endDocument(document);
  return outcome.code == ztCAD_ResultLoaded ? 0 : fail("loaded", outcome);
}
