#pragma once

#include <iosfwd>

#include "results.h"

namespace benchmarks {

/// @param markdown tables in Markdown, below the names of the processor and of the compiler
void printTables(std::ostream& out, const Results& results, bool markdown);

/// What the library is to reach, each with what it reached at the largest size that was run.
void printTargets(std::ostream& out, const Results& results, bool markdown);

}  // namespace benchmarks
