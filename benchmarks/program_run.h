#pragma once

#include <string>

#include "documents.h"
#include "measurement.h"

namespace benchmarks {

/// The program ztcad, called as users call it. Each function is one run, from the start of the process to its
/// end.

/// Writes a folder with many links to a document, beside it.
std::string folderOfLinks(const Document& document, int count);
/// Checks a folder with so many jobs.
Measurement programCheck(const std::string& folder, int jobs);
/// Describes a document.
Measurement programInfo(const Document& document);
/// Writes the page of a document, beside it. A failure if the page has more than a quarter of the document's
/// size and 1 MB.
Measurement programView(const Document& document);
/// Writes a copy of a document, beside it, in which one digit differs.
std::string changedCopy(const Document& document);
/// Compares a document with such a copy.
Measurement programDiff(const Document& document, const std::string& copy);
/// Runs this benchmark with `loadOption`: a process that loads the document and does nothing else.
Measurement programLoad(const Document& document);

inline constexpr const char* loadOption = "--load";
/// What a process with `loadOption` does.
bool loadAlone(const std::string& file);

}  // namespace benchmarks
