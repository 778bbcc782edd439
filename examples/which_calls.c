#include <ztCAD/ztCAD_c.h>

#include <stdio.h>

bool writeMarks(const char* file) {
  ztCAD_GMDDocument* document = crtGMDDocument_nostl("marks");
  for (int i = 0; i < 1000; ++i) {
    const double xyz[] = {i, 0, 0};
    char name[16];
    snprintf(name, sizeof name, "%d", i);
    ztCAD_Base* mark = ztCAD_appendToDoc(document, ztCAD_ElementPoint);
    ztCAD_setName(mark, name);
    ztCAD_setCenter(mark, xyz);
  }
  ztCAD_Outcome outcome;
  const bool saved = ztCAD_saveDocument(document, file, &outcome);
  ztCAD_endDocument(document);
  return saved;
}
