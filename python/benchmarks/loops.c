/* What the benchmark of the Python package is compared with: the same work in C, in loops over elements.

     loops <document> <points> <rounds>    prints lines "name seconds", the least of all rounds */

#include <ztCAD/ztCAD_c.h>

#include <stdio.h>
#include <stdlib.h>
#include <time.h>

static double now(void) {
  struct timespec time;
  timespec_get(&time, TIME_UTC);
  return (double)time.tv_sec + 1e-9 * (double)time.tv_nsec;
}

enum { Load, Build, Read, Write, Works };
static const char* const names[Works] = {"load", "build", "read", "write"};
static double least[Works] = {1e9, 1e9, 1e9, 1e9};

static void take(int work, double began) {
  const double time = now() - began;
  if (time < least[work]) least[work] = time;
}

static void measure(const char* file, int32_t count, double* xyz, ztCAD_Base** elements) {
  double began = now();
  ztCAD_GMDDocument* const loaded = ztCAD_loadDocument(file, NULL);
  take(Load, began);
  ztCAD_endDocument(loaded);

  ztCAD_GMDDocument* const document = crtGMDDocument_nostl("");
  began = now();
  for (int32_t i = 0; i < count; ++i)
    ztCAD_setCenter(ztCAD_appendToDoc(document, ztCAD_ElementPoint), xyz + 3 * i);
  take(Build, began);

  ztCAD_listDoc(document, ztCAD_ElementPoint, elements, count);
  began = now();
  for (int32_t i = 0; i < count; ++i)
    ztCAD_getCenter(elements[i], xyz + 3 * i);
  take(Read, began);
  began = now();
  for (int32_t i = 0; i < count; ++i)
    ztCAD_setCenter(elements[i], xyz + 3 * i);
  take(Write, began);
  ztCAD_endDocument(document);
}

int main(int argc, char** argv) {
  if (argc != 4) return EXIT_FAILURE;
  const int32_t count = atoi(argv[2]);
  double* const xyz = calloc(3 * (size_t)count, sizeof *xyz);
  ztCAD_Base** const elements = calloc((size_t)count, sizeof *elements);
  if (!xyz || !elements) return EXIT_FAILURE;
  for (int round = atoi(argv[3]); round > 0; --round)
    measure(argv[1], count, xyz, elements);
  for (int work = 0; work < Works; ++work)
    printf("%s %.9f\n", names[work], least[work]);
  free(xyz);
  free((void*)elements);
  return EXIT_SUCCESS;
}
