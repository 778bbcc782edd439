#include <ztCAD/ztCAD.h>

bool writeMarks(const char* file) {
  ztCAD_GMDDocument* document = crtGMDDocument("marks");
  for (int i = 0; i < 1000; ++i) {
    ztCAD_Point& mark = document->content().points.appendNew();
    mark.setName(QString::number(i));
    mark.setCenter(ztCAD_Coord(i, 0, 0));
  }
  ztCAD_Outcome outcome;
  const bool saved = ztCAD_saveDocument(document, file, &outcome);
  ztCAD_endDocument(document);
  return saved;
}
