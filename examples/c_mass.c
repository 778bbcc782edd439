#include <stdio.h>
#include <ztCAD/inspect.h>

/* Prints the mass of the parts of a document and of the whole: c_mass <file> [density] */

static void print(const char* name, const ztCADInspect_MassRow* row) {
  const ztCADInspect_MassProperties* mass = &row->combined;
  if (row->combinedProblem != ztCADInspect_MassKnown)
    printf("%s: %s\n", name, ztCADInspect_massProblemText(row->combinedProblem));
  else
    printf("%s: mass %g, centre %g %g %g, moments %g %g %g\n", name, mass->mass, mass->center[0],
           mass->center[1], mass->center[2], mass->inertia[0], mass->inertia[4], mass->inertia[8]);
}

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  ztCAD_Outcome outcome;
  ztCAD_GMDDocument* document = ztCAD_loadDocument(argv[1], &outcome);
  if (!document) {
    fprintf(stderr, "%s: %s\n", argv[1], outcome.message);
    return 2;
  }
  ztCADInspect_Options options;
  ztCADInspect_initOptions(&options, sizeof options);
  options.readFiles = 0; /* references to other files place nothing here */
  if (argc > 2) sscanf(argv[2], "%lf", &options.density);

  ztCADInspect_Scene* scene = ztCADInspect_openScene(document, NULL, &options);
  ztCADInspect_MassTable* table = ztCADInspect_openMassTable(scene);
  const ztCADInspect_MassRow* rows = ztCADInspect_massRows(table);
  for (int64_t i = 0; i < ztCADInspect_massRowCount(table); ++i)
    if (!rows[i].isTemplate) print(rows[i].path, &rows[i]);
  const ztCADInspect_MassRow* total = ztCADInspect_massTotal(table);
  if (total) print("total", total);
  const bool isComplete = total && total->combinedProblem == ztCADInspect_MassKnown;

  ztCADInspect_endMassTable(table);
  ztCADInspect_endScene(scene);
  ztCAD_endDocument(document);
  return isComplete ? 0 : 1;
}
