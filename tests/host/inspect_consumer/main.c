/* Computes the mass of a document through the installed headers. */

#include <ztCAD/inspect.h>

#include <stdio.h>
#include <string.h>

static const char text[] =
    "<GMD><solid name='tetrahedron' method='triangulation'><vertices>0,0,0;1,0,0;0,1,0;0,0,1;</vertices>"
    "<faces>0,2,1;0,1,3;0,3,2;1,2,3;</faces></solid></GMD>";

int main(int count, char** arguments) {
  (void)arguments;
  if (count != 2) return 2;
  ztCADInspect_Options options;
  ztCADInspect_initOptions(&options, sizeof options);
  options.density = 6;
  ztCAD_GMDDocument* document = ztCAD_loadDocumentFromText(text, -1, NULL);
  ztCADInspect_Scene* scene = ztCADInspect_openScene(document, NULL, &options);
  ztCADInspect_MassTable* table = ztCADInspect_openMassTable(scene);
  const ztCADInspect_MassRow* total = ztCADInspect_massTotal(table);
  const double mass = total ? total->computed.mass : 0;
  ztCADInspect_endMassTable(table);
  ztCADInspect_endScene(scene);
  ztCAD_endDocument(document);
  if (mass < 0.999 || mass > 1.001) return 1;
  if (strcmp(ztCADInspect_version(), ztCADVersion()) != 0) return 1;
  printf("consumer: ztCAD %s\n", ztCADInspect_version());
  return 0;
}
