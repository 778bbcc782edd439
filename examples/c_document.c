#include <ztCAD/ztCAD_c.h>

#include <stdio.h>
#include <stdlib.h>

/* A tetrahedron from two flat arrays. */
static void addSolid(ztCAD_GMDDocument* document) {
  static const double xyz[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  static const uint32_t ijk[] = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
  ztCAD_Vertices* vertices = crtVertices();
  ztCAD_Faces* faces = crtFaces();
  addVertexXYZ_nostl(xyz, 4, vertices);
  addFacetIJK_nostl(ijk, 4, faces);
  bool nameIsFree = false;
  addTriangleToDoc(crtTriangle_nostl("tetrahedron", vertices, faces, &nameIsFree), document);
}

/* Text getters are called twice: the first call returns the length, the second one fills the buffer. */
static char* nameOf(const ztCAD_Base* element) {
  const int64_t length = ztCAD_getName(element, NULL, 0);
  char* name = malloc((size_t)length + 1);
  if (name) ztCAD_getName(element, name, length + 1);
  return name;
}

static void print(ztCAD_GMDDocument* document) {
  const int32_t count = ztCAD_countInDoc(document, ztCAD_ElementTriangle);
  for (int32_t i = 0; i < count; ++i) {
    const ztCAD_Base* solid = ztCAD_getFromDoc(document, ztCAD_ElementTriangle, i);
    const ztCAD_Vertices* vertices = ztCAD_getVertices(solid);
    double last[3] = {0, 0, 0};
    getVertexXYZ_nostl(vertices, ztCAD_getVertexCount(vertices) - 1, 1, last);
    char* name = nameOf(solid);
    printf("%s: %d facets, the last vertex at %g %g %g\n", name ? name : "?",
           (int)ztCAD_getFacetCount(ztCAD_getFaces(solid)), last[0], last[1], last[2]);
    free(name);
  }
}

static int fail(const char* what, const ztCAD_Outcome* outcome) {
  fprintf(stderr, "%s: %s (code %d)\n", what, outcome->message, (int)outcome->code);
  return EXIT_FAILURE;
}

int main(void) {
  ztCAD_Outcome outcome;
  ztCAD_GMDDocument* document = crtGMDDocument_nostl("made in C");
  addSolid(document);
  const bool saved = ztCAD_saveDocument(document, "solid.xml", &outcome);
  ztCAD_endDocument(document);
  if (!saved) return fail("cannot save", &outcome);

  document = ztCAD_loadDocument("solid.xml", &outcome);
  if (!document) return fail("cannot load", &outcome);
  print(document);
  ztCAD_endDocument(document);
  return outcome.code == ztCAD_ResultLoaded ? EXIT_SUCCESS : fail("loaded", &outcome);
}
