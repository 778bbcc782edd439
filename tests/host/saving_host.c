// A host that saves a document with that many points. Exit code 2: the save was reported as failed.
//
//   saving_host <file> <points>

#include <stdio.h>
#include <stdlib.h>
#include <ztCAD/ztCAD_c.h>

int main(int count, char** arguments) {
  if (count != 3) return 1;
  ztCAD_GMDDocument* const document = crtGMDDocument_nostl("");
  for (long points = strtol(arguments[2], NULL, 10); points > 0; --points)
    if (!ztCAD_appendToDoc(document, ztCAD_ElementPoint)) return 1;
  ztCAD_Outcome outcome;
  const bool isSaved = ztCAD_saveDocument(document, arguments[1], &outcome);
  if (!isSaved) printf("%d %s\n", (int)outcome.code, outcome.message);
  ztCAD_endDocument(document);
  return isSaved ? 0 : 2;
}
