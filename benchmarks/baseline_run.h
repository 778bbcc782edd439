#pragma once

#include <string>

#include "documents.h"
#include "measurement.h"

namespace benchmarks {

/// What the library is compared with. Each function is one run, intended for a process of its own; its
/// preparation is not measured.

Measurement loadWithReference(const Document& document);
/// Meshes and points only.
Measurement loadWithQt(const Document& document);
/// Load the document and measure saving it.
Measurement saveWithReference(const Document& document, const std::string& file);
Measurement saveWithQt(const Document& document, const std::string& file);

/// Succeeds if the library and the reference save the document as the same bytes. Then no element was
/// renamed, and none was lost. Measures nothing; the two files are removed.
Measurement compareSaves(const Document& document, const std::string& file, const std::string& otherFile);

}  // namespace benchmarks
