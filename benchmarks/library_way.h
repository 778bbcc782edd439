#pragma once

#include <functional>

#include "documents.h"
#include "measuring.h"

namespace benchmarks {

/// The library through its exported functions, as any host uses it. Each function is one run, for a process of
/// its own; what it prepares is not in the figures.

Figures libraryLoad(const Document& document);
/// Loads the document and saves it.
Figures librarySave(const Document& document, const std::string& file);
/// Loads the document and checks it; `prepare`, if there is one, runs before each check and is not timed.
Figures libraryCheck(const Document& document, const std::function<void()>& prepare);
/// Loads the document, makes `records` coordinates that belong to the library, and deletes the document.
Figures libraryDelete(const Document& document, std::size_t records);

/// Builds a document of points of one name and saves it: the names are made unique. `again`: the figures of a
/// second save, in which they are unique already.
Figures libraryUnify(std::size_t points, bool again, const std::string& file);

Figures libraryBuildVertices(std::size_t count);
Figures libraryBuildPoints(std::size_t count);

/// The same work on plain structs: names compared in a hash table, lists destroyed, records and lists filled.
Figures bareUnify(std::size_t points);
Figures bareDelete(const Document& document);
Figures bareBuildVertices(std::size_t count);
Figures bareBuildPoints(std::size_t count);

}  // namespace benchmarks
