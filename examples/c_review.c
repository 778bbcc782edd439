#include <ztCAD/ztCAD_c.h>

#include <stdio.h>
#include <stdlib.h>

/* Prints what the review of a file found, and how many points the document has. */
int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  ztCAD_Outcome outcome;
  ztCAD_Review* review = ztCAD_reviewFile(argv[1], 1000, &outcome);
  for (int64_t i = 0; i < ztCAD_findingCount(review); ++i) {
    const ztCAD_Finding* finding = ztCAD_findingAt(review, i);
    printf("%s:%lld:%lld: %s [%s]\n", argv[1], (long long)finding->place.line,
           (long long)finding->place.column, finding->message, finding->rule);
  }
  ztCAD_GMDDocument* document = ztCAD_takeReviewedDocument(review); /* null if nothing was read */
  ztCAD_endReview(review);
  if (document) printf("%d points were read\n", ztCAD_countInDoc(document, ztCAD_ElementPoint));
  ztCAD_endDocument(document);
  return outcome.code == ztCAD_ResultLoaded && !outcome.fault ? EXIT_SUCCESS : EXIT_FAILURE;
}
