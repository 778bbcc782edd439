#include "plain_structs.h"

#include <list>
#include <memory>
#include <optional>
#include <QString>
#include <unordered_map>

#include "coordinates.h"
#include "reference_implementation.h"

namespace benchmarks {

namespace {

struct PlainCoordinate {
  bool isValid = false;
  double x = 0;
  double y = 0;
  double z = 0;
};

/// A point with the same fields as the library's, but no base classes and no virtual functions.
struct PlainPoint {
  QString name;
  QString comment;
  QString inform;
  std::optional<std::vector<std::uint32_t>> color;
  std::optional<bool> visible;
  std::optional<std::vector<double>> system;
  PlainCoordinate center;
};

/// Objects that live as long as those registered by the library.
template <typename T>
using Kept = std::vector<std::unique_ptr<T>>;

PlainCoordinate* keepCoordinate(Kept<PlainCoordinate>& kept, Coordinates& coordinates) {
  const double x = coordinates.next();
  const double y = coordinates.next();
  const double z = coordinates.next();
  return kept.emplace_back(new PlainCoordinate{true, x, y, z}).get();
}

}  // namespace

Measurement plainUnify(std::size_t points) {
  std::list<std::string> names;
  for (std::size_t i = 0; i < points; ++i)
    names.push_back(pointName(Shape::SameName, i));
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

Measurement plainDelete(const Document& document) {
  returnFreedMemory();
  std::list<PointRecord> points;
  if (!referenceLoad(document, points)) return {};
  return timed([&] {
    points.clear();
    return points.empty();
  });
}

Measurement plainBuildVertices(std::size_t count) {
  Kept<PlainCoordinate> kept;
  Kept<PlainCoordinate> vertices;
  std::vector<double> list;
  Coordinates coordinates;
  return timed([&] {
    for (std::size_t i = 0; i < count; ++i) {
      const PlainCoordinate* const coordinate = keepCoordinate(kept, coordinates);
      const PlainCoordinate* const vertex = vertices.emplace_back(new PlainCoordinate(*coordinate)).get();
      list.insert(list.end(), {vertex->x, vertex->y, vertex->z});
    }
    return list.size() == 3 * count;
  });
}

Measurement plainBuildPoints(std::size_t count) {
  Kept<PlainCoordinate> kept;
  Kept<PlainPoint> created;
  std::list<PlainPoint> points;
  Coordinates coordinates;
  return timed([&] {
    for (std::size_t i = 0; i < count; ++i) {
      const PlainCoordinate* const coordinate = keepCoordinate(kept, coordinates);
      PlainPoint& point = *created.emplace_back(new PlainPoint);
      point.name = QString::fromUtf8(pointName(Shape::DifferentNames, i).c_str());
      point.center = *coordinate;
      points.push_back(point);
    }
    return points.size() == count;
  });
}

}  // namespace benchmarks
