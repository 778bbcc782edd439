#include <list>
#include <memory>
#include <optional>
#include <QString>
#include <unordered_map>

#include "coordinates.h"
#include "library_way.h"
#include "reference_way.h"

namespace benchmarks {

namespace {

struct BareCoordinate {
  bool isValid = false;
  double x = 0;
  double y = 0;
  double z = 0;
};

/// A point with the same fields as the library's, without bases and virtual functions.
struct PlainPoint {
  QString name;
  QString comment;
  QString inform;
  std::optional<std::vector<std::uint32_t>> color;
  std::optional<bool> visible;
  std::optional<std::vector<double>> system;
  BareCoordinate centre;
};

template <typename T>
using Kept = std::vector<std::unique_ptr<T>>;

BareCoordinate* keepCoordinate(Kept<BareCoordinate>& kept, Coordinates& coordinates) {
  const double x = coordinates.next();
  const double y = coordinates.next();
  const double z = coordinates.next();
  return kept.emplace_back(new BareCoordinate{true, x, y, z}).get();
}

}  // namespace

Figures bareUnify(std::size_t points) {
  std::list<std::string> names;
  for (std::size_t i = 0; i < points; ++i)
    names.push_back(pointName(Shape::OneName, i));
  return timed([&] {
    std::unordered_map<std::string, unsigned> next;
    for (std::string& name : names) {
      const auto [entry, isNew] = next.emplace(name, 1);
      if (isNew) continue;
      name += "_$" + std::to_string(entry->second++);
      next.emplace(name, 1);
    }
    return next.size() == points;
  });
}

Figures bareDelete(const Document& document) {
  std::list<BarePoint> points;
  if (!referenceLoad(document, points)) return {};
  return timed([&] {
    points.clear();
    return points.empty();
  });
}

Figures bareBuildVertices(std::size_t count) {
  Kept<BareCoordinate> kept;
  Kept<BareCoordinate> vertices;
  std::vector<double> list;
  Coordinates coordinates;
  const Figures figures = timed([&] {
    for (std::size_t i = 0; i < count; ++i) {
      const BareCoordinate* const coordinate = keepCoordinate(kept, coordinates);
      const BareCoordinate* const vertex = vertices.emplace_back(new BareCoordinate(*coordinate)).get();
      list.insert(list.end(), {vertex->x, vertex->y, vertex->z});
    }
    return list.size() == 3 * count;
  });
  return figures;
}

Figures bareBuildPoints(std::size_t count) {
  Kept<BareCoordinate> kept;
  Kept<PlainPoint> made;
  std::list<PlainPoint> points;
  Coordinates coordinates;
  return timed([&] {
    for (std::size_t i = 0; i < count; ++i) {
      const BareCoordinate* const coordinate = keepCoordinate(kept, coordinates);
      PlainPoint& point = *made.emplace_back(new PlainPoint);
      point.name = QString::fromUtf8(pointName(Shape::DifferentNames, i).c_str());
      point.centre = *coordinate;
      points.push_back(point);
    }
    return points.size() == count;
  });
}

}  // namespace benchmarks
