#include "records.h"

#include <algorithm>
#include <type_traits>

#include "../property/system_values.h"
#include "created_objects.h"
#include "guard.h"
#include "text_output.h"

using ztcad::createElement;
using ztcad::createRecord;
using ztcad::guarded;

namespace {

/// Creates a record from three numbers; null if one of the pointers is null.
template <typename Record, typename Number, typename Make>
Record* fromThree(const Number* a, const Number* b, const Number* c, Make&& make) noexcept {
  return guarded<Record*>(nullptr, [&]() -> Record* { return a && b && c ? make(*a, *b, *c) : nullptr; });
}

template <typename Entry, typename List>
void addOne(const Entry* added, List* list) noexcept {
  guarded([&] {
    if (added && list) list->add(*added);
  });
}

template <typename List>
using NumberOf = std::conditional_t<std::is_same_v<List, ztCAD_Vertices>, double, std::uint32_t>;

void append(std::vector<double>& flat, const ztCAD_Vertex& vertex) {
  const ztCAD_Coord& coord = vertex.coord();
  flat.insert(flat.end(), {coord.x(), coord.y(), coord.z()});
}
void append(std::vector<std::uint32_t>& flat, const ztCAD_Facet& facet) {
  flat.insert(flat.end(), {facet.I1(), facet.I2(), facet.I3()});
}

/// Appends what the entries from `first` to `last` point to, all or, if memory runs out, none; null entries
/// are skipped.
template <typename Iterator, typename List>
void addEach(Iterator first, Iterator last, List* list) noexcept {
  guarded([&] {
    if (!list) return;
    std::vector<NumberOf<List>> flat;
    for (; first != last; ++first)
      if (*first) append(flat, **first);
    list->add(flat.data(), flat.size() / 3);
  });
}

template <typename Entry, typename List>
void addArray(const Entry* const* added, std::int32_t count, List* list) noexcept {
  if (added && count > 0) addEach(added, added + count, list);
}

template <typename Number, typename List>
void addFlat(const Number* triples, std::int32_t count, List* list) noexcept {
  guarded([&] {
    if (triples && count > 0 && list) list->add(triples, static_cast<std::size_t>(count));
  });
}

template <typename Number>
std::int32_t triplesIn(const std::vector<Number>& numbers) {
  return ztcad::countOf(numbers.size() / 3);
}

/// Copies at most `count` triples from `first` on, and returns how many.
template <typename Number>
std::int32_t getFlat(const std::vector<Number>& numbers, std::int32_t first, std::int32_t count,
                     Number* triples) {
  const std::int32_t last = triplesIn(numbers);
  if (!triples || first < 0 || first >= last || count <= 0) return 0;
  const std::int32_t copied = std::min(count, last - first);
  std::copy_n(numbers.begin() + std::ptrdiff_t{3} * first, std::ptrdiff_t{3} * copied, triples);
  return copied;
}

}  // namespace

ztCAD_Vertices* crtVertices() {
  return guarded<ztCAD_Vertices*>(nullptr, [] { return createElement<ztCAD_Vertices>(); });
}

ztCAD_Faces* crtFaces() {
  return guarded<ztCAD_Faces*>(nullptr, [] { return createRecord<ztCAD_Faces>(); });
}

ztCAD_Coord* crtCoord(const double* x, const double* y, const double* z) {
  return fromThree<ztCAD_Coord>(x, y, z, [](auto... xyz) { return createRecord<ztCAD_Coord>(xyz...); });
}

ztCAD_Vertex* crtVertex(const double* x, const double* y, const double* z) {
  return fromThree<ztCAD_Vertex>(x, y, z, [](double vx, double vy, double vz) {
    return createRecord<ztCAD_Vertex>(ztCAD_Coord(vx, vy, vz));
  });
}

ztCAD_Vertex* crtVertexByCoord(const ztCAD_Coord* coord) {
  return guarded<ztCAD_Vertex*>(nullptr,
                                [&] { return coord ? createRecord<ztCAD_Vertex>(*coord) : nullptr; });
}

ztCAD_Vertex* crtVertexByPoint(const ztCAD_Point* point) {
  return guarded<ztCAD_Vertex*>(
      nullptr, [&] { return point ? createRecord<ztCAD_Vertex>(point->center()) : nullptr; });
}

ztCAD_Facet* crtFacet(const std::uint32_t* i1, const std::uint32_t* i2, const std::uint32_t* i3) {
  return fromThree<ztCAD_Facet>(i1, i2, i3,
                                [](auto... indices) { return createRecord<ztCAD_Facet>(indices...); });
}

ztCAD_Color* crtColor(const std::uint32_t* red, const std::uint32_t* green, const std::uint32_t* blue) {
  return fromThree<ztCAD_Color>(red, green, blue,
                                [](auto... components) { return createRecord<ztCAD_Color>(components...); });
}

ztCAD_LCS* crtLCS(const std::vector<double>& values) {
  return guarded<ztCAD_LCS*>(nullptr, [&] { return createRecord<ztCAD_LCS>(true, values); });
}

ztCAD_LCS* crtLCS_nostl(const double* twelveValues) {
  return guarded<ztCAD_LCS*>(nullptr, [&]() -> ztCAD_LCS* {
    if (!twelveValues) return nullptr;
    return createRecord<ztCAD_LCS>(true,
                                   std::vector<double>(twelveValues, twelveValues + ztCAD_LCS::valueCount));
  });
}

ztCAD_MIP* crtMIP(const std::vector<double>& values) {
  return guarded<ztCAD_MIP*>(nullptr, [&] { return createRecord<ztCAD_MIP>(values); });
}

ztCAD_MIP* crtMIP_nostl(const double* values, std::int32_t count) {
  return guarded<ztCAD_MIP*>(nullptr, [&]() -> ztCAD_MIP* {
    if (!values || count < 0) return nullptr;
    return createRecord<ztCAD_MIP>(std::vector<double>(values, values + count));
  });
}

void ztCAD_fillMIP(ztCAD_MIP* record, const double* values, std::int32_t count) {
  guarded([&] {
    if (record && values && count >= 0) record->setValues(std::vector<double>(values, values + count));
  });
}

void ztCAD_fillLCS(ztCAD_LCS* lcs, const double* values, std::int32_t count, bool isLocal) {
  guarded([&] {
    if (!lcs || count < 0 || (!values && count > 0)) return;
    lcs->setValues(std::vector<double>(values, values + count));
    lcs->setIsLocal(isLocal);
  });
}

void ztCAD_fillCoord(ztCAD_Coord* coord, const double* xyz) {
  if (coord) *coord = xyz ? ztCAD_Coord(xyz[0], xyz[1], xyz[2]) : ztCAD_Coord();
}

void ztCAD_setMIPIntegers(ztCAD_MIP* record, std::int32_t first, std::int32_t second) {
  if (!record) return;
  record->setFirstInteger(first);
  record->setSecondInteger(second);
}

void addVertex(const ztCAD_Vertex* vertex, ztCAD_Vertices* vertices) { addOne(vertex, vertices); }

void addVertexN(const std::list<ztCAD_Vertex*>& added, ztCAD_Vertices* vertices) {
  addEach(added.begin(), added.end(), vertices);
}

void addVertexN_nostl(const ztCAD_Vertex* const* added, std::int32_t count, ztCAD_Vertices* vertices) {
  addArray(added, count, vertices);
}

void addVertexXYZ_nostl(const double* xyz, std::int32_t count, ztCAD_Vertices* vertices) {
  addFlat(xyz, count, vertices);
}

std::int32_t ztCAD_getVertexCount(const ztCAD_Vertices* vertices) {
  return vertices ? triplesIn(vertices->coordinates()) : 0;
}

std::int32_t getVertexXYZ_nostl(const ztCAD_Vertices* vertices, std::int32_t first, std::int32_t count,
                                double* xyz) {
  return vertices ? getFlat(vertices->coordinates(), first, count, xyz) : 0;
}

const double* ztCAD_getVertexData(const ztCAD_Vertices* vertices) {
  return ztCAD_getVertexCount(vertices) > 0 ? vertices->coordinates().data() : nullptr;
}

void ztCAD_clearVertices(ztCAD_Vertices* vertices) {
  if (vertices) vertices->clear();
}

void addFacet(const ztCAD_Facet* facet, ztCAD_Faces* faces) { addOne(facet, faces); }

void addFacetN(const std::list<ztCAD_Facet*>& added, ztCAD_Faces* faces) {
  addEach(added.begin(), added.end(), faces);
}

void addFacetN_nostl(const ztCAD_Facet* const* added, std::int32_t count, ztCAD_Faces* faces) {
  addArray(added, count, faces);
}

void addFacetIJK_nostl(const std::uint32_t* ijk, std::int32_t count, ztCAD_Faces* faces) {
  addFlat(ijk, count, faces);
}

std::int32_t ztCAD_getFacetCount(const ztCAD_Faces* faces) { return faces ? triplesIn(faces->indices()) : 0; }

std::int32_t getFacetIJK_nostl(const ztCAD_Faces* faces, std::int32_t first, std::int32_t count,
                               std::uint32_t* ijk) {
  return faces ? getFlat(faces->indices(), first, count, ijk) : 0;
}

const std::uint32_t* ztCAD_getFacetData(const ztCAD_Faces* faces) {
  return ztCAD_getFacetCount(faces) > 0 ? faces->indices().data() : nullptr;
}

void ztCAD_clearFaces(ztCAD_Faces* faces) {
  if (faces) faces->clear();
}

bool isEqual(const ztCAD_LCS* a, const ztCAD_LCS* b) {
  return guarded(false, [&] { return a && b && ztcad::isEqual(*a, *b); });
}
