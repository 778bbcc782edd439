#pragma once

#include <functional>
#include <string>

#include "documents.h"
#include "measurement.h"

namespace benchmarks {

/// The library through its exported functions, as any host uses it. Each function is one run, intended for a
/// process of its own; its preparation is not measured.

Measurement libraryLoad(const Document& document);
/// The same as a review, which keeps at most a thousand findings.
Measurement libraryReview(const Document& document);
/// Loads the document and measures saving it.
Measurement librarySave(const Document& document, const std::string& file);
/// Loads the document and measures checking it; `prepare`, if not empty, runs before each check and is not
/// timed.
Measurement libraryCheck(const Document& document, const std::function<void()>& prepare);
/// Loads the document, creates `records` coordinates owned by the library, and measures deleting the
/// document.
Measurement libraryDelete(const Document& document, std::size_t records);

/// Which save of a document is measured. The first one makes the names unique, the second one finds them
/// unique.
enum class SaveOrder { First, Second };

/// Builds a document of points that share one name and measures saving it.
Measurement libraryUnify(std::size_t points, SaveOrder order, const std::string& file);

Measurement libraryBuildVertices(std::size_t count);
Measurement libraryBuildPoints(std::size_t count);

}  // namespace benchmarks
