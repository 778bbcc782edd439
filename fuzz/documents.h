#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ztCAD.h"

// Documents as a host handles them, and what is promised of each.

namespace fuzzing {

struct DocumentEnd {
  void operator()(ztCAD_GMDDocument* document) const { DeleteGMDDoc(document); }
};
using Document = std::unique_ptr<ztCAD_GMDDocument, DocumentEnd>;

struct Loaded {
  Document document;
  std::int32_t code = -1;
};

/// The name of a file with these bytes; the next call puts others into it.
std::string fileWith(std::string_view bytes);

/// Loads these bytes as a file. The outputs make sense.
Loaded load(std::string_view bytes);

/// The bytes that a save writes.
std::string saved(ztCAD_GMDDocument* document);

/// What loads saves, what was saved loads, from then on to the same bytes, and the check's answer is stable. Renames
/// duplicates, as saving does.
void requireRoundTrip(ztCAD_GMDDocument* document);

}  // namespace fuzzing
