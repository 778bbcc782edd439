#pragma once

#include <array>
#include <list>
#include <string>
#include <vector>

#include "documents.h"

namespace benchmarks {

/// The hand-tuned implementation that the library is measured against: pugixml and fast_float on loading,
/// std::to_chars and fwrite on saving, with plain structs. It supports only the benchmark's own documents and
/// validates nothing.

struct PointRecord {
  std::string name;
  std::string comment;
  std::string inform;
  std::string color;
  double x = 0;
  double y = 0;
  double z = 0;
};

struct PointReference {
  std::string name;
  std::string comment;
  std::string inform;
  std::string color;
  std::string file;
  std::string archetype;
  std::array<double, 12> placement{};
};

struct ReferencedPoints {
  std::list<PointRecord> templates;
  std::list<PointReference> references;
};

/// Each returns whether the whole document was read.
bool referenceLoad(const Document& document, Mesh& mesh);
bool referenceLoad(const Document& document, std::list<PointRecord>& points);
bool referenceLoad(const Document& document, ReferencedPoints& points);

/// Write the file and wait for the disk, as the library does. True if everything was written.
bool referenceSave(const Mesh& mesh, const std::string& file);
bool referenceSave(const std::vector<PointRecord>& points, Shape shape, const std::string& file);
bool referenceSave(const ReferencedPoints& points, const std::string& file);

}  // namespace benchmarks
