#include "trial.h"

#include <array>
#include <list>

namespace exhaustion {

namespace {

constexpr double one = 1;
constexpr std::uint32_t index = 1;
constexpr std::array<double, 300> manyReals = {1, 2, 3};
constexpr std::array<std::uint32_t, 300> manyIndices = {1, 2, 3};

ztCAD_Vertex* vertex() { return crtVertex(&one, &one, &one); }
ztCAD_Facet* facet() { return crtFacet(&index, &index, &index); }

/// A host's array of pointers.
template <typename Entry, std::size_t count>
auto* array(Entry* (*create)()) {
  auto* const entries = new std::array<const Entry*, count>();
  for (auto& entry : *entries)
    entry = create();
  return entries;
}

template <typename Entry>
auto* listOf(Entry* (*create)()) {
  auto* const entries = new std::list<Entry*>();
  for (int i = 0; i < 20; ++i)
    entries->push_back(create());
  return entries;
}

const Row creations[] = {
    {"crtVertices", "", [] { return creates(crtVertices); }},
    {"crtFaces", "", [] { return creates(crtFaces); }},
    {"crtCoord", "", [] { return creates([] { return crtCoord(&one, &one, &one); }); }},
    {"crtVertex", "", [] { return creates(vertex); }},
    {"crtVertexByCoord", "",
     [] { return creates([place = coord(1, 2, 3)] { return crtVertexByCoord(place); }); }},
    {"crtVertexByPoint", "",
     [] { return creates([point = pointNamed("A")] { return crtVertexByPoint(point); }); }},
    {"crtFacet", "", [] { return creates(facet); }},
    {"crtColor", "", [] { return creates([] { return crtColor(&index, &index, &index); }); }},
    {"crtLCS", "", [] { return creates([] { return crtLCS(twelveValues); }); }},
    {"crtLCS_nostl", "", [] { return creates([] { return crtLCS_nostl(twelveValues.data()); }); }},
    {"crtMIP", "", [] { return creates([] { return crtMIP(tenValues); }); }},
    {"crtMIP_nostl", "", [] { return creates([] { return crtMIP_nostl(tenValues.data(), 10); }); }},
};

const Row records[] = {
    {"ztCAD_fillMIP", "",
     [] {
       return changes(crtMIP({}), [](ztCAD_MIP* record) { ztCAD_fillMIP(record, manyReals.data(), 300); });
     }},
    {"ztCAD_fillLCS", "",
     [] {
       return changes(crtLCS({}),
                      [](ztCAD_LCS* system) { ztCAD_fillLCS(system, manyReals.data(), 300, false); });
     }},
    {"ztCAD_fillCoord", "",
     [] {
       return changes(coord(9, 9, 9), [](ztCAD_Coord* place) { ztCAD_fillCoord(place, manyReals.data()); });
     }},
    {"ztCAD_setMIPIntegers", "",
     [] { return changes(crtMIP({}), [](ztCAD_MIP* record) { ztCAD_setMIPIntegers(record, 5, 6); }); }},
    {"isEqual", "",
     [] {
       const ztCAD_LCS* const system = crtLCS(twelveValues);
       const ztCAD_LCS* const same = crtLCS(twelveValues);
       return answers([=] { return isEqual(system, same); });
     }},
};

const Row vertexLists[] = {
    {"addVertex", "",
     [] {
       return changes(crtVertices(),
                      [added = vertex()](ztCAD_Vertices* vertices) { addVertex(added, vertices); });
     }},
    {"addVertexN", "",
     [] {
       return changes(crtVertices(),
                      [added = listOf(vertex)](ztCAD_Vertices* vertices) { addVertexN(*added, vertices); });
     }},
    {"addVertexN_nostl", "",
     [] {
       return changes(crtVertices(), [added = array<ztCAD_Vertex, 20>(vertex)](ztCAD_Vertices* vertices) {
         addVertexN_nostl(added->data(), 20, vertices);
       });
     }},
    {"addVertexXYZ_nostl", "",
     [] {
       return changes(tetrahedronVertices(),
                      [](ztCAD_Vertices* vertices) { addVertexXYZ_nostl(manyReals.data(), 100, vertices); });
     }},
    {"ztCAD_getVertexCount", "",
     [] { return answers([vertices = tetrahedronVertices()] { return ztCAD_getVertexCount(vertices); }); }},
    {"getVertexXYZ_nostl", "",
     [] {
       return answers([vertices = tetrahedronVertices()] {
         double xyz[3] = {};
         return getVertexXYZ_nostl(vertices, 1, 1, xyz) + xyz[0];
       });
     }},
    {"ztCAD_getVertexData", "",
     [] { return points([vertices = tetrahedronVertices()] { return ztCAD_getVertexData(vertices); }); }},
    {"ztCAD_clearVertices", "", [] { return changes(tetrahedronVertices(), ztCAD_clearVertices); }},
};

const Row facetLists[] = {
    {"addFacet", "",
     [] { return changes(crtFaces(), [added = facet()](ztCAD_Faces* faces) { addFacet(added, faces); }); }},
    {"addFacetN", "",
     [] {
       return changes(crtFaces(), [added = listOf(facet)](ztCAD_Faces* faces) { addFacetN(*added, faces); });
     }},
    {"addFacetN_nostl", "",
     [] {
       return changes(crtFaces(), [added = array<ztCAD_Facet, 20>(facet)](ztCAD_Faces* faces) {
         addFacetN_nostl(added->data(), 20, faces);
       });
     }},
    {"addFacetIJK_nostl", "",
     [] {
       return changes(tetrahedronFaces(),
                      [](ztCAD_Faces* faces) { addFacetIJK_nostl(manyIndices.data(), 100, faces); });
     }},
    {"ztCAD_getFacetCount", "",
     [] { return answers([faces = tetrahedronFaces()] { return ztCAD_getFacetCount(faces); }); }},
    {"getFacetIJK_nostl", "",
     [] {
       return answers([faces = tetrahedronFaces()] {
         std::uint32_t ijk[3] = {};
         return getFacetIJK_nostl(faces, 2, 1, ijk) + static_cast<std::int32_t>(ijk[0]);
       });
     }},
    {"ztCAD_getFacetData", "",
     [] { return points([faces = tetrahedronFaces()] { return ztCAD_getFacetData(faces); }); }},
    {"ztCAD_clearFaces", "", [] { return changes(tetrahedronFaces(), ztCAD_clearFaces); }},
};

}  // namespace

std::vector<Row> recordRows() {
  std::vector<Row> rows(std::begin(creations), std::end(creations));
  rows.insert(rows.end(), std::begin(records), std::end(records));
  rows.insert(rows.end(), std::begin(vertexLists), std::end(vertexLists));
  rows.insert(rows.end(), std::begin(facetLists), std::end(facetLists));
  return rows;
}

}  // namespace exhaustion
