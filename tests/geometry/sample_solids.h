#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "geometry/triangle.h"
#include "node_text.h"

/// Triangulated solids for tests.

using Reals = std::vector<double>;
using Indices = std::vector<std::uint32_t>;

inline ztCAD_Vertices vertices(const Reals& coordinates) {
  ztCAD_Vertices list;
  list.setCoordinates(coordinates);
  return list;
}

inline ztCAD_Faces faces(const Indices& indices) {
  ztCAD_Faces list;
  list.setIndices(indices);
  return list;
}

inline ztCAD_Triangle triangle(const std::string& name, const Reals& coordinates, const Indices& indices) {
  bool nameIsFree = false;
  return {fromUtf8(name), vertices(coordinates), faces(indices), nameIsFree};
}

inline ztCAD_Triangle oneFacet() { return triangle("S1", {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}); }

inline ztCAD_Triangle fullSolid() {
  ztCAD_Triangle solid = oneFacet();
  solid.property().attributes().setComment("c");
  solid.property().attributes().setInform("i");
  solid.property().showable().setColor({255, 0, 0});
  solid.property().showable().setVisible(ztCAD_Visible(true));
  solid.property().setLcs(ztCAD_LCS(true, Reals(12, 1.0)));
  solid.setMip(ztCAD_MIP({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  return solid;
}

/// What `fullSolid` writes.
inline const char* const fullSolidXml =
    R"(<solid LCS="CS, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1" MIP="MIP, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10" color="RGB, 255, 0, 0" comment="c" inform="i" method="triangulation" name="S1" visible="true"><vertices>
0, 0, 0;
1, 0, 0;
0, 1, 0;
</vertices><faces>
0, 1, 2;
</faces></solid>)";
