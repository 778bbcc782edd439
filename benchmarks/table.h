#pragma once

#include <iosfwd>

#include "results.h"

namespace benchmarks {

/// @param markdown prints Markdown tables, headed by the names of the processor and the compiler
void printTables(std::ostream& out, const Results& results, bool markdown);

/// The performance targets, each with the measured value.
/// @return whether all targets of the cases that were run are met; one that could not be measured is not
bool printTargets(std::ostream& out, const Results& results, bool markdown);

}  // namespace benchmarks
