/* Builds, saves and loads a document through the installed header for C. */

#include <ztCAD/ztCAD_c.h>

#include <stdio.h>

static bool save(const char* fileName) {
  const double xyz[3] = {1, 2, 3};
  bool nameIsFree = false;
  ztCAD_GMDDocument* const document = crtGMDDocument_nostl("c_consumer");
  const ztCAD_Point* const point = crtPoint_nostl("P", crtCoord(&xyz[0], &xyz[1], &xyz[2]), &nameIsFree);
  const bool added = !addPointToDoc(point, document);
  SaveGMDDocument_nostl(document, fileName);
  DeleteGMDDoc(document);
  return added;
}

static bool load(const char* fileName) {
  int32_t code = -1;
  bool fault = true;
  double xyz[3] = {0, 0, 0};
  ztCAD_GMDDocument* const document = crtGMDDocumentFromFile_nostl(fileName, &code, &fault);
  const bool found = ztCAD_getCenter(ztCAD_getFromDoc(document, ztCAD_ElementPoint, 0), xyz);
  DeleteGMDDoc(document);
  return code == 0 && !fault && found && xyz[2] == 3;
}

int main(int count, char** arguments) {
  if (count != 2 || !save(arguments[1]) || !load(arguments[1])) return 1;
  printf("consumer: ztCAD %s\n", ztCADVersion());
  return 0;
}
