#pragma once

#include <list>
#include <string>
#include <vector>

#include "documents.h"

namespace benchmarks {

/// The hand-tuned way that the library is measured against: pugixml and fast_float, or std::to_chars and fwrite,
/// into and from plain structs. It knows only what stands in the benchmark's own documents, and checks nothing.

struct BarePoint {
  std::string name;
  std::string comment;
  std::string inform;
  std::string color;
  double x = 0;
  double y = 0;
  double z = 0;
};

/// Both answer whether all of the document was found.
bool referenceLoad(const Document& document, Mesh& mesh);
bool referenceLoad(const Document& document, std::list<BarePoint>& points);

/// Writes and waits for the disk, as the library does. True when all is written.
bool referenceSave(const Mesh& mesh, const std::string& file);
bool referenceSave(const std::vector<BarePoint>& points, Shape shape, const std::string& file);

}  // namespace benchmarks
