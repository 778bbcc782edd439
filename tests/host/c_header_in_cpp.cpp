// Compiles the header for C as C++, with the library's classes only declared and outputs as references.

#include <ztCAD/ztCAD_c.h>

// including it twice is harmless
#include <ztCAD/ztCAD_c.h>

static_assert(ztCAD_ElementSphere == 22, "the numbers of the kinds are stable");

/// Uses the declarations as a C++ host does that has no class definitions of the library.
bool addsAPoint(ztCAD_GMDDocument* document, const double* xyz) {
  bool nameIsFree = false;
  const ztCAD_Coord* const coord = crtCoord(&xyz[0], &xyz[1], &xyz[2]);
  return !addPointToDoc(crtPoint_nostl("point", coord, nameIsFree), document) && nameIsFree;
}
