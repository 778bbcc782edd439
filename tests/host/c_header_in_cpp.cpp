// The header for C as C++ reads it, where the library's classes are unknown and outputs are references: this compiles, or
// it does not.

#include <ztCAD/ztCAD_c.h>

// and twice is once
#include <ztCAD/ztCAD_c.h>

static_assert(ztCAD_ElementSphere == 22, "the kinds are numbers that stay");

/// Every declaration that it uses is one that a host in C++ writes without a class of the library at hand.
bool addsAPoint(ztCAD_GMDDocument* document, const double* xyz) {
  bool nameIsFree = false;
  const ztCAD_Coord* const coord = crtCoord(&xyz[0], &xyz[1], &xyz[2]);
  return !addPointToDoc(crtPoint_nostl("point", coord, nameIsFree), document) && nameIsFree;
}
