/* A host in plain C that opens the library by its file name: builds a document with a point and a solid
   through functions without C++ types, checks and saves it, closes the library and repeats all of it.
   c_host <library> <file to write> <version>  Exit code 0 on success. */

#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

static int failures = 0;

static void expect(bool condition, const char* what) {
  if (condition) return;
  fprintf(stderr, "c_host: failed: %s\n", what);
  ++failures;
}

/* ------------------------------------------------------------------------------------ the system's loader */

typedef void (*AnyFunction)(void);

#if defined(_WIN32)
static void* openLibrary(const char* fileName) { return LoadLibraryA(fileName); }
static bool closeLibrary(void* library) { return FreeLibrary(library) != 0; }
static AnyFunction find(void* library, const char* name) {
  return (AnyFunction)GetProcAddress(library, name);
}
#else
static void* openLibrary(const char* fileName) { return dlopen(fileName, RTLD_NOW); }
static bool closeLibrary(void* library) { return dlclose(library) == 0; }
static AnyFunction find(void* library, const char* name) {
  AnyFunction function = NULL;
  void* const address = dlsym(library, name);
  memcpy(&function, &address, sizeof function); /* POSIX guarantees that both have the same size */
  return function;
}
#endif

/* ------------------------------------------------------------------------------- functions of the library */

typedef struct Document Document;
typedef struct Coord Coord;
typedef struct Point Point;
typedef struct Vertex Vertex;
typedef struct Vertices Vertices;
typedef struct Facet Facet;
typedef struct Faces Faces;
typedef struct Triangle Triangle;

/* References in the C++ declarations are pointers in C. */
typedef struct {
  const char* (*ztCADVersion)(void);
  Document* (*crtGMDDocument_nostl)(const char* inform);
  void (*DeleteGMDDoc)(Document*);
  void (*SaveGMDDocument_nostl)(Document*, const char* fileName);
  bool (*checkGMDDocument)(const Document*);
  Coord* (*crtCoord)(const double*, const double*, const double*);
  Point* (*crtPoint_nostl)(const char* name, const Coord*, bool* nameIsFree);
  void (*getPointCoord)(const Point*, double* x, double* y, double* z);
  bool (*addPointToDoc)(const Point*, Document*);
  Vertex* (*crtVertex)(const double*, const double*, const double*);
  Vertices* (*crtVertices)(void);
  void (*addVertexN_nostl)(const Vertex* const*, int32_t count, Vertices*);
  Facet* (*crtFacet)(const uint32_t*, const uint32_t*, const uint32_t*);
  Faces* (*crtFaces)(void);
  void (*addFacetN_nostl)(const Facet* const*, int32_t count, Faces*);
  Triangle* (*crtTriangle_nostl)(const char* name, const Vertices*, const Faces*, bool* nameIsFree);
  bool (*addTriangleToDoc)(const Triangle*, Document*);
  bool (*doCorrectName_nostl)(const char* name, char* corrected, const char* fallback);
} Functions;

static bool lookUp(void* library, Functions* f) {
  bool all = true;
#define LOOK_UP(name)                               \
  do {                                              \
    const AnyFunction found = find(library, #name); \
    expect(found != NULL, #name " is exported");    \
    all = all && found;                             \
    memcpy(&f->name, &found, sizeof found);         \
  } while (0)
  LOOK_UP(ztCADVersion);
  LOOK_UP(crtGMDDocument_nostl);
  LOOK_UP(DeleteGMDDoc);
  LOOK_UP(SaveGMDDocument_nostl);
  LOOK_UP(checkGMDDocument);
  LOOK_UP(crtCoord);
  LOOK_UP(crtPoint_nostl);
  LOOK_UP(getPointCoord);
  LOOK_UP(addPointToDoc);
  LOOK_UP(crtVertex);
  LOOK_UP(crtVertices);
  LOOK_UP(addVertexN_nostl);
  LOOK_UP(crtFacet);
  LOOK_UP(crtFaces);
  LOOK_UP(addFacetN_nostl);
  LOOK_UP(crtTriangle_nostl);
  LOOK_UP(addTriangleToDoc);
  LOOK_UP(doCorrectName_nostl);
#undef LOOK_UP
  return all;
}

/* --------------------------------------------------------------------------------------------------- work */

static void addPoint(const Functions* f, Document* document) {
  const double in[3] = {1.5, -2.0, 1e6};
  double out[3] = {0, 0, 0};
  bool nameIsFree = false;
  const Point* const point = f->crtPoint_nostl("corner", f->crtCoord(&in[0], &in[1], &in[2]), &nameIsFree);
  expect(nameIsFree, "the name is free");
  f->getPointCoord(point, &out[0], &out[1], &out[2]);
  expect(memcmp(in, out, sizeof in) == 0, "the point returns its coordinates");
  expect(!f->addPointToDoc(point, document), "the point was added");
}

static void addTetrahedron(const Functions* f, Document* document) {
  static const double at[4][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  static const uint32_t corners[4][3] = {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}};
  const Vertex* vertices[4];
  const Facet* facets[4];
  for (int i = 0; i < 4; ++i) {
    vertices[i] = f->crtVertex(&at[i][0], &at[i][1], &at[i][2]);
    facets[i] = f->crtFacet(&corners[i][0], &corners[i][1], &corners[i][2]);
  }
  Vertices* const vertexList = f->crtVertices();
  Faces* const faces = f->crtFaces();
  f->addVertexN_nostl(vertices, 4, vertexList);
  f->addFacetN_nostl(facets, 4, faces);
  bool nameIsFree = false;
  const Triangle* const solid = f->crtTriangle_nostl("tetrahedron", vertexList, faces, &nameIsFree);
  expect(!f->addTriangleToDoc(solid, document), "the solid was added");
}

/* Whether the file contains the text; files of up to 65535 bytes are searched completely. */
static bool fileContains(const char* fileName, const char* text) {
  static char bytes[65536];
  FILE* const file = fopen(fileName, "r"); /* in text mode, because saved files have the system's line ends */
  if (!file) return false;
  const size_t count = fread(bytes, 1, sizeof bytes - 1, file);
  fclose(file);
  bytes[count] = '\0';
  return strstr(bytes, text) != NULL;
}

static void work(const Functions* f, const char* fileName, const char* version) {
  char corrected[16];
  expect(strcmp(f->ztCADVersion(), version) == 0, "the library has the expected version");
  expect(f->doCorrectName_nostl("1 hole", corrected, "no name"), "the name differs after correction");
  expect(strcmp(corrected, "_1_hole") == 0, "the name is corrected");

  remove(fileName); /* the file of an earlier run must not be checked */
  Document* const document = f->crtGMDDocument_nostl("made in C");
  addPoint(f, document);
  addTetrahedron(f, document);
  expect(f->checkGMDDocument(document), "the document passes the check");
  f->SaveGMDDocument_nostl(document, fileName);
  f->DeleteGMDDoc(document);
  expect(fileContains(fileName, "inform=\"made in C\""), "the header was saved");
  expect(fileContains(fileName, "center=\"1.5, -2, 1e+06;\""), "the point was saved");
  expect(fileContains(fileName, "0, 0, 0;\n1, 0, 0;\n0, 1, 0;\n0, 0, 1;\n"), "the vertices were saved");
  expect(fileContains(fileName, "0, 2, 1;\n0, 1, 3;\n0, 3, 2;\n1, 2, 3;\n"), "the facets were saved");
}

int main(int count, char** arguments) {
  if (count != 4) {
    fprintf(stderr, "usage: c_host <library> <file to write> <version>\n");
    return 2;
  }
  for (int round = 0; round < 3; ++round) {
    Functions functions;
    void* const library = openLibrary(arguments[1]);
    expect(library != NULL, "the library opens");
    if (!library) return 1;
    if (lookUp(library, &functions)) work(&functions, arguments[2], arguments[3]);
    expect(closeLibrary(library), "the library closes");
  }
  return failures == 0 ? 0 : 1;
}
