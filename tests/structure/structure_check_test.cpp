// The check of structures, as the document check calls it.

#include <gtest/gtest.h>
#include <functional>
#include <ostream>
#include <vector>

#include "node_text.h"
#include "structure/read_structures.h"
#include "structure/sample_elements.h"
#include "structure/structure.h"

namespace {

struct CheckRow {
  const char* name;
  std::function<void(ztCAD_StructureContent&)> add;
  bool ok;
};
std::ostream& operator<<(std::ostream& out, const CheckRow& row) { return out << row.name; }

ztCAD_Line lineOf(std::size_t coordinates) {
  ztCAD_Vertices vertices;
  vertices.setCoordinates(std::vector<double>(coordinates));
  bool nameIsFree = false;
  return {"L", vertices, nameIsFree};
}
ztCAD_Triangle triangleOf(std::size_t coordinates, std::size_t indices) {
  ztCAD_Triangle made;
  ztCAD_Vertices vertices;
  vertices.setCoordinates(std::vector<double>(coordinates));
  ztCAD_Faces faces;
  faces.setIndices(std::vector<std::uint32_t>(indices));
  made.setVertices(vertices);
  made.setFaces(faces);
  return made;
}
ztCAD_Sphere sphereOf(bool hasCenter, bool hasRadius) {
  ztCAD_Sphere made;
  if (hasCenter) made.setCenter(ztCAD_Coord(1, 2, 3));
  if (hasRadius) made.setRadius(1.0);
  return made;
}
ztCAD_Detail detailThatRead(bool ok) {
  ztCAD_Detail made;
  made.setReadOk(ok);
  return made;
}
const CheckRow checkRows[] = {
    {"Empty", [](auto&) {}, true},
    {"Point", [](auto& c) { c.points.add(pointAt(ztCAD_Coord(1, 2, 3))); }, true},
    {"PointWithoutCenter", [](auto& c) { c.points.add(ztCAD_Point()); }, false},
    {"SecondPointWithoutCenter",
     [](auto& c) {
       c.points.add(pointAt(ztCAD_Coord(1, 2, 3)));
       c.points.add(ztCAD_Point());
     },
     false},
    {"LineWithoutValues", [](auto& c) { c.lines.add(lineOf(0)); }, true},
    {"LineOfSixValues", [](auto& c) { c.lines.add(lineOf(6)); }, true},
    {"LineOfSevenValues", [](auto& c) { c.lines.add(lineOf(7)); }, false},
    {"LineThatDidNotRead",
     [](auto& c) {
       c.lines.add(lineOf(6));
       c.lines.back().setReadOk(false);
     },
     true},
    {"Sphere", [](auto& c) { c.spheres.add(sphereOf(true, true)); }, true},
    {"SphereWithoutRadius", [](auto& c) { c.spheres.add(sphereOf(true, false)); }, false},
    {"SphereWithoutCenter", [](auto& c) { c.spheres.add(sphereOf(false, true)); }, false},
    {"Solid", [](auto& c) { c.triangles.add(triangleOf(9, 3)); }, true},
    {"SolidWithIncompleteVertex", [](auto& c) { c.triangles.add(triangleOf(8, 3)); }, false},
    {"SolidWithIncompleteFacet", [](auto& c) { c.triangles.add(triangleOf(9, 4)); }, false},
    {"MassElement", [](auto& c) { c.mipElements.add(ztCAD_ElementMIP("M", mipRecord())); }, true},
    {"MassElementWithoutRecord", [](auto& c) { c.mipElements.add(ztCAD_ElementMIP()); }, false},
    {"Detail", [](auto& c) { c.details.add(detailThatRead(true)); }, true},
    {"DetailThatDidNotRead", [](auto& c) { c.details.add(detailThatRead(false)); }, false},
    {"DetailNeverRead", [](auto& c) { c.details.add(ztCAD_Detail()); }, false},
    {"ReferencesOfAllKinds",
     [](auto& c) {
       c.structureReferences.appendNew();
       c.detailReferences.appendNew();
       c.pointReferences.appendNew();
       c.lineReferences.appendNew();
       c.mipReferences.appendNew();
       c.triangleReferences.appendNew();
     },
     true},
};

class StructureCheck : public testing::TestWithParam<CheckRow> {};

TEST_P(StructureCheck, CoversEveryElementExceptReferences) {
  ztCAD_Structure made;
  GetParam().add(made.content());
  EXPECT_EQ(made.passesCheck(), GetParam().ok);
}

TEST_P(StructureCheck, CoversNestedStructures) {
  ztCAD_Structure inner;
  GetParam().add(inner.content());
  ztCAD_Structure middle;
  ztCAD_Structure sound;
  ztCAD_TmplStructure outer;
  EXPECT_FALSE(middle.addStructure(inner));
  EXPECT_FALSE(outer.addStructure(sound));
  EXPECT_FALSE(outer.addStructure(middle));
  EXPECT_EQ(outer.passesCheck(), GetParam().ok);
}

INSTANTIATE_TEST_SUITE_P(Structure, StructureCheck, testing::ValuesIn(checkRows),
                         [](const auto& row) { return row.param.name; });

TEST(StructureCheckResult, IgnoresTheResultOfReading) {
  ztCAD_Structure made;
  EXPECT_FALSE(read(made, R"(<structure><solid/></structure>)"));
  EXPECT_TRUE(made.passesCheck()) << "an element of an unknown kind is not stored";
}

TEST(StructureCheckResult, IgnoresAMissingNameOfANestedStructure) {
  ztCAD_Structure made;
  EXPECT_FALSE(read(made, R"(<structure><structure/></structure>)"));
  EXPECT_TRUE(made.passesCheck());
  ztcad::clearReadStructures();
}

}  // namespace
