#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ztCAD.h"

// Documents as a host handles them, and the guarantees that hold for each.

namespace fuzzing {

struct DocumentDeleter {
  void operator()(ztCAD_GMDDocument* document) const { DeleteGMDDoc(document); }
};
using Document = std::unique_ptr<ztCAD_GMDDocument, DocumentDeleter>;

struct Loaded {
  Document document;
  std::int32_t code = -1;
};

/// Path of a file with these bytes; the next call overwrites it.
std::string fileWith(std::string_view bytes);

/// Loads these bytes as a file and checks the outputs for consistency.
Loaded load(std::string_view bytes);

/// The bytes that saving the document writes; empty if it is refused because its elements are nested too
/// deeply.
std::string saved(ztCAD_GMDDocument* document);

/// Requires that the document saves unless it is nested too deeply, that the saved file loads, that further
/// saves produce the same bytes, and that the result of the check is stable. Renames duplicates, as saving
/// does.
void requireRoundTrip(ztCAD_GMDDocument* document);

}  // namespace fuzzing
