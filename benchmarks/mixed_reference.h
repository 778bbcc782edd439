#pragma once

#include <array>
#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "documents.h"

namespace benchmarks {

/// The hand-tuned implementation for documents of many kinds: plain structs that keep every value, pugixml
/// and fast_float on loading, std::to_chars and one fwrite on saving. It validates nothing, writes no
/// references to characters, and refuses templates.
namespace mixed {

struct Properties {
  std::string name;
  std::string comment;
  std::string inform;
  std::optional<std::array<std::uint32_t, 3>> color;
  std::optional<bool> visible;
  std::optional<std::array<double, 12>> system;
};
using MassInertia = std::optional<std::array<double, 10>>;

struct Point : Properties {
  std::array<double, 3> center{};
};
struct Line : Properties {
  std::vector<double> vertices;
};
struct MipElement : Properties {
  MassInertia mip;
};
struct Sphere : Properties {
  MassInertia mip;
  std::array<double, 3> center{};
  bool hasRadius = false;  // the format stores no more
};
struct Solid : Properties {
  MassInertia mip;
  std::vector<double> vertices;
  std::vector<std::uint32_t> faces;
};
struct Detail : Properties {
  MassInertia mip;
  std::list<Point> points;
  std::list<Sphere> spheres;
  std::list<Solid> solids;
  std::list<Line> lines;
};
struct Reference : Properties {
  std::string file;
  std::string archetype;
  std::optional<std::array<double, 12>> placement;
};

struct Structure;
/// What structures and documents hold.
struct Content {
  std::list<Point> points;
  std::list<Reference> pointReferences;
  std::list<Line> lines;
  std::list<Reference> lineReferences;
  std::list<MipElement> mipElements;
  std::list<Reference> mipReferences;
  std::list<Sphere> spheres;
  std::list<Solid> solids;
  std::list<Reference> solidReferences;
  std::list<Detail> details;
  std::list<Reference> detailReferences;
  std::list<Structure> structures;
  std::list<Reference> structureReferences;
};
struct Structure : Properties {
  Content content;
};

}  // namespace mixed

struct MixedDocument {
  std::string inform;  // of the header
  mixed::Content content;
};

/// False if the document cannot be read or holds elements that are not supported. Does not count what it
/// reads.
bool referenceLoad(const Document& document, MixedDocument& mixed);
bool referenceSave(const MixedDocument& mixed, const std::string& file);

ContentSize sizeOf(const MixedDocument& mixed);

}  // namespace benchmarks
