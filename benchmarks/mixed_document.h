#pragma once

#include <cstddef>
#include <string>

namespace benchmarks {

/// Documents of many kinds: a robot arm, repeated.

/// The text of a file. Throws if it cannot be read.
std::string textOf(const std::string& file);
/// An arm made by code: a structure of details with mass-inertia data and convex solids, points and
/// mass-inertia elements, with the kinds, attributes and lengths of lists of a real arm.
std::string generatedArm();
/// The document with everything after its header `copies` times, each name with the number of its copy before
/// it.
/// @param text a document without templates, with values in double quotes and an empty element as header
std::string repeated(const std::string& text, std::size_t copies);
/// How often a document is repeated: as often as gives about 100 MB, but at most a thousand times.
std::size_t usualCopies(const std::string& text);

}  // namespace benchmarks
