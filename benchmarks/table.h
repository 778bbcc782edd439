#pragma once

#include <iosfwd>

#include "results.h"

namespace benchmarks {

/// @param markdown prints Markdown tables, headed by the names of the processor and the compiler
void printTables(std::ostream& out, const Results& results, bool markdown);

/// The performance targets, each with the value measured at the largest size that was run.
void printTargets(std::ostream& out, const Results& results, bool markdown);

}  // namespace benchmarks
